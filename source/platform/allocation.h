// Size of the allocation that failed, for new-handlers: C++ does not pass it to them.
#ifndef QUILLMARSH_SOURCE_PLATFORM_ALLOCATION_H
#define QUILLMARSH_SOURCE_PLATFORM_ALLOCATION_H

#include <cstddef>

namespace quillmarsh::platform
{

/// Returns the size in bytes of the request for which the calling thread is running a new-handler. 0 when the request
/// came through an allocation function that is not the library's.
std::size_t GetFailedAllocationSize();

} // namespace quillmarsh::platform

#endif
