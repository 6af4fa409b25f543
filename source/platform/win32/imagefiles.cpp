#include "source/platform/imagefiles.h"

#include "source/platform/win32/gdiplus.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <memory>
#include <shlwapi.h>
#include <string_view>
#include <vector>

namespace quillmarsh::platform
{
namespace
{

using namespace std::literals;

/// More pixels than a byte of a file stands for, in any format but that of facsimiles, in which a bit can be a row.
constexpr std::uint64_t s_pixelsPerByte = 255 * 255 / 4 + 1;

/// How a file begins that is opened. The drawing library knows more formats, drawings among them, which it plays.
constexpr std::string_view s_magics[] = {"\x89PNG\r\n\x1A\n"sv, "\xFF\xD8\xFF"sv, "BM"sv, "II*\0"sv, "MM\0*"sv};

constexpr GUID s_quality = {0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};
constexpr GUID s_compression = {0xE09D739D, 0xCCD4, 0x44EE, {0x8E, 0xBA, 0x3F, 0xBF, 0x8B, 0xE4, 0xFC, 0x58}};

bool FindEncoder(char const *mimeType, CLSID &encoder)
{
    UINT count = 0;
    UINT byteSize = 0;
    if (Gdiplus::GetImageEncodersSize(&count, &byteSize) != Gdiplus::Ok || count == 0)
        return false;
    // The texts that the records point to follow behind them.
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

struct FileCloser
{
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

bool IsImageFile(std::vector<BYTE> const &bytes)
{
    std::string_view const text(reinterpret_cast<char const *>(bytes.data()), bytes.size());
    return std::any_of(std::begin(s_magics), std::end(s_magics),
                       [text](std::string_view magic) { return text.starts_with(magic); });
}

/// The bytes of an image file. The drawing library keeps a file open for as long as there is a bitmap of it, and sometimes
/// beyond; nobody waits for these.
StreamPtr ReadIntoStream(std::filesystem::path const &name, std::uint64_t &fileSize)
{
    WIN32_FILE_ATTRIBUTE_DATA found;
    if (GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &found) == 0)
        return nullptr;
    fileSize = std::uint64_t{found.nFileSizeHigh} << 32 | found.nFileSizeLow;
    FilePtr const file(_wfopen(name.c_str(), L"rb"));
    if (!file || fileSize > std::numeric_limits<LONG>::max())
        return nullptr;
    std::vector<BYTE> bytes(static_cast<std::size_t>(fileSize));
    if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size() || !IsImageFile(bytes))
        return nullptr;
    return StreamPtr(SHCreateMemStream(bytes.data(), static_cast<UINT>(bytes.size())));
}

Gdiplus::PixelFormat ToPixelFormat(PixelRows const &rows)
{
    return rows.hasAlpha ? PixelFormat32bppARGB : PixelFormat32bppRGB;
}

/// Picture that the drawing library decodes when its pixels are wanted.
class BitmapReader final : public ImageFileReader
{
public:
    /// False for what the drawing library does not take, and for a size that the file cannot stand for.
    bool Open(IStream *stream, std::uint64_t fileSize)
    {
        bitmap_ = std::make_unique<Gdiplus::Bitmap>(stream);
        if (bitmap_->GetLastStatus() != Gdiplus::Ok)
            return false;
        std::uint64_t const width = bitmap_->GetWidth();
        std::uint64_t const numPixels = width * bitmap_->GetHeight();
        if (!SetSize(bitmap_->GetHeight(), width, (bitmap_->GetFlags() & Gdiplus::ImageFlagsHasAlpha) != 0))
            return false;
        return numPixels / std::max(s_pixelsPerByte, 8 * width) <= fileSize;
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
        return bitmap_->LockBits(&all, mode, data.PixelFormat, &data) == Gdiplus::Ok &&
               bitmap_->UnlockBits(&data) == Gdiplus::Ok;
    }

private:
    AutoPtr<Gdiplus::Bitmap> bitmap_;
};

} // namespace

AutoPtr<ImageFileReader> OpenImageFile(std::filesystem::path const &name)
{
    std::uint64_t fileSize = 0;
    StreamPtr const stream = ReadIntoStream(name, fileSize);
    auto reader = std::make_unique<BitmapReader>();
    return stream && reader->Open(stream.get(), fileSize) ? std::move(reader) : nullptr;
}

bool SaveImageFile(PixelRows const &rows, std::filesystem::path const &name, char const *mimeType,
                   ImageFileOptions const &options)
{
    CLSID encoder = {};
    if (!FindEncoder(mimeType, encoder))
        return false;
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
    return bitmap.Save(name.c_str(), &encoder, parameters.Count > 0 ? &parameters : nullptr) == Gdiplus::Ok;
}

} // namespace quillmarsh::platform
