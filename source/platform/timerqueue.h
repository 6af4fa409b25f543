// Seam: timers that call back on the threads of a pool.
#ifndef QUILLMARSH_SOURCE_PLATFORM_TIMERQUEUE_H
#define QUILLMARSH_SOURCE_PLATFORM_TIMERQUEUE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// Hint that a callback can take long: it does not wait for a pool thread, nor others for it.
constexpr unsigned int s_timerExecuteLongFunction = 16;

using QueueTimerCallback = void (*)(void *argument);

/// Starts a timer on the default queue, a period of 0 making it fire once. Null on failure. Calls of one timer do not
/// overlap: periods that go by meanwhile become one call.
HANDLE CreateQueueTimer(QueueTimerCallback callback, void *argument, unsigned int delayMilliseconds,
                        unsigned int periodMilliseconds, unsigned int flags);

/// Deletes a timer, also one that has fired. No call begins after it; with `wait` it returns when a call under way has
/// ended, unless it comes from within that call.
void DeleteQueueTimer(HANDLE timer, bool wait);

} // namespace quillmarsh::platform

#endif
