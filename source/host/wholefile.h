// Writes small files of the user.
#ifndef QUILLMARSH_SOURCE_HOST_WHOLEFILE_H
#define QUILLMARSH_SOURCE_HOST_WHOLEFILE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::host
{

/// Gives a file new contents. It has the old ones until the new ones are complete; a link stays a link. Returns the
/// reason for a failure, also when the file exists and `overwrite` is false; empty on success.
string WriteWholeFile(string const &fileName, string const &text, bool overwrite);

} // namespace quillmarsh::host

#endif
