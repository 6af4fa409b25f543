// Base of the plug-ins that own the graphics device.
#ifndef QUILLMARSH_FRAMEWORK_VIDEOSUBSYSTEM_H
#define QUILLMARSH_FRAMEWORK_VIDEOSUBSYSTEM_H

#include <quillmarsh/framework/plugin.h>

namespace quillmarsh
{

/// Plug-in that owns the graphics device, its window and its presentation. Frame thread only.
class QUILLMARSH_API VideoSubsystem : public Plugin
{
public:
    ~VideoSubsystem() override;

protected:
    VideoSubsystem();
};

} // namespace quillmarsh

#endif
