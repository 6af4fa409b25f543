// The text on the clipboard.
#ifndef QUILLMARSH_PLATFORM_CLIPBOARD_H
#define QUILLMARSH_PLATFORM_CLIPBOARD_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// Gives the text on the clipboard, in UTF-8; empty when there is none, and when no window is open. Lines end in a line
/// feed alone. The desktop's thread only.
QUILLMARSH_API string ReadClipboardText();
/// Puts a text in UTF-8 on the clipboard. False when the system refuses, and when no window is open. The desktop's thread
/// only.
QUILLMARSH_API bool WriteClipboardText(string const &text);

} // namespace quillmarsh::platform

#endif
