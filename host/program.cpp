#include "program.h"

#include "robotsource.h"
#include "scriptreader.h"
#include "system.h"
#include "variablesetting.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/libraryinfo.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/platform/displaymodes.h>
#include <quillmarsh/platform/window.h>

#include <hostconfig.h>

#include <algorithm>
#include <iostream>
#include <set>

namespace quillmarsh::host
{

using platform::eStandardStream;

namespace
{

/// Frames per second while the host waits for input and no limit is set.
constexpr double s_defaultFrameRate = 60;
constexpr char s_szDefaultVideo[] = "video_opengl";
/// Commands that the history of a terminal holds, if the start script does not ask for more.
constexpr unsigned int s_minHistory = 1000;
constexpr char s_szHint[] =
    "Type 'help NAME' for help with a command, 'list-commands' for all commands, 'find WORD' to "
    "search them.\n";
/// Plays the recording of the arguments.
constexpr char s_szPlayer[] = "input_recording";
/// Drivers that come with the host. They are loaded with the host's own application if they exist beside it.
constexpr char const *s_defaultDrivers[] = {s_szPlayer};

/// Returns the name of a file without directory and extension.
string GetBaseName(string const &fileName)
{
    string path;
    string base;
    string extension;
    file_system::SplitFileName(fileName, path, base, extension);
    return base;
}

bool IsVideoRenderer(PluginSet::Entry const &entry)
{
    return entry.descriptor->GetPluginInfo().GetPluginType() == e_plugin_video_renderer;
}

/// True when the console belongs into the terminal.
bool IsInteractive(ProgramKind const &kind, Arguments const &arguments)
{
    return !arguments.script && !arguments.robot && !arguments.recording &&
           platform::IsTerminal(eStandardStream::e_input) && platform::IsTerminal(eStandardStream::e_output) &&
           (!kind.isViewer || system::IsInForeground());
}

string JoinWords(std::vector<string> const &words)
{
    string joined;
    for (string const &word : words)
        joined += (joined.empty() ? "" : " ") + word;
    return joined;
}

} // namespace

void PrintMessage(ProgramKind const &kind, string const &message)
{
    bool const isTerminal = platform::IsTerminal(eStandardStream::e_error);
    bool const coloured = platform::TakesEscapeSequences(eStandardStream::e_error) && WantsColours();
    string shown;
    AppendColoured(shown, string(kind.name) + ": " + (isTerminal ? MakePrintable(message, true) : message),
                   coloured ? OutputStream::e_typeError : OutputStream::e_typeInfo);
    std::cerr << shown + "\n" << std::flush;
}

Program::Program(ProgramKind const &kind, Arguments const &arguments, std::vector<string> const &words)
    : kind_(kind),
      arguments_(arguments),
      commandLine_(JoinWords(words)),
      programFile_(platform::GetProgramFileName(words.front())),
      interactive_(IsInteractive(kind, arguments)),
      readsScript_(arguments.script || arguments.robot || (!interactive_ && !arguments.recording && !kind.isViewer)),
      stays_(!interactive_ && !readsScript_ &&
             (arguments.recording || !(arguments.headless || arguments.video == s_szNoVideo))),
      session_(MakeOptions()),
      signals_([this](platform::eSignal signal) { OnSignal(signal); }),
      standardOutput_(
          [this](string const &error)
          {
              // A window needs nobody who reads the console.
              outputFailed_ = !stays_;
              PrintMessage(kind_, "cannot write to standard output: " + error);
              if (!stays_)
                  kernel_.RequestExit();
          }),
      history_(interactive_ ? GetHistoryFileName() : "", [this](string const &message) { Report(message); })
{
}

SessionOptions Program::MakeOptions()
{
    return {.programName = kind_.name,
            .log = &log_.GetStream(),
            .report = [this](string const &message) { Report(message); },
            .onStartup =
                [this](Application::StartupResult const &result)
            {
                if (!result.AppLogFilename.empty() && !log_.IsOpen())
                    log_.Open(result.AppLogFilename);
            },
            .commandLine = commandLine_,
            .programFileName = programFile_,
            .logFileName = arguments_.log.value_or(""),
            .developerMode = arguments_.developerMode};
}

Program::~Program()
{
    kernel_.GetConsole().SetOutput(nullptr);
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
        // A plug-in cannot be used; the message already says why.
        outputFailed_ = true;
        Report(thrown.GetMessage());
    }
    kernel_.GetConsole().GetStream().flush();
    kernel_.GetConsole().SetOutput(nullptr);
    {
        std::lock_guard const lock(terminalMutex_);
        terminal_.reset();
    }
    if (!log_.Close())
        PrintMessage(kind_, "the log is not complete: it could not be written");
    if (session_.GetRethrown() != nullptr)
        std::rethrow_exception(session_.GetRethrown());
    return GetExitStatus();
}

std::optional<platform::eSignal> Program::GetEndingSignal()
{
    std::lock_guard const lock(terminalMutex_);
    return endingSignal_;
}

int Program::GetExitStatus() const
{
    if (hasWrongArgument_)
        return e_exit_wrong_argument;
    if (outputFailed_ || session_.HasFailed())
        return e_exit_failed;
    return lines_.HasFailed() ? e_exit_line_failed : e_exit_ok;
}

void Program::Prepare()
{
    if (arguments_.log)
        log_.Open(*arguments_.log);
    kernel_.GetLog() << kind_.name << ' ' << library_info::GetLibraryVersion().MakeString() << ": " << commandLine_
                     << std::endl;
    kernel_.SetFrameRateLimit(arguments_.frameRate);
    OpenSource();
    UseHeadlessDesktop();
    LoadPlugins();
}

void Program::OpenSource()
{
    LineSource *main = nullptr;
    if (interactive_)
    {
        Terminal::Client const client{[this] { kernel_.WakeUp(); }, [this] { kernel_.RequestExit(); }};
        std::lock_guard const lock(terminalMutex_);
        terminal_ = std::make_unique<Terminal>(kernel_.GetConsole().GetBuffers(), client);
        kernel_.GetConsole().SetOutput(terminal_.get());
        main = terminal_.get();
    }
    else
    {
        OpenScript();
        kernel_.GetConsole().SetOutput(&standardOutput_);
        main = script_.get();
    }
    argumentSource_ = std::make_unique<ArgumentSource>(MakeArgumentLines(arguments_), main, stays_);
    source_ = std::make_unique<StartedSource>(OpenStartScript(), *argumentSource_, [this] { OnStartScriptEnd(); });
    // After a failure, a robot or a recording would work with what is not there.
    lines_.SetSource(source_.get(), arguments_.stopOnError || arguments_.robot || arguments_.recording);
    lines_.SetStrict(arguments_.strict);
    lines_.SetCountsQueuedLines(arguments_.stopOnError);
    lines_.SetHistory(&history_);
}

void Program::OpenScript()
{
    if (!readsScript_)
        return;
    string const fileName = arguments_.robot.value_or(arguments_.script.value_or("-"));
    script_ = std::make_unique<ScriptReader>(fileName, [this] { kernel_.WakeUp(); });
    if (arguments_.robot)
    {
        script_ = std::make_unique<RobotSource>(std::move(script_));
        kernel_.GetRobot().SetStays(true);
        kernel_.GetRobot().Begin();
    }
}

/// Opens the user's own start script; null if there is none.
AutoPtr<LineSource> Program::OpenStartScript()
{
    string const fileName = arguments_.noStartScript ? "" : FindStartScript();
    if (fileName.empty())
        return nullptr;
    try
    {
        return std::make_unique<ScriptReader>(fileName, [this] { kernel_.WakeUp(); });
    }
    catch (WrongArgumentException const &thrown)
    {
        Report(thrown.GetMessage());
        return nullptr;
    }
}

/// Forgets the lines of the start script, which are not the user's, and shows the prompt.
void Program::OnStartScriptEnd()
{
    ConsoleBuffers &buffers = kernel_.GetConsole().GetBuffers();
    buffers.ClearCommandHistory();
    if (terminal_ == nullptr)
        return;
    buffers.SetMaxCommandsInHistory(std::max(buffers.GetMaxCommandsInHistory(), s_minHistory));
    history_.Load(buffers);
    BeginConsole(session_.GetStartupResult());
}

void Program::LoadPlugins()
{
    std::vector<string> const directories = GetPluginDirectories(programFile_, QUILLMARSH_HOST_PLUGIN_DIRECTORY);
    PluginSet &plugins = kernel_.GetPlugins();
    // A GUI uses the first mouse and the first keyboard.
    if (arguments_.recording)
        plugins.Load(FindPluginFile(s_szPlayer, directories));
    for (string const &plugin : arguments_.plugins)
        plugins.Load(FindPluginFile(plugin, directories));
    LoadCompanions(directories);
    if (plugins.FindApplication() == nullptr)
    {
        plugins.Load(FindPluginFile(kind_.application, directories));
        LoadCompanions(directories);
        LoadDefaultDrivers(directories);
    }
    LoadVideo(directories);
    plugins.SetParameters(arguments_.parameters);
}

void Program::LoadCompanions(std::vector<string> const &directories)
{
    PluginSet &plugins = kernel_.GetPlugins();
    // A library of the same name that the user has named takes the place of the companion.
    std::set<string> loaded;
    for (PluginSet::Entry const &entry : plugins.GetEntries())
        loaded.insert(GetBaseName(entry.fileName));
    // Companions may have companions.
    for (std::size_t i = 0; i < plugins.GetEntries().size(); ++i)
    {
        string const fileName = plugins.GetEntries()[i].fileName;
        for (string const &companion : ReadPluginCompanions(fileName))
        {
            if (loaded.insert(GetBaseName(companion)).second)
                plugins.Load(FindPluginFile(companion, directories));
        }
    }
}

void Program::UseHeadlessDesktop()
{
    if (!arguments_.headless)
        return;
    string reason;
    int const width = static_cast<int>(arguments_.headless->width),
              height = static_cast<int>(arguments_.headless->height);
    if (!platform::UseHeadlessDesktop(width, height, reason))
        QUILLMARSH_THROW(KernelException, "There is no headless desktop: " + reason);
}

void Program::LoadVideo(std::vector<string> const &directories)
{
    VideoSettings &settings = kernel_.GetVideo().GetSettings();
    settings.isEnabled = arguments_.video != s_szNoVideo;
    settings.config.FrameBuffer.Fullscreen = arguments_.fullscreen;
    if (arguments_.fullscreen)
        settings.config.DisplayMode = DisplayModeConfig(true);
    // A window on a headless desktop covers it, unless another size is asked for.
    if (std::optional<PixelSize> const &size = arguments_.size ? arguments_.size : arguments_.headless)
        settings.config.DisplayMode = DisplayModeConfig(size->width, size->height, 32, 0);
    if (!settings.isEnabled)
        return;
    std::vector<PluginSet::Entry> const &entries = kernel_.GetPlugins().GetEntries();
    bool const hasRenderer = std::any_of(entries.begin(), entries.end(), &IsVideoRenderer);
    if (arguments_.video)
        LoadVideoPlugin(FindPluginFile(*arguments_.video, directories));
    else if (!hasRenderer)
        LoadDefaultVideo(directories);
}

void Program::LoadVideoPlugin(string const &fileName)
{
    PluginSet &plugins = kernel_.GetPlugins();
    auto const isOfFile = [&fileName](PluginSet::Entry const &entry) { return entry.fileName == fileName; };
    if (std::none_of(plugins.GetEntries().begin(), plugins.GetEntries().end(), isOfFile))
        plugins.Load(fileName);
    auto const isMeant = [&](PluginSet::Entry const &entry) { return isOfFile(entry) && IsVideoRenderer(entry); };
    auto const found = std::find_if(plugins.GetEntries().begin(), plugins.GetEntries().end(), isMeant);
    if (found == plugins.GetEntries().end())
        QUILLMARSH_THROW(KernelException, "The plug-in '" + fileName + "' has no video renderer.");
    kernel_.GetVideo().GetSettings().pluginName = found->descriptor->GetPluginInfo().GetPluginName();
}

void Program::LoadDefaultVideo(std::vector<string> const &directories)
{
    bool const hasDesktop = arguments_.headless || platform::HasDisplay();
    if (!WantsVideo())
        return;
    try
    {
        if (!hasDesktop)
            QUILLMARSH_THROW(KernelException, "there is no display.");
        LoadVideoPlugin(FindPluginFile(s_szDefaultVideo, directories));
        kernel_.GetVideo().GetSettings().isOptional = !NeedsVideo();
    }
    catch (KernelException const &thrown)
    {
        if (NeedsVideo())
            QUILLMARSH_THROW(KernelException, "There can be no window: " + thrown.GetMessage());
        Report("The run goes on without video: " + thrown.GetMessage());
    }
}

bool Program::WantsVideo() const
{
    bool const isForWindow = kind_.isViewer && platform::HasDisplay();
    return arguments_.headless || arguments_.size || arguments_.fullscreen || interactive_ || stays_ || isForWindow;
}

bool Program::NeedsVideo() const
{
    return kind_.isViewer && stays_;
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
        if (isLoaded || found == directories.end())
            continue;
        try
        {
            plugins.Load(makeFileName(*found));
        }
        catch (KernelException const &thrown)
        {
            // Nobody has asked for this driver.
            Report(thrown.GetMessage());
        }
    }
}

void Program::OpenConsoleWindow()
{
    string reason;
    if (arguments_.consoleWindow)
        consoleWindow_ = host::OpenConsoleWindow(kernel_.GetConsole().GetBuffers().GetOutputBuffer(), reason);
    if (!reason.empty())
        Report("The run goes on without a window for the console: " + reason);
}

void Program::NameConsoleWindow()
{
    if (!consoleWindow_)
        return;
    string const &title = session_.GetStartupResult().AppWindowText;
    PluginDescriptor const *const application = kernel_.GetPlugins().FindApplication();
    if (!title.empty())
        consoleWindow_->SetTitleText(title + " console");
    if (application)
        consoleWindow_->SetStatusText("running " + application->GetPluginInfo().GetPluginName());
}

void Program::RunApplication()
{
    OpenConsoleWindow();
    bool const isUp = session_.Open() && session_.Run("the setting of variables", [this] { SetVariables(); });
    if (isUp && !hasWrongArgument_)
    {
        NameConsoleWindow();
        RunFrames();
    }
    if (terminal_ != nullptr)
        terminal_->EndEditing();
    consoleWindow_.reset();
    session_.Close();
}

void Program::BeginConsole(Application::StartupResult const &result)
{
    if (!result.EnableConsole)
        return;
    terminal_->Write(s_szHint, OutputStream::e_typeInfo);
    terminal_->BeginEditing((result.AppWindowText.empty() ? "quillmarsh" : result.AppWindowText) + "> ");
}

void Program::SetVariables()
{
    try
    {
        for (auto const &[name, value] : arguments_.variables)
            SetVariable(*kernel_.GetVariableRegistry(), name, value, arguments_.developerMode);
        SetScreenshotFolder();
    }
    catch (WrongArgumentException const &thrown)
    {
        hasWrongArgument_ = true;
        Report(thrown.GetMessage());
    }
}

/// Creates the folder for screenshots, and names it to the command that takes them.
void Program::SetScreenshotFolder()
{
    if (!arguments_.screenshots)
        return;
    string folder = *arguments_.screenshots;
    file_system::ForceFullPathName(folder, false);
    if (!file_system::DirectoryExists(folder) && !file_system::CreateDirectoryPath(folder))
    {
        ThrowWrongArgument("--screenshots: cannot create the folder '" + *arguments_.screenshots +
                           "': " + file_system::GetLastFailureReason());
    }
    SetVariable(*kernel_.GetVariableRegistry(), "screenshot.folder", folder, false);
}

bool Program::IsFrameLimitReached()
{
    return arguments_.frames && kernel_.GetFrameNumber() >= *arguments_.frames;
}

/// Frames per second when no limit is set; 0 for frames without a pause.
double Program::GetIdleRate() const
{
    bool const isPaced = kernel_.GetVideo().IsPacedByDisplay();
    // A recording goes by the clock; more frames would only cost time.
    bool const hasTime = interactive_ || lines_.WaitsForInput() || arguments_.recording;
    return hasTime && !isPaced ? s_defaultFrameRate : 0;
}

void Program::RunFrames()
{
    while (!IsFrameLimitReached() && session_.RunFrame())
    {
        // If the user asks for a number of frames, all of them run, even after the last line.
        if (lines_.IsAtEnd() && !arguments_.frames)
            break;
        if (!IsFrameLimitReached())
            session_.Pause(GetIdleRate());
    }
}

void Program::Report(string const &message)
{
    log_.GetStream() << message << std::endl;
    // While the terminal shows the prompt, only its thread writes to it.
    if (terminal_ != nullptr && platform::IsTerminal(eStandardStream::e_error))
        terminal_->Write(string(kind_.name) + ": " + message + "\n", OutputStream::e_typeError);
    else
        PrintMessage(kind_, message);
}

void Program::OnSignal(platform::eSignal signal)
{
    std::lock_guard const lock(terminalMutex_);
    switch (signal)
    {
    case platform::eSignal::e_resize:
        if (terminal_ != nullptr)
            terminal_->OnResize();
        return;
    case platform::eSignal::e_continue:
        if (terminal_ != nullptr)
            terminal_->OnContinue();
        return;
    case platform::eSignal::e_interrupt:
        if (terminal_ == nullptr)
            break;
        if (!lines_.EndWait())
            terminal_->OnInterrupt();
        return;
    case platform::eSignal::e_terminate:
    case platform::eSignal::e_hangUp:
        break;
    }
    endingSignal_ = signal;
    kernel_.RequestExit();
}

} // namespace quillmarsh::host
