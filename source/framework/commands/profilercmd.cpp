#include <quillmarsh/framework/commands/profilercmd.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/profiler.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/kernel.h>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = ProfilerCmd;

/// A group of columns that a dump includes.
struct Column
{
    CommandWord word;
    bool ProfilerDumpDesc::*isShown;
};

constexpr Column s_columns[] = {
    {CommandWord::Option(Cmd::s_szOptionEntryCounts, "include entry-counts in dump\n"),
     &ProfilerDumpDesc::showEntryCounts},
    {CommandWord::Option(Cmd::s_szOptionNodeTimes, "include node-times in dump\n"), &ProfilerDumpDesc::showNodeTimes},
    {CommandWord::Option(Cmd::s_szOptionBranchTimes, "include branch-times in dump\n"),
     &ProfilerDumpDesc::showBranchTimes},
    {CommandWord::Option(Cmd::s_szOptionNodePercentages, "include node-percentages in dump\n"),
     &ProfilerDumpDesc::showNodePercentages},
};

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionClear, "clear profiler nodes\n"),
    CommandWord::Option(Cmd::s_szOptionReset, "reset accumulated statistics\n"),
    CommandWord::Option(Cmd::s_szOptionDump, "dump statistics (all by default)\n"),
    s_columns[0].word,
    s_columns[1].word,
    s_columns[2].word,
    s_columns[3].word,
    CommandWord::Option(Cmd::s_szOptionRun, "start profiling\n"),
    CommandWord::Option(Cmd::s_szOptionStop, "stop profiling\n"),
    CommandWord::Assignment(Cmd::s_szAssignRecursionHandler, Cmd::s_szValueRecursionHandler,
                            "enable/disable recursion-handler (larger overhead)\n", command_values::s_boolean),
    CommandWord::Assignment(Cmd::s_szAssignAutoReset, Cmd::s_szValueAutoReset,
                            "specify auto-reset threshold (number of iterations)\n", command_values::s_uinteger),
    CommandWord::Assignment(
        Cmd::s_szAssignMaxDepth, Cmd::s_szValueMaxDepth,
        "specify maximum expected stack-depth (debug-only, used if recursion-handler is disabled)\n",
        command_values::s_uinteger),
};

void Setup(Profiler &profiler, CommandArguments const &arguments)
{
    bool handleRecursion = false;
    if (arguments.ReadAssignment(Cmd::s_szAssignRecursionHandler, handleRecursion))
        profiler.EnableRecursionHandler(handleRecursion);
    unsigned int number = 0;
    if (arguments.ReadAssignment(Cmd::s_szAssignAutoReset, number))
        profiler.SetAutoResetThreshold(number);
    if (arguments.ReadAssignment(Cmd::s_szAssignMaxDepth, number))
        profiler.SetMaxExpectedStackDepth(number);
}

void Dump(ostream &out, Profiler &profiler, CommandArguments const &arguments)
{
    ProfilerDumpDesc desc;
    bool showAll = true;
    for (Column const &column : s_columns)
        showAll = showAll && !arguments.HasOption(column.word.name);
    for (Column const &column : s_columns)
        desc.*column.isShown = showAll || arguments.HasOption(column.word.name);
    desc.ConstructHeaderLines();
    out << "Profile statistics:\n";
    profiler.ProcessStatistics();
    profiler.DumpStatistics(out, desc);
}

void DumpStates(ostream &out, Profiler const &profiler, bool withRunning)
{
    out << "RecursionHandlerEnabled: " << MakeString(profiler.IsEnabledRecursionHandler()) << nl;
    out << "MaxExpectedStackDepth..: " << profiler.GetMaxExpectedStackDepth() << nl;
    out << "AutoResetThreshold.....: " << profiler.GetAutoResetThreshold() << nl;
    out << "IterationCount.........: " << profiler.GetIterationCount() << nl;
    out << "ElapsedSeconds.........: " << profiler.GetElapsedSeconds() << nl;
    if (withRunning)
        out << "Profiler running.......: " << MakeString(profiler.IsEnabled()) << nl;
}

} // namespace

ProfilerCmd::ProfilerCmd()
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Profiler control");
    SetDeveloperModeOnly(true);
    SetProfiler(nullptr);
}

ProfilerCmd::~ProfilerCmd() = default;

void ProfilerCmd::SetProfiler(Profiler *profiler)
{
    profiler_ = profiler != nullptr ? profiler : Kernel::Instance().GetProfiler();
}

bool ProfilerCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    if (profiler_ == nullptr)
        return true;
    CommandArguments const arguments(*this, parser, s_words);
    Profiler &profiler = *profiler_;
    Setup(profiler, arguments);
    if (arguments.HasOption(s_szOptionStop) && profiler.IsEnabled())
    {
        profiler.Enable(false);
        out << "Profiler stopped.\n";
    }
    bool const wantsDump = arguments.HasOption(s_szOptionDump);
    if (wantsDump)
        Dump(out, profiler, arguments);
    if (arguments.HasOption(s_szOptionClear))
    {
        out << "Cleaning profiler nodes.\n";
        profiler.ClearNodes();
    }
    if (arguments.HasOption(s_szOptionReset))
    {
        out << "Reseting profiler statistics.\n";
        profiler.ResetStatistics();
    }
    bool const isStarting = arguments.HasOption(s_szOptionRun) && !profiler.IsEnabled();
    if (!wantsDump)
        DumpStates(out, profiler, !isStarting);
    if (isStarting)
    {
        out << "Profiler running.\n";
        profiler.Enable(true);
    }
    return true;
}

void ProfilerCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print profiler states");
}

std::span<CommandWord const> ProfilerCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
