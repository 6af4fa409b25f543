// Headers of BMP files, of all versions.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_BMPHEADER_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_BMPHEADER_H

#include <array>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace quillmarsh::platform
{

inline constexpr std::uint32_t s_bmpFileHeaderSize = 14;

enum eBmpCompression : std::uint32_t
{
    e_bmp_plain = 0,
    e_bmp_runs8 = 1,
    e_bmp_runs4 = 2,
    e_bmp_masks = 3,
    e_bmp_alphaMasks = 6
};

/// Blue, green, red, alpha.
using BmpPixel = std::array<unsigned char, 4>;

struct BmpHeader
{
    std::uint32_t pixelOffset = 0;
    std::uint32_t numRows = 0;
    std::uint32_t numColumns = 0;
    bool isTopDown = false;
    unsigned int pixelBits = 0;
    std::uint32_t compression = e_bmp_plain;
    /// Masks of blue, green, red and alpha; 0 for a missing component.
    std::array<std::uint32_t, 4> masks = {};
    std::vector<BmpPixel> palette;
    /// @name Resolution; 0 if the header has none
    /// @{
    std::uint32_t pixelsPerMeterX = 0;
    std::uint32_t pixelsPerMeterY = 0;
    /// @}

    /// Returns the number of bytes in a row that is not run-length encoded.
    std::uint64_t GetRowByteSize() const { return (std::uint64_t{numColumns} * pixelBits + 31) / 32 * 4; }
    bool HasRuns() const { return compression == e_bmp_runs8 || compression == e_bmp_runs4; }
};

/// Reads header, masks and palette. Returns false when the reader does not support them.
bool ReadBmpHeader(std::FILE *file, BmpHeader &header);

/// Writes the header of a picture with its rows from bottom to top, and 24 bits for a pixel, or 32 with alpha. Returns
/// false when the picture is too large for the format.
bool WriteBmpHeader(std::FILE *file, std::uint32_t numRows, std::uint32_t numColumns, bool hasAlpha);

} // namespace quillmarsh::platform

#endif
