#include "winpad.h"

#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

#include <windows.h>

namespace input_desktop
{

using namespace quillmarsh;

namespace
{

// Milliseconds between two looks for game controllers without a window.
constexpr ULONGLONG s_findInterval = 2000;

/// Looking for game controllers takes milliseconds: it is done when the desktop tells that hardware came or went, and now
/// and then while there is no window to hear of that.
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
