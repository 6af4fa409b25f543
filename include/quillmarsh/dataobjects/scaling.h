// Changes of size with filters that weigh every sample under them.
#ifndef QUILLMARSH_DATAOBJECTS_SCALING_H
#define QUILLMARSH_DATAOBJECTS_SCALING_H

#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/volumebase.h>

namespace quillmarsh
{

/// Filters of ScaleSamples().
enum eScaleFilter
{
    /// Mean of the samples that a new sample covers, weighed by how much it covers of each. The one for making data
    /// smaller; for larger data, samples are repeated. Exact where the sizes are whole multiples of the new ones: the
    /// mean of bytes is then the true mean, with halves rounded up.
    e_scale_area,
    /// Windowed sinc over three new samples to each side. Sharper than the mean, at the price of faint seams along hard
    /// edges.
    e_scale_lanczos
};

/// @name Scaling
/// Fill `dst` with the samples of `src` at the size of `dst`, for all formats that have a name here. Every component is
/// filtered by itself; components outside their range are clamped to it (0..1 for floats), and the unused byte of
/// X8R8G8B8 becomes 255. The edges of the data get no samples from outside. Same bits on every machine.
///
/// False, with nothing changed, for a format that is not known. Asserts "Destination is empty.", "Source is empty." and
/// "Sample-format mismatch.". `dst` and `src` must not share memory. Any thread.
/// @{
QUILLMARSH_API bool ScaleSamples(SignalBase &dst, SignalBase const &src, eScaleFilter filter);
QUILLMARSH_API bool ScaleSamples(ImageBase &dst, ImageBase const &src, eScaleFilter filter);
QUILLMARSH_API bool ScaleSamples(VolumeBase &dst, VolumeBase const &src, eScaleFilter filter);
/// @}

} // namespace quillmarsh

#endif
