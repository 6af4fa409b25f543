// Work on data of any kind: resampling, formats, flips, mipmaps.
#ifndef QUILLMARSH_DATAOBJECTS_SAMPLEDDATAOPERATIONS_H
#define QUILLMARSH_DATAOBJECTS_SAMPLEDDATAOPERATIONS_H

#include <quillmarsh/dataobjects/sampleddata.h>

#include <quillmarsh/dataobjects/signaloperations.h>

namespace quillmarsh::sampled_data
{

// New data are opaque where the library leaves bytes alone. What cannot be done throws a DataException.

/// Filter by its name, "nearest" or "linear"; nothing for any other text.
QUILLMARSH_API std::optional<eResampleFilter> FindFilter(string const &name);

/// Size as N samples, as WxH columns and rows, or as WxHxD columns, rows and layers; nothing for any other text, and
/// where a number is 0.
QUILLMARSH_API std::optional<Dimensions> ParseSize(string const &text);

/// As many dimensions as `data` has, none of them 0.
QUILLMARSH_API SampledData Resample(SampledData const &data, Dimensions const &dimensions, eResampleFilter filter);

/// Throws for two different formats without a registered transfer; the message names both.
QUILLMARSH_API void RequireTransfer(eSampleFormat target, eSampleFormat source);
/// Through the transfers that are registered. Data that have the format already, or that cannot get it, stay as they
/// are.
QUILLMARSH_API void ChangeFormat(SampledData &data, eSampleFormat format);

/// Axis along which samples are turned over. A signal has columns only.
enum class eSampleAxis
{
    e_layers,
    e_rows,
    e_columns
};

/// Turns over the samples along an axis that the data have.
QUILLMARSH_API void Flip(SampledData &data, eSampleAxis axis);
/// Whether data of so many dimensions have the axis.
QUILLMARSH_API bool HasAxis(std::size_t numDimensions, eSampleAxis axis);
/// "layers", "rows" or "columns".
QUILLMARSH_API char const *GetAxisName(eSampleAxis axis);

/// Levels of a mipmap chain in a format, the largest first.
QUILLMARSH_API std::vector<SampledData> BuildMipmaps(SampledData const &data, eSampleFormat format);

} // namespace quillmarsh::sampled_data

#endif
