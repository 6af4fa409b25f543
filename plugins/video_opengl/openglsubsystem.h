// Video subsystem on OpenGL.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_OPENGLSUBSYSTEM_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_OPENGLSUBSYSTEM_H

#include "openglwindow.h"
#include "target.h"

#include <quillmarsh/framework/videosubsystem.h>

namespace video_opengl
{

/// Video subsystem on OpenGL 3.3 or newer, with one window.
///
/// Everything is drawn into a target of its own (see Target), which has the buffers of the configuration. The driver may
/// be software: a wished hardware rasterizer is then no fault, and the profile tells the truth.
///
/// Parameters of the plug-in, each of its type or as a text:
/// - "multisampling" (unsigned integer): samples of each pixel from the next Open() on; 0, as at first, for one;
/// - "debug" (bool): the driver checks more, and its messages go to the log, from the next Open() on;
/// - "lose-device" (bool): true makes the next presentation lose the device, as a real driver may.
class OpenGLSubsystem final : public VideoSubsystem
{
public:
    static constexpr char s_szInterfaceName[] = "OpenGL";
    static constexpr char s_szMultisampling[] = "multisampling";
    static constexpr char s_szDebug[] = "debug";
    static constexpr char s_szLoseDevice[] = "lose-device";

    OpenGLSubsystem();
    ~OpenGLSubsystem() override;

    string GetVideoSubsystemInterfaceName() const override { return s_szInterfaceName; }
    bool CollectVideoProfile(ostream &log, VideoProfile &profile) override;
    void Open(VideoConfig const &config, string const &title) override;
    void Close() override;
    VideoSubsystemWindow *GetWindow() override;
    void PresentBackBuffer() override;
    bool RestoreDevice() override;
    void OnSetVSync(bool vsync) override;
    void OnWindowResize(unsigned int width, unsigned int height) override;
    bool CaptureFrameBuffer(AutoPtr<ImageBase> &image, unsigned int buffer, bool topRowFirst) override;
    bool SetPluginParameter(NamedParameter const &parameter) override;
    bool GetPluginParameter(string const &name, NamedParameter &parameter) const override;

    /// @name For the renderer of this library
    /// @{

    /// Returns the device; null while closed or lost.
    std::shared_ptr<Device> const &GetDevice() const { return device_; }
    /// Returns the height of the target in pixels, and the samples of a pixel; 1 while closed.
    unsigned int GetTargetHeight() const { return target_ != nullptr ? target_->GetHeight() : 1; }
    unsigned int GetNumSamples() const { return target_ != nullptr ? target_->GetNumSamples() : 1; }
    /// Makes the back buffer the target of what OpenGL draws; see Target::BeginDrawing().
    void BeginDrawing() const;
    /// @}

private:
    void OpenDevice(VideoConfig const &config);
    void CloseDevice();

    AutoPtr<OpenGLWindow> window_;
    std::shared_ptr<Device> device_;
    AutoPtr<Target> target_;
    unsigned int numSamples_ = 0;
    bool isDebug_ = false;
    bool isLossDue_ = false;
};

} // namespace video_opengl

#endif
