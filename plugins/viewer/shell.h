// What the viewer is made of: workspace, rooms and desk, and the commands of its window.
#ifndef QUILLMARSH_PLUGINS_VIEWER_SHELL_H
#define QUILLMARSH_PLUGINS_VIEWER_SHELL_H

#include "framerest.h"
#include "helppanel.h"

#include <quillmarsh/framework/videoconfig.h>
#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>
#include <quillmarsh/widgets/consolepanel.h>

#include <optional>

namespace viewer
{

/// The viewer behind the application's hooks. The kernel must have its interpreter. Frame thread only.
class Shell : quillmarsh::NoCopy, quillmarsh::platform::DesktopListener
{
public:
    /// Makes workspace and rooms, and registers all commands and variables.
    Shell();
    ~Shell() override;

    /// Makes the desk and the panels. Needs the GUI's manager and a look.
    void MakeGUI();
    Rooms const &GetRooms() const { return rooms_; }
    /// The window whose title tells what is shown; null for none.
    void SetWindow(quillmarsh::platform::Window *window);
    /// Does the work of a frame, after the GUI got its input.
    void Update(double seconds);
    /// True if this frame is drawn.
    bool IsDrawing() const { return rest_.IsDrawing(); }
    /// Runs the line that a key is bound to. True if there is one.
    bool RunKey(quillmarsh::eKey key, unsigned int repeatCount);
    /// Ends the run in good order: writes the state.
    void End();

private:
    struct Command;
    class Console;

    static Command const s_commands[];

    void AddCommands();
    void OnDesktopEvent(quillmarsh::platform::DesktopEvent const &event) override;
    void ToggleFullscreen();
    void UpdateTitle();

    /// @name State
    /// @{
    void ReadStartState();
    void RunState(string const &text, string const &name, bool isStart);
    string MakeState() const;
    bool AcceptsStateLine(string const &line) const;
    /// @}

    Workspace workspace_;
    CommandSet commands_;
    Rooms rooms_;
    FrameRest rest_;
    quillmarsh::platform::DesktopSubscription subscription_;
    /// @name Owned by the manager, and null ahead of MakeGUI()
    /// @{
    Desk *desk_ = nullptr;
    HelpPanel *help_ = nullptr;
    quillmarsh::widgets::ConsolePanel *console_ = nullptr;
    /// @}
    /// @name State
    /// @{
    /// File of the state; "auto" until the first frame, empty for none.
    string stateFile_;
    bool hasReadState_ = false;
    bool wasStateDamaged_ = false;
    /// Script that waits for the next frame, and its name.
    string waitingState_;
    string waitingStateName_;
    /// Texts of the look's variables ahead of the state, in the order of their table.
    std::vector<string> startLook_;
    /// The same as of the last frame: they go ahead of the state's end.
    std::vector<string> look_;
    /// @}
    quillmarsh::platform::Window *window_ = nullptr;
    /// Title that the window has.
    string title_;
    /// Exported: frames that were drawn.
    unsigned int numDrawn_ = 0;
    /// Of the window that a full screen has replaced.
    std::optional<quillmarsh::VideoConfig> windowConfig_;
};

} // namespace viewer

#endif
