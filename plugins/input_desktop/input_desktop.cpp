// Driver of game controllers, and of keyboard and mouse in the program's windows.
#include "desktopdevices.h"
#include "desktopinput.h"
#include "paddevice.h"

#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <algorithm>
#include <ostream>
#include <utility>

namespace input_desktop
{
namespace
{

using namespace quillmarsh;

/// Flag of OpenDriver(): the driver opens no window.
constexpr unsigned int s_flagNoWindow = 1;

/// State that outlives a driver, so that the window keeps the focus while devices are reconfigured (after a controller
/// was plugged in, for example).
struct Session
{
    Desktop desktop;
    DesktopInput input{desktop};
    AutoPtr<PadSystem> pads;
};

class Driver : public HIDDriver0
{
public:
    explicit Driver(Session &session) : session_(session) {}

    void OpenDriver(DirectInputConfig const &, unsigned int flags) override
    {
        if (session_.pads == nullptr)
            session_.pads = StartPadSystem();
        session_.input.SetWantsWindow((flags & s_flagNoWindow) == 0);
    }

    void CloseDriver() override {}

    unsigned int EnumerateDevices() override
    {
        session_.pads->ListPads(pads_);
        names_.clear();
        for (unsigned int const id : pads_)
            names_.push_back(session_.pads->GetPadName(id));
        numDesktopDevices_ = GetNumDesktopDevices();
        return numDesktopDevices_ + static_cast<unsigned int>(pads_.size());
    }

    HumanInterfaceDevice *CreateDevice(unsigned int index) override
    {
        Desktop &desktop = session_.desktop;
        if (index < numDesktopDevices_)
        {
            if (index == 0)
                return new DesktopDevice<DesktopKeyboard>(desktop, "Keyboard");
            return new DesktopDevice<DesktopMouse>(desktop, "Mouse");
        }
        index -= numDesktopDevices_;
        AutoPtr<Pad> pad = index < pads_.size() ? session_.pads->OpenPad(pads_[index]) : nullptr;
        return pad != nullptr ? new PadDevice(std::move(pad)) : nullptr;
    }

    bool PollDeviceChanges() override
    {
        session_.input.Update();
        session_.pads->ListPads(found_);
        unsigned int const numBefore = std::exchange(numDesktopDevices_, GetNumDesktopDevices());
        if (found_ == pads_)
            return numBefore != numDesktopDevices_;
        for (unsigned int i = 0; i < names_.size(); ++i)
        {
            if (!std::binary_search(found_.begin(), found_.end(), pads_[i]))
                GetConOut() << "The game controller " << names_[i] << " was unplugged." << std::endl;
        }
        // Nothing more is reported before the next enumeration.
        pads_ = found_;
        names_.clear();
        return true;
    }

private:
    unsigned int GetNumDesktopDevices() const { return session_.input.HasOrWantsWindow() ? 2 : 0; }

    Session &session_;
    unsigned int numDesktopDevices_ = 0;
    /// Ids of the game controllers of the last enumeration, and their names.
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
