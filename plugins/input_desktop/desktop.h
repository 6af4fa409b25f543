// Keys and pointer of the window with the focus, as reported by the system's events.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_DESKTOP_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_DESKTOP_H

#include <quillmarsh/basetools/syncprimitives.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>

#include <bitset>

namespace input_desktop
{

struct KeySample
{
    std::bitset<quillmarsh::e_key_none> keys;
    bool isCapsLockOn = false;
    bool isNumLockOn = false;
};

struct PointerSample
{
    /// Movement since the last sample.
    float moveX = 0;
    float moveY = 0;
    int wheel = 0;
    /// Position in pixels of the window, and the size of the window.
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool isInside = false;
    /// A bit for each button.
    unsigned int buttons = 0;
};

/// The state that the mouse wants for the system's cursor.
struct CursorWish
{
    /// True to hide the cursor and hold it in the window, so that only movements are reported.
    bool isHeld = false;
    /// True to move the cursor once to the position below.
    bool mustMove = false;
    int x = 0;
    int y = 0;
};

/// The state that the thread of events and the sampling threads share. Any thread.
///
/// A key or button that was pressed and released between two samples is reported as pressed in the later one, so that
/// no tap is lost at a low frame rate.
class Desktop : quillmarsh::NoCopy
{
public:
    /// @name Events
    /// @{
    void OnKey(quillmarsh::eKey key, bool isDown);
    void OnLocks(bool isCapsLockOn, bool isNumLockOn);
    void OnButton(quillmarsh::eMouseButton button, bool isDown);
    void OnMove(float x, float y);
    void OnPosition(int x, int y);
    void OnInside(bool isInside);
    /// Adds notches of the wheel; positive is away from the user.
    void OnWheel(float turns);
    void OnSize(int width, int height);
    /// Releases all keys and buttons.
    void OnFocusLost();
    /// @}

    /// @name Samples
    /// @{
    void TakeKeys(KeySample &sample);
    void TakePointer(PointerSample &sample);
    /// Discards the taps, movements and wheel steps since the last sample.
    void ForgetThePast();
    /// @}

    /// @name Cursor
    /// @{
    void Wish(CursorWish const &wish);
    /// Returns the current wish. A request to move the cursor is returned only once.
    CursorWish TakeWish();
    /// @}

private:
    mutable quillmarsh::CriticalSection lock_;
    // The current state, and the keys that were pressed since the last sample.
    KeySample keys_;
    std::bitset<quillmarsh::e_key_none> tappedKeys_;
    PointerSample pointer_;
    unsigned int tappedButtons_ = 0;
    float wheel_ = 0;
    CursorWish wish_;
};

} // namespace input_desktop

#endif
