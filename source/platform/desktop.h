// Seam: displays, system colours, system cursors, components.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DESKTOP_H
#define QUILLMARSH_SOURCE_PLATFORM_DESKTOP_H

#include <quillmarsh/basetools/windows/winutils.h>

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

struct DisplayMode
{
    unsigned int width = 0;
    unsigned int height = 0;
    unsigned int bitsPerPixel = 0;
    unsigned int frequency = 0;
};

/// @name Display. False without one; the output is then unchanged
/// @{
bool ReadWorkArea(Area &area);
bool ReadDisplayMode(DisplayMode &mode);
bool ReadDisplayMode(_devicemodeA &mode);
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
