#include "look_shapes/marks.h"

#include "drawtiles/tifffile.h"
#include "drawtiles/tileset.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <iterator>
#include <numbers>
#include <string>

namespace look_shapes
{
namespace
{

/// Returns the covered area of a sheet, in pixels.
double GetArea(Sheet const &sheet)
{
    double sum = 0;
    for (unsigned int y = 0; y < sheet.GetHeight(); ++y)
    {
        for (unsigned int x = 0; x < sheet.GetWidth(); ++x)
            sum += sheet.Get(x, y);
    }
    return sum / 255;
}

double GetAreaOf(std::initializer_list<Shape> shapes, float pixelsPerUnit)
{
    Sheet sheet(64, 64);
    DrawShapes(sheet, {0, 0, 64, 64}, {shapes.begin(), shapes.size()}, pixelsPerUnit);
    return GetArea(sheet);
}

TEST(LookShapes, CoverTheAreaOfTheirGeometry)
{
    constexpr double pi = std::numbers::pi;
    struct Row
    {
        char const *name;
        std::array<Shape, 2> shapes;
        double area;
    };
    constexpr Shape nothing = {eShape::e_disc, false, {-100, -100, 0}};
    Row const rows[] = {
        {"disc", {{{eShape::e_disc, false, {8.3f, 8.1f, 5}}, nothing}}, 25 * pi},
        {"ring", {{{eShape::e_ring, false, {8, 8, 5, 1}}, nothing}}, (5.5 * 5.5 - 4.5 * 4.5) * pi},
        {"box", {{{eShape::e_box, false, {2.25f, 3, 9.5f, 5, 0}}, nothing}}, 7.25 * 2},
        {"rounded box", {{{eShape::e_box, false, {2, 3, 10, 11, 2}}, nothing}}, 64 - (4 - pi) * 4},
        {"frame", {{{eShape::e_frame, false, {3, 3, 12, 11, 1, 1}}, nothing}}, 2 * 7 + 2 * 6 + 2 * pi},
        {"stroke", {{{eShape::e_stroke, false, {4, 4, 7, 8, 2}}, nothing}}, 10 + pi},
        {"triangle", {{{eShape::e_triangle, false, {1, 1, 13, 1, 1, 6, 0}}, nothing}}, 30},
        {"triangle the other way round", {{{eShape::e_triangle, false, {1, 1, 1, 6, 13, 1, 0}}, nothing}}, 30},
        {"box without a disc",
         {{{eShape::e_box, false, {1, 1, 9, 9, 0}}, {eShape::e_disc, true, {5, 5, 3}}}},
         64 - 9 * pi},
    };
    for (Row const &row : rows)
    {
        for (float const scale : {1.0f, 1.5f, 4.0f})
            EXPECT_NEAR(GetAreaOf({row.shapes[0], row.shapes[1]}, scale) / (scale * scale), row.area, row.area * 0.01)
                << row.name << " at " << scale;
    }
}

TEST(LookShapes, PartsOfRoundedRectanglesFitTogether)
{
    for (unsigned int const radius : {1u, 2u, 4u, 7u, 24u})
    {
        Sheet outer(32, 32), inner(32, 32), ring(32, 32);
        DrawCorner(outer, 0, 0, radius);
        DrawCorner(inner, 1, 1, radius - 1);
        DrawRingCorner(ring, 0, 0, radius, 1);
        EXPECT_NEAR(GetArea(outer), radius * radius * std::numbers::pi / 4, 0.01 * radius * radius);
        for (unsigned int y = 0; y < 32; ++y)
        {
            for (unsigned int x = 0; x < 32; ++x)
            {
                // A ring around a smaller corner is the whole corner; nothing lies outside of the square.
                EXPECT_NEAR(ring.Get(x, y) + inner.Get(x, y), outer.Get(x, y), 1) << radius << ' ' << x << ' ' << y;
                EXPECT_EQ(outer.Get(x, y), outer.Get(y, x));
                EXPECT_TRUE((x < radius && y < radius) || outer.Get(x, y) == 0);
            }
        }
    }

    Sheet shadow(40, 40);
    DrawShadowCorner(shadow, 8, 8, 24);
    EXPECT_EQ(shadow.Get(7, 31), 0);
    EXPECT_LE(shadow.Get(8, 31), 2);
    EXPECT_GE(shadow.Get(31, 31), 253);
    for (unsigned int x = 8; x < 31; ++x)
        EXPECT_LE(shadow.Get(x, 31), shadow.Get(x + 1, 31));
}

TEST(LookShapes, MarksFillTheirSquareAtEveryScale)
{
    for (unsigned int index = 0; index < s_numMarks; ++index)
    {
        auto const mark = static_cast<eMark>(index);
        Sheet large(80, 80), small(80, 80);
        DrawMark(large, 8, 8, mark, 64);
        DrawMark(small, 8, 8, mark, 16);
        EXPECT_GT(GetArea(large), 64 * 64 / 25) << index;
        EXPECT_NEAR(GetArea(small) * 16, GetArea(large), GetArea(large) * 0.02) << index;
        // No shape is cut by the edge of the square.
        for (unsigned int i = 8; i < 72; ++i)
            EXPECT_EQ(large.Get(i, 8) + large.Get(i, 71) + large.Get(8, i) + large.Get(71, i), 0) << index;
    }
    EXPECT_TRUE(GetMark(static_cast<eMark>(s_numMarks)).empty());
}

TEST(TileSet, IsTheFileInTheRepository)
{
    std::ifstream file(QUILLMARSH_TEST_SOURCES "data/gui_std_tiletexture_set0.tif", std::ios::binary);
    std::string const stored{std::istreambuf_iterator<char>(file), {}};
    // Not compared by the test's own means, which would print all bytes.
    EXPECT_TRUE(stored == drawtiles::MakeTiffFile(drawtiles::DrawTileSet()))
        << "Write it anew: drawtiles data/gui_std_tiletexture_set0.tif";
}

} // namespace
} // namespace look_shapes
