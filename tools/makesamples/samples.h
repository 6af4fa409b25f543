// The data set: what to look at when nobody has data of his own.
#ifndef QUILLMARSH_TOOLS_MAKESAMPLES_SAMPLES_H
#define QUILLMARSH_TOOLS_MAKESAMPLES_SAMPLES_H

#include <quillmarsh/dataobjects/datafiles.h>

#include <span>

namespace makesamples
{

using quillmarsh::sampled_data::SampledData;

/// A file of the data set.
struct Sample
{
    /// In the folder of the data set, with "/" between the parts.
    char const *fileName;
    SampledData (*make)();
    /// Of a JPEG.
    unsigned int quality = 90;
};

/// @name The files by their kind
/// @{
std::span<Sample const> GetPictures();
std::span<Sample const> GetSignals();
std::span<Sample const> GetVolumes();
/// @}

} // namespace makesamples

#endif
