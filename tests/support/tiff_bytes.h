// Makes TIFF files byte by byte.
#ifndef QUILLMARSH_TESTS_SUPPORT_TIFF_BYTES_H
#define QUILLMARSH_TESTS_SUPPORT_TIFF_BYTES_H

#include "tests/support/package_bytes.h"

#include <vector>

namespace quillmarsh::tests
{

/// A page of an uncompressed TIFF file with little-endian numbers.
struct TiffPage
{
    unsigned int numRows, numColumns;
    unsigned int bits;
    /// Bytes of the components, pixel by pixel: one for grey, three for colours.
    string components;
    unsigned int numComponents = 1;
    bool areFloats = false;
    unsigned int orientation = 1;
    /// 0 if white is 0, 1 if black is 0; 2 for colours.
    unsigned int photometric = 1;
};

/// Makes a file with some pages.
inline string TiffBytes(std::vector<TiffPage> const &pages)
{
    constexpr unsigned int shortType = 3, longType = 4;
    string bytes("II*\0", 4);
    bytes += NumberBytes(8);
    for (TiffPage const &page : pages)
    {
        // The pixels and the number of bits of each component lie between this directory and the next.
        struct Entry
        {
            unsigned int tag, type, count, value;
        };
        std::size_t const numEntries = 11, begin = bytes.size(), data = begin + 2 + numEntries * 12 + 4;
        auto const pixels = static_cast<unsigned int>(data + 16);
        bool const isWide = page.numComponents > 2;
        auto const bits = isWide ? static_cast<unsigned int>(data) : page.bits;
        unsigned int const format = page.areFloats ? 3 : 1;
        auto const formats = isWide ? static_cast<unsigned int>(data + 8) : format;
        Entry const entries[] = {{256, longType, 1, page.numColumns},
                                 {257, longType, 1, page.numRows},
                                 {258, shortType, page.numComponents, bits},
                                 {259, shortType, 1, 1},
                                 {262, shortType, 1, page.photometric},
                                 {273, longType, 1, pixels},
                                 {274, shortType, 1, page.orientation},
                                 {277, shortType, 1, page.numComponents},
                                 {278, longType, 1, page.numRows},
                                 {279, longType, 1, static_cast<unsigned int>(page.components.size())},
                                 {339, shortType, page.numComponents, formats}};
        bytes += NumberBytes(numEntries).substr(0, 2);
        for (Entry const &entry : entries)
            bytes += NumberBytes(entry.tag).substr(0, 2) + NumberBytes(entry.type).substr(0, 2) +
                     NumberBytes(entry.count) + NumberBytes(entry.value);
        std::size_t const end = pixels + page.components.size() + page.components.size() % 2;
        bytes += NumberBytes(&page == &pages.back() ? 0 : static_cast<unsigned int>(end));
        for (unsigned int const number : {page.bits, format})
        {
            for (int i = 0; i < 4; ++i)
                bytes += NumberBytes(number).substr(0, 2);
        }
        bytes += page.components;
        bytes.resize(end, '\0');
    }
    return bytes;
}

} // namespace quillmarsh::tests

#endif
