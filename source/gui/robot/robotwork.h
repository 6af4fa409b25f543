// The queue of a robot, and its steps.
#ifndef QUILLMARSH_SOURCE_GUI_ROBOT_ROBOTWORK_H
#define QUILLMARSH_SOURCE_GUI_ROBOT_ROBOTWORK_H

#include "source/gui/robot/reach.h"
#include "source/gui/robot/robothands.h"

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_componentpath.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_robot.h>
#include <quillmarsh/gui/gui_watch.h>

#include <deque>
#include <vector>

namespace quillmarsh::gui
{

/// Queue of steps. An operation is a row of steps; each step makes at most one change of the hands in a frame.
class Robot::Work : NoCopy
{
public:
    /// What a step has done in a frame.
    enum class eStep
    {
        /// It is done, and the next step may run in the same frame.
        e_done,
        /// It is done with a change of the hands, which a frame must show first.
        e_doneInFrame,
        /// It goes on in the next frame.
        e_goesOn
    };
    using Run = std::function<eStep()>;
    using ReachWish = robot_parts::ReachWish;

    Work();

    /// Appends a step. `what` names the operation in messages: "click Button 'Open'".
    void Add(string const &what, Run run) { steps_.push_back({what, std::move(run)}); }
    /// Appends the steps of the first press of an operation: aim, wake, calm, and the press itself.
    void AddPress(string const &what, string const &path, eMouseButton button, std::optional<vec2> const &place);
    bool Advance();
    bool IsBusy() const { return !steps_.empty() || !isSettled_; }
    void Stop();

    /// @name Steps
    /// Each returns what Add() takes.
    /// @{

    /// Moves the pointer until the mouse is over the component.
    Run MakeAim(string const &path, ReachWish const &wish);
    Run MakePointer(int x, int y);
    /// Clicks once ahead of the first click if the window ignores that.
    Run MakeWake();
    /// Waits until the last click of the same button on the same component is long ago.
    Run MakeCalm(eMouseButton button);
    Run MakeButton(eMouseButton button, bool isPressed);
    /// Fails if the last two presses were too far apart for a double click.
    Run MakeDoubleClickCheck();
    /// Moves the pointer in a few frames to a component, or by a distance if the path is empty.
    Run MakeDrag(string const &path, vec2 const &distance);
    Run MakeTurn(int delta);
    /// Presses or releases the keys, one in each frame.
    Run MakeKeys(std::vector<eKey> const &keys, bool isPressed);
    /// `text` is Latin-1.
    Run MakeTyping(string const &text);
    Run MakeFrames(unsigned int frames);
    Run MakeSeconds(double seconds);
    /// Waits until `check` returns an empty text; the last text says what is there instead.
    Run MakeWait(std::function<string()> check, unsigned int limit);
    /// @}

    std::shared_ptr<robot_parts::Hands> const hands;
    unsigned int patience = 30;
    unsigned int waitLimit = 600;

private:
    class Typing;

    struct Step
    {
        string what;
        Run run;
    };

    eStep RunStep();
    /// Lets the step go on, or fails when `limit` frames have passed.
    eStep GoOn(unsigned int limit, string const &obstacle);
    [[noreturn]] void Fail(string const &reason);
    /// Fails if the GUI listens to other devices.
    void CheckDevices();
    void CountTime();
    void SetPointer(int x, int y);
    void SetKey(eKey key, bool isPressed);
    eStep Aim(ComponentPath const &path, ReachWish const &wish);

    std::deque<Step> steps_;
    /// Frames of the present step.
    unsigned int frames_ = 0;
    /// The GUI has seen the last change.
    bool isSettled_ = true;
    unsigned int unsettledFrames_ = 0;

    /// @name The last press
    /// @{
    Watch<Component> pressed_;
    eMouseButton pressedButton_ = e_mouse_button_extra3;
    double secondsSincePress_ = 0;
    /// That time in the last frame of waiting for no double click.
    double calmSeconds_ = 0;
    double secondsBetweenPresses_ = 0;
    bool hasPressFrame_ = false;
    /// @}
};

} // namespace quillmarsh::gui

#endif
