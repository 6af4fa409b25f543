// Video renderer without a device.
#ifndef QUILLMARSH_PLUGINS_VIDEO_NULL_NULLRENDERER_H
#define QUILLMARSH_PLUGINS_VIDEO_NULL_NULLRENDERER_H

#include "nullguirenderer.h"

#include <quillmarsh/framework/videorenderer.h>

namespace video_null
{

/// Video renderer that draws nothing. Its GUI renderer is a NullGUIRenderer.
///
/// Parameters of the plug-in:
/// - "last-frame" (text, read only): what the last frame has drawn, a line for each primitive;
/// - "faults" (text, read only): the faults in the calls, a line each;
/// - "managed-resources" (bool): the textures survive a lost device.
class NullRenderer final : public VideoRenderer
{
public:
    static constexpr char s_szInterfaceName[] = "Null";
    static constexpr char s_szLastFrame[] = "last-frame";
    static constexpr char s_szFaults[] = "faults";
    static constexpr char s_szManagedResources[] = "managed-resources";

    /// `report` gets each fault in the calls once; null for nobody.
    explicit NullRenderer(std::function<void(string const &)> report = nullptr);

    NullGUIRenderer &GetNullGUIRenderer() { return gui_; }

    string GetVideoRendererInterfaceName() const override { return s_szInterfaceName; }
    bool IsCompatibleWith(VideoSubsystem const &subsystem) const override;
    bool SetPluginParameter(NamedParameter const &parameter) override;
    bool GetPluginParameter(string const &name, NamedParameter &parameter) const override;

private:
    /// Owned by the base class.
    NullGUIRenderer &gui_;
};

} // namespace video_null

#endif
