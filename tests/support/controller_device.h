// A device with one controller that a test samples by hand, in both modes.
#ifndef QUILLMARSH_TESTS_SUPPORT_CONTROLLER_DEVICE_H
#define QUILLMARSH_TESTS_SUPPORT_CONTROLLER_DEVICE_H

#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

#include <sstream>
#include <utility>

namespace quillmarsh::tests
{

/// `Controller` is a concrete controller. The device's own sampling, also on a thread, does not change it.
template<typename Controller>
class ControllerDevice : public HumanInterfaceDevice
{
public:
    template<typename... Arguments>
    explicit ControllerDevice(Arguments &&...arguments) : controller(std::forward<Arguments>(arguments)...)
    {
        controller.Attach(*this);
    }
    ~ControllerDevice() override { StopAsyncSampling(); }

    unsigned int GetNumControllers() override { return 1; }
    HIDController *GetController(unsigned int index) override { return index == 0 ? &controller : nullptr; }
    void ConnectDevice(HWND) override {}
    void DisconnectDevice() override {}
    void SampleDevice() override {}
    void ApplyUseDirectInput(bool use) override { UpdateUsingDirectInput(use); }

    /// Takes one sample, which `write` fills in.
    template<typename Write>
    void Sample(Write write)
    {
        controller.PreSampleUpdate();
        write();
        controller.PostSampleUpdate();
    }
    void Sample()
    {
        Sample([] {});
    }

    using HumanInterfaceDevice::DeviceInfo;

    Controller controller;
};

/// Makes the operations of a controller public that only its device may call. The derived class lists them by `using`.
template<typename Base>
class AttachedController : public Base
{
public:
    using Base::Base;
    void Attach(HumanInterfaceDevice &device) { this->SetParentHID(device); }
};

/// A mouse that is not the system's, and does nothing when it is told of a mode.
class PlainMouse : public AttachedController<Mouse>
{
public:
    PlainMouse() : AttachedController(false) {}
    void OnRelativeModeChanged() override {}
    void OnSyncWithSystemCursorChanged() override {}
};

inline string DumpText(HIDController const &controller)
{
    std::ostringstream out;
    controller.DumpControllerInfo(out, 1);
    return out.str();
}

} // namespace quillmarsh::tests

#endif
