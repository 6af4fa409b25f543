#include <quillmarsh/framework/videorenderer.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/videosubsystem.h>
#include <quillmarsh/gui/gui_renderer.h>

#include <algorithm>

namespace quillmarsh
{

bool VideoRenderer::s_enableDynamicVSyncUpdate = false;

VideoRenderer::VideoRenderer() = default;

VideoRenderer::~VideoRenderer() = default;

VideoConfig const &VideoRenderer::GetVideoConfig() const
{
    QUILLMARSH_ASSERT(videoSubsystem_ != nullptr, "Video-subsystem not connected.");
    static VideoConfig const s_none(false);
    return videoSubsystem_ != nullptr ? videoSubsystem_->GetVideoConfig() : s_none;
}

void VideoRenderer::PresentBackBuffer()
{
    if (videoSubsystem_ != nullptr)
        videoSubsystem_->PresentBackBuffer();
}

bool VideoRenderer::CaptureFrameBuffer(AutoPtr<ImageBase> &image, unsigned int buffer, bool topRowFirst)
{
    return videoSubsystem_ != nullptr && videoSubsystem_->CaptureFrameBuffer(image, buffer, topRowFirst);
}

void VideoRenderer::UpdateVSync(bool vsync)
{
    if (videoSubsystem_ == nullptr || videoSubsystem_->GetVideoConfig().Hints.VSync == vsync)
        return;
    if (s_enableDynamicVSyncUpdate)
    {
        videoSubsystem_->OnSetVSync(vsync);
        Kernel::Instance().NotifyVSyncUpdate();
        return;
    }
    VideoConfig config = videoSubsystem_->GetVideoConfig();
    config.Hints.VSync = vsync;
    Kernel::Instance().ApplyVideoReconfig(GetPluginInfo().GetPluginName(), config, 0);
}

void VideoRenderer::EnableDynamicVSyncUpdate(bool enable)
{
    s_enableDynamicVSyncUpdate = enable;
    Kernel::Instance().NotifyVSyncUpdate();
}

gui::Renderer &VideoRenderer::GetGUIRenderer() const
{
    QUILLMARSH_ASSERT(guiRenderer_ != nullptr, "GUIRenderer not attached.");
    return *guiRenderer_;
}

void VideoRenderer::AttachGUIRenderer(gui::Renderer &renderer)
{
    QUILLMARSH_ASSERT(videoSubsystem_ == nullptr, "Cannot attach GUIRenderer while VideoSubsystem is connected.");
    if (guiRenderer_.get() != &renderer)
        guiRenderer_.reset(&renderer);
}

void VideoRenderer::DetachGUIRenderer()
{
    QUILLMARSH_ASSERT(videoSubsystem_ == nullptr, "Cannot detach GUIRenderer while VideoSubsystem is connected.");
    static_cast<void>(guiRenderer_.release());
}

// Life. Without a GUI renderer there is nobody to pass a call on to.

void VideoRenderer::ConnectVideoSubsystem(VideoSubsystem &subsystem)
{
    QUILLMARSH_ASSERT(guiRenderer_ != nullptr, "GUIRenderer not attached.");
    videoSubsystem_ = &subsystem;
    if (guiRenderer_ != nullptr)
        guiRenderer_->ConnectVideoSubsystem(subsystem);
}

void VideoRenderer::DisconnectVideoSubsystem()
{
    QUILLMARSH_ASSERT(guiRenderer_ != nullptr, "GUIRenderer not attached.");
    if (guiRenderer_ != nullptr)
        guiRenderer_->DisconnectVideoSubsystem();
    videoSubsystem_ = nullptr;
}

void VideoRenderer::CreateVideoResources(bool deviceWasLost)
{
    QUILLMARSH_ASSERT(guiRenderer_ != nullptr, "GUIRenderer not attached.");
    if (guiRenderer_ != nullptr)
        guiRenderer_->CreateVideoResources(deviceWasLost);
}

void VideoRenderer::ReleaseVideoResources(bool deviceWasLost)
{
    QUILLMARSH_ASSERT(guiRenderer_ != nullptr, "GUIRenderer not attached.");
    if (guiRenderer_ != nullptr)
        guiRenderer_->ReleaseVideoResources(deviceWasLost);
}

void VideoRenderer::OnWindowResize(unsigned int width, unsigned int height)
{
    QUILLMARSH_ASSERT(guiRenderer_ != nullptr, "GUIRenderer not attached.");
    windowWidth_ = std::max(width, 1u);
    windowHeight_ = std::max(height, 1u);
    if (guiRenderer_ != nullptr)
        guiRenderer_->OnWindowResize(windowWidth_, windowHeight_);
}

} // namespace quillmarsh
