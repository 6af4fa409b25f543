// The channels of a sample format: names, ranges, values.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_SAMPLES_CHANNELS_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_SAMPLES_CHANNELS_H

#include <quillmarsh/dataobjects/sampleformats.h>
#include <quillmarsh/platform/types.h>

#include <span>

namespace viewer
{

/// One channel of a format. Values have the numbers of the format: 0..255 for bytes, 0..15, 0..31 or 0..1 for fields of
/// words, and floats as they are.
struct Channel
{
    /// "red", "green", "blue", "luminance", "alpha".
    char const *name;
    /// Largest value of the nominal range; 1 for floats.
    double largest;
    bool isFloat;
    /// Reads the channel of a sample.
    double (*read)(unsigned char const *sample);
    /// Its lowest bit in the word that the bytes of a sample are, lowest byte first; 0 for floats. It takes as many bits
    /// as `largest` has.
    unsigned int shift = 0;
};

/// Returns the channels in the order red, green, blue, luminance, alpha; none for a format that is not known.
std::span<Channel const> GetChannels(quillmarsh::eSampleFormat format);
/// Returns the index of a channel by name; -1 if the format has no such channel.
int FindChannel(quillmarsh::eSampleFormat format, quillmarsh::string const &name);
/// Returns the values of a sample as people read them, such as "R 12 G 200 B 7 A 255", "L 0.1234".
quillmarsh::string FormatSample(quillmarsh::eSampleFormat format, unsigned char const *sample);

} // namespace viewer

#endif
