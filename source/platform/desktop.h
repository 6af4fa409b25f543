// Seam: displays, system colours, system cursors, components.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DESKTOP_H
#define QUILLMARSH_SOURCE_PLATFORM_DESKTOP_H

#include <quillmarsh/basetools/windows/winutils.h>
#include <quillmarsh/platform/displaymodes.h>

namespace quillmarsh::platform
{

/// Edges of a rectangle in pixels, right and bottom exclusive.
struct Area
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// @name The first display. False without one; the output is then unchanged
/// @{
bool ReadWorkArea(Area &area);
bool ReadDesktopMode(_devicemodeA &mode);
/// @}

/// Writes the values of a mode to the system's record, which has no others afterwards.
void WriteMode(DisplayMode const &mode, _devicemodeA &record);

/// @name What the system knows of its display
/// Not for a headless desktop.
/// @{
bool ReadSystemWorkArea(Area &area);
bool ReadSystemMode(DisplayMode &mode);
/// The system may write more than the four values of a DisplayMode.
bool ReadSystemMode(_devicemodeA &mode);
/// Appends the modes, in any order.
bool ReadSystemModes(std::vector<DisplayMode> &modes);
/// Returns the dots of an inch of the display, as far as the user's settings for texts tell; 0 or less if they do not.
float ReadSystemDots();
/// Prepares the system for windows that nobody sees, or for the usual ones.
bool SetSystemHeadless(bool isHeadless, string &reason);
/// @}

color4b ReadSystemColor(win_utils::eSystemColor color);
HCURSOR LoadSystemCursor(win_utils::eStockCursor cursor);

/// @name Components
/// @{
bool StartComponents();
void StopComponents();
void ReleaseComponent(IUnknown &component);
/// @}

} // namespace quillmarsh::platform

#endif
