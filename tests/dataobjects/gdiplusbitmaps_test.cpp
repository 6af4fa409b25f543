#include <quillmarsh/basetools/windows/winutils.h>
#include <quillmarsh/dataobjects/fontimages.h>

#include "source/platform/gdiplus.h"

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

TEST(GdiplusBitmaps, PixelsAreCopiedBothWays)
{
    win_utils::GdiplusGuard const guard;
    unsigned int pixels[] = {0xff000001, 0xff000002, 0xff000003, 0xff000004};
    Gdiplus::Bitmap bitmap(2, 2, 8, PixelFormat32bppARGB, reinterpret_cast<unsigned char *>(pixels));
    Image<Sample32> image(e_format_A8R8G8B8, 2, 2);
    Gdiplus::BitmapData data;
    GdiplusFillBitmapData(data, PixelFormat32bppARGB, image);
    ASSERT_TRUE(GdiplusTransferBitmapPixels(bitmap, data, true));
    EXPECT_EQ(image.GetSamplesB()[12], 4);
    image.GetSamplesB()[4] = 9;
    ASSERT_TRUE(GdiplusTransferBitmapPixels(bitmap, data, false));
    EXPECT_EQ(pixels[1], 0xff000009);

    Image<Sample32> larger(e_format_A8R8G8B8, 3, 2);
    GdiplusFillBitmapData(data, PixelFormat32bppARGB, larger);
    EXPECT_FALSE(GdiplusTransferBitmapPixels(bitmap, data, true));
    Image<Sample32> empty(e_format_A8R8G8B8, 0, 2);
    GdiplusFillBitmapData(data, PixelFormat32bppARGB, empty);
    EXPECT_FALSE(GdiplusTransferBitmapPixels(bitmap, data, true));
}

} // namespace
} // namespace quillmarsh
