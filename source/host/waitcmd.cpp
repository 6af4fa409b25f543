#include <quillmarsh/host/waitcmd.h>

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/commandtable.h>

#include <ostream>

namespace quillmarsh::host
{

namespace
{

constexpr CommandWord s_words[] = {
    CommandWord::Argument("0) uinteger", "number of frames that pass before the next line\n"),
};

} // namespace

WaitCmd::WaitCmd(ConsoleLines &lines) : lines_(lines)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Let frames pass before the next line");
}

WaitCmd::~WaitCmd() = default;

bool WaitCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    unsigned int numFrames = 1;
    if (parser.GetNumArguments() > 0)
    {
        CommandLineParser::Argument const &argument = parser.GetArgument(0);
        // The conversion would take a minus, and a "-1" would wait for years.
        if (argument != CommandLineParser::e_string || argument.String().starts_with('-') ||
            !ToValue(argument.String(), numFrames))
        {
            out << "Not a number of frames: " << argument.MakeFullString() << std::endl;
            return false;
        }
    }
    lines_.Wait(numFrames);
    return true;
}

void WaitCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "let one frame pass");
}

} // namespace quillmarsh::host
