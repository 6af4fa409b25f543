#include <quillmarsh/platform/displaymodes.h>

#include <quillmarsh/platform/window.h>

#include "source/platform/desktop.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <tuple>

namespace quillmarsh::platform
{
namespace
{

constexpr int s_maxHeadlessSize = 16384;

constexpr DisplayMode MakeStandIn(unsigned int width, unsigned int height)
{
    return {width, height, 32, 60};
}

constexpr DisplayMode s_standIns[] = {MakeStandIn(640, 480), MakeStandIn(800, 600), MakeStandIn(1024, 768),
                                      MakeStandIn(1280, 1024), MakeStandIn(1600, 1200)};

/// Aligned as one word, so that it is read and written as one.
struct alignas(unsigned int) HeadlessSize
{
    unsigned short width = 0;
    unsigned short height = 0;
};

/// The size of the headless desktop; 0 for the system's desktop.
std::atomic<HeadlessSize> s_headlessSize;

/// Returns the mode that a display without a mode of its own has; nothing for any other display.
std::optional<DisplayMode> FindStandIn()
{
    if (HeadlessSize const size = s_headlessSize; size.width != 0)
        return MakeStandIn(size.width, size.height);
    DisplayMode mode;
    if (ReadSystemMode(mode) && (mode.width == 0 || mode.height == 0))
        return *std::rbegin(s_standIns);
    return std::nullopt;
}

} // namespace

float ReadDisplayScale()
{
    constexpr float dotsPerInch = 96;
    float const dots = IsHeadless() ? 0 : ReadSystemDots();
    return dots > 0 ? std::clamp(dots / dotsPerInch, 0.5f, 4.0f) : 1;
}

bool ReadDesktopMode(DisplayMode &mode)
{
    std::optional<DisplayMode> const standIn = FindStandIn();
    if (standIn)
        mode = *standIn;
    return standIn || ReadSystemMode(mode);
}

bool ReadDesktopMode(_devicemodeA &mode)
{
    std::optional<DisplayMode> const standIn = FindStandIn();
    if (standIn)
        WriteMode(*standIn, mode);
    return standIn || ReadSystemMode(mode);
}

bool ReadDisplayModes(std::vector<DisplayMode> &modes)
{
    std::vector<DisplayMode> found;
    std::optional<DisplayMode> const standIn = FindStandIn();
    if (!standIn && !ReadSystemModes(found))
        return false;
    std::erase_if(found, [](DisplayMode const &mode) { return mode.width == 0 || mode.height == 0; });
    if (found.empty())
        found.assign(std::begin(s_standIns), std::end(s_standIns));
    if (standIn)
        found.push_back(*standIn);
    auto const toRow = [](DisplayMode const &mode)
    { return std::tuple(mode.width, mode.height, mode.bitsPerPixel, mode.frequency); };
    std::sort(found.begin(), found.end(),
              [toRow](DisplayMode const &a, DisplayMode const &b) { return toRow(a) < toRow(b); });
    found.erase(std::unique(found.begin(), found.end()), found.end());
    modes = std::move(found);
    return true;
}

bool ReadWorkArea(Area &area)
{
    std::optional<DisplayMode> const standIn = FindStandIn();
    if (standIn)
        area = {0, 0, static_cast<int>(standIn->width), static_cast<int>(standIn->height)};
    return standIn || ReadSystemWorkArea(area);
}

bool UseHeadlessDesktop(int width, int height, string &reason)
{
    bool const isInRange = width >= 1 && width <= s_maxHeadlessSize && height >= 1 && height <= s_maxHeadlessSize;
    if (!isInRange)
    {
        reason = "A headless desktop has 1 to " + std::to_string(s_maxHeadlessSize) + " pixels each way, and not " +
                 std::to_string(width) + " x " + std::to_string(height) + ".";
        return false;
    }
    if (Window::GetNumOpen() > 0)
    {
        reason = "The desktop cannot change while windows are open.";
        return false;
    }
    if (!SetSystemHeadless(true, reason))
        return false;
    s_headlessSize = HeadlessSize{static_cast<unsigned short>(width), static_cast<unsigned short>(height)};
    return true;
}

bool LeaveHeadlessDesktop()
{
    string reason;
    bool const canLeave = Window::GetNumOpen() == 0;
    if (canLeave && IsHeadless())
    {
        s_headlessSize = HeadlessSize();
        SetSystemHeadless(false, reason);
    }
    return canLeave;
}

bool IsHeadless()
{
    return s_headlessSize.load().width != 0;
}

} // namespace quillmarsh::platform
