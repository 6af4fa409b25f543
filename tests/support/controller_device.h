// A device with one controller that a test samples by hand, in both modes.
#ifndef QUILLMARSH_TESTS_SUPPORT_CONTROLLER_DEVICE_H
#define QUILLMARSH_TESTS_SUPPORT_CONTROLLER_DEVICE_H

#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

#include <sstream>
#include <utility>

namespace quillmarsh::tests
{

/// `Controller` is a concrete controller; its device's own sampling, on the thread too, leaves it alone.
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

    /// One sample, which `write` fills in.
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

/// Opens what a device may do with its controller. Bases come by `using` in the derived class.
template<typename Base>
class AttachedController : public Base
{
public:
    using Base::Base;
    void Attach(HumanInterfaceDevice &device) { this->SetParentHID(device); }
};

inline string DumpText(HIDController const &controller)
{
    std::ostringstream out;
    controller.DumpControllerInfo(out, 1);
    return out.str();
}

} // namespace quillmarsh::tests

#endif
