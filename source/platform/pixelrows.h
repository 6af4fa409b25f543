// Pixels in memory, in the form that drawing and image files use.
#ifndef QUILLMARSH_SOURCE_PLATFORM_PIXELROWS_H
#define QUILLMARSH_SOURCE_PLATFORM_PIXELROWS_H

#include <cstddef>

namespace quillmarsh::platform
{

/// Rows of pixels; the memory is borrowed. A pixel has four bytes: blue, green, red, and alpha or an unused byte.
struct PixelRows
{
    unsigned char *first;
    /// Number of bytes from one row to the next; may be negative.
    std::ptrdiff_t stride;
    unsigned int numRows;
    unsigned int numColumns;
    bool hasAlpha;

    unsigned char *GetRow(std::size_t row) const { return first + stride * static_cast<std::ptrdiff_t>(row); }
};

} // namespace quillmarsh::platform

#endif
