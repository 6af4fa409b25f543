#include "program.h"

#include "scriptreader.h"
#include "variablesetting.h"
#include <quillmarsh/host/waitcmd.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/libraryinfo.h>
#include <quillmarsh/basetools/profilerdumpdesc.h>
#include <quillmarsh/basetools/texttools.h>

#include <hostconfig.h>

#include <algorithm>
#include <iostream>

namespace quillmarsh::host
{

using platform::eStandardStream;

namespace
{

/// Frames a second while the host has nothing better to go by.
constexpr double s_defaultFrameRate = 60;
constexpr char s_szDefaultApplication[] = "workbench";
/// Drivers that come with the host, loaded with its own application where they lie beside it.
constexpr char const *s_defaultDrivers[] = {"input_recording"};

string JoinWords(std::vector<string> const &words)
{
    string joined;
    for (string const &word : words)
        joined += (joined.empty() ? "" : " ") + word;
    return joined;
}

string GetDirectory(string const &fileName)
{
    string path;
    string base;
    string extension;
    file_system::SplitFileName(fileName, path, base, extension);
    return path;
}

} // namespace

void PrintMessage(string const &message)
{
    string const shown = platform::IsTerminal(eStandardStream::e_error) ? MakePrintable(message, true) : message;
    std::cerr << "quillmarsh-host: " + shown + "\n" << std::flush;
}

Program::Program(Arguments const &arguments, std::vector<string> const &words)
    : arguments_(arguments),
      commandLine_(JoinWords(words)),
      programFile_(platform::GetProgramFileName(words.front())),
      interactive_(!arguments.script && platform::IsTerminal(eStandardStream::e_input) &&
                   platform::IsTerminal(eStandardStream::e_output)),
      console_(log_.GetStream()),
      failures_([this](string const &message) { Report(message); }),
      kernel_(console_, log_.GetStream(), failures_, arguments.developerMode),
      signals_([this](platform::eSignal signal) { OnSignal(signal); }),
      standardOutput_(
          [this](string const &error)
          {
              outputFailed_ = true;
              PrintMessage("cannot write to standard output: " + error);
              kernel_.RequestExit();
          })
{
}

Program::~Program()
{
    console_.SetOutput(nullptr);
}

int Program::Run()
{
    try
    {
        Prepare();
        RunApplication();
    }
    catch (WrongArgumentException const &thrown)
    {
        hasWrongArgument_ = true;
        Report(thrown.GetMessage());
    }
    catch (KernelException const &thrown)
    {
        // A plug-in that cannot be used: the message says it all.
        outputFailed_ = true;
        Report(thrown.GetMessage());
    }
    console_.GetStream().flush();
    console_.SetOutput(nullptr);
    {
        std::lock_guard const lock(terminalMutex_);
        terminal_.reset();
    }
    if (!log_.Close())
        PrintMessage("the log is not complete: it could not be written");
    if (rethrow_ != nullptr)
        std::rethrow_exception(rethrow_);
    return GetExitStatus();
}

int Program::GetExitStatus() const
{
    if (hasWrongArgument_)
        return e_exit_wrong_argument;
    if (outputFailed_ || failures_.HasFailed())
        return e_exit_failed;
    return lines_ != nullptr && lines_->HasFailed() ? e_exit_line_failed : e_exit_ok;
}

void Program::Prepare()
{
    if (arguments_.log)
        log_.Open(*arguments_.log);
    log_.GetStream() << "quillmarsh-host " << library_info::GetLibraryVersion().MakeString() << ": " << commandLine_
                     << std::endl;
    kernel_.SetFrameRateLimit(arguments_.frameRate);
    OpenSource();
    LoadPlugins();
}

void Program::OpenSource()
{
    if (!interactive_)
    {
        script_ = std::make_unique<ScriptReader>(arguments_.script.value_or("-"), [this] { kernel_.WakeUp(); });
        console_.SetOutput(&standardOutput_);
    }
    else
    {
        Terminal::Client const client{[this] { kernel_.WakeUp(); }, [this] { kernel_.RequestExit(); }};
        std::lock_guard const lock(terminalMutex_);
        terminal_ = std::make_unique<Terminal>(console_.GetBuffers(), client);
        console_.SetOutput(terminal_.get());
    }
    LineSource *const source = interactive_ ? static_cast<LineSource *>(terminal_.get()) : script_.get();
    lines_ = std::make_unique<ConsoleLines>(kernel_, source, arguments_.stopOnError,
                                            [this](string const &message) { Report(message); });
    lines_->SetStrict(arguments_.strict);
    kernel_.GetCommandInterpreter()->RegisterExternalCommand(new WaitCmd(*lines_));
}

void Program::LoadPlugins()
{
    string const programDirectory = GetDirectory(programFile_);
    std::vector<string> const directories = {programDirectory + "plugins",
                                             programDirectory + QUILLMARSH_HOST_PLUGIN_DIRECTORY};
    PluginSet &plugins = kernel_.GetPlugins();
    for (string const &plugin : arguments_.plugins)
        plugins.Load(FindPluginFile(plugin, directories));
    if (plugins.FindApplication() == nullptr)
    {
        plugins.Load(FindPluginFile(s_szDefaultApplication, directories));
        LoadDefaultDrivers(directories);
    }
    plugins.SetParameters(arguments_.parameters);
}

void Program::LoadDefaultDrivers(std::vector<string> const &directories)
{
    PluginSet &plugins = kernel_.GetPlugins();
    for (string const driver : s_defaultDrivers)
    {
        auto const &entries = plugins.GetEntries();
        bool const isLoaded = std::any_of(entries.begin(), entries.end(),
                                          [&driver](PluginSet::Entry const &entry)
                                          { return entry.descriptor->GetPluginInfo().GetPluginName() == driver; });
        auto const makeFileName = [&driver](string directory)
        {
            file_system::ForceTrailingPathSeparator(directory);
            return directory + driver + GetPluginExtension();
        };
        auto const found =
            std::find_if(directories.begin(), directories.end(),
                         [&](string const &directory) { return file_system::FileExists(makeFileName(directory)); });
        if (!isLoaded && found != directories.end())
            plugins.Load(makeFileName(*found));
    }
}

void Program::RunApplication()
{
    ApplicationWalk walk(kernel_);
    walk.onStartupResult = [this](Application::StartupResult const &result) { OnStartupResult(result); };
    if (walk.Up(*kernel_.GetPlugins().FindApplication(), MakeStartupInfo()))
    {
        failures_.Guard(
            [this, &walk]
            {
                SetVariables();
                if (hasWrongArgument_)
                    return;
                BeginConsole(walk.GetResult());
                RunFrames();
            });
        LogSummary();
    }
    if (terminal_ != nullptr)
        terminal_->EndEditing();
    walk.Down();
    if (kernel_.GetConfirmsClose())
        ShowDialogOk("quillmarsh-host", "The program has ended.");
    if (std::exception_ptr const thrown = failures_.TakeException(); kernel_.GetRethrowsHard() && thrown != nullptr)
    {
        rethrow_ = thrown;
        kernel_.GetPlugins().Keep();
    }
    kernel_.GetPlugins().Unload();
}

Application::StartupInfo Program::MakeStartupInfo() const
{
    Application::StartupInfo info;
    info.CommandLine = commandLine_;
    info.ProgramFilename = programFile_;
    file_system::GetProcessDirectory(info.ProcessDirectory, true);
    file_system::GetUserHomeDirectory(info.UserHomeDirectory, true);
    file_system::GetUserProfileDirectory(info.UserProfileDirectory, true);
    info.AppProfileDirectory = info.UserProfileDirectory + ".quillmarsh" + file_system::GetPathSeparator();
    info.AppLogFilename = arguments_.log.value_or("");
    return info;
}

void Program::OnStartupResult(Application::StartupResult const &result)
{
    if (!result.ProcessDirectory.empty() && !file_system::SetProcessDirectory(result.ProcessDirectory))
        QUILLMARSH_THROW(KernelException, "The directory '" + result.ProcessDirectory + "' cannot be entered.");
    if (!result.AppProfileDirectory.empty() && !file_system::DirectoryExists(result.AppProfileDirectory) &&
        !file_system::CreateDirectoryPath(result.AppProfileDirectory))
    {
        QUILLMARSH_THROW(KernelException, "The directory '" + result.AppProfileDirectory + "' cannot be made.");
    }
    if (!result.AppLogFilename.empty() && !log_.IsOpen())
        log_.Open(result.AppLogFilename);
    if (result.WaitCloseConfirmation)
    {
        KernelExecutionParams params;
        params.WaitCloseConfirmationOnExit = true;
        params.SetKernelCurrent();
    }
}

void Program::BeginConsole(Application::StartupResult const &result)
{
    if (terminal_ != nullptr && result.EnableConsole)
        terminal_->BeginEditing((result.AppWindowText.empty() ? "quillmarsh" : result.AppWindowText) + "> ");
}

void Program::SetVariables()
{
    failures_.SetPlace("the setting of variables");
    try
    {
        for (auto const &[name, value] : arguments_.variables)
            SetVariable(*kernel_.GetVariableRegistry(), name, value, arguments_.developerMode);
    }
    catch (WrongArgumentException const &thrown)
    {
        hasWrongArgument_ = true;
        Report(thrown.GetMessage());
    }
}

bool Program::IsFrameLimitReached()
{
    return arguments_.frames && kernel_.GetFrameNumber() >= *arguments_.frames;
}

void Program::RunFrames()
{
    while (!kernel_.IsExitRequested() && !IsFrameLimitReached())
    {
        kernel_.RunFrame();
        kernel_.CarryOutRequests();
        lines_->Run();
        // A number of frames that was asked for is run whether or not there are lines left.
        if (lines_->IsAtEnd() && !arguments_.frames)
            break;
        if (!IsFrameLimitReached())
            kernel_.PauseUntilNextFrame(interactive_ || lines_->WaitsForInput() ? s_defaultFrameRate : 0);
    }
}

void Program::LogSummary()
{
    Application::AutoInitInfo const &autoInit = kernel_.GetAutoInit();
    ostream &log = log_.GetStream();
    if (autoInit.LogFrameSummary)
    {
        double const seconds = kernel_.GetFrameTime();
        unsigned int const frames = kernel_.GetFrameNumber();
        log << frames << " frames in " << seconds << " s, " << (seconds > 0 ? frames / seconds : 0) << " a second"
            << std::endl;
    }
    if (autoInit.LogProfilerStatistics)
    {
        ProfilerDumpDesc desc;
        desc.ConstructHeaderLines();
        kernel_.GetProfiler()->ProcessStatistics();
        kernel_.GetProfiler()->DumpStatistics(log, desc);
    }
}

void Program::Report(string const &message)
{
    log_.GetStream() << message << std::endl;
    // Where the terminal shows the prompt, its thread is the only one that writes there.
    if (terminal_ != nullptr && platform::IsTerminal(eStandardStream::e_error))
        terminal_->Write("quillmarsh-host: " + message + "\n", OutputStream::e_typeError);
    else
        PrintMessage(message);
}

void Program::OnSignal(platform::eSignal signal)
{
    std::lock_guard const lock(terminalMutex_);
    bool const isForTerminal = signal == platform::eSignal::e_interrupt || signal == platform::eSignal::e_resize;
    if (isForTerminal && terminal_ != nullptr)
        signal == platform::eSignal::e_resize ? terminal_->OnResize() : terminal_->OnInterrupt();
    else if (signal != platform::eSignal::e_resize)
        kernel_.RequestExit();
}

} // namespace quillmarsh::host
