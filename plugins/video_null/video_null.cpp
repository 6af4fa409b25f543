// Plug-in library of the video subsystem and renderer without a device.
#include "nullrenderer.h"
#include "nullsubsystem.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

namespace video_null
{
namespace
{

constexpr char s_szPluginName[] = "video_null";

PluginInfo MakeInfo(ePluginType type, string const &name, char const *description)
{
    return {library_info::GetHeaderVersion(),
            type,
            name,
            PluginVersion(1, 0, 0, 0),
            library_info::GetBuildTimestamp(),
            description,
            "The Quillmarsh authors"};
}

void PrintFault(string const &fault)
{
    GetConOut() << e_error << s_szPluginName << ": " << fault << e_info << std::endl;
}

class SubsystemDescriptor : public VideoSubsystemPluginDescriptor
{
public:
    SubsystemDescriptor()
        : VideoSubsystemPluginDescriptor(MakeInfo(e_plugin_video_subsystem, s_szPluginName + string("_subsystem"),
                                                  "Video subsystem without a device"))
    {
    }

    VideoSubsystem *CreateVideoSubsystem() override { return new NullSubsystem; }
};

class RendererDescriptor : public VideoRendererPluginDescriptor
{
public:
    RendererDescriptor()
        : VideoRendererPluginDescriptor(MakeInfo(e_plugin_video_renderer, s_szPluginName,
                                                 "Renderer that checks and counts its calls, and draws nothing"))
    {
    }

    VideoRenderer *CreateVideoRenderer() override { return new NullRenderer(&PrintFault); }
};

} // namespace
} // namespace video_null

QUILLMARSH_PLUGIN_LIBRARY(video_null::SubsystemDescriptor, video_null::RendererDescriptor)
