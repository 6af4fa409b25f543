// Size of the allocation that failed, for a new-handler, which is not told.
#ifndef QUILLMARSH_SOURCE_PLATFORM_ALLOCATION_H
#define QUILLMARSH_SOURCE_PLATFORM_ALLOCATION_H

#include <cstddef>

namespace quillmarsh::platform
{

/// Size in bytes of the request for which the calling thread is in a new-handler now. 0 when that cannot be known: the
/// request came by an allocation function that is not ours.
std::size_t GetFailedAllocationSize();

} // namespace quillmarsh::platform

#endif
