// Turns pictures as their files ask for it.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_ORIENTATION_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_ORIENTATION_H

#include <quillmarsh/dataobjects/imagebase.h>

namespace quillmarsh
{

/// True when rows and columns change places in this orientation (see PictureDesc).
constexpr bool SwapsAxes(unsigned int orientation)
{
    return orientation >= 5 && orientation <= 8;
}

/// Returns the picture with its first row at the top and its first column to the left. Samples have four bytes.
AutoPtr<ImageBase> Orient(AutoPtr<ImageBase> image, unsigned int orientation);

} // namespace quillmarsh

#endif
