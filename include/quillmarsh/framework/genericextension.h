// Base of the plug-ins that extend an application in their own way.
#ifndef QUILLMARSH_FRAMEWORK_GENERICEXTENSION_H
#define QUILLMARSH_FRAMEWORK_GENERICEXTENSION_H

#include <quillmarsh/framework/plugin.h>

namespace quillmarsh
{

/// Plug-in with an interface that an application knows by name.
///
/// The kernel creates the extensions that Application::ConfirmGenericExtension() accepts. Code that knows the interface
/// casts the result of Kernel::FindGenericExtension(). Frame thread only, unless the interface says otherwise.
class QUILLMARSH_API GenericExtension : public Plugin
{
public:
    ~GenericExtension() override;

    /// Name of the interface that the extension offers.
    virtual string GetGenericExtensionInterfaceName() = 0;

protected:
    GenericExtension();
};

} // namespace quillmarsh

#endif
