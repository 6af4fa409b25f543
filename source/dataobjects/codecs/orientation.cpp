#include "source/dataobjects/codecs/orientation.h"

#include <quillmarsh/dataobjects/imageoperations.h>

#include <algorithm>
#include <cstring>

namespace quillmarsh
{
namespace
{

/// Makes rows of columns, in blocks that fit into the caches.
AutoPtr<ImageBase> Transpose(ImageBase const &image)
{
    constexpr std::size_t blockSide = 32, size = sizeof(Sample32);
    std::size_t const numRows = image.GetNumRows(), numColumns = image.GetNumColumns();
    auto result = std::make_unique<Image<Sample32>>(image.GetSampleFormat(), image.GetNumColumns(), image.GetNumRows());
    unsigned char const *const src = image.GetSamplesB();
    unsigned char *const dst = result->GetSamplesB();
    for (std::size_t top = 0; top < numRows; top += blockSide)
    {
        for (std::size_t left = 0; left < numColumns; left += blockSide)
        {
            for (std::size_t row = top; row < std::min(top + blockSide, numRows); ++row)
            {
                for (std::size_t column = left; column < std::min(left + blockSide, numColumns); ++column)
                    std::memcpy(dst + (column * numRows + row) * size, src + (row * numColumns + column) * size, size);
            }
        }
    }
    return result;
}

} // namespace

AutoPtr<ImageBase> Orient(AutoPtr<ImageBase> image, unsigned int orientation)
{
    if (SwapsAxes(orientation))
        image = Transpose(*image);
    bool const mirrorsRows = orientation == 3 || orientation == 4 || orientation == 7 || orientation == 8;
    bool const mirrorsColumns = orientation == 2 || orientation == 3 || orientation == 6 || orientation == 7;
    if (mirrorsRows)
        FlipRows(*image);
    if (mirrorsColumns)
        FlipColumns(*image);
    return image;
}

} // namespace quillmarsh
