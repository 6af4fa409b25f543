#include "source/platform/desktop.h"

#include "source/platform/linux/sdl/sdlfunctions.h"
#include "source/platform/linux/sdl/sdlvideo.h"
#include "source/platform/linux/sdl/sdlwindow.h"

#include <iterator>
#include <map>

namespace quillmarsh::platform
{
namespace
{

using win_utils::eStockCursor;
using win_utils::eSystemColor;

constexpr int s_firstDisplay = 0;

struct ColorRow
{
    eSystemColor color;
    color4b value;
};

constexpr ColorRow s_systemColors[] = {
    {eSystemColor::e_desktop, color4b(58, 110, 165, 255)},
    {eSystemColor::e_window, color4b(255, 255, 255, 255)},
    {eSystemColor::e_windowFrame, color4b(100, 100, 100, 255)},
    {eSystemColor::e_windowText, color4b(0, 0, 0, 255)},
    {eSystemColor::e_highlight, color4b(53, 132, 228, 255)},
    {eSystemColor::e_highlightText, color4b(255, 255, 255, 255)},
    {eSystemColor::e_grayText, color4b(109, 109, 109, 255)},
    {eSystemColor::e_buttonFace, color4b(240, 240, 240, 255)},
    {eSystemColor::e_buttonShadow, color4b(160, 160, 160, 255)},
    {eSystemColor::e_buttonHighlight, color4b(255, 255, 255, 255)},
    {eSystemColor::e_buttonText, color4b(0, 0, 0, 255)},
    {eSystemColor::e_activeCaption, color4b(153, 180, 209, 255)},
    {eSystemColor::e_activeCaptionText, color4b(0, 0, 0, 255)},
    {eSystemColor::e_inactiveCaption, color4b(191, 205, 219, 255)},
    {eSystemColor::e_inactiveCaptionText, color4b(67, 78, 84, 255)},
    {eSystemColor::e_scrollBar, color4b(200, 200, 200, 255)},
    {eSystemColor::e_infoBackground, color4b(255, 255, 225, 255)},
    {eSystemColor::e_infoText, color4b(0, 0, 0, 255)},
};

struct CursorRow
{
    eStockCursor cursor;
    SDL_SystemCursor system;
};

constexpr CursorRow s_systemCursors[] = {
    {eStockCursor::e_arrow, SDL_SYSTEM_CURSOR_ARROW},
    {eStockCursor::e_iBeam, SDL_SYSTEM_CURSOR_IBEAM},
    {eStockCursor::e_wait, SDL_SYSTEM_CURSOR_WAIT},
    {eStockCursor::e_appStarting, SDL_SYSTEM_CURSOR_WAITARROW},
    {eStockCursor::e_cross, SDL_SYSTEM_CURSOR_CROSSHAIR},
    {eStockCursor::e_hand, SDL_SYSTEM_CURSOR_HAND},
    {eStockCursor::e_no, SDL_SYSTEM_CURSOR_NO},
    {eStockCursor::e_sizeAll, SDL_SYSTEM_CURSOR_SIZEALL},
    {eStockCursor::e_sizeNorthSouth, SDL_SYSTEM_CURSOR_SIZENS},
    {eStockCursor::e_sizeWestEast, SDL_SYSTEM_CURSOR_SIZEWE},
    {eStockCursor::e_sizeNorthWestSouthEast, SDL_SYSTEM_CURSOR_SIZENWSE},
    {eStockCursor::e_sizeNorthEastSouthWest, SDL_SYSTEM_CURSOR_SIZENESW},
};

/// A hint that is set while the cached cursors are valid. SDL_Quit frees the cursors and resets all hints.
constexpr char const *s_cursorsAreGood = "QUILLMARSH_CURSORS_ARE_GOOD";

HCURSOR GetCursor(SDL_SystemCursor system)
{
    static std::map<SDL_SystemCursor, SDL_Cursor *> cursors;

    // A headless desktop has no mouse, and a cursor would keep its driver running.
    if (IsHeadless())
        return nullptr;
    SdlVideoSentry video;
    if (!video.IsStarted())
        return nullptr;
    bool const areGood = SDL_GetHint(s_cursorsAreGood) != nullptr;
    if (!areGood)
        cursors.clear();
    SDL_Cursor *&cursor = cursors[system];
    if (!cursor)
        cursor = SDL_CreateSystemCursor(system);
    if (cursor && !areGood)
    {
        video.KeepRunning();
        SDL_SetHint(s_cursorsAreGood, "1");
    }
    return reinterpret_cast<HCURSOR>(cursor);
}

DisplayMode ToDisplayMode(SDL_DisplayMode const &mode)
{
    // Formats with 24 bits use 32 bits on the display.
    unsigned int const bits = SDL_BITSPERPIXEL(mode.format);
    return {static_cast<unsigned int>(mode.w), static_cast<unsigned int>(mode.h), bits == 24 ? 32 : bits,
            static_cast<unsigned int>(mode.refresh_rate)};
}

} // namespace

bool ReadSystemWorkArea(Area &area)
{
    SdlVideoSentry const video;
    SDL_Rect bounds;
    if (!video.IsStarted() || SDL_GetDisplayUsableBounds(s_firstDisplay, &bounds) != 0)
        return false;
    area = {bounds.x, bounds.y, bounds.x + bounds.w, bounds.y + bounds.h};
    return true;
}

bool ReadSystemMode(DisplayMode &mode)
{
    SdlVideoSentry const video;
    SDL_DisplayMode found;
    if (!video.IsStarted() || SDL_GetDesktopDisplayMode(s_firstDisplay, &found) != 0)
        return false;
    mode = ToDisplayMode(found);
    return true;
}

bool ReadSystemMode(_devicemodeA &record)
{
    record = {};
    record.dmSize = sizeof(record);
    DisplayMode mode;
    bool const isRead = ReadSystemMode(mode);
    if (isRead)
        WriteMode(mode, record);
    return isRead;
}

bool ReadSystemModes(std::vector<DisplayMode> &modes)
{
    SdlVideoSentry const video;
    if (!video.IsStarted())
        return false;
    int const numModes = SDL_GetNumDisplayModes(s_firstDisplay);
    for (int i = 0; i < numModes; ++i)
    {
        SDL_DisplayMode found;
        if (SDL_GetDisplayMode(s_firstDisplay, i, &found) == 0)
            modes.push_back(ToDisplayMode(found));
    }
    return numModes > 0;
}

bool FindSdlMode(int display, DisplayMode const &mode, SDL_DisplayMode &found)
{
    int const numModes = SDL_GetNumDisplayModes(display);
    for (bool const isExact : {true, false})
    {
        for (int i = 0; i < numModes; ++i)
        {
            if (SDL_GetDisplayMode(display, i, &found) != 0)
                continue;
            DisplayMode offered = ToDisplayMode(found);
            // 0 stands for a frequency that is not known, or that does not matter.
            if (!isExact && (offered.frequency == 0 || mode.frequency == 0))
                offered.frequency = mode.frequency;
            if (offered == mode)
                return true;
        }
    }
    return false;
}

bool SetSystemHeadless(bool isHeadless, string &reason)
{
    if (!LoadSdl())
    {
        reason = GetSdlFailure();
        return false;
    }
    if (SDL_WasInit(SDL_INIT_VIDEO) != 0)
    {
        reason = "The desktop cannot change while SDL is in use.";
        return false;
    }
    return UseOffscreenDriver(isHeadless, reason);
}

void WriteMode(DisplayMode const &mode, _devicemodeA &record)
{
    constexpr unsigned int fieldsWritten = 0x40000 | 0x80000 | 0x100000 | 0x400000;
    record = {};
    record.dmSize = sizeof(record);
    record.dmFields = fieldsWritten;
    record.dmPelsWidth = mode.width;
    record.dmPelsHeight = mode.height;
    record.dmBitsPerPel = mode.bitsPerPixel;
    record.dmDisplayFrequency = mode.frequency;
}

color4b ReadSystemColor(eSystemColor color)
{
    for (ColorRow const &row : s_systemColors)
    {
        if (row.color == color)
            return row.value;
    }
    return color4b(0, 0, 0, 255);
}

HCURSOR LoadSystemCursor(eStockCursor cursor)
{
    for (CursorRow const &row : s_systemCursors)
    {
        if (row.cursor == cursor)
            return GetCursor(row.system);
    }
    return nullptr;
}

bool StartComponents()
{
    return true;
}

void StopComponents() {}

void ReleaseComponent(IUnknown &component)
{
    component.Release();
}

} // namespace quillmarsh::platform
