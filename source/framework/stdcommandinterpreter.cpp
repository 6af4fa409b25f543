#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/kernelexecutionparams.h>
#include <quillmarsh/framework/stdinternalcommands.h>

namespace quillmarsh::std_command_interpreter
{
namespace
{

/// Name of a command's class for users: without the scopes that it stands in.
string GetPlainClassName(Command const &command)
{
    string const name = FormatClassName(GetTypeName(typeid(command)));
    std::size_t const scope = name.rfind("::", name.find('<'));
    return scope == string::npos ? name : name.substr(scope + 2);
}

} // namespace

InternalCommand::InternalCommand(Interpreter &interpreter) : interpreter_(interpreter) {}

InternalCommand::~InternalCommand() = default;

Interpreter::Interpreter()
{
    SetConsoleBuffers(nullptr);
    isDeveloperModeActive_ = KernelExecutionParams(true).DeveloperMode;
    internalCommands_ = {
        new DumpPreprocessedCommandLineCmd(*this),
        new ListCommandsCmd(*this),
        new HelpCmd(*this),
        new AliasCmd(*this),
        new ConsoleBuffersCmd(*this),
        new HistoryCmd(*this),
    };
    Rehash();
}

Interpreter::~Interpreter()
{
    DeleteAllExternalCommands();
    DeleteAllInternalCommands();
}

void Interpreter::SetConsoleBuffers(ConsoleBuffers *buffers)
{
    consoleBuffers_ = buffers != nullptr ? buffers : Kernel::Instance().GetConsoleBuffers();
}

void Interpreter::SetDeveloperModeActive(bool active)
{
    isDeveloperModeActive_ = active;
}

void Interpreter::SetDebugDumpPreprocessedCommandLine(bool dump)
{
    debugDumpPreprocessedCommandLine_ = dump;
}

void Interpreter::SetGlobalHelpSwitch(string const &helpSwitch)
{
    globalHelpSwitch_ = helpSwitch;
}

void Interpreter::SetCommandNotRecognizedMessage(string const &message)
{
    notRecognizedBaseMessage_ = message;
    MakeMessages();
}

void Interpreter::SetLineInspector(LineInspector inspector)
{
    lineInspector_ = std::move(inspector);
}

void Interpreter::MakeMessages()
{
    notRecognizedMessage_ = notRecognizedBaseMessage_;
    Command const *const lister = FindCommand(internalCommands_, typeid(ListCommandsCmd));
    if (lister == nullptr)
        return;
    if (!notRecognizedMessage_.empty())
        notRecognizedMessage_ += '\n';
    notRecognizedMessage_ += "Type '" + lister->GetName() + "' to list valid commands.";
}

string Interpreter::GetInterpreterDesc() const
{
    return "Standard-command-interpreter v1.0";
}

bool Interpreter::InterpretCommandLine(string const &line, ostream &out)
{
    // The first text of the command takes no width that was left on the stream.
    out.width(0);
    lastCompletionInput_.clear();
    string trimmed;
    TrimWhitespace(line, trimmed);
    string expandedLine;
    string const &expanded = ExpandAliasPrefix(trimmed, expandedLine) ? expandedLine : trimmed;
    if (debugDumpPreprocessedCommandLine_ && &expanded == &expandedLine)
        out << e_debug << "Expanded to: " << expanded << std::endl << e_info;

    bool result = false;
    Command *const command = PrepareCommand(expanded, out, result);
    if (command != nullptr && (!lineInspector_ || lineInspector_(*command, parser_)))
    {
        result = command->ParseAndExecute(out, parser_, expanded);
        out.flush();
    }
    parser_.ClearAll();
    if (consoleBuffers_ != nullptr)
        consoleBuffers_->PushCommandInHistory(line);
    return result;
}

/// Parses the line and finds its command. Returns null when there is nothing to execute; `result` is true when help was
/// printed.
Command *Interpreter::PrepareCommand(string const &expanded, ostream &out, bool &result)
{
    try
    {
        parser_.Parse(expanded, true);
        if (debugDumpPreprocessedCommandLine_)
        {
            out << e_debug;
            parser_.DumpLastResults(out);
            out << std::flush << e_info;
        }
        return SelectCommand(out, result);
    }
    catch (CommandLineErrorException const &exception)
    {
        out << e_error << "Command-line error:\n" << exception.GetMessage() << std::endl << e_info;
        return nullptr;
    }
}

Command *Interpreter::SelectCommand(ostream &out, bool &result)
{
    if (parser_.GetCommand().empty())
        return nullptr;
    Command *const command = FindCommand(parser_.GetCommand());
    if (command == nullptr)
    {
        out << notRecognizedMessage_ << std::endl;
        return nullptr;
    }

    bool const wantsHelp = !globalHelpSwitch_.empty() && parser_.GetOption(globalHelpSwitch_);
    if (wantsHelp)
    {
        DumpCommandHelp(out, parser_, *command);
        result = true;
    }
    bool const isRefused = command->IsDeveloperModeOnly() && !isDeveloperModeActive_;
    if (isRefused)
        out << "Command: " << command->GetName() << " is developer-mode only." << std::endl;
    return wantsHelp || isRefused ? nullptr : command;
}

void Interpreter::DumpCommandHelp(ostream &out, CommandLineParser const &parser, Command &command)
{
    out << CaptionEffector("Command-help", 5, '-', 1);
    out << "TargetCommand: " << GetPlainClassName(command) << nl;
    out << "CurrentName..: " << command.GetName() << nl;
    out << "DefaultName..: " << command.GetDefaultName() << nl;
    out << "DevModeOnly..: " << MakeString(command.IsDeveloperModeOnly()) << nl;
    out << "Summary......: " << command.GetShortDesc() << nl;
    if (!globalHelpSwitch_.empty())
        out << "HelpSwitch...: " << parser.FormatOptionHelp(globalHelpSwitch_, "", 0) << nl;
    command.DumpHelp(out, parser);
    out.flush();
}

} // namespace quillmarsh::std_command_interpreter
