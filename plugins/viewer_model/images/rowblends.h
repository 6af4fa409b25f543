// Rows of samples picked from rows of an image, one for each pixel.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_ROWBLENDS_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_ROWBLENDS_H

#include <quillmarsh/dataobjects/sampleformats.h>

#include <span>

namespace viewer
{

/// Weights between two samples are counted in such parts.
constexpr unsigned int s_blendParts = 128;

/// Place of a pixel on one axis: between two samples.
struct SamplePlace
{
    unsigned int index;
    /// The next sample, or the same one if it has no weight.
    unsigned int next;
    /// Of the next sample, less than s_blendParts.
    unsigned int weight;
};

/// Copies the first sample of each place.
void PickSamples(unsigned char *samples, unsigned char const *row, unsigned int sampleByteSize,
                 std::span<SamplePlace const> places);

/// Blends two rows into samples between them.
class RowBlender
{
public:
    virtual ~RowBlender() = default;
    /// Writes a sample for each place; these are not none, and their samples never go back. `weight` is that of the lower
    /// row. Bytes and the fields of words are rounded to the nearest, halves up; floats are blended first between the rows.
    virtual void Blend(unsigned char *samples, unsigned char const *upper, unsigned char const *lower,
                       unsigned int weight, std::span<SamplePlace const> places) = 0;
};

/// Returns the blender for a format; null for a format that is not known.
quillmarsh::AutoPtr<RowBlender> MakeRowBlender(quillmarsh::eSampleFormat format);

} // namespace viewer

#endif
