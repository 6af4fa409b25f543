// Files of images: one reader and one writer for each format.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_IMAGEFILE_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_IMAGEFILE_H

#include "source/platform/imagefiles.h"

#include <cstdio>

namespace quillmarsh::platform
{

/// @name Readers, by the format
/// Null, with the failure, if the file, which stands at its beginning, is none of that format. The file outlives the
/// reader.
/// @{
AutoPtr<ImageFileReader> OpenTiffFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure);
AutoPtr<ImageFileReader> OpenJpegFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure);
AutoPtr<ImageFileReader> OpenPngFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure);
AutoPtr<ImageFileReader> OpenBmpFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure);
/// @}

/// @name Writers, by the format
/// A failure is filled in where it is not one of the file.
/// @{
bool WriteTiffFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
bool WriteJpegFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
bool WritePngFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
bool WriteBmpFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
/// @}

/// What an OpenXFile gives: the reader, or its failure.
template<typename Reader>
AutoPtr<ImageFileReader> HandOut(AutoPtr<Reader> reader, bool isOpen, ImageFailure &failure)
{
    if (isOpen)
        return reader;
    failure = reader->GetFailure();
    return nullptr;
}

/// Level that zlib has for one from 0 to 100.
int ToDeflateLevel(unsigned int level);

/// The most bytes that one byte of a deflated stream stands for.
inline constexpr std::uint64_t s_largestDeflateRatio = 1032;

} // namespace quillmarsh::platform

#endif
