// Base of the plug-ins that drive input devices.
#ifndef QUILLMARSH_FRAMEWORK_HIDDRIVER_H
#define QUILLMARSH_FRAMEWORK_HIDDRIVER_H

#include <quillmarsh/framework/plugin.h>

namespace quillmarsh
{

/// Plug-in that finds and drives input devices of one kind. Frame thread only.
class QUILLMARSH_API HIDDriver : public Plugin
{
public:
    ~HIDDriver() override;

protected:
    HIDDriver();
};

} // namespace quillmarsh

#endif
