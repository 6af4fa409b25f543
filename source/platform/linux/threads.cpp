#include "source/platform/linux/futex.h"
#include "source/platform/linux/waitableobject.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <mutex>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <thread>

namespace quillmarsh::platform
{
namespace
{

/// Nice value of a priority level, relative to the process.
struct PriorityLevel
{
    int level;
    int nice;
};

constexpr PriorityLevel s_levels[] = {{-15, 19}, {-2, 10}, {-1, 5}, {0, 0}, {1, -5}, {2, -10}, {15, -20}};

constexpr std::uint32_t s_maxSuspendCount = 127;
/// Longest wait for a thread to be suspended. A thread that blocks signals, or is in the kernel, may be suspended
/// later.
constexpr unsigned int s_parkTimeoutMs = 1000;

int GetProcessNice()
{
    static int const s_nice = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
    return s_nice;
}

int MakeNice(PriorityLevel const &level)
{
    return std::clamp(GetProcessNice() + level.nice, -20, 19);
}

PriorityLevel const *FindLevel(int level)
{
    auto const found = std::find_if(std::begin(s_levels), std::end(s_levels),
                                    [level](PriorityLevel const &each) { return each.level == level; });
    return found == std::end(s_levels) ? nullptr : found;
}

int GetNice(unsigned int thread)
{
    return getpriority(PRIO_PROCESS, thread);
}

/// Sets the priority of a running thread. Returns false for an unknown level, and when the system refuses.
bool ApplyLevel(unsigned int thread, int level)
{
    PriorityLevel const *const wanted = FindLevel(level);
    if (!wanted)
        return false;
    int const nice = MakeNice(*wanted);
    return GetNice(thread) == nice || setpriority(PRIO_PROCESS, thread, nice) == 0;
}

class ThreadObject;

// The data of its thread that the signal handler needs.
constinit thread_local std::atomic<ThreadObject *> t_thread{nullptr};
constinit thread_local std::atomic<int> t_numDeferrals{0};

/// A thread, while it runs or has a handle.
///
/// A signal suspends a thread: its handler waits until the thread's suspend count is 0. The handler uses only lock-free
/// operations and system calls.
class ThreadObject : public WaitableObject
{
public:
    ThreadObject(ThreadFunction function, void *argument) : function_(function), argument_(argument) {}

    bool Start()
    {
        GetSuspendSignal();
        GetProcessNice();
        numOwners_ = 2;
        if (pthread_create(&thread_, nullptr, &Entry, this) != 0)
            return false;
        while (number_ == 0)
            WaitForChange(number_, 0, nullptr);
        return true;
    }

    unsigned int GetNumber() const { return number_; }

    eWaitResult Wait(unsigned int milliseconds) override
    {
        bool const isEndless = milliseconds == s_waitInfinite;
        timespec const deadline = isEndless ? timespec{} : MakeDeadline(milliseconds);
        while (isDone_ == 0)
        {
            if (!WaitForChange(isDone_, 0, isEndless ? nullptr : &deadline) && isDone_ == 0)
                return eWaitResult::e_timedOut;
        }
        Join();
        return eWaitResult::e_signaled;
    }

    void Close() override
    {
        {
            SuspensionDeferral const deferral;
            std::lock_guard const lock(mutex_);
            if (!isJoined_)
                pthread_detach(thread_);
            isJoined_ = true;
        }
        GiveBack();
    }

    bool SetPriority(int level)
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        bool const isSet = !hasEnded_ && ApplyLevel(number_, level);
        if (isSet)
            level_ = level;
        return isSet;
    }

    int GetPriority()
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        if (hasEnded_)
            return level_;
        // Returns the level that was set last, unless the nice value was changed from outside.
        int const nice = GetNice(number_);
        auto const distance = [this, nice](PriorityLevel const &each)
        { return 2 * std::abs(MakeNice(each) - nice) + (each.level == level_ ? 0 : 1); };
        return std::min_element(std::begin(s_levels), std::end(s_levels),
                                [&](auto const &a, auto const &b) { return distance(a) < distance(b); })
            ->level;
    }

    // Linux has no such boost: the setting is stored and has no effect.
    void DisableBoost(bool disable) { isBoostDisabled_ = disable; }
    bool IsBoostDisabled() const { return isBoostDisabled_; }

    bool Suspend()
    {
        {
            SuspensionDeferral const deferral;
            std::lock_guard const lock(mutex_);
            if (hasEnded_ || suspendCount_ >= s_maxSuspendCount)
                return false;
            ++suspendCount_;
            pthread_kill(thread_, GetSuspendSignal());
        }
        timespec const deadline = MakeDeadline(s_parkTimeoutMs);
        while (isParked_ == 0 && suspendCount_ != 0 && WaitForChange(isParked_, 0, &deadline))
            ;
        return true;
    }

    bool Resume()
    {
        std::uint32_t count = suspendCount_;
        while (count > 0 && !suspendCount_.compare_exchange_weak(count, count - 1))
            ;
        NotifyChange(suspendCount_);
        return true;
    }

    /// Waits until the thread is resumed. Called on the thread itself, by the signal handler or when a deferral ends.
    void Park()
    {
        while (std::uint32_t const count = suspendCount_)
        {
            isParked_ = 1;
            NotifyChange(isParked_);
            WaitForChange(suspendCount_, count, nullptr);
        }
        isParked_ = 0;
    }

private:
    static int GetSuspendSignal();

    static void *Entry(void *object)
    {
        static_cast<ThreadObject *>(object)->Execute();
        return nullptr;
    }

    void Execute()
    {
        t_thread = this;
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, GetSuspendSignal());
        pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);

        number_ = GetCurrentThreadNumber();
        NotifyChange(number_);
        function_(argument_);

        {
            SuspensionDeferral const deferral;
            std::lock_guard const lock(mutex_);
            hasEnded_ = true;
        }
        t_thread = nullptr;
        isDone_ = 1;
        NotifyChange(isDone_);
        GiveBack();
    }

    void Join()
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        if (!isJoined_)
            pthread_join(thread_, nullptr);
        isJoined_ = true;
    }

    void GiveBack()
    {
        if (--numOwners_ == 0)
            delete this;
    }

    ThreadFunction function_;
    void *argument_;
    pthread_t thread_{};
    std::atomic<int> numOwners_{0};
    FutexWord number_{0};
    FutexWord isDone_{0};
    FutexWord suspendCount_{0};
    FutexWord isParked_{0};

    // Guards the members below, and keeps the thread from ending while its number or its pthread_t is in use.
    std::mutex mutex_;
    bool hasEnded_ = false;
    bool isJoined_ = false;
    int level_ = 0;
    std::atomic<bool> isBoostDisabled_{false};
};

void ParkCallingThread()
{
    ThreadObject *const thread = t_thread;
    if (thread && t_numDeferrals == 0)
        thread->Park();
}

void OnSuspendSignal(int)
{
    int const error = errno;
    ParkCallingThread();
    errno = error;
}

/// Installs the handler on an unused real-time signal; returns its number.
int InstallSuspendSignal()
{
    int number = SIGRTMIN + 5;
    for (int each = number; each < SIGRTMAX; ++each)
    {
        struct sigaction present = {};
        if (sigaction(each, nullptr, &present) != 0 || present.sa_handler != SIG_DFL)
            continue;
        number = each;
        break;
    }
    struct sigaction action = {};
    action.sa_handler = &OnSuspendSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
    return number;
}

int ThreadObject::GetSuspendSignal()
{
    static int const s_signal = InstallSuspendSignal();
    return s_signal;
}

} // namespace

SuspensionDeferral::SuspensionDeferral()
{
    ++t_numDeferrals;
}

SuspensionDeferral::~SuspensionDeferral()
{
    --t_numDeferrals;
    ParkCallingThread();
}

HANDLE StartThread(ThreadFunction function, void *argument, unsigned int &threadId)
{
    auto *const thread = new ThreadObject(function, argument);
    if (!thread->Start())
    {
        delete thread;
        return nullptr;
    }
    threadId = thread->GetNumber();
    return MakeHandle(thread);
}

unsigned int GetCurrentThreadNumber()
{
    return static_cast<unsigned int>(gettid());
}

void SleepMilliseconds(unsigned int milliseconds)
{
    if (milliseconds == 0)
        std::this_thread::yield();
    else
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void BeginPreciseSleep()
{
    // Nanoseconds by which the kernel may delay a wake-up.
    prctl(PR_SET_TIMERSLACK, 1UL);
}

void EndPreciseSleep()
{
    prctl(PR_SET_TIMERSLACK, 0UL);
}

bool SetThreadPriorityLevel(HANDLE thread, int level)
{
    auto *const object = GetObjectOf<ThreadObject>(thread);
    return object && object->SetPriority(level);
}

int GetThreadPriorityLevel(HANDLE thread)
{
    auto *const object = GetObjectOf<ThreadObject>(thread);
    return object ? object->GetPriority() : 0;
}

bool SetCurrentThreadPriority(int level)
{
    return ApplyLevel(GetCurrentThreadNumber(), level);
}

bool DisableThreadPriorityBoost(HANDLE thread, bool disable)
{
    auto *const object = GetObjectOf<ThreadObject>(thread);
    if (object)
        object->DisableBoost(disable);
    return object != nullptr;
}

bool IsThreadPriorityBoostDisabled(HANDLE thread)
{
    auto *const object = GetObjectOf<ThreadObject>(thread);
    return object && object->IsBoostDisabled();
}

bool SuspendThreadObject(HANDLE thread)
{
    auto *const object = GetObjectOf<ThreadObject>(thread);
    return object && object->Suspend();
}

bool ResumeThreadObject(HANDLE thread)
{
    auto *const object = GetObjectOf<ThreadObject>(thread);
    return object && object->Resume();
}

} // namespace quillmarsh::platform
