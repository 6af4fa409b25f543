// Driver of two mice that move by themselves. It records its calls, and changes or fails on request.
#include "../controller_device.h"
#include "trace.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>
#include <quillmarsh/platform/window.h>

namespace
{

using namespace quillmarsh;
using tests::Trace;

struct TestMouse : tests::AttachedController<Mouse>
{
    TestMouse() : AttachedController(true) {}
    void OnRelativeModeChanged() override {}
    void OnSyncWithSystemCursorChanged() override {}
    using Mouse::AccumDelta;
};

class TestDevice : public tests::ControllerDevice<TestMouse>
{
public:
    explicit TestDevice(string const &name) : name_(name) { DeviceInfo().SetDeviceDescription(name); }
    ~TestDevice() override { Trace("~" + name_); }

    void ConnectDevice(HWND window) override
    {
        Trace("ConnectDevice", name_ + (window == GetAppWindow() && window != nullptr ? " to a window" : ""));
    }
    void DisconnectDevice() override
    {
        Trace("DisconnectDevice", name_, IsAsyncSamplingActive() ? "too early" : MakeString(numSamples_));
    }
    void OnAppWindowActive(bool active) override { Trace("OnAppWindowActive", name_, active); }
    void OnAppWindowGeometryChanged() override
    {
        platform::Window const *const window = platform::Window::Find(GetAppWindow());
        Trace("OnAppWindowGeometryChanged", name_, window != nullptr ? window->GetSize().width : 0);
    }
    void SampleDevice() override
    {
        if (++numSamples_ == 2 && tests::GetSetting("TRACER_FAIL") == "SampleDevice")
            QUILLMARSH_THROW(HIDException, "unplugged");
        Sample([this] { controller.AccumDelta(1, 0); });
    }

private:
    string name_;
    unsigned int numSamples_ = 0;
};

class TestDriver : public HIDDriver0
{
public:
    ~TestDriver() override { Trace("~TestDriver"); }

    void OpenDriver(DirectInputConfig const &config, unsigned int flags) override
    {
        Trace("OpenDriver", config.DirectInputVersion, flags);
    }
    void CloseDriver() override { Trace("CloseDriver"); }
    unsigned int EnumerateDevices() override
    {
        Trace("EnumerateDevices");
        return 2;
    }
    HumanInterfaceDevice *CreateDevice(unsigned int index) override
    {
        Trace("CreateDevice", index);
        return new TestDevice(index == 0 ? "ball" : "dull");
    }
    bool PollDeviceChanges() override
    {
        ++numPolls_;
        if (tests::GetSetting("TRACER_FAIL") == "PollDeviceChanges")
            QUILLMARSH_THROW(HIDDriverException, "no bus");
        return numPolls_ == 2 && tests::GetSetting("TESTDRIVER_CHANGE") == "1";
    }

private:
    unsigned int numPolls_ = 0;
};

class TestDriverDescriptor : public HIDDriverPluginDescriptor
{
public:
    TestDriverDescriptor()
        : HIDDriverPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_hid_driver, "testdriver",
                                               PluginVersion(), "", "", ""))
    {
    }
    HIDDriver *CreateHIDDriver() override { return new TestDriver; }
};

} // namespace

QUILLMARSH_PLUGIN_LIBRARY(TestDriverDescriptor)
