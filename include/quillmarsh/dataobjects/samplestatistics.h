// Statistics of samples, and differences between two sets of data.
#ifndef QUILLMARSH_DATAOBJECTS_SAMPLESTATISTICS_H
#define QUILLMARSH_DATAOBJECTS_SAMPLESTATISTICS_H

#include <quillmarsh/dataobjects/sampleddata.h>

#include <cstdint>

namespace quillmarsh::sampled_data
{

// Values have the units of their channel: 0..255 for bytes, 0..15, 0..31 or 0..1 for the fields of 16-bit words, and
// floats as they are, with a nominal range of 0..1. NaN counts in no figure except ChannelStatistics::numNaN. Each
// function throws a DataException for a sample format without known channels. Any thread.

/// Figures of one channel.
struct ChannelStatistics
{
    /// "luminance", "alpha", "red", "green" or "blue".
    string name;
    /// Largest value of the channel's nominal range.
    double largest = 0;
    double minimum = 0;
    double maximum = 0;
    double mean = 0;
    /// Standard deviation of all values, not of a sample of them.
    double deviation = 0;
    /// Number of samples with each value. For floats, 256 equal parts of 0..1; values outside count in the first or
    /// last.
    std::vector<std::uint64_t> histogram;
    /// Number of floats that are not a number.
    std::uint64_t numNaN = 0;
};

/// Returns the figures of each channel: red, green, blue, luminance, alpha.
QUILLMARSH_API std::vector<ChannelStatistics> ComputeStatistics(SampledData const &data);

/// Difference between two channels.
struct ChannelDifference
{
    string name;
    double largest = 0;  ///< as in ChannelStatistics
    double greatest = 0; ///< greatest absolute difference; infinite where only one of two values is NaN
    double mean = 0;     ///< mean absolute difference
    /// Peak signal-to-noise ratio in decibels, against the nominal range; infinite for equal channels.
    double psnr = 0;
};

/// Difference between two sets of data.
struct Difference
{
    std::vector<ChannelDifference> channels;
    double greatest = 0; ///< of all channels
    double mean = 0;     ///< of all channels
    double psnr = 0;     ///< of all channels, each against its own range
};

/// Compares data of the same format and dimensions. Throws a DataException that names both formats or sizes otherwise.
QUILLMARSH_API Difference Compare(SampledData const &a, SampledData const &b);

/// Returns a picture of the differences in L8: 0 where the samples are equal, 255 at the greatest difference of any
/// channel, which is taken against its range. Throws as Compare() does.
QUILLMARSH_API SampledData MakeDifferencePicture(SampledData const &a, SampledData const &b);

} // namespace quillmarsh::sampled_data

#endif
