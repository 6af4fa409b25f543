// Driver of game controllers, and of keyboard and mouse of the window that has the focus.
#include "desktopdevices.h"
#include "paddevice.h"

#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <algorithm>
#include <ostream>

namespace input_desktop
{
namespace
{

using namespace quillmarsh;

/// Flag of OpenDriver(): open no window.
constexpr unsigned int s_flagNoWindow = 1;

/// What outlasts a driver: when devices are reconfigured, because a controller came say, the window keeps its focus.
struct Session
{
    Desktop desktop;
    AutoPtr<InputSystem> system;
};

class Driver : public HIDDriver0
{
public:
    explicit Driver(Session &session) : session_(session) {}

    void OpenDriver(DirectInputConfig const &, unsigned int flags) override
    {
        bool const wantsWindow = (flags & s_flagNoWindow) == 0;
        if (session_.system == nullptr || session_.system->HasWindow() != wantsWindow)
        {
            session_.system.reset();
            session_.desktop.OnFocusLost();
            session_.system = StartInputSystem(session_.desktop, wantsWindow);
        }
    }

    void CloseDriver() override {}

    unsigned int EnumerateDevices() override
    {
        session_.system->Pump();
        session_.system->ListPads(pads_);
        names_.clear();
        for (unsigned int const id : pads_)
            names_.push_back(session_.system->GetPadName(id));
        return GetNumDesktopDevices() + static_cast<unsigned int>(pads_.size());
    }

    HumanInterfaceDevice *CreateDevice(unsigned int index) override
    {
        Desktop &desktop = session_.desktop;
        InputSystem &system = *session_.system;
        unsigned int const numDesktopDevices = GetNumDesktopDevices();
        if (index < numDesktopDevices)
        {
            if (index == 0)
                return new DesktopDevice<DesktopKeyboard>(desktop, system, "Keyboard");
            return new DesktopDevice<DesktopMouse>(desktop, system, "Mouse");
        }
        index -= numDesktopDevices;
        AutoPtr<Pad> pad = index < pads_.size() ? system.OpenPad(pads_[index]) : nullptr;
        return pad != nullptr ? new PadDevice(std::move(pad)) : nullptr;
    }

    bool PollDeviceChanges() override
    {
        session_.system->Pump();
        session_.system->ListPads(found_);
        if (found_ == pads_)
            return false;
        for (unsigned int i = 0; i < names_.size(); ++i)
        {
            if (!std::binary_search(found_.begin(), found_.end(), pads_[i]))
                GetConOut() << "The game controller " << names_[i] << " was unplugged." << std::endl;
        }
        // Until the next enumeration there is nothing more to tell.
        pads_ = found_;
        names_.clear();
        return true;
    }

private:
    unsigned int GetNumDesktopDevices() const { return session_.system->HasWindow() ? 2 : 0; }

    Session &session_;
    /// Game controllers that are known, and their names as of the last enumeration.
    std::vector<unsigned int> pads_;
    std::vector<string> names_;
    std::vector<unsigned int> found_;
};

class Descriptor : public HIDDriverPluginDescriptor
{
public:
    Descriptor()
        : HIDDriverPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_hid_driver, "input_desktop",
                                               PluginVersion(1, 0, 0, 0), library_info::GetBuildTimestamp(),
                                               "Game controllers, keyboard and mouse", "The Quillmarsh authors"))
    {
    }

    HIDDriver *CreateHIDDriver() override { return new Driver(session_); }

private:
    Session session_;
};

} // namespace
} // namespace input_desktop

QUILLMARSH_PLUGIN_LIBRARY(input_desktop::Descriptor)
