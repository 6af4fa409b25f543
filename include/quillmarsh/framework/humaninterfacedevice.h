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
/// A device is sampled in one of two modes. In synchronous mode whoever wants new readings samples it on the spot. In
/// asynchronous mode, from StartAsyncSampling() to StopAsyncSampling(), a thread of the device samples it over and over,
/// and a reader locks the device while it reads. Readers need not know which: they hold a sentry (samplereadsentry.h).
/// \code
/// SampleReadSentry sentry(mouse, true);
/// x += mouse.GetDeltaX();
/// \endcode
///
/// Two threads meet here. All operations are for the one reading thread, as a rule the frame thread, but for the hooks
/// that say otherwise; an asynchronous device calls SampleDevice() and the two thread hooks on its sampling thread only.
/// Rates and average values may be read by any thread.
class QUILLMARSH_API HumanInterfaceDevice : NoCopy
{
public:
    /// Does not stop sampling: the device must be at rest.
    virtual ~HumanInterfaceDevice();

    /// @name Parameters and abilities
    /// @{

    /// Takes a parameter; false when it is unknown. A device has none unless it says so.
    virtual bool SetHIDParameter(NamedParameter const &parameter);
    /// The parameter with the name; null when it is unknown. Good until the next call.
    virtual NamedParameter const *GetHIDParameter(string const &name) const;
    /// Prints what the device can do, one line for each item, behind `tabs` tabs. Prints nothing by default.
    virtual void DumpDeviceCaps(ostream &out, unsigned int tabs) const;
    /// @}

    /// @name Controllers
    /// Their number and order stay as long as the device.
    /// @{
    virtual unsigned int GetNumControllers() = 0;
    /// Controller by index; null past the end.
    virtual HIDController *GetController(unsigned int index) = 0;
    /// @}

    /// @name For the kernel
    /// The application has its devices before there is a window, and the kernel tells each connected device of the
    /// window: when it stands, SetAppWindow() and OnAppWindowGeometryChanged(), and OnAppWindowActive() when it is
    /// active; then each change of the two. Before the window goes, OnAppWindowActive(false) if it was active,
    /// SetAppWindow(nullptr) and OnAppWindowGeometryChanged(), where the device lets go of it. A device that is connected
    /// while there is a window hears the first three behind ConnectDevice(). Windows may come and go any number of times.
    ///
    /// A hook that throws is reported, and nothing more comes of it.
    /// @{

    /// Opens the hardware: from now on the device is sampled. `appWindow` is the window whose input is meant, and
    /// GetAppWindow(); null where there is none yet. Throws HIDException when the hardware cannot be had; the kernel then
    /// leaves the device out.
    virtual void ConnectDevice(HWND appWindow) = 0;
    /// Closes the hardware; called once for each ConnectDevice() that succeeded, when nobody samples any more.
    virtual void DisconnectDevice() = 0;
    /// Called when the application's window got the keyboard focus, or lost it. Also called while a thread samples.
    virtual void OnAppWindowActive(bool active);
    /// Called when the application's window was moved or resized, and when GetAppWindow() has changed. Also called while
    /// a thread samples.
    virtual void OnAppWindowGeometryChanged();

    /// Sets the application's window, and calls nothing.
    void SetAppWindow(HWND appWindow) { appWindow_ = appWindow; }
    /// @}

    /// The application's window; null while there is none. platform::Window::Find() gives its geometry. Any thread may
    /// ask, but only the frame thread may use the window.
    HWND GetAppWindow() const { return appWindow_; }

    /// @name Hooks of the sampling thread
    /// Called on that thread, before its first sample and after its last one: the place to give it another priority.
    /// @{
    virtual void OnStartAsyncSampling(void *threadHandle, unsigned int threadID);
    virtual void OnStopAsyncSampling(void *threadHandle, unsigned int threadID);
    /// @}

    /// Reads the hardware once into the controllers: for each of them HIDController::PreSampleUpdate(), the new readings,
    /// and HIDController::PostSampleUpdate(). Runs under the lock on the sampling thread, or on the reading thread when
    /// there is none; readers call it through a SampleReadSentry. Allocates nothing.
    ///
    /// A device that has vanished reads as at rest, when its driver tells of that, or throws HIDException. The sampling
    /// thread then writes that to the log, clears all readings and samples no more until it is stopped and started again.
    virtual void SampleDevice() = 0;

    /// First controller with the interface name, letter by letter; null without one.
    HIDController *FindController(string const &interfaceName);

    HumanInterfaceDeviceInfo const &GetDeviceInfo() const { return info_; }

    /// @name DirectInput
    /// @{

    bool IsUsingDirectInput() const { return isUsingDirectInput_; }
    /// Asks the device to use DirectInput, or not to. True when it then does as it was told; nothing happens when it
    /// does so already, or when GetDeviceInfo() rules it out.
    bool SetUseDirectInput(bool use);
    /// Whether devices begin with DirectInput when they can use it, for all devices. Kept for kernel and drivers, which
    /// ask when they initialise a device.
    static bool GetUseDirectInputAtInit() { return s_bUseDirectInputAtInit; }
    static void SetUseDirectInputAtInit(bool use) { s_bUseDirectInputAtInit = use; }
    /// @}

    /// @name Asynchronous sampling
    /// Both release a read lock that is still held. Not for the sampling thread.
    /// @{

    /// Starts the sampling thread, if it does not sample yet. Throws SystemResourceException when it cannot be had.
    void StartAsyncSampling();
    /// Stops the sampling thread and waits for its end.
    void StopAsyncSampling();
    /// Does one or the other.
    void ActivateAsyncSampling(bool activate);
    bool IsAsyncSamplingActive() const { return isAsyncSamplingActive_.load(std::memory_order_acquire); }
    /// @}

    /// @name Lock of a reader
    /// While it is held the sampling thread waits: briefly. Calls do not nest, a second lock does nothing, and the first
    /// unlock releases. Between them the controllers show what was sampled since the read before.
    /// @{
    void LockSampledData();
    void UnlockSampledData();
    bool IsSampledDataLocked() const { return isSampledDataLocked_.load(std::memory_order_relaxed); }
    /// @}

    /// @name Rate of the sampling thread
    /// Changes count from its next pass on, and outlast a stop. Without a limit it samples without a pause.
    /// @{
    void EnableMaxSampleRate(bool enable);
    bool IsEnabledMaxSampleRate() const { return isMaxSampleRateEnabled_.load(std::memory_order_relaxed); }
    /// In samples a second; clamped to 1 to 1000.
    void SetMaxSampleRate(double hz);
    double GetMaxSampleRate() const { return maxSampleRate_.load(std::memory_order_relaxed); }
    /// Samples a second, averaged over about the last second; 0 when nothing samples.
    double GetAverageSampleRate() const { return averageSampleRate_.load(std::memory_order_relaxed); }
    /// Seconds that SampleDevice() takes, averaged likewise.
    double GetAverageSamplingTime() const { return averageSamplingTime_.load(std::memory_order_relaxed); }
    /// @}

protected:
    HumanInterfaceDevice();

    /// Switches the input path of the device, and reports what came of it by UpdateUsingDirectInput(). Called only with
    /// a change that GetDeviceInfo() allows.
    virtual void ApplyUseDirectInput(bool use) = 0;
    /// For ApplyUseDirectInput(): which input path the device has taken.
    void UpdateUsingDirectInput(bool isUsing) { isUsingDirectInput_ = isUsing; }

    /// For the driver, which fills it in; creation id and creator are the kernel's.
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
    // One-way signal to the sampling loop.
    std::atomic<bool> rateChanged_{false};
    std::atomic<bool> isMaxSampleRateEnabled_{false};
    std::atomic<double> maxSampleRate_{50.0};
    std::atomic<double> averageSampleRate_{0.0};
    std::atomic<double> averageSamplingTime_{0.0};

    static bool s_bUseDirectInputAtInit;
};

} // namespace quillmarsh

#endif
