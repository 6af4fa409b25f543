#include "source/platform/allocation.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <sys/mman.h>

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

void PreferLargePages(void *block, std::size_t byteSize)
{
    // Only whole large pages, so that neighbours of the block keep theirs.
    constexpr std::uintptr_t largePage = 1 << 21;
    auto const begin = reinterpret_cast<std::uintptr_t>(block);
    std::uintptr_t const first = (begin + largePage - 1) / largePage * largePage;
    std::uintptr_t const last = (begin + byteSize) / largePage * largePage;
    if (first < last)
        madvise(reinterpret_cast<void *>(first), last - first, MADV_HUGEPAGE);
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

// The sanitizers have allocation functions of their own.
#if !defined(QUILLMARSH_FOREIGN_ALLOCATOR)

namespace
{

/// Records the size of a failed request while the handler runs. The handler may allocate as well, and fail.
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

/// Calls `allocate` until it returns memory, and the new-handler after each failure.
template<typename Allocate>
void *AllocateOrThrow(std::size_t size, Allocate const &allocate)
{
    for (;;)
    {
        if (void *const block = allocate())
            return block;
        std::new_handler const handler = std::get_new_handler();
        if (handler == nullptr)
            throw std::bad_alloc();
        FailedSizeSentry const sentry(size);
        handler();
    }
}

} // namespace

// These operators replace those of the standard library in the whole process, and also record the size. The standard
// library's `delete` frees their memory; its other forms of `new` call them.

__attribute__((visibility("default"))) void *operator new(std::size_t size)
{
    return AllocateOrThrow(size, [size] { return std::malloc(size == 0 ? 1 : size); });
}

__attribute__((visibility("default"))) void *operator new[](std::size_t size)
{
    return operator new(size);
}

__attribute__((visibility("default"))) void *operator new(std::size_t size, std::align_val_t alignment)
{
    std::size_t const boundary = std::max(static_cast<std::size_t>(alignment), sizeof(void *));
    return AllocateOrThrow(size,
                           [size, boundary]() -> void *
                           {
                               void *block = nullptr;
                               return posix_memalign(&block, boundary, size == 0 ? 1 : size) == 0 ? block : nullptr;
                           });
}

__attribute__((visibility("default"))) void *operator new[](std::size_t size, std::align_val_t alignment)
{
    return operator new(size, alignment);
}

#endif
