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
AutoPtr<ImageFileReader> OpenTiffFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure);
AutoPtr<ImageFileReader> OpenJpegFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure);
AutoPtr<ImageFileReader> OpenPngFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure);
AutoPtr<ImageFileReader> OpenBmpFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure);
/// @}

/// @name Writers, by the format
/// Each function returns false on failure. It sets `failure` unless the system reported the error.
/// @{
bool WriteTiffFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
bool WriteJpegFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
bool WritePngFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
bool WriteBmpFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
/// @}

/// Returns the reader for an Open function, or null and its failure.
template<typename Reader>
AutoPtr<ImageFileReader> HandOut(AutoPtr<Reader> reader, bool isOpen, ImageFailure &failure)
{
    if (isOpen)
        return reader;
    failure = reader->GetFailure();
    return nullptr;
}

/// Converts a level from 0 to 100 to one of zlib.
int ToDeflateLevel(unsigned int level);

/// Largest number of bytes that one byte of a deflated stream can produce.
inline constexpr std::uint64_t s_largestDeflateRatio = 1032;

} // namespace quillmarsh::platform

#endif
