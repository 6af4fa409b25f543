#include <quillmarsh/framework/commands/frameworkcommands.h>

#include <quillmarsh/framework/commands/crashcmd.h>
#include <quillmarsh/framework/commands/exitcmd.h>
#include <quillmarsh/framework/commands/guialiascmd.h>
#include <quillmarsh/framework/commands/guifontcmd.h>
#include <quillmarsh/framework/commands/guistatscmd.h>
#include <quillmarsh/framework/commands/hidconfigcmd.h>
#include <quillmarsh/framework/commands/hidcontrolcmd.h>
#include <quillmarsh/framework/commands/profilercmd.h>
#include <quillmarsh/framework/commands/screenshotcmd.h>
#include <quillmarsh/framework/commands/variablecmd.h>
#include <quillmarsh/framework/commands/videoconfigcmd.h>
#include <quillmarsh/framework/commands/vsynccmd.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

namespace quillmarsh::framework_commands
{

void CreateAndRegisterAllCommands(std_command_interpreter::Interpreter &interpreter, gui::Component *screenshotAutoHide,
                                  unsigned int hidReconfigCode, unsigned int videoReconfigCode)
{
    interpreter.RegisterExternalCommand(new ExitCmd);
    interpreter.RegisterExternalCommand(new CrashCmd);
    interpreter.RegisterExternalCommand(new VSyncCmd);
    interpreter.RegisterExternalCommand(
        new ScreenShotCmd(new ScreenShotCmd::ScreenShotCallback_AutoHideComponent(screenshotAutoHide)));
    interpreter.RegisterExternalCommand(new HIDConfigCmd(hidReconfigCode));
    interpreter.RegisterExternalCommand(new HIDControlCmd);
    interpreter.RegisterExternalCommand(new VideoConfigCmd(videoReconfigCode));
    interpreter.RegisterExternalCommand(new GUIFontCmd);
    interpreter.RegisterExternalCommand(new GUIAliasCmd);
    interpreter.RegisterExternalCommand(new GUIStatsCmd);
    interpreter.RegisterExternalCommand(new VariableCmd);
    interpreter.RegisterExternalCommand(new ProfilerCmd);
}

} // namespace quillmarsh::framework_commands
