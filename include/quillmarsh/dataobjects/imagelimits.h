// The largest size of pictures that a program loads.
#ifndef QUILLMARSH_DATAOBJECTS_IMAGELIMITS_H
#define QUILLMARSH_DATAOBJECTS_IMAGELIMITS_H

#include <quillmarsh/platform/types.h>

#include <cstdint>

/// The limit of all decoders of images. Any thread may call these functions.
namespace quillmarsh::image_limits
{

/// The default: 8192 rows of 8192 pixels. A decoder uses up to 16 bytes for each pixel (its own picture, and the 4
/// bytes of the result), so a gigabyte of memory is enough.
inline constexpr std::uint64_t s_defaultMaxPixels = std::uint64_t{1} << 26;

/// Sets the largest number of pixels of images that are loaded from now on. A decoder refuses a larger image before it
/// allocates memory for it, and tells eCodecFailure::e_tooLarge.
QUILLMARSH_API void SetMaxPixels(std::uint64_t maxPixels);
/// Returns the largest number of pixels; s_defaultMaxPixels at first.
QUILLMARSH_API std::uint64_t GetMaxPixels();

/// Returns a message for an image that is larger than GetMaxPixels().
QUILLMARSH_API string DescribeExcess(std::uint64_t numRows, std::uint64_t numColumns);

} // namespace quillmarsh::image_limits

#endif
