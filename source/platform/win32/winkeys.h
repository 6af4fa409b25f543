// Keys, as Windows tells of them.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_WINKEYS_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_WINKEYS_H

#include <quillmarsh/platform/inputcodes.h>

namespace quillmarsh::platform
{

/// Finds a key by the code that its hardware sends; e_key_none for what is no key of ours.
eKey FindKey(unsigned int scanCode, bool isExtended);

} // namespace quillmarsh::platform

#endif
