// A video stack without a device, connected and with its resources.
#ifndef QUILLMARSH_TESTS_SUPPORT_NULL_VIDEO_H
#define QUILLMARSH_TESTS_SUPPORT_NULL_VIDEO_H

#include "tests/support/test_kernel.h"

#include <quillmarsh/framework/videorendererinfo.h>

#include "video_null/nullrenderer.h"
#include "video_null/nullsubsystem.h"

namespace quillmarsh::tests
{

/// Connects the null renderer to the null subsystem for its own life, in a window of 640 by 480 pixels.
class NullVideo
{
public:
    NullVideo()
    {
        subsystem.Open(VideoConfig(true), "test");
        Doors::VideoRenderer_ConnectVideoSubsystem(renderer, subsystem);
        Doors::VideoRenderer_CreateVideoResources(renderer, false);
        Doors::VideoRenderer_OnWindowResize(renderer, 640, 480);
    }
    ~NullVideo()
    {
        Doors::VideoRenderer_ReleaseVideoResources(renderer, false);
        Doors::VideoRenderer_DisconnectVideoSubsystem(renderer);
        subsystem.Close();
    }

    using Doors = VideoDoors;

    video_null::NullSubsystem subsystem;
    video_null::NullRenderer renderer;
    video_null::NullGUIRenderer &gui = renderer.GetNullGUIRenderer();
};

/// Kernel with renderers that offer what the test wants, of which the first one describes the one in use. It keeps the
/// requests of video.
class VideoKernel : public TestKernel
{
public:
    struct Renderer
    {
        VideoRendererInfo info;
        VideoProfile filtered;
    };
    struct Request
    {
        string pluginName;
        VideoConfig config;
        unsigned int code;
    };

    void Add(char const *pluginName, char const *interfaceName, VideoProfile const &profile)
    {
        PluginInfo const info(library_info::GetHeaderVersion(), e_plugin_video_renderer, pluginName, {}, "", "", "");
        renderers.push_back({VideoRendererInfo(info, interfaceName, profile), profile});
    }

    unsigned int GetNumVideoRenderers() override { return static_cast<unsigned int>(renderers.size()); }
    void GetVideoRendererInfo(unsigned int index, VideoRendererInfo &info) override { info = renderers.at(index).info; }
    void GetVideoRendererProfile(unsigned int index, VideoProfile &profile) override
    {
        profile = renderers.at(index).filtered;
    }
    VideoRenderer *GetActiveVideoRendererPtr() override { return active; }
    void GetActiveVideoRendererInfo(VideoRendererInfo &info) override { info = renderers.at(0).info; }
    void GetActiveVideoProfile(VideoProfile &profile) override { profile = renderers.at(0).filtered; }
    void ApplyVideoReconfig(string const &pluginName, VideoConfig const &config, unsigned int code) override
    {
        requests.push_back({pluginName, config, code});
    }

    std::vector<Renderer> renderers;
    std::vector<Request> requests;
    VideoRenderer *active = nullptr;
};

} // namespace quillmarsh::tests

#endif
