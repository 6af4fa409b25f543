// One run of an application, for programs with a main loop of their own.
#ifndef QUILLMARSH_HOST_SESSION_H
#define QUILLMARSH_HOST_SESSION_H

#include <quillmarsh/host/applicationwalk.h>
#include <quillmarsh/host/consolecommands.h>
#include <quillmarsh/host/consolelines.h>
#include <quillmarsh/host/hostkernel.h>

#include <quillmarsh/basetools/libraryinfo.h>

namespace quillmarsh::host
{

/// Settings of a Session. The streams are borrowed, and must outlive the session.
struct SessionOptions
{
    /// Name of the program, for messages and dialogs.
    string programName = "host";
    /// Shows the console's text; null for none. The console's buffers contain the text in any case.
    ostream *out = nullptr;
    /// Takes the log; null for none. Any thread may print to the log: the session writes to the stream one text at a
    /// time.
    ostream *log = nullptr;
    /// Shows a message to the user: a line without its end, or a few. Null prints to the standard error stream.
    std::function<void(string const &)> report = nullptr;
    /// Called with the application's answer before its start-up goes on. May be null.
    std::function<void(Application::StartupResult const &)> onStartup = nullptr;
    /// See Application::StartupInfo.
    string commandLine = "";
    string programFileName = "";
    string logFileName = "";
    bool developerMode = false;
};

/// One run of an application in a program with a main loop of its own.
///
/// \code
/// host::Session session({.programName = "viewer", .out = &std::cout});
/// if (session.Open("viewer.so"))
/// {
///     while (session.RunFrame())
///         session.Pause();
/// }
/// session.Close();
/// return session.HasFailed() ? EXIT_FAILURE : EXIT_SUCCESS;
/// \endcode
/// A failure is reported and ends the run; no operation throws it. The session holds the program's one kernel, and runs
/// one application. Main thread only.
class Session : NoCopy
{
public:
    /// Creates the kernel. `version` is the version of the headers that the program was compiled with. Throws a
    /// KernelException when the library that the program finds at run time does not fit them.
    explicit Session(SessionOptions options,
                     library_info::LibraryVersion const &version = library_info::GetHeaderVersion());
    /// Calls Close().
    ~Session();

    /// @name Parts, which a program may change before Open()
    /// The session owns them.
    /// @{

    HostKernel &GetKernel() { return kernel_; }
    ConsoleLines &GetLines() { return lines_; }
    /// @}

    /// @name The run
    /// @{

    /// Loads a plug-in library and walks its application up to the frames. False when that fails, and when the
    /// application asks not to go on.
    bool Open(string const &pluginFileName);
    /// Does the same with an application of the program, which the session then owns.
    bool Open(AutoPtr<Application> application);
    /// Does the same with the application among the plug-ins that GetKernel().GetPlugins() has already loaded.
    bool Open();
    /// Runs one frame, then the requests and the console lines. False when the run must end.
    bool RunFrame();
    /// Calls a function of the program like a hook: an exception is reported, with `place` in the message, and ends the
    /// run. Returns false then, and when the run must end.
    bool Run(char const *place, std::function<void()> const &call);
    /// Sleeps until the next frame is due. Without a limit of the frame rate, `idleRate` is the rate in frames a
    /// second; 0 does not sleep.
    void Pause(double idleRate = 60);
    /// Walks the application down and deletes it, then unloads the plug-ins. Harmless when nothing is open.
    void Close();
    /// @}

    /// Returns the application's answer at its start.
    Application::StartupResult const &GetStartupResult() const { return walk_.GetResult(); }
    /// True after a failure that ended the run or kept it from beginning.
    bool HasFailed() const { return refused_ || kernel_.GetFailures().HasFailed(); }
    /// Returns the exception that ended the run, for a program that throws it again after Close(); null without
    /// KernelExecutionParams::EnableHardRethrowExit. The plug-ins then stay loaded, because their code may belong to
    /// it.
    std::exception_ptr const &GetRethrown() const { return rethrown_; }

private:
    class Text;

    bool Begin(std::function<AutoPtr<Application>()> const &create);
    Application::StartupInfo MakeStartupInfo() const;
    void OnStartup(Application::StartupResult const &result);
    void LogSummary();

    SessionOptions const options_;
    AutoPtr<Text> log_;
    AutoPtr<Text> out_;
    SharedOutputStream logStream_;
    HostKernel kernel_;
    ApplicationWalk walk_;
    ConsoleLines lines_;
    VariableTexts startValues_;
    bool isOpen_ = false;
    /// The application has reached the frames.
    bool hasRun_ = false;
    /// The next frame may run.
    bool isRunning_ = false;
    bool refused_ = false;
    std::exception_ptr rethrown_;
};

} // namespace quillmarsh::host

#endif
