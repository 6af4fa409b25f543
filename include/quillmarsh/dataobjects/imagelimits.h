// How large the pictures are that a program loads.
#ifndef QUILLMARSH_DATAOBJECTS_IMAGELIMITS_H
#define QUILLMARSH_DATAOBJECTS_IMAGELIMITS_H

#include <quillmarsh/platform/types.h>

#include <cstdint>

/// One limit for all decoders of images. Any thread may call everything here.
namespace quillmarsh::image_limits
{

/// 8192 rows of 8192 pixels. A decoder takes up to 16 bytes for a pixel while it works (its own picture, and the 4 bytes
/// of the result), so that a gigabyte of memory suffices.
inline constexpr std::uint64_t s_defaultMaxPixels = std::uint64_t{1} << 26;

/// Sets the largest number of pixels of an image that is loaded from now on. A decoder refuses a larger one before it
/// takes memory for it, and tells eCodecFailure::e_tooLarge.
QUILLMARSH_API void SetMaxPixels(std::uint64_t maxPixels);
/// The largest number of pixels; s_defaultMaxPixels at first.
QUILLMARSH_API std::uint64_t GetMaxPixels();

/// Words for an image that is larger than GetMaxPixels().
QUILLMARSH_API string DescribeExcess(std::uint64_t numRows, std::uint64_t numColumns);

} // namespace quillmarsh::image_limits

#endif
