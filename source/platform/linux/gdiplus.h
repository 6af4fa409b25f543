// The drawing library that this system has not: just the operations that ours makes use of, under the names that they
// have on the other system. Pixels have 32 bits. Drawing takes what is on the bitmap for opaque.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_GDIPLUS_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_GDIPLUS_H

#include <quillmarsh/platform/types.h>

#include <cstddef>
#include <cstdint>

namespace quillmarsh::platform
{

class ImageFileReader;

} // namespace quillmarsh::platform

namespace Gdiplus
{

/// @name Types and values
/// Numbers are those of the other system.
/// @{

using INT = int;
using UINT = unsigned int;
using BYTE = unsigned char;
using REAL = float;
using WCHAR = unsigned short;
using PixelFormat = INT;

inline constexpr Gdiplus::PixelFormat PixelFormat32bppRGB = 0x00022009;
inline constexpr Gdiplus::PixelFormat PixelFormat32bppARGB = 0x0026200A;

enum Status
{
    Ok = 0,
    GenericError = 1,
    InvalidParameter = 2,
    OutOfMemory = 3,
    NotImplemented = 6,
    FontFamilyNotFound = 14,
    FontStyleNotFound = 15
};

enum ImageLockMode
{
    ImageLockModeRead = 1,
    ImageLockModeWrite = 2,
    ImageLockModeUserInputBuf = 4
};

enum ImageFlags
{
    ImageFlagsNone = 0,
    ImageFlagsHasAlpha = 2
};

enum FontStyle
{
    FontStyleRegular = 0,
    FontStyleBold = 1,
    FontStyleItalic = 2
};

enum Unit
{
    UnitPixel = 2
};

enum TextRenderingHint
{
    TextRenderingHintSingleBitPerPixelGridFit = 1,
    TextRenderingHintSingleBitPerPixel = 2,
    TextRenderingHintAntiAliasGridFit = 3,
    TextRenderingHintAntiAlias = 4
};

enum StringAlignment
{
    StringAlignmentNear = 0,
    StringAlignmentCenter = 1
};

enum StringFormatFlags
{
    StringFormatFlagsNoFitBlackBox = 0x0004,
    StringFormatFlagsNoWrap = 0x1000,
    StringFormatFlagsNoClip = 0x4000
};

struct Color
{
    constexpr Color(BYTE alpha, BYTE red, BYTE green, BYTE blue) : a(alpha), r(red), g(green), b(blue) {}

    BYTE a;
    BYTE r;
    BYTE g;
    BYTE b;
};

template<typename T>
struct RectOf
{
    constexpr RectOf(T x, T y, T width, T height) : X(x), Y(y), Width(width), Height(height) {}

    T X;
    T Y;
    T Width;
    T Height;
};

using Rect = RectOf<INT>;
using RectF = RectOf<REAL>;

class BitmapData
{
public:
    UINT Width = 0;
    UINT Height = 0;
    INT Stride = 0;
    Gdiplus::PixelFormat PixelFormat = 0;
    void *Scan0 = nullptr;
    std::uintptr_t Reserved = 0;
};

/// @}

/// Pixels over memory that somebody else owns, or those of a file, which can be read once.
class Bitmap : quillmarsh::NoCopy
{
public:
    Bitmap(INT width, INT height, INT stride, Gdiplus::PixelFormat format, BYTE *scan0);
    explicit Bitmap(quillmarsh::AutoPtr<quillmarsh::platform::ImageFileReader> reader);
    ~Bitmap();

    Status GetLastStatus() const { return status_; }
    UINT GetWidth() const { return width_; }
    UINT GetHeight() const { return height_; }
    UINT GetFlags() const { return hasAlpha_ ? ImageFlagsHasAlpha : ImageFlagsNone; }

    /// The whole of it, to and from memory that the record describes.
    Status LockBits(Rect const *rect, UINT flags, Gdiplus::PixelFormat format, BitmapData *data);
    Status UnlockBits(BitmapData *data);

    /// First byte of a row; null when there is no memory behind.
    BYTE *GetRow(UINT row) const { return scan0_ ? scan0_ + std::ptrdiff_t{stride_} * row : nullptr; }
    INT GetStride() const { return stride_; }

private:
    UINT width_ = 0;
    UINT height_ = 0;
    INT stride_ = 0;
    bool hasAlpha_ = false;
    bool isLockedForWriting_ = false;
    BYTE *scan0_ = nullptr;
    quillmarsh::AutoPtr<quillmarsh::platform::ImageFileReader> reader_;
    Status status_ = Ok;
};

class SolidBrush
{
public:
    explicit SolidBrush(Color const &color) : color_(color) {}

    Color GetColor() const { return color_; }

private:
    Color color_;
};

/// Family of fonts that the system has by this name, or that stands in for it.
class FontFamily : quillmarsh::NoCopy
{
public:
    explicit FontFamily(WCHAR const *name);

    /// Family of equal widths, whatever it is.
    static FontFamily const *GenericMonospace();

    bool IsAvailable() const { return !name_.empty(); }
    /// Every style can be had of a family that has the regular one.
    bool IsStyleAvailable(INT style) const;

    /// @name Heights of a line, in the units that the em has
    /// @{
    std::uint16_t GetEmHeight(INT style) const;
    std::uint16_t GetCellAscent(INT style) const;
    std::uint16_t GetCellDescent(INT style) const;
    /// @}

    /// Name that the system knows the family by.
    quillmarsh::string const &GetName() const { return name_; }

private:
    explicit FontFamily(quillmarsh::string name) : name_(std::move(name)) {}

    quillmarsh::string name_;
};

class Font
{
public:
    Font(FontFamily const *family, REAL emSize, INT style, Unit unit);

    Status GetLastStatus() const { return status_; }
    quillmarsh::string const &GetFamilyName() const { return familyName_; }
    REAL GetSize() const { return size_; }
    INT GetStyle() const { return style_; }

private:
    quillmarsh::string familyName_;
    REAL size_;
    INT style_;
    Status status_ = Ok;
};

class StringFormat
{
public:
    StringFormat() = default;
    explicit StringFormat(StringFormat const *other) : StringFormat(*other) {}

    /// Without margins.
    static StringFormat const *GenericTypographic();

    Status SetAlignment(StringAlignment alignment);
    Status SetLineAlignment(StringAlignment alignment);
    /// One line, cut off by nothing but the clipping region, is all that there is.
    Status SetFormatFlags(INT flags);

    StringAlignment GetAlignment() const { return alignment_; }
    StringAlignment GetLineAlignment() const { return lineAlignment_; }

private:
    StringAlignment alignment_ = StringAlignmentNear;
    StringAlignment lineAlignment_ = StringAlignmentNear;
};

/// Draws on a bitmap over memory.
class Graphics : quillmarsh::NoCopy
{
public:
    explicit Graphics(Bitmap *bitmap);

    Status GetLastStatus() const { return status_; }
    Status SetTextRenderingHint(TextRenderingHint hint);
    Status SetClip(Rect const &rect);

    Status Clear(Color const &color);
    Status FillRectangle(SolidBrush const *brush, INT x, INT y, INT width, INT height);
    /// A text without a printable character draws nothing.
    Status DrawString(WCHAR const *text, INT length, Font const *font, RectF const &layout, StringFormat const *format,
                      SolidBrush const *brush);

private:
    /// The part of a rectangle that can be drawn on.
    Rect Clip(Rect const &rect) const;
    void Fill(Rect const &rect, Color const &color);

    Bitmap &bitmap_;
    Rect clip_;
    TextRenderingHint hint_ = TextRenderingHintAntiAlias;
    Status status_;
};

} // namespace Gdiplus

// On the other system these are macros, which know no namespace.
using Gdiplus::PixelFormat32bppARGB;
using Gdiplus::PixelFormat32bppRGB;

#endif
