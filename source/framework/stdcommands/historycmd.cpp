#include <quillmarsh/framework/stdinternalcommands.h>

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using Cmd = HistoryCmd;
using command_values::s_uinteger;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionAll, "print all commands in history\n"),
    CommandWord::LeadingArgument("0) uinteger", "set (default) number of commands printed\n", s_uinteger),
};

} // namespace

HistoryCmd::HistoryCmd(Interpreter &interpreter) : InternalCommand(interpreter)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Print command history");
}

HistoryCmd::~HistoryCmd() = default;

void HistoryCmd::SetDefaultNumPrinted(unsigned int number)
{
    defaultNumPrinted_ = std::max(number, 1u);
}

bool HistoryCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    ConsoleBuffers const *const buffers = GetInterpreter().GetConsoleBuffers();
    if (buffers == nullptr)
    {
        out << "Console-buffers not hooked to interpreter.\n";
        return true;
    }

    unsigned int number = 0;
    string const *const text = arguments.FindArgument(0);
    if (text != nullptr && ToValue(*text, number))
        SetDefaultNumPrinted(number);

    // Collected first, since the stream may write to the same buffers.
    string lines;
    {
        CommandHistorySentry const lock(*buffers);
        unsigned int const numHeld = buffers->GetNumCommandsInHistory();
        unsigned int const numPrinted =
            arguments.HasOption(s_szOptionAll) ? numHeld : std::min(defaultNumPrinted_, numHeld);
        for (unsigned int i = numHeld - numPrinted; i < numHeld; ++i)
            lines += MakeString(i) + ") " + buffers->GetCommandFromHistory(i) + '\n';
    }
    out << "Command-history:\n" << lines;
    return true;
}

void HistoryCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print tail of command-history: " + MakeString(defaultNumPrinted_));
}

std::span<CommandWord const> HistoryCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::std_command_interpreter
