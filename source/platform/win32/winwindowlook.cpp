// How a window looks, what it shows, and what it asks of the desktop.
#include "source/platform/desktopevents.h"
#include "source/platform/win32/winkeys.h"
#include "source/platform/win32/winwindow.h"

#include <algorithm>

namespace quillmarsh::platform
{
namespace
{

/// Number of windows that keep the display on. The desktop's thread only.
unsigned int s_numKeepingOn = 0;

void UpdateKeepingOn()
{
    SetThreadExecutionState(ES_CONTINUOUS | (s_numKeepingOn > 0 ? ES_DISPLAY_REQUIRED : 0));
}

void SetStyle(HWND window, int index, LONG_PTR removed, LONG_PTR added)
{
    SetWindowLongPtrW(window, index, (GetWindowLongPtrW(window, index) & ~removed) | added);
}

/// Copies pixels to a bitmap of the system, upper row first.
HBITMAP MakeBitmap(PixelRows const &pixels)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = static_cast<LONG>(pixels.numColumns);
    info.bmiHeader.biHeight = -static_cast<LONG>(pixels.numRows);
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void *bits = nullptr;
    HBITMAP const bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    std::size_t const rowBytes = std::size_t(pixels.numColumns) * 4;
    for (unsigned int row = 0; bitmap && row < pixels.numRows; ++row)
    {
        auto *const target = static_cast<unsigned char *>(bits) + row * rowBytes;
        std::copy_n(pixels.GetRow(row), rowBytes, target);
        for (std::size_t i = 3; !pixels.hasAlpha && i < rowBytes; i += 4)
            target[i] = 255;
    }
    return bitmap;
}

bool IsOn(int key)
{
    return IsDesktopThread() && (GetKeyState(key) & 1) != 0;
}

} // namespace

Window::System::~System()
{
    SetDisplayMode(nullptr);
    if (keepsDisplayOn)
    {
        --s_numKeepingOn;
        UpdateKeepingOn();
    }
    if (window)
        DestroyWindow(window);
}

void Window::KeepDisplayOn(bool keepOn)
{
    if (keepOn == system_->keepsDisplayOn)
        return;
    system_->keepsDisplayOn = keepOn;
    s_numKeepingOn += keepOn ? 1u : ~0u;
    UpdateKeepingOn();
}

void Window::Invalidate()
{
    if (!IsHeadless())
        InvalidateRect(system_->window, nullptr, FALSE);
    else if (!system_->isInvalid.exchange(true))
        PostMessageW(system_->window, s_messageExposed, 0, 0);
}

void Window::Wake()
{
    PostMessageW(system_->window, WM_NULL, 0, 0);
}

void Window::ShowImage(PixelRows const &pixels)
{
    if (pixels.numRows == 0 || pixels.numColumns == 0)
        return;
    // The system takes rows whose length is a number of pixels, lowest row first for a positive height.
    bool const isUpward = pixels.stride < 0;
    std::ptrdiff_t const stride = isUpward ? -pixels.stride : pixels.stride;
    LONG const numRows = static_cast<LONG>(pixels.numRows);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = static_cast<LONG>(stride / 4);
    info.bmiHeader.biHeight = isUpward ? numRows : -numRows;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    SetDIBitsToDevice(system_->context, 0, 0, pixels.numColumns, pixels.numRows, 0, 0, 0, pixels.numRows,
                      isUpward ? pixels.GetRow(pixels.numRows - 1) : pixels.first, &info, DIB_RGB_COLORS);
}

void Window::SetFrame(bool hasFrame, bool isResizable)
{
    Size const size = GetSize();
    LONG_PTR const style = GetWindowLongPtrW(system_->window, GWL_STYLE);
    LONG_PTR const kept = style & ~static_cast<LONG_PTR>(WS_OVERLAPPEDWINDOW | WS_POPUP);
    SetWindowLongPtrW(system_->window, GWL_STYLE, kept | static_cast<LONG_PTR>(GetWindowStyle(hasFrame, isResizable)));
    SetWindowPos(system_->window, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    SetSize(size);
}

void Window::SetAlwaysOnTop(bool isOnTop)
{
    SetWindowPos(system_->window, isOnTop ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Window::SetOpacity(unsigned char opacity, std::optional<Color> const &key)
{
    bool const isLayered = opacity != 255 || key;
    SetStyle(system_->window, GWL_EXSTYLE, isLayered ? 0 : WS_EX_LAYERED, isLayered ? WS_EX_LAYERED : 0);
    if (isLayered)
    {
        Color const color = key.value_or(Color());
        SetLayeredWindowAttributes(system_->window, RGB(color.red, color.green, color.blue), opacity,
                                   static_cast<DWORD>(LWA_ALPHA | (key ? LWA_COLORKEY : 0)));
    }
}

void Window::SetIcon(HICON icon)
{
    SendMessageW(system_->window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon));
    SendMessageW(system_->window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
}

HICON Window::MakeIcon(PixelRows const &pixels)
{
    // The mask is not read where the image has alpha.
    ICONINFO info = {};
    info.fIcon = TRUE;
    info.hbmColor = MakeBitmap(pixels);
    info.hbmMask = CreateBitmap(static_cast<int>(pixels.numColumns), static_cast<int>(pixels.numRows), 1, 1, nullptr);
    HICON const icon = info.hbmColor && info.hbmMask ? CreateIconIndirect(&info) : nullptr;
    for (HBITMAP const bitmap : {info.hbmColor, info.hbmMask})
    {
        if (bitmap)
            DeleteObject(bitmap);
    }
    return icon;
}

void Window::FreeIcon(HICON icon)
{
    if (icon)
        DestroyIcon(icon);
}

void Window::SetCursor(HCURSOR cursor)
{
    system_->cursor = cursor;
    if (system_->isMouseInside)
        ::SetCursor(cursor);
}

void Window::MoveCursor(int x, int y)
{
    POINT position = {x, y};
    ClientToScreen(system_->window, &position);
    SetCursorPos(position.x, position.y);
}

void Window::OpenSystemMenu(Position position)
{
    HMENU const menu = GetSystemMenu(system_->window, FALSE);
    if (!menu || IsHeadless())
        return;
    POINT where = {position.x, position.y};
    ClientToScreen(system_->window, &where);
    int const command = TrackPopupMenu(menu, TPM_RETURNCMD, where.x, where.y, 0, system_->window, nullptr);
    if (command != 0)
        PostMessageW(system_->window, WM_SYSCOMMAND, static_cast<WPARAM>(command), 0);
}

bool FindMouse(Window::Position &position)
{
    POINT found;
    if (!IsDesktopThread() || IsHeadless() || !GetCursorPos(&found))
        return false;
    position = {static_cast<int>(found.x), static_cast<int>(found.y)};
    return true;
}

bool IsKeyDown(eKey key)
{
    unsigned int const virtualKey = IsDesktopThread() ? FindVirtualKey(key) : 0;
    return virtualKey != 0 && GetKeyState(static_cast<int>(virtualKey)) < 0;
}

bool IsCapsLockOn()
{
    return IsOn(VK_CAPITAL);
}

bool IsNumLockOn()
{
    return IsOn(VK_NUMLOCK);
}

bool IsScrollLockOn()
{
    return IsOn(VK_SCROLL);
}

} // namespace quillmarsh::platform
