// A robot that uses a GUI as a person does.
#ifndef QUILLMARSH_GUI_GUI_ROBOT_H
#define QUILLMARSH_GUI_GUI_ROBOT_H

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/mathtools/vector2.h>
#include <quillmarsh/platform/inputcodes.h>

#include <functional>
#include <memory>
#include <optional>

namespace quillmarsh
{

class HumanInterfaceDevice;

namespace gui
{

class Component;

/// A robot could not do what it was told. The message says what that was, and what the robot saw instead.
class QUILLMARSH_API RobotException : public GUIException
{
public:
    RobotException();
    RobotException(RobotException const &);
    RobotException &operator=(RobotException const &);
    ~RobotException() override;
};

/// Uses the GUI by a mouse and a keyboard of its own, for tests, demonstrations and remote control.
///
/// The robot makes two devices, which have to be connected to the GUI manager ahead of other mice and keyboards of the
/// system. It changes one of them once for each frame, so that the GUI sees what it would see of a person: the pointer
/// moves before a button is pressed, and a key is pressed in one frame and released in another. Components are named by
/// paths; see ComponentPath.
///
/// With a function that runs a frame, each operation returns when it is done:
///
/// \code
/// gui::Robot robot([&] { session.RunFrame(); });
/// robot.Click("Panel 'Files' / Button 'Open'");
/// robot.Type("scene.txt\n");
/// robot.WaitForText("Label", "Loaded");
/// \endcode
///
/// Without it, the operations wait in a queue, and the program calls Advance() ahead of the sampling of each frame.
///
/// An operation that needs a component looks for it for a number of frames (SetPatience()), and for a place in it that
/// can be reached: its middle, or another place if that is covered. It fails if the component is missing, hidden,
/// disabled, outside of the window, or covered by others. A failure drops all operations, and releases all keys and
/// buttons.
///
/// All text is UTF-8; what is typed has the characters of Latin-1. Frame thread only; the devices may be sampled by
/// threads.
class QUILLMARSH_API Robot : NoCopy
{
public:
    /// Makes a robot whose operations wait in a queue.
    Robot();
    /// Makes a robot whose operations run frames until they are done. `runFrame` samples the devices and lets the GUI
    /// dispatch, once.
    explicit Robot(std::function<void()> runFrame);
    ~Robot();

    /// @name Devices
    /// Each makes a device with a controller of the system. Devices may outlive the robot. Only one of each kind should
    /// be connected at a time; several show the same.
    /// @{
    AutoPtr<HumanInterfaceDevice> CreateMouse() const;
    AutoPtr<HumanInterfaceDevice> CreateKeyboard() const;
    /// @}

    /// @name Patience
    /// In frames.
    /// @{

    /// Sets how long an operation looks for a component that it needs; 30 at first.
    void SetPatience(unsigned int frames);
    unsigned int GetPatience() const;
    /// Sets how long a wait may take; 600 at first.
    void SetWaitLimit(unsigned int frames);
    unsigned int GetWaitLimit() const;
    /// @}

    /// @name Mouse
    /// `place` is in pixels from the top left corner of the component, NaN for the middle along an axis; without it the
    /// robot chooses the place. All throw a GUIException for a path that cannot be read.
    /// @{

    /// Moves the pointer to a component, which may be disabled.
    void Move(string const &path, std::optional<vec2> const &place = {});
    /// Moves the pointer to a position in the window in pixels, whatever is there.
    void MoveTo(int x, int y);
    /// Clicks. It waits until the click is no double click with the last one. If the window ignores the first click
    /// (gui::Manager::SetBehaviorOnWindowActivate), it clicks twice, as a person would.
    void Click(string const &path, eMouseButton button = e_mouse_button_left, std::optional<vec2> const &place = {});
    /// Clicks twice. It fails if the frames are too slow for a double click.
    void DoubleClick(string const &path, eMouseButton button = e_mouse_button_left,
                     std::optional<vec2> const &place = {});
    /// Presses on one component, moves to the other one and releases. The other one may be covered meanwhile.
    void Drag(string const &path, string const &to, eMouseButton button = e_mouse_button_left);
    /// Presses on a component, moves by a distance in pixels and releases.
    void DragBy(string const &path, vec2 const &distance, eMouseButton button = e_mouse_button_left,
                std::optional<vec2> const &place = {});
    /// Turns the wheel over a component; positive is away from the user. 120 are one notch of most mice.
    void Turn(string const &path, int delta, std::optional<vec2> const &place = {});
    /// Press and release a button where the pointer is.
    void PressButton(eMouseButton button = e_mouse_button_left);
    void ReleaseButton(eMouseButton button = e_mouse_button_left);
    /// @}

    /// @name Keyboard
    /// A chord is a key with modifiers ahead of it, such as "Tab", "Control+A" or "Control+Shift+End": names as those
    /// of GetKeyName(), in upper or lower case, or "Shift", "Control", "Ctrl", "Alt" and "AltGr". All throw a
    /// GUIException for a chord with other names, and for text that cannot be typed.
    /// @{

    /// Presses the keys in their order, and releases them.
    void Key(string const &chord);
    /// Presses the keys, which stay down for the operations that follow.
    void HoldKeys(string const &chord);
    /// Releases them.
    void ReleaseKeys(string const &chord);
    /// Types text into the component with the keyboard focus. A line feed is the key Enter, a tab the key Tab. It fails
    /// when no component wants characters.
    void Type(string const &text);
    /// @}

    /// @name Waits
    /// The operations that follow wait, too. A wait fails at the limit of frames; 0 stands for GetWaitLimit().
    /// @{

    void WaitFrames(unsigned int frames);
    /// Waits for time of the GUI's frames; without a limit of frames.
    void WaitSeconds(double seconds);
    /// Waits until the path leads to a component that can be seen.
    void WaitFor(string const &path, unsigned int limit = 0);
    /// Waits until no component of the path can be seen.
    void WaitForEnd(string const &path, unsigned int limit = 0);
    /// Waits until the component has this caption.
    void WaitForText(string const &path, string const &text, unsigned int limit = 0);
    /// Waits until the function returns true. `condition` completes the sentence "The robot waits until ..." in
    /// messages.
    void WaitUntil(std::function<bool()> isTrue, string const &condition, unsigned int limit = 0);
    /// @}

    /// Returns the component of a path, now. Throws RobotException if there is none, or no single one.
    static Component &Find(string const &path);

    /// @name Queue
    /// @{

    /// Carries out the operations up to the next change of mouse or keyboard, or up to a wait. Returns true when a frame
    /// has to follow; false when nothing is left. Throws RobotException when an operation fails. Call it once for each
    /// frame, ahead of the sampling of devices; with a function that runs frames there is no need to.
    bool Advance();
    /// True while operations are left, and while the GUI has not seen their last change.
    bool IsBusy() const;
    /// Drops all operations, and releases all keys and buttons.
    void Stop();
    /// @}

private:
    class Work;

    /// Runs frames until everything is done, if there is a function for it.
    void Finish();

    std::function<void()> runFrame_;
    AutoPtr<Work> work_;
};

} // namespace gui
} // namespace quillmarsh

#endif
