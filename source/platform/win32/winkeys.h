// Keys as Windows reports them.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_WINKEYS_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_WINKEYS_H

#include <quillmarsh/platform/inputcodes.h>

namespace quillmarsh::platform
{

/// Returns the key of a hardware scan code; e_key_none when eKey does not name it.
eKey FindKey(unsigned int scanCode, bool isExtended);
/// Returns the virtual key of a key in the present layout; 0 when it has none.
unsigned int FindVirtualKey(eKey key);

} // namespace quillmarsh::platform

#endif
