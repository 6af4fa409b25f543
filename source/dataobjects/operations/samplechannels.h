// The channels of samples: where their values are, and how large they can be.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_SAMPLECHANNELS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_SAMPLECHANNELS_H

#include <quillmarsh/dataobjects/sampleddata.h>

#include <cstring>
#include <span>

namespace quillmarsh::sampled_data
{

/// One channel of a sample of 1 to 4 bytes, which is read as a little-endian number.
struct SampleChannel
{
    char const *name;
    unsigned int shift;
    /// Largest value; 0 for a float.
    unsigned int largest;

    bool IsFloat() const { return largest == 0; }
};

/// Returns the channels of a format: red, green, blue, luminance, alpha. None for an unknown format.
std::span<SampleChannel const> GetSampleChannels(unsigned int format);

/// Reads a channel that is no float.
inline unsigned int ReadChannel(SampleChannel const &channel, unsigned char const *sample, std::size_t size)
{
    unsigned int word = 0;
    for (std::size_t i = 0; i < size; ++i)
        word |= static_cast<unsigned int>(sample[i]) << 8 * i;
    return word >> channel.shift & channel.largest;
}

/// Reads a float.
inline float ReadFloat(unsigned char const *sample)
{
    float value = 0;
    std::memcpy(&value, sample, sizeof(value));
    return value;
}

} // namespace quillmarsh::sampled_data

#endif
