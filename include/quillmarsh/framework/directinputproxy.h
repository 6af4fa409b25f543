// Base of the plug-in that binds the system's DirectInput.
#ifndef QUILLMARSH_FRAMEWORK_DIRECTINPUTPROXY_H
#define QUILLMARSH_FRAMEWORK_DIRECTINPUTPROXY_H

#include <quillmarsh/framework/plugin.h>

namespace quillmarsh
{

/// Plug-in that binds the system's DirectInput for device drivers. Frame thread only.
class QUILLMARSH_API DirectInputProxy : public Plugin
{
public:
    ~DirectInputProxy() override;

protected:
    DirectInputProxy();
};

} // namespace quillmarsh

#endif
