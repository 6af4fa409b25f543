// Video subsystem without a device.
#ifndef QUILLMARSH_PLUGINS_VIDEO_NULL_NULLSUBSYSTEM_H
#define QUILLMARSH_PLUGINS_VIDEO_NULL_NULLSUBSYSTEM_H

#include <quillmarsh/framework/videosubsystem.h>

namespace video_null
{

using namespace quillmarsh;

/// Video subsystem without a device and without a window. It offers the usual display modes, and has no buffer to
/// capture.
///
/// Parameters of the plug-in:
/// - "lose-device" (bool): true makes the next presentation lose the device, as a real one may.
class NullSubsystem : public VideoSubsystem
{
public:
    static constexpr char s_szInterfaceName[] = "Null";
    static constexpr char s_szLoseDevice[] = "lose-device";

    string GetVideoSubsystemInterfaceName() const override { return s_szInterfaceName; }
    bool CollectVideoProfile(ostream &log, VideoProfile &profile) override;
    void Open(VideoConfig const &config, string const &title) override;
    void Close() override;
    VideoSubsystemWindow *GetWindow() override { return nullptr; }
    void PresentBackBuffer() override;
    bool RestoreDevice() override;
    void OnSetVSync(bool vsync) override;
    void OnWindowResize(unsigned int width, unsigned int height) override;
    bool CaptureFrameBuffer(AutoPtr<ImageBase> &, unsigned int, bool) override { return false; }
    bool SetPluginParameter(NamedParameter const &parameter) override;

    /// Returns the number of presentations since the subsystem was opened.
    unsigned int GetNumPresented() const { return numPresented_; }

private:
    unsigned int numPresented_ = 0;
    bool isLossDue_ = false;
};

} // namespace video_null

#endif
