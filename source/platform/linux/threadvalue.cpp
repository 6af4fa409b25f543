#include "source/platform/threadvalue.h"

#include <new>

#include <pthread.h>

namespace quillmarsh::platform
{
namespace
{

void DeleteValue(void *value)
{
    delete static_cast<ThreadValue *>(value);
}

} // namespace

ThreadValueSlot::ThreadValueSlot()
{
    pthread_key_t key = 0;
    if (pthread_key_create(&key, &DeleteValue) != 0)
        throw std::bad_alloc();
    key_ = key;
}

ThreadValue *ThreadValueSlot::Get() const
{
    return static_cast<ThreadValue *>(pthread_getspecific(static_cast<pthread_key_t>(key_)));
}

void ThreadValueSlot::Set(AutoPtr<ThreadValue> value)
{
    if (pthread_setspecific(static_cast<pthread_key_t>(key_), value.get()) != 0)
        throw std::bad_alloc();
    static_cast<void>(value.release());
}

} // namespace quillmarsh::platform
