#include <quillmarsh/framework/stdinternalcommands.h>

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/commandtable.h>

#include <algorithm>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using Cmd = HistoryCmd;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionAll, "print all commands in history\n"),
    CommandWord::Argument("0) uinteger", "set (default) number of commands printed\n"),
};

class HistoryLock : NoCopy
{
public:
    explicit HistoryLock(ConsoleBuffers const &buffers) : buffers_(buffers) { buffers_.LockCommandHistory(); }
    ~HistoryLock() { buffers_.UnlockCommandHistory(); }

private:
    ConsoleBuffers const &buffers_;
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
    ConsoleBuffers const *const buffers = GetInterpreter().GetConsoleBuffers();
    if (buffers == nullptr)
    {
        out << "Console-buffers not hooked to interpreter.\n";
        return true;
    }

    unsigned int number = 0;
    bool const hasText = parser.GetNumArguments() > 0 && parser.GetArgument(0) == CommandLineParser::e_string;
    if (hasText && ToValue(parser.GetArgument(0).String(), number))
        SetDefaultNumPrinted(number);

    // Gathered first, as the stream may write into the same buffers.
    string text;
    {
        HistoryLock const lock(*buffers);
        unsigned int const numHeld = buffers->GetNumCommandsInHistory();
        unsigned int const numPrinted =
            parser.GetOption(s_szOptionAll) ? numHeld : std::min(defaultNumPrinted_, numHeld);
        for (unsigned int i = numHeld - numPrinted; i < numHeld; ++i)
            text += MakeString(i) + ") " + buffers->GetCommandFromHistory(i) + '\n';
    }
    out << "Command-history:\n" << text;
    return true;
}

void HistoryCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print tail of command-history: " + MakeString(defaultNumPrinted_));
}

} // namespace quillmarsh::std_command_interpreter
