#include "source/platform/desktop.h"

#include "source/platform/win32/windows.h"

#include <objbase.h>

namespace quillmarsh::platform
{
namespace
{

using win_utils::eStockCursor;
using win_utils::eSystemColor;

struct ColorRow
{
    eSystemColor color;
    int index;
};

constexpr ColorRow s_systemColors[] = {
    {eSystemColor::e_desktop, COLOR_DESKTOP},
    {eSystemColor::e_window, COLOR_WINDOW},
    {eSystemColor::e_windowFrame, COLOR_WINDOWFRAME},
    {eSystemColor::e_windowText, COLOR_WINDOWTEXT},
    {eSystemColor::e_highlight, COLOR_HIGHLIGHT},
    {eSystemColor::e_highlightText, COLOR_HIGHLIGHTTEXT},
    {eSystemColor::e_grayText, COLOR_GRAYTEXT},
    {eSystemColor::e_buttonFace, COLOR_BTNFACE},
    {eSystemColor::e_buttonShadow, COLOR_BTNSHADOW},
    {eSystemColor::e_buttonHighlight, COLOR_BTNHIGHLIGHT},
    {eSystemColor::e_buttonText, COLOR_BTNTEXT},
    {eSystemColor::e_activeCaption, COLOR_ACTIVECAPTION},
    {eSystemColor::e_activeCaptionText, COLOR_CAPTIONTEXT},
    {eSystemColor::e_inactiveCaption, COLOR_INACTIVECAPTION},
    {eSystemColor::e_inactiveCaptionText, COLOR_INACTIVECAPTIONTEXT},
    {eSystemColor::e_scrollBar, COLOR_SCROLLBAR},
    {eSystemColor::e_infoBackground, COLOR_INFOBK},
    {eSystemColor::e_infoText, COLOR_INFOTEXT},
};

struct CursorRow
{
    eStockCursor cursor;
    char const *resource;
};

DisplayMode ToDisplayMode(_devicemodeA const &record)
{
    return {static_cast<unsigned int>(record.dmPelsWidth), static_cast<unsigned int>(record.dmPelsHeight),
            static_cast<unsigned int>(record.dmBitsPerPel), static_cast<unsigned int>(record.dmDisplayFrequency)};
}

} // namespace

float ReadSystemDots()
{
    HDC const screen = GetDC(nullptr);
    if (screen == nullptr)
        return 0;
    int const dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return static_cast<float>(dots);
}

bool ReadSystemWorkArea(Area &area)
{
    RECT found;
    if (SystemParametersInfoA(SPI_GETWORKAREA, 0, &found, 0) == 0)
        return false;
    area = {static_cast<int>(found.left), static_cast<int>(found.top), static_cast<int>(found.right),
            static_cast<int>(found.bottom)};
    return true;
}

bool ReadSystemMode(_devicemodeA &mode)
{
    _devicemodeA found = {};
    found.dmSize = sizeof(found);
    bool const succeeded = EnumDisplaySettingsA(nullptr, ENUM_CURRENT_SETTINGS, &found) != 0;
    if (succeeded)
        mode = found;
    return succeeded;
}

bool ReadSystemMode(DisplayMode &mode)
{
    _devicemodeA found;
    if (!ReadSystemMode(found))
        return false;
    mode = ToDisplayMode(found);
    return true;
}

bool ReadSystemModes(std::vector<DisplayMode> &modes)
{
    _devicemodeA found = {};
    found.dmSize = sizeof(found);
    DWORD numModes = 0;
    while (EnumDisplaySettingsA(nullptr, numModes, &found) != 0)
    {
        modes.push_back(ToDisplayMode(found));
        ++numModes;
    }
    return numModes > 0;
}

bool SetSystemHeadless(bool, string &)
{
    return true;
}

void WriteMode(DisplayMode const &mode, _devicemodeA &record)
{
    record = {};
    record.dmSize = sizeof(record);
    record.dmFields = DM_PELSWIDTH | DM_PELSHEIGHT | DM_BITSPERPEL | DM_DISPLAYFREQUENCY;
    record.dmPelsWidth = mode.width;
    record.dmPelsHeight = mode.height;
    record.dmBitsPerPel = mode.bitsPerPixel;
    record.dmDisplayFrequency = mode.frequency;
}

color4b ReadSystemColor(eSystemColor color)
{
    for (ColorRow const &row : s_systemColors)
    {
        if (row.color != color)
            continue;
        DWORD const found = GetSysColor(row.index);
        return color4b(GetRValue(found), GetGValue(found), GetBValue(found), 255);
    }
    return color4b(0, 0, 0, 255);
}

HCURSOR LoadSystemCursor(eStockCursor cursor)
{
    static CursorRow const s_cursors[] = {
        {eStockCursor::e_arrow, IDC_ARROW},
        {eStockCursor::e_iBeam, IDC_IBEAM},
        {eStockCursor::e_wait, IDC_WAIT},
        {eStockCursor::e_appStarting, IDC_APPSTARTING},
        {eStockCursor::e_cross, IDC_CROSS},
        {eStockCursor::e_hand, IDC_HAND},
        {eStockCursor::e_no, IDC_NO},
        {eStockCursor::e_sizeAll, IDC_SIZEALL},
        {eStockCursor::e_sizeNorthSouth, IDC_SIZENS},
        {eStockCursor::e_sizeWestEast, IDC_SIZEWE},
        {eStockCursor::e_sizeNorthWestSouthEast, IDC_SIZENWSE},
        {eStockCursor::e_sizeNorthEastSouthWest, IDC_SIZENESW},
    };
    for (CursorRow const &row : s_cursors)
    {
        if (row.cursor == cursor)
            return static_cast<HCURSOR>(
                ::LoadImageA(nullptr, row.resource, IMAGE_CURSOR, 0, 0, LR_DEFAULTSIZE | LR_SHARED));
    }
    return nullptr;
}

bool StartComponents()
{
    return SUCCEEDED(CoInitialize(nullptr));
}

void StopComponents()
{
    CoUninitialize();
}

void ReleaseComponent(IUnknown &component)
{
    component.Release();
}

} // namespace quillmarsh::platform
