// The text on the clipboard.
#ifndef QUILLMARSH_PLATFORM_CLIPBOARD_H
#define QUILLMARSH_PLATFORM_CLIPBOARD_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// Returns the text on the clipboard, in UTF-8, with a line feed alone at the end of each line. Empty when the
/// clipboard holds no text, and when no window is open. The desktop's thread only.
QUILLMARSH_API string ReadClipboardText();
/// Puts a text in UTF-8 on the clipboard. Returns false when the system refuses, and when no window is open. The
/// desktop's thread only.
QUILLMARSH_API bool WriteClipboardText(string const &text);

} // namespace quillmarsh::platform

#endif
