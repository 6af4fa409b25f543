// Statistics of one profiled call path.
#ifndef QUILLMARSH_BASETOOLS_PROFILERNODE_H
#define QUILLMARSH_BASETOOLS_PROFILERNODE_H

#include <quillmarsh/basetools/profilerdumpdesc.h>

#include <limits>
#include <vector>

namespace quillmarsh
{

/// Node of the profiler's tree: a named block together with the path of blocks through which it was entered.
///
/// Times are in seconds. The time of a node does not include its children; the time of a branch includes all
/// descendants. Averages and branch times are those of the last Profiler::ProcessStatistics(). A node belongs to its
/// profiler, and with it to one thread.
class QUILLMARSH_API ProfilerNode : NoCopy
{
public:
    /// The parent is borrowed; it is null for a root.
    ProfilerNode(string const &blockName, ProfilerNode *parent);
    ~ProfilerNode();

    /// @name The tree
    /// @{

    /// Name of the block.
    string const &GetBlockName() const { return blockName_; }
    /// Parent; null for a root.
    ProfilerNode const *GetParent() const { return parent_; }
    /// Parent; null for a root.
    ProfilerNode *GetParent() { return parent_; }
    /// Number of children.
    unsigned int GetNumChildren() const { return static_cast<unsigned int>(children_.size()); }
    /// Child by index, in the order of the first entries. Asserts "Index out of range." past the end, and gives null
    /// then.
    ProfilerNode const *GetChild(unsigned int index) const;
    /// Child of that name, or null.
    ProfilerNode const *FindChild(string const &blockName) const;
    /// Child of that name, or null. The search begins behind the child that was found last, since blocks usually have
    /// the same order in each iteration.
    ProfilerNode *FindChild(string const &blockName);
    /// First descendant of that name, or null. The descendants of a child come before the next child.
    ProfilerNode const *FindDescendant(string const &blockName) const;
    /// First descendant of that name, likewise.
    ProfilerNode *FindDescendant(string const &blockName);
    /// @}

    /// @name Statistics
    /// @{

    /// Number of entries since the last reset; for a root, number of iterations.
    unsigned int GetTotalEntries() const { return stats_.totalEntries; }

    /// Hands out the statistics of an iteration: entries, node time, branch time and percentage of the iteration.
    void GetStats(unsigned int &minEntries, unsigned int &averageEntries, unsigned int &maxEntries, double &minNodeTime,
                  double &averageNodeTime, double &maxNodeTime, double &minBranchTime, double &averageBranchTime,
                  double &maxBranchTime, double &minPercentage, double &averagePercentage, double &maxPercentage) const;

    /// One line of the table, without a line end.
    string FormatStatistics(ProfilerDumpDesc const &desc, unsigned int depth) const;

    /// Prints the lines of the node and of its descendants, in bands of alternating output types. `lineCounter` is the
    /// number of lines that were printed before, and is advanced.
    void DumpStatistics(ostream &out, unsigned int &lineCounter, ProfilerDumpDesc const &desc,
                        unsigned int depth) const;

    /// @}

private:
    friend class Profiler;

    /// First the numbers of the running iteration, which ExitRootNode() adds to the others.
    struct Statistics
    {
        unsigned int entriesThisIteration = 0;
        unsigned int totalEntries = 0;
        unsigned int minEntries = std::numeric_limits<unsigned int>::max();
        unsigned int maxEntries = 0;
        unsigned int averageEntries = 0;

        double nodeTimeThisIteration = 0;
        double nodeTimeSum = 0;
        double minNodeTime = static_cast<double>(std::numeric_limits<float>::max());
        double maxNodeTime = 0;
        double averageNodeTime = 0;

        double minBranchTime = 0;
        double maxBranchTime = 0;
        double averageBranchTime = 0;

        double percentageSum = 0;
        double minPercentage = 100;
        double maxPercentage = 0;
        double averagePercentage = 0;
    };

    ProfilerNode *AddChild(string const &blockName);
    void ResetStatistics();
    void DropIterAccum();
    void PropagateProcessIterAccum(double percentFactor);
    void PropagateProcessStats(unsigned int numIterations);

    string blockName_;
    ProfilerNode *parent_;
    std::vector<AutoPtr<ProfilerNode>> children_;
    std::size_t searchCursor_ = 0;
    Statistics stats_;
};

} // namespace quillmarsh

#endif
