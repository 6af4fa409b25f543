// Values that each thread has of its own, deleted when the thread ends.
#ifndef QUILLMARSH_SOURCE_PLATFORM_THREADVALUE_H
#define QUILLMARSH_SOURCE_PLATFORM_THREADVALUE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// Base of a value in a ThreadValueSlot.
class ThreadValue : NoCopy
{
public:
    ThreadValue() = default;
    virtual ~ThreadValue() = default;
};

/// Holds one value for each thread, and deletes it when the thread ends. Any thread.
///
/// A `thread_local` object with a destructor does not do this on Windows: the compiler's run-time library frees the
/// memory of the object before it calls the destructor. A slot is made once and never destroyed, so that it also serves
/// threads that end late.
class ThreadValueSlot : NoCopy
{
public:
    /// Throws `std::bad_alloc` when the system has no more slots.
    ThreadValueSlot();

    /// Value of the calling thread; null at first.
    ThreadValue *Get() const;
    /// Stores the value of the calling thread, which has none yet. Throws `std::bad_alloc`.
    void Set(AutoPtr<ThreadValue> value);

private:
    unsigned long key_ = 0;
};

} // namespace quillmarsh::platform

#endif
