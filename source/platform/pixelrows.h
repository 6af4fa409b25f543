// Pixels in memory, as drawing and image files take them.
#ifndef QUILLMARSH_SOURCE_PLATFORM_PIXELROWS_H
#define QUILLMARSH_SOURCE_PLATFORM_PIXELROWS_H

#include <cstddef>

namespace quillmarsh::platform
{

/// Rows of pixels that somebody else owns. A pixel is blue, green, red, and a byte that is alpha or unused.
struct PixelRows
{
    unsigned char *first;
    /// Bytes from one row to the next; may be negative.
    std::ptrdiff_t stride;
    unsigned int numRows;
    unsigned int numColumns;
    bool hasAlpha;

    unsigned char *GetRow(std::size_t row) const { return first + stride * static_cast<std::ptrdiff_t>(row); }
};

} // namespace quillmarsh::platform

#endif
