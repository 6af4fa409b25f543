// Seam: image files.
#ifndef QUILLMARSH_SOURCE_PLATFORM_IMAGEFILES_H
#define QUILLMARSH_SOURCE_PLATFORM_IMAGEFILES_H

#include <quillmarsh/platform/types.h>

#include <quillmarsh/platform/pixelrows.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>

namespace quillmarsh::platform
{

/// Kinds of failures with image files.
enum class eImageFailure
{
    e_none,
    /// The file has none of the formats.
    e_otherFormat,
    /// The kind of picture is not supported.
    e_unsupported,
    /// The file is truncated, or its parts contradict each other.
    e_damaged,
    /// The system could not read or write.
    e_system
};

/// A failure and its reason, in words for the user; the text names the library that found it.
struct ImageFailure
{
    eImageFailure kind = eImageFailure::e_none;
    string text;
};

/// Options for writing a file. Levels and qualities range from 0 to 100; each format ignores the options that it does
/// not have.
struct ImageFileOptions
{
    bool useCompression = true;
    unsigned int compressionLevel = 100;
    unsigned int quality = 100;
};

/// A picture in a file, whose header has been read and whose pixels have not. One thread at a time.
class ImageFileReader : NoCopy
{
public:
    virtual ~ImageFileReader() = default;

    unsigned int GetNumRows() const { return numRows_; }
    unsigned int GetNumColumns() const { return numColumns_; }
    bool HasAlpha() const { return hasAlpha_; }

    /// Decodes the whole picture into rows of its size; call it once. Unused bytes become 255. Returns false on
    /// failure.
    virtual bool Read(PixelRows const &rows) = 0;

    /// Returns why Read(), or opening the file, failed.
    ImageFailure const &GetFailure() const { return failure_; }

protected:
    /// Sets the size; fails when no image can have it.
    bool SetSize(std::uint64_t numRows, std::uint64_t numColumns, bool hasAlpha);

    /// Keeps the failure, unless there is one already, and returns false.
    bool Fail(eImageFailure kind, string const &text);
    /// Fails because the picture claims more pixels than a file of its size can hold.
    bool FailImplausible();
    /// Returns the failure for a library that reports errors during a call.
    ImageFailure &GetFailureToFill() { return failure_; }

private:
    ImageFailure failure_;
    unsigned int numRows_ = 0;
    unsigned int numColumns_ = 0;
    bool hasAlpha_ = false;
};

/// Makes a reader for a TIFF, JPEG, PNG or BMP file. The file stands at its beginning and must stay open as long as the
/// reader lives. Returns null and the failure when the file has none of these formats, or claims more pixels than it
/// can hold.
AutoPtr<ImageFileReader> OpenImageFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure);

/// Writes pixels to a file of the type "image/tiff", "image/jpeg", "image/png" or "image/bmp". Returns false and the
/// failure for any other type, and when writing fails; the content of the file is then undefined.
bool SaveImageFile(PixelRows const &rows, std::filesystem::path const &name, char const *mimeType,
                   ImageFileOptions const &options, ImageFailure &failure);

} // namespace quillmarsh::platform

#endif
