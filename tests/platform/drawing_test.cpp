#include <quillmarsh/basetools/windows/winutils.h>

#include "source/platform/drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace quillmarsh::platform::drawing
{
namespace
{

FontFace GetProportionalFace()
{
    return {HasFace({"Arial"}) ? "Arial" : "Liberation Sans"};
}

TEST(Font, MeasuresLinesByTheirSize)
{
    win_utils::GdiplusGuard const guard;
    Font small(GetProportionalFace(), 100, {true, false});
    Font large(GetProportionalFace(), 200, {true, false});
    ASSERT_TRUE(small.IsValid() && large.IsValid());
    FaceHeights const heights = MeasureFace(GetProportionalFace());
    auto const em = static_cast<float>(heights.em);
    EXPECT_NEAR(small.GetAscent(), static_cast<float>(heights.ascent) * 100 / em, 0.2f);
    EXPECT_NEAR(small.GetDescent(), static_cast<float>(heights.descent) * 100 / em, 0.2f);
    EXPECT_GE(small.GetLineHeight() + 0.01f, small.GetAscent() + small.GetDescent());
    EXPECT_NEAR(large.GetLineHeight(), 2 * small.GetLineHeight(), 0.2f);
    EXPECT_NEAR(large.GetAdvance('m'), 2 * small.GetAdvance('m'), 1.5f);
}

TEST(Font, MeasuresCharactersAndRuns)
{
    win_utils::GdiplusGuard const guard;
    Font mono(GetMonospaceFace(), 16);
    Font proportional(GetProportionalFace(), 16);
    ASSERT_TRUE(mono.IsValid() && proportional.IsValid());
    EXPECT_GT(mono.GetAdvance('i'), 0);
    EXPECT_EQ(mono.GetAdvance('i'), mono.GetAdvance('W'));
    EXPECT_EQ(mono.GetAdvance('i'), mono.GetAdvance(' '));
    EXPECT_NEAR(mono.MeasureText({'i', 'W', ' '}), 3 * mono.GetAdvance('i'), 0.5f);
    EXPECT_LT(proportional.GetAdvance('i'), proportional.GetAdvance('W'));
    EXPECT_EQ(proportional.MeasureText({}), 0);
}

TEST(Font, RefusesFacesAndSizesThatAreNone)
{
    win_utils::GdiplusGuard const guard;
    EXPECT_FALSE(Font({"No Such Family"}, 16).IsValid());
    EXPECT_EQ(MeasureFace({"No Such Family"}).em, 0);
    for (float const size : {0.0f, -1.0f, std::nanf("")})
        EXPECT_FALSE(Font(GetProportionalFace(), size).IsValid()) << size;
}

TEST(Canvas, DrawsLinesWithinItsClip)
{
    win_utils::GdiplusGuard const guard;
    constexpr int size = 16;
    unsigned char pixels[size * size * 4] = {};
    PixelRows const rows = {pixels, size * 4, size, size, false};
    {
        Canvas canvas(rows);
        canvas.SetClip({0, 0, 12, size});
        canvas.DrawLine({2, 8}, {15, 8}, 2, {255, 255, 255});
    }
    auto const at = [&](int x, int y) { return int(rows.GetRow(static_cast<std::size_t>(y))[x * 4]); };
    EXPECT_EQ(255, std::max(at(6, 7), at(6, 8)));
    EXPECT_GE(at(6, 7) + at(6, 8), 255);
    EXPECT_EQ(0, at(6, 5) + at(6, 10) + at(0, 7) + at(0, 8));
    EXPECT_EQ(0, at(13, 7) + at(13, 8));
}

} // namespace
} // namespace quillmarsh::platform::drawing
