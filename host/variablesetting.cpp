#include "variablesetting.h"

#include "arguments.h"

#include <quillmarsh/framework/commands/variablecmd.h>

namespace quillmarsh::host
{

void SetVariable(VariableRegistry &registry, string const &name, string const &value, bool developerMode)
{
    VariableProxy *const proxy = registry.GetVariable(name);
    if (proxy == nullptr)
        ThrowWrongArgument("--set: there is no variable '" + name + "'");
    if (proxy->IsDeveloperModeOnly() && !developerMode)
        ThrowWrongArgument("--set: the variable '" + name + "' needs --developer-mode");
    if (!framework_commands::VariableCmd::AcceptsValue(*proxy, value))
    {
        ThrowWrongArgument("--set: '" + value + "' is not a value for the variable '" + name + "' of type " +
                           proxy->GetTargetTypeName());
    }
    proxy->SetValueFromString(value);
}

} // namespace quillmarsh::host
