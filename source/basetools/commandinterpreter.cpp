#include <quillmarsh/basetools/commandinterpreter.h>

#include <quillmarsh/basetools/texttools.h>

#include <ostream>

namespace quillmarsh
{

CommandInterpreter::CommandInterpreter() = default;
CommandInterpreter::CommandInterpreter(CommandInterpreter const &) = default;
CommandInterpreter &CommandInterpreter::operator=(CommandInterpreter const &) = default;
CommandInterpreter::~CommandInterpreter() = default;

unsigned int CommandInterpreter::InterpretScript(ostream &out, string const &script, bool stopOnError)
{
    std::vector<string> lines;
    BreakIntoLines(script, lines, '\n');

    unsigned int lineNumber = 0;
    unsigned int numFailures = 0;
    for (string const &line : lines)
    {
        ++lineNumber;
        out << line << '\n';
        if (InterpretCommandLine(line, out))
            continue;
        if (stopOnError)
            return lineNumber;
        ++numFailures;
    }
    return numFailures;
}

string CommandInterpreter::GetInterpreterDesc() const
{
    return "Null-interpreter";
}

bool CommandInterpreter::InterpretCommandLine(string const &, ostream &out)
{
    out << "Command not recognized." << std::endl;
    return false;
}

bool CommandInterpreter::CompleteCommandLine(string const &, string &, ostream &)
{
    return false;
}

} // namespace quillmarsh
