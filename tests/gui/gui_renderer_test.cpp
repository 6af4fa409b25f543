#include <quillmarsh/gui/gui_renderer.h>

#include <quillmarsh/gui/gui_textures.h>
#include <quillmarsh/mathtools/transforms.h>

#include "tests/support/null_video.h"

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

constexpr color4b s_red(255, 0, 0, 255), s_green(0, 255, 0, 255), s_blue(0, 0, 255, 255), s_white(255, 255, 255, 255);

/// Draws between Begin() and End().
class GuiRenderer : public testing::Test, protected tests::NullVideo
{
protected:
    GuiRenderer() { gui.Begin(); }

    video_null::DrawnFrame const &End()
    {
        gui.End();
        EXPECT_TRUE(gui.GetFaults().empty()) << gui.GetFaults().front();
        return gui.GetLastFrame();
    }
};

gui::RectangleC MakeColorful(float x, float y, float width, float height)
{
    gui::RectangleC rectangle({x, y, width, height}, s_white);
    rectangle.colorTopRight = s_red;
    rectangle.colorBottomLeft = s_green;
    rectangle.colorBottomRight = s_blue;
    return rectangle;
}

TEST_F(GuiRenderer, DrawsARectangleAsAFan)
{
    gui.DrawRectangle(MakeColorful(10, 20, 30, 40));
    gui::Texture const texture(e_format_A8R8G8B8, false, 4, 4);
    gui::RectangleCT textured({0, 0, 8, 4}, s_white);
    textured.SetTexTransform(gui::RectangleCT::e_tex_rotate_a);
    gui.DrawRectangle(texture, textured);
    video_null::DrawnFrame const &frame = End();
    ASSERT_EQ(frame.items.size(), 2u);
    EXPECT_EQ(frame.items[0].primitive, gui::Renderer::e_triangleFan);
    EXPECT_EQ(frame.items[0].count, 2u);
    vec3 const positions[] = {{10, 20, 0}, {10, 60, 0}, {40, 60, 0}, {40, 20, 0}};
    color4b const colors[] = {s_white, s_green, s_blue, s_red};
    // Top left, bottom left, bottom right, top right.
    vec2 const coords[] = {{1, 0}, {0, 0}, {0, 1}, {1, 1}};
    for (std::size_t index = 0; index < 4; ++index)
    {
        EXPECT_EQ(frame.vertices[index].position, positions[index]);
        EXPECT_EQ(frame.vertices[index].color, colors[index]);
        EXPECT_EQ(frame.vertices[4 + index].texCoord, coords[index]);
    }
    EXPECT_EQ(frame.items[1].texture, &texture);
    gui::Renderer::Statistics const &stats = gui.Stats();
    EXPECT_EQ(std::tuple(stats.NumDrawRectangleColored, stats.NumDrawRectangleTextured, stats.NumPrimitivesColored,
                         stats.NumTextureChanges),
              std::tuple(1u, 1u, 2u, 1u));
}

TEST_F(GuiRenderer, DrawsAFrameAsAStripInsideTheEdges)
{
    gui.DrawRectangleFrame(MakeColorful(0, 0, 100, 50), 3);
    // Too thick: no hole, and nothing outside.
    gui.DrawRectangleFrame(MakeColorful(0, 0, 100, 50), 200);
    video_null::DrawnFrame const &frame = End();
    vec2 const positions[] = {{0, 0}, {3, 3}, {100, 0}, {97, 3}, {100, 50}, {97, 47}, {0, 50}, {3, 47}, {0, 0}, {3, 3}};
    color4b const colors[] = {s_white, s_red, s_blue, s_green, s_white};
    ASSERT_EQ(frame.vertices.size(), 20u);
    for (std::size_t index = 0; index < 10; ++index)
    {
        EXPECT_EQ(vec2(frame.vertices[index].position), positions[index]) << index;
        EXPECT_EQ(frame.vertices[index].color, colors[index / 2]) << index;
    }
    EXPECT_EQ(vec2(frame.vertices[11].position), vec2(25, 25));
    EXPECT_EQ(vec2(frame.vertices[15].position), vec2(75, 25));
    EXPECT_EQ(frame.items[0].primitive, gui::Renderer::e_triangleStrip);
    EXPECT_EQ(frame.items[0].count, 8u);
    EXPECT_EQ(gui.Stats().NumDrawRectangleFrameColored, 2u);
}

TEST_F(GuiRenderer, SentriesRestoreWhatTheyChanged)
{
    mat4 outer, inner, now;
    GenerateTranslateVM(outer, 10, 0, 0);
    GenerateNonUniformScale(inner, 2, 2, 2);
    gui.SetTransform(outer);
    {
        gui::Renderer::TransformSentry const concatenated(gui, inner, true);
        gui.GetTransform(now);
        // The inner one acts first: (1, 0, 0) becomes (2, 0, 0), then (12, 0, 0).
        EXPECT_EQ(now, inner * outer);
        gui::Renderer::TransformSentry const absolute(gui, inner, false);
        gui.GetTransform(now);
        EXPECT_EQ(now, inner);
    }
    gui.GetTransform(now);
    EXPECT_EQ(now, outer);

    gui::Renderer::DepthParams depth;
    depth.Near = -7;
    {
        gui::Renderer::DepthParamsSentry const sentry(gui, depth);
        gui.GetDepthParams(depth);
        EXPECT_EQ(depth.Near, -7);
    }
    gui.GetDepthParams(depth);
    EXPECT_EQ(depth.Near, -100);
    End();
}

TEST(GuiRendererStatistics, WorksOnAllCounters)
{
    gui::Renderer::Statistics a, b, result;
    a.Clear(3);
    b.Clear(10);
    a.NumTextGlyphs = 20;
    auto const expect = [&result](unsigned int first, unsigned int last)
    { EXPECT_EQ(std::pair(result.NumClearBuffers, result.NumTextGlyphs), std::pair(first, last)); };
    result.Min(a, b);
    expect(3, 10);
    result.Max(a, b);
    expect(10, 20);
    result.Accum(a);
    expect(13, 40);
    result.Average(result, 3);
    expect(4, 13);
    result.Average(a, 0);
    expect(0, 0);

    unsigned int number = 0;
    for (gui::Renderer::Statistics::Counter const &counter : gui::Renderer::Statistics::GetCounters())
        a.*counter.value = ++number;
    EXPECT_EQ(tests::DumpText(a, 1), "\tNumClearBuffers.............: 1\n"
                                     "\tNumSetViewport..............: 2\n"
                                     "\tNumBegin....................: 3\n"
                                     "\tNumEnd......................: 4\n"
                                     "\tNumBeginInterleaved.........: 5\n"
                                     "\tNumEndInterleaved...........: 6\n"
                                     "\tNumSetDepthParams...........: 7\n"
                                     "\tNumSetTransform.............: 8\n"
                                     "\tNumDrawPrimitiveColored.....: 9\n"
                                     "\tNumDrawPrimitiveTextured....: 10\n"
                                     "\tNumDrawText.................: 11\n"
                                     "\tNumDrawRectangleColored.....: 12\n"
                                     "\tNumDrawRectangleTextured....: 13\n"
                                     "\tNumDrawRectangleFrameColored: 14\n"
                                     "\tNumTextureChanges...........: 15\n"
                                     "\tNumPrimitivesColored........: 16\n"
                                     "\tNumPrimitivesTextured.......: 17\n"
                                     "\tNumTextGlyphs...............: 18\n");
}

} // namespace
} // namespace quillmarsh
