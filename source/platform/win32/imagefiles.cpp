#include "source/platform/imagefiles.h"

#include "source/platform/win32/gdiplus.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <memory>
#include <shlwapi.h>
#include <string>
#include <string_view>
#include <vector>

namespace quillmarsh::platform
{
namespace
{

using namespace std::literals;

/// Upper bound for the pixels that one byte of a file describes. Facsimile formats can have more: there, one bit can be
/// a row.
constexpr std::uint64_t s_pixelsPerByte = 255 * 255 / 4 + 1;

/// First bytes of the supported formats. GDI+ opens others as well, among them metafiles, which run drawing commands.
constexpr std::string_view s_magics[] = {"\x89PNG\r\n\x1A\n"sv, "\xFF\xD8\xFF"sv, "BM"sv, "II*\0"sv, "MM\0*"sv};

constexpr GUID s_pages = {0x7462DC86, 0x6180, 0x4C7E, {0x8E, 0x3F, 0xEE, 0x73, 0x33, 0xA7, 0xA4, 0x83}};
constexpr GUID s_quality = {0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};
constexpr GUID s_compression = {0xE09D739D, 0xCCD4, 0x44EE, {0x8E, 0xBA, 0x3F, 0xBF, 0x8B, 0xE4, 0xFC, 0x58}};

bool FindEncoder(char const *mimeType, CLSID &encoder)
{
    UINT count = 0;
    UINT byteSize = 0;
    if (Gdiplus::GetImageEncodersSize(&count, &byteSize) != Gdiplus::Ok || count == 0)
        return false;
    // The records point to texts that follow them in the same memory.
    std::vector<Gdiplus::ImageCodecInfo> encoders(byteSize / sizeof(Gdiplus::ImageCodecInfo) + 1);
    if (Gdiplus::GetImageEncoders(count, byteSize, encoders.data()) != Gdiplus::Ok)
        return false;
    std::string_view const wanted(mimeType);
    for (UINT i = 0; i < count; ++i)
    {
        std::wstring_view const found(encoders[i].MimeType);
        if (std::equal(found.begin(), found.end(), wanted.begin(), wanted.end(),
                       [](wchar_t a, char b) { return a == static_cast<wchar_t>(b); }))
        {
            encoder = encoders[i].Clsid;
            return true;
        }
    }
    return false;
}

struct StreamReleaser
{
    void operator()(IStream *stream) const { stream->Release(); }
};
using StreamPtr = std::unique_ptr<IStream, StreamReleaser>;

/// True for a file that begins as an image file. The file is at its beginning afterwards.
bool IsImageFile(std::FILE *file)
{
    char start[8] = {};
    std::string_view const found(start, std::fread(start, 1, std::size(start), file));
    std::rewind(file);
    return std::any_of(std::begin(s_magics), std::end(s_magics),
                       [found](std::string_view magic) { return found.starts_with(magic); });
}

struct StatusText
{
    Gdiplus::Status status;
    eImageFailure kind;
    char const *text;
};

constexpr StatusText s_statusTexts[] = {
    {Gdiplus::OutOfMemory, eImageFailure::e_damaged, "GDI+: not enough memory, or a damaged picture"},
    {Gdiplus::InvalidParameter, eImageFailure::e_damaged, "GDI+: a damaged picture"},
    {Gdiplus::UnknownImageFormat, eImageFailure::e_unsupported, "GDI+: a kind of picture that is not supported"},
    {Gdiplus::NotImplemented, eImageFailure::e_unsupported, "GDI+: a kind of picture that is not supported"},
    {Gdiplus::AccessDenied, eImageFailure::e_system, "GDI+: access denied"},
    {Gdiplus::FileNotFound, eImageFailure::e_system, "GDI+: the file cannot be written"},
    {Gdiplus::Win32Error, eImageFailure::e_system, "GDI+: the system failed to read or write"},
};

ImageFailure DescribeStatus(Gdiplus::Status status)
{
    for (StatusText const &row : s_statusTexts)
    {
        if (row.status == status)
            return {row.kind, row.text};
    }
    return {eImageFailure::e_damaged, "GDI+: failed with status " + std::to_string(status)};
}

/// Reads an image file into memory, because GDI+ keeps a file open while its bitmap exists, and sometimes longer.
/// Returns null and the failure when the file is no image.
StreamPtr ReadIntoStream(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure)
{
    if (!IsImageFile(file))
    {
        failure = {eImageFailure::e_otherFormat, "neither TIFF nor JPEG nor PNG nor BMP"};
        return nullptr;
    }
    if (fileSize > std::numeric_limits<LONG>::max())
    {
        failure = {eImageFailure::e_unsupported, "a file of more than 2 gigabytes"};
        return nullptr;
    }
    std::vector<BYTE> bytes(static_cast<std::size_t>(fileSize));
    if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size())
    {
        failure = {eImageFailure::e_system, "cannot be read to its end"};
        return nullptr;
    }
    StreamPtr stream(SHCreateMemStream(bytes.data(), static_cast<UINT>(bytes.size())));
    if (!stream)
        failure = {eImageFailure::e_system, "not enough memory"};
    return stream;
}

Gdiplus::PixelFormat ToPixelFormat(PixelRows const &rows)
{
    return rows.hasAlpha ? PixelFormat32bppARGB : PixelFormat32bppRGB;
}

/// A picture that GDI+ decodes when its pixels are read.
class BitmapReader final : public ImageFileReader
{
public:
    /// Opens a picture. Fails when GDI+ does not support it, and when it claims more pixels than the file can hold.
    bool Open(IStream *stream, std::uint64_t fileSize, unsigned int page)
    {
        bitmap_ = std::make_unique<Gdiplus::Bitmap>(stream);
        if (Gdiplus::Status const status = bitmap_->GetLastStatus(); status != Gdiplus::Ok)
            return FailByStatus(status);
        if (!OpenPage(page))
            return false;
        ReadFacts();
        std::uint64_t const width = bitmap_->GetWidth();
        std::uint64_t const numPixels = width * bitmap_->GetHeight();
        if (!SetSize(bitmap_->GetHeight(), width, (bitmap_->GetFlags() & Gdiplus::ImageFlagsHasAlpha) != 0))
            return false;
        return numPixels / std::max(s_pixelsPerByte, 8 * width) <= fileSize || FailImplausible();
    }

    bool Read(PixelRows const &rows) override
    {
        Gdiplus::BitmapData data = {};
        data.Width = rows.numColumns;
        data.Height = rows.numRows;
        data.Stride = static_cast<INT>(rows.stride);
        data.PixelFormat = ToPixelFormat(rows);
        data.Scan0 = rows.first;
        Gdiplus::Rect const all(0, 0, static_cast<INT>(rows.numColumns), static_cast<INT>(rows.numRows));
        UINT const mode = Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf;
        Gdiplus::Status status = bitmap_->LockBits(&all, mode, data.PixelFormat, &data);
        if (status == Gdiplus::Ok)
            status = bitmap_->UnlockBits(&data);
        return status == Gdiplus::Ok || FailByStatus(status);
    }

private:
    bool OpenPage(unsigned int page)
    {
        GetFactsToFill().numPages = std::max(bitmap_->GetFrameCount(&s_pages), 1u);
        if (page == 0)
            return true;
        if (!HasPage(page))
            return false;
        Gdiplus::Status const status = bitmap_->SelectActiveFrame(&s_pages, page);
        return status == Gdiplus::Ok || FailByStatus(status);
    }

    /// Reads what GDI+ tells; it reduces 16 bits to 8 when it opens some kinds of files.
    void ReadFacts()
    {
        ImageFileFacts &facts = GetFactsToFill();
        UINT const flags = bitmap_->GetFlags();
        Gdiplus::PixelFormat const format = bitmap_->GetPixelFormat();
        if ((format & PixelFormatIndexed) != 0)
        {
            facts.colours = eImageColours::e_palette;
            facts.bits = Gdiplus::GetPixelFormatSize(format);
            facts.paletteSize = 1u << std::min(facts.bits, 8u);
        }
        else if ((flags & Gdiplus::ImageFlagsColorSpaceGRAY) != 0)
        {
            facts.colours = eImageColours::e_grey;
        }
        else if ((flags & (Gdiplus::ImageFlagsColorSpaceCMYK | Gdiplus::ImageFlagsColorSpaceYCCK)) != 0)
        {
            facts.colours = eImageColours::e_inks;
        }
        if ((flags & Gdiplus::ImageFlagsHasRealDPI) != 0)
        {
            facts.resolutionX = static_cast<double>(bitmap_->GetHorizontalResolution());
            facts.resolutionY = static_cast<double>(bitmap_->GetVerticalResolution());
        }
        facts.profileByteSize = bitmap_->GetPropertyItemSize(PropertyTagICCProfile);
        facts.orientation = ReadOrientation();
    }

    unsigned int ReadOrientation()
    {
        UINT const byteSize = bitmap_->GetPropertyItemSize(PropertyTagOrientation);
        if (byteSize < sizeof(Gdiplus::PropertyItem) + sizeof(unsigned short))
            return 1;
        std::vector<Gdiplus::PropertyItem> item(byteSize / sizeof(Gdiplus::PropertyItem) + 1);
        if (bitmap_->GetPropertyItem(PropertyTagOrientation, byteSize, item.data()) != Gdiplus::Ok)
            return 1;
        unsigned short value = 0;
        std::memcpy(&value, item.front().value, sizeof(value));
        return value >= 1 && value <= 8 ? value : 1;
    }

    bool FailByStatus(Gdiplus::Status status)
    {
        ImageFailure const failure = DescribeStatus(status);
        return Fail(failure.kind, failure.text);
    }

    AutoPtr<Gdiplus::Bitmap> bitmap_;
};

} // namespace

AutoPtr<ImageFileReader> OpenImageFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                       ImageFailure &failure)
{
    StreamPtr const stream = ReadIntoStream(file, fileSize, failure);
    if (!stream)
        return nullptr;
    auto reader = std::make_unique<BitmapReader>();
    if (reader->Open(stream.get(), fileSize, options.page))
        return reader;
    failure = reader->GetFailure();
    return nullptr;
}

bool SaveImageFile(PixelRows const &rows, std::filesystem::path const &name, char const *mimeType,
                   ImageFileOptions const &options, ImageFailure &failure)
{
    CLSID encoder = {};
    if (!FindEncoder(mimeType, encoder))
    {
        failure = {eImageFailure::e_otherFormat, string("no picture is written as ") + mimeType};
        return false;
    }
    ULONG value = 0;
    Gdiplus::EncoderParameters parameters = {};
    parameters.Parameter[0].NumberOfValues = 1;
    parameters.Parameter[0].Type = Gdiplus::EncoderParameterValueTypeLong;
    parameters.Parameter[0].Value = &value;
    if (std::strcmp(mimeType, "image/jpeg") == 0)
    {
        parameters.Count = 1;
        parameters.Parameter[0].Guid = s_quality;
        value = std::min(options.quality, 100u);
    }
    else if (std::strcmp(mimeType, "image/tiff") == 0)
    {
        parameters.Count = 1;
        parameters.Parameter[0].Guid = s_compression;
        value = options.useCompression ? Gdiplus::EncoderValueCompressionLZW : Gdiplus::EncoderValueCompressionNone;
    }
    Gdiplus::Bitmap bitmap(static_cast<INT>(rows.numColumns), static_cast<INT>(rows.numRows),
                           static_cast<INT>(rows.stride), ToPixelFormat(rows), rows.first);
    Gdiplus::Status const status = bitmap.Save(name.c_str(), &encoder, parameters.Count > 0 ? &parameters : nullptr);
    if (status != Gdiplus::Ok)
        failure = DescribeStatus(status);
    return status == Gdiplus::Ok;
}

} // namespace quillmarsh::platform
