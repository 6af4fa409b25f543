// A video stack that is reconfigured at random: sizes, full screen, vertical synchronisation, lost devices, and the
// renderer exchanged for the null one and back: "quillmarsh-video-soak [--seconds N] [--seed N]". Runs for a minute; the
// exit status says whether every resource was created and released in turn.
#include "tests/support/leaks.h"

#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/dataobjects/sampleformats.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/framework/videosubsystem.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/host/session.h>
#include <quillmarsh/platform/displaymodes.h>
#include <quillmarsh/platform/program.h>
#include <quillmarsh/videorendererobjects/vro_textures.h>

#include <cstdlib>
#include <iostream>
#include <random>

namespace quillmarsh::tests
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr char const *s_renderers[] = {"video_null", "video_opengl"};

/// Draws with a texture in each frame, and counts what is out of order.
class Drawer : public Application
{
public:
    unsigned int numFaults = 0;
    unsigned int numFrames = 0;
    unsigned int numPictures = 0;

    void ConnectVideoRenderer(VideoRenderer &renderer) override
    {
        Check(renderer_ == nullptr, "a renderer is connected twice");
        renderer_ = &renderer;
    }
    void DisconnectVideoRenderer() override
    {
        Check(renderer_ != nullptr && texture_ == nullptr, "a renderer is disconnected out of turn");
        renderer_ = nullptr;
    }
    void CreateVideoResources(bool) override
    {
        Check(renderer_ != nullptr && texture_ == nullptr, "resources are created twice");
        texture_ = renderer_->GetGUIRenderer().CreateTexture(e_format_A8R8G8B8, true, 64, 64, true);
        Check(texture_ != nullptr, "there is no texture");
    }
    void ReleaseVideoResources(bool) override
    {
        Check(texture_ != nullptr, "resources are released twice");
        texture_.reset();
    }
    void FrameRenderVideo() override
    {
        Application::FrameRenderVideo();
        if (renderer_ == nullptr)
            return;
        gui::Renderer &gui = renderer_->GetGUIRenderer();
        gui.Begin();
        gui.DrawRectangle(gui::RectangleC({10, 10, 100, 50}, color4b(255, 160, 0, 255)));
        // The host ends the frame.
        ++numFrames;
        isDrawn_ = true;
    }
    void FrameEnd() override
    {
        AutoPtr<ImageBase> image;
        bool const isDue = std::exchange(isDrawn_, false) && numFrames % 4 == 0;
        if (!isDue || !renderer_->CaptureFrameBuffer(image, e_capture_color, true))
            return;
        // A device that is restored while its window is minimized has a size that the renderer is told of later.
        unsigned int const width = renderer_->GetWindowWidth(), height = renderer_->GetWindowHeight();
        if (std::min(width, height) < 21 || image->GetNumColumns() != width || image->GetNumRows() != height)
            return;
        unsigned char const *const pixel = image->SampleB(20, 20);
        Check(pixel[2] == 255 && pixel[1] == 160 && pixel[0] == 0, "a frame has another picture");
        ++numPictures;
    }

private:
    void Check(bool holds, char const *what)
    {
        if (holds)
            return;
        std::cerr << what << std::endl;
        ++numFaults;
    }

    VideoRenderer *renderer_ = nullptr;
    bool isDrawn_ = false;
    AutoPtr<video_renderer_objects::Texture2D> texture_;
};

/// Changes the video of a session at random.
class Changes
{
public:
    Changes(host::HostKernel &kernel, unsigned int seed) : kernel_(kernel), random_(seed) {}

    void Make()
    {
        VideoRenderer *const renderer = kernel_.GetActiveVideoRendererPtr();
        platform::Window *const window = kernel_.GetAppWindow();
        unsigned int const dice = RollDice(40);
        if (renderer == nullptr)
            return;
        if (dice < 4)
            Reconfigure(*renderer);
        else if (dice == 4)
            renderer->UpdateVSync(RollDice(2) == 0);
        else if (dice == 5)
            renderer->GetVideoSubsystem()->SetPluginParameter(NamedParameter("lose-device", true));
        else if (dice == 6 && window != nullptr)
            window->SetSize({static_cast<int>(1 + RollDice(800)), static_cast<int>(1 + RollDice(600))});
        else if (dice == 7 && window != nullptr)
            window->Minimize();
        else if (dice == 8 && window != nullptr)
            window->Restore();
    }

    unsigned int numRequests = 0;

private:
    void Reconfigure(VideoRenderer &renderer)
    {
        static constexpr unsigned int s_sides[] = {0, 1, 64, 480, 640, 1023, 100000};
        VideoConfig config = renderer.GetVideoConfig();
        config.DisplayMode.Width = s_sides[RollDice(std::size(s_sides))];
        config.DisplayMode.Height = s_sides[RollDice(std::size(s_sides))];
        config.FrameBuffer.Fullscreen = RollDice(4) == 0;
        config.FrameBuffer.StencilBits = RollDice(2) * 8;
        config.FrameBuffer.DepthBits = config.FrameBuffer.StencilBits * 3;
        renderer.GetVideoSubsystem()->SetPluginParameter(NamedParameter("multisampling", RollDice(2) * 4));
        config.Hints.VSync = RollDice(2) == 0;
        kernel_.ApplyVideoReconfig(s_renderers[RollDice(std::size(s_renderers))], config, 0);
        ++numRequests;
    }
    unsigned int RollDice(std::size_t sides) { return static_cast<unsigned int>(random_() % sides); }

    host::HostKernel &kernel_;
    std::mt19937 random_;
};

int Run(string const &program, double seconds, unsigned int seed)
{
    string reason;
    if (!platform::UseHeadlessDesktop(1024, 768, reason))
        std::cerr << "There is no headless desktop: " << reason << std::endl;
    unsigned int numReports = 0;
    auto const report = [&numReports](string const &text)
    {
        // A driver may refuse a configuration; the former one then comes back.
        ++numReports;
        std::cerr << text << std::endl;
    };
    host::Session session({.programName = "video-soak", .report = report});
    host::HostKernel &kernel = session.GetKernel();
    for (char const *const renderer : s_renderers)
        kernel.GetPlugins().Load(host::FindPluginFile(renderer, host::GetPluginDirectories(program, "")));
    auto owned = std::make_unique<Drawer>();
    Drawer &drawer = *owned;
    Changes changes(kernel, seed);
    auto const end = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    bool const isOpen = session.Open(std::move(owned));
    while (isOpen && Clock::now() < end && session.RunFrame())
        changes.Make();
    unsigned int const numFrames = drawer.numFrames, numFaults = drawer.numFaults;
    unsigned int const numPictures = drawer.numPictures;
    session.Close();
    bool const isWell = isOpen && !session.HasFailed() && numFaults == 0 && platform::Window::GetNumOpen() == 0;
    std::cout << numFrames << " frames, " << numPictures << " pictures, " << changes.numRequests
              << " reconfigurations, " << numReports << " reports, " << (isWell ? "all well" : "with faults")
              << std::endl;
    return isWell ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace quillmarsh::tests

int main(int argc, char **argv)
{
    double seconds = 60;
    unsigned int seed = 1;
    for (int i = 1; i + 1 < argc; i += 2)
    {
        if (std::string(argv[i]) == "--seconds")
            seconds = std::atof(argv[i + 1]);
        else if (std::string(argv[i]) == "--seed")
            seed = static_cast<unsigned int>(std::atoi(argv[i + 1]));
    }
    // Drivers of graphics cards leave memory behind, and are unloaded before the check looks.
    quillmarsh::tests::NoLeakCheck const noLeakCheck;
    return quillmarsh::tests::Run(quillmarsh::platform::GetProgramFileName(argv[0]), seconds, seed);
}
