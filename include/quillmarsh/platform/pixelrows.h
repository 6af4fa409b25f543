// Pixels in memory, in the form that drawing, windows and image files use.
#ifndef QUILLMARSH_PLATFORM_PIXELROWS_H
#define QUILLMARSH_PLATFORM_PIXELROWS_H

#include <cstddef>

namespace quillmarsh::platform
{

/// Rows of pixels, the upper one first; the memory is borrowed. A pixel has four bytes: blue, green, red, and alpha or
/// an unused byte. As a word it is A8R8G8B8.
struct PixelRows
{
    unsigned char *first;
    /// Number of bytes from one row to the next; may be negative.
    std::ptrdiff_t stride;
    unsigned int numRows;
    unsigned int numColumns;
    /// False when the fourth byte is unused, which makes all pixels opaque.
    bool hasAlpha;

    /// Returns the first byte of a row.
    unsigned char *GetRow(std::size_t row) const { return first + stride * static_cast<std::ptrdiff_t>(row); }
};

} // namespace quillmarsh::platform

#endif
