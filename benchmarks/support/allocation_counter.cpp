#include "benchmarks/support/allocation_counter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{

std::atomic<std::uint64_t> s_count{0};

void *Allocate(std::size_t size)
{
    s_count.fetch_add(1, std::memory_order_relaxed);
    if (void *const block = std::malloc(size == 0 ? 1 : size))
        return block;
    throw std::bad_alloc();
}

void *AllocateAligned(std::size_t size, std::align_val_t alignment)
{
    s_count.fetch_add(1, std::memory_order_relaxed);
    auto const step = static_cast<std::size_t>(alignment);
    if (void *const block = std::aligned_alloc(step, (size + step - 1) / step * step))
        return block;
    throw std::bad_alloc();
}

} // namespace

// A program's own operators replace those of its libraries, so they count the allocations of all of them.
void *operator new(std::size_t size)
{
    return Allocate(size);
}

void *operator new[](std::size_t size)
{
    return Allocate(size);
}

void *operator new(std::size_t size, std::align_val_t alignment)
{
    return AllocateAligned(size, alignment);
}

void *operator new[](std::size_t size, std::align_val_t alignment)
{
    return AllocateAligned(size, alignment);
}

void operator delete(void *block, std::align_val_t) noexcept
{
    std::free(block);
}

void operator delete[](void *block, std::align_val_t) noexcept
{
    std::free(block);
}

void operator delete(void *block) noexcept
{
    std::free(block);
}

void operator delete(void *block, std::size_t) noexcept
{
    std::free(block);
}

void operator delete[](void *block) noexcept
{
    std::free(block);
}

void operator delete[](void *block, std::size_t) noexcept
{
    std::free(block);
}

namespace quillmarsh::benchmarks
{

std::uint64_t GetAllocationCount()
{
    return s_count.load(std::memory_order_relaxed);
}

} // namespace quillmarsh::benchmarks
