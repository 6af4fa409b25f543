// Sets exported variables from the command line.
#ifndef QUILLMARSH_HOST_VARIABLESETTING_H
#define QUILLMARSH_HOST_VARIABLESETTING_H

#include <quillmarsh/basetools/variableregistry.h>

namespace quillmarsh::host
{

/// Sets an exported variable. Throws a WrongArgumentException when no variable has that name, when the value cannot be
/// converted, and for a developer's variable outside the developer mode.
void SetVariable(VariableRegistry &registry, string const &name, string const &value, bool developerMode);

} // namespace quillmarsh::host

#endif
