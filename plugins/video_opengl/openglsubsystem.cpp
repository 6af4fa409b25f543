#include "openglsubsystem.h"

#include "profile.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/videoprofile.h>

#include <algorithm>

namespace video_opengl
{
namespace
{

TargetFormat RequireFormat(FrameBufferConfig const &config)
{
    TargetFormat const format = FindTargetFormat(config);
    bool const isAccumulating = config.AccumulationRedBits + config.AccumulationGreenBits +
                                    config.AccumulationBlueBits + config.AccumulationAlphaBits >
                                0;
    if (format.color == nullptr || format.depth == nullptr || isAccumulating)
        QUILLMARSH_THROW(VideoSubsystemException, "OpenGL does not offer a frame buffer of the bits " +
                                                      config.MakeLayoutDesc(".", ", ") +
                                                      " (colours, depth and stencil, accumulation).");
    return format;
}

/// Reads a parameter of its own type, or a text: hosts pass texts on. False for anything else.
template<typename Value>
bool ReadParameter(NamedParameter const &parameter, NamedParameter::eValueType type, Value &value)
{
    if (parameter.GetValueType() == NamedParameter::e_string)
        return ToValue(parameter.GetValueString(), value);
    if (parameter.GetValueType() != type)
        return false;
    parameter.GetValue(value);
    return true;
}

} // namespace

OpenGLSubsystem::OpenGLSubsystem() = default;

OpenGLSubsystem::~OpenGLSubsystem()
{
    Close();
}

bool OpenGLSubsystem::CollectVideoProfile(ostream &log, VideoProfile &profile)
{
    return CollectProfile(device_, log, profile);
}

void OpenGLSubsystem::Open(VideoConfig const &config, string const &title)
{
    if (GetOperationalState() != e_video_closed)
        QUILLMARSH_THROW(VideoSubsystemException, "The video subsystem is open already.");
    try
    {
        window_ = std::make_unique<OpenGLWindow>(config, title);
        OpenDevice(config);
    }
    catch (...)
    {
        Close();
        throw;
    }
    SetVideoConfig(config);
    SetOperationalState(e_video_operational);
    isLossDue_ = false;
}

void OpenGLSubsystem::OpenDevice(VideoConfig const &config)
{
    TargetFormat const format = RequireFormat(config.FrameBuffer);
    platform::Window &window = *window_->GetPlatformWindow();
    device_ = Device::Open(window, isDebug_);
    platform::Window::Size const size = window.GetSize();
    target_ = std::make_unique<Target>(device_, format, numSamples_, static_cast<unsigned int>(std::max(size.width, 1)),
                                       static_cast<unsigned int>(std::max(size.height, 1)));
    device_->GetContext().SetSwapInterval(config.Hints.VSync ? 1 : 0);
}

void OpenGLSubsystem::CloseDevice()
{
    target_.reset();
    if (device_ != nullptr)
        device_->Close();
    device_.reset();
}

void OpenGLSubsystem::Close()
{
    CloseDevice();
    window_.reset();
    SetOperationalState(e_video_closed);
}

VideoSubsystemWindow *OpenGLSubsystem::GetWindow()
{
    return window_.get();
}

void OpenGLSubsystem::BeginDrawing() const
{
    if (target_ != nullptr)
        target_->BeginDrawing();
}

void OpenGLSubsystem::PresentBackBuffer()
{
    if (GetOperationalState() != e_video_operational)
        return;
    device_->DrawGathered();
    target_->Present(window_->GetPlatformWindow()->GetSize().height);
    device_->GetContext().SwapBuffers();
    if (isLossDue_ || device_->IsLost())
        SetOperationalState(e_video_device_lost);
    isLossDue_ = false;
}

bool OpenGLSubsystem::RestoreDevice()
{
    if (GetOperationalState() != e_video_device_lost)
        return GetOperationalState() == e_video_operational;
    CloseDevice();
    try
    {
        OpenDevice(GetVideoConfig());
    }
    catch (VideoSubsystemException const &)
    {
        // The driver may still be starting again.
        CloseDevice();
        return false;
    }
    SetOperationalState(e_video_operational);
    return true;
}

void OpenGLSubsystem::OnSetVSync(bool vsync)
{
    VideoConfig config = GetVideoConfig();
    config.Hints.VSync = device_ != nullptr ? device_->GetContext().SetSwapInterval(vsync ? 1 : 0) != 0 : vsync;
    SetVideoConfig(config);
}

void OpenGLSubsystem::OnWindowResize(unsigned int width, unsigned int height)
{
    if (device_ != nullptr)
    {
        device_->DrawGathered();
        target_->Resize(width, height);
    }
    VideoConfig config = GetVideoConfig();
    config.DisplayMode.Width = width;
    config.DisplayMode.Height = height;
    SetVideoConfig(config);
}

bool OpenGLSubsystem::CaptureFrameBuffer(AutoPtr<ImageBase> &image, unsigned int buffer, bool topRowFirst)
{
    if (GetOperationalState() != e_video_operational)
        return false;
    device_->DrawGathered();
    AutoPtr<ImageBase> captured;
    switch (buffer)
    {
    case e_capture_color:
    case e_capture_front_color:
        captured = target_->ReadColor(buffer == e_capture_front_color, topRowFirst);
        break;
    case e_capture_depth:
        captured = target_->ReadDepth(topRowFirst);
        break;
    case e_capture_stencil:
        captured = target_->ReadStencil(topRowFirst);
        break;
    default:
        break;
    }
    if (captured == nullptr)
        return false;
    image = std::move(captured);
    return true;
}

bool OpenGLSubsystem::SetPluginParameter(NamedParameter const &parameter)
{
    string const &name = parameter.GetName();
    if (name == s_szMultisampling)
        return ReadParameter(parameter, NamedParameter::e_uinteger, numSamples_);
    if (name == s_szDebug)
        return ReadParameter(parameter, NamedParameter::e_bool, isDebug_);
    if (name == s_szLoseDevice)
        return ReadParameter(parameter, NamedParameter::e_bool, isLossDue_);
    return false;
}

bool OpenGLSubsystem::GetPluginParameter(string const &name, NamedParameter &parameter) const
{
    if (name == s_szMultisampling)
        parameter = NamedParameter(name, numSamples_);
    else if (name == s_szDebug)
        parameter = NamedParameter(name, isDebug_);
    else if (name == s_szLoseDevice)
        parameter = NamedParameter(name, isLossDue_);
    else
        return false;
    return true;
}

} // namespace video_opengl
