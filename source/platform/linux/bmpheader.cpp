#include "source/platform/linux/bmpheader.h"

#include <algorithm>
#include <limits>

namespace quillmarsh::platform
{
namespace
{

using std::uint32_t;

/// Sizes of the header's versions. Sizes between the second and the third are shortened forms of the second.
constexpr uint32_t s_coreHeaderSize = 12;
constexpr uint32_t s_shortestHeaderSize = 16;
constexpr uint32_t s_infoHeaderSize = 40;
constexpr uint32_t s_masksHeaderSize = 52;
constexpr uint32_t s_alphaMaskHeaderSize = 56;
constexpr uint32_t s_otherSystemHeaderSize = 64;
constexpr uint32_t s_headerSize4 = 108;
constexpr uint32_t s_headerSize5 = 124;

constexpr uint32_t s_sRGB = 0x73524742;

/// Numbers of a header, lowest byte first. Fields that a short header lacks are 0.
class Fields
{
public:
    bool Read(std::FILE *file, std::size_t at, std::size_t size)
    {
        return std::fread(bytes_.data() + at, 1, size, file) == size;
    }
    uint32_t Word(std::size_t at) const { return bytes_[at] | static_cast<uint32_t>(bytes_[at + 1] << 8); }
    uint32_t Long(std::size_t at) const { return Word(at) | Word(at + 2) << 16; }

private:
    std::array<unsigned char, s_headerSize5> bytes_ = {};
};

bool IsKnownSize(uint32_t size)
{
    return size == s_coreHeaderSize || (size >= s_shortestHeaderSize && size <= s_otherSystemHeaderSize) ||
           size == s_headerSize4 || size == s_headerSize5;
}

bool ReadDimensions(Fields const &fields, bool isCore, BmpHeader &header)
{
    if (isCore)
    {
        header.numColumns = fields.Word(4);
        header.numRows = fields.Word(6);
        header.pixelBits = fields.Word(10);
        return fields.Word(8) == 1;
    }
    header.numColumns = fields.Long(4);
    header.numRows = fields.Long(8);
    header.pixelBits = fields.Word(14);
    header.compression = fields.Long(16);
    header.isTopDown = header.numRows >> 31 != 0;
    if (header.isTopDown)
        header.numRows = 0 - header.numRows;
    return fields.Word(12) == 1;
}

bool IsKnownKind(BmpHeader const &header, uint32_t headerSize)
{
    switch (header.compression)
    {
    case e_bmp_plain:
        return header.pixelBits == 1 || header.pixelBits == 4 || header.pixelBits == 8 || header.pixelBits == 16 ||
               header.pixelBits == 24 || header.pixelBits == 32;
    case e_bmp_runs8:
        return header.pixelBits == 8 && !header.isTopDown;
    case e_bmp_runs4:
        return header.pixelBits == 4 && !header.isTopDown;
    case e_bmp_masks:
    case e_bmp_alphaMasks:
        // In the other system's header these numbers have another meaning.
        return (header.pixelBits == 16 || header.pixelBits == 32) && headerSize >= s_infoHeaderSize &&
               headerSize != s_otherSystemHeaderSize;
    default:
        return false;
    }
}

/// Reads the masks, or sets the default ones. `position` is the position in the file; it advances by the bytes read.
bool ReadMasks(std::FILE *file, Fields &fields, uint32_t headerSize, BmpHeader &header, uint32_t &position)
{
    if (header.compression != e_bmp_masks && header.compression != e_bmp_alphaMasks)
    {
        if (header.pixelBits == 16)
            header.masks = {0x1F, 0x1F << 5, 0x1F << 10, 0};
        else
            header.masks = {0xFF, 0xFF << 8, 0xFF << 16, 0};
        return true;
    }
    bool hasAlpha = headerSize >= s_alphaMaskHeaderSize;
    if (headerSize < s_masksHeaderSize)
    {
        hasAlpha = header.compression == e_bmp_alphaMasks;
        uint32_t const size = hasAlpha ? 16 : 12;
        if (!fields.Read(file, s_infoHeaderSize, size))
            return false;
        position += size;
    }
    header.masks = {fields.Long(48), fields.Long(44), fields.Long(40), hasAlpha ? fields.Long(52) : 0};
    return true;
}

bool ReadPalette(std::FILE *file, uint32_t numColors, bool isCore, uint32_t position, BmpHeader &header)
{
    if (header.pixelBits > 8)
        return true;
    uint32_t const largest = 1u << header.pixelBits;
    uint32_t const entrySize = isCore ? 3 : 4;
    numColors = numColors == 0 ? largest : std::min(numColors, largest);
    // The palette ends where the pixels begin.
    numColors = std::min(numColors, (std::max(header.pixelOffset, position) - position) / entrySize);
    header.palette.resize(numColors);
    for (BmpPixel &color : header.palette)
    {
        if (std::fread(color.data(), 1, entrySize, file) != entrySize)
            return false;
        color[3] = 0xFF;
    }
    return true;
}

void Put(unsigned char *bytes, uint32_t value, std::size_t size = 4)
{
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<unsigned char>(value >> 8 * i);
}

} // namespace

bool ReadBmpHeader(std::FILE *file, BmpHeader &header)
{
    Fields fileHeader;
    Fields fields;
    if (!fileHeader.Read(file, 0, s_bmpFileHeaderSize) || !fields.Read(file, 0, 4))
        return false;
    header.pixelOffset = fileHeader.Long(10);
    uint32_t const size = fields.Long(0);
    if (!IsKnownSize(size) || !fields.Read(file, 4, size - 4))
        return false;
    bool const isCore = size == s_coreHeaderSize;
    uint32_t position = s_bmpFileHeaderSize + size;
    if (size >= s_infoHeaderSize)
    {
        header.pixelsPerMeterX = fields.Long(24);
        header.pixelsPerMeterY = fields.Long(28);
    }
    return ReadDimensions(fields, isCore, header) && IsKnownKind(header, size) &&
           ReadMasks(file, fields, size, header, position) &&
           ReadPalette(file, isCore ? 0 : fields.Long(32), isCore, position, header) && header.pixelOffset >= position;
}

bool WriteBmpHeader(std::FILE *file, uint32_t numRows, uint32_t numColumns, bool hasAlpha)
{
    BmpHeader header;
    header.numColumns = numColumns;
    header.pixelBits = hasAlpha ? 32 : 24;
    uint32_t const size = hasAlpha ? s_headerSize4 : s_infoHeaderSize;
    uint32_t const offset = s_bmpFileHeaderSize + size;
    constexpr std::uint64_t largest = std::numeric_limits<uint32_t>::max();
    if (header.GetRowByteSize() > (largest - offset) / numRows)
        return false;
    auto const numBytes = static_cast<uint32_t>(header.GetRowByteSize() * numRows);

    std::array<unsigned char, s_bmpFileHeaderSize + s_headerSize4> bytes = {'B', 'M'};
    Put(&bytes[2], offset + numBytes);
    Put(&bytes[10], offset);
    unsigned char *const fields = &bytes[s_bmpFileHeaderSize];
    Put(fields, size);
    Put(fields + 4, numColumns);
    Put(fields + 8, numRows);
    Put(fields + 12, 1, 2);
    Put(fields + 14, header.pixelBits, 2);
    Put(fields + 20, numBytes);
    if (hasAlpha)
    {
        constexpr uint32_t masks[] = {0xFF << 16, 0xFF << 8, 0xFF, 0xFFu << 24, s_sRGB};
        Put(fields + 16, e_bmp_masks);
        for (std::size_t i = 0; i < std::size(masks); ++i)
            Put(fields + s_infoHeaderSize + 4 * i, masks[i]);
    }
    return std::fwrite(bytes.data(), 1, offset, file) == offset;
}

} // namespace quillmarsh::platform
