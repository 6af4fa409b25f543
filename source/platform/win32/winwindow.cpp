#include "source/platform/win32/winwindow.h"

#include <quillmarsh/basetools/texttools.h>

#include "source/platform/desktopevents.h"
#include "source/platform/win32/widetext.h"

#include <shellapi.h>

namespace quillmarsh::platform
{
namespace
{

bool s_isHoldWished = false;
bool s_isCursorConfined = false;
bool s_isMouseCursorShown = true;
/// What Windows was told last.
bool s_isCursorHidden = false;

/// Returns the rectangle of the whole window around a client area.
RECT AddFrame(HWND window, RECT area)
{
    AdjustWindowRectEx(&area, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)));
    return area;
}

MONITORINFOEXW GetDisplayOf(HWND window)
{
    MONITORINFOEXW info = {};
    info.cbSize = sizeof(info);
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    return info;
}

Window::Area ToArea(RECT const &rect)
{
    return {{static_cast<int>(rect.left), static_cast<int>(rect.top)},
            {static_cast<int>(rect.right - rect.left), static_cast<int>(rect.bottom - rect.top)}};
}

void CoverDisplay(HWND window)
{
    RECT const area = GetDisplayOf(window).rcMonitor;
    SetWindowPos(window, HWND_TOP, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_FRAMECHANGED);
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

DWORD GetWindowStyle(bool hasFrame, bool isResizable)
{
    DWORD style = WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    style |= hasFrame ? WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX : WS_POPUP;
    // A border to size with is a part of the frame.
    if (hasFrame && isResizable)
        style |= WS_THICKFRAME | WS_MAXIMIZEBOX;
    return style;
}

bool HasDisplay()
{
    return true;
}

Window::System *Window::OpenSystem(Window &window, WindowDesc const &desc, string &reason, eWindowStep &failedStep)
{
    auto system = std::make_unique<System>(window);
    auto const fail = [&](eWindowStep step)
    {
        failedStep = step;
        reason = "The desktop refuses a window: " + DescribeSystemError(GetLastError());
        return nullptr;
    };
    wchar_t const *const windowClass = GetWindowClass();
    if (!windowClass)
        return fail(eWindowStep::e_class);
    wstring title;
    AsciiToUnicode(desc.title, title);
    DWORD const style = GetWindowStyle(desc.hasFrame, desc.isResizable);
    RECT area = {0, 0, desc.width, desc.height};
    AdjustWindowRectEx(&area, style, FALSE, 0);
    system->window = CreateWindowExW(desc.isInTaskBar ? 0 : WS_EX_TOOLWINDOW, windowClass, ToSystem(title), style,
                                     CW_USEDEFAULT, CW_USEDEFAULT, area.right - area.left, area.bottom - area.top,
                                     nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (!system->window)
        return fail(eWindowStep::e_window);
    system->context = GetDC(system->window);
    if (!system->context)
        return fail(eWindowStep::e_deviceContext);
    system->isFilled = desc.isFilled;
    system->hasSystemKeys = desc.hasSystemKeys;
    SetWindowLongPtrW(system->window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(system.get()));
    RegisterMouse();
    AddClipboardFormatListener(system->window);
    DragAcceptFiles(system->window, TRUE);
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

HDC Window::GetDeviceContext() const
{
    return system_->context;
}

eWindowState Window::GetStateOnDesktop() const
{
    if (!IsWindowVisible(system_->window))
        return eWindowState::e_hidden;
    if (IsIconic(system_->window))
        return eWindowState::e_minimized;
    if (system_->isFullscreen)
        return eWindowState::e_fullscreen;
    return IsZoomed(system_->window) ? eWindowState::e_maximized : eWindowState::e_normal;
}

void Window::ShowOnDesktop()
{
    ShowWindow(system_->window, SW_SHOW);
}

void Window::HideOnDesktop()
{
    ShowWindow(system_->window, SW_HIDE);
}

void Window::MinimizeOnDesktop()
{
    ShowWindow(system_->window, SW_MINIMIZE);
}

void Window::MaximizeOnDesktop()
{
    ShowWindow(system_->window, SW_MAXIMIZE);
}

void Window::RestoreOnDesktop()
{
    bool const comesBackAsIcon = !system_->isFullscreen || IsIconic(system_->window);
    if (comesBackAsIcon)
    {
        ShowWindow(system_->window, SW_RESTORE);
        return;
    }
    system_->isFullscreen = false;
    system_->SetDisplayMode(nullptr);
    system_->mode.reset();
    SetWindowLongPtrW(system_->window, GWL_STYLE, system_->styleBefore);
    SetWindowPlacement(system_->window, &system_->placementBefore);
    SetWindowPos(system_->window, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
}

bool Window::SetFullscreenOnDesktop(DisplayMode const *mode, string &reason)
{
    if (system_->isFullscreen && !mode && !system_->mode)
        return true;
    if ((mode || system_->mode) && !system_->SetDisplayMode(mode))
    {
        reason = "The display does not have the mode, or refuses it.";
        return false;
    }
    system_->mode = mode ? std::optional(*mode) : std::nullopt;
    if (!system_->isFullscreen)
    {
        system_->isFullscreen = true;
        system_->styleBefore = GetWindowLongPtrW(system_->window, GWL_STYLE);
        system_->placementBefore.length = sizeof(system_->placementBefore);
        GetWindowPlacement(system_->window, &system_->placementBefore);
        SetWindowLongPtrW(system_->window, GWL_STYLE, (system_->styleBefore & ~WS_OVERLAPPEDWINDOW) | WS_POPUP);
    }
    CoverDisplay(system_->window);
    return true;
}

bool Window::System::SetDisplayMode(DisplayMode const *wanted)
{
    MONITORINFOEXW const display = GetDisplayOf(window);
    DEVMODEW record = {};
    record.dmSize = sizeof(record);
    record.dmFields = DM_PELSWIDTH | DM_PELSHEIGHT | DM_BITSPERPEL;
    if (wanted)
    {
        record.dmFields |= wanted->frequency != 0 ? DM_DISPLAYFREQUENCY : 0;
        record.dmPelsWidth = wanted->width;
        record.dmPelsHeight = wanted->height;
        record.dmBitsPerPel = wanted->bitsPerPixel;
        record.dmDisplayFrequency = wanted->frequency;
    }
    if (!wanted && !isModeSet)
        return true;
    bool const isDone = ChangeDisplaySettingsExW(display.szDevice, wanted ? &record : nullptr, nullptr,
                                                 wanted ? CDS_FULLSCREEN : 0, nullptr) == DISP_CHANGE_SUCCESSFUL;
    if (isDone)
        isModeSet = wanted != nullptr;
    return isDone;
}

void Window::System::FollowFocus(bool isActive)
{
    if (!mode || isActive == isModeSet)
        return;
    SetDisplayMode(isActive ? &*mode : nullptr);
    if (isActive)
        CoverDisplay(window);
    else
        ShowWindow(window, SW_MINIMIZE);
}

void Window::ActivateOnDesktop()
{
    HWND const window = system_->window;
    SetForegroundWindow(window);
    // A listener may have closed the window meanwhile; Windows then refuses it.
    SetFocus(window);
}

bool Window::IsActiveOnDesktop() const
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

void Window::SetSizeLimits(Size smallest, Size largest)
{
    system_->smallest = smallest;
    system_->largest = largest;
}

void Window::System::LimitSize(MINMAXINFO &info) const
{
    RECT const frame = AddFrame(window, {});
    LONG const extraWidth = frame.right - frame.left;
    LONG const extraHeight = frame.bottom - frame.top;
    auto const limit = [](LONG &value, int wanted, LONG extra) { value = wanted > 0 ? wanted + extra : value; };
    limit(info.ptMinTrackSize.x, smallest.width, extraWidth);
    limit(info.ptMinTrackSize.y, smallest.height, extraHeight);
    limit(info.ptMaxTrackSize.x, largest.width, extraWidth);
    limit(info.ptMaxTrackSize.y, largest.height, extraHeight);
}

Window::Frame Window::GetFrame() const
{
    RECT const frame = AddFrame(system_->window, {});
    return {static_cast<int>(-frame.left), static_cast<int>(-frame.top), static_cast<int>(frame.right),
            static_cast<int>(frame.bottom)};
}

Window::Area Window::GetWorkAreaOnDesktop() const
{
    return ToArea(GetDisplayOf(system_->window).rcWork);
}

void HoldCursor(bool hold)
{
    s_isHoldWished = hold;
    UpdateCursorHold();
}

void ShowMouseCursor(bool show)
{
    s_isMouseCursorShown = show;
    UpdateCursorHold();
}

bool IsMouseCursorShown()
{
    return s_isMouseCursorShown;
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
    if (holds || s_isCursorConfined)
        ClipCursor(holds ? &area : nullptr);
    s_isCursorConfined = holds;
    // ShowCursor counts its calls, so call it only on a change.
    bool const hides = holds || !s_isMouseCursorShown;
    if (hides != s_isCursorHidden)
        ShowCursor(hides ? FALSE : TRUE);
    s_isCursorHidden = hides;
}

} // namespace quillmarsh::platform
