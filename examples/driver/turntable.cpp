// A driver with a tracker: a turntable, which turns by one degree in each sample.
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <ostream>

namespace
{

using namespace quillmarsh;

class TurntableTracker : public OrientationTracker
{
public:
    explicit TurntableTracker(HumanInterfaceDevice &device)
    {
        SetParentHID(device);
        // The hardware can set its orientation and its heading to zero, and report angles as well as quaternions. The
        // base class refuses everything that is not reported here, and then calls no hook.
        ReportHardwareCaps_ResetControls(true, true, false, false);
        ReportHardwareCaps_SamplingMode(EulerSamplingMode, true);
        ReportHardwareCaps_SamplingMode(QuaternionSamplingMode, true);
        SetSamplingMode(EulerSamplingMode);
    }

    /// Stores a reading in the form that the sampling mode asks for. `angle` is in degrees.
    void Store(float angle)
    {
        angle_ = angle;
        PreSampleUpdate();
        if (GetSamplingMode() == EulerSamplingMode)
            SetOrientation(angle_ - zero_, 0, 0);
        else
            SetOrientation(quat(vec3::UNIT_Y, angle_ - zero_));
        PostSampleUpdate();
    }

protected:
    bool DoResetOrientation() override { return DoResetHead(); }

    /// Takes effect with the next sample. Hardware that cannot do it now would return false.
    bool DoResetHead() override
    {
        zero_ = angle_;
        return true;
    }

    bool DoResetPitch() override { return false; }
    bool DoResetRoll() override { return false; }

    /// Hardware would be switched here, to GetRequestedSamplingMode().
    bool DoChangeSamplingMode(eSamplingMode) override { return true; }

private:
    float angle_ = 0;
    float zero_ = 0;
};

class TurntableDevice : public HumanInterfaceDevice
{
public:
    TurntableDevice()
    {
        DeviceInfo().SetDeviceDescription("turntable");
        DeviceInfo().SetHardwarePort("none");
    }

    unsigned int GetNumControllers() override { return 1; }
    HIDController *GetController(unsigned int index) override { return index == 0 ? &tracker_ : nullptr; }

    /// Chooses the sampling mode: "euler" or "quaternion". Programs set the parameters of devices, under a sentry.
    bool SetHIDParameter(NamedParameter const &parameter) override
    {
        if (parameter.GetName() != s_szMode || parameter.GetValueType() != NamedParameter::e_string)
            return false;
        string const &mode = parameter.GetValueString();
        return (mode == "euler" && tracker_.SetSamplingMode(OrientationTracker::EulerSamplingMode)) ||
               (mode == "quaternion" && tracker_.SetSamplingMode(OrientationTracker::QuaternionSamplingMode));
    }

    void DumpDeviceCaps(ostream &out, unsigned int tabs) const override
    {
        out << IndentEffector(tabs) << "Degrees per sample: " << s_degreesPerSample << nl;
    }

    void ConnectDevice(HWND) override { numSamples_ = 0; }
    void DisconnectDevice() override {}

    void SampleDevice() override
    {
        if (++numSamples_ > s_maxSamples)
            QUILLMARSH_THROW(HIDException, "The turntable's spring has run down.");
        tracker_.Store(s_degreesPerSample * static_cast<float>(numSamples_));
    }

protected:
    void ApplyUseDirectInput(bool) override {}

private:
    static constexpr char s_szMode[] = "mode";
    static constexpr float s_degreesPerSample = 1;
    static constexpr unsigned int s_maxSamples = 100;

    TurntableTracker tracker_{*this};
    unsigned int numSamples_ = 0;
};

class TurntableDriver : public HIDDriver0
{
public:
    /// Takes --parameter turntable.mode=MODE, for the devices that are created from now on.
    bool SetPluginParameter(NamedParameter const &parameter) override
    {
        mode_ = parameter;
        return TurntableDevice().SetHIDParameter(parameter);
    }

    void OpenDriver(DirectInputConfig const &, unsigned int) override {}
    void CloseDriver() override {}
    unsigned int EnumerateDevices() override { return 1; }

    HumanInterfaceDevice *CreateDevice(unsigned int) override
    {
        auto *const device = new TurntableDevice;
        device->SetHIDParameter(mode_);
        return device;
    }

    bool PollDeviceChanges() override { return false; }

private:
    NamedParameter mode_;
};

class TurntableDescriptor : public HIDDriverPluginDescriptor
{
public:
    TurntableDescriptor()
        : HIDDriverPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_hid_driver, "turntable",
                                               PluginVersion(1, 0, 0, 0), QUILLMARSH_PLUGIN_TIMESTAMP,
                                               "A tracker that turns", "You"))
    {
    }

    HIDDriver *CreateHIDDriver() override { return new TurntableDriver; }
};

} // namespace

QUILLMARSH_PLUGIN_LIBRARY(TurntableDescriptor)
