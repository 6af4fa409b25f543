// Operations on data of any kind: resampling, formats, flips, mipmaps.
#ifndef QUILLMARSH_DATAOBJECTS_SAMPLEDDATAOPERATIONS_H
#define QUILLMARSH_DATAOBJECTS_SAMPLEDDATAOPERATIONS_H

#include <quillmarsh/dataobjects/sampleddata.h>

#include <quillmarsh/dataobjects/signaloperations.h>

namespace quillmarsh::sampled_data
{

// In new data, bytes that an operation does not write are opaque. An operation that fails throws a DataException.

/// Filters for changes of size.
enum class eSizeFilter
{
    e_nearest, ///< the nearest sample
    e_linear,  ///< weighs the two nearest samples of each axis, even for much smaller data
    e_area,    ///< e_scale_area
    e_lanczos  ///< e_scale_lanczos
};

/// Returns the names of all filters in the order of the enumeration: "nearest", "linear", "area", "lanczos".
QUILLMARSH_API std::vector<string> GetFilterNames();
/// Returns the filter with a name; nothing for any other text.
QUILLMARSH_API std::optional<eSizeFilter> FindFilter(string const &name);

/// Reads a size: N samples, WxH columns and rows, or WxHxD columns, rows and layers. Nothing for any other text, and if
/// a number is 0.
QUILLMARSH_API std::optional<Dimensions> ParseSize(string const &text);

/// Returns the data at another size. `dimensions` must have as many numbers as those of `data`, and none may be 0.
QUILLMARSH_API SampledData Resample(SampledData const &data, Dimensions const &dimensions, eSizeFilter filter);

/// Throws a DataException for two different formats without registered transfers from one to the other, directly or by
/// way of a third format; the message names both.
QUILLMARSH_API void RequireTransfer(eSampleFormat target, eSampleFormat source);
/// Changes the format of data by the registered transfers, by way of a third format where there is no direct one. Leaves data unchanged that already have the format. Throws
/// as RequireTransfer() does, and leaves the data unchanged then.
QUILLMARSH_API void ChangeFormat(SampledData &data, eSampleFormat format);

/// Axis along which samples are reversed. A signal has columns only.
enum class eSampleAxis
{
    e_layers,
    e_rows,
    e_columns
};

/// Reverses the samples along an axis, which the data must have.
QUILLMARSH_API void Flip(SampledData &data, eSampleAxis axis);
/// True when data with this number of dimensions have the axis.
QUILLMARSH_API bool HasAxis(std::size_t numDimensions, eSampleAxis axis);
/// Returns "layers", "rows" or "columns".
QUILLMARSH_API char const *GetAxisName(eSampleAxis axis);

/// Returns the levels of a mipmap chain in a format, the largest first. The dimensions of `data` must be powers of two.
/// Each level is filtered from the one before it, in the format of `data`.
QUILLMARSH_API std::vector<SampledData> BuildMipmaps(SampledData const &data, eSampleFormat format,
                                                     eSizeFilter filter = eSizeFilter::e_linear);

} // namespace quillmarsh::sampled_data

#endif
