// One physical input device, which is read on the spot or by a thread of its own.
#ifndef QUILLMARSH_FRAMEWORK_HUMANINTERFACEDEVICE_H
#define QUILLMARSH_FRAMEWORK_HUMANINTERFACEDEVICE_H

#include <quillmarsh/basetools/syncprimitives.h>
#include <quillmarsh/basetools/thread.h>
#include <quillmarsh/framework/humaninterfacedeviceinfo.h>

#include <atomic>

namespace quillmarsh
{

class HIDController;
class NamedParameter;

/// One physical input device, whose input is exposed by controllers that it owns.
///
/// A driver derives the devices that it creates from this class. The kernel holds them, connects those that the
/// application confirmed, and deletes them.
///
/// A device is sampled in one of two modes. In synchronous mode a reader that wants new readings samples it on the
/// spot. In asynchronous mode, from StartAsyncSampling() to StopAsyncSampling(), a thread of the device samples it
/// again and again, and a reader locks the device while it reads. Readers do not need to know the mode: they hold a
/// sentry (samplereadsentry.h).
/// \code
/// SampleReadSentry sentry(mouse, true);
/// x += mouse.GetDeltaX();
/// \endcode
///
/// Two threads use a device. All operations are for the one reading thread, usually the frame thread, except the hooks
/// that say otherwise. In asynchronous mode SampleDevice() and the two thread hooks run on the sampling thread only.
/// Any thread may read rates and average values.
class QUILLMARSH_API HumanInterfaceDevice : NoCopy
{
public:
    /// Does not stop the sampling thread: StopAsyncSampling() must have been called.
    virtual ~HumanInterfaceDevice();

    /// @name Parameters and abilities
    /// @{

    /// Sets a parameter. Returns false when the device does not know it; by default a device knows none.
    virtual bool SetHIDParameter(NamedParameter const &parameter);
    /// Parameter with the name; null when the device does not know it. Good until the next call.
    virtual NamedParameter const *GetHIDParameter(string const &name) const;
    /// Prints what the device can do, one line for each item, behind `tabs` tabs. Prints nothing by default.
    virtual void DumpDeviceCaps(ostream &out, unsigned int tabs) const;
    /// @}

    /// @name Controllers
    /// Their number and order never change.
    /// @{
    virtual unsigned int GetNumControllers() = 0;
    /// Controller by index; null past the end.
    virtual HIDController *GetController(unsigned int index) = 0;
    /// @}

    /// @name For the kernel
    /// The application has its devices before there is a window. When the window exists, the kernel calls for each
    /// connected device SetAppWindow(), OnAppWindowGeometryChanged() and, if the window is active, OnAppWindowActive(),
    /// and later calls the two hooks at each change. Before the window is destroyed, it calls OnAppWindowActive(false)
    /// if the window was active, SetAppWindow(nullptr), and OnAppWindowGeometryChanged(), where the device must forget
    /// the window. For a device that is connected while there is a window, SetAppWindow() comes before ConnectDevice()
    /// and the two hooks after it. Windows may come and go any number of times.
    ///
    /// An exception of a hook is reported, and has no other effect.
    /// @{

    /// Opens the hardware: from now on the device is sampled. `appWindow` is the window whose input is meant, the same
    /// as GetAppWindow(); null while there is none. Throws HIDException when the hardware is not available; the kernel
    /// then leaves the device out.
    virtual void ConnectDevice(HWND appWindow) = 0;
    /// Closes the hardware. Called once for each ConnectDevice() that succeeded, after the last sample.
    virtual void DisconnectDevice() = 0;
    /// The application's window has got the keyboard focus, or has lost it. Also called while a thread samples.
    virtual void OnAppWindowActive(bool active);
    /// Called when the application's window was moved or resized, and when GetAppWindow() has changed. Also called
    /// while a thread samples.
    virtual void OnAppWindowGeometryChanged();

    /// Sets the application's window, and calls nothing.
    void SetAppWindow(HWND appWindow) { appWindow_ = appWindow; }
    /// @}

    /// The application's window; null while there is none. platform::Window::Find() gives its geometry. Any thread may
    /// ask, but only the frame thread may use the window.
    HWND GetAppWindow() const { return appWindow_; }

    /// @name Hooks of the sampling thread
    /// Called on that thread, before its first sample and after its last one. They are the place to change its
    /// priority.
    /// @{
    virtual void OnStartAsyncSampling(void *threadHandle, unsigned int threadID);
    virtual void OnStopAsyncSampling(void *threadHandle, unsigned int threadID);
    /// @}

    /// Reads the hardware once into the controllers: for each of them HIDController::PreSampleUpdate(), the new
    /// readings, and HIDController::PostSampleUpdate(). Runs under the lock on the sampling thread, or on the reading
    /// thread when there is no sampling thread; readers call it through a SampleReadSentry. Allocates nothing.
    ///
    /// A device that was unplugged shows readings at rest if its driver reports the change, and throws HIDException
    /// otherwise. The sampling thread writes an exception to the log, clears all readings, and does not sample again
    /// until it is stopped and started.
    virtual void SampleDevice() = 0;

    /// First controller with exactly that interface name; null without one.
    HIDController *FindController(string const &interfaceName);

    /// Description of the device.
    HumanInterfaceDeviceInfo const &GetDeviceInfo() const { return info_; }

    /// @name DirectInput
    /// @{

    /// True when the device uses DirectInput.
    bool IsUsingDirectInput() const { return isUsingDirectInput_; }
    /// Asks the device to use DirectInput, or not to use it. Returns true when the device is then in that state.
    /// Nothing happens when it is in that state already, or when GetDeviceInfo() does not allow it.
    bool SetUseDirectInput(bool use);
    /// True when devices that can use DirectInput begin with it. Kernel and drivers ask when they initialise a device.
    static bool GetUseDirectInputAtInit() { return s_bUseDirectInputAtInit; }
    /// Sets the same for all devices; true at first.
    static void SetUseDirectInputAtInit(bool use) { s_bUseDirectInputAtInit = use; }
    /// @}

    /// @name Asynchronous sampling
    /// Start and stop release a read lock that is still held. Not for the sampling thread.
    /// @{

    /// Starts the sampling thread unless it runs. Throws SystemResourceException when the system refuses the thread.
    void StartAsyncSampling();
    /// Stops the sampling thread and waits for its end.
    void StopAsyncSampling();
    /// Starts or stops.
    void ActivateAsyncSampling(bool activate);
    /// True from StartAsyncSampling() to StopAsyncSampling(). Any thread.
    bool IsAsyncSamplingActive() const { return isAsyncSamplingActive_.load(std::memory_order_acquire); }
    /// @}

    /// @name Lock of a reader
    /// The sampling thread waits while the lock is held, so hold it for a short time. Calls do not nest: a second lock
    /// does nothing, and the first unlock releases. Between lock and unlock the controllers show the samples since the
    /// last read.
    /// @{
    void LockSampledData();
    void UnlockSampledData();
    bool IsSampledDataLocked() const { return isSampledDataLocked_.load(std::memory_order_relaxed); }
    /// @}

    /// @name Rate of the sampling thread
    /// Changes take effect with the next pass, and survive a stop. Without a limit the thread samples without a pause.
    /// In the first two seconds of a limit the rate can be far off: first many times too high, then too low (see
    /// samplingloop.h of the sources).
    /// @{
    void EnableMaxSampleRate(bool enable);
    bool IsEnabledMaxSampleRate() const { return isMaxSampleRateEnabled_.load(std::memory_order_relaxed); }
    /// Sets the limit in samples per second, clamped to 1 to 1000; 50 at first. NaN counts as 1.
    void SetMaxSampleRate(double hz);
    double GetMaxSampleRate() const { return maxSampleRate_.load(std::memory_order_relaxed); }
    /// Samples per second, averaged over about the last second; 0 when no thread samples.
    double GetAverageSampleRate() const { return averageSampleRate_.load(std::memory_order_relaxed); }
    /// Seconds that a SampleDevice() takes, averaged likewise.
    double GetAverageSamplingTime() const { return averageSamplingTime_.load(std::memory_order_relaxed); }
    /// @}

protected:
    HumanInterfaceDevice();

    /// Switches the input path of the device, and reports the result by UpdateUsingDirectInput(). Called only for a
    /// change that GetDeviceInfo() allows.
    virtual void ApplyUseDirectInput(bool use) = 0;
    /// For ApplyUseDirectInput(): reports which input path the device uses now.
    void UpdateUsingDirectInput(bool isUsing) { isUsingDirectInput_ = isUsing; }

    /// Description for the driver to fill in; the kernel sets creation id and creator.
    HumanInterfaceDeviceInfo &DeviceInfo() { return info_; }

private:
    friend class Kernel;
    class SamplingLoop;

    class QUILLMARSH_API SamplingThread : public Thread
    {
    public:
        void Init(HumanInterfaceDevice &device) { device_ = &device; }

    protected:
        unsigned int DoWork() override;

    private:
        HumanInterfaceDevice *device_ = nullptr;
    };

    std::atomic<HWND> appWindow_{nullptr};
    bool isUsingDirectInput_ = false;
    HumanInterfaceDeviceInfo info_;
    SamplingThread samplingThread_;
    CriticalSection sampledDataLock_;
    std::atomic<bool> isSampledDataLocked_{false};
    std::atomic<bool> isAsyncSamplingActive_{false};
    // Signal to the sampling loop.
    std::atomic<bool> rateChanged_{false};
    std::atomic<bool> isMaxSampleRateEnabled_{false};
    std::atomic<double> maxSampleRate_{50.0};
    std::atomic<double> averageSampleRate_{0.0};
    std::atomic<double> averageSamplingTime_{0.0};

    static bool s_bUseDirectInputAtInit;
};

} // namespace quillmarsh

#endif
