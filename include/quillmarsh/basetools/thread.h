// A thread that ends by itself when it is asked to.
#ifndef QUILLMARSH_BASETOOLS_THREAD_H
#define QUILLMARSH_BASETOOLS_THREAD_H

#include <quillmarsh/basetools/syncprimitives.h>

#include <atomic>
#include <mutex>

namespace quillmarsh
{

/// A thread of execution; a derived class supplies its work.
///
/// One controlling thread calls the public operations. The work asks QueryContinue() or IsExitSignaled() whether it is
/// to go on. The thread must be stopped, by SignalExit() and WaitExit(), before the object is destroyed:
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

    /// Starts the thread. Verifies "Thread is already running."; throws SystemResourceException when the system refuses
    /// an event or the thread. The priority is applied when the thread has already started.
    void Run();
    /// True from Run() until the work has ended.
    bool IsRunning() const { return handle_.load() != nullptr; }

    /// @name State
    /// @{

    /// The system's handle of a running thread, null otherwise.
    HANDLE GetThreadHandle() const { return handle_.load(); }
    /// The system's number of a running thread, 0 otherwise.
    unsigned int GetThreadID() const { return threadID_.load(); }
    /// Priority of the thread; 0 at first.
    int GetPriority() const { return priority_; }
    /// True when the system may raise the priority for a while; true at first.
    bool IsEnabledPriorityBoost() const { return priorityBoostEnabled_; }
    /// Result of DoWork() of the last run that ended.
    unsigned int GetLastExitCode() const { return lastExitCode_.load(); }
    /// Event that SignalExit() signals.
    Event &GetExitEvent() { return exitEvent_; }
    /// Event that SignalReady() signals on the thread itself.
    Event &GetReadyEvent() { return readyEvent_; }

    /// @}
    /// @name Scheduling
    /// A setting takes effect at once when the thread runs, and otherwise with Run(). The value that the system has
    /// chosen is stored.
    /// @{

    /// Sets the priority: -15 idle, -2 to 2 around the normal 0, 15 time-critical.
    void SetPriority(int priority);
    /// Sets whether the system may raise the priority for a while when a wait ends.
    void EnablePriorityBoost(bool enable);

    /// @}
    /// @name Stopping and waiting
    /// @{

    /// Asks a running thread to end: QueryContinue() is false from now on, and the exit event is signalled.
    void SignalExit();
    /// Waits without limit until the thread has ended. With `closeHandle` the handle is closed; without it the end can
    /// be waited for again. Does nothing for a thread that was never started.
    void WaitExit(bool closeHandle = true);
    /// Waits without limit until the thread calls SignalReady().
    void WaitReady();

    /// Halts the thread at once. Returns true on success. Verifies "Thread is not running.". Each call needs a
    /// Resume(). The halted thread keeps all locks that it holds, also those of the memory allocator.
    bool Suspend();
    /// Undoes one Suspend(). Returns true on success. Verifies "Thread is not running.".
    bool Resume();

    /// @}
    /// @name Messages
    /// These post to the message queue of the thread. The thread has a queue once it has asked for a message (see
    /// RunStandardMessageLoop()).
    /// @{

    /// Posts a message. Returns false when the thread does not run, has no queue, or its queue is full.
    bool PostStandardMessage(unsigned int message, unsigned int wParam, long lParam);
    /// Posts message 0, which has no effect.
    bool PostStandardNullMessage();
    /// Posts message 18, which ends a message loop.
    bool PostStandardQuitMessage();
    /// Posts null messages, `sleepMilliseconds` apart, until the queue takes one. Returns false when the thread does
    /// not run, or after `retries` tries; 0 means no limit.
    bool WaitMessageQueueReady(unsigned int retries, unsigned int sleepMilliseconds);

    /// @}

protected:
    /// The work. It runs on the new thread, and its result becomes the exit code. An exception that leaves it ends the
    /// program.
    virtual unsigned int DoWork() = 0;

    /// @name For the work, on its own thread
    /// @{

    /// False once SignalExit() was called.
    bool QueryContinue() const { return continue_.load(std::memory_order_acquire); }
    /// True when the exit event is signalled; removes the signal. Does not wait.
    bool IsExitSignaled();
    /// Waits without limit until SignalExit() is called.
    void WaitExitSignal();
    /// Signals the ready event, so that WaitReady() returns.
    void SignalReady();

    /// @}

private:
    static unsigned int WorkFunctionMapper(void *object);

    // What other threads see. The end of the work clears handle and number.
    std::atomic<HANDLE> handle_{nullptr};
    std::atomic<unsigned int> threadID_{0};
    int priority_ = 0;
    bool priorityBoostEnabled_ = true;
    std::atomic<unsigned int> lastExitCode_{0};
    Event exitEvent_;
    Event readyEvent_;
    std::atomic<bool> continue_{false};

    // Belongs to the controlling thread, which can wait for it after the work has ended.
    HANDLE ownedHandle_ = nullptr;
    // Held until Run() has stored the handle, so that the work does not end before that.
    std::mutex storesHandle_;

    void CloseOwnedHandle();
};

} // namespace quillmarsh

#endif
