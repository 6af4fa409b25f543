// Objects behind handles.
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
    /// Called when the handle is closed.
    virtual void Close() { delete this; }
};

inline HANDLE MakeHandle(WaitableObject *object)
{
    return object;
}

/// Returns the object of a handle; null when it has another type.
template<typename T>
T *GetObjectOf(HANDLE handle)
{
    return dynamic_cast<T *>(static_cast<WaitableObject *>(handle));
}

/// Delays a suspension of the calling thread while it holds a lock, because the suspending thread may need that lock.
class SuspensionDeferral : NoCopy
{
public:
    SuspensionDeferral();
    ~SuspensionDeferral();
};

} // namespace quillmarsh::platform

#endif
