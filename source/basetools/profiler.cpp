#include <quillmarsh/basetools/profiler.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

constexpr char const *s_szRootName = "Root";
constexpr std::size_t s_expectedNameLength = 128;

double CalcRate(double seconds)
{
    return seconds > 0 ? 1.0 / seconds : 0;
}

string FormatRate(double rate)
{
    string text;
    ToStringFix(text, rate, 0, 3);
    return text;
}

} // namespace

Profiler::Observer::~Observer() = default;

Profiler::Profiler()
{
    blockName_.reserve(s_expectedNameLength);
    ClearNodes();
}

Profiler::~Profiler() = default;

void Profiler::Enable(bool enable)
{
    isEnabled_ = enable;
    ResetStack();
    isSkipping_ = true;
    observers_.ForEach([enable](Observer &observer) { observer.OnProfilerEnabled(enable); });
}

void Profiler::EnableRecursionHandler(bool enable)
{
    isRecursionHandlerEnabled_ = enable;
    ClearNodes();
}

void Profiler::SetMaxExpectedStackDepth(unsigned int depth)
{
    maxExpectedStackDepth_ = std::max(depth, 2u);
}

void Profiler::SetAutoResetThreshold(unsigned int numIterations)
{
    autoResetThreshold_ = numIterations;
}

void Profiler::RegisterObserver(Observer &observer)
{
    observers_.Add(&observer);
}

void Profiler::UnregisterObserver(Observer &observer)
{
    observers_.Remove(&observer);
}

void Profiler::EnterRootNode()
{
    isSkipping_ = false;
    QUILLMARSH_ASSERT(!isInsideRoot_, "Profile-stack recursive root-entry.");
    QUILLMARSH_ASSERT(stack_.size() == 1, "Profile-stack push/pop mismatch.");
    isInsideRoot_ = true;
    if (root_->stats_.totalEntries == 0)
        elapsedSeconds_ = 0;
    ++root_->stats_.entriesThisIteration;
    timer_.Start();
    stack_.back().entryTime = timer_.GetElapsedSeconds();
}

void Profiler::ExitRootNode()
{
    isInsideRoot_ = false;
    if (isSkipping_)
    {
        ResetStack();
        isSkipping_ = false;
        return;
    }
    QUILLMARSH_ASSERT(stack_.size() == 1, "Profile-stack push/pop mismatch.");
    double const iterationTime = timer_.GetElapsedSeconds() - stack_.back().entryTime;
    elapsedSeconds_ += iterationTime;
    // The children have subtracted their times already, so that the time of the root remains.
    root_->stats_.nodeTimeThisIteration += iterationTime;
    root_->PropagateProcessIterAccum(iterationTime > 0 ? 100.0 / iterationTime : 0);
    bool const isDue = autoResetThreshold_ != 0 && root_->stats_.totalEntries >= autoResetThreshold_;
    if (isAutoResetPending_ && isDue)
    {
        ResetStatistics();
        isAutoResetPending_ = false;
    }
}

void Profiler::EnterNode(char const *blockName)
{
    bool const isNamed = blockName != nullptr && *blockName != '\0';
    QUILLMARSH_ASSERT(isNamed, "Passing empty block-name to profiler.");
    // The block is entered in any case, since the caller will leave it.
    blockName_.assign(isNamed ? blockName : "");
    if (isSkipping_)
        return;

    ProfilerNode *node = isRecursionHandlerEnabled_ ? TraceStackForRecursion() : nullptr;
    if (node == nullptr)
        node = GetActiveNode()->FindChild(blockName_);
    if (node == nullptr)
        node = GetActiveNode()->AddChild(blockName_);
    ++node->stats_.entriesThisIteration;
    stack_.push_back({node, timer_.GetElapsedSeconds()});
    QUILLMARSH_ASSERT(isRecursionHandlerEnabled_ || stack_.size() <= maxExpectedStackDepth_,
                      "Possible recursion in profile-stack.\nEnable recursion-handler, then clear and restart "
                      "profiler.");
}

void Profiler::ExitNode()
{
    if (isSkipping_ || stack_.size() == 1)
        return;
    ProfileStackEntry const &entry = stack_.back();
    double const time = timer_.GetElapsedSeconds() - entry.entryTime;
    entry.node->stats_.nodeTimeThisIteration += time;
    stack_.pop_back();
    GetActiveNode()->stats_.nodeTimeThisIteration -= time;
}

void Profiler::ClearNodes()
{
    isSkipping_ = true;
    root_ = std::make_unique<ProfilerNode>(s_szRootName, nullptr);
    ResetStack();
    ResetStatistics();
}

void Profiler::ResetStatistics()
{
    isAutoResetPending_ = autoResetThreshold_ != 0;
    elapsedSeconds_ = 0;
    root_->ResetStatistics();
}

void Profiler::ProcessStatistics()
{
    if (GetIterationCount() != 0)
        root_->PropagateProcessStats(GetIterationCount());
}

void Profiler::DumpStatistics(ostream &out, ProfilerDumpDesc const &desc) const
{
    double min = 0;
    double avg = 0;
    double max = 0;
    CalcIterationRate(min, avg, max);
    out << IndentEffector(0) << "RecursionHandlerEnabled.........: " << MakeString(isRecursionHandlerEnabled_) << nl
        << "AutoResetThreshold..............: " << autoResetThreshold_ << nl
        << "IterationCount..................: " << GetIterationCount() << nl
        << "ElapsedSeconds..................: " << elapsedSeconds_ << nl
        << "IterationsPerSecond(Min/Avg/Max): " << FormatRate(min) << " / " << FormatRate(avg) << " / "
        << FormatRate(max) << nl << nl;
    if (GetIterationCount() == 0)
        return;
    for (string const &line : desc.headerLines)
        out << line << nl;
    unsigned int lineCounter = 0;
    root_->DumpStatistics(out, lineCounter, desc, 0);
    out << nl << e_info;
}

void Profiler::CalcIterationRate(double &min, double &avg, double &max) const
{
    min = avg = max = 0;
    if (GetIterationCount() == 0)
        return;
    min = CalcRate(root_->stats_.maxBranchTime);
    avg = CalcRate(root_->stats_.averageBranchTime);
    max = CalcRate(root_->stats_.minBranchTime);
}

/// The innermost open block of the name that is being entered, not counting the root; null without one.
ProfilerNode *Profiler::TraceStackForRecursion() const
{
    for (ProfilerNode *node = GetActiveNode(); node->parent_ != nullptr; node = node->parent_)
    {
        if (node->blockName_ == blockName_)
            return node;
    }
    return nullptr;
}

void Profiler::ResetStack()
{
    isInsideRoot_ = false;
    root_->DropIterAccum();
    stack_.clear();
    stack_.push_back({root_.get(), 0});
}

} // namespace quillmarsh
