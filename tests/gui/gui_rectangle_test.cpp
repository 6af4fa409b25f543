#include <quillmarsh/gui/gui_rectangle.h>

#include <quillmarsh/gui/gui_transform.h>
#include <quillmarsh/gui/gui_vertices.h>
#include <quillmarsh/mathtools/transforms.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using gui::Rectangle;

void ExpectRectangle(Rectangle const &rectangle, float x, float y, float width, float height)
{
    EXPECT_EQ(std::tuple(rectangle.x, rectangle.y, rectangle.width, rectangle.height), std::tuple(x, y, width, height));
}

TEST(GuiRectangle, GrowsAndShrinksByAxis)
{
    Rectangle rectangle(10, 20, 30, 40);
    rectangle.Grow(2);
    ExpectRectangle(rectangle, 8, 18, 34, 44);
    rectangle.Shrink(2);
    ExpectRectangle(rectangle, 10, 20, 30, 40);
    // Half the width leaves it, half the height empties it.
    Rectangle square(0, 0, 10, 10);
    square.Shrink(5);
    ExpectRectangle(square, 0, 5, 10, 0);
    Rectangle flat(0, 0, 100, 4);
    flat.Shrink(5);
    ExpectRectangle(flat, 5, 0, 90, 4);
}

TEST(GuiRectangle, EdgesBelongToIt)
{
    Rectangle const rectangle(10, 20, 30, 40);
    EXPECT_TRUE(rectangle.HitTest(10, 20) && rectangle.HitTest(vec2(40, 60)));
    EXPECT_FALSE(rectangle.HitTest(9.5f, 20) || rectangle.HitTest(40, 60.5f));

    Rectangle const touching(40, 60, 5, 5);
    EXPECT_TRUE(rectangle.Intersects(touching) && touching.Intersects(rectangle));
    EXPECT_FALSE(rectangle.Intersects({40.5f, 20, 5, 5}) || rectangle.Intersects({10, 61, 5, 5}));

    EXPECT_TRUE(rectangle.Contains(rectangle) && rectangle.Contains({35, 55, 5, 5}));
    EXPECT_FALSE(rectangle.Contains({35, 55, 5, 6}) || touching.Contains(rectangle));
}

TEST(GuiRectangle, TurnsItsPartOfTheTexture)
{
    gui::RectangleCT rectangle;
    rectangle.uMin = 1;
    rectangle.uMax = 2;
    rectangle.vMin = 3;
    rectangle.vMax = 4;
    // Coordinates of top left, top right, bottom left, bottom right.
    vec2 const expected[6][4] = {{{1, 3}, {2, 3}, {1, 4}, {2, 4}}, {{2, 3}, {1, 3}, {2, 4}, {1, 4}},
                                 {{1, 4}, {2, 4}, {1, 3}, {2, 3}}, {{2, 3}, {2, 4}, {1, 3}, {1, 4}},
                                 {{2, 4}, {1, 4}, {2, 3}, {1, 3}}, {{1, 4}, {1, 3}, {2, 4}, {2, 3}}};
    gui::VertexCT vertices[4];
    for (unsigned int transform = 0; transform < 7; ++transform)
    {
        rectangle.SetTexTransform(static_cast<gui::RectangleCT::eTexTransform>(transform));
        rectangle.FillTransformedTexCoords(vertices[0], vertices[1], vertices[2], vertices[3]);
        // A number that is none leaves the last coordinates.
        for (unsigned int corner = 0; corner < 4; ++corner)
            EXPECT_EQ(vertices[corner].texCoord, expected[std::min(transform, 5u)][corner]) << transform;
    }
}

TEST(GuiVertexBuffer, SharesItsVerticesUntilItGrows)
{
    gui::VertexBufferC original(2);
    original[0].position = vec3(1, 2, 3);
    gui::VertexBufferC copy;
    copy = original;
    EXPECT_EQ(copy.GetCount(), 2u);
    copy[1].position = vec3(4, 5, 6);
    EXPECT_EQ(original[1].position, vec3(4, 5, 6));
    copy.Resize(3);
    copy[0].position = vec3::ZERO;
    EXPECT_EQ(original[0].position, vec3(1, 2, 3));
    EXPECT_EQ(copy[1].position, vec3(4, 5, 6));
    copy.Resize(1);
    EXPECT_EQ(copy.GetCount(), 1u);
}

TEST(GuiTransform, ScalesThenTurnsThenMoves)
{
    mat4 matrix;
    gui::Transform().GenerateVM(matrix);
    EXPECT_EQ(matrix, mat4::IDENTITY);

    gui::Transform transform;
    transform.translation = vec3(10, 20, 30);
    transform.scale = vec3(2, 3, 4);
    transform.rotation = vec3(30, 40, 50);
    mat4 expected, part;
    GenerateTranslateMV(expected, 10, 20, 30);
    for (auto const &[angle, axis] : {std::pair(50.0f, e_axisZ), std::pair(30.0f, e_axisX), std::pair(40.0f, e_axisY)})
    {
        GenerateRotateMV(part, angle, axis);
        expected *= part;
    }
    GenerateNonUniformScale(part, 2, 3, 4);
    expected *= part;
    transform.GenerateMV(matrix);
    EXPECT_EQ(matrix, expected);
    EXPECT_EQ(mat4(transform), expected.Transposed());
}

} // namespace
} // namespace quillmarsh
