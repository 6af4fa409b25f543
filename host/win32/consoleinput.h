// Reads lines that the user types into the console.
#ifndef QUILLMARSH_HOST_WIN32_CONSOLEINPUT_H
#define QUILLMARSH_HOST_WIN32_CONSOLEINPUT_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::host
{

/// Waits for a line, which the user edits with the system's own editor; `line` is without its end. False at the end of
/// the input. An interrupt drops the typed text, and the wait goes on.
bool ReadConsoleLine(string &line);

} // namespace quillmarsh::host

#endif
