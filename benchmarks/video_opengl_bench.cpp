#include "benchmarks/support/allocation_counter.h"

#include "video_opengl/openglrenderer.h"
#include "video_opengl/openglsubsystem.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/platform/displaymodes.h>

#include <benchmark/benchmark.h>
#include <imgui.h>
#include <imgui_internal.h>

#include <algorithm>
#include <memory>

namespace quillmarsh::benchmarks
{
namespace
{

using video_opengl::OpenGLFunctions;

constexpr unsigned int s_size = 2048;
constexpr unsigned int s_numTextures = 50;
constexpr unsigned int s_numRectanglesOfTexture = 200;

/// The video stack on a desktop that nobody sees.
class Video : NoCopy
{
public:
    Video()
    {
        if (!platform::UseHeadlessDesktop(s_size, s_size, reason))
            return;
        VideoConfig config(true);
        config.DisplayMode = DisplayModeConfig(s_size, s_size, 32, 0);
        try
        {
            subsystem.Open(config, "benchmark");
        }
        catch (VideoSubsystemException const &exception)
        {
            reason = exception.GetMessage();
            return;
        }
        Doors::VideoRenderer_ConnectVideoSubsystem(renderer, subsystem);
        Doors::VideoRenderer_CreateVideoResources(renderer, false);
        Doors::VideoRenderer_OnWindowResize(renderer, s_size, s_size);
        isOpen = true;
    }
    ~Video()
    {
        if (isOpen)
        {
            Doors::VideoRenderer_ReleaseVideoResources(renderer, false);
            Doors::VideoRenderer_DisconnectVideoSubsystem(renderer);
        }
        subsystem.Close();
        platform::LeaveHeadlessDesktop();
    }

    /// Ends the case with the reason when there is no OpenGL.
    bool Check(benchmark::State &state) const
    {
        if (!isOpen)
            state.SkipWithError(reason.c_str());
        return isOpen;
    }

    OpenGLFunctions &GetGL() { return subsystem.GetDevice()->gl; }

    video_opengl::OpenGLSubsystem subsystem;
    video_opengl::OpenGLRenderer renderer;
    string reason;
    bool isOpen = false;

private:
    struct Doors : Kernel
    {
        using Kernel::VideoRenderer_ConnectVideoSubsystem;
        using Kernel::VideoRenderer_CreateVideoResources;
        using Kernel::VideoRenderer_DisconnectVideoSubsystem;
        using Kernel::VideoRenderer_OnWindowResize;
        using Kernel::VideoRenderer_ReleaseVideoResources;
    };
};

/// Leaves out the drawing itself, which is the software renderer's own work here. The vertices still go to the driver.
void SilenceDriver(OpenGLFunctions &gl)
{
    gl.DrawElements = [](GLenum, GLsizei, GLenum, void const *) {};
}

gui::RectangleCT MakeRectangle(unsigned int index)
{
    auto const column = static_cast<float>(index % 100);
    auto const row = static_cast<float>(index / 100);
    gui::RectangleCT rectangle({column * 20, row * 20, 18, 18}, color4b(255, 255, 255, 255));
    rectangle.uMin = column / 100;
    rectangle.uMax = rectangle.uMin + 0.01f;
    return rectangle;
}

/// Ten thousand rectangles with fifty textures in turn, from Begin() to End(), without the drawing itself. The counter
/// "draw_calls" reports the draw calls of a frame.
void TexturedRectangles(benchmark::State &state)
{
    Video video;
    if (!video.Check(state))
        return;
    SilenceDriver(video.GetGL());
    std::vector<AutoPtr<gui::Texture>> textures;
    for (unsigned int i = 0; i < s_numTextures; ++i)
    {
        textures.push_back(std::make_unique<gui::Texture>(e_format_A8R8G8B8, false, 16, 16));
        textures.back()->CreateVideoRendererResource(video.renderer);
    }
    std::vector<gui::RectangleCT> rectangles;
    for (unsigned int i = 0; i < s_numTextures * s_numRectanglesOfTexture; ++i)
        rectangles.push_back(MakeRectangle(i));
    auto &gui = static_cast<video_opengl::OpenGLGUIRenderer &>(video.renderer.GetGUIRenderer());
    auto const draw = [&]
    {
        gui.Begin();
        gui::RectangleCT const *next = rectangles.data();
        for (AutoPtr<gui::Texture> const &texture : textures)
        {
            for (unsigned int i = 0; i < s_numRectanglesOfTexture; ++i)
                gui.DrawRectangle(*texture, *next++);
        }
        gui.End();
    };
    unsigned int const before = gui.GetNumDrawCalls();
    draw();
    state.counters["draw_calls"] = gui.GetNumDrawCalls() - before;
    RunCounted(state, draw);
    for (AutoPtr<gui::Texture> const &texture : textures)
        texture->ReleaseVideoRendererResource();
}
BENCHMARK(TexturedRectangles)->Name("video_opengl/textured_rectangles")->Unit(benchmark::kMicrosecond);

/// The same quads in Dear ImGui's list of vertices and commands.
void TexturedRectanglesPeer(benchmark::State &state)
{
    IMGUI_CHECKVERSION();
    ImGuiContext *const context = ImGui::CreateContext();
    {
        ImDrawList list(ImGui::GetDrawListSharedData());
        std::vector<gui::RectangleCT> rectangles;
        for (unsigned int i = 0; i < s_numTextures * s_numRectanglesOfTexture; ++i)
            rectangles.push_back(MakeRectangle(i));
        RunCounted(state,
                   [&]
                   {
                       list._ResetForNewFrame();
                       list.PushClipRect(ImVec2(0, 0), ImVec2(s_size, s_size));
                       gui::RectangleCT const *next = rectangles.data();
                       for (std::size_t texture = 1; texture <= s_numTextures; ++texture)
                       {
                           auto const id = reinterpret_cast<ImTextureID>(texture);
                           list.PushTextureID(id);
                           for (unsigned int i = 0; i < s_numRectanglesOfTexture; ++i)
                           {
                               gui::RectangleCT const &r = *next++;
                               list.AddImage(id, ImVec2(r.x, r.y), ImVec2(r.x + r.width, r.y + r.height),
                                             ImVec2(r.uMin, r.vMin), ImVec2(r.uMax, r.vMax), r.colorTopLeft);
                           }
                           list.PopTextureID();
                       }
                       benchmark::DoNotOptimize(list.VtxBuffer.Data);
                   });
    }
    ImGui::DestroyContext(context);
}
BENCHMARK(TexturedRectanglesPeer)->Name("peer/imgui_textured_rectangles")->Unit(benchmark::kMicrosecond);

ImageMipmapChain &GetChain()
{
    static ImageMipmapChain &s_chain = *[]
    {
        AutoPtr<ImageBase> const image(ManufactureImage(e_format_A8R8G8B8, s_size, s_size));
        std::fill_n(image->GetSamplesB(), image->GetTotalByteSize(), static_cast<unsigned char>(90));
        auto chain = std::make_unique<ImageMipmapChain>(e_format_A8R8G8B8);
        chain->Build(*image, true);
        return chain.release();
    }();
    return s_chain;
}

void TextureUpload(benchmark::State &state)
{
    Video video;
    if (!video.Check(state))
        return;
    AutoPtr<video_renderer_objects::Texture2D> const texture =
        video.renderer.GetGUIRenderer().CreateTexture(e_format_A8R8G8B8, true, s_size, s_size, true);
    ImageMipmapChain const &chain = GetChain();
    RunCounted(state, [&] { texture->LoadLevels(chain); });
}
BENCHMARK(TextureUpload)->Name("video_opengl/texture_upload/2048")->Unit(benchmark::kMicrosecond);

void TextureUploadLimit(benchmark::State &state)
{
    Video video;
    if (!video.Check(state))
        return;
    OpenGLFunctions const &gl = video.GetGL();
    ImageMipmapChain const &chain = GetChain();
    video_opengl::DeviceObject const texture(video.subsystem.GetDevice(), video_opengl::eObject::e_texture);
    gl.BindTexture(GL_TEXTURE_2D, texture.Get());
    for (unsigned int level = 0; level < chain.GetNumLevels(); ++level)
    {
        auto const size = static_cast<GLsizei>(s_size >> level);
        gl.TexImage2D(GL_TEXTURE_2D, static_cast<GLint>(level), GL_RGBA8, size, size, 0, GL_BGRA, GL_UNSIGNED_BYTE,
                      nullptr);
    }
    RunCounted(state,
               [&]
               {
                   for (unsigned int level = 0; level < chain.GetNumLevels(); ++level)
                   {
                       auto const size = static_cast<GLsizei>(s_size >> level);
                       gl.TexSubImage2D(GL_TEXTURE_2D, static_cast<GLint>(level), 0, 0, size, size, GL_BGRA,
                                        GL_UNSIGNED_BYTE, chain.GetLevel(level).GetSamplesB());
                   }
               });
}
BENCHMARK(TextureUploadLimit)->Name("limit/opengl_texture_upload/2048")->Unit(benchmark::kMicrosecond);

void Capture(benchmark::State &state)
{
    Video video;
    if (!video.Check(state))
        return;
    video.renderer.GetGUIRenderer().ClearBuffers({});
    RunCounted(state,
               [&]
               {
                   AutoPtr<ImageBase> image;
                   video.renderer.CaptureFrameBuffer(image, e_capture_color, true);
                   benchmark::DoNotOptimize(image.get());
               });
}
BENCHMARK(Capture)->Name("video_opengl/capture/2048")->Unit(benchmark::kMicrosecond);

/// Reads the pixels and turns the rows over.
void CaptureLimit(benchmark::State &state)
{
    Video video;
    if (!video.Check(state))
        return;
    video.renderer.GetGUIRenderer().ClearBuffers({});
    OpenGLFunctions const &gl = video.GetGL();
    constexpr std::size_t rowSize = s_size * 4;
    RunCounted(state,
               [&]
               {
                   std::unique_ptr<unsigned char[]> const pixels(new unsigned char[rowSize * s_size]);
                   gl.ReadPixels(0, 0, s_size, s_size, GL_BGRA, GL_UNSIGNED_BYTE, pixels.get());
                   for (std::size_t row = 0; row < s_size / 2; ++row)
                   {
                       unsigned char *const low = pixels.get() + row * rowSize;
                       std::swap_ranges(low, low + rowSize, pixels.get() + (s_size - 1 - row) * rowSize);
                   }
                   benchmark::DoNotOptimize(pixels.get());
               });
}
BENCHMARK(CaptureLimit)->Name("limit/opengl_capture/2048")->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quillmarsh::benchmarks
