#include <quillmarsh/basetools/heaptracked.h>

#include <quillmarsh/basetools/diagnostics.h>

#include <new>
#include <unordered_set>

namespace quillmarsh
{
namespace
{

/// Never destroyed: objects with a static life may be deleted after everything else.
std::unordered_set<void const *> &Blocks()
{
    static auto &s_blocks = *new std::unordered_set<void const *>;
    return s_blocks;
}

} // namespace

HeapTracked::HeapTracked() = default;
HeapTracked::HeapTracked(HeapTracked const &) = default;
HeapTracked &HeapTracked::operator=(HeapTracked const &) = default;
HeapTracked::~HeapTracked() = default;

bool HeapTracked::IsOnHeap() const
{
    return Blocks().count(dynamic_cast<void const *>(this)) != 0;
}

void *HeapTracked::operator new(std::size_t size)
{
    void *const block = ::operator new(size);
    try
    {
        Blocks().insert(block);
    }
    catch (...)
    {
        ::operator delete(block);
        throw;
    }
    return block;
}

void HeapTracked::operator delete(void *object)
{
    Blocks().erase(object);
    ::operator delete(object);
}

void *HeapTracked::operator new[](std::size_t) noexcept
{
    QUILLMARSH_ASSERT(false, "Invalid call: calling new[] for heap-tracked class.");
    return nullptr;
}

void HeapTracked::operator delete[](void *)
{
    QUILLMARSH_ASSERT(false, "Invalid call: calling delete[] for heap-tracked class.");
}

} // namespace quillmarsh
