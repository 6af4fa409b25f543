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
    /// Of blue, green, red and alpha; 0 for none.
    std::array<std::uint32_t, 4> masks = {};
    std::vector<BmpPixel> palette;

    /// Bytes of a row that is not stored in runs.
    std::uint64_t GetRowByteSize() const { return (std::uint64_t{numColumns} * pixelBits + 31) / 32 * 4; }
    bool HasRuns() const { return compression == e_bmp_runs8 || compression == e_bmp_runs4; }
};

/// Reads header, masks and palette. False if they are not those of a picture that we know.
bool ReadBmpHeader(std::FILE *file, BmpHeader &header);

/// Writes the header of a picture whose rows go from the bottom to the top: 24 bits, or 32 with alpha. False if it is
/// too large for the format.
bool WriteBmpHeader(std::FILE *file, std::uint32_t numRows, std::uint32_t numColumns, bool hasAlpha);

} // namespace quillmarsh::platform

#endif
