#include <quillmarsh/framework/videorenderer.h>

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/framework/videosubsystem.h>

#include "tests/support/null_video.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using tests::ScriptedDialogs;
using Doors = tests::NullVideo::Doors;

/// Keeps the reconfigurations that are asked for, and the updates of the vertical synchronisation.
class Kernel : public tests::VideoKernel
{
public:
    void ApplyVideoReconfig(string const &pluginName, VideoConfig const &config, unsigned int code) override
    {
        requests.push_back(pluginName + (config.Hints.VSync ? " vsync " : " free ") + MakeString(code));
    }
    void NotifyVSyncUpdate() override { requests.push_back("update"); }

    std::vector<string> requests;
};

/// Renderer without a GUI renderer.
class BareRenderer : public VideoRenderer
{
    string GetVideoRendererInterfaceName() const override { return "bare"; }
    bool IsCompatibleWith(VideoSubsystem const &) const override { return true; }
};

TEST(VideoRenderer, NeedsAGuiRendererAndASubsystem)
{
    Kernel kernel;
    ScriptedDialogs dialogs;
    video_null::NullSubsystem subsystem;
    BareRenderer bare;
    Doors::VideoRenderer_ConnectVideoSubsystem(bare, subsystem);
    Doors::VideoRenderer_CreateVideoResources(bare, false);
    Doors::VideoRenderer_OnWindowResize(bare, 4, 3);
    Doors::VideoRenderer_ReleaseVideoResources(bare, false);
    Doors::VideoRenderer_DisconnectVideoSubsystem(bare);
    std::vector<string> const texts = dialogs.TakeTexts();
    ASSERT_EQ(texts.size(), 5u);
    for (string const &text : texts)
        EXPECT_NE(text.find("GUIRenderer not attached."), string::npos) << text;

    EXPECT_EQ(bare.GetVideoConfig(), VideoConfig(false));
    EXPECT_NE(dialogs.TakeTexts().at(0).find("Video-subsystem not connected."), string::npos);
    bare.PresentBackBuffer();
    AutoPtr<ImageBase> image;
    EXPECT_FALSE(bare.CaptureFrameBuffer(image, e_capture_color, true));
    bare.UpdateVSync(true);
    EXPECT_TRUE(kernel.requests.empty());
}

TEST(VideoRenderer, OwnsItsGuiRendererUntilItIsDetached)
{
    Kernel kernel;
    ScriptedDialogs dialogs;
    BareRenderer bare;
    auto other = std::make_unique<video_null::NullGUIRenderer>(bare, nullptr);
    bare.AttachGUIRenderer(*other);
    bare.DetachGUIRenderer();
    EXPECT_TRUE(dialogs.TakeTexts().empty());

    // While a subsystem is connected, the assertions warn, and the exchange goes on.
    tests::NullVideo video;
    video.renderer.DetachGUIRenderer();
    AutoPtr<gui::Renderer> detached(&video.gui);
    EXPECT_NE(dialogs.TakeTexts().at(0).find("Cannot detach GUIRenderer while VideoSubsystem is connected."),
              string::npos);
    video.renderer.AttachGUIRenderer(*other);
    EXPECT_NE(dialogs.TakeTexts().at(0).find("Cannot attach GUIRenderer while VideoSubsystem is connected."),
              string::npos);
    EXPECT_EQ(&video.renderer.GetGUIRenderer(), other.release());
    video.renderer.AttachGUIRenderer(*detached.release());
}

TEST(VideoRenderer, TellsItsGuiRendererTheSize)
{
    Kernel kernel;
    tests::NullVideo video;
    Doors::VideoRenderer_OnWindowResize(video.renderer, 320, 200);
    EXPECT_EQ(video.gui.GetWindowSize(), vec2(320, 200));
    Doors::VideoRenderer_OnWindowResize(video.renderer, 0, 0);
    EXPECT_EQ(video.renderer.GetWindowWidth(), 1u);
    EXPECT_EQ(video.gui.GetWindowHeight(), 1u);
}

TEST(VideoRenderer, UpdatesTheVerticalSynchronisation)
{
    Kernel kernel;
    PluginInfo info(library_info::GetLibraryVersion(), e_plugin_video_renderer, "drawer", PluginVersion(), "", "", "");
    tests::NullVideo video;
    video.renderer.SetPluginInfo(&info);
    ASSERT_TRUE(video.renderer.GetVideoConfig().Hints.VSync);
    video.renderer.UpdateVSync(true);
    EXPECT_TRUE(kernel.requests.empty());
    // The whole stack is configured anew ...
    video.renderer.UpdateVSync(false);
    EXPECT_EQ(kernel.requests, (std::vector<string>{"drawer free 0"}));
    EXPECT_TRUE(video.renderer.GetVideoConfig().Hints.VSync);
    // ... or only the subsystem.
    kernel.requests.clear();
    VideoRenderer::EnableDynamicVSyncUpdate(true);
    video.renderer.UpdateVSync(false);
    VideoRenderer::EnableDynamicVSyncUpdate(false);
    EXPECT_EQ(kernel.requests, (std::vector<string>{"update", "update", "update"}));
    EXPECT_FALSE(video.renderer.GetVideoConfig().Hints.VSync);
}

TEST(VideoKernel, ReachesTheActiveRenderer)
{
    Kernel kernel;
    ScriptedDialogs dialogs;
    kernel.RequestVideoReconfig(7);
    PluginInfo info(library_info::GetLibraryVersion(), e_plugin_video_renderer, "drawer", PluginVersion(), "", "", "");
    tests::NullVideo video;
    video.renderer.SetPluginInfo(&info);
    video.subsystem.OnSetVSync(false);
    kernel.active = &video.renderer;
    kernel.RequestVideoReconfig(8);
    // Without a renderer: no name, and a default configuration.
    EXPECT_EQ(kernel.requests, (std::vector<string>{" vsync 7", "drawer free 8"}));
    EXPECT_EQ(&kernel.GetActiveVideoRenderer(), &video.renderer);
    EXPECT_TRUE(dialogs.TakeTexts().empty());
}

TEST(VideoKernel, DefaultPictureClearsTheTarget)
{
    Kernel kernel;
    struct Program : Application
    {
    } program;
    program.FrameRenderVideo();
    tests::NullVideo video;
    kernel.active = &video.renderer;
    program.FrameRenderVideo();
    EXPECT_EQ(video.gui.Stats().NumClearBuffers, 1u);
    EXPECT_TRUE(video.gui.GetFaults().empty());
}

} // namespace
} // namespace quillmarsh
