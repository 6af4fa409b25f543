#include <quillmarsh/host/session.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/profilerdumpdesc.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/platform/program.h>

#include <iostream>

namespace quillmarsh::host
{

/// Writes to a stream of the program, one text at a time; drops the text if there is none.
class Session::Text : public TextSink, public TextOutput
{
public:
    explicit Text(ostream *stream) : stream_(stream) {}

    void OnText(std::string_view text, unsigned int type) override { Write(text, type); }
    void Write(std::string_view text, unsigned int) override
    {
        if (stream_ == nullptr)
            return;
        std::lock_guard const lock(mutex_);
        SharedOutputStream::GetThreadStream(*stream_) << text << std::flush;
    }

private:
    std::mutex mutex_;
    ostream *stream_;
};

namespace
{

SessionOptions WithDefaults(SessionOptions options)
{
    if (!options.report)
    {
        options.report = [name = options.programName](string const &message)
        {
            bool const isTerminal = platform::IsTerminal(platform::eStandardStream::e_error);
            std::cerr << name + ": " + (isTerminal ? MakePrintable(message, true) : message) + "\n" << std::flush;
        };
    }
    return options;
}

} // namespace

Session::Session(SessionOptions options, library_info::LibraryVersion const &version)
    : options_(WithDefaults(std::move(options))),
      log_(std::make_unique<Text>(options_.log)),
      out_(std::make_unique<Text>(options_.out)),
      logStream_(*log_),
      kernel_(logStream_, options_.report, options_.developerMode),
      walk_(kernel_),
      lines_(kernel_, options_.report)
{
    library_info::LibraryVersion const own = library_info::GetLibraryVersion();
    if (!own.IsCompatibleWith(version))
    {
        QUILLMARSH_THROW(KernelException, "The program was compiled for version " + version.MakeString() +
                                              " of the library, and runs with " + own.MakeString() + ".");
    }
    kernel_.GetConsole().SetOutput(options_.out != nullptr ? out_.get() : nullptr);
    RegisterConsoleCommands(kernel_, lines_, startValues_);
    walk_.onStartupResult = [this](Application::StartupResult const &result) { OnStartup(result); };
}

Session::~Session()
{
    Close();
    kernel_.GetConsole().SetOutput(nullptr);
}

bool Session::Open(string const &pluginFileName)
{
    try
    {
        kernel_.GetPlugins().Load(pluginFileName);
        if (kernel_.GetPlugins().FindApplication() == nullptr)
            QUILLMARSH_THROW(KernelException, "'" + pluginFileName + "' has no application.");
    }
    catch (KernelException const &thrown)
    {
        // The message says enough.
        refused_ = true;
        options_.report(thrown.GetMessage());
        return false;
    }
    return Open();
}

bool Session::Open(AutoPtr<Application> application)
{
    return Begin([&application] { return std::move(application); });
}

bool Session::Open()
{
    return Begin(
        [this]
        {
            PluginDescriptor *const descriptor = kernel_.GetPlugins().FindApplication();
            return descriptor != nullptr ? kernel_.GetPlugins().CreateAs<Application>(*descriptor) : nullptr;
        });
}

bool Session::Begin(std::function<AutoPtr<Application>()> const &create)
{
    QUILLMARSH_ASSERT(!isOpen_, "The session is open already.");
    if (std::exchange(isOpen_, true))
        return false;
    hasRun_ = isRunning_ = walk_.Up(create, MakeStartupInfo());
    startValues_ = GetVariableTexts(*kernel_.GetVariableRegistry());
    return isRunning_;
}

bool Session::Run(char const *place, std::function<void()> const &call)
{
    kernel_.GetFailures().SetPlace(place);
    isRunning_ = isRunning_ && kernel_.GetFailures().Guard(call);
    return isRunning_ && !kernel_.IsExitRequested();
}

bool Session::RunFrame()
{
    if (!isRunning_ || kernel_.IsExitRequested())
        return false;
    isRunning_ = kernel_.GetFailures().Guard(
        [this]
        {
            kernel_.RunFrame();
            kernel_.CarryOutRequests();
            lines_.Run();
        });
    return isRunning_ && !kernel_.IsExitRequested();
}

void Session::Pause(double idleRate)
{
    kernel_.PauseUntilNextFrame(idleRate);
}

void Session::Close()
{
    if (std::exchange(hasRun_, false))
        LogSummary();
    isRunning_ = false;
    walk_.Down();
    if (std::exchange(isOpen_, false) && kernel_.GetParams().WaitCloseConfirmationOnExit)
        ShowDialogOk(options_.programName, "The program has ended.");
    if (std::exception_ptr const thrown = kernel_.GetFailures().TakeException();
        kernel_.GetParams().EnableHardRethrowExit && thrown != nullptr)
    {
        rethrown_ = thrown;
        kernel_.GetPlugins().Keep();
    }
    kernel_.GetPlugins().Unload();
    kernel_.GetConsole().GetStream().flush();
}

Application::StartupInfo Session::MakeStartupInfo() const
{
    Application::StartupInfo info;
    info.CommandLine = options_.commandLine;
    info.ProgramFilename = options_.programFileName;
    file_system::GetProcessDirectory(info.ProcessDirectory, true);
    file_system::GetUserHomeDirectory(info.UserHomeDirectory, true);
    file_system::GetUserProfileDirectory(info.UserProfileDirectory, true);
    info.AppProfileDirectory = info.UserProfileDirectory + ".quillmarsh" + file_system::GetPathSeparator();
    info.AppLogFilename = options_.logFileName;
    return info;
}

void Session::OnStartup(Application::StartupResult const &result)
{
    if (!result.ProcessDirectory.empty() && !file_system::SetProcessDirectory(result.ProcessDirectory))
        QUILLMARSH_THROW(KernelException, "The directory '" + result.ProcessDirectory + "' cannot be entered.");
    if (!result.AppProfileDirectory.empty() && !file_system::DirectoryExists(result.AppProfileDirectory) &&
        !file_system::CreateDirectoryPath(result.AppProfileDirectory))
    {
        QUILLMARSH_THROW(KernelException, "The directory '" + result.AppProfileDirectory + "' cannot be made.");
    }
    if (options_.onStartup)
        options_.onStartup(result);
    if (result.WaitCloseConfirmation)
        kernel_.GetParams().WaitCloseConfirmationOnExit = true;
}

void Session::LogSummary()
{
    Application::AutoInitInfo const &autoInit = kernel_.GetAutoInit();
    if (autoInit.LogFrameSummary)
    {
        double const seconds = kernel_.GetFrameTime();
        unsigned int const frames = kernel_.GetFrameNumber();
        logStream_ << frames << (frames == 1 ? " frame in " : " frames in ") << seconds << " s, "
                   << (seconds > 0 ? frames / seconds : 0) << " a second" << std::endl;
    }
    if (autoInit.LogProfilerStatistics)
    {
        ProfilerDumpDesc desc;
        desc.ConstructHeaderLines();
        kernel_.GetProfiler()->ProcessStatistics();
        kernel_.GetProfiler()->DumpStatistics(logStream_, desc);
    }
}

} // namespace quillmarsh::host
