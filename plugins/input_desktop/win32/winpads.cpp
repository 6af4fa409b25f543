#include "winpad.h"

#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

#include <windows.h>

namespace input_desktop
{

using namespace quillmarsh;

namespace
{

// Milliseconds between two searches for game controllers while no window is open.
constexpr ULONGLONG s_findInterval = 2000;

/// Searches for game controllers only when the desktop reports changed hardware, because a search takes milliseconds.
/// While no window is open, nothing reports such changes, and it searches at intervals.
class WinPads final : public PadSystem, platform::DesktopListener
{
public:
    void ListPads(std::vector<unsigned int> &ids) override
    {
        ULONGLONG const now = GetTickCount64();
        bool const hearsNothing = platform::Window::GetNumOpen() == 0;
        if (mustFindPads_ || (hearsNothing && now - foundAt_ > s_findInterval))
        {
            FindWinPads(pads_);
            foundAt_ = now;
        }
        mustFindPads_ = false;
        ids = pads_;
    }
    string GetPadName(unsigned int id) override { return GetWinPadName(id); }
    AutoPtr<Pad> OpenPad(unsigned int id) override { return OpenWinPad(id); }

private:
    void OnDesktopEvent(platform::DesktopEvent const &event) override
    {
        if (event.kind == platform::eDesktopEvent::e_hardware)
            mustFindPads_ = true;
    }

    bool mustFindPads_ = true;
    ULONGLONG foundAt_ = 0;
    std::vector<unsigned int> pads_;
    platform::DesktopSubscription const subscription_{*this};
};

} // namespace

AutoPtr<PadSystem> StartPadSystem()
{
    return std::make_unique<WinPads>();
}

} // namespace input_desktop
