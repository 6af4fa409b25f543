// Handles the messages of a top-level window.
#include <quillmarsh/basetools/windows/toplevelwindow.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/syncprimitives.h>
#include <quillmarsh/basetools/windows/virtualkeys.h>

#include "source/basetools/windows/toplevelwindowstate.h"
#include "source/platform/drawing.h"
#include "source/platform/threads.h"

#include <algorithm>
#include <vector>

namespace quillmarsh
{
namespace
{

using namespace win_utils;

/// The windows that have a system's window. The desktop's thread only.
std::vector<TopLevelWindow *> &GetWindows()
{
    static std::vector<TopLevelWindow *> &s_windows = *new std::vector<TopLevelWindow *>;
    return s_windows;
}

MessageHook *s_messageHook = nullptr;

bool IsKeyboardMessage(unsigned int message)
{
    return message >= e_message_keyDown && message <= e_message_sysKeyUp;
}

bool IsMouseMessage(unsigned int message)
{
    return (message >= e_message_mouseMove && message <= e_message_extraButtonUp) || message == e_message_mouseLeave;
}

/// Keys that the window turns into a system command.
struct CommandKey
{
    unsigned int virtualKey;
    bool withAlt;
    eSystemCommand command;
    long lParam;
};

constexpr CommandKey s_closeKey = {e_vk_f4, true, e_command_close, 0};
constexpr CommandKey s_menuKey = {e_vk_f10, false, e_command_keyMenu, 0};
constexpr CommandKey s_altSpaceKey = {e_vk_space, true, e_command_keyMenu, ' '};

} // namespace

MessageHook::~MessageHook() = default;

void TopLevelWindow::SetMessageHook(MessageHook *hook)
{
    s_messageHook = hook;
}

MessageHook *TopLevelWindow::GetMessageHook()
{
    return s_messageHook;
}

void TopLevelWindow::SetKeyboardMessageHook(KeyboardMessageHook *hook)
{
    state_->keyboardHook = hook;
}

void TopLevelWindow::SetMouseMessageHook(MouseMessageHook *hook)
{
    state_->mouseHook = hook;
}

TopLevelWindow *TopLevelWindow::Find(HWND handle)
{
    auto const found = std::find_if(GetWindows().begin(), GetWindows().end(),
                                    [handle](TopLevelWindow const *each) { return each->GetHWND() == handle; });
    return handle && found != GetWindows().end() ? *found : nullptr;
}

void TopLevelWindow::Register(bool isThere)
{
    std::erase(GetWindows(), this);
    if (isThere)
        GetWindows().push_back(this);
}

long TopLevelWindow::MessageHandlerMapper(HWND handle, unsigned int message, unsigned int wParam, long lParam)
{
    TopLevelWindow *const window = Find(handle);
    if (!window)
        return 0;
    MessageHook::WinMsg const told = {handle, message, wParam, lParam};
    // Looked up for each call: a hook or the handler may unset hooks and destroy the window.
    auto const tellHooks = [&told](void (MessageHook::*call)(MessageHook::WinMsg const &))
    {
        if (s_messageHook)
            (s_messageHook->*call)(told);
        TopLevelWindow const *present = Find(told.window);
        if (present && present->state_->keyboardHook && IsKeyboardMessage(told.message))
            (present->state_->keyboardHook->*call)(told);
        present = Find(told.window);
        if (present && present->state_->mouseHook && IsMouseMessage(told.message))
            (present->state_->mouseHook->*call)(told);
    };
    tellHooks(&MessageHook::OnBeginMessage);
    long result = 0;
    if (Find(handle) == window && !window->MessageHandler(result, handle, message, wParam, lParam))
        result = 0;
    tellHooks(&MessageHook::OnEndMessage);
    return result;
}

long TopLevelWindow::Send(unsigned int message, unsigned int wParam, long lParam)
{
    if (state_->window)
        return MessageHandlerMapper(GetHWND(), message, wParam, lParam);
    long result = 0;
    MessageHandler(result, nullptr, message, wParam, lParam);
    return result;
}

// A virtual call may destroy the window: each is the last thing that handling a message does.

bool TopLevelWindow::MessageHandler(long &result, HWND, unsigned int message, unsigned int wParam, long lParam)
{
    result = 0;
    switch (message)
    {
    case e_message_move:
    case e_message_size:
        return HandleGeometry(message, wParam);
    case e_message_activate:
        return HandleActivation(wParam != 0), true;
    case e_message_paint:
        return OnPaint(), true;
    case e_message_close:
        return OnClose(), true;
    case e_message_sysColorChange:
        return OnSystemColorsChanged(), true;
    case e_message_settingChange:
        return OnSystemSettingsChanged(), true;
    case e_message_displayChange:
        return OnDisplaySettingsChanged(), true;
    case e_message_sysCommand:
        return HandleSystemCommand(wParam, lParam);
    default:
        return IsKeyboardMessage(message) ? HandleKeyboard(message, wParam, lParam)
                                          : IsMouseMessage(message) && HandleMouse(message, wParam, lParam);
    }
}

void TopLevelWindow::HandleActivation(bool isActive)
{
    std::weak_ptr<char> const life = state_->life;
    state_->isActive = isActive;
    if (!isActive)
        ExitSizeMove();
    if (life.expired())
        return;
    if (!isActive)
        state_->ForgetButtons();
    OnActivated(isActive);
}

bool TopLevelWindow::HandleGeometry(unsigned int message, unsigned int wParam)
{
    CacheGeometryParameters();
    if (message == e_message_move)
    {
        if (state_->forcesRepaintOnMove && state_->window)
            PostRepaint();
        return OnMoved(), true;
    }
    bool const isBack = state_->isToBeRestored && wParam == e_size_restored &&
                        (!state_->window || state_->window->GetState() != platform::eWindowState::e_fullscreen);
    eResizeAction const action = wParam == e_size_minimized   ? e_resize_minimized
                                 : wParam == e_size_maximized ? e_resize_maximized
                                 : isBack                     ? e_resize_restored
                                                              : e_resize_sized;
    state_->isMinimized = wParam == e_size_minimized;
    if (!state_->isMinimized)
        state_->isMaximized = wParam == e_size_maximized;
    if (wParam != e_size_restored)
        state_->isToBeRestored = true;
    else if (isBack)
        state_->isToBeRestored = false;
    return OnResized(action), true;
}

bool TopLevelWindow::HandleSystemCommand(unsigned int command, long lParam)
{
    switch (command)
    {
    case e_command_close:
        return Send(e_message_close, 0, 0), true;
    case e_command_minimize:
        return Minimize(), true;
    case e_command_maximize:
        return Maximize(), true;
    case e_command_restore:
        return Restore(), true;
    case e_command_mouseMenu:
    case e_command_keyMenu:
        if (state_->window)
            state_->window->OpenSystemMenu(command == e_command_keyMenu ? State::Position()
                                                                        : State::Position{GetX(lParam), GetY(lParam)});
        return true;
    default:
        return false;
    }
}

bool TopLevelWindow::HandleKeyboard(unsigned int message, unsigned int wParam, long lParam)
{
    if (message == e_message_char)
    {
        if (state_->dispatchesChars)
            OnChar(static_cast<char>(wParam));
        return true;
    }
    bool const isDown = message == e_message_keyDown || message == e_message_sysKeyDown;
    std::pair<bool, CommandKey const *> const keys[] = {{state_->closesThroughAltF4, &s_closeKey},
                                                        {state_->opensMenuThroughF10, &s_menuKey},
                                                        {state_->opensMenuThroughAltSpace, &s_altSpaceKey}};
    for (auto const &[isOn, key] : keys)
    {
        bool const hasAlt = (lParam & static_cast<long>(e_keyFlags_alt)) != 0;
        if (!state_->emulatesSystemCommands || !isOn || key->virtualKey != wParam || key->withAlt != hasAlt)
            continue;
        bool const isFirst = isDown && (lParam & static_cast<long>(e_keyFlags_wasDown)) == 0;
        if (isFirst)
            Send(e_message_sysCommand, key->command, key->lParam);
        return true;
    }
    if (!state_->dispatchesKeyStates)
        return true;
    isDown ? OnKeyDown(wParam, lParam) : OnKeyUp(wParam, lParam);
    return true;
}

void TopLevelWindow::OnPaint()
{
    if (!state_->gdiplus)
    {
        // Another window, or this one, may be painted while the dialog of the assertion stands.
        Event standing(false, true, "ReentrantAssertEvent_" + std::to_string(platform::GetCurrentThreadNumber()));
        bool isFirst = false;
        if (standing.Wait(0, isFirst) && isFirst)
        {
            standing.Set();
            QUILLMARSH_ASSERT(state_->gdiplus, "Gdiplus not initialized.");
            standing.Reset();
        }
        return;
    }
    unsigned int width, height;
    GetClientAreaSize(width, height);
    std::vector<unsigned char> pixels(std::size_t(width) * height * 4);
    platform::PixelRows const rows = {pixels.data(), static_cast<std::ptrdiff_t>(width) * 4, height, width, false};
    color4b const color = GetSystemColor(eSystemColor::e_window);
    platform::drawing::Canvas(rows).Clear({color.r, color.g, color.b});
    ShowPixels(rows);
}

bool TopLevelWindow::IsKeyDown(int key) const
{
    switch (key)
    {
    case e_vk_leftButton:
        return (state_->buttons & e_mouseKeys_left) != 0;
    case e_vk_rightButton:
        return (state_->buttons & e_mouseKeys_right) != 0;
    case e_vk_middleButton:
        return (state_->buttons & e_mouseKeys_middle) != 0;
    default:
        break;
    }
    for (unsigned int i = 0; i < e_key_none; ++i)
    {
        eKey const candidate = static_cast<eKey>(i);
        if (ToVirtualKey(candidate) == static_cast<unsigned int>(key) && platform::IsKeyDown(candidate))
            return true;
    }
    return false;
}

bool TopLevelWindow::IsKeyToggled(int key) const
{
    switch (key)
    {
    case e_vk_capsLock:
        return platform::IsCapsLockOn();
    case e_vk_numLock:
        return platform::IsNumLockOn();
    case e_vk_scrollLock:
        return platform::IsScrollLockOn();
    default:
        return false;
    }
}

// Defaults of the virtual calls.

void TopLevelWindow::OnSystemColorsChanged() {}
void TopLevelWindow::OnSystemSettingsChanged() {}
void TopLevelWindow::OnDisplaySettingsChanged() {}
void TopLevelWindow::OnActivated(bool) {}
void TopLevelWindow::OnClose() {}
void TopLevelWindow::OnMoved() {}
void TopLevelWindow::OnResized(eResizeAction) {}
void TopLevelWindow::OnMouseEnter(eWindowArea, unsigned int) {}
void TopLevelWindow::OnAlwaysOnTop(bool) {}
void TopLevelWindow::OnCommandAreaActivated(unsigned int) {}
void TopLevelWindow::OnMouseMove(Point const &, unsigned int) {}
void TopLevelWindow::OnMouseWheel(int, Point const &, unsigned int) {}
void TopLevelWindow::OnMouseButtonLeft(bool, Point const &, unsigned int) {}
void TopLevelWindow::OnMouseButtonMiddle(bool, Point const &, unsigned int) {}
void TopLevelWindow::OnMouseButtonRight(bool, Point const &, unsigned int) {}
void TopLevelWindow::OnKeyDown(unsigned int, long) {}
void TopLevelWindow::OnKeyUp(unsigned int, long) {}
void TopLevelWindow::OnChar(char) {}

} // namespace quillmarsh
