// What a picture's file holds beside the samples that it decodes to.
#ifndef QUILLMARSH_DATAOBJECTS_PICTUREDESC_H
#define QUILLMARSH_DATAOBJECTS_PICTUREDESC_H

#include <quillmarsh/platform/types.h>

#include <cstdint>

namespace quillmarsh
{

/// Kinds of pixels in a picture's file.
enum class ePictureColours
{
    e_grey,
    e_palette, ///< indices of a table of colours
    e_colours, ///< red, green and blue, or what is made of them
    e_inks     ///< cyan, magenta, yellow and black
};

/// Description of a picture's file by its decoder. Codecs without these facts leave their defaults.
struct PictureDesc
{
    ePictureColours colours = ePictureColours::e_colours;
    bool hasAlpha = false;
    /// Bits of one component in the file; of an index, if there is a palette.
    unsigned int bits = 8;
    /// True if components are floats.
    bool areFloats = false;
    /// Number of colours in the palette; 0 without one.
    unsigned int paletteSize = 0;
    /// Number of pages in the file, and the one that is described, counted from 0.
    unsigned int numPages = 1;
    unsigned int page = 0;
    /// @name Pixels per inch; 0 if they are not known
    /// @{
    double resolutionX = 0;
    double resolutionY = 0;
    /// @}
    /// Where the first row and the first column belong, as Exif and TIFF number it, from 1 to 8: 1 is top and left, 6 a
    /// picture that must be turned to the right.
    unsigned int orientation = 1;
    /// True if the decoded picture is turned and mirrored by its orientation.
    bool isOriented = false;
    /// Size of the colour profile; 0 without one.
    std::uint64_t profileByteSize = 0;
};

} // namespace quillmarsh

#endif
