#include "source/platform/linux/imagefile.h"

#include <algorithm>
#include <span>
#include <string_view>

#include <turbojpeg.h>

namespace quillmarsh::platform
{
namespace
{

/// Upper bound for the pixels that one byte of a file describes, even in a picture of one colour.
constexpr std::uint64_t s_pixelsPerByte = 4096;
/// Upper bound for the bytes of one pixel in a file.
constexpr std::uint64_t s_bytesPerPixel = 16;
/// @name Bytes before the pixels
/// Few files have more than the first; profiles and previews make some headers long.
/// @{
constexpr std::uint64_t s_shortHeader = std::uint64_t{64} << 10;
constexpr std::uint64_t s_longestHeader = std::uint64_t{64} << 20;
/// @}
/// From this quality on, colours are stored at the same resolution as brightness.
constexpr unsigned int s_fineQuality = 90;

struct HandleCloser
{
    void operator()(void *handle) const { tjDestroy(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

using Bytes = std::unique_ptr<unsigned char[]>;

/// What the segments before the pixels tell.
struct JpegSegments
{
    /// Inks are stored inverted, as most programs store four-colour pictures.
    bool hasInvertedInks = false;
    unsigned int bits = 8;
    double resolutionX = 0, resolutionY = 0;
    unsigned int orientation = 1;
    std::uint64_t profileByteSize = 0;
};

using Segment = std::span<unsigned char const>;

/// True if a segment begins with a name.
bool HasName(Segment segment, std::string_view name)
{
    return segment.size() >= name.size() && std::equal(name.begin(), name.end(), segment.begin());
}

void ReadDensity(Segment segment, JpegSegments &segments)
{
    constexpr double centimetersPerInch = 2.54;
    constexpr std::size_t unit = 7, x = 8, y = 10, end = 12;
    if (segment.size() < end || segment[unit] == 0)
        return;
    double const factor = segment[unit] == 2 ? centimetersPerInch : 1.0;
    segments.resolutionX = (segment[x] << 8 | segment[x + 1]) * factor;
    segments.resolutionY = (segment[y] << 8 | segment[y + 1]) * factor;
}

void ReadSegment(unsigned int marker, Segment segment, JpegSegments &segments)
{
    using namespace std::literals;
    constexpr std::size_t profileHeader = 14;
    bool const isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (isFrame && !segment.empty())
        segments.bits = segment[0];
    else if (marker == 0xE0 && HasName(segment, "JFIF\0"sv))
        ReadDensity(segment, segments);
    else if (marker == 0xE1 && HasName(segment, "Exif\0\0"sv))
        segments.orientation = ReadExif(segment.data() + 6, segment.size() - 6).orientation;
    else if (marker == 0xE2 && HasName(segment, "ICC_PROFILE\0"sv) && segment.size() > profileHeader)
        segments.profileByteSize += segment.size() - profileHeader;
    else if (marker == 0xEE && HasName(segment, "Adobe"sv))
        segments.hasInvertedInks = true;
}

/// Reads the segments of the first bytes of a file; the last one may be cut off.
JpegSegments ReadSegments(unsigned char const *bytes, std::size_t size)
{
    constexpr unsigned char startOfScan = 0xDA;
    JpegSegments segments;
    for (std::size_t at = 2; at + 4 <= size && bytes[at] == 0xFF && bytes[at + 1] != startOfScan;)
    {
        std::size_t const length = std::size_t{bytes[at + 2]} << 8 | bytes[at + 3];
        std::size_t const begin = at + 4, end = std::min(at + 2 + std::max<std::size_t>(length, 2), size);
        if (begin <= end)
            ReadSegment(bytes[at + 1], {bytes + begin, end - begin}, segments);
        at += 2 + length;
    }
    return segments;
}

unsigned char Multiply(unsigned int a, unsigned int b)
{
    return static_cast<unsigned char>((a * b + 127) / 255);
}

/// Converts cyan, magenta, yellow and black in place. With `inverted`, 255 means no ink.
void ConvertInks(PixelRows const &rows, bool inverted)
{
    unsigned char const mask = inverted ? 0 : 0xFF;
    for (unsigned int row = 0; row < rows.numRows; ++row)
    {
        unsigned char *pixel = rows.GetRow(row);
        for (unsigned int column = 0; column < rows.numColumns; ++column, pixel += 4)
        {
            unsigned int const light = pixel[3] ^ mask;
            unsigned char const red = Multiply(pixel[0] ^ mask, light);
            pixel[1] = Multiply(pixel[1] ^ mask, light);
            pixel[0] = Multiply(pixel[2] ^ mask, light);
            pixel[2] = red;
            pixel[3] = 0xFF;
        }
    }
}

/// Describes the failure of the last call on a handle.
ImageFailure DescribeFailure(void *handle)
{
    string const text = tjGetErrorStr2(handle);
    bool const isUnsupported = text.starts_with("Unsupported") || text.starts_with("Maximum supported");
    return {isUnsupported ? eImageFailure::e_unsupported : eImageFailure::e_damaged, "libjpeg-turbo: " + text};
}

class JpegReader final : public ImageFileReader
{
public:
    bool ReadHeader(std::FILE *file, std::uint64_t fileSize)
    {
        if (!handle_)
            return Fail(eImageFailure::e_system, "libjpeg-turbo: cannot start");
        file_ = file;
        fileSize_ = fileSize;
        int width = 0;
        int height = 0;
        if (!FindSize(width, height))
            return false;
        ReadFacts();
        auto const numRows = static_cast<std::uint64_t>(height);
        auto const numColumns = static_cast<std::uint64_t>(width);
        return numRows * numColumns <= fileSize * s_pixelsPerByte ? SetSize(numRows, numColumns, false)
                                                                  : FailImplausible();
    }

    bool Read(PixelRows const &rows) override
    {
        std::uint64_t const numPixels = std::uint64_t{rows.numRows} * rows.numColumns;
        if (!ReadUpTo(s_longestHeader + numPixels * s_bytesPerPixel))
            return false;
        bool const hasInks = colorspace_ == TJCS_CMYK || colorspace_ == TJCS_YCCK;
        // A warning counts as a failure: it means a truncated picture or damaged pixels.
        if (tjDecompress2(handle_.get(), bytes_.get(), size_, rows.first, static_cast<int>(rows.numColumns),
                          static_cast<int>(rows.stride), static_cast<int>(rows.numRows),
                          hasInks ? TJPF_CMYK : TJPF_BGRX, TJFLAG_STOPONWARNING | TJFLAG_LIMITSCANS) != 0)
            return FailByLibrary();
        if (hasInks)
            ConvertInks(rows, ReadSegments(bytes_.get(), size_).hasInvertedInks);
        return true;
    }

private:
    void ReadFacts()
    {
        JpegSegments const segments = ReadSegments(bytes_.get(), size_);
        ImageFileFacts &facts = GetFactsToFill();
        facts.bits = segments.bits;
        facts.colours = colorspace_ == TJCS_GRAY                               ? eImageColours::e_grey
                        : colorspace_ == TJCS_CMYK || colorspace_ == TJCS_YCCK ? eImageColours::e_inks
                                                                               : eImageColours::e_colours;
        facts.resolutionX = segments.resolutionX;
        facts.resolutionY = segments.resolutionY;
        facts.orientation = segments.orientation;
        facts.profileByteSize = segments.profileByteSize;
    }

    /// Reads the file up to the begin of the pixels, which are seldom far from its own.
    bool FindSize(int &width, int &height)
    {
        for (std::uint64_t size = s_shortHeader;; size *= 4)
        {
            if (!ReadUpTo(size))
                return false;
            int subsampling = 0;
            bool const isRead = tjDecompressHeader3(handle_.get(), bytes_.get(), size_, &width, &height, &subsampling,
                                                    &colorspace_) == 0;
            if (isRead && width > 0)
                return true;
            if (size_ == fileSize_ || size >= s_longestHeader)
                return isRead ? Fail(eImageFailure::e_damaged, "a JPEG without pixels") : FailByLibrary();
        }
    }

    /// Reads on until so many bytes of the file are there, or all of them.
    bool ReadUpTo(std::uint64_t wanted)
    {
        auto const size = static_cast<unsigned long>(std::min(wanted, fileSize_));
        if (size <= size_)
            return true;
        Bytes bytes = std::make_unique_for_overwrite<unsigned char[]>(size);
        std::copy_n(bytes_.get(), size_, bytes.get());
        unsigned long const missing = size - size_;
        if (std::fread(bytes.get() + size_, 1, missing, file_) != missing)
            return Fail(eImageFailure::e_system, "cannot be read to its end");
        bytes_ = std::move(bytes);
        size_ = size;
        return true;
    }

    bool FailByLibrary()
    {
        ImageFailure const failure = DescribeFailure(handle_.get());
        return Fail(failure.kind, failure.text);
    }

    Handle handle_{tjInitDecompress()};
    std::FILE *file_ = nullptr;
    std::uint64_t fileSize_ = 0;
    /// The first bytes of the file.
    Bytes bytes_;
    unsigned long size_ = 0;
    int colorspace_ = 0;
};

struct BufferCloser
{
    void operator()(unsigned char *buffer) const { tjFree(buffer); }
};

} // namespace

AutoPtr<ImageFileReader> OpenJpegFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                      ImageFailure &failure)
{
    auto reader = std::make_unique<JpegReader>();
    bool const isOpen = reader->ReadHeader(file, fileSize) && reader->HasPage(options.page);
    return HandOut(std::move(reader), isOpen, failure);
}

bool WriteJpegFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure)
{
    Handle const handle(tjInitCompress());
    if (!handle)
        return false;
    unsigned char *bytes = nullptr;
    unsigned long size = 0;
    int const colours = options.isGrey ? TJSAMP_GRAY : options.quality >= s_fineQuality ? TJSAMP_444 : TJSAMP_420;
    int const quality = static_cast<int>(std::clamp(options.quality, 1u, 100u));
    int const result =
        tjCompress2(handle.get(), rows.first, static_cast<int>(rows.numColumns), static_cast<int>(rows.stride),
                    static_cast<int>(rows.numRows), TJPF_BGRX, &bytes, &size, colours, quality, 0);
    std::unique_ptr<unsigned char, BufferCloser> const buffer(bytes);
    if (result != 0)
        failure = DescribeFailure(handle.get());
    return result == 0 && std::fwrite(bytes, 1, size, file) == size;
}

} // namespace quillmarsh::platform
