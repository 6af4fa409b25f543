// Base of objects that can tell whether they were made with new.
#ifndef QUILLMARSH_BASETOOLS_HEAPTRACKED_H
#define QUILLMARSH_BASETOOLS_HEAPTRACKED_H

#include <quillmarsh/platform/types.h>

#include <cstddef>

namespace quillmarsh
{

/// Knows whether its object was made with `new`.
///
/// The addresses are kept for the process and not locked: `new` and `delete` of heap-tracked classes belong to one
/// thread at a time. Arrays of such classes are refused.
class QUILLMARSH_API HeapTracked
{
public:
    HeapTracked();
    HeapTracked(HeapTracked const &);
    HeapTracked &operator=(HeapTracked const &);
    virtual ~HeapTracked();

    /// Asked through whatever base, it is the whole object that counts.
    bool IsOnHeap() const;

    /// @name Allocation
    /// The forms for arrays assert; `new[]` gives null.
    /// @{
    static void *operator new(std::size_t size);
    static void operator delete(void *object);
    static void *operator new[](std::size_t size) noexcept;
    static void operator delete[](void *objects);
    /// @}
};

} // namespace quillmarsh

#endif
