// What the desktop asks of the message queues.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_MESSAGEQUEUE_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_MESSAGEQUEUE_H

#include "source/platform/messagequeue.h"

namespace quillmarsh::platform
{

/// Calls the timers of the calling thread that are due, and leaves its messages where they are.
void DispatchWindowTimers();

} // namespace quillmarsh::platform

#endif
