// Equal jobs on several threads.
#ifndef QUILLMARSH_BASETOOLS_PARALLELJOBS_H
#define QUILLMARSH_BASETOOLS_PARALLELJOBS_H

#include <quillmarsh/platform/types.h>

#include <cstddef>
#include <functional>

namespace quillmarsh
{

/// Returns the number of threads that this program can run at the same time, at least 1.
QUILLMARSH_API unsigned int GetNumParallelThreads();

/// Calls `work` for each index from 0 to `count` - 1, in this order as far as threads begin, on up to `numThreads`
/// threads of which the calling one is the first. Returns when all calls have returned. An exception ends no other
/// call; that of the smallest index is thrown at the end. Starts no thread for a single job or thread, and goes on with
/// fewer threads when the system has no more. Any thread.
QUILLMARSH_API void RunInParallel(unsigned int numThreads, std::size_t count,
                                  std::function<void(std::size_t index)> const &work);

} // namespace quillmarsh

#endif
