#include "plot.h"

#include <algorithm>
#include <cmath>

namespace viewer
{

namespace
{

/// Sums of a channel, about a value that lies among its own, so that nothing is lost for long spans.
class Sums
{
public:
    void Add(double value)
    {
        if (std::isnan(value))
        {
            ++numNaN_;
            return;
        }
        if (count_++ == 0)
            minimum_ = maximum_ = about_ = value;
        minimum_ = std::min(minimum_, value);
        maximum_ = std::max(maximum_, value);
        sum_ += value - about_;
        squares_ += (value - about_) * (value - about_);
    }

    SpanFigures Get(char const *name) const
    {
        double const nan = std::nan("");
        if (count_ == 0)
            return {name, nan, nan, nan, nan, numNaN_};
        double const count = static_cast<double>(count_);
        double const mean = sum_ / count;
        double const variance = std::max(0.0, squares_ / count - mean * mean);
        return {name, minimum_, maximum_, about_ + mean, std::sqrt(variance), numNaN_};
    }

private:
    std::uint64_t count_ = 0;
    std::uint64_t numNaN_ = 0;
    double about_ = 0;
    double minimum_ = 0;
    double maximum_ = 0;
    double sum_ = 0;
    double squares_ = 0;
};

} // namespace

std::vector<SpanFigures> MeasureSpan(SignalLevels const &levels, SampleSpan span,
                                     std::function<bool(double)> const &progress)
{
    constexpr std::uint64_t samplesOfPart = std::uint64_t(1) << 20;
    std::span<Channel const> const channels = levels.GetSignalChannels();
    std::vector<Sums> sums(channels.size());
    span.end = std::min(span.end, levels.GetNumSamples());
    for (std::uint64_t part = span.begin; part < span.end; part += samplesOfPart)
    {
        if (progress && !progress(static_cast<double>(part - span.begin) / static_cast<double>(span.end - span.begin)))
            return {};
        std::uint64_t const end = std::min(span.end, part + samplesOfPart);
        for (unsigned int channel = 0; channel < channels.size(); ++channel)
        {
            for (std::uint64_t sample = part; sample < end; ++sample)
                sums[channel].Add(levels.GetValue(channel, sample));
        }
    }
    std::vector<SpanFigures> figures;
    for (std::size_t channel = 0; channel < channels.size(); ++channel)
        figures.push_back(sums[channel].Get(channels[channel].name));
    return figures;
}

} // namespace viewer
