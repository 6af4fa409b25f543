// Turns the events of the desktop into messages.
#include <quillmarsh/basetools/windows/toplevelwindow.h>

#include <quillmarsh/basetools/windows/virtualkeys.h>

#include "source/basetools/windows/toplevelwindowstate.h"
#include "source/platform/scancodes.h"

#include <cmath>
#include <utility>

namespace quillmarsh
{
namespace
{

using namespace win_utils;
using platform::DesktopEvent;
using platform::eDesktopEvent;

constexpr int s_wheelNotch = 120;

struct PlainRow
{
    eDesktopEvent kind;
    eWindowMessage whenOn;
    eWindowMessage whenOff;
};

/// Events that carry nothing but their kind, and in some cases two messages for on and off.
constexpr PlainRow s_plainRows[] = {
    {eDesktopEvent::e_windowWoken, e_message_null, e_message_null},
    {eDesktopEvent::e_windowCloseWish, e_message_close, e_message_close},
    {eDesktopEvent::e_windowExposed, e_message_paint, e_message_paint},
    {eDesktopEvent::e_windowSizeMove, e_message_enterSizeMove, e_message_exitSizeMove},
    {eDesktopEvent::e_windowMenu, e_message_enterMenuLoop, e_message_exitMenuLoop},
    {eDesktopEvent::e_keyboardLayout, e_message_inputLangChange, e_message_inputLangChange},
    {eDesktopEvent::e_clipboard, e_message_clipboardUpdate, e_message_clipboardUpdate},
    {eDesktopEvent::e_systemColors, e_message_sysColorChange, e_message_sysColorChange},
    {eDesktopEvent::e_systemSettings, e_message_settingChange, e_message_settingChange},
    {eDesktopEvent::e_hardware, e_message_deviceChange, e_message_deviceChange},
    {eDesktopEvent::e_exitWish, e_message_queryEndSession, e_message_queryEndSession},
};

/// False for events of the whole desktop.
bool BelongsToWindow(eDesktopEvent kind)
{
    switch (kind)
    {
    case eDesktopEvent::e_keyboardLayout:
    case eDesktopEvent::e_clipboard:
    case eDesktopEvent::e_displays:
    case eDesktopEvent::e_systemColors:
    case eDesktopEvent::e_systemSettings:
    case eDesktopEvent::e_hardware:
    case eDesktopEvent::e_exitWish:
        return false;
    default:
        return true;
    }
}

struct ButtonRow
{
    eMouseButton button;
    eWindowMessage down;
    eWindowMessage up;
    eMouseKeys bit;
    /// Upper 16 bits of wParam.
    unsigned int number;
};

constexpr ButtonRow s_buttonRows[] = {
    {e_mouse_button_left, e_message_leftButtonDown, e_message_leftButtonUp, e_mouseKeys_left, 0},
    {e_mouse_button_right, e_message_rightButtonDown, e_message_rightButtonUp, e_mouseKeys_right, 0},
    {e_mouse_button_middle, e_message_middleButtonDown, e_message_middleButtonUp, e_mouseKeys_middle, 0},
    {e_mouse_button_extra1, e_message_extraButtonDown, e_message_extraButtonUp, e_mouseKeys_extra1, 1},
    {e_mouse_button_extra2, e_message_extraButtonDown, e_message_extraButtonUp, e_mouseKeys_extra2, 2},
};

/// Keys that type a control character.
struct ControlRow
{
    eKey key;
    unsigned int character;
};

constexpr ControlRow s_controlRows[] = {
    {e_key_backspace, 8}, {e_key_tab, 9}, {e_key_enter, 13}, {e_key_num_enter, 13}, {e_key_escape, 27},
};

/// Returns the control character that a key types; 0 when it types none.
unsigned int FindControlCharacter(DesktopEvent const &event, unsigned int virtualKey)
{
    bool const hasAlt = event.modifiers.isAltDown || event.modifiers.isAltGrDown;
    for (ControlRow const &row : s_controlRows)
    {
        if (row.key == event.key && !hasAlt && !event.modifiers.isControlDown)
            return row.character;
    }
    bool const isLetter = virtualKey >= 'A' && virtualKey <= 'Z';
    return isLetter && event.modifiers.isControlDown && !hasAlt ? virtualKey - 'A' + 1 : 0;
}

/// Returns the lParam of a message for a key.
long MakeKeyFlags(DesktopEvent const &event)
{
    unsigned int flags = 1;
    for (platform::ScanCodeRun const &run : platform::s_scanCodeRuns)
    {
        if (event.key < run.key || event.key >= run.key + run.length)
            continue;
        flags |= (run.scanCode + (event.key - run.key)) << 16;
        flags |= run.isExtended ? unsigned(e_keyFlags_extended) : 0;
        break;
    }
    flags |= event.modifiers.isAltDown ? unsigned(e_keyFlags_alt) : 0;
    flags |= event.isRepeat || !event.isOn ? unsigned(e_keyFlags_wasDown) : 0;
    flags |= event.isOn ? 0 : unsigned(e_keyFlags_up);
    return static_cast<int>(flags);
}

/// Marks a message as one of the desktop until it has been handled, or until its handler has thrown or destroyed the
/// window's object.
class FromDesktopSentry : NoCopy
{
public:
    FromDesktopSentry(std::shared_ptr<char> const &life, bool &isFromDesktop)
        : life_(life),
          isFromDesktop_(isFromDesktop)
    {
        isFromDesktop_ = true;
    }
    ~FromDesktopSentry()
    {
        if (!life_.expired())
            isFromDesktop_ = false;
    }

private:
    std::weak_ptr<char> life_;
    bool &isFromDesktop_;
};

bool IsSameSize(platform::Window::Area const &a, platform::Window::Area const &b)
{
    return a.size.width == b.size.width && a.size.height == b.size.height;
}

bool IsSamePosition(platform::Window::Area const &a, platform::Window::Area const &b)
{
    return a.position.x == b.position.x && a.position.y == b.position.y;
}

} // namespace

TopLevelWindow::Listener::Listener(TopLevelWindow &owner)
    : owner_(owner),
      handle_(owner.GetHWND()),
      toldArea_{owner.state_->window->GetPosition(), owner.state_->window->GetSize()},
      subscription_(*this)
{
}

// Each Send may destroy the window and this object: nothing but local values is used after one.

void TopLevelWindow::Listener::OnDesktopEvent(DesktopEvent const &event)
{
    // An event of a window that has been closed meanwhile has none; it is no event of the other windows.
    bool const isMine = event.window ? event.window->GetHandle() == handle_ : !BelongsToWindow(event.kind);
    if (!isMine)
        return;
    switch (event.kind)
    {
    case eDesktopEvent::e_windowGeometry:
        return TellGeometry();
    case eDesktopEvent::e_windowActive:
        return static_cast<void>(MessageHandlerMapper(handle_, e_message_activate, event.isOn ? 1 : 0, 0));
    case eDesktopEvent::e_key:
    case eDesktopEvent::e_text:
        return TellKey(event);
    case eDesktopEvent::e_mouseMove:
    case eDesktopEvent::e_mouseButton:
    case eDesktopEvent::e_mouseWheel:
        return TellMouse(event);
    default:
        return TellPlainEvent(event);
    }
}

void TopLevelWindow::Listener::TellPlainEvent(DesktopEvent const &event)
{
    if (event.kind == eDesktopEvent::e_mouseInside && !event.isOn)
        MessageHandlerMapper(handle_, e_message_mouseLeave, 0, 0);
    platform::DisplayMode mode;
    if (event.kind == eDesktopEvent::e_displays && platform::ReadDesktopMode(mode))
    {
        long const size = MakePair(static_cast<int>(mode.width), static_cast<int>(mode.height));
        MessageHandlerMapper(handle_, e_message_displayChange, mode.bitsPerPixel, size);
    }
    for (PlainRow const &row : s_plainRows)
    {
        if (row.kind == event.kind)
            return static_cast<void>(MessageHandlerMapper(handle_, event.isOn ? row.whenOn : row.whenOff, 0, 0));
    }
}

void TopLevelWindow::Listener::TellGeometry()
{
    if (owner_.state_->isPlacing)
        return;
    platform::Window const &window = *owner_.state_->window;
    platform::eWindowState const shown = window.GetState();
    bool const isMinimized = shown == platform::eWindowState::e_minimized;
    bool const isMaximized = shown == platform::eWindowState::e_maximized || owner_.state_->placeBefore;
    // A minimized window has no position and no size to tell.
    platform::Window::Area const area =
        isMinimized ? toldArea_ : platform::Window::Area{window.GetPosition(), window.GetSize()};
    unsigned int const kind = isMinimized ? e_size_minimized : isMaximized ? e_size_maximized : e_size_restored;
    bool const isFullscreen = shown == platform::eWindowState::e_fullscreen || (isMinimized && toldFullscreen_);
    bool const isVisible = shown != platform::eWindowState::e_hidden;

    platform::Window::Area const areaBefore = std::exchange(toldArea_, area);
    bool const isNewState =
        std::exchange(toldKind_, kind) != kind || std::exchange(toldFullscreen_, isFullscreen) != isFullscreen;
    bool const isNewVisibility = std::exchange(toldVisible_, isVisible) != isVisible;
    if (isFullscreen)
        owner_.state_->isToBeRestored = true;
    HWND const handle = handle_;
    if (isNewVisibility)
        MessageHandlerMapper(handle, e_message_showWindow, isVisible ? 1 : 0, 0);
    if (!IsSamePosition(area, areaBefore))
        MessageHandlerMapper(handle, e_message_move, 0, MakePair(area.position.x, area.position.y));
    if (isNewState || !IsSameSize(area, areaBefore))
        MessageHandlerMapper(handle, e_message_size, kind, MakePair(area.size.width, area.size.height));
}

void TopLevelWindow::Listener::TellKey(DesktopEvent const &event)
{
    HWND const handle = handle_;
    if (event.kind == eDesktopEvent::e_text)
    {
        if (isAltDown_)
            return;
        for (char const *text = event.text; *text != 0; ++text)
            MessageHandlerMapper(handle, e_message_char, static_cast<unsigned char>(*text), 1);
        return;
    }
    isAltDown_ = event.modifiers.isAltDown && !event.modifiers.isControlDown && !event.modifiers.isAltGrDown;
    unsigned int const virtualKey = ToVirtualKey(event.key);
    if (virtualKey == 0)
        return;
    bool const isSystemKey = isAltDown_ || event.key == e_key_f10;
    eWindowMessage const down = isSystemKey ? e_message_sysKeyDown : e_message_keyDown;
    eWindowMessage const up = isSystemKey ? e_message_sysKeyUp : e_message_keyUp;
    MessageHandlerMapper(handle, event.isOn ? down : up, virtualKey, MakeKeyFlags(event));
    unsigned int const character = FindControlCharacter(event, virtualKey);
    if (event.isOn && character != 0)
        MessageHandlerMapper(handle, e_message_char, character, 1);
}

void TopLevelWindow::Listener::TellMouse(DesktopEvent const &event)
{
    State &state = *owner_.state_;
    unsigned int message = e_message_mouseMove;
    unsigned int upper = 0;
    long position = MakePair(event.x, event.y);
    if (event.kind == eDesktopEvent::e_mouseButton)
    {
        message = e_message_null;
        for (ButtonRow const &row : s_buttonRows)
        {
            if (row.button != event.button)
                continue;
            message = event.isOn ? row.down : row.up;
            upper = row.number;
            state.buttons = (state.buttons & ~row.bit) | (event.isOn ? row.bit : 0u);
        }
    }
    else if (event.kind == eDesktopEvent::e_mouseWheel)
    {
        wheelRest_ += event.wheel * s_wheelNotch;
        int const delta = static_cast<int>(std::trunc(wheelRest_));
        wheelRest_ -= static_cast<float>(delta);
        message = delta != 0 ? e_message_mouseWheel : e_message_null;
        upper = static_cast<unsigned int>(delta) & 0xffff;
        position = MakePair(event.x + toldArea_.position.x, event.y + toldArea_.position.y);
    }
    if (message == e_message_null)
        return;
    unsigned int const keys = state.buttons | (event.modifiers.isShiftDown ? unsigned(e_mouseKeys_shift) : 0) |
                              (event.modifiers.isControlDown ? unsigned(e_mouseKeys_control) : 0);
    FromDesktopSentry const sentry(state.life, state.isFromDesktop);
    MessageHandlerMapper(handle_, message, keys | upper << 16, position);
}

} // namespace quillmarsh
