// A thread that is told to stop, and stops by itself.
#ifndef QUILLMARSH_BASETOOLS_THREAD_H
#define QUILLMARSH_BASETOOLS_THREAD_H

#include <quillmarsh/basetools/syncprimitives.h>

#include <atomic>

namespace quillmarsh
{

/// A thread of execution, whose work a derived class brings.
///
/// One controlling thread calls the public operations. The derived class looks whether it should go on, by
/// QueryContinue() or IsExitSignaled(), and must be stopped (SignalExit(), WaitExit()) before it is destroyed:
/// \code
/// class Sampler : public Thread
/// {
///     unsigned int DoWork() override
///     {
///         SignalReady();
///         while (QueryContinue())
///             Sample();
///         return 0;
///     }
/// };
/// \endcode
class QUILLMARSH_API Thread : NoCopy
{
public:
    Thread();
    /// Verifies that the thread does not run: "Destroying thread-object while thread is still executing: ThreadID = ".
    virtual ~Thread();

    /// Starts the thread. Verifies "Thread is already running."; throws SystemResourceException when an event or the
    /// thread cannot be had. The priority is applied when the thread has already started.
    void Run();
    /// From Run() until the work has ended.
    bool IsRunning() const { return handle_.load() != nullptr; }

    /// @name State
    /// @{

    /// The system's handle of a running thread, null otherwise.
    HANDLE GetThreadHandle() const { return handle_.load(); }
    /// The system's number of a running thread, 0 otherwise.
    unsigned int GetThreadID() const { return threadID_.load(); }
    int GetPriority() const { return priority_; }
    bool IsEnabledPriorityBoost() const { return priorityBoostEnabled_; }
    /// Result of the work that ended last.
    unsigned int GetLastExitCode() const { return lastExitCode_.load(); }
    /// Signalled by SignalExit().
    Event &GetExitEvent() { return exitEvent_; }
    /// Signalled by the thread's own SignalReady().
    Event &GetReadyEvent() { return readyEvent_; }

    /// @}
    /// @name Scheduling
    /// Applied at once when the thread runs, and else by Run(). What the system makes of it is stored back.
    /// @{

    /// -15 idle, -2 to 2 around the normal 0, 15 time-critical.
    void SetPriority(int priority);
    /// Whether the system may raise the priority for a while when a wait ends.
    void EnablePriorityBoost(bool enable);

    /// @}
    /// @name Stopping and waiting
    /// @{

    /// Asks a running thread to end: clears what QueryContinue() gives, then signals the exit event.
    void SignalExit();
    /// Waits without limit until the thread has ended. With `closeHandle` the handle is closed, and otherwise can be
    /// waited for again. Does nothing on a thread that was never started.
    void WaitExit(bool closeHandle = true);
    /// Waits without limit for SignalReady().
    void WaitReady();

    /// Stops the thread where it stands; calls nest with Resume(). Verifies "Thread is not running.". True on success.
    /// The thread keeps what it holds: locks of the memory allocator too.
    bool Suspend();
    /// Takes one Suspend() back. Verifies "Thread is not running.". True on success.
    bool Resume();

    /// @}
    /// @name Messages
    /// To the message queue of the thread, which it has from its first look at it (see RunStandardMessageLoop()).
    /// @{

    /// False when the thread does not run, has no queue, or its queue is full.
    bool PostStandardMessage(unsigned int message, unsigned int wParam, long lParam);
    /// Posts message 0, which nobody minds.
    bool PostStandardNullMessage();
    /// Posts message 18, which ends a message loop.
    bool PostStandardQuitMessage();
    /// Posts null messages until one arrives, `sleepMilliseconds` apart. False when the thread does not run, or after
    /// `retries` tries, 0 being without limit.
    bool WaitMessageQueueReady(unsigned int retries, unsigned int sleepMilliseconds);

    /// @}

protected:
    /// The work, on the new thread. An exception that leaves it ends the program.
    virtual unsigned int DoWork() = 0;

    /// @name For the work, on its own thread
    /// @{

    /// False once SignalExit() was called.
    bool QueryContinue() const { return continue_.load(std::memory_order_acquire); }
    /// Whether the exit event is signalled, which takes the signal. Does not wait.
    bool IsExitSignaled();
    /// Waits without limit for SignalExit().
    void WaitExitSignal();
    /// Lets WaitReady() return.
    void SignalReady();

    /// @}

private:
    static unsigned int WorkFunctionMapper(void *object);

    // What the world sees; the work's end clears handle and number.
    std::atomic<HANDLE> handle_{nullptr};
    std::atomic<unsigned int> threadID_{0};
    int priority_ = 0;
    bool priorityBoostEnabled_ = true;
    std::atomic<unsigned int> lastExitCode_{0};
    Event exitEvent_;
    Event readyEvent_;
    std::atomic<bool> continue_{false};

    // The controlling thread's own: it stays good for waiting after the work has ended.
    HANDLE ownedHandle_ = nullptr;
    // Keeps the work from ending before Run() has stored the handle.
    std::atomic<bool> isHandleStored_{false};

    void CloseOwnedHandle();
};

} // namespace quillmarsh

#endif
