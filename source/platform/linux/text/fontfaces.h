// Families of installed fonts.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_TEXT_FONTFACES_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_TEXT_FONTFACES_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform::drawing
{

/// Returns the family, or its substitute; empty when neither is installed.
string FindFamily(string const &family);

/// Returns the monospace family; empty when no fonts are installed. Looked up once.
string const &GetMonospaceFamily();

} // namespace quillmarsh::platform::drawing

#endif
