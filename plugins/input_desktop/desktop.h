// Keys and pointer of the window that has the focus, as the system's events tell of them.
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
    /// Since the sample before.
    float moveX = 0;
    float moveY = 0;
    int wheel = 0;
    /// In pixels of the window, which is so large.
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool isInside = false;
    /// A bit for each button.
    unsigned int buttons = 0;
};

/// What the mouse wants of the system's cursor.
struct CursorWish
{
    /// Hidden and held: movements count, wherever it stands.
    bool isHeld = false;
    /// Move it there, once.
    bool mustMove = false;
    int x = 0;
    int y = 0;
};

/// The one place where the thread that takes events and the threads that sample meet. Any thread.
///
/// A key or button that was pressed and released between two samples shows as pressed in the later one: no tap is lost
/// to a low frame rate.
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
    /// In turns of the wheel, away from the user.
    void OnWheel(float turns);
    void OnSize(int width, int height);
    /// What was down is told of no more.
    void OnFocusLost();
    /// @}

    /// @name Samples
    /// @{
    void TakeKeys(KeySample &sample);
    void TakePointer(PointerSample &sample);
    /// Forgets taps, movements and wheel.
    void ForgetThePast();
    /// @}

    /// @name Cursor
    /// @{
    void Wish(CursorWish const &wish);
    /// The wish in force; a movement is handed out once.
    CursorWish TakeWish();
    /// @}

private:
    mutable quillmarsh::CriticalSection lock_;
    // As they are now, and what went down since the last sample.
    KeySample keys_;
    std::bitset<quillmarsh::e_key_none> tappedKeys_;
    PointerSample pointer_;
    unsigned int tappedButtons_ = 0;
    float wheel_ = 0;
    CursorWish wish_;
};

} // namespace input_desktop

#endif
