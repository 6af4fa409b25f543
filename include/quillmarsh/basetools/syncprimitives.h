// Critical sections, events, and the guard of a single instance.
#ifndef QUILLMARSH_BASETOOLS_SYNCPRIMITIVES_H
#define QUILLMARSH_BASETOOLS_SYNCPRIMITIVES_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Mutual exclusion between the threads of one process. Any thread. A thread that is inside may enter again, and leaves
/// as often as it has entered.
class QUILLMARSH_API CriticalSection : NoCopy
{
public:
    CriticalSection();
    ~CriticalSection();

    /// Waits until no other thread is inside.
    void Enter();
    /// Enters and returns true when no other thread is inside; returns false otherwise.
    bool TryEnter();
    /// Leaves. Only the thread that is inside may call it.
    void Leave();

private:
    /// Storage for the record of the system.
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
/// Objects with the same name share one event, in this process and in others. The first object decides how the event
/// resets and whether it is signalled; the event exists until the last object is destroyed. A name that begins with
/// "Global\" is shared by all users, any other name by the processes of one user.
class QUILLMARSH_API Event : NoCopy
{
public:
    /// Makes an event, or shares the one of that name; an empty name shares nothing. With `forceKernelName` the name
    /// goes through ForceWinKernelName(). Throws SystemResourceException, "CreateEvent() failed.".
    explicit Event(bool initiallySignaled = false, bool manualReset = false, string const &name = string(),
                   bool forceKernelName = true);
    ~Event();

    /// The system's handle; good as long as the object.
    HANDLE GetHandle() const { return handle_; }
    /// The name as it was given to the system.
    string const &GetName() const { return name_; }

    /// Signals the event. Returns true on success.
    bool Set();
    /// Removes the signal. Returns true on success.
    bool Reset();

    /// Waits without limit. Returns true when the event is signalled, false on failure.
    bool WaitInfinite();
    /// Waits for at most `milliseconds`. Returns true on a signal and on a time-out, and sets `timedOut` accordingly;
    /// false on failure.
    bool Wait(unsigned int milliseconds, bool &timedOut);

private:
    HANDLE handle_;
    string name_;
};

/// Holds a flag that only one object of all processes can hold at a time. Any thread.
///
/// The flag is free again when its holder is destroyed or the holder's process ends, in whatever way. Names are shared
/// like those of events; flags and events have one name space.
class QUILLMARSH_API SingleInstanceFlagSentry : NoCopy
{
public:
    /// Tries to take the flag of this name; an empty name takes none. With `forceKernelName` the name goes through
    /// ForceWinKernelName().
    explicit SingleInstanceFlagSentry(string const &name, bool forceKernelName = true);
    ~SingleInstanceFlagSentry();

    /// True when this object holds the flag.
    bool IsAcquired() const { return handle_ != nullptr; }
    /// The name as it was given to the system.
    string const &GetName() const { return name_; }

private:
    HANDLE handle_ = nullptr;
    string name_;
};

/// Makes a name fit for a named object of the system: cuts it to 260 characters, and replaces each backslash by "/",
/// except the one of a prefix "Local\", "Global\" or "Session\".
QUILLMARSH_API void ForceWinKernelName(string &name);

} // namespace quillmarsh

#endif
