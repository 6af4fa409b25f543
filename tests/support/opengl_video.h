// The video stack on OpenGL, loaded from its library, on a desktop that nobody sees.
#ifndef QUILLMARSH_TESTS_SUPPORT_OPENGL_VIDEO_H
#define QUILLMARSH_TESTS_SUPPORT_OPENGL_VIDEO_H

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/framework/videosubsystem.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/host/pluginset.h>
#include <quillmarsh/platform/displaymodes.h>

#include "tests/support/leaks.h"
#include "tests/support/test_kernel.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{

/// Connects renderer and subsystem for its own life: those of the library, or given ones. It makes its own kernel.
/// Without OpenGL, GetReason() says why.
class OpenGLVideo
{
public:
    using Doors = VideoDoors;

    explicit OpenGLVideo(char const *library) : OpenGLVideo(nullptr, nullptr)
    {
        plugins.Load(library);
        for (host::PluginSet::Entry const &entry : plugins.GetEntries())
        {
            if (entry.descriptor->GetPluginInfo().GetPluginType() == e_plugin_video_subsystem)
                subsystem = plugins.CreateAs<VideoSubsystem>(*entry.descriptor);
            else
                renderer = plugins.CreateAs<VideoRenderer>(*entry.descriptor);
        }
    }
    OpenGLVideo(AutoPtr<VideoSubsystem> itsSubsystem, AutoPtr<VideoRenderer> itsRenderer)
        : subsystem(std::move(itsSubsystem)),
          renderer(std::move(itsRenderer)),
          isHeadless_(platform::UseHeadlessDesktop(1600, 1200, reason_))
    {
    }
    ~OpenGLVideo()
    {
        Close();
        renderer.reset();
        subsystem.reset();
        if (isHeadless_)
            platform::LeaveHeadlessDesktop();
    }

    static VideoConfig MakeConfig(unsigned int width, unsigned int height)
    {
        VideoConfig config(true);
        config.DisplayMode = DisplayModeConfig(width, height, 32, 0);
        return config;
    }

    /// Opens everything in a window of this size. Returns false with a reason when there is no OpenGL.
    bool Open(VideoConfig const &config)
    {
        if (!isHeadless_)
            return false;
        try
        {
            subsystem->Open(config, "test");
        }
        catch (VideoSubsystemException const &exception)
        {
            reason_ = exception.GetMessage();
            return false;
        }
        Doors::VideoRenderer_ConnectVideoSubsystem(*renderer, *subsystem);
        isConnected_ = true;
        CreateResources(false);
        Resize(config.DisplayMode.Width, config.DisplayMode.Height);
        return true;
    }
    bool Open(unsigned int width, unsigned int height) { return Open(MakeConfig(width, height)); }

    void Close()
    {
        if (!isConnected_)
            return;
        ReleaseResources(false);
        Doors::VideoRenderer_DisconnectVideoSubsystem(*renderer);
        isConnected_ = false;
        subsystem->Close();
    }

    void CreateResources(bool deviceWasLost)
    {
        Doors::VideoRenderer_CreateVideoResources(*renderer, deviceWasLost);
        hasResources_ = true;
    }
    void ReleaseResources(bool deviceWasLost)
    {
        if (std::exchange(hasResources_, false))
            Doors::VideoRenderer_ReleaseVideoResources(*renderer, deviceWasLost);
    }
    void Resize(unsigned int width, unsigned int height)
    {
        subsystem->OnWindowResize(width, height);
        Doors::VideoRenderer_OnWindowResize(*renderer, width, height);
    }

    gui::Renderer &GetGUI() const { return renderer->GetGUIRenderer(); }
    string const &GetReason() const { return reason_; }

    AutoPtr<ImageBase> Capture(unsigned int buffer = e_capture_color, bool topRowFirst = true)
    {
        AutoPtr<ImageBase> image;
        EXPECT_TRUE(renderer->CaptureFrameBuffer(image, buffer, topRowFirst)) << buffer;
        return image;
    }

    NoLeakCheck noLeakCheck;
    TestKernel kernel;
    host::PluginSet plugins;
    AutoPtr<VideoSubsystem> subsystem;
    AutoPtr<VideoRenderer> renderer;

private:
    string reason_;
    bool isHeadless_;
    bool isConnected_ = false;
    bool hasResources_ = false;
};

} // namespace quillmarsh::tests

#endif
