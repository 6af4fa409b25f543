// Means of two by two samples of all formats, a row at a time.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_ROWMEANS_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_ROWMEANS_H

#include <quillmarsh/dataobjects/sampleformats.h>

namespace viewer
{

/// Writes the means of two by two samples of two rows with `numColumns` samples: half as many, rounded up. An odd last
/// column is taken twice. Each component, and each field of a word, has a mean of its own with halves rounded up;
/// floats are added in double precision.
using MeanRow = void (*)(unsigned char *means, unsigned char const *upper, unsigned char const *lower,
                         unsigned int numColumns);

/// Returns the function for a format; null for a format that is not known.
MeanRow FindMeanRow(quillmarsh::eSampleFormat format);

} // namespace viewer

#endif
