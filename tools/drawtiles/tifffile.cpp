#include "tifffile.h"

#include <cstdint>

namespace drawtiles
{
namespace
{

void PutShort(std::string &bytes, unsigned int value)
{
    bytes += static_cast<char>(value & 255);
    bytes += static_cast<char>(value >> 8 & 255);
}

void PutLong(std::string &bytes, std::uint32_t value)
{
    PutShort(bytes, value & 0xFFFF);
    PutShort(bytes, value >> 16);
}

std::string MakeRow(look_shapes::Sheet const &sheet, unsigned int y)
{
    std::string row;
    for (unsigned int x = 0; x < sheet.GetWidth(); ++x)
    {
        row.append(3, static_cast<char>(sheet.Get(x, y)));
        row += '\xFF';
    }
    return row;
}

/// Numbers of the format's entries and of their types.
enum eTag : unsigned int
{
    e_tag_width = 256,
    e_tag_height = 257,
    e_tag_bits = 258,
    e_tag_compression = 259,
    e_tag_colors = 262,
    e_tag_stripOffset = 273,
    e_tag_samples = 277,
    e_tag_rowsPerStrip = 278,
    e_tag_stripSize = 279,
    e_tag_extraSample = 338
};
enum eType : unsigned int
{
    e_type_short = 3,
    e_type_long = 4
};

struct Entry
{
    eTag tag;
    eType type;
    std::uint32_t count;
    std::uint32_t value;
};

} // namespace

std::string MakeTiffFile(look_shapes::Sheet const &sheet)
{
    std::string pixels;
    for (unsigned int y = 0; y < sheet.GetHeight(); ++y)
        pixels += MakeRow(sheet, y);

    constexpr std::uint32_t numEntries = 10;
    constexpr std::uint32_t directory = 8;
    constexpr std::uint32_t bits = directory + 2 + numEntries * 12 + 4;
    constexpr std::uint32_t numChannels = 4;
    constexpr std::uint32_t strip = bits + numChannels * 2;
    constexpr std::uint32_t notCompressed = 1, colors = 2, plainAlpha = 2;
    Entry const entries[numEntries] = {
        {e_tag_width, e_type_long, 1, sheet.GetWidth()},
        {e_tag_height, e_type_long, 1, sheet.GetHeight()},
        {e_tag_bits, e_type_short, numChannels, bits},
        {e_tag_compression, e_type_short, 1, notCompressed},
        {e_tag_colors, e_type_short, 1, colors},
        {e_tag_stripOffset, e_type_long, 1, strip},
        {e_tag_samples, e_type_short, 1, numChannels},
        {e_tag_rowsPerStrip, e_type_long, 1, sheet.GetHeight()},
        {e_tag_stripSize, e_type_long, 1, static_cast<std::uint32_t>(pixels.size())},
        {e_tag_extraSample, e_type_short, 1, plainAlpha},
    };
    std::string file = "II";
    PutShort(file, 42);
    PutLong(file, directory);
    PutShort(file, numEntries);
    for (Entry const &entry : entries)
    {
        PutShort(file, entry.tag);
        PutShort(file, entry.type);
        PutLong(file, entry.count);
        PutLong(file, entry.value);
    }
    PutLong(file, 0);
    for (std::uint32_t i = 0; i < numChannels; ++i)
        PutShort(file, 8);
    return file + pixels;
}

} // namespace drawtiles
