// Events of the desktop: windows, keys, text, mouse, clipboard, displays.
#ifndef QUILLMARSH_PLATFORM_DESKTOPEVENTS_H
#define QUILLMARSH_PLATFORM_DESKTOPEVENTS_H

#include <quillmarsh/platform/inputcodes.h>
#include <quillmarsh/platform/types.h>

#include <string_view>

namespace quillmarsh::platform
{

class Window;

/// Kind of a DesktopEvent. Each comment names the fields that this kind fills in, besides the window.
enum class eDesktopEvent
{
    /// The window has been opened. Window::Open() sends it.
    e_windowOpened,
    /// The window is about to close, and can still be used. Its destructor sends it.
    e_windowClosing,
    /// The user wants to close the window. It stays open until its owner destroys it.
    e_windowCloseWish,
    /// The window has got the keyboard focus, or has lost it: `isOn`. After a loss, the release of keys and buttons
    /// that were down may send no event.
    e_windowActive,
    /// The window was moved or resized, or its state changed. The window itself has the new values.
    e_windowGeometry,
    /// The client area has to be redrawn.
    e_windowExposed,
    /// Window::Wake() was called.
    e_windowWoken,
    /// A key went down or up: `key`, `isOn`, `isRepeat`, `modifiers`. `key` is e_key_none for a key that eKey does not
    /// name.
    e_key,
    /// Text was typed: `text`. It comes after the event of the key that typed it.
    e_text,
    /// The layout of the keyboard has changed. No window.
    e_keyboardLayout,
    /// The mouse entered or left the client area: `isOn`.
    e_mouseInside,
    /// The mouse was moved: `x`, `y`, `moveX`, `moveY`, `modifiers`. While a button is down, movements outside the
    /// window are sent as well.
    e_mouseMove,
    /// A button went down or up: `button`, `isOn`, `x`, `y`, `modifiers`.
    e_mouseButton,
    /// The wheel was turned: `wheel`, `x`, `y`, `modifiers`.
    e_mouseWheel,
    /// The user has dropped a file on the window: `fileName`. Several files send an event each.
    e_fileDropped,
    /// Another program has changed the clipboard. Some systems also report this program's own changes. No window.
    e_clipboard,
    /// A display was added or removed, or its mode changed. No window.
    e_displays,
    /// The colours of the desktop have changed. No window. Sent on Windows only.
    e_systemColors,
    /// The settings of the desktop have changed. No window. Sent on Windows only.
    e_systemSettings,
    /// The user begins or ends to move or resize the window: `isOn`. Sent on Windows only, where PumpDesktop() does not
    /// return in between.
    e_windowSizeMove,
    /// The user opens or closes the menu of the window: `isOn`. Sent on Windows only, where PumpDesktop() does not
    /// return in between.
    e_windowMenu,
    /// A piece of hardware was added or removed. No window. Sent on Windows only; on Linux each driver watches its own
    /// devices.
    e_hardware,
    /// The desktop asks the program to end, for example because the user logs out. It also comes when the display has
    /// ended: HasDisplay() is false then. No window.
    e_exitWish
};

/// Modifier keys and locks at the moment of an event.
struct KeyModifiers
{
    bool isShiftDown = false;
    bool isControlDown = false;
    bool isAltDown = false;
    /// The key AltGr, which selects the third character of a key; to the right of the space bar on most keyboards.
    bool isAltGrDown = false;
    bool isCapsLockOn = false;
    bool isNumLockOn = false;
};

/// One event. Fields that its kind does not use have their defaults.
struct DesktopEvent
{
    eDesktopEvent kind;
    /// The window that the event belongs to; null when it belongs to none.
    Window *window = nullptr;
    bool isOn = false;
    bool isRepeat = false;
    eKey key = e_key_none;
    KeyModifiers modifiers = {};
    eMouseButton button = e_mouse_button_left;
    /// Position in pixels, from the top left corner of the client area.
    int x = 0;
    int y = 0;
    /// Movement since the previous event, in pixels; while the cursor is held, in the mouse's own unit.
    float moveX = 0;
    float moveY = 0;
    /// Notches that the wheel was turned, positive away from the user; fractions are possible.
    float wheel = 0;
    /// UTF-8 with a zero at the end, without control characters.
    char text[32] = {};
    /// Full name, with the bytes that open the file: UTF-8 on Windows. Valid during the call.
    std::string_view fileName = {};
};

/// Receives the events of the desktop while a DesktopSubscription for it exists.
class QUILLMARSH_API DesktopListener
{
public:
    virtual ~DesktopListener();

    /// Receives one event. The call may add and remove subscriptions, its own included, and may open and destroy
    /// windows. An exception reaches the caller of PumpDesktop(), and the remaining listeners miss the event. A
    /// listener must not throw on e_windowClosing.
    virtual void OnDesktopEvent(DesktopEvent const &event) = 0;
};

/// Subscribes a listener to the events of all windows and of the desktop, for as long as the subscription exists. The
/// listener must outlive the subscription, and can have one subscription at a time. Listeners are called in the order
/// of their subscriptions.
///
/// The desktop has one thread: the one that opens windows and calls PumpDesktop(). In a host it is the frame thread.
/// Subscriptions, windows and all functions of this header belong to that thread.
class QUILLMARSH_API DesktopSubscription : NoCopy
{
public:
    explicit DesktopSubscription(DesktopListener &listener);
    ~DesktopSubscription();

private:
    DesktopListener &listener_;
};

/// Sends the listeners the events since the last call, and calls the window timers that are due. Does not wait, and
/// leaves messages that were posted to the thread in their queue.
///
/// The host calls it once in each frame. A program with a message loop does not need to, because the loop calls it
/// (messageloop.h). Without a window there are no events. On any thread but the desktop's, the call does nothing.
QUILLMARSH_API void PumpDesktop();

/// @name Waiting for events
/// @{
/// True where WaitForDesktop() can wait: on the desktop's thread, unless the desktop is headless. A headless desktop has
/// no events but those that the program itself causes.
QUILLMARSH_API bool CanWaitForDesktop();
/// Waits for events, at most so many milliseconds, and leaves them to PumpDesktop(). Returns true if there may be some,
/// or if EndDesktopWait() was called since the last wait; false at once where it cannot wait.
QUILLMARSH_API bool WaitForDesktop(unsigned int milliseconds);
/// Ends the present wait, or the next one. Any thread.
QUILLMARSH_API void EndDesktopWait();
/// @}

/// Finds the character that a key types in the present layout. Returns false when it types none, and when the character
/// is not known yet: some systems report the character of a key with modifiers only after the user has typed it once.
QUILLMARSH_API bool FindKeyCharacter(eKey key, KeyModifiers const &modifiers, char32_t &character);

} // namespace quillmarsh::platform

#endif
