#include "benchcommands.h"

#include <ostream>

namespace workbench
{

using quillmarsh::CommandArguments;
using quillmarsh::CommandWord;
using quillmarsh::ostream;
using quillmarsh::string;

namespace
{

constexpr CommandWord s_benchWords[] = {
    CommandWord::Option(BenchCmd::s_szOptionReset, "start the balls again\n"),
};

constexpr CommandWord s_greetWords[] = {
    CommandWord::Assignment(GreetCmd::s_szAssignTo, GreetCmd::s_szValueTo, "greet somebody\n"),
};

} // namespace

BenchCmd::BenchCmd(Balls &balls) : balls_(balls)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Print the state of the workbench's balls");
}

bool BenchCmd::Execute(ostream &out, CommandArguments const &arguments)
{
    if (arguments.HasOption(s_szOptionReset))
        balls_.Reset();
    out << "Balls..: " << balls_.GetNumBalls() << '\n';
    out << "Time...: " << balls_.GetTime() << '\n';
    out << "Bounces: " << balls_.GetNumBounces() << '\n';
    out << "Height.: " << balls_.GetHighest() << std::endl;
    return true;
}

std::span<CommandWord const> BenchCmd::GetWords() const
{
    return s_benchWords;
}

string BenchCmd::GetDefaultBehavior() const
{
    return "print state";
}

GreetCmd::GreetCmd(BallSettings const &settings) : settings_(settings)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Print the greeting");
}

bool GreetCmd::Execute(ostream &out, CommandArguments const &arguments)
{
    if (string const *const name = arguments.FindAssignment(s_szAssignTo))
        out << settings_.greeting << ", " << *name << '!' << std::endl;
    else
        out << settings_.greeting << '!' << std::endl;
    return true;
}

std::span<CommandWord const> GreetCmd::GetWords() const
{
    return s_greetWords;
}

string GreetCmd::GetDefaultBehavior() const
{
    return "print the greeting without a name";
}

} // namespace workbench
