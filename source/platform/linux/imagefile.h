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

/// Pixels of blue, green, red and a byte that is alpha or unused.
struct PixelRows
{
    unsigned char *first;
    std::ptrdiff_t stride;
    unsigned int numRows;
    unsigned int numColumns;
    bool hasAlpha;

    unsigned char *GetRow(std::size_t row) const { return first + stride * static_cast<std::ptrdiff_t>(row); }
};

/// Picture in a file, its header read and its pixels still to come. One thread at a time.
class ImageFileReader : NoCopy
{
public:
    virtual ~ImageFileReader() = default;

    unsigned int GetNumRows() const { return numRows_; }
    unsigned int GetNumColumns() const { return numColumns_; }
    bool HasAlpha() const { return hasAlpha_; }

    /// Decodes all of it, once, into rows of this size; unused bytes become 255. False if the picture is damaged.
    virtual bool Read(PixelRows const &rows) = 0;

protected:
    /// False for a size that no bitmap has.
    bool SetSize(std::uint64_t numRows, std::uint64_t numColumns, bool hasAlpha);

private:
    unsigned int numRows_ = 0;
    unsigned int numColumns_ = 0;
    bool hasAlpha_ = false;
};

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
