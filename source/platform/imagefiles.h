// Seam: image files.
#ifndef QUILLMARSH_SOURCE_PLATFORM_IMAGEFILES_H
#define QUILLMARSH_SOURCE_PLATFORM_IMAGEFILES_H

#include <quillmarsh/platform/types.h>

#include "source/platform/pixelrows.h"

#include <cstdint>
#include <filesystem>

namespace quillmarsh::platform
{

/// How a file is written. Levels and qualities go from 0 to 100; a format leaves alone what it has no use for.
struct ImageFileOptions
{
    bool useCompression = true;
    unsigned int compressionLevel = 100;
    unsigned int quality = 100;
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
    /// False for a size that no image has.
    bool SetSize(std::uint64_t numRows, std::uint64_t numColumns, bool hasAlpha);

private:
    unsigned int numRows_ = 0;
    unsigned int numColumns_ = 0;
    bool hasAlpha_ = false;
};

/// Reader of a TIFF, JPEG, PNG or BMP file that is a plain file; null if it is none, or claims to be larger than its file
/// can hold.
AutoPtr<ImageFileReader> OpenImageFile(std::filesystem::path const &name);

/// Writes pixels as a file of one of the types "image/tiff", "image/jpeg", "image/png" and "image/bmp". False for another
/// type, and when writing fails; what is in the file then is of no use.
bool SaveImageFile(PixelRows const &rows, std::filesystem::path const &name, char const *mimeType,
                   ImageFileOptions const &options);

} // namespace quillmarsh::platform

#endif
