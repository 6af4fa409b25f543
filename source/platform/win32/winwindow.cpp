#include "source/platform/win32/winwindow.h"

#include <quillmarsh/basetools/texttools.h>

#include "source/platform/desktopevents.h"
#include "source/platform/win32/widetext.h"

namespace quillmarsh::platform
{
namespace
{

bool s_isHoldWished = false;
bool s_isCursorHidden = false;

DWORD GetStyle(WindowDesc const &desc)
{
    DWORD style = WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    style |= desc.hasFrame ? WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX : WS_POPUP;
    if (desc.isResizable)
        style |= WS_THICKFRAME | WS_MAXIMIZEBOX;
    return style;
}

/// Returns the rectangle of the whole window around a client area.
RECT AddFrame(HWND window, RECT area)
{
    AdjustWindowRectEx(&area, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)));
    return area;
}

/// Returns the rectangle of a window's display.
RECT GetDisplayOf(HWND window)
{
    MONITORINFO info = {};
    info.cbSize = sizeof(info);
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    return info.rcMonitor;
}

RECT GetClientAreaOnDesktop(HWND window)
{
    RECT area = {};
    GetClientRect(window, &area);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT *>(&area), 2);
    return area;
}

void RegisterMouse()
{
    // Requests raw movements, which are used while the cursor is held. They go to the window with the focus.
    constexpr USHORT genericDesktopPage = 1;
    constexpr USHORT mouseUsage = 2;
    RAWINPUTDEVICE const mouse = {genericDesktopPage, mouseUsage, 0, nullptr};
    RegisterRawInputDevices(&mouse, 1, sizeof(mouse));
}

} // namespace

bool HasDisplay()
{
    return true;
}

Window::System *Window::OpenSystem(Window &window, WindowDesc const &desc, string &reason)
{
    auto system = std::make_unique<System>(window);
    wstring title;
    AsciiToUnicode(desc.title, title);
    DWORD const style = GetStyle(desc);
    RECT area = {0, 0, desc.width, desc.height};
    AdjustWindowRectEx(&area, style, FALSE, 0);
    system->window = CreateWindowExW(0, GetWindowClass(), ToSystem(title), style, CW_USEDEFAULT, CW_USEDEFAULT,
                                     area.right - area.left, area.bottom - area.top, nullptr, nullptr,
                                     GetModuleHandleW(nullptr), nullptr);
    if (!system->window)
    {
        reason = "The desktop refuses a window: " + DescribeSystemError(GetLastError());
        return nullptr;
    }
    system->isFilled = desc.isFilled;
    SetWindowLongPtrW(system->window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(system.get()));
    RegisterMouse();
    AddClipboardFormatListener(system->window);
    return system.release();
}

void Window::SystemDeleter::operator()(System *system) const
{
    delete system;
}

HWND Window::GetHandle() const
{
    return system_->window;
}

void Window::SetTitle(string const &title)
{
    wstring text;
    if (AsciiToUnicode(title, text))
        SetWindowTextW(system_->window, ToSystem(text));
}

string Window::GetTitle() const
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(system_->window)) + 1, L'\0');
    GetWindowTextW(system_->window, text.data(), static_cast<int>(text.size()));
    return FromSystem(text.c_str());
}

eWindowState Window::GetState() const
{
    if (!IsWindowVisible(system_->window))
        return eWindowState::e_hidden;
    if (IsIconic(system_->window))
        return eWindowState::e_minimized;
    if (system_->isFullscreen)
        return eWindowState::e_fullscreen;
    return IsZoomed(system_->window) ? eWindowState::e_maximized : eWindowState::e_normal;
}

void Window::Show()
{
    ShowWindow(system_->window, SW_SHOW);
}

void Window::Hide()
{
    ShowWindow(system_->window, SW_HIDE);
}

void Window::Minimize()
{
    ShowWindow(system_->window, SW_MINIMIZE);
}

void Window::Maximize()
{
    ShowWindow(system_->window, SW_MAXIMIZE);
}

void Window::Restore()
{
    if (!system_->isFullscreen)
    {
        ShowWindow(system_->window, SW_RESTORE);
        return;
    }
    system_->isFullscreen = false;
    SetWindowLongPtrW(system_->window, GWL_STYLE, system_->styleBefore);
    SetWindowPlacement(system_->window, &system_->placementBefore);
    SetWindowPos(system_->window, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
}

void Window::SetFullscreen()
{
    if (system_->isFullscreen)
        return;
    system_->isFullscreen = true;
    system_->styleBefore = GetWindowLongPtrW(system_->window, GWL_STYLE);
    system_->placementBefore.length = sizeof(system_->placementBefore);
    GetWindowPlacement(system_->window, &system_->placementBefore);
    SetWindowLongPtrW(system_->window, GWL_STYLE, (system_->styleBefore & ~WS_OVERLAPPEDWINDOW) | WS_POPUP);
    RECT const area = GetDisplayOf(system_->window);
    SetWindowPos(system_->window, HWND_TOP, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_FRAMECHANGED);
}

void Window::Activate()
{
    SetForegroundWindow(system_->window);
    SetFocus(system_->window);
}

bool Window::IsActive() const
{
    return GetFocus() == system_->window;
}

Window::Position Window::GetPosition() const
{
    RECT const area = GetClientAreaOnDesktop(system_->window);
    return {static_cast<int>(area.left), static_cast<int>(area.top)};
}

void Window::SetPosition(Position position)
{
    RECT const whole = AddFrame(system_->window, {position.x, position.y, position.x, position.y});
    SetWindowPos(system_->window, nullptr, whole.left, whole.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

Window::Size Window::GetSize() const
{
    RECT area = {};
    GetClientRect(system_->window, &area);
    return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

void Window::SetSize(Size size)
{
    RECT const whole = AddFrame(system_->window, {0, 0, size.width, size.height});
    SetWindowPos(system_->window, nullptr, 0, 0, whole.right - whole.left, whole.bottom - whole.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Window::Invalidate()
{
    InvalidateRect(system_->window, nullptr, FALSE);
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

void HoldCursor(bool hold)
{
    s_isHoldWished = hold;
    UpdateCursorHold();
}

bool IsCursorHeld()
{
    return s_isHoldWished && Window::GetActive() != nullptr;
}

void UpdateCursorHold()
{
    Window const *const active = Window::GetActive();
    bool const holds = IsCursorHeld();
    RECT const area = holds ? GetClientAreaOnDesktop(active->GetHandle()) : RECT();
    if (holds || s_isCursorHidden)
        ClipCursor(holds ? &area : nullptr);
    // ShowCursor counts its calls, so call it only on a change.
    if (holds != s_isCursorHidden)
        ShowCursor(holds ? FALSE : TRUE);
    s_isCursorHidden = holds;
}

} // namespace quillmarsh::platform
