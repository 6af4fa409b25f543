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
/// An iteration, as a rule a frame, is bracketed by EnterRootNode() and ExitRootNode(), and named blocks in it by
/// EnterNode() and ExitNode(). These do not test whether the profiler is enabled: that is for the sentries and the macro
/// of framework/frameworkprofiler.h, which callers use instead.
///
/// Enabling, clearing and the like are safe within an iteration: what is left of it is ignored. Once the tree has
/// settled, a block allocates nothing. A profiler belongs to one thread.
class QUILLMARSH_API Profiler : NoCopy
{
public:
    /// Hears when the profiler is switched on and off.
    struct QUILLMARSH_API Observer
    {
        virtual ~Observer();
        /// Called at each Enable(), also when the state stays the same.
        virtual void OnProfilerEnabled(bool enabled) = 0;
    };

    Profiler();
    virtual ~Profiler();

    /// @name Settings
    /// @{

    /// Switches on or off, drops the running iteration, and tells the observers. Statistics stay.
    void Enable(bool enable);
    bool IsEnabled() const { return isEnabled_; }
    /// Folds a recursive block into one node, for a longer search at each entry. Clears all nodes.
    void EnableRecursionHandler(bool enable);
    bool IsEnabledRecursionHandler() const { return isRecursionHandlerEnabled_; }
    /// Depth, the root's included, past which a recursion is suspected when its handler is off; at least 2.
    void SetMaxExpectedStackDepth(unsigned int depth);
    unsigned int GetMaxExpectedStackDepth() const { return maxExpectedStackDepth_; }
    /// Number of iterations after which the statistics are reset once, as the first ones are distorted by the building
    /// of the tree; 0 for never. Counts from the next reset on.
    void SetAutoResetThreshold(unsigned int numIterations);
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
    /// Ends an iteration, and takes it into the statistics.
    void ExitRootNode();
    /// Enters a block. Asserts "Passing empty block-name to profiler." for a null or empty name, and the block has
    /// none then.
    void EnterNode(char const *blockName);
    /// Leaves the block that was entered last. Without one, does nothing.
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
    /// Prints settings and rates, and the table as of the last ProcessStatistics() if an iteration was counted.
    void DumpStatistics(ostream &out, ProfilerDumpDesc const &desc) const;

    ProfilerNode const &GetRootNode() const { return *root_; }
    ProfilerNode &GetRootNode() { return *root_; }
    unsigned int GetIterationCount() const { return root_->GetTotalEntries(); }
    /// Time spent in the iterations that were counted.
    double GetElapsedSeconds() const { return elapsedSeconds_; }
    /// Iterations per second, as of the last ProcessStatistics().
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
