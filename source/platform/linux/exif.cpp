#include "source/platform/linux/imagefile.h"

#include <span>

namespace quillmarsh::platform
{
namespace
{

/// Numbers at any place of Exif data; 0 past their end.
class ExifNumbers
{
public:
    ExifNumbers(std::span<unsigned char const> bytes, bool isBigEndian) : bytes_(bytes), isBigEndian_(isBigEndian) {}

    std::uint32_t Get(std::size_t at, std::size_t size) const
    {
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < size && at < bytes_.size() && size <= bytes_.size() - at; ++i)
            number |= std::uint32_t{bytes_[at + i]} << 8 * (isBigEndian_ ? size - 1 - i : i);
        return number;
    }

private:
    std::span<unsigned char const> bytes_;
    bool isBigEndian_;
};

} // namespace

ExifFacts ReadExif(unsigned char const *bytes, std::size_t size)
{
    constexpr unsigned int orientationTag = 0x112;
    constexpr std::size_t entrySize = 12;
    ExifFacts facts;
    if (size < 8)
        return facts;
    ExifNumbers const numbers({bytes, size}, bytes[0] == 'M');
    std::size_t entry = numbers.Get(4, 4);
    std::uint32_t const numEntries = numbers.Get(entry, 2);
    entry += 2;
    for (std::uint32_t i = 0; i < numEntries && entry < size; ++i, entry += entrySize)
    {
        std::uint32_t const value = numbers.Get(entry + 8, 2);
        if (numbers.Get(entry, 2) == orientationTag && value >= 1 && value <= 8)
            facts.orientation = value;
    }
    return facts;
}

} // namespace quillmarsh::platform
