#include "source/platform/threads.h"

#include <mutex>
#include <new>

namespace quillmarsh::platform
{
namespace
{

using Mutex = std::recursive_mutex;

Mutex &ToMutex(void *section)
{
    static_assert(sizeof(Mutex) <= s_criticalSectionSize && alignof(Mutex) <= alignof(void *));
    return *std::launder(static_cast<Mutex *>(section));
}

} // namespace

void MakeCriticalSection(void *section)
{
    new (section) Mutex;
}

void DestroyCriticalSection(void *section)
{
    ToMutex(section).~Mutex();
}

void EnterCriticalSection(void *section)
{
    ToMutex(section).lock();
}

bool TryEnterCriticalSection(void *section)
{
    return ToMutex(section).try_lock();
}

void LeaveCriticalSection(void *section)
{
    ToMutex(section).unlock();
}

} // namespace quillmarsh::platform
