#include "nullsubsystem.h"

#include "parameters.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/libraryinfo.h>
#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/framework/videoprofile.h>

namespace video_null
{

namespace
{

struct Size
{
    unsigned int width;
    unsigned int height;
};
constexpr Size s_sizes[] = {{640, 480}, {800, 600}, {1024, 768}, {1280, 720}, {1280, 1024}, {1600, 1200}, {1920, 1080}};
constexpr unsigned int s_bitDepth = 32;
constexpr unsigned int s_refreshFrequency = 60;

/// Depth and stencil bits of the frame buffers.
constexpr unsigned int s_depthStencils[][2] = {{24, 8}, {24, 0}, {16, 0}, {0, 0}};

} // namespace

bool NullSubsystem::CollectVideoProfile(ostream &, VideoProfile &profile)
{
    profile.SetDriverInfo("No device", library_info::GetLibraryVersion().MakeString(), win_utils::Guid());
    for (Size const &size : s_sizes)
        profile.Add(DisplayModeConfig(size.width, size.height, s_bitDepth, s_refreshFrequency));
    for (auto const &[depth, stencil] : s_depthStencils)
    {
        for (bool const fullscreen : {false, true})
            profile.Add(FrameBufferConfig(fullscreen, true, 1, depth, stencil, 0));
    }
    return true;
}

void NullSubsystem::Open(VideoConfig const &config, string const &)
{
    if (GetOperationalState() != e_video_closed)
        QUILLMARSH_THROW(VideoSubsystemException, "The video subsystem is open already.");
    SetVideoConfig(config);
    SetOperationalState(e_video_operational);
    numPresented_ = 0;
    isLossDue_ = false;
}

void NullSubsystem::Close()
{
    SetOperationalState(e_video_closed);
}

void NullSubsystem::PresentBackBuffer()
{
    if (GetOperationalState() != e_video_operational)
        return;
    if (isLossDue_)
        SetOperationalState(e_video_device_lost);
    else
        ++numPresented_;
}

bool NullSubsystem::RestoreDevice()
{
    isLossDue_ = false;
    if (GetOperationalState() == e_video_device_lost)
        SetOperationalState(e_video_operational);
    return GetOperationalState() == e_video_operational;
}

void NullSubsystem::OnSetVSync(bool vsync)
{
    VideoConfig config = GetVideoConfig();
    config.Hints.VSync = vsync;
    SetVideoConfig(config);
}

void NullSubsystem::OnWindowResize(unsigned int width, unsigned int height)
{
    VideoConfig config = GetVideoConfig();
    config.DisplayMode.Width = width;
    config.DisplayMode.Height = height;
    SetVideoConfig(config);
}

bool NullSubsystem::SetPluginParameter(NamedParameter const &parameter)
{
    return parameter.GetName() == s_szLoseDevice && ReadSwitch(parameter, isLossDue_);
}

} // namespace video_null
