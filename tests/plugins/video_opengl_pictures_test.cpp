// What the renderer on OpenGL draws, compared with stored pictures.
#include "tests/support/opengl_video.h"
#include "tests/support/pictures.h"

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_transform.h>
#include <quillmarsh/mathtools/transforms.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using gui::Renderer;
using gui::VertexC;
using gui::VertexCT;

constexpr color4b s_red(230, 60, 50, 255);
constexpr color4b s_green(70, 180, 90, 255);
constexpr color4b s_blue(60, 110, 230, 255);
constexpr color4b s_yellow(240, 200, 60, 255);
constexpr color4b s_white(255, 255, 255, 255);
constexpr color4b s_half(255, 255, 255, 128);

/// A picture without any symmetry: an F on a ground whose left is red and whose right is blue.
AutoPtr<ImageBase> MakeLetter(unsigned int size)
{
    AutoPtr<ImageBase> image(ManufactureImage(e_format_A8R8G8B8, size, size));
    for (unsigned int row = 0; row < size; ++row)
    {
        for (unsigned int column = 0; column < size; ++column)
        {
            unsigned int const x = column * 8 / size, y = row * 8 / size;
            bool const isInk =
                (x == 2 && y >= 1 && y <= 6) || (y == 1 && x >= 2 && x <= 5) || (y == 3 && x >= 2 && x <= 4);
            color4b const color = isInk ? s_white : x < 4 ? s_red : s_blue;
            std::copy_n(color.ToPtr(), 4, image->SampleB(row, column));
        }
    }
    return image;
}

/// A sheet whose glyphs show the bits of their codes, the lowest at the left, over a line of the glyph's full width.
AutoPtr<ImageBase> MakeGlyphs()
{
    AutoPtr<ImageBase> image(ManufactureImage(e_format_A8R8G8B8, 128, 256));
    std::fill_n(image->GetSamplesB(), image->GetTotalByteSize(), static_cast<unsigned char>(0));
    for (unsigned int glyph = 0; glyph < 128; ++glyph)
    {
        for (unsigned int y = 2; y < 14; ++y)
        {
            for (unsigned int x = 1; x < 15; ++x)
            {
                bool const isInk = y >= 12 || ((glyph >> (x - 1) / 2 & 1) != 0 && y < 10);
                if (isInk)
                    std::fill_n(image->SampleB(glyph / 16 * 16 + y, glyph % 16 * 16 + x), 4,
                                static_cast<unsigned char>(255));
            }
        }
    }
    return image;
}

class OpenGLPictures : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!video_.Open(320, 240))
            GTEST_SKIP() << video_.GetReason();
        gui_ = &video_.GetGUI();
        Renderer::ClearParams clear;
        clear.Color = color4b(40, 44, 52, 255);
        clear.ClearStencil = true;
        gui_->ClearBuffers(clear);
        gui_->Begin();
    }

    void TearDown() override
    {
        letter_.ReleaseVideoRendererResource();
        font_.ReleaseVideoRendererResource();
    }

    gui::TileTexture const &GetLetter()
    {
        AutoPtr<ImageBase> const image = MakeLetter(32);
        letter_.SetSourceImage(image.get(), false);
        letter_.CreateVideoRendererResource(*video_.renderer);
        return letter_;
    }

    gui::FontTexture const &GetFont()
    {
        AutoPtr<ImageBase> const image = MakeGlyphs();
        font_.SetGenerateImageFromSystemFont(false);
        font_.SetSourceImage(image.get(), false);
        font_.CreateVideoRendererResource(*video_.renderer);
        return font_;
    }

    void Fill(float x, float y, float width, float height, color4b color)
    {
        gui_->DrawRectangle(gui::RectangleC({x, y, width, height}, color));
    }

    testing::AssertionResult Matches(string const &name)
    {
        gui_->End();
        return tests::MatchesPicture(*video_.Capture(), name);
    }

    tests::OpenGLVideo video_{QUILLMARSH_TEST_video_opengl};
    Renderer *gui_ = nullptr;

private:
    gui::TileTexture letter_{e_format_A8R8G8B8, true, 32, 32, 2, 2};
    gui::FontTexture font_{true, 256, false};
};

gui::VertexBufferC MakeVertices(std::initializer_list<VertexC> vertices)
{
    gui::VertexBufferC buffer(static_cast<unsigned int>(vertices.size()));
    std::copy(vertices.begin(), vertices.end(), buffer.GetVertices());
    return buffer;
}

TEST_F(OpenGLPictures, ShapesAndFrames)
{
    // Behind a vertex that is not drawn.
    gui::VertexBufferC list = MakeVertices({{{0, 0, 0}, s_white},
                                            {{10, 10, 0}, s_red},
                                            {{10, 60, 0}, s_green},
                                            {{60, 60, 0}, s_blue},
                                            {{20, 10, 0}, s_yellow},
                                            {{70, 10, 0}, s_yellow},
                                            {{70, 60, 0}, s_half}});
    gui_->DrawPrimitive(list, Renderer::e_triangleList, 2, 1);
    gui::VertexBufferC strip = MakeVertices({{{90, 10, 0}, s_red},
                                             {{90, 60, 0}, s_green},
                                             {{120, 15, 0}, s_blue},
                                             {{120, 55, 0}, s_yellow},
                                             {{150, 35, 0}, s_white}});
    gui_->DrawPrimitive(strip, Renderer::e_triangleStrip, 3, 0);
    gui::VertexBufferC fan = MakeVertices({{{190, 35, 0}, s_white},
                                           {{190, 5, 0}, s_red},
                                           {{165, 20, 0}, s_green},
                                           {{165, 50, 0}, s_blue},
                                           {{190, 65, 0}, s_yellow},
                                           {{215, 50, 0}, s_red}});
    gui_->DrawPrimitive(fan, Renderer::e_triangleFan, 4, 0);

    gui::RectangleC corners({230, 10, 80, 50}, s_red);
    corners.colorTopRight = s_green;
    corners.colorBottomLeft = s_blue;
    corners.colorBottomRight = s_yellow;
    gui_->DrawRectangle(corners);
    corners.Set(10, 80, 60, 40);
    gui_->DrawRectangleFrame(corners, 1);
    corners.SetPosition(80, 80);
    gui_->DrawRectangleFrame(corners, 7.5f);
    corners.SetPosition(150, 80);
    gui_->DrawRectangleFrame(corners, 100);

    // Transparency, and edges between pixels.
    Fill(10, 140, 100, 60, s_blue);
    Fill(40, 160, 100, 60, color4b(230, 60, 50, 128));
    Fill(60, 130, 20, 100, color4b(255, 255, 255, 64));
    for (int i = 0; i < 8; ++i)
        Fill(160 + 12 * static_cast<float>(i) + 0.125f * static_cast<float>(i), 140, 6, 20, s_white);
    EXPECT_TRUE(Matches("opengl_shapes"));
}

TEST_F(OpenGLPictures, TexturesAndText)
{
    gui::TileTexture const &letter = GetLetter();
    for (unsigned int turn = 0; turn < 6; ++turn)
    {
        gui::RectangleCT whole({10 + 50 * static_cast<float>(turn), 10, 40, 40}, s_white);
        whole.SetTexTransform(static_cast<gui::RectangleCT::eTexTransform>(turn));
        gui_->DrawRectangle(letter, whole);
    }
    // One tile, enlarged and coloured; the whole, at a quarter of its size, from a smaller level.
    gui::RectangleCT tile({10, 60, 60, 60}, s_white);
    letter.GetTileCoords(0, 1, tile);
    tile.SetColorBottom(s_yellow);
    gui_->DrawRectangle(letter, tile);
    gui_->DrawRectangle(letter, gui::RectangleCT({80, 60, 8, 8}, s_white));
    gui::VertexBufferCT fan(4);
    fan[0] = VertexCT({110, 60, 0}, s_white, {0, 0});
    fan[1] = VertexCT({100, 110, 0}, s_white, {0, 1});
    fan[2] = VertexCT({160, 120, 0}, s_half, {1, 1});
    fan[3] = VertexCT({150, 70, 0}, s_white, {1, 0});
    gui_->DrawPrimitive(letter, fan, Renderer::e_triangleFan, 2, 0);
    // Coordinates beyond the texture give its edge.
    gui::RectangleCT wide({180, 60, 60, 60}, s_white);
    wide.uMin = wide.vMin = -1;
    wide.uMax = wide.vMax = 2;
    gui_->DrawRectangle(letter, wide);

    gui::FontTexture const &font = GetFont();
    gui::DrawTextParams params;
    params.position = vec2(10, 130);
    params.metrics.Height = 16;
    // The last glyph is not in the sheet, and leaves a gap.
    gui_->DrawText(font, string("Glyphs 0123\xE4."), params);
    params.position = vec2(10, 150);
    params.color = s_yellow;
    params.metrics.Height = 32;
    params.metrics.GlyphWidthScale = 0.5f;
    params.metrics.UseDefaultSpacing = false;
    params.metrics.Spacing = 0.25f;
    gui_->DrawText(font, string("Narrow"), params);
    // A texture without its part in the renderer draws nothing.
    gui::Texture const absent(e_format_A8R8G8B8, false, 16, 16);
    gui_->DrawRectangle(absent, gui::RectangleCT({0, 0, 320, 240}, s_white));
    EXPECT_TRUE(Matches("opengl_textures"));
}

TEST_F(OpenGLPictures, TransformsClippingAndDepth)
{
    mat4 transform;
    for (int i = 0; i < 5; ++i)
    {
        gui::Transform place;
        place.translation = vec3(50, 50, 0);
        place.rotation = vec3(0, 0, static_cast<float>(18 * i));
        Renderer::TransformSentry const sentry(*gui_, place, false);
        gui_->DrawRectangleFrame(gui::RectangleC({-30, -20, 60, 40}, i % 2 == 0 ? s_yellow : s_green), 2);
    }
    gui_->GetTransform(transform);
    EXPECT_EQ(transform, mat4::IDENTITY);
    // A perspective, whose texture runs into the distance.
    mat4 perspective = mat4::IDENTITY;
    perspective[0][3] = 0.01f;
    gui::Transform move;
    move.translation = vec3(110, 20, 0);
    gui_->SetTransform(perspective * move);
    gui_->DrawRectangle(GetLetter(), gui::RectangleCT({0, 0, 200, 80}, s_white));
    gui_->SetTransform(mat4::IDENTITY);
    Fill(240, 10, 10, 10, s_red);

    // Half pixels are rounded; the transform does not move the rectangle.
    gui_->SetClipRectangle({20.4f, 120.6f, 60, 39.9f});
    gui_->SetTransform(mat4(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 0, 0, 1));
    Fill(0, 100, 320, 100, s_blue);
    gui_->SetClipRectangle({30, 150, 0, 60});
    Fill(0, 100, 320, 100, s_red);
    gui_->SetClipRectangle({70, 140, 5000, 5000});
    Fill(0, 100, 100, 100, color4b(255, 255, 255, 128));
    gui_->ResetClipRectangle();
    gui_->SetTransform(mat4::IDENTITY);

    // Two triangles that pass through each other, and one that is behind both but drawn last.
    Renderer::DepthParams depth;
    depth.DepthTest = depth.DepthWrite = true;
    {
        Renderer::DepthParamsSentry const sentry(*gui_, depth);
        gui::VertexBufferC triangles = MakeVertices({{{140, 130, 40}, s_red},
                                                     {{140, 220, 40}, s_red},
                                                     {{240, 175, -40}, s_red},
                                                     {{240, 130, 40}, s_green},
                                                     {{240, 220, 40}, s_green},
                                                     {{140, 175, -40}, s_green},
                                                     {{130, 150, 90}, s_white},
                                                     {{130, 200, 90}, s_white},
                                                     {{250, 175, 90}, s_white}});
        gui_->DrawPrimitive(triangles, Renderer::e_triangleList, 3, 0);
    }
    // The depth buffer has no effect any more.
    Fill(185, 165, 10, 20, s_yellow);

    // A part of the target with coordinates of its own.
    gui_->SetViewport({vec2(260, 120), vec2(50, 100)});
    Fill(5, 5, 100, 40, s_green);
    Renderer::ViewportParams viewport;
    gui_->GetViewport(viewport);
    EXPECT_EQ(viewport.Position, vec2(260, 120));
    Renderer::ClearParams clear;
    clear.Color = s_blue;
    clear.ClearRectangleOnly = true;
    clear.Rectangle = {260, 200, 20, 20};
    gui_->ClearBuffers(clear);
    EXPECT_TRUE(Matches("opengl_state"));
}

} // namespace
} // namespace quillmarsh
