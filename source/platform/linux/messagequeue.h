// The part of the message queues that the desktop uses.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_MESSAGEQUEUE_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_MESSAGEQUEUE_H

#include "source/platform/messagequeue.h"

namespace quillmarsh::platform
{

/// Calls the timers of the calling thread that are due. Posted messages stay in the queue.
void DispatchWindowTimers();

} // namespace quillmarsh::platform

#endif
