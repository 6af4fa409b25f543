// What the viewer is made of: workspace, rooms and desk, and the commands of its window.
#ifndef QUILLMARSH_PLUGINS_VIEWER_SHELL_H
#define QUILLMARSH_PLUGINS_VIEWER_SHELL_H

#include "desk.h"

#include <quillmarsh/widgets/consolepanel.h>

namespace viewer
{

/// The viewer behind the application's hooks. The kernel must have its interpreter. Frame thread only.
class Shell : quillmarsh::NoCopy
{
public:
    /// Makes workspace and rooms, and registers all commands and variables.
    Shell();
    ~Shell();

    /// Makes the desk and the panels. Needs the GUI's manager and a look.
    void MakeGUI();
    Rooms const &GetRooms() const { return rooms_; }
    /// Does the work of a frame, after the GUI got its input.
    void Update(double seconds);
    /// Runs the line that a key is bound to, if the desk is not covered. True if there is one.
    bool RunKey(quillmarsh::eKey key, unsigned int repeatCount);
    /// Ends the run in good order.
    void End();

private:
    struct Command;

    static Command const s_commands[];

    void AddCommands();

    Workspace workspace_;
    CommandSet commands_;
    Rooms rooms_;
    /// @name Owned by the manager, and null ahead of MakeGUI()
    /// @{
    Desk *desk_ = nullptr;
    quillmarsh::widgets::ConsolePanel *console_ = nullptr;
    /// @}
};

} // namespace viewer

#endif
