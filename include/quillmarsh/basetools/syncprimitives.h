// Critical sections, events, and the guard of a single instance.
#ifndef QUILLMARSH_BASETOOLS_SYNCPRIMITIVES_H
#define QUILLMARSH_BASETOOLS_SYNCPRIMITIVES_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Prepares a name for the system's name space of kernel objects: cut to 260 characters, and without a backslash but
/// for one of the prefixes "Local\", "Global\", "Session\"; other backslashes become "/".
QUILLMARSH_API void ForceWinKernelName(string &name);

} // namespace quillmarsh

#endif
