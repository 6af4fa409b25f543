// Measures where the time of an iteration goes, as a tree of named blocks.
#ifndef QUILLMARSH_BASETOOLS_PROFILER_H
#define QUILLMARSH_BASETOOLS_PROFILER_H

#include <quillmarsh/basetools/observerlist.h>
#include <quillmarsh/basetools/profilernode.h>
#include <quillmarsh/basetools/time.h>

#include <vector>

namespace quillmarsh
{

/// Profiler of a loop.
///
/// An iteration, usually a frame, lies between EnterRootNode() and ExitRootNode(), and a named block in it between
/// EnterNode() and ExitNode(). These operations do not test whether the profiler is enabled. Callers use the sentries
/// and the macro of framework/frameworkprofiler.h instead, which do.
///
/// Enabling, clearing and the like are safe within an iteration: the rest of that iteration is ignored. A block
/// allocates nothing unless its path is entered for the first time. A profiler belongs to one thread.
class QUILLMARSH_API Profiler : NoCopy
{
public:
    /// Is told when the profiler is switched on and off.
    struct QUILLMARSH_API Observer
    {
        virtual ~Observer();
        /// Called by each Enable(), also when the state stays the same.
        virtual void OnProfilerEnabled(bool enabled) = 0;
    };

    Profiler();
    virtual ~Profiler();

    /// @name Settings
    /// @{

    /// Switches on or off, drops the running iteration, and tells the observers. The statistics stay.
    void Enable(bool enable);
    /// True when the profiler is switched on; off at first.
    bool IsEnabled() const { return isEnabled_; }
    /// Sets whether a recursive block is folded into one node, which makes the search at each entry longer. Clears all
    /// nodes.
    void EnableRecursionHandler(bool enable);
    /// True when recursive blocks are folded; off at first.
    bool IsEnabledRecursionHandler() const { return isRecursionHandlerEnabled_; }
    /// Sets the depth, including the root, above which a block without the recursion handler is reported as a
    /// recursion; at least 2.
    void SetMaxExpectedStackDepth(unsigned int depth);
    /// Depth above which a recursion is reported; 20 at first.
    unsigned int GetMaxExpectedStackDepth() const { return maxExpectedStackDepth_; }
    /// Sets the number of iterations after which the statistics are reset once, since the first iterations also build
    /// the tree; 0 for never. Takes effect with the next reset.
    void SetAutoResetThreshold(unsigned int numIterations);
    /// Number of iterations after which the statistics are reset once; 10 at first.
    unsigned int GetAutoResetThreshold() const { return autoResetThreshold_; }

    /// Adds the observer unless it is there already. It is borrowed.
    void RegisterObserver(Observer &observer);
    /// Removes the observer; harmless if it was never added. An observer may do so while it is called.
    void UnregisterObserver(Observer &observer);

    /// @}
    /// @name Measuring
    /// @{

    /// Begins an iteration. Asserts "Profile-stack recursive root-entry." within one.
    void EnterRootNode();
    /// Ends an iteration, and adds it to the statistics.
    void ExitRootNode();
    /// Enters a block. Asserts "Passing empty block-name to profiler." for a null or empty name, and enters a block
    /// without a name then.
    void EnterNode(char const *blockName);
    /// Leaves the block that was entered last. Does nothing without a block.
    void ExitNode();

    /// @}
    /// @name Statistics
    /// @{

    /// Deletes all nodes, and the statistics with them.
    void ClearNodes();
    /// Sets the statistics of all nodes back to the start. The tree stays.
    void ResetStatistics();
    /// Calculates averages and branch times. Does nothing when no iteration was counted.
    void ProcessStatistics();
    /// Prints settings and rates and, if an iteration was counted, the table of the last ProcessStatistics().
    void DumpStatistics(ostream &out, ProfilerDumpDesc const &desc) const;

    /// Root of the tree; good until ClearNodes().
    ProfilerNode const &GetRootNode() const { return *root_; }
    /// Root of the tree; good until ClearNodes().
    ProfilerNode &GetRootNode() { return *root_; }
    /// Number of iterations that were counted since the last reset.
    unsigned int GetIterationCount() const { return root_->GetTotalEntries(); }
    /// Seconds that the counted iterations took.
    double GetElapsedSeconds() const { return elapsedSeconds_; }
    /// Gives the iterations per second as of the last ProcessStatistics(); zeros when no iteration was counted.
    void CalcIterationRate(double &min, double &avg, double &max) const;

    /// @}

private:
    struct ProfileStackEntry
    {
        ProfilerNode *node;
        double entryTime;
    };

    ProfilerNode *GetActiveNode() const { return stack_.back().node; }
    ProfilerNode *TraceStackForRecursion() const;
    void ResetStack();

    ObserverList<Observer> observers_;
    bool isEnabled_ = false;
    bool isRecursionHandlerEnabled_ = false;
    unsigned int autoResetThreshold_ = 10;
    unsigned int maxExpectedStackDepth_ = 20;
    bool isInsideRoot_ = false;
    bool isAutoResetPending_ = false;
    bool isSkipping_ = false;
    double elapsedSeconds_ = 0;
    AutoPtr<ProfilerNode> root_;
    std::vector<ProfileStackEntry> stack_;
    /// Name of the block being entered; keeps its storage.
    string blockName_;
    HighResolutionTimer timer_;
};

} // namespace quillmarsh

#endif
