// Textures of the video stack on OpenGL.
#include "tests/support/opengl_stack.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace quillmarsh
{
namespace
{

using namespace tests;

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

} // namespace
} // namespace quillmarsh
