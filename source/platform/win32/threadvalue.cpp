#include "source/platform/threadvalue.h"

#include "source/platform/win32/windows.h"

#include <new>

namespace quillmarsh::platform
{
namespace
{

void WINAPI DeleteValue(void *value)
{
    delete static_cast<ThreadValue *>(value);
}

} // namespace

ThreadValueSlot::ThreadValueSlot() : key_(FlsAlloc(&DeleteValue))
{
    if (key_ == FLS_OUT_OF_INDEXES)
        throw std::bad_alloc();
}

ThreadValue *ThreadValueSlot::Get() const
{
    return static_cast<ThreadValue *>(FlsGetValue(key_));
}

void ThreadValueSlot::Set(AutoPtr<ThreadValue> value)
{
    if (!FlsSetValue(key_, value.get()))
        throw std::bad_alloc();
    static_cast<void>(value.release());
}

} // namespace quillmarsh::platform
