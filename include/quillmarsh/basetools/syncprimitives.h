// Critical sections, events, and the guard of a single instance.
#ifndef QUILLMARSH_BASETOOLS_SYNCPRIMITIVES_H
#define QUILLMARSH_BASETOOLS_SYNCPRIMITIVES_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Mutual exclusion between the threads of one process. Any thread; its owner may enter again, and leaves as often.
class QUILLMARSH_API CriticalSection : NoCopy
{
public:
    CriticalSection();
    ~CriticalSection();

    /// Waits until no other thread is inside.
    void Enter();
    /// Enters when no other thread is inside; false otherwise.
    bool TryEnter();
    /// Leaves; only for the thread that is inside.
    void Leave();

private:
    /// Room for the system's own record.
    alignas(void *) unsigned char section_[48];
};

/// Stays in a critical section for the length of a scope.
class CriticalSectionSentry : NoCopy
{
public:
    explicit CriticalSectionSentry(CriticalSection &criticalSection) : criticalSection_(criticalSection)
    {
        criticalSection_.Enter();
    }
    ~CriticalSectionSentry() { criticalSection_.Leave(); }

private:
    CriticalSection &criticalSection_;
};

/// Stays in a critical section for the length of a scope if no other thread is inside at its begin.
class CriticalSectionTrySentry : NoCopy
{
public:
    explicit CriticalSectionTrySentry(CriticalSection &criticalSection)
        : criticalSection_(criticalSection),
          isInside_(criticalSection.TryEnter())
    {
    }
    ~CriticalSectionTrySentry()
    {
        if (isInside_)
            criticalSection_.Leave();
    }

    /// True when the sentry holds the critical section.
    bool IsInside() const { return isInside_; }

private:
    CriticalSection &criticalSection_;
    bool isInside_;
};

/// A signal that threads wait for. Any thread.
///
/// With automatic reset a signal lets one waiting thread through and is gone; with manual reset it stays until Reset().
/// An event with a name is shared by everyone who makes one of that name, in this process and in others; the first
/// decides how it resets and whether it is signalled, and it is gone when the last of them is. A name that begins with
/// "Global\" is shared by all users, any other by the processes of one user.
class QUILLMARSH_API Event : NoCopy
{
public:
    /// An empty name makes an event of its own. With `forceKernelName` the name goes through ForceWinKernelName().
    /// Throws SystemResourceException, with "CreateEvent() failed.".
    explicit Event(bool initiallySignaled = false, bool manualReset = false, string const &name = string(),
                   bool forceKernelName = true);
    ~Event();

    /// The system's handle, good as long as the object.
    HANDLE GetHandle() const { return handle_; }
    /// The name as it was given to the system.
    string const &GetName() const { return name_; }

    /// Signals; true on success.
    bool Set();
    /// Takes the signal back; true on success.
    bool Reset();

    /// Waits without limit; true when signalled, false on failure.
    bool WaitInfinite();
    /// Waits for at most `milliseconds`. True on signal and on time-out, which alone sets `timedOut`; false on failure.
    bool Wait(unsigned int milliseconds, bool &timedOut);

private:
    HANDLE handle_;
    string name_;
};

/// Holds a flag that only one object at a time can hold, over all processes. Any thread.
///
/// The flag is free again when its holder is destroyed or its process ends in whatever way. Names are shared as those
/// of events, which live in the same name space.
class QUILLMARSH_API SingleInstanceFlagSentry : NoCopy
{
public:
    /// Tries to get the flag of this name; none with an empty one. With `forceKernelName` the name goes through
    /// ForceWinKernelName().
    explicit SingleInstanceFlagSentry(string const &name, bool forceKernelName = true);
    ~SingleInstanceFlagSentry();

    /// Whether this object holds the flag.
    bool IsAcquired() const { return handle_ != nullptr; }
    /// The name as it was given to the system.
    string const &GetName() const { return name_; }

private:
    HANDLE handle_ = nullptr;
    string name_;
};

/// Prepares a name for the system's name space of kernel objects: cut to 260 characters, and without a backslash but
/// for one of the prefixes "Local\", "Global\", "Session\"; other backslashes become "/".
QUILLMARSH_API void ForceWinKernelName(string &name);

} // namespace quillmarsh

#endif
