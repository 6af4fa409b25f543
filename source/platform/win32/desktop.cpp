#include "source/platform/desktop.h"

#include "source/platform/win32/gdiplus.h"
#include "source/platform/win32/widetext.h"

#include <algorithm>
#include <iterator>
#include <mutex>

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

std::mutex s_drawingMutex;
unsigned int s_numDrawingStarts = 0;

/// Frees what the service's headers made around an object that is the service's own.
template<typename Object>
void Forget(Object *&generic)
{
    Gdiplus::DllExports::GdipFree(generic);
    generic = nullptr;
}

/// The headers keep what the service has for everybody once they have asked for it, and that ends with the service.
void ForgetGenericObjects()
{
    Forget(Gdiplus::_GdipFontFamilyCachedGenericMonospace);
    Forget(Gdiplus::_GdipFontFamilyCachedGenericSansSerif);
    Forget(Gdiplus::_GdipFontFamilyCachedGenericSerif);
    Forget(Gdiplus::_GdipStringFormatCachedGenericDefault);
    Forget(Gdiplus::_GdipStringFormatCachedGenericTypographic);
}

} // namespace

bool ReadWorkArea(Area &area)
{
    RECT found;
    if (SystemParametersInfoA(SPI_GETWORKAREA, 0, &found, 0) == 0)
        return false;
    area = {static_cast<int>(found.left), static_cast<int>(found.top), static_cast<int>(found.right),
            static_cast<int>(found.bottom)};
    return true;
}

bool ReadDisplayMode(_devicemodeA &mode)
{
    _devicemodeA found = {};
    found.dmSize = sizeof(found);
    bool const succeeded = EnumDisplaySettingsA(nullptr, ENUM_CURRENT_SETTINGS, &found) != 0;
    if (succeeded)
        mode = found;
    return succeeded;
}

bool ReadDisplayMode(DisplayMode &mode)
{
    _devicemodeA found;
    if (!ReadDisplayMode(found))
        return false;
    mode.width = found.dmPelsWidth;
    mode.height = found.dmPelsHeight;
    mode.bitsPerPixel = found.dmBitsPerPel;
    mode.frequency = found.dmDisplayFrequency;
    return true;
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
                LoadImageA(nullptr, row.resource, IMAGE_CURSOR, 0, 0, LR_DEFAULTSIZE | LR_SHARED));
    }
    return nullptr;
}

bool ReadFontFamilyNames(std::vector<string> &names)
{
    std::uintptr_t token = 0;
    if (!StartDrawing(token))
        return false;
    struct DrawingStopper
    {
        std::uintptr_t token;
        ~DrawingStopper() { StopDrawing(token); }
    } const stopper{token};
    Gdiplus::InstalledFontCollection const fonts;
    std::vector<Gdiplus::FontFamily> families(static_cast<std::size_t>(std::max(fonts.GetFamilyCount(), 0)));
    int numFound = 0;
    if (fonts.GetFamilies(static_cast<int>(families.size()), families.data(), &numFound) != Gdiplus::Ok)
        return false;
    for (int i = 0; i < numFound; ++i)
    {
        wchar_t name[LF_FACESIZE] = {};
        if (families[static_cast<std::size_t>(i)].GetFamilyName(name) == Gdiplus::Ok)
            names.push_back(FromSystem(name));
    }
    return true;
}

bool StartDrawing(std::uintptr_t &token)
{
    Gdiplus::GdiplusStartupInput const input;
    ULONG_PTR systemToken = 0;
    std::lock_guard const lock(s_drawingMutex);
    if (Gdiplus::GdiplusStartup(&systemToken, &input, nullptr) != Gdiplus::Ok)
        return false;
    ++s_numDrawingStarts;
    token = systemToken;
    return true;
}

void StopDrawing(std::uintptr_t token)
{
    std::lock_guard const lock(s_drawingMutex);
    if (--s_numDrawingStarts == 0)
        ForgetGenericObjects();
    Gdiplus::GdiplusShutdown(token);
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
