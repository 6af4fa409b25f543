// Buffers, state and faults of the video stack on OpenGL.
#include "tests/support/opengl_video.h"
#include "tests/support/scripted_dialogs.h"

#include "video_opengl/openglrenderer.h"
#include "video_opengl/openglsubsystem.h"

#include <quillmarsh/framework/videoprofile.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <sstream>

namespace quillmarsh
{
namespace
{

using gui::Renderer;
using video_opengl::OpenGLRenderer;
using video_opengl::OpenGLSubsystem;

constexpr color4b s_red(255, 0, 0, 255);
constexpr color4b s_green(0, 255, 0, 255);
constexpr color4b s_blue(0, 0, 255, 255);
constexpr color4b s_white(255, 255, 255, 255);

color4b GetColor(ImageBase const &image, unsigned int row, unsigned int column)
{
    unsigned char const *const sample = image.SampleB(row, column);
    return {sample[2], sample[1], sample[0], 255};
}

/// Returns the pixels of a row of a captured image as letters: the channels that are bright.
string GetLetters(ImageBase const &image, unsigned int row, unsigned int numColumns)
{
    string letters;
    for (unsigned int column = 0; column < numColumns; ++column)
    {
        color4b const color = GetColor(image, row, column);
        unsigned int const number = (color.r > 127 ? 1u : 0u) + (color.g > 127 ? 2u : 0u) + (color.b > 127 ? 4u : 0u);
        letters += ".rgybmcw"[number];
    }
    return letters;
}

class OpenGLStack : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!video_.Open(64, 48))
            GTEST_SKIP() << video_.GetReason();
    }

    Renderer &GetGUI() { return video_.GetGUI(); }
    OpenGLSubsystem &GetSubsystem() { return static_cast<OpenGLSubsystem &>(*video_.subsystem); }
    video_opengl::OpenGLFunctions const &GetGL() { return GetSubsystem().GetDevice()->gl; }
    unsigned int GetNumDrawCalls() const
    {
        NamedParameter parameter;
        EXPECT_TRUE(video_.renderer->GetPluginParameter("draw-calls", parameter));
        return parameter.GetValueUInteger();
    }

    void Clear(color4b color = {0, 0, 0, 255})
    {
        Renderer::ClearParams clear;
        clear.Color = color;
        GetGUI().ClearBuffers(clear);
    }
    void Fill(float x, float y, float width, float height, color4b color)
    {
        GetGUI().DrawRectangle(gui::RectangleC({x, y, width, height}, color));
    }
    tests::OpenGLVideo video_{std::make_unique<OpenGLSubsystem>(), std::make_unique<OpenGLRenderer>()};
};

TEST_F(OpenGLStack, CapturesEachBuffer)
{
    Renderer &gui = GetGUI();
    gui.ClearBuffers({true, s_blue, true, 0.25f, true, 77, false, {}});
    gui.ClearBuffers({true, s_red, true, 0.75f, true, 200, true, {8, 4, 16, 8}});
    video_.renderer->PresentBackBuffer();
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

/// A sample and the colour that it shows over black.
struct ShownSample
{
    eSampleFormat format;
    std::vector<unsigned char> sample;
    color4b color;
};

std::vector<unsigned char> ToBytes(float value)
{
    std::vector<unsigned char> bytes(sizeof(value));
    std::memcpy(bytes.data(), &value, sizeof(value));
    return bytes;
}

/// Draws textures of any format, pixel by pixel at the top left corner.
void Show(OpenGLSubsystem &subsystem, video_opengl::OpenGLTexture2D &texture)
{
    auto const &gl = subsystem.GetDevice()->gl;
    video_opengl::Batch batch(subsystem.GetDevice());
    batch.BindState();
    batch.GetProgram().SetTransform(mat4::IDENTITY);
    batch.GetProgram().SetProjection({2.0f / 64, -2.0f / 48, 1}, {-1, 1, 0});
    gl.Enable(GL_BLEND);
    gl.BlendFunc(GL_SRC_ALPHA, GL_ZERO);
    batch.SelectTexture(texture.GetObject(), GL_NEAREST_MIPMAP_NEAREST);
    auto const width = static_cast<float>(texture.GetWidth());
    auto const height = static_cast<float>(texture.GetHeight());
    gui::VertexCT *const quad = batch.AddQuads(1);
    quad[0] = {{0, 0, 0}, s_white, {0, 0}};
    quad[1] = {{0, height, 0}, s_white, {0, 1}};
    quad[2] = {{width, height, 0}, s_white, {1, 1}};
    quad[3] = {{width, 0, 0}, s_white, {1, 0}};
    batch.Draw();
    gl.Disable(GL_BLEND);
}

/// Returns an image whose samples have these blue, green, red and alpha bytes, a letter of "rgbw" for each.
AutoPtr<ImageBase> MakeImage(std::initializer_list<string> rows)
{
    AutoPtr<ImageBase> image(ManufactureImage(e_format_A8R8G8B8, static_cast<unsigned int>(rows.size()),
                                              static_cast<unsigned int>(rows.begin()->size())));
    unsigned int index = 0;
    for (string const &row : rows)
    {
        for (char const letter : row)
        {
            color4b const color = letter == 'r' ? s_red : letter == 'g' ? s_green : letter == 'b' ? s_blue : s_white;
            std::copy_n(color.ToPtr(), 4, static_cast<SignalBase &>(*image).SampleB(index++));
        }
    }
    return image;
}

TEST_F(OpenGLStack, ShowsEverySampleFormat)
{
    ShownSample const rows[] = {
        {e_format_L8, {200}, {200, 200, 200, 255}},
        {e_format_A8, {102}, {102, 102, 102, 255}},
        {e_format_A8L8, {200, 128}, {100, 100, 100, 255}},
        // Alpha 15, red 15, green 8, blue 0.
        {e_format_A4R4G4B4, {0x80, 0xFF}, {255, 136, 0, 255}},
        // Alpha 1, red 31, green 16, blue 1.
        {e_format_A1R5G5B5, {0x01, 0xFE}, {255, 132, 8, 255}},
        {e_format_X8R8G8B8, {10, 20, 30, 0}, {30, 20, 10, 255}},
        {e_format_A8R8G8B8, {200, 150, 100, 128}, {50, 75, 100, 255}},
        {e_format_FP32NormL, ToBytes(0.5f), {128, 128, 128, 255}},
        {e_format_FP32NormA, ToBytes(0.5f), {128, 128, 128, 255}},
    };
    for (ShownSample const &row : rows)
    {
        AutoPtr<video_renderer_objects::Texture2D> const texture =
            GetGUI().CreateTexture(row.format, false, 2, 4, true);
        ASSERT_NE(texture, nullptr) << std::hex << row.format;
        EXPECT_TRUE(texture->LoadLevels(0));
        // Only the last of three samples is loaded.
        AutoPtr<ImageBase> const image(ManufactureImage(row.format, 1, 3));
        std::fill_n(image->GetSamplesB(), image->GetTotalByteSize(), static_cast<unsigned char>(255));
        std::copy(row.sample.begin(), row.sample.end(), image->SampleB(0, 2));
        EXPECT_TRUE(texture->LoadLevel(0, *image, 1, 1, 1, 3, 0, 2));
        Clear();
        Show(GetSubsystem(), static_cast<video_opengl::OpenGLTexture2D &>(*texture));
        AutoPtr<ImageBase> const shown = video_.Capture();
        color4b const color = GetColor(*shown, 1, 3);
        EXPECT_TRUE(std::abs(color.r - row.color.r) <= 1 && std::abs(color.g - row.color.g) <= 1 &&
                    std::abs(color.b - row.color.b) <= 1)
            << std::hex << row.format << std::dec << ": " << unsigned(color.r) << " " << unsigned(color.g) << " "
            << unsigned(color.b);
        EXPECT_NE(GetColor(*shown, 1, 2), color);
    }
}

TEST_F(OpenGLStack, LoadsRowsAndLevelsWhereTheyBelong)
{
    AutoPtr<video_renderer_objects::Texture2D> texture = GetGUI().CreateTexture(e_format_A8R8G8B8, true, 4, 4, true);
    ASSERT_NE(texture, nullptr);
    auto &shown = static_cast<video_opengl::OpenGLTexture2D &>(*texture);
    EXPECT_TRUE(texture->LoadLevels(255));
    // Rows 1 and 2 of the source go to rows 2 and 3, columns 1 and 2 to columns 0 and 1.
    AutoPtr<ImageBase> const image = MakeImage({"rrrr", "rgbr", "rbbr"});
    EXPECT_TRUE(texture->LoadLevel(0, *image, 2, 2, 2, 0, 1, 1));
    Show(GetSubsystem(), shown);
    AutoPtr<ImageBase> picture = video_.Capture();
    EXPECT_EQ(GetLetters(*picture, 0, 4) + GetLetters(*picture, 2, 4) + GetLetters(*picture, 3, 4), "wwwwgbwwbbww");
    // The same block from a source whose last row is the top.
    video_renderer_objects::Texture2D::SetSourceRowOrderBottomToTop(true);
    EXPECT_TRUE(texture->LoadLevel(0, *image, 2, 2, 2, 0, 1, 1));
    video_renderer_objects::Texture2D::SetSourceRowOrderBottomToTop(false);
    Show(GetSubsystem(), shown);
    picture = video_.Capture();
    EXPECT_EQ(GetLetters(*picture, 2, 4) + GetLetters(*picture, 3, 4), "bbwwgbww");

    // A smaller level is drawn when it is the largest that may be.
    EXPECT_TRUE(texture->LoadLevel(1, *MakeImage({"rg", "bw"})));
    EXPECT_TRUE(texture->SetBaseLevel(1));
    Show(GetSubsystem(), shown);
    picture = video_.Capture();
    EXPECT_EQ(GetLetters(*picture, 1, 4) + GetLetters(*picture, 2, 4), "rrggbbww");
    EXPECT_TRUE(texture->SetBaseLevel(7));
    EXPECT_EQ(texture->GetBaseLevel(), texture->GetNumLevels());
    texture->SetPriority(3);
}

TEST_F(OpenGLStack, LoadsSignalsAndVolumes)
{
    std::shared_ptr<video_opengl::Device> const device = GetSubsystem().GetDevice();
    using GetImage = void(QUILLMARSH_OPENGL_CALL *)(GLenum, GLint, GLenum, GLenum, void *);
    auto const getImage = reinterpret_cast<GetImage>(device->GetContext().FindFunction("glGetTexImage"));
    auto const read = [&](GLenum target, video_opengl::TextureObject &object, int level, std::size_t size)
    {
        string bytes(size, ' ');
        object.BeginChange();
        device->gl.PixelStorei(GL_PACK_ALIGNMENT, 1);
        getImage(target, level, GL_RED, GL_UNSIGNED_BYTE, bytes.data());
        object.EndChange();
        return bytes;
    };
    auto const line = video_opengl::CreateTexture1D(device, e_format_L8, true, 8);
    ASSERT_NE(line, nullptr);
    AutoPtr<SignalBase> const signal(ManufactureSignal(e_format_L8, 4));
    std::copy_n("abcd", 4, signal->GetSamplesB());
    EXPECT_TRUE(line->LoadLevels('.') && line->LoadLevel(0, *signal, 2, 5, 1) && line->LoadLevel(1, *signal));
    EXPECT_EQ(read(GL_TEXTURE_1D, line->GetObject(), 0, 8), ".....bc.");
    EXPECT_EQ(read(GL_TEXTURE_1D, line->GetObject(), 1, 4), "abcd");

    auto const block = video_opengl::CreateTexture3D(device, e_format_L8, false, 2, 2, 4);
    ASSERT_NE(block, nullptr);
    AutoPtr<VolumeBase> const volume(ManufactureVolume(e_format_L8, 2, 3, 3));
    std::copy_n("abcdefghiABCDEFGHI", 18, volume->GetSamplesB());
    EXPECT_TRUE(block->LoadLevels('.') && block->LoadLevel(0, *volume, 2, 2, 2, 0, 0, 1, 0, 1, 1));
    EXPECT_EQ(read(GL_TEXTURE_3D, block->GetObject(), 0, 16), ".ef..hi..EF..HI.");
    video_renderer_objects::Texture3D::SetSourceRowOrderBottomToTop(true);
    video_renderer_objects::Texture3D::SetSourceLayerOrderBackToFront(true);
    EXPECT_TRUE(block->LoadLevel(0, *volume, 2, 2, 2, 0, 0, 1, 0, 1, 1));
    video_renderer_objects::Texture3D::SetSourceRowOrderBottomToTop(false);
    video_renderer_objects::Texture3D::SetSourceLayerOrderBackToFront(false);
    EXPECT_EQ(read(GL_TEXTURE_3D, block->GetObject(), 0, 16), ".HI..EF..hi..ef.");
}

TEST_F(OpenGLStack, RefusesTexturesThatTheDriverCannotHave)
{
    Renderer &gui = GetGUI();
    Renderer::RendererParams params;
    gui.GetRendererParams(params);
    EXPECT_GE(params.MaxTextureSize, 1024u);
    EXPECT_EQ(gui.CreateTexture(e_format_A8R8G8B8, true, 0, 16, true), nullptr);
    EXPECT_EQ(gui.CreateTexture(e_format_A8R8G8B8, true, 16, 100000, true), nullptr);
    EXPECT_EQ(gui.CreateTexture(e_format_A8R8G8B8, true, params.MaxTextureSize + 1, 1, true), nullptr);
    EXPECT_EQ(gui.CreateTexture(0x04777777, true, 16, 16, true), nullptr);
    EXPECT_EQ(video_opengl::CreateTexture3D(GetSubsystem().GetDevice(), e_format_L8, false, 100000, 1, 1), nullptr);
    AutoPtr<video_renderer_objects::Texture2D> const sheet = gui.CreateTexture(e_format_A8R8G8B8, true, 256, 512, true);
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->GetHeight(), 256u);
    EXPECT_EQ(sheet->GetWidth(), 512u);
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
    tests::ScriptedDialogs dialogs;
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

TEST_F(OpenGLStack, LosesNothingInAnyOrderOfReconfigurations)
{
    std::mt19937 random(7);
    auto const pick = [&](unsigned int count) { return static_cast<unsigned int>(random() % count); };
    for (int step = 0; step < 40; ++step)
    {
        switch (pick(5))
        {
        case 0:
            video_.Resize(pick(300), pick(200));
            break;
        case 1:
            video_.subsystem->OnSetVSync(pick(2) == 0);
            break;
        case 2:
            video_.subsystem->SetPluginParameter(NamedParameter("lose-device", true));
            video_.renderer->PresentBackBuffer();
            video_.ReleaseResources(true);
            ASSERT_TRUE(video_.subsystem->RestoreDevice());
            video_.CreateResources(true);
            break;
        case 3:
        {
            video_.Close();
            video_.subsystem->SetPluginParameter(NamedParameter("multisampling", pick(2) * 4));
            VideoConfig config = video_.MakeConfig(640, 480);
            config.FrameBuffer.Fullscreen = pick(2) == 0;
            config.FrameBuffer.DepthBits = pick(2) * 24;
            config.FrameBuffer.StencilBits = config.FrameBuffer.DepthBits / 3;
            ASSERT_TRUE(video_.Open(config)) << video_.GetReason();
            EXPECT_EQ(video_.Capture()->GetNumColumns(), 640u);
            EXPECT_EQ(video_.subsystem->GetWindow()->IsFullscreen(), config.FrameBuffer.Fullscreen);
            break;
        }
        default:
            video_.renderer->PresentBackBuffer();
        }
        Clear(s_blue);
        GetGUI().Begin();
        Fill(0, 0, 1, 1, s_red);
        GetGUI().End();
        ASSERT_EQ(GetLetters(*video_.Capture(), 0, 1), "r") << step;
    }
    // The fixture closes the device, which asserts that no object is left in it.
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
