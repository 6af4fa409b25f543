#include "openglrenderer.h"

#include "openglsubsystem.h"

#include <quillmarsh/basetools/namedparameter.h>

namespace video_opengl
{

OpenGLRenderer::OpenGLRenderer() : gui_(*new OpenGLGUIRenderer(*this))
{
    AttachGUIRenderer(gui_);
}

string OpenGLRenderer::GetVideoRendererInterfaceName() const
{
    return OpenGLSubsystem::s_szInterfaceName;
}

bool OpenGLRenderer::IsCompatibleWith(VideoSubsystem const &subsystem) const
{
    return subsystem.GetVideoSubsystemInterfaceName() == OpenGLSubsystem::s_szInterfaceName;
}

bool OpenGLRenderer::GetPluginParameter(string const &name, NamedParameter &parameter) const
{
    if (name != s_szDrawCalls)
        return false;
    parameter = NamedParameter(name, gui_.GetNumDrawCalls());
    return true;
}

} // namespace video_opengl
