// Positions of a resampling along one axis.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLINGAXIS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLINGAXIS_H

#include <algorithm>
#include <cstdint>

namespace quillmarsh
{

/// Two samples of an axis with their weights.
struct AxisTaps
{
    unsigned int first, second;
    float weight0, weight1;
};

/// Returns the places in the source for one sample of the destination after the other. Positions are summed in single
/// precision, which over many samples can exceed the source; a tap then stays at the last sample.
class AxisWalk
{
public:
    AxisWalk(unsigned int dstCount, unsigned int srcCount)
        : step_(1.0f / static_cast<float>(dstCount + 1.0)),
          u_(step_ * 0.5f),
          srcCount_(static_cast<float>(srcCount)),
          last_(srcCount - 1)
    {
    }

    /// Returns the nearest sample of the next position.
    unsigned int NextNearest()
    {
        float const shifted = NextPosition() + 0.5f;
        return AtMostLast(static_cast<std::uint64_t>(shifted));
    }

    /// Returns the two adjacent samples of the next position.
    AxisTaps NextLinear()
    {
        float const position = NextPosition();
        auto const index = static_cast<std::uint64_t>(position);
        float const fraction = position - static_cast<float>(index);
        return {AtMostLast(index), AtMostLast(index + 1), 1.0f - fraction, fraction};
    }

private:
    float NextPosition()
    {
        float const position = u_ * srcCount_;
        u_ += step_;
        return position;
    }
    unsigned int AtMostLast(std::uint64_t index) const
    {
        return static_cast<unsigned int>(std::min<std::uint64_t>(index, last_));
    }

    float step_, u_, srcCount_;
    unsigned int last_;
};

} // namespace quillmarsh

#endif
