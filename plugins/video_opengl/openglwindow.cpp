#include "openglwindow.h"

#include <quillmarsh/basetools/exception.h>

#include <algorithm>

namespace video_opengl
{
namespace
{

/// Larger sizes overflow the arithmetic of the window systems.
constexpr unsigned int s_maxSize = 16384;

unsigned long GetStyle(VideoConfig const &config)
{
    if (config.FrameBuffer.Fullscreen)
        return win_utils::e_style_popup;
    constexpr unsigned long resizable = win_utils::e_style_overlapped;
    constexpr unsigned long sizing = win_utils::e_style_sizeFrame | win_utils::e_style_maximizeBox;
    return config.Resizable ? resizable : resizable & ~sizing;
}

} // namespace

OpenGLWindow::OpenGLWindow(VideoConfig const &config, string const &title)
    : VideoSubsystemWindow(config.FrameBuffer.Fullscreen)
{
    DisplayModeConfig const &mode = config.DisplayMode;
    if (mode.Width > s_maxSize || mode.Height > s_maxSize)
        QUILLMARSH_THROW(VideoSubsystemException, "A window of " + mode.MakeDesc(" x ", " @ ") +
                                                      " is too large: " + std::to_string(s_maxSize) + " is the limit.");
    SetText(title);
    SetOpenGLPixels(GetWindowPixels());
    try
    {
        CreateSystemWindow(0, GetStyle(config), 0);
    }
    catch (SystemResourceException const &)
    {
        QUILLMARSH_THROW(VideoSubsystemException, GetCreationFailure());
    }
    if (config.FrameBuffer.Fullscreen)
        CoverDisplay(mode);
    else
        SetClientAreaSize(std::max(mode.Width, 1u), std::max(mode.Height, 1u));
}

OpenGLWindow::~OpenGLWindow()
{
    if (GetPlatformWindow() != nullptr)
        DestroySystemWindow();
}

void OpenGLWindow::SetClientAreaSize(unsigned int width, unsigned int height)
{
    platform::Window::Frame const frame = GetPlatformWindow()->GetFrame();
    SetSize(width + static_cast<unsigned int>(frame.left + frame.right),
            height + static_cast<unsigned int>(frame.top + frame.bottom));
}

void OpenGLWindow::CoverDisplay(DisplayModeConfig const &mode)
{
    platform::DisplayMode desktop;
    bool const isKnown = platform::ReadDesktopMode(desktop);
    bool const isDesktopMode = isKnown && mode.Width == desktop.width && mode.Height == desktop.height &&
                               (mode.RefreshFrequency == 0 || mode.RefreshFrequency == desktop.frequency);
    if (isDesktopMode)
    {
        GetPlatformWindow()->SetFullscreen();
        return;
    }
    string reason;
    if (!GetPlatformWindow()->SetFullscreen({mode.Width, mode.Height, mode.BitDepth, mode.RefreshFrequency}, reason))
        QUILLMARSH_THROW(VideoSubsystemException, reason);
}

} // namespace video_opengl
