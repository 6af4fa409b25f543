// Bitmaps and what is drawn on them without a font.
#include "source/platform/linux/gdiplus.h"

#include "source/platform/linux/imagefile.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace Gdiplus
{
namespace
{

using quillmarsh::platform::ImageFileReader;
using quillmarsh::platform::PixelRows;

constexpr INT s_pixelBytes = 4;

bool IsSupported(PixelFormat format)
{
    return format == PixelFormat32bppARGB || format == PixelFormat32bppRGB;
}

void CopyRows(PixelRows const &dst, PixelRows const &src)
{
    if (dst.first == src.first)
        return;
    for (unsigned int row = 0; row < dst.numRows; ++row)
        std::memcpy(dst.GetRow(row), src.GetRow(row), std::size_t{dst.numColumns} * s_pixelBytes);
}

PixelRows ToRows(BitmapData const &data)
{
    return {static_cast<BYTE *>(data.Scan0), data.Stride, data.Height, data.Width,
            data.PixelFormat == PixelFormat32bppARGB};
}

} // namespace

Bitmap::Bitmap(INT width, INT height, INT stride, Gdiplus::PixelFormat format, BYTE *scan0)
{
    if (width <= 0 || height <= 0 || std::abs(stride) / s_pixelBytes < width || !IsSupported(format) || !scan0)
    {
        status_ = InvalidParameter;
        return;
    }
    width_ = static_cast<UINT>(width);
    height_ = static_cast<UINT>(height);
    stride_ = stride;
    hasAlpha_ = format == PixelFormat32bppARGB;
    scan0_ = scan0;
}

Bitmap::Bitmap(quillmarsh::AutoPtr<ImageFileReader> reader)
    : width_(reader->GetNumColumns()),
      height_(reader->GetNumRows()),
      hasAlpha_(reader->HasAlpha()),
      reader_(std::move(reader))
{
}

Bitmap::~Bitmap() = default;

Status Bitmap::LockBits(Rect const *rect, UINT flags, Gdiplus::PixelFormat format, BitmapData *data)
{
    bool const isWhole = rect->X == 0 && rect->Y == 0 && rect->Width == static_cast<INT>(width_) &&
                         rect->Height == static_cast<INT>(height_) && data->Width == width_ && data->Height == height_;
    if (!isWhole || !IsSupported(format) || !data->Scan0 || std::abs(data->Stride) / s_pixelBytes < rect->Width)
        return InvalidParameter;
    if ((flags & ImageLockModeUserInputBuf) == 0 || (!scan0_ && (flags & ImageLockModeWrite) != 0))
        return NotImplemented;
    isLockedForWriting_ = (flags & ImageLockModeWrite) != 0;
    if ((flags & ImageLockModeRead) == 0)
        return Ok;
    PixelRows const rows = ToRows(*data);
    if (scan0_)
        CopyRows(rows, {scan0_, stride_, height_, width_, hasAlpha_});
    else if (!reader_ || !std::exchange(reader_, nullptr)->Read(rows))
        return GenericError;
    return Ok;
}

Status Bitmap::UnlockBits(BitmapData *data)
{
    if (std::exchange(isLockedForWriting_, false))
        CopyRows({scan0_, stride_, height_, width_, hasAlpha_}, ToRows(*data));
    return Ok;
}

Graphics::Graphics(Bitmap *bitmap)
    : bitmap_(*bitmap),
      clip_(0, 0, static_cast<INT>(bitmap->GetWidth()), static_cast<INT>(bitmap->GetHeight())),
      status_(bitmap->GetRow(0) ? Ok : InvalidParameter)
{
}

Status Graphics::SetTextRenderingHint(TextRenderingHint hint)
{
    hint_ = hint;
    return Ok;
}

Status Graphics::SetClip(Rect const &rect)
{
    clip_ = Rect(0, 0, static_cast<INT>(bitmap_.GetWidth()), static_cast<INT>(bitmap_.GetHeight()));
    clip_ = Clip(rect);
    return Ok;
}

Status Graphics::Clear(Color const &color)
{
    SolidBrush const brush(color);
    return FillRectangle(&brush, clip_.X, clip_.Y, clip_.Width, clip_.Height);
}

Status Graphics::FillRectangle(SolidBrush const *brush, INT x, INT y, INT width, INT height)
{
    if (status_ != Ok)
        return status_;
    if (brush->GetColor().a != 255)
        return NotImplemented;
    Fill(Clip({x, y, width, height}), brush->GetColor());
    return Ok;
}

Rect Graphics::Clip(Rect const &rect) const
{
    INT const left = std::max(rect.X, clip_.X);
    INT const top = std::max(rect.Y, clip_.Y);
    // Sums of two numbers of 32 bits.
    auto const end = [](std::int64_t a, std::int64_t aSize, std::int64_t b, std::int64_t bSize)
    { return std::min(a + aSize, b + bSize); };
    std::int64_t const width = end(rect.X, rect.Width, clip_.X, clip_.Width) - left;
    std::int64_t const height = end(rect.Y, rect.Height, clip_.Y, clip_.Height) - top;
    return {left, top, static_cast<INT>(std::max<std::int64_t>(width, 0)),
            static_cast<INT>(std::max<std::int64_t>(height, 0))};
}

void Graphics::Fill(Rect const &rect, Color const &color)
{
    BYTE const pixel[s_pixelBytes] = {color.b, color.g, color.r, color.a};
    for (INT y = 0; y < rect.Height; ++y)
    {
        BYTE *at = bitmap_.GetRow(static_cast<UINT>(rect.Y + y)) + std::ptrdiff_t{rect.X} * s_pixelBytes;
        for (INT x = 0; x < rect.Width; ++x, at += s_pixelBytes)
            std::memcpy(at, pixel, s_pixelBytes);
    }
}

} // namespace Gdiplus
