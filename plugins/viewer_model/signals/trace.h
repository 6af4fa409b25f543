// The course of a value over the last seconds.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_SIGNALS_TRACE_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_SIGNALS_TRACE_H

#include <deque>

namespace viewer
{

/// Values of the last ten seconds, in steps of time: a step has the extremes of the values that were added in it, so
/// that memory and drawing do not depend on their number. Frame thread only.
class Trace
{
public:
    static constexpr double s_seconds = 10;
    static constexpr unsigned int s_numSteps = 500;

    /// Extremes of a step.
    struct Step
    {
        /// Time of the first value.
        double time = 0;
        double low = 0;
        double high = 0;
    };

    /// Adds a value, and forgets what is older than ten seconds. Times never decrease. Ignores values that are not
    /// finite.
    void Add(double time, double value);
    /// Returns the steps, the oldest first.
    std::deque<Step> const &GetSteps() const { return steps_; }
    /// Returns the extremes of all steps; 0 and 0 without any.
    Step GetExtremes() const;

private:
    std::deque<Step> steps_;
};

} // namespace viewer

#endif
