// Buffers, state and faults of the video stack on OpenGL.
#include "tests/support/opengl_stack.h"
#include "tests/support/scripted_dialogs.h"

#include <quillmarsh/framework/videoprofile.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sstream>

namespace quillmarsh
{
namespace
{

using namespace tests;

TEST_F(OpenGLStack, CapturesEachBuffer)
{
    Renderer &gui = GetGUI();
    gui.ClearBuffers({true, s_blue, true, 0.25f, true, 77, false, {}});
    gui.ClearBuffers({true, s_red, true, 0.75f, true, 200, true, {8, 4, 16, 8}});
    video_.renderer->PresentBackBuffer();
    // Until the next frame begins, both buffers have the picture.
    EXPECT_EQ(GetColor(*video_.Capture(), 4, 8), s_red);
    EXPECT_EQ(GetColor(*video_.Capture(e_capture_front_color), 4, 8), s_red);
    gui.ClearBuffers({true, s_green, true, 0.25f, true, 77, false, {}});
    gui.ClearBuffers({false, s_red, true, 0.75f, true, 200, true, {8, 4, 16, 8}});

    AutoPtr<ImageBase> image = video_.Capture();
    EXPECT_EQ(image->GetSampleFormat(), e_format_X8R8G8B8);
    EXPECT_EQ(image->GetNumRows(), 48u);
    EXPECT_EQ(image->GetNumColumns(), 64u);
    EXPECT_EQ(GetColor(*image, 5, 10), s_green);
    image = video_.Capture(e_capture_front_color);
    EXPECT_EQ(GetColor(*image, 4, 8), s_red);
    EXPECT_EQ(GetColor(*image, 3, 8), s_blue);
    EXPECT_EQ(GetColor(*image, 11, 23), s_red);
    EXPECT_EQ(GetColor(*image, 12, 23), s_blue);
    image = video_.Capture(e_capture_front_color, false);
    EXPECT_EQ(GetColor(*image, 48 - 1 - 4, 8), s_red);
    image = video_.Capture(e_capture_depth);
    EXPECT_EQ(image->GetSampleFormat(), e_format_FP32NormL);
    float depth = 0;
    std::memcpy(&depth, image->SampleB(4, 8), sizeof(depth));
    EXPECT_NEAR(depth, 0.75f, 1e-6f);
    std::memcpy(&depth, image->SampleB(0, 0), sizeof(depth));
    EXPECT_NEAR(depth, 0.25f, 1e-6f);
    image = video_.Capture(e_capture_stencil);
    EXPECT_EQ(image->GetSampleFormat(), e_format_L8);
    EXPECT_EQ(*image->SampleB(4, 8), 200);
    EXPECT_EQ(*image->SampleB(0, 0), 77);

    AutoPtr<ImageBase> const before = std::move(image);
    image.reset();
    EXPECT_FALSE(video_.renderer->CaptureFrameBuffer(image, 3, true));
    video_.Close();
    VideoConfig config = video_.MakeConfig(16, 16);
    config.FrameBuffer.DepthBits = config.FrameBuffer.StencilBits = 0;
    ASSERT_TRUE(video_.Open(config)) << video_.GetReason();
    EXPECT_FALSE(video_.renderer->CaptureFrameBuffer(image, e_capture_depth, true));
    EXPECT_FALSE(video_.renderer->CaptureFrameBuffer(image, e_capture_stencil, true));
    EXPECT_EQ(image, nullptr);
    // What was gathered is in the picture, also before End().
    Clear();
    GetGUI().Begin();
    Fill(2, 0, 2, 1, s_red);
    EXPECT_EQ(GetLetters(*video_.Capture(), 0, 6), "..rr..");
    GetGUI().End();
}

TEST_F(OpenGLStack, SmoothsEdgesWithSeveralSamples)
{
    video_.Close();
    EXPECT_TRUE(video_.subsystem->SetPluginParameter(NamedParameter("multisampling", "4")));
    EXPECT_FALSE(video_.subsystem->SetPluginParameter(NamedParameter("multisampling", "many")));
    EXPECT_FALSE(video_.subsystem->SetPluginParameter(NamedParameter("debug", 1.5)));
    ASSERT_TRUE(video_.Open(64, 48)) << video_.GetReason();
    Renderer::RendererParams params;
    GetGUI().GetRendererParams(params);
    if (params.NumSamples < 4)
        GTEST_SKIP() << "The driver has no multisampling.";
    Renderer &gui = GetGUI();
    for (bool const isPresented : {false, true})
    {
        gui.ClearBuffers({true, {0, 0, 0, 255}, true, 0.5f, true, 9, false, {}});
        gui.Begin();
        Fill(10, 10, 10.5f, 10, s_white);
        gui.End();
        if (isPresented)
            video_.renderer->PresentBackBuffer();
        AutoPtr<ImageBase> const image = video_.Capture(isPresented ? e_capture_front_color : e_capture_color);
        EXPECT_EQ(GetColor(*image, 15, 19), s_white);
        EXPECT_NEAR(GetColor(*image, 15, 20).g, 128, 66);
        EXPECT_EQ(GetColor(*image, 15, 21), color4b(0, 0, 0, 255));
    }
    gui.ClearBuffers({true, {0, 0, 0, 255}, true, 0.5f, true, 9, false, {}});
    EXPECT_EQ(*video_.Capture(e_capture_stencil)->SampleB(3, 3), 9);
    float depth = 0;
    std::memcpy(&depth, video_.Capture(e_capture_depth)->SampleB(3, 3), sizeof(depth));
    EXPECT_NEAR(depth, 0.5f, 1e-6f);
}

TEST_F(OpenGLStack, NeedsADrawCallOnlyForAChangeOfState)
{
    Renderer &gui = GetGUI();
    gui::Texture textures[2] = {{e_format_A8R8G8B8, false, 4, 4}, {e_format_A8R8G8B8, true, 4, 4}};
    AutoPtr<ImageBase> const images[2] = {MakeImage({"rrrr", "rrrr", "rrrr", "rrrr"}),
                                          MakeImage({"gggg", "gggg", "gggg", "gggg"})};
    for (int i = 0; i < 2; ++i)
    {
        textures[i].SetSourceImage(images[i].get(), false);
        textures[i].CreateVideoRendererResource(*video_.renderer);
    }
    auto const show = [&](int texture, float x) {
        gui.DrawRectangle(textures[texture], gui::RectangleCT({x, 0, 2, 2}, s_white));
    };
    Clear();
    unsigned int const before = GetNumDrawCalls();
    gui.ClearStats();
    gui.Begin();
    // One call: the filled shapes go along with the textures.
    Fill(0, 0, 2, 2, s_blue);
    show(0, 2);
    Fill(4, 0, 2, 2, s_blue);
    show(0, 6);
    // A second one: another texture, and a transform, which is none of the driver's business.
    show(1, 8);
    gui.SetTransform(mat4(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2, 0, 0, 1));
    show(1, 8);
    gui.SetTransform(mat4::IDENTITY);
    // A third one; nothing is drawn while the clip rectangle is empty.
    gui.SetClipRectangle({0, 0, 13, 10});
    show(1, 12);
    gui.SetClipRectangle({0, 0, 0, 0});
    show(1, 14);
    gui.ResetClipRectangle();
    gui.SetDepthParams(Renderer::DepthParams());
    gui.End();
    EXPECT_EQ(GetNumDrawCalls() - before, 3u);
    EXPECT_EQ(GetLetters(*video_.Capture(), 0, 18), "bbrrbbrrggggg.....");
    EXPECT_EQ(gui.Stats().NumTextureChanges, 2u);
    EXPECT_EQ(gui.Stats().NumDrawRectangleTextured, 6u);
    EXPECT_EQ(gui.Stats().NumPrimitivesTextured, 12u);
    EXPECT_EQ(gui.Stats().NumPrimitivesColored, 4u);

    // A texture that changes or ends does not change what was drawn with it.
    Clear();
    gui.Begin();
    show(0, 0);
    textures[0].SetSourceImage(images[1].get(), false);
    textures[0].UpdateVideoRendererResource();
    show(0, 2);
    show(1, 4);
    textures[1].ReleaseVideoRendererResource();
    show(1, 6);
    gui.End();
    EXPECT_EQ(GetLetters(*video_.Capture(), 0, 8), "rrgggg..");
    textures[0].ReleaseVideoRendererResource();
}

TEST_F(OpenGLStack, LendsTheDeviceToTheApplication)
{
    Renderer &gui = GetGUI();
    video_opengl::OpenGLFunctions const &gl = GetGL();
    auto const get = [&](GLenum name)
    {
        GLint values[4] = {};
        gl.GetIntegerv(name, values);
        return values[0];
    };
    auto const expectDefaults = [&]
    {
        EXPECT_NE(get(GL_DRAW_FRAMEBUFFER_BINDING), 0);
        for (GLenum const name : {GL_CURRENT_PROGRAM, GL_VERTEX_ARRAY_BINDING, GL_ARRAY_BUFFER_BINDING,
                                  GL_TEXTURE_BINDING_2D, GL_BLEND, GL_DEPTH_TEST, GL_CULL_FACE, GL_STENCIL_TEST})
            EXPECT_EQ(get(name), 0) << std::hex << name;
        EXPECT_EQ(get(GL_DEPTH_WRITEMASK), 1);
        EXPECT_EQ(get(GL_DEPTH_FUNC), GL_LESS);
    };
    Clear();
    expectDefaults();
    gui.SetViewport({vec2(8, 0), vec2(32, 24)});
    gui.Begin();
    Fill(0, 0, 4, 4, s_red);
    gui.SetClipRectangle({8, 0, 8, 8});
    gui.BeginInterleaved();
    expectDefaults();
    GLint viewport[4] = {};
    gl.GetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(std::vector<GLint>(viewport, viewport + 4), (std::vector<GLint>{8, 24, 32, 24}));
    EXPECT_EQ(get(GL_SCISSOR_TEST), 1);
    gl.ClearColor(0, 1, 0, 1);
    gl.Clear(GL_COLOR_BUFFER_BIT);
    // Everything that would spoil the rest of the frame.
    gl.Viewport(0, 0, 1, 1);
    gl.Enable(GL_CULL_FACE);
    gl.Enable(GL_STENCIL_TEST);
    gl.Enable(GL_DEPTH_TEST);
    gl.DepthFunc(GL_NEVER);
    gl.ColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    gl.PolygonMode(GL_FRONT_AND_BACK, GL_POINT);
    gl.Disable(GL_SCISSOR_TEST);
    gl.UseProgram(0);
    gl.BindVertexArray(0);
    {
        // Meanwhile the renderer draws nothing, so that a texture may go.
        gui::Texture texture(e_format_A8R8G8B8, false, 1, 1);
        texture.CreateVideoRendererResource(*video_.renderer);
        gui.DrawRectangle(texture, gui::RectangleCT({6, 0, 2, 4}, s_white));
    }
    gl.ActiveTexture(GL_TEXTURE3);
    gui.EndInterleaved();
    Fill(2, 0, 2, 4, s_blue);
    gui.ResetClipRectangle();
    Fill(16, 0, 2, 4, s_white);
    gui.End();
    expectDefaults();
    EXPECT_EQ(GetLetters(*video_.Capture(), 1, 28), "........ggbbgggg........ww..");
    EXPECT_EQ(GetLetters(*video_.Capture(), 9, 28), "............................");
}

TEST_F(OpenGLStack, ComesBackAfterALoss)
{
    auto const draw = [&]
    {
        Clear();
        GetGUI().Begin();
        Fill(1, 0, 2, 1, s_red);
        GetGUI().End();
    };
    draw();
    EXPECT_TRUE(video_.subsystem->SetPluginParameter(NamedParameter("lose-device", true)));
    EXPECT_EQ(video_.subsystem->GetOperationalState(), e_video_operational);
    video_.renderer->PresentBackBuffer();
    EXPECT_EQ(video_.subsystem->GetOperationalState(), e_video_device_lost);
    // Harmless meanwhile.
    draw();
    video_.renderer->PresentBackBuffer();
    AutoPtr<ImageBase> image;
    EXPECT_FALSE(video_.renderer->CaptureFrameBuffer(image, e_capture_color, true));
    video_.ReleaseResources(true);
    draw();
    EXPECT_TRUE(video_.subsystem->RestoreDevice());
    video_.CreateResources(true);
    draw();
    video_.renderer->PresentBackBuffer();
    EXPECT_EQ(video_.subsystem->GetOperationalState(), e_video_operational);
    EXPECT_EQ(GetLetters(*video_.Capture(e_capture_front_color), 0, 4), ".rr.");

    // What stays behind at the end is told.
    AutoPtr<video_renderer_objects::Texture2D> const forgotten = GetGUI().CreateTexture(e_format_L8, false, 4, 4, true);
    ScriptedDialogs dialogs;
    video_.Close();
    EXPECT_EQ(dialogs.TakeTexts(), (std::vector<string>{"OpenGL objects outlive their device."}));
    EXPECT_FALSE(forgotten->LoadLevels(0));
}

TEST_F(OpenGLStack, TakesNewSizesAndConfigurations)
{
    struct Size
    {
        unsigned int width;
        unsigned int height;
    };
    for (Size const size : {Size{300, 1}, {1, 200}, {0, 0}, {128, 96}})
    {
        video_.Resize(size.width, size.height);
        Clear(s_red);
        GetGUI().Begin();
        Fill(0, 0, 1, 1, s_blue);
        GetGUI().End();
        AutoPtr<ImageBase> const image = video_.Capture();
        EXPECT_EQ(image->GetNumColumns(), std::max(size.width, 1u));
        EXPECT_EQ(image->GetNumRows(), std::max(size.height, 1u));
        EXPECT_EQ(GetColor(*image, 0, 0), s_blue);
        EXPECT_EQ(GetColor(*image, image->GetNumRows() - 1, image->GetNumColumns() - 1),
                  image->GetNumSamples() > 1 ? s_red : s_blue);
        video_.renderer->PresentBackBuffer();
    }
    // Beyond what a driver can have.
    video_.Resize(100000, 1);
    Clear(s_green);
    AutoPtr<ImageBase> const wide = video_.Capture();
    EXPECT_LT(wide->GetNumColumns(), 100000u);
    EXPECT_EQ(GetColor(*wide, 0, wide->GetNumColumns() - 1), s_green);

    for (bool const vsync : {false, true})
    {
        video_.subsystem->OnSetVSync(vsync);
        VideoConfig config = video_.subsystem->GetVideoConfig();
        EXPECT_EQ(config.Hints.VSync, vsync);
        video_.Close();
        config.DisplayMode = DisplayModeConfig(320, 240, 32, 0);
        config.FrameBuffer.AlphaBits = vsync ? 8 : 0;
        config.FrameBuffer.StencilBits = vsync ? 8 : 0;
        ASSERT_TRUE(video_.Open(config)) << video_.GetReason();
        EXPECT_EQ(video_.subsystem->GetVideoConfig(), config);
        platform::Window const *const window = video_.subsystem->GetWindow()->GetPlatformWindow();
        EXPECT_EQ(window, platform::Window::GetMain());
        EXPECT_EQ(window->GetTitle(), "test");
        EXPECT_EQ(window->GetState(), platform::eWindowState::e_hidden);
        EXPECT_EQ(window->GetSize().width, 320);
        EXPECT_EQ(window->GetSize().height, 240);
        EXPECT_EQ(video_.Capture()->GetNumColumns(), 320u);
    }
}

TEST_F(OpenGLStack, CopiesTheBackBufferToTheWindow)
{
    std::shared_ptr<video_opengl::Device> const device = GetSubsystem().GetDevice();
    video_opengl::OpenGLFunctions const &gl = device->gl;
    auto const clear = [&](GLint x, GLint y, GLsizei width, GLsizei height, std::initializer_list<float> color)
    {
        video_opengl::ClearValues values;
        std::copy(color.begin(), color.end(), values.color);
        gl.Enable(GL_SCISSOR_TEST);
        gl.Scissor(x, y, width, height);
        video_opengl::ClearBuffers(gl, values, GL_COLOR_BUFFER_BIT);
        gl.Disable(GL_SCISSOR_TEST);
    };
    for (unsigned int const numSamples : {0u, 4u})
    {
        gl.BindFramebuffer(GL_FRAMEBUFFER, 0);
        clear(0, 0, 64, 48, {0, 0, 0, 1});
        // A target that is smaller than the window: it fills the top left corner.
        video_opengl::Target target(device, video_opengl::FindTargetFormat(VideoConfig(true).FrameBuffer), numSamples,
                                    8, 4);
        clear(0, 0, 8, 4, {1, 0, 0, 1});
        clear(0, 3, 2, 1, {0, 1, 0, 1});
        target.Present(48);
        gl.BindFramebuffer(GL_FRAMEBUFFER, 0);
        ImageBaseFromExternalStorageAdapter image(e_format_A8R8G8B8);
        std::vector<unsigned char> pixels(64 * 48 * 4);
        gl.ReadPixels(0, 0, 64, 48, GL_BGRA, GL_UNSIGNED_BYTE, pixels.data());
        image.SetExternalStorage(pixels.data(), 48, 64);
        EXPECT_EQ(GetLetters(image, 47, 10), "ggrrrrrr..");
        EXPECT_EQ(GetLetters(image, 44, 10), "rrrrrrrr..");
        EXPECT_EQ(GetLetters(image, 43, 10), "..........");
    }
}

TEST_F(OpenGLStack, PassesMessagesOfTheDriverToTheLog)
{
    video_.Close();
    EXPECT_TRUE(video_.subsystem->SetPluginParameter(NamedParameter("debug", "true")));
    ASSERT_TRUE(video_.Open(64, 48)) << video_.GetReason();
    if (GetGL().DebugMessageCallback == nullptr)
        GTEST_SKIP() << "The driver has no messages.";
    Clear();
    GetGUI().Begin();
    Fill(0, 0, 4, 4, s_red);
    GetGUI().End();
    video_.renderer->PresentBackBuffer();
    EXPECT_EQ(video_.kernel.logOut.str(), "");
    GetGL().Enable(0xFFFF);
    EXPECT_NE(video_.kernel.logOut.str().find("OpenGL: "), string::npos);
}

TEST_F(OpenGLStack, SaysWhatItCannotOpen)
{
    video_.Close();
    VideoConfig config = video_.MakeConfig(100000, 100000);
    EXPECT_FALSE(video_.Open(config));
    EXPECT_EQ(video_.GetReason(), "A window of 100000 x 100000 x 32 @ 0 is too large: 16384 is the limit.");
    config = video_.MakeConfig(64, 48);
    config.FrameBuffer.DepthBits = 17;
    EXPECT_FALSE(video_.Open(config));
    EXPECT_EQ(video_.GetReason(), "OpenGL does not offer a frame buffer of the bits 8.8.8.8, 17.8, 0.0.0.0 (colours, "
                                  "depth and stencil, accumulation).");
    EXPECT_EQ(video_.subsystem->GetOperationalState(), e_video_closed);
    // A size of 0 is one of 1.
    EXPECT_TRUE(video_.Open(0, 0)) << video_.GetReason();
    EXPECT_EQ(video_.Capture()->GetNumSamples(), 1u);
    EXPECT_THROW(video_.subsystem->Open(config, "again"), VideoSubsystemException);
}

TEST_F(OpenGLStack, TellsWhatTheDriverOffers)
{
    VideoProfile open;
    std::ostringstream log;
    EXPECT_TRUE(video_.subsystem->CollectVideoProfile(log, open)) << log.str();
    video_.Close();
    VideoProfile closed;
    EXPECT_TRUE(video_.subsystem->CollectVideoProfile(log, closed)) << log.str();
    EXPECT_EQ(log.str(), "");
    for (VideoProfile const *profile : {&open, &closed})
    {
        EXPECT_FALSE(profile->GetDriverDescription().empty());
        EXPECT_GE(std::stod(profile->GetDriverVersion()), 3.3);
        EXPECT_FALSE(profile->IsEmpty());
        // The default wish can be had to the bit, whatever the rasterizer.
        VideoConfig const wish(true);
        VideoConfig config(false);
        ASSERT_TRUE(profile->ConstructClosestValidVideoConfig(wish, config));
        config.FrameBuffer.HardwareRasterizer = true;
        EXPECT_EQ(config.FrameBuffer, wish.FrameBuffer);
    }
    EXPECT_EQ(open.GetNumFrameBufferConfigs(), closed.GetNumFrameBufferConfigs());
}

} // namespace
} // namespace quillmarsh
