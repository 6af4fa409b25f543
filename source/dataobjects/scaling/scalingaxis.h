// Weights of a scaling along one axis.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_SCALING_SCALINGAXIS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_SCALING_SCALINGAXIS_H

#include <quillmarsh/dataobjects/scaling.h>

#include <cstddef>
#include <vector>

namespace quillmarsh
{

/// The samples of the source that a sample of the destination is made of: consecutive ones, each with a weight. The
/// weights of a sample add up to 1 as far as floats can.
struct ScalingAxis
{
    struct Taps
    {
        unsigned int first, count;
        float const *weights;
    };

    std::vector<unsigned int> first; ///< for each sample of the destination
    std::vector<std::size_t> start;  ///< of its weights, and the end of the last ones
    std::vector<float> weights;

    std::size_t GetCount() const { return first.size(); }
    Taps GetTaps(std::size_t i) const
    {
        return {first[i], static_cast<unsigned int>(start[i + 1] - start[i]), weights.data() + start[i]};
    }
};

/// Returns the weights for two counts, neither of which is 0.
ScalingAxis MakeScalingAxis(unsigned int dstCount, unsigned int srcCount, eScaleFilter filter);

} // namespace quillmarsh

#endif
