// One run of a program, from its arguments to its exit status.
#ifndef QUILLMARSH_HOST_PROGRAM_H
#define QUILLMARSH_HOST_PROGRAM_H

#include "arguments.h"
#include "argumentsource.h"
#include "consolewindow.h"
#include "hostlog.h"
#include "standardoutput.h"
#include "startedsource.h"
#include "terminal.h"

#include <quillmarsh/host/consolehistory.h>
#include <quillmarsh/host/session.h>
#include <quillmarsh/platform/program.h>

#include <optional>

namespace quillmarsh::host
{

enum eExitStatus
{
    e_exit_ok = 0,
    e_exit_line_failed = 1,
    e_exit_wrong_argument = 2,
    e_exit_failed = 3
};

/// Shows a message of a program on standard error.
void PrintMessage(ProgramKind const &kind, string const &message);

/// One run of a program. Main thread only.
class Program : NoCopy
{
public:
    /// `words` is the command line, the program's name first.
    Program(ProgramKind const &kind, Arguments const &arguments, std::vector<string> const &words);
    ~Program();

    /// Runs, and returns the exit status. Throws only the failure that ended the run, if the hard rethrow at exit is
    /// on.
    int Run();

    /// Returns the signal that ended the run, if one did. Call it after Run().
    std::optional<platform::eSignal> GetEndingSignal();

private:
    SessionOptions MakeOptions();
    void Prepare();
    void OpenSource();
    void OpenScript();
    AutoPtr<LineSource> OpenStartScript();
    void OnStartScriptEnd();
    void LoadPlugins();
    /// Loads the plug-ins that those named by the user want beside them.
    void LoadCompanions(std::vector<string> const &directories);
    void LoadDefaultDrivers(std::vector<string> const &directories);
    void UseHeadlessDesktop();
    void LoadVideo(std::vector<string> const &directories);
    /// Loads a video plug-in that is not loaded yet, and chooses its renderer.
    void LoadVideoPlugin(string const &fileName);
    /// Loads the default video plug-in if it is of use. A failure leaves the run without video, and is reported.
    void LoadDefaultVideo(std::vector<string> const &directories);
    bool WantsVideo() const;
    /// True when the run is nothing without a window.
    bool NeedsVideo() const;
    double GetIdleRate() const;
    void OpenConsoleWindow();
    /// Shows the application's title in the console's window.
    void NameConsoleWindow();
    void RunApplication();
    void BeginConsole(Application::StartupResult const &result);
    void SetVariables();
    void SetScreenshotFolder();
    void RunFrames();
    bool IsFrameLimitReached();
    void Report(string const &message);
    void OnSignal(platform::eSignal signal);
    int GetExitStatus() const;

    ProgramKind const &kind_;
    Arguments const &arguments_;
    string const commandLine_;
    string const programFile_;
    bool const interactive_;
    /// A script is read, from a file or from standard input.
    bool const readsScript_;
    /// Neither a terminal nor a script ends the run, but its window does, or the end of a recording.
    bool const stays_;
    bool hasWrongArgument_ = false;
    bool outputFailed_ = false;

    HostLog log_{kind_.name};
    Session session_;
    HostKernel &kernel_ = session_.GetKernel();
    ConsoleLines &lines_ = session_.GetLines();
    /// @name Under the mutex; declared before `signals_`, whose thread uses them
    /// @{
    std::mutex terminalMutex_;
    AutoPtr<Terminal> terminal_;
    std::optional<platform::eSignal> endingSignal_;
    /// @}
    /// Declared before all members that start threads: the terminal and the script.
    platform::SignalWatch signals_;
    StandardOutput standardOutput_;
    AutoPtr<LineSource> script_;
    AutoPtr<ArgumentSource> argumentSource_;
    AutoPtr<StartedSource> source_;
    ConsoleHistory history_;
    /// Null without --console-window.
    AutoPtr<ConsoleWindow> consoleWindow_;
};

} // namespace quillmarsh::host

#endif
