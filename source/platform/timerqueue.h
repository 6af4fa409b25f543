// Seam: timers that call a function on a thread of a pool.
#ifndef QUILLMARSH_SOURCE_PLATFORM_TIMERQUEUE_H
#define QUILLMARSH_SOURCE_PLATFORM_TIMERQUEUE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// Flag for a callback that can take long: it gets a thread of its own, so that other timers do not wait for it.
constexpr unsigned int s_timerExecuteLongFunction = 16;

using QueueTimerCallback = void (*)(void *argument);

/// Starts a timer on the default queue; with a period of 0 it fires once. Returns null on failure. Calls of one timer
/// never overlap: periods that pass during a call result in a single call after it.
HANDLE CreateQueueTimer(QueueTimerCallback callback, void *argument, unsigned int delayMilliseconds,
                        unsigned int periodMilliseconds, unsigned int flags);

/// Deletes a timer, even one that has fired. No call begins afterwards. With `wait`, it also waits for a call in
/// progress, unless it is called from that call.
void DeleteQueueTimer(HANDLE timer, bool wait);

} // namespace quillmarsh::platform

#endif
