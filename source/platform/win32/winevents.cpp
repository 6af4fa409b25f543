// Turns the messages of windows into events.
#include "source/platform/desktopevents.h"
#include "source/platform/win32/winkeys.h"
#include "source/platform/win32/winwindow.h"

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

#include <shellapi.h>
#include <windowsx.h>

namespace quillmarsh::platform
{
namespace
{

constexpr wchar_t s_szWindowClass[] = L"QuillmarshWindow";

/// Exception that a listener threw during a call by Windows.
std::exception_ptr s_thrown;

/// The two messages of a mouse button.
struct ButtonMessage
{
    UINT down;
    UINT up;
    eMouseButton button;
};

constexpr ButtonMessage s_buttonMessages[] = {
    {WM_LBUTTONDOWN, WM_LBUTTONUP, e_mouse_button_left},
    {WM_RBUTTONDOWN, WM_RBUTTONUP, e_mouse_button_right},
    {WM_MBUTTONDOWN, WM_MBUTTONUP, e_mouse_button_middle},
    {WM_XBUTTONDOWN, WM_XBUTTONUP, e_mouse_button_extra1},
};

struct PlainMessage
{
    UINT message;
    eDesktopEvent kind;
    /// Every window gets this message; only the first open window sends the event.
    bool isOfAll = false;
    bool isOn = false;
};

constexpr PlainMessage s_plainMessages[] = {
    {WM_NULL, eDesktopEvent::e_windowWoken},
    {WM_CLOSE, eDesktopEvent::e_windowCloseWish},
    {WM_MOVE, eDesktopEvent::e_windowGeometry},
    {WM_SIZE, eDesktopEvent::e_windowGeometry},
    {WM_ENTERSIZEMOVE, eDesktopEvent::e_windowSizeMove, false, true},
    {WM_EXITSIZEMOVE, eDesktopEvent::e_windowSizeMove},
    {WM_ENTERMENULOOP, eDesktopEvent::e_windowMenu, false, true},
    {WM_EXITMENULOOP, eDesktopEvent::e_windowMenu},
    {WM_INPUTLANGCHANGE, eDesktopEvent::e_keyboardLayout, true},
    {WM_CLIPBOARDUPDATE, eDesktopEvent::e_clipboard, true},
    {WM_DISPLAYCHANGE, eDesktopEvent::e_displays, true},
    {WM_SYSCOLORCHANGE, eDesktopEvent::e_systemColors, true},
    {WM_SETTINGCHANGE, eDesktopEvent::e_systemSettings, true},
    {WM_DEVICECHANGE, eDesktopEvent::e_hardware, true},
    {WM_QUERYENDSESSION, eDesktopEvent::e_exitWish, true},
};

DesktopEvent MakeEvent(eDesktopEvent kind, Window::System &system)
{
    DesktopEvent event = {kind};
    event.window = &system.owner;
    return event;
}

KeyModifiers ReadModifiers()
{
    auto const isDown = [](int key) { return GetKeyState(key) < 0; };
    auto const isOn = [](int key) { return (GetKeyState(key) & 1) != 0; };
    return {isDown(VK_SHIFT), isDown(VK_CONTROL), isDown(VK_LMENU),
            isDown(VK_RMENU), isOn(VK_CAPITAL),   isOn(VK_NUMLOCK)};
}

void OnKey(Window::System &system, LPARAM lParam, bool isDown)
{
    DesktopEvent event = MakeEvent(eDesktopEvent::e_key, system);
    event.key = FindKey(static_cast<unsigned int>(lParam >> 16) & 0xff, (lParam & 1 << 24) != 0);
    event.modifiers = ReadModifiers();
    event.isOn = isDown;
    event.isRepeat = isDown && (lParam & 1 << 30) != 0;
    // Windows reports this key only when it goes up.
    if (event.key == e_key_print_screen && !isDown)
    {
        event.isOn = true;
        TellDesktop(event);
        event.isOn = false;
    }
    TellDesktop(event);
}

void OnCharacter(Window::System &system, wchar_t unit)
{
    bool const isHigh = (unit & 0xfc00) == 0xd800;
    wchar_t const high = std::exchange(system.highSurrogate, isHigh ? unit : L'\0');
    bool const isControl = unit < 0x20 || (unit >= 0x7f && unit < 0xa0);
    if (isHigh || isControl)
        return;
    wstring units;
    if ((unit & 0xfc00) == 0xdc00)
        units += high;
    units += unit;
    string text;
    DesktopEvent event = MakeEvent(eDesktopEvent::e_text, system);
    if (!UnicodeToAscii(units, text))
        return;
    std::copy(text.begin(), text.end(), event.text);
    TellDesktop(event);
}

DesktopEvent MakeMouseEvent(eDesktopEvent kind, Window::System &system, POINT position)
{
    DesktopEvent event = MakeEvent(kind, system);
    event.x = static_cast<int>(position.x);
    event.y = static_cast<int>(position.y);
    event.modifiers = ReadModifiers();
    return event;
}

void OnInside(Window::System &system, bool isInside)
{
    system.isMouseInside = isInside;
    DesktopEvent event = MakeEvent(eDesktopEvent::e_mouseInside, system);
    event.isOn = isInside;
    TellDesktop(event);
}

void OnMouseMove(Window::System &system, POINT position)
{
    if (!system.isMouseInside)
    {
        TRACKMOUSEEVENT track = {sizeof(track), TME_LEAVE, system.window, 0};
        TrackMouseEvent(&track);
        system.lastPosition = position;
        OnInside(system, true);
    }
    DesktopEvent event = MakeMouseEvent(eDesktopEvent::e_mouseMove, system, position);
    if (!IsCursorHeld())
    {
        event.moveX = static_cast<float>(position.x - system.lastPosition.x);
        event.moveY = static_cast<float>(position.y - system.lastPosition.y);
    }
    system.lastPosition = position;
    TellDesktop(event);
}

void OnRawInput(Window::System &system, LPARAM lParam)
{
    RAWINPUT input;
    UINT size = sizeof(input);
    UINT const got =
        GetRawInputData(reinterpret_cast<HRAWINPUT>(lParam), RID_INPUT, &input, &size, sizeof(RAWINPUTHEADER));
    bool const isMovement = got != static_cast<UINT>(-1) && input.header.dwType == RIM_TYPEMOUSE &&
                            (input.data.mouse.usFlags & MOUSE_MOVE_ABSOLUTE) == 0;
    if (!isMovement || !IsCursorHeld())
        return;
    DesktopEvent event = MakeMouseEvent(eDesktopEvent::e_mouseMove, system, system.lastPosition);
    event.moveX = static_cast<float>(input.data.mouse.lLastX);
    event.moveY = static_cast<float>(input.data.mouse.lLastY);
    TellDesktop(event);
}

bool OnButton(Window::System &system, UINT message, WPARAM wParam, LPARAM lParam)
{
    for (ButtonMessage const &known : s_buttonMessages)
    {
        bool const isDown = message == known.down;
        if (!isDown && message != known.up)
            continue;
        bool const isSecond = known.down == WM_XBUTTONDOWN && HIWORD(wParam) == XBUTTON2;
        // The capture brings the messages of a drag that leaves the window.
        if (isDown)
            SetCapture(system.window);
        else if ((wParam & (MK_LBUTTON | MK_RBUTTON | MK_MBUTTON | MK_XBUTTON1 | MK_XBUTTON2)) == 0)
            ReleaseCapture();
        POINT const position = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        DesktopEvent event = MakeMouseEvent(eDesktopEvent::e_mouseButton, system, position);
        event.button = isSecond ? e_mouse_button_extra2 : known.button;
        event.isOn = isDown;
        TellDesktop(event);
        return true;
    }
    return false;
}

void OnWheel(Window::System &system, WPARAM wParam, LPARAM lParam)
{
    // This message alone gives the position on the desktop.
    POINT position = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ScreenToClient(system.window, &position);
    DesktopEvent event = MakeMouseEvent(eDesktopEvent::e_mouseWheel, system, position);
    event.wheel = static_cast<float>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA;
    TellDesktop(event);
}

void OnFocus(Window::System &system, bool isActive)
{
    UpdateCursorHold();
    system.FollowFocus(isActive);
    DesktopEvent event = MakeEvent(eDesktopEvent::e_windowActive, system);
    event.isOn = isActive;
    TellDesktop(event);
}

void OnPaint(Window::System &system)
{
    PAINTSTRUCT paint;
    HDC const context = BeginPaint(system.window, &paint);
    if (system.isFilled)
        FillRect(context, &paint.rcPaint, static_cast<HBRUSH>(GetStockObject(DKGRAY_BRUSH)));
    EndPaint(system.window, &paint);
    TellDesktop(MakeEvent(eDesktopEvent::e_windowExposed, system));
}

void OnPositionChanged(Window::System &system, WINDOWPOS const &change)
{
    // WM_SHOWWINDOW comes too early: the window still has its old state. Position and size have messages of their own.
    if ((change.flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)) != 0)
        TellDesktop(MakeEvent(eDesktopEvent::e_windowGeometry, system));
}

void OnDrop(Window::System &system, HDROP drop)
{
    std::vector<string> fileNames;
    UINT const count = DragQueryFileW(drop, 0xffffffff, nullptr, 0);
    for (UINT i = 0; i < count; ++i)
    {
        std::vector<wchar_t> units(DragQueryFileW(drop, i, nullptr, 0) + 1);
        UINT const length = DragQueryFileW(drop, i, units.data(), static_cast<UINT>(units.size()));
        string fileName;
        if (UnicodeToAscii(wstring(units.begin(), units.begin() + length), fileName))
            fileNames.push_back(std::move(fileName));
    }
    DragFinish(drop);
    HWND const window = system.window;
    for (string const &fileName : fileNames)
    {
        // A listener may close the window.
        if (Window::Find(window) == nullptr)
            return;
        DesktopEvent event = MakeEvent(eDesktopEvent::e_fileDropped, system);
        event.fileName = fileName;
        TellDesktop(event);
    }
}

void OnPlainMessage(Window::System &system, UINT message)
{
    for (PlainMessage const &row : s_plainMessages)
    {
        if (row.message != message)
            continue;
        DesktopEvent event = {row.kind};
        event.isOn = row.isOn;
        if (!row.isOfAll)
            event.window = &system.owner;
        else if (GetOpenWindows().empty() || GetOpenWindows().front() != &system.owner)
            return;
        return TellDesktop(event);
    }
}

void Tell(Window::System &system, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYUP:
        return OnKey(system, lParam, message == WM_KEYDOWN || message == WM_SYSKEYDOWN);
    case WM_CHAR:
    case WM_SYSCHAR:
        return OnCharacter(system, static_cast<wchar_t>(wParam));
    case WM_MOUSEMOVE:
        return OnMouseMove(system, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
    case WM_MOUSELEAVE:
        return OnInside(system, false);
    case WM_MOUSEWHEEL:
        return OnWheel(system, wParam, lParam);
    case WM_INPUT:
        return OnRawInput(system, lParam);
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        return OnFocus(system, message == WM_SETFOCUS);
    case WM_PAINT:
        return OnPaint(system);
    case WM_DROPFILES:
        return OnDrop(system, reinterpret_cast<HDROP>(wParam));
    case WM_WINDOWPOSCHANGED:
        return OnPositionChanged(system, *reinterpret_cast<WINDOWPOS const *>(lParam));
    case s_messageExposed:
        system.isInvalid = false;
        return TellDesktop(MakeEvent(eDesktopEvent::e_windowExposed, system));
    case WM_GETMINMAXINFO:
        return system.LimitSize(*reinterpret_cast<MINMAXINFO *>(lParam));
    default:
        if (!OnButton(system, message, wParam, lParam))
            OnPlainMessage(system, message);
    }
}

/// True for a message that the system must not handle.
bool IsDone(Window::System &system, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_CLOSE:
    case WM_PAINT:
    case WM_DROPFILES:
        return true;
    case WM_ERASEBKGND:
        return system.isFilled;
    case WM_SYSCOMMAND:
        // The menu key must not open the window's menu.
        return (wParam & 0xfff0) == SC_KEYMENU ||
               (system.keepsDisplayOn && (wParam == SC_SCREENSAVE || wParam == SC_MONITORPOWER));
    case WM_SYSKEYDOWN:
        return !system.hasSystemKeys;
    case WM_SETCURSOR:
        if (LOWORD(lParam) != HTCLIENT || !system.cursor)
            return false;
        SetCursor(*system.cursor);
        return true;
    default:
        return false;
    }
}

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto *const system = reinterpret_cast<Window::System *>(GetWindowLongPtrW(window, GWLP_USERDATA));
    // A window that is being destroyed sends no more events.
    if (!system || Window::Find(window) == nullptr)
        return DefWindowProcW(window, message, wParam, lParam);
    try
    {
        // Found before the call, in which a listener may destroy the window.
        bool const isDone = IsDone(*system, message, wParam, lParam);
        Tell(*system, message, wParam, lParam);
        if (isDone)
            return message == WM_SETCURSOR || message == WM_ERASEBKGND ? TRUE : 0;
    }
    catch (...)
    {
        s_thrown = std::current_exception();
    }
    return IsWindow(window) ? DefWindowProcW(window, message, wParam, lParam) : 0;
}

} // namespace

wchar_t const *GetWindowClass()
{
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    // OpenGL keeps the device context of its window.
    description.style = CS_OWNDC;
    description.lpfnWndProc = &OnMessage;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = static_cast<HCURSOR>(
        LoadImageW(nullptr, MAKEINTRESOURCEW(32512), IMAGE_CURSOR, 0, 0, LR_DEFAULTSIZE | LR_SHARED));
    description.lpszClassName = s_szWindowClass;
    bool const isThere = RegisterClassExW(&description) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
    return isThere ? s_szWindowClass : nullptr;
}

void RethrowFromCallbacks()
{
    if (std::exception_ptr const thrown = std::exchange(s_thrown, nullptr))
        std::rethrow_exception(thrown);
}

namespace
{

/// Event that ends a wait.
HANDLE GetWaitEnd()
{
    static HANDLE const s_event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    return s_event;
}

} // namespace

bool WaitForSystemEvents(unsigned int milliseconds)
{
    HANDLE const end = GetWaitEnd();
    // For new messages only: those that were posted to the thread stay in its queue.
    return MsgWaitForMultipleObjectsEx(1, &end, milliseconds, QS_ALLINPUT, 0) != WAIT_TIMEOUT;
}

void EndDesktopWait()
{
    SetEvent(GetWaitEnd());
}

void TakeDesktopEvents()
{
    if (!IsDesktopThread())
        return;
    std::vector<Window *> const &windows = GetOpenWindows();
    // Listeners may open and destroy windows; a window that this walk misses for that reason is handled next time.
    for (std::size_t i = 0; i < windows.size();)
    {
        MSG message;
        bool const isThere = PeekMessageW(&message, windows[i]->GetHandle(), 0, 0, PM_REMOVE) != FALSE;
        // WM_PAINT comes after all other messages, and a listener that draws may cause another one.
        if (!isThere || message.message == WM_PAINT || message.message == s_messageExposed)
            ++i;
        if (isThere)
        {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    RethrowFromCallbacks();
}

void PumpDesktop()
{
    // A window's timers are messages of the window.
    TakeDesktopEvents();
}

} // namespace quillmarsh::platform
