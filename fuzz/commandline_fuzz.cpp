// Parses any bytes as a command line, with every setting of the parser, and checks the rules that all results must
// obey.
#include <quillmarsh/basetools/commandlineparser.h>

#include <quillmarsh/basetools/exception.h>

#include <cstdint>
#include <cstdlib>
#include <sstream>

namespace
{

using namespace quillmarsh;

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void TakeValues(CommandLineParser const &parser, string const &name)
{
    void *pointer = nullptr;
    int integer = 0;
    unsigned int uInteger = 0;
    double real = 0;
    bool boolean = false;
    parser.ExtractArgumentPointer(name, pointer, &integer);
    Require(parser.ExtractArgumentInteger(name, integer, 3) || integer == 3);
    Require(parser.ExtractArgumentUInteger(name, uInteger, 3) || uInteger == 3);
    Require(parser.ExtractArgumentDouble(name, real, 3) || real == 3);
    Require(parser.ExtractArgumentBool(name, boolean, true) || boolean);

    std::vector<string> pieces;
    Require(parser.GetPackedAssignment(name, pieces, ".,"));
    for (string const &piece : pieces)
        Require(!piece.empty() && piece.find_first_of(".,") == string::npos);
    std::vector<unsigned int> numbers;
    bool const areNumbers = parser.ExtractPackedUIntegers(name, numbers, ".,");
    Require(areNumbers ? numbers.size() == pieces.size() : numbers.size() < pieces.size());
}

void TakeArgument(CommandLineParser const &parser, unsigned int index)
{
    CommandLineParser::Argument const &argument = parser.GetArgument(index);
    CommandLineParser::Argument found;
    Require(argument.GetCmdLinePosition() == index);
    if (argument == CommandLineParser::e_option)
        Require(!argument.Option().empty() && parser.GetOptionArgument(argument.Option(), found));
    else if (argument == CommandLineParser::e_string)
        Require(parser.GetStringArgument(argument.String(), found));
    else
    {
        string value;
        Require(parser.GetAssignmentArgument(argument.Assignment().Name(), found));
        Require(parser.GetAssignment(argument.Assignment().Name(), value) && value == found.Assignment().Value());
        TakeValues(parser, argument.Assignment().Name());
    }
    Require(found == argument.Type() && found.GetCmdLinePosition() <= index);
}

/// Quotes a text in the parser's own form.
string Quoted(string const &text)
{
    string quoted = "'";
    for (char const c : text)
        quoted += c == '\'' || c == '$' ? string("$") + c : string(1, c);
    return quoted + "'";
}

/// Writes the results as a line of the default grammar, and checks that parsing it gives the same results.
void ParseAgain(CommandLineParser const &parser)
{
    string line = Quoted(parser.GetCommand());
    for (unsigned int i = 0; i < parser.GetNumArguments(); ++i)
    {
        CommandLineParser::Argument const &argument = parser.GetArgument(i);
        if (argument == CommandLineParser::e_option)
            line += " -" + argument.MakeFullString();
        else if (argument == CommandLineParser::e_string)
            line += " " + Quoted(argument.MakeFullString());
        else
            line += " -" + argument.Assignment().Name() + "=" + Quoted(argument.Assignment().Value());
    }

    CommandLineParser again;
    again.SetParseFlags(true, false);
    Require(again.Parse(line, true));
    Require(again.GetCommand() == parser.GetCommand() && again.GetNumArguments() == parser.GetNumArguments());
    for (unsigned int i = 0; i < parser.GetNumArguments(); ++i)
    {
        Require(again.GetArgument(i) == parser.GetArgument(i).Type());
        Require(again.GetArgument(i).MakeFullString() == parser.GetArgument(i).MakeFullString());
    }
}

void CheckFailure(CommandLineParser &parser, string const &line)
{
    Require(parser.GetNumArguments() == 0 && parser.GetCommand().empty());
    Require(parser.GetLastCommandLine() == line);
    try
    {
        parser.Parse(line, true);
        std::abort();
    }
    catch (CommandLineErrorException const &exception)
    {
        Require(exception.GetMessage().find(" at: ") != string::npos);
        Require(exception.GetMessage().ends_with("\nFull command-line was: " + line));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    // One parser for all inputs: nothing of one line may appear in the next.
    static CommandLineParser s_parser;
    if (size < 2)
        return 0;
    string const line(reinterpret_cast<char const *>(data) + 2, size - 2);
    s_parser.SetParseFlags((data[0] & 1) != 0, (data[0] & 2) != 0);
    if ((data[0] & 4) != 0)
        s_parser.SetSpecialCharacters('"', '\\', ':', '/', '~');
    else if ((data[0] & 8) != 0)
        s_parser.SetSpecialCharacters('\'', static_cast<char>(data[1]), 'x', '-', static_cast<char>(data[1]));
    else
        s_parser.SetSpecialCharacters('\'', '$', '.', '-', '=');

    if (!s_parser.Parse(line, false))
    {
        CheckFailure(s_parser, line);
        return 0;
    }
    std::ostringstream dump;
    s_parser.DumpLastResults(dump);
    for (unsigned int i = 0; i < s_parser.GetNumArguments(); ++i)
        TakeArgument(s_parser, i);
    ParseAgain(s_parser);
    return 0;
}
