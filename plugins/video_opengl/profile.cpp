#include "profile.h"

#include "openglwindow.h"
#include "target.h"

#include <quillmarsh/basetools/exception.h>

#include <ostream>

namespace video_opengl
{
namespace
{

/// A device for questions, with a window that is never shown.
struct Inquiry
{
    Inquiry()
    {
        string reason;
        platform::WindowDesc desc;
        desc.role = platform::eWindowRole::e_tool;
        desc.width = desc.height = 16;
        desc.openGL = GetWindowPixels();
        window = platform::Window::Open(desc, reason);
        if (window == nullptr)
            QUILLMARSH_THROW(VideoSubsystemException, reason);
        device = Device::Open(*window, false);
    }
    ~Inquiry()
    {
        if (device != nullptr)
            device->Close();
    }

    AutoPtr<platform::Window> window;
    std::shared_ptr<Device> device;
};

void AddFrameBuffers(std::shared_ptr<Device> const &device, VideoProfile &profile)
{
    bool const isHardware = !device->GetDriverInfo().isSoftware;
    for (ColorFormat const &color : GetColorFormats())
    {
        for (DepthFormat const &depth : GetDepthFormats())
        {
            if (!CanDrawInto(device, {&color, &depth}, 0))
                continue;
            for (bool const isFullscreen : {false, true})
            {
                FrameBufferConfig config(isFullscreen, isHardware, 1, depth.depth, depth.stencil, 0);
                config.RedBits = color.red;
                config.GreenBits = color.green;
                config.BlueBits = color.blue;
                config.AlphaBits = color.alpha;
                profile.Add(config);
            }
        }
    }
}

void AddDriver(std::shared_ptr<Device> const &device, VideoProfile &profile)
{
    DriverInfo const &info = device->GetDriverInfo();
    profile.SetDriverInfo(info.renderer + " (" + info.vendor + ")", info.version, win_utils::Guid());
    AddFrameBuffers(device, profile);
}

} // namespace

bool CollectProfile(std::shared_ptr<Device> const &device, ostream &log, VideoProfile &profile)
{
    bool isComplete = true;
    try
    {
        if (device != nullptr)
            AddDriver(device, profile);
        else
            AddDriver(Inquiry().device, profile);
    }
    catch (Exception const &exception)
    {
        log << "OpenGL: " << exception.GetMessage() << std::endl;
        isComplete = false;
    }
    std::vector<platform::DisplayMode> modes;
    if (!platform::ReadDisplayModes(modes))
    {
        log << "The modes of the display cannot be read." << std::endl;
        isComplete = false;
    }
    for (platform::DisplayMode const &mode : modes)
        profile.Add(DisplayModeConfig(mode.width, mode.height, mode.bitsPerPixel, mode.frequency));
    return isComplete;
}

} // namespace video_opengl
