// Image files: one reader and one writer for each format.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_IMAGEFILE_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_IMAGEFILE_H

#include "source/platform/imagefiles.h"

#include <cstdio>

namespace quillmarsh::platform
{

/// @name Readers, by the format
/// The file stands at its beginning, and must outlive the reader. Each function returns null and the failure when the
/// file does not have its format.
/// @{
AutoPtr<ImageFileReader> OpenTiffFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                      ImageFailure &failure);
AutoPtr<ImageFileReader> OpenJpegFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                      ImageFailure &failure);
AutoPtr<ImageFileReader> OpenPngFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                     ImageFailure &failure);
AutoPtr<ImageFileReader> OpenBmpFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                     ImageFailure &failure);
/// @}

/// @name Writers, by the format
/// Each function returns false on failure. It sets `failure` unless the system reported the error.
/// @{
bool WriteTiffFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
bool WriteJpegFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
bool WritePngFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
bool WriteBmpFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
/// @}

/// @name Luminance at full precision
/// The weights of red, green and blue are those of the sample formats.
/// @{
inline constexpr float s_luminanceWeights[] = {0.299f, 0.587f, 0.114f};
/// @}

/// What Exif data tell of a picture.
struct ExifFacts
{
    unsigned int orientation = 1;
};

/// Reads Exif data: a small TIFF file, without the name before it. Facts that are missing or damaged keep their
/// defaults.
ExifFacts ReadExif(unsigned char const *bytes, std::size_t size);

/// Returns the reader for an Open function, or null and its failure.
template<typename Reader>
AutoPtr<ImageFileReader> HandOut(AutoPtr<Reader> reader, bool isOpen, ImageFailure &failure)
{
    if (isOpen)
        return reader;
    failure = reader->GetFailure();
    return nullptr;
}

/// Copies grey, and alpha behind it, out of pixels whose colours are equal.
inline void TakeGrey(unsigned char *grey, unsigned char const *pixels, std::size_t count, bool hasAlpha)
{
    for (std::size_t i = 0; i < count; ++i, pixels += 4)
    {
        *grey++ = pixels[0];
        if (hasAlpha)
            *grey++ = pixels[3];
    }
}

/// Converts a level from 0 to 100 to one of zlib.
int ToDeflateLevel(unsigned int level);

/// Largest number of bytes that one byte of a deflated stream can produce.
inline constexpr std::uint64_t s_largestDeflateRatio = 1032;

} // namespace quillmarsh::platform

#endif
