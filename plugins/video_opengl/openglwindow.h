// The window of the video subsystem on OpenGL.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_OPENGLWINDOW_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_OPENGLWINDOW_H

#include <quillmarsh/framework/videoconfig.h>
#include <quillmarsh/framework/videosubsystemwindow.h>

namespace video_opengl
{

using namespace quillmarsh;

/// Main window with the size of a configuration, or on the whole display in its mode.
class OpenGLWindow final : public VideoSubsystemWindow
{
public:
    /// Opens the window, hidden. Throws VideoSubsystemException with a reason for the user.
    OpenGLWindow(VideoConfig const &config, string const &title);
    ~OpenGLWindow() override;

private:
    void SetClientAreaSize(unsigned int width, unsigned int height);
    /// Covers the display, in the mode of a configuration.
    void CoverDisplay(DisplayModeConfig const &mode);
};

/// Returns the pixels of a window that only shows what was drawn into a target.
inline platform::OpenGLPixels GetWindowPixels()
{
    return {.numDepthBits = 0, .numStencilBits = 0};
}

} // namespace video_opengl

#endif
