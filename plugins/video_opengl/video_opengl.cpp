// Plug-in library of the video subsystem and renderer on OpenGL.
#include "openglrenderer.h"
#include "openglsubsystem.h"

#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

namespace video_opengl
{
namespace
{

// The names differ, since a host passes a parameter to every plug-in of a name.
PluginInfo MakeInfo(ePluginType type, char const *name, char const *description)
{
    return {library_info::GetHeaderVersion(),
            type,
            name,
            PluginVersion(1, 0, 0, 0),
            library_info::GetBuildTimestamp(),
            description,
            "The Quillmarsh authors"};
}

class SubsystemDescriptor : public VideoSubsystemPluginDescriptor
{
public:
    SubsystemDescriptor()
        : VideoSubsystemPluginDescriptor(
              MakeInfo(e_plugin_video_subsystem, "video_opengl_subsystem", "Window and device of OpenGL 3.3"))
    {
    }

    VideoSubsystem *CreateVideoSubsystem() override { return new OpenGLSubsystem; }
};

class RendererDescriptor : public VideoRendererPluginDescriptor
{
public:
    RendererDescriptor()
        : VideoRendererPluginDescriptor(MakeInfo(e_plugin_video_renderer, "video_opengl", "Draws with OpenGL 3.3"))
    {
    }

    VideoRenderer *CreateVideoRenderer() override { return new OpenGLRenderer; }
};

} // namespace
} // namespace video_opengl

QUILLMARSH_PLUGIN_LIBRARY(video_opengl::SubsystemDescriptor, video_opengl::RendererDescriptor)
