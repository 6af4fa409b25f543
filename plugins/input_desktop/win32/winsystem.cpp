#include "../inputsystem.h"
#include "winkeys.h"
#include "winpad.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/framework/kernel.h>

#include <ostream>

#include <windows.h>
#include <windowsx.h>

namespace input_desktop
{

using namespace quillmarsh;

namespace
{

constexpr wchar_t s_szWindowClass[] = L"QuillmarshInput";
constexpr int s_windowWidth = 320;
constexpr int s_windowHeight = 240;
// Milliseconds between two looks for game controllers without a window.
constexpr ULONGLONG s_findInterval = 2000;

/// Where raw movements of mice come from, in the terms of the system.
constexpr USHORT s_genericDesktopPage = 1;
constexpr USHORT s_mouseUsage = 2;

/// A message of a mouse button, for up and down alike.
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

class WinSystem final : public InputSystem
{
public:
    WinSystem(Desktop &desktop, bool wantsWindow) : desktop_(desktop)
    {
        if (wantsWindow)
            OpenWindow();
    }
    ~WinSystem() override
    {
        HoldCursor(false);
        if (window_ != nullptr)
            DestroyWindow(window_);
        UnregisterClassW(s_szWindowClass, GetModule());
    }

    bool HasWindow() const override { return window_ != nullptr; }
    void Pump() override;

    void ListPads(std::vector<unsigned int> &ids) override
    {
        // Looking takes milliseconds: it is done when the window hears that devices came or went, or now and then.
        ULONGLONG const now = GetTickCount64();
        if (mustFindPads_ || (window_ == nullptr && now - foundAt_ > s_findInterval))
        {
            FindWinPads(pads_);
            foundAt_ = now;
        }
        mustFindPads_ = false;
        ids = pads_;
    }
    string GetPadName(unsigned int id) override { return GetWinPadName(id); }
    AutoPtr<Pad> OpenPad(unsigned int id) override { return OpenWinPad(id); }

    bool MapKeyToCharacter(eKey key, KeyModifiers const &modifiers, char &character) override
    {
        return FindCharacter(key, modifiers, character);
    }

private:
    static HINSTANCE GetModule();
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    void OpenWindow();
    void HoldCursor(bool hold);
    void OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool OnPointerMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnKey(LPARAM lParam, bool isDown);
    void OnMouseMove(int x, int y);
    void OnRawInput(LPARAM lParam);

    Desktop &desktop_;
    HWND window_ = nullptr;
    bool isCursorHeld_ = false;
    bool isInside_ = false;
    POINT lastPosition_ = {};
    bool mustFindPads_ = true;
    ULONGLONG foundAt_ = 0;
    std::vector<unsigned int> pads_;
};

HINSTANCE WinSystem::GetModule()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&WinSystem::OnMessage), &module);
    return module;
}

void WinSystem::OpenWindow()
{
    WNDCLASSW description = {};
    description.lpfnWndProc = &WinSystem::OnMessage;
    description.hInstance = GetModule();
    description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    description.hbrBackground = static_cast<HBRUSH>(GetStockObject(DKGRAY_BRUSH));
    description.lpszClassName = s_szWindowClass;
    RegisterClassW(&description);
    RECT area = {0, 0, s_windowWidth, s_windowHeight};
    AdjustWindowRect(&area, WS_OVERLAPPEDWINDOW, FALSE);
    window_ =
        CreateWindowExW(0, s_szWindowClass, L"Quillmarsh input", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                        area.right - area.left, area.bottom - area.top, nullptr, nullptr, GetModule(), nullptr);
    if (window_ == nullptr)
    {
        GetConOut() << "There are no keyboard and mouse, since no window can be opened: error " << GetLastError()
                    << std::endl;
        return;
    }
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    RAWINPUTDEVICE const mouse = {s_genericDesktopPage, s_mouseUsage, 0, window_};
    RegisterRawInputDevices(&mouse, 1, sizeof(mouse));
    desktop_.OnSize(s_windowWidth, s_windowHeight);
    ShowWindow(window_, SW_SHOW);
}

void WinSystem::Pump()
{
    MSG message;
    while (window_ != nullptr && PeekMessageW(&message, window_, 0, 0, PM_REMOVE) != 0)
        DispatchMessageW(&message);
    CursorWish const wish = desktop_.TakeWish();
    HoldCursor(wish.isHeld && GetFocus() == window_ && window_ != nullptr);
    if (wish.mustMove && window_ != nullptr)
    {
        POINT position = {wish.x, wish.y};
        ClientToScreen(window_, &position);
        SetCursorPos(position.x, position.y);
    }
}

void WinSystem::HoldCursor(bool hold)
{
    if (hold == isCursorHeld_)
        return;
    isCursorHeld_ = hold;
    ShowCursor(hold ? FALSE : TRUE);
    RECT area;
    GetClientRect(window_, &area);
    MapWindowPoints(window_, nullptr, reinterpret_cast<POINT *>(&area), 2);
    ClipCursor(hold ? &area : nullptr);
}

LRESULT WinSystem::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto *const system = reinterpret_cast<WinSystem *>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (system != nullptr && !system->OnPointerMessage(message, wParam, lParam))
        system->OnWindowMessage(message, wParam, lParam);
    // The menu key is a key like others here, and closing is for the host.
    bool const isDone = message == WM_CLOSE || (message == WM_SYSCOMMAND && (wParam & 0xfff0) == SC_KEYMENU);
    return isDone ? 0 : DefWindowProcW(window, message, wParam, lParam);
}

void WinSystem::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYUP:
        OnKey(lParam, message == WM_KEYDOWN || message == WM_SYSKEYDOWN);
        break;
    case WM_KILLFOCUS:
        desktop_.OnFocusLost();
        break;
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED)
            desktop_.OnSize(LOWORD(lParam), HIWORD(lParam));
        break;
    case WM_DEVICECHANGE:
        mustFindPads_ = true;
        break;
    case WM_CLOSE:
        Kernel::Instance().RequestExit();
        break;
    default:
        break;
    }
}

bool WinSystem::OnPointerMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    for (ButtonMessage const &known : s_buttonMessages)
    {
        bool const isDown = message == known.down;
        if (!isDown && message != known.up)
            continue;
        bool const isSecond = known.down == WM_XBUTTONDOWN && HIWORD(wParam) == XBUTTON2;
        desktop_.OnButton(isSecond ? e_mouse_button_extra2 : known.button, isDown);
        // A drag out of the window is told of to its end.
        if (isDown)
            SetCapture(window_);
        else if ((wParam & (MK_LBUTTON | MK_RBUTTON | MK_MBUTTON | MK_XBUTTON1 | MK_XBUTTON2)) == 0)
            ReleaseCapture();
        return true;
    }
    switch (message)
    {
    case WM_MOUSEMOVE:
        OnMouseMove(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
        return true;
    case WM_MOUSELEAVE:
        isInside_ = false;
        desktop_.OnInside(false);
        return true;
    case WM_MOUSEWHEEL:
        desktop_.OnWheel(static_cast<float>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA);
        return true;
    case WM_INPUT:
        OnRawInput(lParam);
        return true;
    default:
        return false;
    }
}

void WinSystem::OnKey(LPARAM lParam, bool isDown)
{
    eKey const key = FindKey(static_cast<unsigned int>(lParam >> 16) & 0xff, (lParam & 1 << 24) != 0);
    bool const isRepeat = isDown && (lParam & 1 << 30) != 0;
    desktop_.OnLocks((GetKeyState(VK_CAPITAL) & 1) != 0, (GetKeyState(VK_NUMLOCK) & 1) != 0);
    // This key is told of when it goes up only.
    if (key == e_key_print_screen && !isDown)
        desktop_.OnKey(key, true);
    if (!isRepeat)
        desktop_.OnKey(key, isDown);
}

void WinSystem::OnMouseMove(int x, int y)
{
    if (!isInside_)
    {
        TRACKMOUSEEVENT track = {sizeof(track), TME_LEAVE, window_, 0};
        isInside_ = TrackMouseEvent(&track) != 0;
        desktop_.OnInside(true);
        lastPosition_ = {x, y};
    }
    if (!isCursorHeld_)
        desktop_.OnMove(static_cast<float>(x - lastPosition_.x), static_cast<float>(y - lastPosition_.y));
    lastPosition_ = {x, y};
    desktop_.OnPosition(x, y);
}

void WinSystem::OnRawInput(LPARAM lParam)
{
    RAWINPUT input;
    UINT size = sizeof(input);
    UINT const got =
        GetRawInputData(reinterpret_cast<HRAWINPUT>(lParam), RID_INPUT, &input, &size, sizeof(RAWINPUTHEADER));
    bool const isMovement = got != static_cast<UINT>(-1) && input.header.dwType == RIM_TYPEMOUSE &&
                            (input.data.mouse.usFlags & MOUSE_MOVE_ABSOLUTE) == 0;
    if (isCursorHeld_ && isMovement)
        desktop_.OnMove(static_cast<float>(input.data.mouse.lLastX), static_cast<float>(input.data.mouse.lLastY));
}

} // namespace

AutoPtr<InputSystem> StartInputSystem(Desktop &desktop, bool wantsWindow)
{
    return std::make_unique<WinSystem>(desktop, wantsWindow);
}

} // namespace input_desktop
