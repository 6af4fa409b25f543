// Seam: displays, system colours, system cursors, installed fonts.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DESKTOP_H
#define QUILLMARSH_SOURCE_PLATFORM_DESKTOP_H

#include <quillmarsh/basetools/winutils.h>

#include <vector>

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

/// @name False without a display, and then nothing is written
/// @{
bool ReadWorkArea(Area &area);
bool ReadDisplayMode(DisplayMode &mode);
bool ReadDisplayMode(_devicemodeA &mode);
/// @}

color4b ReadSystemColor(win_utils::eSystemColor color);
HCURSOR LoadSystemCursor(win_utils::eStockCursor cursor);
bool ReadFontFamilyNames(std::vector<string> &names);

/// @name Services that may need a start
/// @{
bool StartDrawing(std::uintptr_t &token);
void StopDrawing(std::uintptr_t token);
bool StartComponents();
void StopComponents();
void ReleaseComponent(IUnknown &component);
/// @}

} // namespace quillmarsh::platform

#endif
