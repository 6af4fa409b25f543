#include "tests/support/null_video.h"

#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/host/pluginset.h>
#include <quillmarsh/mathtools/transforms.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using Doors = tests::NullVideo::Doors;

string GetParameter(Plugin const &plugin, string const &name)
{
    NamedParameter parameter;
    EXPECT_TRUE(plugin.GetPluginParameter(name, parameter)) << name;
    return parameter.GetValueString();
}

TEST(VideoNull, NamesBothCallsOfAWrongOrder)
{
    tests::TestKernel kernel;
    tests::NullVideo video;
    gui::VertexBufferC vertices(3);
    video.gui.DrawPrimitive(vertices, gui::Renderer::e_triangleList, 1, 0);
    video.gui.Begin();
    video.gui.Begin();
    video.gui.BeginInterleaved();
    video.gui.SetTransform(mat4::IDENTITY);
    video.gui.EndInterleaved();
    video.gui.End();
    video.gui.End();
    // The same fault again.
    video.gui.End();
    EXPECT_EQ(GetParameter(video.renderer, "faults"),
              "DrawPrimitive() came after CreateVideoResources(), but belongs between Begin() and End().\n"
              "Begin() came after Begin(), but belongs outside Begin() and End().\n"
              "SetTransform() came after BeginInterleaved(), but belongs between Begin() and End().\n"
              "End() came after End(), but belongs behind Begin().\n");
    EXPECT_TRUE(video.gui.GetLastFrame().items.empty());
    EXPECT_EQ(video.gui.Stats().NumEnd, 3u);
}

TEST(VideoNull, RefusesWhatIsNotThere)
{
    tests::TestKernel kernel;
    tests::NullVideo video;
    gui::VertexBufferC vertices(4);
    video.gui.Begin();
    video.gui.DrawPrimitive(vertices, gui::Renderer::e_triangleStrip, 2, 1);
    video.gui.DrawPrimitive(vertices, gui::Renderer::e_triangleList, 0x55555556, 0);
    video.gui.DrawPrimitive(vertices, 3, 1, 0);
    video.gui.DrawPrimitive(vertices, gui::Renderer::e_triangleFan, 2, 0);
    video.gui.End();
    EXPECT_EQ(GetParameter(video.renderer, "faults"),
              "DrawPrimitive() needs the vertices from 1 to 4, but there are 4.\n"
              "DrawPrimitive() needs the vertices from 0 to 4294967297, but there are 4.\n"
              "DrawPrimitive() got the unknown primitive type 3.\n");
    EXPECT_EQ(video.gui.GetLastFrame().items.size(), 1u);
    EXPECT_EQ(video.gui.CreateTexture(e_format_A8R8G8B8, false, 0, 4, true), nullptr);
    EXPECT_EQ(video.gui.CreateTexture(e_format_A8R8G8B8, false, 4, 100000, true), nullptr);
}

TEST(VideoNull, CountsTexturesThatOutliveTheirRenderer)
{
    tests::TestKernel kernel;
    AutoPtr<video_renderer_objects::Texture2D> texture;
    tests::NullVideo video;
    texture = video.gui.CreateTexture(e_format_A8R8G8B8, true, 8, 16, true);
    ASSERT_NE(texture, nullptr);
    EXPECT_TRUE(texture->LoadLevels(static_cast<unsigned char>(255)));
    EXPECT_EQ(dynamic_cast<video_null::NullTexture &>(*texture).GetNumLoadedSamples(), 16u * 8 + 8 * 4 + 4 * 2 + 2 + 1);
    Doors::VideoRenderer_ReleaseVideoResources(video.renderer, true);
    Doors::VideoRenderer_CreateVideoResources(video.renderer, true);
    ASSERT_TRUE(video.renderer.SetPluginParameter({"managed-resources", true}));
    Doors::VideoRenderer_ReleaseVideoResources(video.renderer, true);
    Doors::VideoRenderer_CreateVideoResources(video.renderer, true);
    EXPECT_EQ(GetParameter(video.renderer, "faults"), "ReleaseVideoResources() came while there were textures: 1.\n");
    texture.reset();
    EXPECT_EQ(video.gui.GetNumTextures(), 0u);
}

TEST(VideoNull, KeepsTheLastFrameReadable)
{
    tests::TestKernel kernel;
    tests::NullVideo video;
    AutoPtr<gui::FontTexture> const font(gui::FontTexture::CreateFontTexture(gui::FontTexture::CreationParams()));
    video.gui.Begin();
    mat4 move;
    GenerateTranslateVM(move, 100, 50, 0);
    video.gui.SetTransform(move);
    video.gui.SetClipRectangle({0, 0, 320, 240});
    video.gui.DrawRectangle(gui::RectangleC({1, 2, 3, 4}, color4b(10, 20, 30, 255)));
    video.gui.ResetClipRectangle();
    gui::DrawTextParams params;
    params.position = vec2(5, 6);
    video.gui.DrawText(*font, 5, "Hello", params);
    video.gui.End();
    EXPECT_EQ(GetParameter(video.renderer, "last-frame"),
              "triangle fan of 2 from (101, 52) to (104, 56), colour (10, 20, 30, 255), clipped from (0, 0) to "
              "(320, 240)\n"
              "text 'Hello' at (105, 56), height 20, colour (255, 255, 255, 255)\n");
    EXPECT_EQ(video.gui.Stats().NumTextGlyphs, 5u);
    // It stays until the next frame has ended.
    video.gui.Begin();
    EXPECT_EQ(video.gui.GetLastFrame().items.size(), 2u);
    video.gui.End();
    EXPECT_TRUE(video.gui.GetLastFrame().items.empty());
}

TEST(VideoNull, LoadsAsAPluginAndLosesItsDevice)
{
    tests::TestKernel kernel;
    host::PluginSet plugins;
    plugins.Load(QUILLMARSH_TEST_video_null);
    ASSERT_EQ(plugins.GetEntries().size(), 2u);
    auto subsystem = plugins.CreateAs<VideoSubsystem>(*plugins.GetEntries()[0].descriptor);
    auto renderer = plugins.CreateAs<VideoRenderer>(*plugins.GetEntries()[1].descriptor);
    ASSERT_NE(subsystem, nullptr);
    ASSERT_NE(renderer, nullptr);
    EXPECT_TRUE(renderer->IsCompatibleWith(*subsystem));
    // A fault reaches the console.
    renderer->GetGUIRenderer().End();
    EXPECT_NE(kernel.conOut.str().find("video_null: End() came as the first call, but belongs behind Begin()."),
              string::npos);

    subsystem->Open(VideoConfig(true), "test");
    EXPECT_EQ(subsystem->GetOperationalState(), e_video_operational);
    ASSERT_TRUE(subsystem->SetPluginParameter({"lose-device", "true"}));
    subsystem->PresentBackBuffer();
    EXPECT_EQ(subsystem->GetOperationalState(), e_video_device_lost);
    EXPECT_TRUE(subsystem->RestoreDevice());
    subsystem->PresentBackBuffer();
    EXPECT_EQ(subsystem->GetOperationalState(), e_video_operational);
    subsystem->Close();
}

} // namespace
} // namespace quillmarsh
