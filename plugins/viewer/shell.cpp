#include "shell.h"

#include "rooms.h"
#include "statescript.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/dataobjects/dataexception.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugin.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/framework/videorendererinfo.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/platform/displaymodes.h>
#include <quillmarsh/widgets/tooltips.h>

#include <cmath>
#include <ostream>
#include <sstream>

namespace viewer
{

using namespace quillmarsh;
using sampled_data::DataException;

namespace
{

/// Keys of the window itself; those of the rooms follow.
constexpr KeyBinding s_keys[] = {
    {e_key_f1, e_plain, "keys", "Show or hide this list of keys"},
    {e_key_f9, e_plain, "console", "Show or hide the console"},
    {e_key_f11, e_plain, "fullscreen", "Fill the screen, or go back to the window"},
    {e_key_f12, e_plain, "screenshot", "Save a picture of the window"},
    {e_key_f2, e_plain, "files", "Show or hide the list of files"},
    {e_key_f3, e_plain, "inspector", "Show or hide the column of settings"},
    {e_key_q, e_control, "quit", "End the program"},
};

/// Variables that the state keeps if they are not those of the start.
constexpr char const *s_lookVariables[] = {"look.theme", "look.scale"};

constexpr char s_szProgramTitle[] = "Quillmarsh";

constexpr char s_stateIsAuto[] = "auto";
constexpr char s_stateName[] = "viewer.txt";

std::vector<string> GetLook()
{
    std::vector<string> texts;
    for (char const *const name : s_lookVariables)
    {
        VariableProxy const *const variable = Kernel::Instance().GetVariableRegistry()->GetVariable(name);
        texts.push_back(variable != nullptr ? variable->GetValueString() : string());
    }
    return texts;
}

char const *FormatSwitch(bool on)
{
    return on ? "on" : "off";
}

/// Reads "on" or "off"; without an argument gives the opposite of `present`.
bool ReadSwitch(CommandArguments const &arguments, bool present)
{
    bool value = !present;
    if (string const *const text = arguments.FindArgument(0))
        ToValue(*text, value);
    return value;
}

constexpr CommandWord s_switchWords[] = {
    CommandWord::Argument("0) on-or-off", "shows or hides it\n", command_values::s_boolean)};
constexpr CommandWord s_tabWords[] = {CommandWord::Argument("0) title", "title of the tab, as view\n")};
constexpr CommandWord s_shareWords[] = {
    CommandWord::Argument("0) share", "part of the window's width, from 0 to 1\n", command_values::s_real)};
constexpr CommandWord s_quitWords[] = {CommandWord::Option("discard", "give up changes that were not saved\n")};
constexpr CommandWord s_stopWords[] = {
    CommandWord::Argument("0) number", "number of the job, see jobs\n", command_values::s_uinteger)};
constexpr CommandWord s_stateWords[] = {
    CommandWord::Argument("0) file-name", "a script of the console\n", command_values::s_file)};

} // namespace

/// The console, in which the function keys of the window work as well.
class Shell::Console : public widgets::ConsolePanel
{
public:
    explicit Console(Shell &shell) : shell_(shell)
    {
        // The table of keys has one for it.
        SetToggleKey(e_key_none);
    }

    using ConsolePanel::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override
    {
        bool const isFunctionKey = key >= e_key_f1 && key <= e_key_f12;
        return ConsolePanel::OnKeyboardKey(down, key, repeatCount, character) ||
               (down && isFunctionKey && shell_.RunKey(key, repeatCount));
    }

private:
    Shell &shell_;
};

struct Shell::Command
{
    char const *name;
    char const *shortDesc;
    std::span<CommandWord const> words;
    char const *plain;
    void (*run)(Shell &shell, ostream &out, CommandArguments const &arguments);
};

constexpr Shell::Command Shell::s_commands[] = {
    {"files", "Show or hide the list of files", s_switchWords, "show it if it is hidden, and hide it otherwise",
     [](Shell &shell, ostream &, CommandArguments const &arguments)
     { shell.desk_->ShowFiles(ReadSwitch(arguments, shell.desk_->AreFilesShown())); }},
    {"files-width", "Set the width of the list of files", s_shareWords, "print it",
     [](Shell &shell, ostream &out, CommandArguments const &arguments)
     {
         if (arguments.FindArgument(0) == nullptr)
         {
             out << shell.desk_->GetFilesShare() << std::endl;
             return;
         }
         double const share = RequireNumber(arguments, "the width");
         if (!(share >= 0 && share <= 1))
             throw DataException("the width is not within 0 and 1: " + *arguments.FindArgument(0));
         shell.desk_->SetFilesShare(static_cast<float>(share));
     }},
    {"inspector", "Show or hide the column of settings", s_switchWords,
     "show it if it is hidden, and hide it otherwise",
     [](Shell &shell, ostream &, CommandArguments const &arguments)
     { shell.desk_->ShowInspector(ReadSwitch(arguments, shell.desk_->IsInspectorShown())); }},
    {"tab", "Show a tab of the column of settings", s_tabWords, "print the tabs",
     [](Shell &shell, ostream &out, CommandArguments const &arguments)
     {
         Inspector &inspector = shell.desk_->GetInspector();
         string const *const title = arguments.FindArgument(0);
         if (title == nullptr)
         {
             for (string const &each : inspector.GetTabs())
                 out << each << (each == inspector.GetTab() ? " (shown)" : "") << std::endl;
             return;
         }
         if (!inspector.ShowTab(*title))
             throw DataException("no tab has the title " + *title);
         shell.desk_->ShowInspector(true);
     }},
    {"console",
     "Show or hide the console",
     {},
     "show it if it is hidden, and hide it otherwise",
     [](Shell &shell, ostream &, CommandArguments const &) { shell.console_->Toggle(); }},
    {"keys",
     "Show or hide the list of keys",
     {},
     "show it if it is hidden, and hide it otherwise",
     [](Shell &shell, ostream &, CommandArguments const &) { shell.help_->Toggle(); }},
    {"fullscreen",
     "Fill the screen, or go back to the window",
     {},
     "do the one or the other",
     [](Shell &shell, ostream &, CommandArguments const &) { shell.ToggleFullscreen(); }},
    {"save-state", "Save the state of the window as a script", s_stateWords, "",
     [](Shell &shell, ostream &, CommandArguments const &arguments)
     { WriteStateScript(RequireArgument(arguments, "the name of a file"), shell.MakeState()); }},
    {"load-state", "Run a script that save-state has saved", s_stateWords, "",
     [](Shell &shell, ostream &, CommandArguments const &arguments)
     {
         shell.waitingStateName_ = RequireArgument(arguments, "the name of a file");
         shell.waitingState_ = ReadStateScript(shell.waitingStateName_);
     }},
    {"jobs",
     "List the work that goes on",
     {},
     "print number, part that is done and title of each job",
     [](Shell &shell, ostream &out, CommandArguments const &)
     {
         for (Jobs::Job const &job : shell.workspace_.GetJobs().List())
         {
             string const part = job.part < 0 ? "" : MakeString(std::lround(job.part * 100)) + "% ";
             out << job.number << ": " << (job.isRunning ? part : "waits ") << job.title << std::endl;
         }
     }},
    {"stop", "Stop work that goes on", s_stopWords, "stop all jobs",
     [](Shell &shell, ostream &, CommandArguments const &arguments)
     {
         Jobs &jobs = shell.workspace_.GetJobs();
         string const *const number = arguments.FindArgument(0);
         unsigned int value = 0;
         if (number == nullptr)
             jobs.StopAll();
         else if (!ToValue(*number, value) || !jobs.Stop(value))
             throw DataException("no job has the number " + *number);
     }},
    {"quit", "End the program", s_quitWords, "end it, unless there are changes that were not saved",
     [](Shell &shell, ostream &, CommandArguments const &arguments)
     {
         for (DocumentPtr const &document : shell.workspace_.GetDocuments().GetAll())
         {
             if (document->IsChanged() && !arguments.HasOption("discard"))
                 throw DataException(document->GetTitle() + " has changes: save them, or use 'quit -discard'");
         }
         Kernel::Instance().RequestExit();
     }},
};

Shell::Shell()
    : commands_([this](string const &reason) { workspace_.ShowFailure(reason); }),
      rooms_(MakeRooms(workspace_)),
      rest_(workspace_),
      subscription_(*this),
      stateFile_(s_stateIsAuto)
{
    AddCommands();
    VariableRegistry &variables = *Kernel::Instance().GetVariableRegistry();
    variables.RegisterVariable(VariableProxyUInt(&numDrawn_, "viewer.frames_drawn", "frames that were drawn"));
    variables.RegisterVariable(VariableProxyString(
        &stateFile_, "viewer.state",
        "file that keeps the state of the window; auto for the user's own if there is a window, empty for none"));
}

Shell::~Shell() = default;

void Shell::AddCommands()
{
    for (Command const &command : s_commands)
    {
        commands_.Add(command.name, command.shortDesc, command.words, command.plain,
                      [this, &command](ostream &out, CommandArguments const &arguments)
                      {
                          if (desk_ == nullptr)
                              throw DataException("there is no window yet");
                          command.run(*this, out, arguments);
                          workspace_.Invalidate();
                      });
    }
    for (std::unique_ptr<Room> const &room : rooms_)
        room->AddCommands(commands_);
}

void Shell::MakeGUI()
{
    desk_ = new Desk(workspace_, rooms_, s_keys);
    workspace_.SetKeyRunner([this](eKey key, unsigned int repeatCount) { return RunKey(key, repeatCount); });
    new widgets::ToolTips;
    help_ = new HelpPanel(workspace_, *desk_, rooms_, s_keys);
    console_ = new Console(*this);
    desk_->Open();
    desk_->FocusStage();
    startLook_ = look_ = GetLook();
}

// Frames.

void Shell::Update(double seconds)
{
    if (!hasReadState_)
        ReadStartState();
    if (!waitingStateName_.empty())
        RunState(std::exchange(waitingState_, {}), std::exchange(waitingStateName_, {}), false);
    workspace_.GetJobs().Poll();
    for (std::unique_ptr<Room> const &room : rooms_)
        room->Update(seconds);
    desk_->Update(seconds);
    UpdateTitle();
    look_ = GetLook();
    rest_.Update(seconds);
    numDrawn_ = rest_.GetNumDrawn();
}

void Shell::SetWindow(platform::Window *window)
{
    window_ = window;
    title_.clear();
}

void Shell::UpdateTitle()
{
    DocumentPtr const &document = workspace_.GetDocuments().GetCurrent();
    string title = s_szProgramTitle;
    if (document != nullptr)
        title = document->GetTitle() + (document->IsChanged() ? "* - " : " - ") + title;
    if (window_ == nullptr || title == title_)
        return;
    title_ = title;
    window_->SetTitle(title);
}

void Shell::OnDesktopEvent(platform::DesktopEvent const &event)
{
    if (event.kind != platform::eDesktopEvent::e_fileDropped)
        return;
    workspace_.Run("open " + CommandLineParser().FormatWord(string(event.fileName)));
}

bool Shell::RunKey(eKey key, unsigned int repeatCount)
{
    return desk_->RunKey(key, repeatCount);
}

void Shell::ToggleFullscreen()
{
    Kernel &kernel = Kernel::Instance();
    VideoRenderer const *const renderer = kernel.GetActiveVideoRendererPtr();
    if (renderer == nullptr)
        throw DataException("there is no window");
    VideoRendererInfo info;
    kernel.GetActiveVideoRendererInfo(info);
    VideoConfig config = renderer->GetVideoConfig();
    if (config.FrameBuffer.Fullscreen)
    {
        config.FrameBuffer.Fullscreen = false;
        config = windowConfig_.value_or(config);
    }
    else
    {
        windowConfig_ = config;
        gui::Manager const &manager = gui::Manager::Instance();
        windowConfig_->DisplayMode = DisplayModeConfig(manager.GetWindowWidth(), manager.GetWindowHeight(), 32, 0);
        config.FrameBuffer.Fullscreen = true;
        config.DisplayMode = DisplayModeConfig(true);
    }
    kernel.ApplyVideoReconfig(info.GetPluginInfo().GetPluginName(), config, 0);
}

// State.

void Shell::ReadStartState()
{
    hasReadState_ = true;
    bool const hasWindow = Kernel::Instance().GetActiveVideoRendererPtr() != nullptr && !platform::IsHeadless();
    if (stateFile_ == s_stateIsAuto)
        stateFile_ = hasWindow ? file_system::GetUserConfigFileName(s_stateName) : string();
    try
    {
        if (!stateFile_.empty() && file_system::FileExists(stateFile_))
            RunState(ReadStateScript(stateFile_), stateFile_, true);
    }
    catch (DataException const &thrown)
    {
        wasStateDamaged_ = true;
        workspace_.Say(thrown.GetMessage(), true);
    }
    // Somebody who sees the window for the first time has something to choose from.
    string directory, reason;
    if (hasWindow && workspace_.GetFolder().GetPath().empty() && file_system::GetProcessDirectory(directory, true))
        workspace_.GetFolder().Read(directory, reason);
}

void Shell::RunState(string const &text, string const &name, bool isStart)
{
    std::vector<string> const failures =
        RunStateScript(text, name, [this, isStart](string const &line) { return !isStart || AcceptsStateLine(line); });
    wasStateDamaged_ = wasStateDamaged_ || (isStart && !failures.empty());
    constexpr std::size_t maxTold = 3;
    for (std::size_t i = 0; i < failures.size() && i < maxTold; ++i)
        workspace_.Say(failures[i], true);
    if (failures.size() > maxTold)
        workspace_.Say(name + ": " + MakeString(failures.size() - maxTold) + " more lines failed", true);
}

/// What the user has asked for at the start of the program is worth more than the state.
bool Shell::AcceptsStateLine(string const &line) const
{
    std::vector<string> const look = GetLook();
    for (std::size_t i = 0; i < std::min(look.size(), startLook_.size()); ++i)
    {
        if (line.starts_with(string("var ") + s_lookVariables[i] + ' '))
            return look[i] == startLook_[i];
    }
    return true;
}

string Shell::MakeState() const
{
    std::ostringstream out;
    out << "# The viewer runs these lines when it starts, and writes them when it ends.\n";
    for (std::size_t i = 0; i < look_.size(); ++i)
    {
        if (look_[i] != startLook_[i])
            out << "var " << s_lookVariables[i] << ' ' << look_[i] << '\n';
    }
    out << "files-width " << desk_->GetFilesShare() << '\n'
        << "files " << FormatSwitch(desk_->AreFilesShown()) << '\n'
        << "inspector " << FormatSwitch(desk_->IsInspectorShown()) << '\n';
    for (std::unique_ptr<Room> const &room : rooms_)
        room->WriteState(out);
    return out.str();
}

void Shell::End()
{
    if (desk_ == nullptr || !hasReadState_ || stateFile_.empty())
        return;
    try
    {
        // The lines that could not be run are not lost.
        if (wasStateDamaged_)
            file_system::MoveFileA(stateFile_, stateFile_ + ".damaged", true);
        WriteStateScript(stateFile_, MakeState());
    }
    catch (DataException const &thrown)
    {
        workspace_.Say("The state is not kept: " + thrown.GetMessage(), true);
    }
}

} // namespace viewer
