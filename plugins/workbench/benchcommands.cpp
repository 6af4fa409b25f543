#include "benchcommands.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/framework/commandtable.h>

#include <ostream>

namespace workbench
{

using quillmarsh::CommandLineParser;
using quillmarsh::CommandWord;
using quillmarsh::ostream;
using quillmarsh::string;

namespace
{

constexpr CommandWord s_benchWords[] = {
    CommandWord::Option(BenchCmd::s_szOptionReset, "let the balls begin anew\n"),
};

constexpr CommandWord s_greetWords[] = {
    CommandWord::Assignment(GreetCmd::s_szAssignTo, GreetCmd::s_szValueTo, "greet somebody\n"),
};

} // namespace

BenchCmd::BenchCmd(Balls &balls) : balls_(balls)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Print state of the workbench's balls");
}

bool BenchCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    if (parser.GetOption(s_szOptionReset))
        balls_.Reset();
    out << "Balls..: " << balls_.GetNumBalls() << '\n';
    out << "Time...: " << balls_.GetTime() << '\n';
    out << "Bounces: " << balls_.GetNumBounces() << '\n';
    out << "Height.: " << balls_.GetHeight() << std::endl;
    return true;
}

void BenchCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_benchWords, "print state");
}

GreetCmd::GreetCmd(BallSettings const &settings) : settings_(settings)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Say the greeting");
}

bool GreetCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    string name;
    if (parser.GetAssignment(s_szAssignTo, name))
        out << settings_.greeting << ", " << name << '!' << std::endl;
    else
        out << settings_.greeting << '!' << std::endl;
    return true;
}

void GreetCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_greetWords, "say the greeting to nobody in particular");
}

} // namespace workbench
