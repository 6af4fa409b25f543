#include "source/platform/allocation.h"

namespace quillmarsh::platform
{

// On Windows, a module's allocation functions serve that module only, so the library cannot see the size.
std::size_t GetFailedAllocationSize()
{
    return 0;
}

// Windows gives large pages only to users with a privilege.
void PreferLargePages(void *, std::size_t) {}

} // namespace quillmarsh::platform
