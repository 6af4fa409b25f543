// Base of the plug-ins that own the graphics device.
#ifndef QUILLMARSH_FRAMEWORK_VIDEOSUBSYSTEM_H
#define QUILLMARSH_FRAMEWORK_VIDEOSUBSYSTEM_H

#include <quillmarsh/framework/plugin.h>
#include <quillmarsh/framework/videoconfig.h>

namespace quillmarsh
{

class ImageBase;
class VideoProfile;
class VideoSubsystemWindow;

/// State of a video subsystem.
enum eOperationalState : unsigned int
{
    /// There is no device.
    e_video_closed = 0,
    /// The device works.
    e_video_operational,
    /// The device was lost, with everything in it. RestoreDevice() may bring it back.
    e_video_device_lost,
    /// The device has failed for good. The host closes the subsystem and may open it again.
    e_video_failed
};

/// Buffers that CaptureFrameBuffer() can read.
enum eCapturedBuffer : unsigned int
{
    /// Colours of the back buffer, in a format with 8 bits for each channel.
    e_capture_color = 0,
    /// Depths of the back buffer, as FP32NormL: 0 is nearest, 1 is farthest.
    e_capture_depth = 1,
    /// Stencil values of the back buffer, as L8.
    e_capture_stencil = 2,
    /// Colours of the front buffer: what was presented last.
    e_capture_front_color = 0x100
};

/// Plug-in that owns the graphics device, its window and its presentation. It knows how to talk to one graphics
/// interface; a VideoRenderer draws with it. Frame thread only.
///
/// The host builds the profile, opens the subsystem with a configuration, connects the renderer, and runs frames. It
/// closes the subsystem at the end, and for each reconfiguration. Operations that talk to the device throw
/// VideoSubsystemException when they fail, or VideoSubsystemRecoverableException when opening the subsystem anew may
/// help; the host then closes the subsystem.
class QUILLMARSH_API VideoSubsystem : public Plugin
{
public:
    ~VideoSubsystem() override;

    /// Tells what the subsystem can do. Collects the profile, completes it, and writes it and its faults to a log file:
    /// `logTitle` stands at its head. Returns false when something is missing; everything that was collected is in
    /// `profile` then, too.
    bool BuildVideoProfile(string const &logFileName, string const &logTitle, VideoProfile &profile);

    /// Returns the name of the graphics interface, for users and for VideoRenderer::IsCompatibleWith().
    virtual string GetVideoSubsystemInterfaceName() const = 0;
    /// Adds the driver, the display modes and the frame-buffer configurations of this machine to an empty profile.
    /// Returns false when something could not be found out. Faults go to `log`, a line each. May be called while the
    /// subsystem is closed or open.
    virtual bool CollectVideoProfile(ostream &log, VideoProfile &profile) = 0;
    /// Opens window and device with a configuration, which GetVideoConfig() returns from then on. The window is hidden;
    /// its title is `title`. After a failure the subsystem is closed.
    virtual void Open(VideoConfig const &config, string const &title) = 0;
    /// Closes device and window. Harmless when closed.
    virtual void Close() = 0;
    /// Returns the window; null while closed, and for a subsystem that needs none.
    virtual VideoSubsystemWindow *GetWindow() = 0;
    /// Shows the back buffer. CaptureFrameBuffer() finds the picture in it until the next frame begins to draw; its
    /// contents are undefined then. A lost device changes the operational state, and
    /// is no failure.
    virtual void PresentBackBuffer() = 0;
    /// Brings a lost device back with the present configuration. Everything that was created in it has been released
    /// before. Returns false when it is still lost; the host calls it again in a later frame.
    virtual bool RestoreDevice() = 0;
    /// Switches waiting for the vertical retrace, and stores what counts now in the configuration.
    virtual void OnSetVSync(bool vsync) = 0;
    /// The client area of the window has a new size in pixels, each number at least 1. The back buffer gets this size.
    virtual void OnWindowResize(unsigned int width, unsigned int height) = 0;
    /// Reads a buffer, which is an eCapturedBuffer. Sets `image` and returns true; returns false, and leaves `image`
    /// alone, when there is no such buffer. The first row of the image is the top of the picture when `topRowFirst` is
    /// true, and the bottom otherwise.
    virtual bool CaptureFrameBuffer(AutoPtr<ImageBase> &image, unsigned int buffer, bool topRowFirst) = 0;

    eOperationalState GetOperationalState() const { return operationalState_; }
    /// Returns the configuration in force; a default one before the first Open().
    VideoConfig const &GetVideoConfig() const { return videoConfig_; }

protected:
    VideoSubsystem();

    void SetOperationalState(eOperationalState state) { operationalState_ = state; }
    void SetVideoConfig(VideoConfig const &config) { videoConfig_ = config; }

private:
    eOperationalState operationalState_ = e_video_closed;
    VideoConfig videoConfig_{false};
};

} // namespace quillmarsh

#endif
