// Files of images: one reader and one writer for each format.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_IMAGEFILE_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_IMAGEFILE_H

#include "source/platform/imagefiles.h"

#include <cstdio>

namespace quillmarsh::platform
{

struct FileCloser
{
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

/// @name Readers, by the format
/// Null if the file, which stands at its beginning, is none of that format.
/// @{
AutoPtr<ImageFileReader> OpenTiffFile(FilePtr file, std::uint64_t fileSize);
AutoPtr<ImageFileReader> OpenJpegFile(FilePtr file, std::uint64_t fileSize);
AutoPtr<ImageFileReader> OpenPngFile(FilePtr file, std::uint64_t fileSize);
AutoPtr<ImageFileReader> OpenBmpFile(FilePtr file, std::uint64_t fileSize);
/// @}

/// @name Writers, by the format
/// @{
bool WriteTiffFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options);
bool WriteJpegFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options);
bool WritePngFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options);
bool WriteBmpFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options);
/// @}

/// Level that zlib has for one from 0 to 100.
int ToDeflateLevel(unsigned int level);

/// The most bytes that one byte of a deflated stream stands for.
inline constexpr std::uint64_t s_largestDeflateRatio = 1032;

} // namespace quillmarsh::platform

#endif
