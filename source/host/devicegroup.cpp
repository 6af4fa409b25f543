#include <quillmarsh/host/devicegroup.h>

#include "catching.h"

#include <quillmarsh/host/hostkernel.h>

#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/framework/samplereadsentry.h>

#include <ostream>

namespace quillmarsh::host
{

namespace
{

constexpr unsigned int s_directInputVersion8 = 0x0800;

/// Returns the device's first controller of this class, null if it has none.
template<typename Controller>
Controller *Find(HumanInterfaceDevice &device, char const *interfaceName)
{
    return dynamic_cast<Controller *>(device.FindController(interfaceName));
}

} // namespace

void DeviceGroup::Driver::Open(DirectInputProxy8 *proxy, DirectInputConfig const &config)
{
    if (driver0 != nullptr)
        driver0->OpenDriver(config, flags);
    else if (proxy != nullptr)
        driver8->OpenDriver(*proxy, config, flags);
    else
        QUILLMARSH_THROW(HIDDriverException, "It needs DirectInput, which is not in use.");
    isOpen = true;
}

void DeviceGroup::Driver::Close()
{
    isOpen = false;
    if (driver0 != nullptr)
        driver0->CloseDriver();
    else
        driver8->CloseDriver();
}

bool DeviceGroup::Driver::Poll()
{
    return driver0 != nullptr ? driver0->PollDeviceChanges() : driver8->PollDeviceChanges();
}

bool DeviceGroup::Device::IsWanted(HIDAutoSamplingConfig const &wanted) const
{
    return (isSystemKeyboard && wanted.AutoSampleSystemKeyboard) || (isSystemMouse && wanted.AutoSampleSystemMouse) ||
           (!isSystemKeyboard && !isSystemMouse && wanted.AutoSampleNonSystemDevices);
}

DeviceGroup::DeviceGroup(HostKernel &kernel) : kernel_(kernel) {}

DeviceGroup::~DeviceGroup() = default;

HumanInterfaceDevice *DeviceGroup::GetDevice(unsigned int index) const
{
    return index < devices_.size() ? devices_[index].device.get() : nullptr;
}

template<typename Call>
bool DeviceGroup::Try(string const &what, Call &&call)
{
    std::optional<string> const reason = Catch(call);
    if (reason)
        kernel_.GetFailures().Warn(what + ": " + *reason);
    return !reason;
}

void DeviceGroup::AddDriver(string const &name, std::function<AutoPtr<HIDDriver0>()> create)
{
    programDrivers_.push_back({name, std::move(create)});
}

void DeviceGroup::Open(DirectInputConfig const &config, unsigned int code, unsigned int subcode)
{
    config_ = config;
    lastCreationID_ = 0;
    ConfirmProxy();
    ConfirmDrivers();
    kernel_.CallHook("QueryHIDConfig",
                     [&](Application &application) { application.QueryHIDConfig(config_, code, subcode); });
    HumanInterfaceDevice::SetUseDirectInputAtInit(config_.EnableDirectInput && config_.UseAtDeviceInit);
    OpenDrivers();
    ConfirmDevices();
    ConnectDevices();
    kernel_.CallHook("SetupAsyncHIDSampling", [](Application &application) { application.SetupAsyncHIDSampling(); });
}

void DeviceGroup::ConfirmProxy()
{
    for (PluginSet::Entry const &entry : kernel_.GetPlugins().GetEntries())
    {
        PluginInfo const &info = entry.descriptor->GetPluginInfo();
        if (proxy_ == nullptr && info.GetPluginType() == e_plugin_direct_input_proxy)
            AddProxy(*entry.descriptor);
    }
}

void DeviceGroup::AddProxy(PluginDescriptor &descriptor)
{
    AutoPtr<Plugin> plugin;
    Try("The DirectInput proxy '" + descriptor.GetPluginInfo().GetPluginName() + "' is left out",
        [&] { plugin = kernel_.GetPlugins().Create(descriptor); });
    auto *const proxy = dynamic_cast<DirectInputProxy8 *>(plugin.get());
    bool confirmed = false;
    if (proxy != nullptr)
        kernel_.CallHook("ConfirmDirectInputVersion", [&](Application &application)
                         { confirmed = application.ConfirmDirectInputVersion(s_directInputVersion8); });
    if (!confirmed)
        return;
    static_cast<void>(plugin.release());
    proxy_.reset(proxy);
}

void DeviceGroup::ConfirmDrivers()
{
    for (ProgramDriver const &added : programDrivers_)
    {
        AutoPtr<HIDDriver0> plugin = added.create();
        HIDDriver0 *const driver = plugin.get();
        drivers_.push_back({std::move(plugin), driver, nullptr, added.name, 0});
    }
    unsigned int index = 0;
    for (PluginSet::Entry const &entry : kernel_.GetPlugins().GetEntries())
    {
        PluginInfo const &info = entry.descriptor->GetPluginInfo();
        if (info.GetPluginType() != e_plugin_hid_driver)
            continue;
        bool confirmed = false;
        unsigned int flags = 0;
        kernel_.CallHook("ConfirmHIDDriver", [&](Application &application)
                         { confirmed = application.ConfirmHIDDriver(info.GetPluginName(), index, flags); });
        ++index;
        if (confirmed)
            AddDriver(*entry.descriptor, flags);
    }
}

void DeviceGroup::AddDriver(PluginDescriptor &descriptor, unsigned int flags)
{
    string const &name = descriptor.GetPluginInfo().GetPluginName();
    Try("The device driver '" + name + "' is left out",
        [&]
        {
            AutoPtr<Plugin> plugin = kernel_.GetPlugins().Create(descriptor);
            auto *const driver0 = dynamic_cast<HIDDriver0 *>(plugin.get());
            auto *const driver8 = dynamic_cast<HIDDriver8 *>(plugin.get());
            if (driver0 == nullptr && driver8 == nullptr)
                QUILLMARSH_THROW(HIDDriverException, "The plug-in created no driver of a kind that the host knows.");
            static_cast<void>(plugin.release());
            HIDDriver *const driver = driver0 != nullptr ? static_cast<HIDDriver *>(driver0) : driver8;
            drivers_.push_back({AutoPtr<HIDDriver>(driver), driver0, driver8, name, flags});
        });
}

void DeviceGroup::OpenDrivers()
{
    if (proxy_ != nullptr && config_.EnableDirectInput)
    {
        isProxyOpen_ = Try("DirectInput is left out",
                           [&]
                           {
                               proxy_->SetAllowFullscreenExclusiveMode(config_.EnableFullscreenExclusiveMode);
                               proxy_->OpenProxy(config_.UseLastVersion ? 0 : config_.DirectInputVersion);
                           });
    }
    for (Driver &driver : drivers_)
    {
        bool ignored = false;
        kernel_.CallHook("QueryIgnoreHIDDriver",
                         [&](Application &application) { ignored = application.QueryIgnoreHIDDriver(driver.name); });
        if (!ignored)
            Try("The device driver '" + driver.name + "' is left out",
                [&] { driver.Open(isProxyOpen_ ? proxy_.get() : nullptr, config_); });
    }
}

void DeviceGroup::ConfirmDevices()
{
    kernel_.CallHook("BeginConfirmHumanInterfaceDevices",
                     [](Application &application) { application.BeginConfirmHumanInterfaceDevices(); });
    for (Driver &driver : drivers_)
    {
        if (driver.isOpen)
            ConfirmDevicesOf(driver);
    }
    kernel_.CallHook("EndConfirmHumanInterfaceDevices",
                     [](Application &application) { application.EndConfirmHumanInterfaceDevices(); });
}

void DeviceGroup::ConfirmDevicesOf(Driver &driver)
{
    unsigned int count = 0;
    Try("The devices of '" + driver.name + "' are left out", [&] { count = driver.plugin->EnumerateDevices(); });
    for (unsigned int index = 0; index < count; ++index)
    {
        AutoPtr<HumanInterfaceDevice> device;
        Try("A device of '" + driver.name + "' is left out", [&] { device.reset(driver.plugin->CreateDevice(index)); });
        if (device != nullptr)
            ConfirmDevice(std::move(device), driver);
    }
}

void DeviceGroup::ConfirmDevice(AutoPtr<HumanInterfaceDevice> device, Driver const &driver)
{
    HumanInterfaceDeviceInfo &info = HostKernel::GetDeviceInfo(*device);
    info.SetCreationID(++lastCreationID_);
    info.SetCreatorPluginName(driver.name);
    bool confirmed = false;
    kernel_.CallHook("ConfirmHumanInterfaceDevice",
                     [&](Application &application) { confirmed = application.ConfirmHumanInterfaceDevice(*device); });
    if (kernel_.GetAutoInit().LogPlugins)
        kernel_.GetLog() << "Input device" << (confirmed ? ": " : " not wanted: ") << info.MakeShortDesc() << std::endl;
    if (confirmed)
        candidates_.push_back(std::move(device));
}

void DeviceGroup::ConnectDevices()
{
    kernel_.CallHook("BeginConnectHumanInterfaceDevices",
                     [&](Application &application) { application.BeginConnectHumanInterfaceDevices(config_); });
    applicationHasDevices_ = true;
    guiHasDevices_ = HostKernel::HasGUI();
    if (guiHasDevices_)
        HostKernel::GUIManager_BeginConnectHumanInterfaceDevices();
    for (AutoPtr<HumanInterfaceDevice> &candidate : candidates_)
        ConnectDevice(std::move(candidate));
    candidates_.clear();
    kernel_.GetFailures().SetPlace("gui::Manager::EndConnectHumanInterfaceDevices");
    if (guiHasDevices_)
        HostKernel::GUIManager_EndConnectHumanInterfaceDevices();
    kernel_.CallHook("EndConnectHumanInterfaceDevices",
                     [](Application &application) { application.EndConnectHumanInterfaceDevices(); });
}

void DeviceGroup::ConnectDevice(AutoPtr<HumanInterfaceDevice> owned)
{
    HumanInterfaceDevice &device = *owned;
    auto const connect = [this, &device]
    {
        if (HumanInterfaceDevice::GetUseDirectInputAtInit())
            device.SetUseDirectInput(true);
        device.SetAppWindow(appWindow_);
        device.ConnectDevice(appWindow_);
    };
    if (!Try("The input device " + device.GetDeviceInfo().MakeShortDesc() + " is left out", connect))
        return;
    if (appWindow_ != nullptr)
    {
        TellOfWindow(device, [](HumanInterfaceDevice &told) { told.OnAppWindowGeometryChanged(); });
        if (isAppWindowActive_)
            TellOfWindow(device, [](HumanInterfaceDevice &told) { told.OnAppWindowActive(true); });
    }
    auto const *const keyboard = Find<Keyboard>(device, "Keyboard");
    auto const *const mouse = Find<Mouse>(device, "Mouse");
    devices_.push_back({std::move(owned), keyboard != nullptr && keyboard->IsSystemKeyboard(),
                        mouse != nullptr && mouse->IsSystemMouse()});
    if (guiHasDevices_)
        HostKernel::GUIManager_ConnectHumanInterfaceDevice(device);
    kernel_.CallHook("ConnectHumanInterfaceDevice",
                     [&](Application &application) { application.ConnectHumanInterfaceDevice(device); });
}

void DeviceGroup::Disconnect()
{
    if (!std::exchange(applicationHasDevices_, false))
        return;
    kernel_.CallHook("DisconnectHumanInterfaceDevices",
                     [](Application &application) { application.DisconnectHumanInterfaceDevices(); });
}

void DeviceGroup::Release()
{
    Failures &failures = kernel_.GetFailures();
    failures.SetPlace("gui::Manager::DisconnectHumanInterfaceDevices");
    if (std::exchange(guiHasDevices_, false) && HostKernel::HasGUI())
        failures.Guard([] { HostKernel::GUIManager_DisconnectHumanInterfaceDevices(); });
    failures.SetPlace("the release of an input device");
    for (; !devices_.empty(); devices_.pop_back())
    {
        HumanInterfaceDevice &device = *devices_.back().device;
        failures.Guard([&] { device.StopAsyncSampling(); });
        failures.Guard([&] { device.DisconnectDevice(); });
    }
    candidates_.clear();
    failures.SetPlace("the release of a device driver");
    for (; !drivers_.empty(); drivers_.pop_back())
    {
        if (drivers_.back().isOpen)
            failures.Guard([&] { drivers_.back().Close(); });
    }
    if (std::exchange(isProxyOpen_, false))
        failures.Guard([&] { proxy_->CloseProxy(); });
    proxy_.reset();
}

template<typename Call>
void DeviceGroup::TellOfWindow(HumanInterfaceDevice &device, Call &&call)
{
    Try("The input device " + device.GetDeviceInfo().MakeShortDesc() + " could not be told of the window",
        [&] { call(device); });
}

template<typename Call>
void DeviceGroup::TellAllOfWindow(Call &&call)
{
    for (Device &device : devices_)
        TellOfWindow(*device.device, call);
}

void DeviceGroup::SetAppWindow(HWND window)
{
    SetAppWindowActive(false);
    appWindow_ = window;
    for (Device &device : devices_)
        device.device->SetAppWindow(window);
    OnAppWindowGeometryChanged();
}

void DeviceGroup::SetAppWindowActive(bool active)
{
    if (std::exchange(isAppWindowActive_, active) != active)
        TellAllOfWindow([active](HumanInterfaceDevice &device) { device.OnAppWindowActive(active); });
}

void DeviceGroup::OnAppWindowGeometryChanged()
{
    TellAllOfWindow([](HumanInterfaceDevice &device) { device.OnAppWindowGeometryChanged(); });
}

// The functions below run in each frame. They build messages only after a failure.

bool DeviceGroup::PollDeviceChanges()
{
    bool changed = false;
    for (Driver &driver : drivers_)
    {
        if (!driver.isOpen || driver.hasFailed)
            continue;
        if (std::optional<string> const reason = Catch([&] { changed = driver.Poll() || changed; }))
        {
            driver.hasFailed = true;
            kernel_.GetFailures().Warn("The device driver '" + driver.name +
                                       "' is not asked for changes any more: " + *reason);
        }
    }
    return changed;
}

void DeviceGroup::Sample(HIDAutoSamplingConfig const &wanted)
{
    for (Device &device : devices_)
    {
        if (device.hasFailed || !device.IsWanted(wanted) || device.device->IsAsyncSamplingActive())
            continue;
        if (std::optional<string> const reason = Catch([&] { SampleReadSentry const sample(*device.device, true); }))
            OnSampleFailed(device, *reason);
    }
}

void DeviceGroup::OnSampleFailed(Device &device, string const &reason)
{
    device.hasFailed = true;
    unsigned int const count = device.device->GetNumControllers();
    for (unsigned int index = 0; index < count; index++)
        device.device->GetController(index)->ResetInputReadings();
    kernel_.GetFailures().Warn("The input device " + device.device->GetDeviceInfo().MakeShortDesc() +
                               " is not sampled any more: " + reason);
}

} // namespace quillmarsh::host
