// Families of fonts that are installed.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_FONTFACES_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_FONTFACES_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform::drawing
{

/// The family itself, or what stands in for it; empty if there is neither.
string FindFamily(string const &family);

/// Family of equal widths, empty if the system has no fonts at all. Looked up once.
string const &GetMonospaceFamily();

} // namespace quillmarsh::platform::drawing

#endif
