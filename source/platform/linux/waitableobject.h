// What stands behind a handle.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_WAITABLEOBJECT_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_WAITABLEOBJECT_H

#include "source/platform/threads.h"

namespace quillmarsh::platform
{

class WaitableObject : NoCopy
{
public:
    virtual ~WaitableObject() = default;

    virtual eWaitResult Wait(unsigned int milliseconds) = 0;
    /// The handle is not used any more.
    virtual void Close() { delete this; }
};

inline HANDLE MakeHandle(WaitableObject *object)
{
    return object;
}

/// The object of a handle, null when it is of another kind.
template<typename T>
T *GetObjectOf(HANDLE handle)
{
    return dynamic_cast<T *>(static_cast<WaitableObject *>(handle));
}

/// Puts off that the calling thread is suspended while it holds a lock that the thread which suspends it may need.
class SuspensionDeferral : NoCopy
{
public:
    SuspensionDeferral();
    ~SuspensionDeferral();
};

} // namespace quillmarsh::platform

#endif
