#include "shell.h"

#include "rooms.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/dataexception.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/tooltips.h>

#include <cmath>
#include <ostream>

namespace viewer
{

using namespace quillmarsh;
using sampled_data::DataException;

namespace
{

/// Keys of the window itself; those of the rooms follow.
constexpr KeyBinding s_keys[] = {
    {e_key_f9, e_plain, "console", "Show or hide the console"},
    {e_key_f2, e_plain, "files", "Show or hide the list of files"},
    {e_key_f3, e_plain, "inspector", "Show or hide the column of settings"},
    {e_key_q, e_control, "quit", "End the program"},
};

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
constexpr CommandWord s_stopWords[] = {
    CommandWord::Argument("0) number", "number of the job, see jobs\n", command_values::s_uinteger)};

} // namespace

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
    {"quit",
     "End the program",
     {},
     "end the program",
     [](Shell &, ostream &, CommandArguments const &) { Kernel::Instance().RequestExit(); }},
};

Shell::Shell()
    : commands_([this](string const &reason) { workspace_.ShowFailure(reason); }),
      rooms_(MakeRooms(workspace_))
{
    AddCommands();
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
                      });
    }
    for (std::unique_ptr<Room> const &room : rooms_)
        room->AddCommands(commands_);
}

void Shell::MakeGUI()
{
    desk_ = new Desk(workspace_, rooms_, s_keys);
    new widgets::ToolTips;
    console_ = new widgets::ConsolePanel;
    // The key runs a command, as all others do.
    console_->SetToggleKey(e_key_none);
    desk_->Open();
    desk_->FocusStage();
}

void Shell::Update(double seconds)
{
    workspace_.GetJobs().Poll();
    for (std::unique_ptr<Room> const &room : rooms_)
        room->Update(seconds);
    desk_->Update(seconds);
}

bool Shell::RunKey(eKey key, unsigned int repeatCount)
{
    return !gui::Manager::Instance().IsRunningModal() && desk_->RunKey(key, repeatCount);
}

void Shell::End() {}

} // namespace viewer
