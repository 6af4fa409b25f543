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
    /// True if blue, green and red of each pixel are equal. Such a picture is saved as grey, with or without alpha, by
    /// the formats that have it; BMP has not. On Windows, GDI+ saves it as colours.
    bool isGrey = false;
};

/// What to read of a file.
struct ImageReadOptions
{
    /// Page of the file, counted from 0.
    unsigned int page = 0;
    /// True if the picture is going to be read by ReadLuminance(), if it can be.
    bool wantsLuminance = false;
};

/// Kinds of pixels in a file.
enum class eImageColours
{
    e_grey,
    e_palette,
    e_colours,
    e_inks
};

/// What a file holds beside its pixels.
struct ImageFileFacts
{
    eImageColours colours = eImageColours::e_colours;
    /// Bits of one component; of an index, in a picture with a palette.
    unsigned int bits = 8;
    bool areFloats = false;
    unsigned int paletteSize = 0;
    unsigned int numPages = 1;
    /// @name Pixels per inch; 0 if they are not known
    /// @{
    double resolutionX = 0;
    double resolutionY = 0;
    /// @}
    /// Place of the first row and the first column, as Exif and TIFF number it: 1 for top and left, up to 8.
    unsigned int orientation = 1;
    std::uint64_t profileByteSize = 0;
};

/// A picture in a file, whose header has been read and whose pixels have not. One thread at a time.
class ImageFileReader : NoCopy
{
public:
    virtual ~ImageFileReader() = default;

    unsigned int GetNumRows() const { return numRows_; }
    unsigned int GetNumColumns() const { return numColumns_; }
    bool HasAlpha() const { return hasAlpha_; }
    ImageFileFacts const &GetFacts() const { return facts_; }
    /// True if the file has the page; otherwise fails.
    bool HasPage(unsigned int page) { return page < facts_.numPages || FailPage(page); }
    /// True if the picture has more than eight bits for a component, and ReadLuminance() gives them all.
    bool HasDeepLuminance() const { return hasDeepLuminance_; }

    /// Decodes the whole picture into rows of its size; call it once. Unused bytes become 255. Returns false on
    /// failure.
    virtual bool Read(PixelRows const &rows) = 0;

    /// Decodes the whole picture into luminance, at the file's precision: 1 is the largest value of whole numbers, and
    /// floats are as they are. Call it once, instead of Read(), and only if HasDeepLuminance(). Returns false on
    /// failure.
    virtual bool ReadLuminance(float *values);

    /// Returns why Read(), or opening the file, failed.
    ImageFailure const &GetFailure() const { return failure_; }

protected:
    /// Sets the size; fails when no image can have it.
    bool SetSize(std::uint64_t numRows, std::uint64_t numColumns, bool hasAlpha);
    /// Returns the facts, to be filled with what the file tells.
    ImageFileFacts &GetFactsToFill() { return facts_; }
    void SetHasDeepLuminance() { hasDeepLuminance_ = true; }

    /// Keeps the failure, unless there is one already, and returns false.
    bool Fail(eImageFailure kind, string const &text);
    /// Fails because the picture claims more pixels than a file of its size can hold.
    bool FailImplausible();
    /// Returns the failure for a library that reports errors during a call.
    ImageFailure &GetFailureToFill() { return failure_; }

private:
    /// Fails because the file does not have a page.
    bool FailPage(unsigned int page);

    ImageFailure failure_;
    unsigned int numRows_ = 0;
    unsigned int numColumns_ = 0;
    bool hasAlpha_ = false;
    bool hasDeepLuminance_ = false;
    ImageFileFacts facts_;
};

/// Makes a reader for a TIFF, JPEG, PNG or BMP file. The file stands at its beginning and must stay open as long as the
/// reader lives. Returns null and the failure when the file has none of these formats, claims more pixels than it can
/// hold, or does not have the page.
AutoPtr<ImageFileReader> OpenImageFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                       ImageFailure &failure);

/// Writes pixels to a file of the type "image/tiff", "image/jpeg", "image/png" or "image/bmp". Returns false and the
/// failure for any other type, and when writing fails; the content of the file is then undefined.
bool SaveImageFile(PixelRows const &rows, std::filesystem::path const &name, char const *mimeType,
                   ImageFileOptions const &options, ImageFailure &failure);

} // namespace quillmarsh::platform

#endif
