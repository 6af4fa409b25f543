// Presses, releases, repeats and double clicks of one frame.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_MOUSEBUTTONS_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_MOUSEBUTTONS_H

#include <quillmarsh/gui/gui_messages.h>

namespace quillmarsh
{
class Mouse;
}

namespace quillmarsh::gui::manager_parts
{

/// Number of mouse buttons; as a button it means none.
constexpr unsigned int s_numMouseButtons = 5;
constexpr eMouseButton s_noMouseButton = e_mouse_button_extra3;

/// Delay and interval of repeats, in seconds.
struct RepeatTimes
{
    double delay = 0.25;
    double interval = 0.025f;

    /// Stores both, at least 0.
    void Set(double newDelay, double newInterval);
};

/// Times of a held key or button. Keyboard and mouse count alike.
struct RepeatClock
{
    unsigned int count = 0;
    float lastRepeatTime = 0;
    float repeatTime = 0;

    void Restart() { *this = {}; }
    /// Adds the time of a frame; call IsDue() after it, while the key or button is held.
    void Advance(double seconds) { repeatTime += static_cast<float>(seconds); }
    /// Returns true, and counts, when a repeat is due.
    bool IsDue(RepeatTimes const &times);
};

/// Events of the buttons. Calls nothing; MouseDispatch asks it in each frame.
class MouseButtons
{
public:
    /// Reads the buttons, and works repeats, double clicks and swallowed clicks out.
    void Process(Mouse &mouse, double timeDelta);

    void ResetRepeat();
    void ResetDoubleClick();
    /// Wipes the events of this frame.
    void ResetEvents();

    /// @name Events of this frame
    /// @{
    unsigned int eventCount = 0;
    unsigned int downCount = 0;
    eMouseButton firstDownButton = s_noMouseButton;
    bool down[s_numMouseButtons] = {};
    bool up[s_numMouseButtons] = {};
    /// @}

    /// @name Repeat
    /// @{
    RepeatTimes repeatTimes;
    eMouseButton repeatButton = s_noMouseButton;
    RepeatClock repeatClock;
    /// @}

    /// @name Double click
    /// @{
    double doubleClickTime = 0.25;
    eMouseButton lastClickButton = s_noMouseButton;
    bool doubleClickPending = false;
    float timeSinceClick = 0;
    /// @}

    /// The frame with the last press had this first button.
    eMouseButton previousDownButton = s_noMouseButton;
    /// All events are wiped until a frame with a release has passed.
    bool swallowClicks = false;

private:
    void ReadEvents(Mouse &mouse);
    /// Begins the repeat of the first button that went down, and finds double clicks.
    void ProcessPress();
    void ProcessRepeat(Mouse &mouse, double timeDelta);
};

} // namespace quillmarsh::gui::manager_parts

#endif
