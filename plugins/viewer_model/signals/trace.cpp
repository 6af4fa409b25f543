#include "trace.h"

#include <algorithm>
#include <cmath>

namespace viewer
{

void Trace::Add(double time, double value)
{
    while (!steps_.empty() && steps_.front().time < time - s_seconds)
        steps_.pop_front();
    if (!std::isfinite(value))
        return;
    bool const isNew = steps_.empty() || time - steps_.back().time >= s_seconds / s_numSteps;
    if (isNew)
    {
        steps_.push_back({time, value, value});
        return;
    }
    steps_.back().low = std::min(steps_.back().low, value);
    steps_.back().high = std::max(steps_.back().high, value);
}

Trace::Step Trace::GetExtremes() const
{
    if (steps_.empty())
        return {};
    Step extremes = steps_.front();
    for (Step const &step : steps_)
    {
        extremes.low = std::min(extremes.low, step.low);
        extremes.high = std::max(extremes.high, step.high);
    }
    return extremes;
}

} // namespace viewer
