// Base of the plug-ins that draw.
#ifndef QUILLMARSH_FRAMEWORK_VIDEORENDERER_H
#define QUILLMARSH_FRAMEWORK_VIDEORENDERER_H

#include <quillmarsh/framework/plugin.h>

namespace quillmarsh
{

/// Plug-in that draws for an application and its GUI. Frame thread only.
class QUILLMARSH_API VideoRenderer : public Plugin
{
public:
    ~VideoRenderer() override;

protected:
    VideoRenderer();
};

} // namespace quillmarsh

#endif
