// The bitmaps of Windows' drawing service, reduced to what the library's public functions need.
#ifndef QUILLMARSH_PLATFORM_LINUX_GDIPLUS_H
#define QUILLMARSH_PLATFORM_LINUX_GDIPLUS_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

/// @name Pixel formats
/// Numbers are those of the other system.
/// @{
inline constexpr int PixelFormat32bppRGB = 0x00022009;
inline constexpr int PixelFormat32bppARGB = 0x0026200A;
/// @}

/// Bitmaps over memory, and the record that describes pixels, under the names that they have in Windows' drawing
/// service. On Windows, the system's own header declares them.
namespace Gdiplus
{

/// Result of an operation.
enum Status
{
    Ok = 0,
    InvalidParameter = 2,
    NotImplemented = 6
};

/// Flags that tell LockBits() what the caller will do.
enum ImageLockMode
{
    ImageLockModeRead = 1,
    ImageLockModeWrite = 2,
    ImageLockModeUserInputBuf = 4
};

/// Rectangle in pixels.
class Rect
{
public:
    /// Makes a rectangle from the position of its top left corner and its size.
    constexpr Rect(int x, int y, int width, int height) : X(x), Y(y), Width(width), Height(height) {}

    int X;
    int Y;
    int Width;
    int Height;
};

/// Describes pixels in memory.
class BitmapData
{
public:
    unsigned int Width = 0;
    unsigned int Height = 0;
    /// Bytes from one row to the next.
    int Stride = 0;
    int PixelFormat = 0;
    /// First pixel of the first row.
    void *Scan0 = nullptr;
    std::uintptr_t Reserved = 0;
};

/// Pixels of 32 bits over memory that somebody else owns. One thread at a time.
class Bitmap
{
public:
    /// Makes a bitmap over the memory at `scan0`, which must outlive it. GetLastStatus() returns InvalidParameter when
    /// `scan0` is null, there are no pixels, the stride is too short, or the format has no 32 bits.
    Bitmap(int width, int height, int stride, int format, unsigned char *scan0)
    {
        if (width <= 0 || height <= 0 || !IsSupported(format) || std::abs(stride) / 4 < width || !scan0)
            return;
        data_.Width = static_cast<unsigned int>(width);
        data_.Height = static_cast<unsigned int>(height);
        data_.Stride = stride;
        data_.PixelFormat = format;
        data_.Scan0 = scan0;
        status_ = Ok;
    }
    Bitmap(Bitmap const &) = delete;
    Bitmap &operator=(Bitmap const &) = delete;

    /// Returns Ok when the constructor could make the bitmap.
    Status GetLastStatus() const { return status_; }
    /// Returns the number of columns.
    unsigned int GetWidth() const { return data_.Width; }
    /// Returns the number of rows.
    unsigned int GetHeight() const { return data_.Height; }

    /// Copies all pixels to the described memory with ImageLockModeRead; with ImageLockModeWrite, UnlockBits() copies
    /// them back. Locks only the whole bitmap, and only with ImageLockModeUserInputBuf.
    Status LockBits(Rect const *rect, unsigned int flags, int format, BitmapData *data)
    {
        bool const isWhole = rect->X == 0 && rect->Y == 0 && static_cast<unsigned int>(rect->Width) == data_.Width &&
                             static_cast<unsigned int>(rect->Height) == data_.Height && data->Width == data_.Width &&
                             data->Height == data_.Height;
        if (status_ != Ok || !isWhole || !IsSupported(format) || !data->Scan0 ||
            std::abs(data->Stride) / 4 < rect->Width)
            return InvalidParameter;
        if ((flags & ImageLockModeUserInputBuf) == 0)
            return NotImplemented;
        isLockedForWriting_ = (flags & ImageLockModeWrite) != 0;
        if ((flags & ImageLockModeRead) != 0)
            CopyRows(*data, data_);
        return Ok;
    }
    /// Ends the access that LockBits() began; after ImageLockModeWrite it copies the pixels into the bitmap.
    Status UnlockBits(BitmapData *data)
    {
        if (isLockedForWriting_)
            CopyRows(data_, *data);
        isLockedForWriting_ = false;
        return Ok;
    }

private:
    static bool IsSupported(int format) { return format == PixelFormat32bppARGB || format == PixelFormat32bppRGB; }

    static void CopyRows(BitmapData const &to, BitmapData const &from)
    {
        if (to.Scan0 == from.Scan0)
            return;
        for (unsigned int row = 0; row < to.Height; ++row)
            std::memcpy(static_cast<char *>(to.Scan0) + std::ptrdiff_t{to.Stride} * row,
                        static_cast<char const *>(from.Scan0) + std::ptrdiff_t{from.Stride} * row,
                        std::size_t{to.Width} * 4);
    }

    BitmapData data_;
    Status status_ = InvalidParameter;
    bool isLockedForWriting_ = false;
};

} // namespace Gdiplus

#endif
