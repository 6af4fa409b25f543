#include <quillmarsh/framework/commands/guistatscmd.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/videorenderer.h>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = GUIStatsCmd;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionRun, "start statistics accumulation\n"),
    CommandWord::Option(Cmd::s_szOptionStop, "stop statistics accumulation\n"),
    CommandWord::Option(Cmd::s_szOptionReset, "reset accumulated statistics\n"),
    CommandWord::Option(Cmd::s_szOptionDump, "dump accumulated statistics\n"),
};

bool HasWord(CommandArguments const &arguments)
{
    for (CommandWord const &word : s_words)
    {
        if (arguments.HasOption(word.name))
            return true;
    }
    return false;
}

/// Returns the active renderer. Tells that there is none, and returns null then.
VideoRenderer *FindRenderer(ostream &out)
{
    VideoRenderer *const renderer = Kernel::Instance().GetActiveVideoRendererPtr();
    if (renderer == nullptr)
        out << e_error << "Cannot find active renderer.\n" << e_info;
    return renderer;
}

} // namespace

GUIStatsCmd::GUIStatsCmd()
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Monitor/accumulate GUI-renderer statistics");
    SetDeveloperModeOnly(true);
}

GUIStatsCmd::~GUIStatsCmd() = default;

bool GUIStatsCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    if (!HasWord(arguments))
    {
        out << "GUI-statistics collector running: " << MakeString(collector_.IsRunning()) << nl;
        VideoRenderer const *const renderer = FindRenderer(out);
        if (renderer == nullptr)
            return false;
        out << "Last-frame:\n";
        renderer->GetGUIRenderer().Stats().Dump(out, 1);
        return true;
    }
    if (arguments.HasOption(s_szOptionReset))
    {
        collector_.Reset();
        out << "GUI-statistics-collector reset.\n";
    }
    if (arguments.HasOption(s_szOptionRun) && !collector_.IsRunning())
    {
        out << "GUI-statistics-collector running.\n";
        collector_.Run();
    }
    if (arguments.HasOption(s_szOptionStop) && collector_.IsRunning())
    {
        collector_.Stop();
        out << "GUI-statistics-collector stopped.\n";
    }
    if (arguments.HasOption(s_szOptionDump))
        Dump(out);
    return true;
}

void GUIStatsCmd::Dump(ostream &out)
{
    collector_.CalcAverage();
    out << "GUI-statistics:\n";
    out << "Min:\n";
    collector_.GetStatsMin().Dump(out, 1);
    out << "Max:\n";
    collector_.GetStatsMax().Dump(out, 1);
    out << "Average:\n";
    collector_.GetStatsAverage().Dump(out, 1);
    out << "FrameCount: " << MakeString(collector_.GetFrameCount()) << nl;
}

void GUIStatsCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print last-frame statistics");
}

std::span<CommandWord const> GUIStatsCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
