// The theme of the look.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_THEME_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_THEME_H

#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/kernel.h>

namespace viewer
{

/// True if widgets are dark on light.
inline bool IsLightTheme()
{
    quillmarsh::VariableRegistry *const registry = quillmarsh::Kernel::Instance().GetVariableRegistry();
    quillmarsh::VariableProxy const *const theme = registry != nullptr ? registry->GetVariable("look.theme") : nullptr;
    return theme != nullptr && theme->GetValueString() == "light";
}

} // namespace viewer

#endif
