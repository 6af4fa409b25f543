#include <quillmarsh/basetools/heaptracked.h>

#include <quillmarsh/basetools/diagnostics.h>

#include <mutex>
#include <new>
#include <unordered_set>

namespace quillmarsh
{
namespace
{

/// Addresses of the blocks that are in use.
class BlockSet : NoCopy
{
public:
    /// Never destroyed: objects with a static life may be deleted after everything else.
    static BlockSet &Instance()
    {
        static auto &s_instance = *new BlockSet;
        return s_instance;
    }

    void Add(void const *block)
    {
        std::scoped_lock const lock(lock_);
        blocks_.insert(block);
    }

    void Remove(void const *block)
    {
        std::scoped_lock const lock(lock_);
        blocks_.erase(block);
    }

    bool Contains(void const *block) const
    {
        std::scoped_lock const lock(lock_);
        return blocks_.contains(block);
    }

private:
    mutable std::mutex lock_;
    std::unordered_set<void const *> blocks_;
};

} // namespace

HeapTracked::HeapTracked() = default;
HeapTracked::HeapTracked(HeapTracked const &) = default;
HeapTracked &HeapTracked::operator=(HeapTracked const &) = default;
HeapTracked::~HeapTracked() = default;

bool HeapTracked::IsOnHeap() const
{
    return BlockSet::Instance().Contains(dynamic_cast<void const *>(this));
}

void *HeapTracked::operator new(std::size_t size)
{
    void *const block = ::operator new(size);
    try
    {
        BlockSet::Instance().Add(block);
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
    BlockSet::Instance().Remove(object);
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
