// Seam: the message queues of threads, and window timers, which post their messages there.
#ifndef QUILLMARSH_SOURCE_PLATFORM_MESSAGEQUEUE_H
#define QUILLMARSH_SOURCE_PLATFORM_MESSAGEQUEUE_H

#include <quillmarsh/platform/types.h>

#include <cstdint>

namespace quillmarsh::platform
{

constexpr unsigned int s_messageNull = 0;
constexpr unsigned int s_messageQuit = 18;
constexpr unsigned int s_messageTimer = 0x113;

struct ThreadMessage
{
    HWND window = nullptr;
    unsigned int message = s_messageNull;
    std::uintptr_t wParam = 0;
    std::intptr_t lParam = 0;
};

/// Gives the calling thread a message queue, if it has none.
void MakeThreadMessageQueue();
/// Appends a message to a thread's queue. Returns false when the queue is full, and when the thread has none: a thread
/// has a queue from MakeThreadMessageQueue() or its first look for a message until it ends.
bool PostMessageToThread(unsigned int threadId, ThreadMessage const &message);

/// Looks for the next message of the calling thread without waiting, and removes it with `remove`. Posted messages come
/// first, in their order. A timer's message comes when there is no other, and only once for all the periods that have
/// passed. On the desktop's thread, window events are sent during the call, or when their message is dispatched.
bool PeekThreadMessage(ThreadMessage &message, bool remove);
/// Waits until the calling thread has a message in its queue, or an event of one of its windows.
void WaitThreadMessage();
/// Passes a message to its window or its timer.
void DispatchThreadMessage(ThreadMessage const &message);

/// Called with the object that the timer was set with.
using WindowTimerCallback = void (*)(void *object);

/// Starts a timer that posts timer messages to the calling thread, which must be the window's own; dispatching such a
/// message calls the callback. Setting a timer again for the same window and object replaces it. Returns the number of
/// the timer, or 0 on failure.
std::uintptr_t SetWindowTimer(HWND window, void *object, unsigned int periodMilliseconds, WindowTimerCallback callback);
/// Stops a timer. Its callback is not called any more, even when its message has already been taken.
bool KillWindowTimer(HWND window, void *object);

} // namespace quillmarsh::platform

#endif
