// Lines that the user types into the console.
#ifndef QUILLMARSH_HOST_WIN32_CONSOLEINPUT_H
#define QUILLMARSH_HOST_WIN32_CONSOLEINPUT_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::host
{

/// Waits for a line that the user typed and edited by the system's own means, without its end. False at the end of the
/// input. An interrupt drops what was typed, and the wait goes on.
bool ReadConsoleLine(string &line);

} // namespace quillmarsh::host

#endif
