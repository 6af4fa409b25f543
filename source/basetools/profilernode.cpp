#include <quillmarsh/basetools/profilernode.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <utility>

namespace quillmarsh
{
namespace
{

string AlignRight(string const &text, unsigned int width)
{
    return text.size() < width ? string(width - text.size(), ' ') + text : text;
}

/// Minimum, average and maximum in columns of one width.
string FormatGroup(ProfilerDumpDesc const &desc, string const (&values)[3], unsigned int width)
{
    return AlignRight(values[0], width) + desc.columnSeparator + AlignRight(values[1], width) + desc.columnSeparator +
           AlignRight(values[2], width) + desc.groupSeparator;
}

string FormatReals(ProfilerDumpDesc const &desc, double const (&values)[3], unsigned int width, unsigned int decimals)
{
    string texts[3];
    for (std::size_t i = 0; i < 3; ++i)
        ToStringFix(texts[i], values[i], 0, decimals);
    return FormatGroup(desc, texts, width);
}

template<typename T>
void TakeIn(T value, T &min, T &max)
{
    min = std::min(min, value);
    max = std::max(max, value);
}

} // namespace

ProfilerNode::ProfilerNode(string const &blockName, ProfilerNode *parent) : blockName_(blockName), parent_(parent) {}

ProfilerNode::~ProfilerNode() = default;

ProfilerNode const *ProfilerNode::GetChild(unsigned int index) const
{
    bool const isThere = index < children_.size();
    QUILLMARSH_ASSERT(isThere, "Index out of range.");
    return isThere ? children_[index].get() : nullptr;
}

ProfilerNode const *ProfilerNode::FindChild(string const &blockName) const
{
    for (AutoPtr<ProfilerNode> const &child : children_)
    {
        if (child->blockName_ == blockName)
            return child.get();
    }
    return nullptr;
}

ProfilerNode *ProfilerNode::FindChild(string const &blockName)
{
    std::size_t const numChildren = children_.size();
    std::size_t at = searchCursor_;
    for (std::size_t numTried = 0; numTried < numChildren; ++numTried)
    {
        ProfilerNode *const child = children_[at].get();
        if (++at == numChildren)
            at = 0;
        if (child->blockName_ == blockName)
        {
            searchCursor_ = at;
            return child;
        }
    }
    return nullptr;
}

ProfilerNode const *ProfilerNode::FindDescendant(string const &blockName) const
{
    for (AutoPtr<ProfilerNode> const &child : children_)
    {
        if (child->blockName_ == blockName)
            return child.get();
        if (ProfilerNode const *const descendant = std::as_const(*child).FindDescendant(blockName))
            return descendant;
    }
    return nullptr;
}

ProfilerNode *ProfilerNode::FindDescendant(string const &blockName)
{
    return const_cast<ProfilerNode *>(std::as_const(*this).FindDescendant(blockName));
}

void ProfilerNode::GetStats(unsigned int &minEntries, unsigned int &averageEntries, unsigned int &maxEntries,
                            double &minNodeTime, double &averageNodeTime, double &maxNodeTime, double &minBranchTime,
                            double &averageBranchTime, double &maxBranchTime, double &minPercentage,
                            double &averagePercentage, double &maxPercentage) const
{
    minEntries = stats_.minEntries;
    averageEntries = stats_.averageEntries;
    maxEntries = stats_.maxEntries;
    minNodeTime = stats_.minNodeTime;
    averageNodeTime = stats_.averageNodeTime;
    maxNodeTime = stats_.maxNodeTime;
    minBranchTime = stats_.minBranchTime;
    averageBranchTime = stats_.averageBranchTime;
    maxBranchTime = stats_.maxBranchTime;
    minPercentage = stats_.minPercentage;
    averagePercentage = stats_.averagePercentage;
    maxPercentage = stats_.maxPercentage;
}

string ProfilerNode::FormatStatistics(ProfilerDumpDesc const &desc, unsigned int depth) const
{
    string line = desc.linePrefix;
    if (desc.showEntryCounts)
        line += FormatGroup(
            desc, {MakeString(stats_.minEntries), MakeString(stats_.averageEntries), MakeString(stats_.maxEntries)},
            desc.countWidth);
    if (desc.showNodeTimes)
        line += FormatReals(desc, {stats_.minNodeTime, stats_.averageNodeTime, stats_.maxNodeTime}, desc.timeWidth,
                            desc.timeDecimals);
    if (desc.showBranchTimes)
        line += FormatReals(desc, {stats_.minBranchTime, stats_.averageBranchTime, stats_.maxBranchTime},
                            desc.timeWidth, desc.timeDecimals);
    if (desc.showNodePercentages)
        line += FormatReals(desc, {stats_.minPercentage, stats_.averagePercentage, stats_.maxPercentage},
                            desc.percentageWidth, desc.percentageDecimals);
    line.append(std::size_t{desc.indentPerDepth} * depth, ' ');
    return line + blockName_;
}

void ProfilerNode::DumpStatistics(ostream &out, unsigned int &lineCounter, ProfilerDumpDesc const &desc,
                                  unsigned int depth) const
{
    if (desc.linesPerColorBand != 0)
    {
        bool const isSecondBand = lineCounter / desc.linesPerColorBand % 2 != 0;
        out << (isSecondBand ? e_info : e_attention);
    }
    out << FormatStatistics(desc, depth) << nl;
    ++lineCounter;
    for (AutoPtr<ProfilerNode> const &child : children_)
        child->DumpStatistics(out, lineCounter, desc, depth + 1);
}

ProfilerNode *ProfilerNode::AddChild(string const &blockName)
{
    children_.push_back(std::make_unique<ProfilerNode>(blockName, this));
    searchCursor_ = 0;
    return children_.back().get();
}

void ProfilerNode::ResetStatistics()
{
    stats_ = {};
    for (AutoPtr<ProfilerNode> const &child : children_)
        child->ResetStatistics();
}

/// Drops the numbers of an iteration that does not count.
void ProfilerNode::DropIterAccum()
{
    stats_.entriesThisIteration = 0;
    stats_.nodeTimeThisIteration = 0;
    for (AutoPtr<ProfilerNode> const &child : children_)
        child->DropIterAccum();
}

void ProfilerNode::PropagateProcessIterAccum(double percentFactor)
{
    TakeIn(stats_.entriesThisIteration, stats_.minEntries, stats_.maxEntries);
    stats_.totalEntries += stats_.entriesThisIteration;
    stats_.entriesThisIteration = 0;

    double const percentage = percentFactor * stats_.nodeTimeThisIteration;
    stats_.percentageSum += percentage;
    TakeIn(percentage, stats_.minPercentage, stats_.maxPercentage);

    stats_.nodeTimeSum += stats_.nodeTimeThisIteration;
    TakeIn(stats_.nodeTimeThisIteration, stats_.minNodeTime, stats_.maxNodeTime);

    for (AutoPtr<ProfilerNode> const &child : children_)
        child->PropagateProcessIterAccum(percentFactor);
    stats_.nodeTimeThisIteration = 0;
}

void ProfilerNode::PropagateProcessStats(unsigned int numIterations)
{
    double const factor = 1.0 / numIterations;
    stats_.averageEntries = static_cast<unsigned int>(stats_.totalEntries * factor);
    stats_.averageNodeTime = stats_.nodeTimeSum * factor;
    stats_.averagePercentage = stats_.percentageSum * factor;

    stats_.minBranchTime = stats_.minNodeTime;
    stats_.maxBranchTime = stats_.maxNodeTime;
    stats_.averageBranchTime = stats_.averageNodeTime;
    for (AutoPtr<ProfilerNode> const &child : children_)
    {
        child->PropagateProcessStats(numIterations);
        stats_.minBranchTime += child->stats_.minBranchTime;
        stats_.maxBranchTime += child->stats_.maxBranchTime;
        stats_.averageBranchTime += child->stats_.averageBranchTime;
    }
}

} // namespace quillmarsh
