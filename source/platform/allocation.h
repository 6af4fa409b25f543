// What the library asks of the allocation of memory: the size of a failed request, which C++ does not pass to
// new-handlers, and large pages.
#ifndef QUILLMARSH_SOURCE_PLATFORM_ALLOCATION_H
#define QUILLMARSH_SOURCE_PLATFORM_ALLOCATION_H

#include <cstddef>

namespace quillmarsh::platform
{

/// Returns the size in bytes of the request for which the calling thread is running a new-handler. 0 when the request
/// came through an allocation function that is not the library's.
std::size_t GetFailedAllocationSize();

/// Asks the system for large pages behind a new block. Filling it then causes a fraction of the page faults, for which
/// the threads of a process wait for one another. Does nothing where the system gives none. Any thread.
void PreferLargePages(void *block, std::size_t byteSize);

} // namespace quillmarsh::platform

#endif
