#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/profiler.h>

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>

namespace quillmarsh
{
namespace
{

using tests::ScriptedDialogs;

struct Stats
{
    explicit Stats(ProfilerNode const &node)
    {
        auto &[least, mean, most] = entries;
        node.GetStats(least, mean, most, own[0], own[1], own[2], branch[0], branch[1], branch[2], percent[0],
                      percent[1], percent[2]);
    }
    std::array<unsigned int, 3> entries;
    /// Least, mean and greatest values.
    double own[3], branch[3], percent[3];
};

void Spend(double seconds)
{
    HighResolutionTimer const timer;
    while (timer.GetElapsedSeconds() < seconds)
        ;
}

/// Runs one iteration with the blocks a(b) and c.
void RunIteration(Profiler &profiler, unsigned int numB = 1)
{
    profiler.EnterRootNode();
    profiler.EnterNode("a");
    for (unsigned int i = 0; i < numB; ++i)
    {
        profiler.EnterNode("b");
        Spend(2e-5);
        profiler.ExitNode();
    }
    profiler.ExitNode();
    profiler.EnterNode("c");
    profiler.ExitNode();
    profiler.ExitRootNode();
}

TEST(Profiler, TimesAddUpOverTheTree)
{
    Profiler profiler;
    profiler.SetAutoResetThreshold(0);
    for (unsigned int numB : {0, 2, 4, 3})
        RunIteration(profiler, numB);
    profiler.ProcessStatistics();
    EXPECT_EQ(profiler.GetIterationCount(), 4u);

    ProfilerNode const &root = profiler.GetRootNode();
    EXPECT_EQ(root.GetBlockName(), "Root");
    ASSERT_EQ(root.GetNumChildren(), 2u);
    ProfilerNode const *const b = root.FindDescendant("b");
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->GetParent(), root.FindChild("a"));
    EXPECT_EQ(b->GetTotalEntries(), 9u);
    EXPECT_EQ(root.FindDescendant("d"), nullptr);

    Stats const statsRoot(root), statsA(*root.FindChild("a")), statsB(*b), statsC(*root.FindChild("c"));
    // The node did not exist in the first iteration, so it does not count that one.
    EXPECT_EQ(statsB.entries, (std::array{2u, 2u, 4u}));
    EXPECT_GE(statsB.own[0], 4e-5);
    EXPECT_DOUBLE_EQ(statsB.branch[1], statsB.own[1]);
    EXPECT_DOUBLE_EQ(statsA.branch[2], statsA.own[2] + statsB.own[2]);
    EXPECT_LT(statsA.own[1], statsA.branch[1]);
    EXPECT_NEAR(statsRoot.branch[1], profiler.GetElapsedSeconds() / 4, 1e-9);
    EXPECT_NEAR(statsRoot.percent[1] + statsA.percent[1] + statsB.percent[1] + statsC.percent[1], 100, 1e-6);

    double least = 0, mean = 0, most = 0;
    profiler.CalcIterationRate(least, mean, most);
    EXPECT_DOUBLE_EQ(least, 1 / statsRoot.branch[2]);
    EXPECT_DOUBLE_EQ(mean, 1 / statsRoot.branch[1]);
    EXPECT_DOUBLE_EQ(most, 1 / statsRoot.branch[0]);
}

TEST(Profiler, FirstIterationsAreThrownAwayOnce)
{
    Profiler profiler;
    profiler.SetAutoResetThreshold(3);
    profiler.ResetStatistics();
    std::vector<unsigned int> counts;
    for (int i = 0; i < 8; ++i)
    {
        RunIteration(profiler);
        counts.push_back(profiler.GetIterationCount());
    }
    EXPECT_EQ(counts, (std::vector<unsigned int>{1, 2, 0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(profiler.GetRootNode().GetNumChildren(), 2u);
    profiler.ClearNodes();
    EXPECT_EQ(profiler.GetIterationCount(), 0u);
    EXPECT_EQ(profiler.GetRootNode().GetNumChildren(), 0u);
}

TEST(Profiler, FindsChildrenInAnyOrder)
{
    Profiler profiler;
    profiler.EnterRootNode();
    for (char const *const name : {"x", "y", "z", "x", "z", "y", "y", "x", "z"})
    {
        profiler.EnterNode(name);
        profiler.ExitNode();
    }
    profiler.ExitRootNode();
    ProfilerNode &root = profiler.GetRootNode();
    ASSERT_EQ(root.GetNumChildren(), 3u);
    EXPECT_EQ(root.GetChild(1)->GetBlockName(), "y");
    EXPECT_EQ(root.FindChild("z")->GetTotalEntries(), 3u);
}

TEST(Profiler, RecursionFoldsOrIsSuspected)
{
    Profiler profiler;
    profiler.SetMaxExpectedStackDepth(1);
    EXPECT_EQ(profiler.GetMaxExpectedStackDepth(), 2u);
    profiler.SetMaxExpectedStackDepth(4);
    auto const recurse = [&profiler]
    {
        profiler.EnterRootNode();
        for (int i = 0; i < 5; ++i)
            profiler.EnterNode(i % 2 == 0 ? "even" : "odd");
        for (int i = 0; i < 7; ++i)
            profiler.ExitNode();
        profiler.ExitRootNode();
    };
    {
        ScriptedDialogs dialogs({platform::eDialogAnswer::e_retry, platform::eDialogAnswer::e_retry});
        recurse();
        string const text = "Possible recursion in profile-stack.\nEnable recursion-handler, then clear and restart "
                            "profiler.";
        EXPECT_EQ(dialogs.TakeTexts(), (std::vector<string>{text, text}));
        EXPECT_EQ(profiler.GetRootNode().FindDescendant("odd")->GetTotalEntries(), 1u);
    }
    profiler.EnableRecursionHandler(true);
    recurse();
    EXPECT_EQ(profiler.GetRootNode().GetNumChildren(), 1u);
    EXPECT_EQ(profiler.GetRootNode().FindDescendant("even")->GetTotalEntries(), 3u);
    EXPECT_EQ(profiler.GetRootNode().FindDescendant("odd")->GetTotalEntries(), 2u);
}

TEST(Profiler, ChangesWithinAnIterationDropIt)
{
    class Observer : public Profiler::Observer
    {
    public:
        void OnProfilerEnabled(bool enabled) override { calls += enabled ? '+' : '-'; }
        string calls;
    };
    Profiler profiler;
    Observer observer;
    profiler.RegisterObserver(observer);
    profiler.RegisterObserver(observer);
    constexpr std::pair<char const *, void (*)(Profiler &)> changes[] = {
        {"enable", [](Profiler &p) { p.Enable(true); }},
        {"disable", [](Profiler &p) { p.Enable(false); }},
        {"clear", [](Profiler &p) { p.ClearNodes(); }},
        {"recursion", [](Profiler &p) { p.EnableRecursionHandler(false); }},
    };
    for (auto const &[name, change] : changes)
    {
        RunIteration(profiler);
        profiler.EnterRootNode();
        profiler.EnterNode("a");
        change(profiler);
        unsigned int const numIterations = profiler.GetIterationCount();
        profiler.EnterNode("dropped");
        profiler.ExitNode();
        profiler.ExitNode();
        profiler.ExitRootNode();
        EXPECT_EQ(profiler.GetIterationCount(), numIterations) << name;
        EXPECT_EQ(profiler.GetRootNode().FindDescendant("dropped"), nullptr) << name;
        RunIteration(profiler);
        EXPECT_EQ(profiler.GetIterationCount(), numIterations + 1) << name;
    }
    EXPECT_EQ(observer.calls, "+-");
    profiler.UnregisterObserver(observer);
    profiler.Enable(true);
    EXPECT_EQ(observer.calls, "+-");
}

TEST(Profiler, MistakesAssertAndAreSurvived)
{
    Profiler profiler;
    ScriptedDialogs dialogs;
    profiler.EnterRootNode();
    profiler.EnterRootNode();
    profiler.EnterNode("open");
    profiler.ExitRootNode();
    profiler.EnterRootNode();
    profiler.EnterNode(nullptr);
    EXPECT_EQ(dialogs.TakeTexts(),
              (std::vector<string>{"Profile-stack recursive root-entry.", "Profile-stack push/pop mismatch.",
                                   "Profile-stack push/pop mismatch.", "Passing empty block-name to profiler."}));
    profiler.ExitNode();
    profiler.ExitNode();
    profiler.ExitRootNode();
    RunIteration(profiler);
}

TEST(ProfilerDump, TableHasTheGroupsThatAreOn)
{
    ProfilerDumpDesc desc;
    EXPECT_EQ(
        desc.headerLines,
        (std::vector<string>{
            " EntryCounts   | NodeTimes                    | BranchTimes                  | NodePercentages           "
            "| BlockNames",
            " Min  Avg  Max | Min       Avg       Max      | Min       Avg       Max      | Min      Avg      Max     "
            "| "}));
    desc.showNodeTimes = desc.showBranchTimes = false;
    desc.countWidth = 5;
    desc.columnSeparator = ";";
    desc.linePrefix = "##";
    desc.groupSeparator = "/";
    desc.percentageWidth = 3;
    desc.percentageDecimals = 1;
    desc.ConstructHeaderLines();
    EXPECT_EQ(desc.headerLines, (std::vector<string>{"  EntryCounts      /NodePercentages/BlockNames",
                                                     "##Min  ;Avg  ;Max  /Min;Avg;Max/"}));

    Profiler profiler;
    desc.showNodePercentages = false;
    profiler.EnterRootNode();
    profiler.EnterNode("block");
    profiler.ExitNode();
    profiler.ExitRootNode();
    profiler.ProcessStatistics();
    EXPECT_EQ(profiler.GetRootNode().GetChild(0)->FormatStatistics(desc, 2), "##    1;    1;    1/    block");

    desc.showNodeTimes = true;
    desc.showEntryCounts = false;
    desc.timeDecimals = 1;
    EXPECT_EQ(profiler.GetRootNode().GetChild(0)->FormatStatistics(desc, 0), "##     0.0;     0.0;     0.0/block");
}

TEST(ProfilerDump, BandsOfLinesAlternate)
{
    class Marker : public OutputStream
    {
    public:
        Marker() : OutputStream(nullptr) { rdbuf(&text); }
        ~Marker() override { rdbuf(nullptr); }
        void SetCurrentOutputType(unsigned int type) override { *this << (type == e_typeInfo ? "i" : "A"); }
        std::stringbuf text;
    };
    Profiler profiler;
    ProfilerDumpDesc desc;
    desc.linesPerColorBand = 2;
    desc.showEntryCounts = desc.showNodeTimes = desc.showBranchTimes = desc.showNodePercentages = false;
    desc.ConstructHeaderLines();

    std::ostringstream empty;
    profiler.DumpStatistics(empty, desc);
    string const head = "RecursionHandlerEnabled.........: false\n"
                        "AutoResetThreshold..............: 10\n"
                        "IterationCount..................: 0\n"
                        "ElapsedSeconds..................: 0\n"
                        "IterationsPerSecond(Min/Avg/Max): 0.000 / 0.000 / 0.000\n\n";
    EXPECT_EQ(empty.str(), head);

    RunIteration(profiler);
    Marker out;
    profiler.DumpStatistics(out, desc);
    string const text = out.text.str();
    EXPECT_EQ(text.substr(text.find("\n\n")), "\n\n BlockNames\n \nA Root\nA   a\ni     b\ni   c\n\ni");

    Marker plain;
    desc.linesPerColorBand = 0;
    unsigned int lineCounter = 5;
    profiler.GetRootNode().DumpStatistics(plain, lineCounter, desc, 1);
    EXPECT_EQ(plain.text.str(), "   Root\n     a\n       b\n     c\n");
    EXPECT_EQ(lineCounter, 9u);
}

} // namespace
} // namespace quillmarsh
