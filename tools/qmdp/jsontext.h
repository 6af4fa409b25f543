// Texts in JSON.
#ifndef QUILLMARSH_TOOLS_QMDP_JSONTEXT_H
#define QUILLMARSH_TOOLS_QMDP_JSONTEXT_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::tools
{

/// A text in quotes, escaped where needed. Bytes that are no UTF-8, as names of files may have them, become U+FFFD.
string MakeJSONText(string const &text);

} // namespace quillmarsh::tools

#endif
