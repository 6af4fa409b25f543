// Video renderer on OpenGL.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_OPENGLRENDERER_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_OPENGLRENDERER_H

#include "openglguirenderer.h"

#include <quillmarsh/framework/videorenderer.h>

namespace video_opengl
{

/// Video renderer on OpenGL. Its GUI renderer is an OpenGLGUIRenderer, which tells what an application finds that draws
/// with OpenGL itself.
///
/// Parameter of the plug-in:
/// - "draw-calls" (unsigned integer, read only): draw calls of the GUI since the video resources were created.
class OpenGLRenderer final : public VideoRenderer
{
public:
    static constexpr char s_szDrawCalls[] = "draw-calls";

    OpenGLRenderer();

    string GetVideoRendererInterfaceName() const override;
    bool IsCompatibleWith(VideoSubsystem const &subsystem) const override;
    bool GetPluginParameter(string const &name, NamedParameter &parameter) const override;

private:
    /// Owned by the base class.
    OpenGLGUIRenderer &gui_;
};

} // namespace video_opengl

#endif
