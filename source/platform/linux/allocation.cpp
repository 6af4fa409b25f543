#include "source/platform/allocation.h"

#include <cstdlib>
#include <new>

namespace quillmarsh::platform
{
namespace
{

thread_local std::size_t s_failedSize = 0;

} // namespace

std::size_t GetFailedAllocationSize()
{
    return s_failedSize;
}

} // namespace quillmarsh::platform

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QUILLMARSH_FOREIGN_ALLOCATOR
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QUILLMARSH_FOREIGN_ALLOCATOR
#endif

// The sanitizers bring allocation functions of their own.
#if !defined(QUILLMARSH_FOREIGN_ALLOCATOR)

namespace
{

/// Holds the size of a request that failed while the handler runs. The handler may allocate, and fail, itself.
class FailedSizeSentry
{
public:
    explicit FailedSizeSentry(std::size_t size) : saved_(quillmarsh::platform::s_failedSize)
    {
        quillmarsh::platform::s_failedSize = size;
    }
    ~FailedSizeSentry() { quillmarsh::platform::s_failedSize = saved_; }
    FailedSizeSentry(FailedSizeSentry const &) = delete;
    FailedSizeSentry &operator=(FailedSizeSentry const &) = delete;

private:
    std::size_t saved_;
};

} // namespace

// These two stand in for the standard library's in the whole process, and do the same but for the note of the size.
// What they give is freed by the standard library's `delete`; its other forms of `new` call these or do not fail here.

__attribute__((visibility("default"))) void *operator new(std::size_t size)
{
    for (;;)
    {
        if (void *const block = std::malloc(size == 0 ? 1 : size))
            return block;
        std::new_handler const handler = std::get_new_handler();
        if (handler == nullptr)
            throw std::bad_alloc();
        FailedSizeSentry const sentry(size);
        handler();
    }
}

__attribute__((visibility("default"))) void *operator new[](std::size_t size)
{
    return operator new(size);
}

#endif
