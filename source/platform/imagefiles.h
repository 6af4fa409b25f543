// Seam: image files.
#ifndef QUILLMARSH_SOURCE_PLATFORM_IMAGEFILES_H
#define QUILLMARSH_SOURCE_PLATFORM_IMAGEFILES_H

#include <quillmarsh/platform/types.h>

#include "source/platform/pixelrows.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>

namespace quillmarsh::platform
{

/// Kinds of failures of image files.
enum class eImageFailure
{
    e_none,
    /// None of the formats.
    e_otherFormat,
    /// A kind of picture that is not supported.
    e_unsupported,
    /// Cut short, or contradicting itself.
    e_damaged,
    /// The system could not read or write.
    e_system
};

/// A failure, in words for the user that name the library which found it.
struct ImageFailure
{
    eImageFailure kind = eImageFailure::e_none;
    string text;
};

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

    /// Decodes all of it, once, into rows of this size; unused bytes become 255. False if that fails.
    virtual bool Read(PixelRows const &rows) = 0;

    /// Why Read, or opening the file, has failed.
    ImageFailure const &GetFailure() const { return failure_; }

protected:
    /// Fails for a size that no image has.
    bool SetSize(std::uint64_t numRows, std::uint64_t numColumns, bool hasAlpha);

    /// Each keeps the first failure, and returns false.
    bool Fail(eImageFailure kind, string const &text);
    /// Of a picture that claims more pixels than a file of its size stands for.
    bool FailImplausible();
    /// For libraries that tell a failure while they are called.
    ImageFailure &GetFailureToFill() { return failure_; }

private:
    ImageFailure failure_;
    unsigned int numRows_ = 0;
    unsigned int numColumns_ = 0;
    bool hasAlpha_ = false;
};

/// Reader of a TIFF, JPEG, PNG or BMP file, which stands at its beginning and stays open for as long as the reader. Null,
/// with the failure, if it is none, or claims to be larger than its file can hold.
AutoPtr<ImageFileReader> OpenImageFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure);

/// Writes pixels as a file of one of the types "image/tiff", "image/jpeg", "image/png" and "image/bmp". False, with the
/// failure, for another type, and when writing fails; what is in the file then is of no use.
bool SaveImageFile(PixelRows const &rows, std::filesystem::path const &name, char const *mimeType,
                   ImageFileOptions const &options, ImageFailure &failure);

} // namespace quillmarsh::platform

#endif
