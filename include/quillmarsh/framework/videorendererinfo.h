// Description of a video renderer.
#ifndef QUILLMARSH_FRAMEWORK_VIDEORENDERERINFO_H
#define QUILLMARSH_FRAMEWORK_VIDEORENDERERINFO_H

#include <quillmarsh/framework/plugin.h>
#include <quillmarsh/framework/videoprofile.h>

namespace quillmarsh
{

/// Description of a video renderer: its plug-in, the name of its interface, and what it can do on this machine. A
/// copyable value.
class QUILLMARSH_API VideoRendererInfo
{
public:
    /// An unnamed renderer with an empty profile.
    VideoRendererInfo() = default;
    /// Takes all three parts.
    VideoRendererInfo(PluginInfo const &pluginInfo, string const &interfaceName, VideoProfile const &profile)
        : pluginInfo_(pluginInfo),
          videoRendererInterfaceName_(interfaceName),
          videoProfile_(profile)
    {
    }

    /// @name Fields
    /// Applications know the interface by its name; several plug-ins may have the same.
    /// @{
    PluginInfo const &GetPluginInfo() const { return pluginInfo_; }
    string const &GetVideoRendererInterfaceName() const { return videoRendererInterfaceName_; }
    VideoProfile const &GetVideoProfile() const { return videoProfile_; }
    /// @}

private:
    PluginInfo pluginInfo_;
    string videoRendererInterfaceName_;
    VideoProfile videoProfile_;
};

} // namespace quillmarsh

#endif
