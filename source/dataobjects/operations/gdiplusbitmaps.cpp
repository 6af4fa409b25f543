// Images and the bitmaps of Windows' drawing service.
#include <quillmarsh/dataobjects/fontimages.h>

#include "source/platform/gdiplus.h"

namespace quillmarsh
{

void GdiplusFillBitmapData(Gdiplus::BitmapData &data, int pixelFormat, ImageBase const &image)
{
    data.Width = image.GetNumColumns();
    data.Height = image.GetNumRows();
    data.Stride = static_cast<int>(image.GetRowByteSize());
    data.PixelFormat = pixelFormat;
    data.Scan0 = const_cast<unsigned char *>(image.GetSamplesB());
    data.Reserved = 0;
}

bool GdiplusTransferBitmapPixels(Gdiplus::Bitmap &bitmap, Gdiplus::BitmapData &data, bool read)
{
    if (data.Width == 0 || data.Height == 0)
        return false;
    Gdiplus::Rect const rect(0, 0, static_cast<int>(data.Width), static_cast<int>(data.Height));
    unsigned int const mode = read ? Gdiplus::ImageLockModeRead : Gdiplus::ImageLockModeWrite;
    return bitmap.LockBits(&rect, Gdiplus::ImageLockModeUserInputBuf | mode, data.PixelFormat, &data) == Gdiplus::Ok &&
           bitmap.UnlockBits(&data) == Gdiplus::Ok;
}

} // namespace quillmarsh
