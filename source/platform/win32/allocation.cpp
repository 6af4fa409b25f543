#include "source/platform/allocation.h"

namespace quillmarsh::platform
{

// An allocation function in a module serves that module only here, so the size is not ours to see.
std::size_t GetFailedAllocationSize()
{
    return 0;
}

} // namespace quillmarsh::platform
