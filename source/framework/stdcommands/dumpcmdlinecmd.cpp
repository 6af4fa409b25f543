#include <quillmarsh/framework/stdinternalcommands.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using Cmd = DumpPreprocessedCommandLineCmd;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionOn, "enable dump of preprocessed command-line\n"),
    CommandWord::Option(Cmd::s_szOptionOff, "disable dump of preprocessed command-line\n"),
};

} // namespace

DumpPreprocessedCommandLineCmd::DumpPreprocessedCommandLineCmd(Interpreter &interpreter) : InternalCommand(interpreter)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Control dump of preprocessed command-line");
    SetDeveloperModeOnly(true);
}

DumpPreprocessedCommandLineCmd::~DumpPreprocessedCommandLineCmd() = default;

bool DumpPreprocessedCommandLineCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    if (arguments.HasOption(s_szOptionOn))
        GetInterpreter().SetDebugDumpPreprocessedCommandLine(true);
    else if (arguments.HasOption(s_szOptionOff))
        GetInterpreter().SetDebugDumpPreprocessedCommandLine(false);
    out << "DumpPreProcessedCommandLine: " << MakeString(GetInterpreter().GetDebugDumpPreprocessedCommandLine()) << nl;
    return true;
}

void DumpPreprocessedCommandLineCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print parameters");
}

std::span<CommandWord const> DumpPreprocessedCommandLineCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::std_command_interpreter
