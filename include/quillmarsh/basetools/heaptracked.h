// Base of objects that can tell whether they were made with new.
#ifndef QUILLMARSH_BASETOOLS_HEAPTRACKED_H
#define QUILLMARSH_BASETOOLS_HEAPTRACKED_H

#include <quillmarsh/platform/types.h>

#include <cstddef>

namespace quillmarsh
{

/// Knows whether its object was made with `new`.
///
/// One set of addresses serves the whole process, under a lock: any thread may make, ask and delete objects. Arrays of
/// such classes are refused.
class QUILLMARSH_API HeapTracked
{
public:
    /// @name Life
    /// The class has no data. A copy is on the heap or not, whatever its original is.
    /// @{
    HeapTracked();
    HeapTracked(HeapTracked const &);
    HeapTracked &operator=(HeapTracked const &);
    virtual ~HeapTracked();
    /// @}

    /// True when the whole object was made with `new`, through whichever of its bases it is asked.
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
