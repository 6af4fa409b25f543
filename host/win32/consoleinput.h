// Reads lines that the user types into the console.
#ifndef QUILLMARSH_HOST_WIN32_CONSOLEINPUT_H
#define QUILLMARSH_HOST_WIN32_CONSOLEINPUT_H

#include <quillmarsh/platform/types.h>

#include <functional>

namespace quillmarsh::host
{

/// Waits for a line, which the user edits with the system's own editor; `line` is without its end. False at the end of
/// the input. An interrupt drops the typed text, and the wait goes on.
///
/// The Tab key calls `onTab` with the text in front of the cursor; the text behind it is dropped. The editor goes on with
/// the text that the function returns, which must then stand on the screen.
bool ReadConsoleLine(string &line, std::function<string(string const &)> const &onTab);

} // namespace quillmarsh::host

#endif
