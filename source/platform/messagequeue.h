// Seam: the message queues of threads, and window timers, whose messages arrive there.
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

/// Appends a message to a thread's queue. False when it has none, which it has from its first look at it until it ends,
/// and when the queue is full.
bool PostMessageToThread(unsigned int threadId, ThreadMessage const &message);

/// Looks for the next message of the calling thread without waiting, and takes it with `remove`. Posted messages come
/// in their order, and a timer's message when nothing else is there, one for any number of periods that went by. On the
/// desktop's thread, events of windows are told meanwhile, or when their message is dispatched.
bool PeekThreadMessage(ThreadMessage &message, bool remove);
/// Waits until the queue of the calling thread holds a message, or until there are events of its windows.
void WaitThreadMessage();
/// Brings a message to its window or its timer.
void DispatchThreadMessage(ThreadMessage const &message);

/// The object that a timer stands for is its number.
using WindowTimerCallback = void (*)(void *object);

/// Starts a timer that posts timer messages to the calling thread, the window's own; dispatching one calls the callback.
/// The same window and object again set it anew. Returns its number, or 0 on failure.
std::uintptr_t SetWindowTimer(HWND window, void *object, unsigned int periodMilliseconds, WindowTimerCallback callback);
/// Stops it. No callback comes after, also when its message has been taken already.
bool KillWindowTimer(HWND window, void *object);

} // namespace quillmarsh::platform

#endif
