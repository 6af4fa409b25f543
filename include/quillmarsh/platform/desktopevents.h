// Events of the desktop: windows, keys, text, mouse, clipboard, displays.
#ifndef QUILLMARSH_PLATFORM_DESKTOPEVENTS_H
#define QUILLMARSH_PLATFORM_DESKTOPEVENTS_H

#include <quillmarsh/platform/inputcodes.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

class Window;

/// What a DesktopEvent tells. The comments name the fields that count for a kind, besides the window.
enum class eDesktopEvent
{
    /// The window has been opened. Told by Window::Open().
    e_windowOpened,
    /// The window is about to go; it is still whole. Told by its destructor.
    e_windowClosing,
    /// The user wants the window closed. Nothing happens to it unless somebody destroys it.
    e_windowCloseWish,
    /// The window has got the keyboard focus, or has lost it: `isOn`. What was held down is told of no more.
    e_windowActive,
    /// The window was moved, resized, or changed its state: ask the window.
    e_windowGeometry,
    /// The client area has to be drawn anew.
    e_windowExposed,
    /// A key went down or up: `key`, `isOn`, `isRepeat`, `modifiers`. Keys without a code of ours are e_key_none.
    e_key,
    /// Text was typed: `text`. It follows the key that typed it.
    e_text,
    /// The layout of the keyboard has changed. No window.
    e_keyboardLayout,
    /// The mouse came into the client area or left it: `isOn`.
    e_mouseInside,
    /// The mouse was moved: `x`, `y`, `moveX`, `moveY`. While a button is down it is told of outside the window, too.
    e_mouseMove,
    /// A button went down or up: `button`, `isOn`, `x`, `y`.
    e_mouseButton,
    /// The wheel was turned: `wheel`.
    e_mouseWheel,
    /// Another program has changed what the clipboard holds. Some systems tell of this program's changes, too. No window.
    e_clipboard,
    /// A display came, went, or has another mode. No window.
    e_displays,
    /// A piece of hardware came or went. No window. Windows only; elsewhere drivers look for themselves.
    e_hardware,
    /// The desktop wants the program to end, because the user's session ends for one. No window.
    e_exitWish
};

/// What the meaning of a key depends on.
struct KeyModifiers
{
    bool isShiftDown = false;
    bool isControlDown = false;
    bool isAltDown = false;
    /// The key of the third level, on the right of most keyboards.
    bool isAltGrDown = false;
    bool isCapsLockOn = false;
    bool isNumLockOn = false;
};

/// One event. Fields that do not count for its kind have their defaults.
struct DesktopEvent
{
    eDesktopEvent kind;
    /// The window that the event concerns; null where it concerns none.
    Window *window = nullptr;
    bool isOn = false;
    bool isRepeat = false;
    eKey key = e_key_none;
    KeyModifiers modifiers = {};
    eMouseButton button = e_mouse_button_left;
    /// Pixels of the client area, from its top left corner.
    int x = 0;
    int y = 0;
    /// Pixels since the event before; while the cursor is held, in the unit of the mouse.
    float moveX = 0;
    float moveY = 0;
    /// Turns by a notch, away from the user; may be a part of one.
    float wheel = 0;
    /// UTF-8, ended by a zero, without control characters.
    char text[32] = {};
};

/// Hears of the events of the desktop while a DesktopSubscription for it exists.
class QUILLMARSH_API DesktopListener
{
public:
    virtual ~DesktopListener();

    /// Takes an event. In the call subscriptions may begin and end, the listener's own as well, and windows may be opened
    /// and destroyed. An exception passes through to whoever pumps, and the listeners behind miss the event; a listener does
    /// not throw when a window closes.
    virtual void OnDesktopEvent(DesktopEvent const &event) = 0;
};

/// Subscribes a listener to the events of all windows and of the desktop, for as long as the subscription exists. The
/// listener is borrowed, and has one subscription at a time. Listeners are told in the order of their subscriptions.
///
/// The desktop has one thread: the one that opens windows and pumps, in a program the frame thread. Subscriptions, windows
/// and all functions of this header are for that thread.
class QUILLMARSH_API DesktopSubscription : NoCopy
{
public:
    explicit DesktopSubscription(DesktopListener &listener);
    ~DesktopSubscription();

private:
    DesktopListener &listener_;
};

/// Tells the listeners what has happened since the last call, and calls the timers of windows that are due. Does not
/// wait, and leaves the messages that were posted to the thread where they are.
///
/// The host calls it once in each frame. A program with a message loop need not: the loop does it (messageloop.h).
/// Without a window there are no events, and on a thread other than the desktop's the call does nothing.
QUILLMARSH_API void PumpDesktop();

/// Finds the character that a key types under the present layout. False when it types none, or none that is known: some
/// systems tell the characters of a key with modifiers only once it was typed.
QUILLMARSH_API bool FindKeyCharacter(eKey key, KeyModifiers const &modifiers, char32_t &character);

} // namespace quillmarsh::platform

#endif
