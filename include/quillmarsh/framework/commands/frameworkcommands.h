// Creation of the commands that every program of the framework has.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_FRAMEWORKCOMMANDS_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_FRAMEWORKCOMMANDS_H

#include <quillmarsh/platform/api.h>

namespace quillmarsh::gui
{
class Component;
} // namespace quillmarsh::gui

namespace quillmarsh::std_command_interpreter
{
class Interpreter;
} // namespace quillmarsh::std_command_interpreter

namespace quillmarsh::framework_commands
{

/// Creates the framework's commands and registers them as external ones of the interpreter, which owns them then: exit,
/// crash, vsync, screenshot, hid-config, hid-control, video-config, gui-font, gui-alias, gui-stats, var and profiler.
/// Needs a kernel.
///
/// The codes go along with a reconfiguration of the input devices and of the video stack. The component is
/// what a screenshot hides, for example a console; it is borrowed, and may be null.
QUILLMARSH_API void CreateAndRegisterAllCommands(std_command_interpreter::Interpreter &interpreter,
                                                 gui::Component *screenshotAutoHide, unsigned int hidReconfigCode,
                                                 unsigned int videoReconfigCode);

} // namespace quillmarsh::framework_commands

#endif
