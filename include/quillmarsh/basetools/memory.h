// Failed allocations as exceptions, and a working buffer that adapts to its demand.
#ifndef QUILLMARSH_BASETOOLS_MEMORY_H
#define QUILLMARSH_BASETOOLS_MEMORY_H

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/platform/types.h>

#include <new>

namespace quillmarsh
{

/// While it lives, an allocation that fails throws a NoMemoryException. A host has one around its whole run.
///
/// Sentries may nest; they are made and destroyed on the main thread, and serve the allocations of all threads.
///
/// The exception names the number of bytes. For that the library brings `operator new` and `operator new[]`, plain and
/// with an alignment, on Linux: a program that links the library allocates by them, `malloc` and `posix_memalign`
/// underneath, in all its modules. A program that defines these operators itself keeps its own, and the message then
/// says "an unknown number of bytes"; so it does on Windows and under a sanitizer that brings its own.
class QUILLMARSH_API NewThrowsExceptionSentry : NoCopy
{
public:
    NewThrowsExceptionSentry();
    /// Puts the previous handler back. Fails a verification when somebody has put another handler in the place of ours.
    ~NewThrowsExceptionSentry();

    /// Throws a NoMemoryException that names the size.
    [[noreturn]] static int NewHandler(unsigned int size);

private:
    std::new_handler previousHandler_;
};

/// Capacity of a working buffer that grows at once, and shrinks only after a run of equal demands.
///
/// It lives by cycles, say frames: BeginReserveCycle, any number of ReserveSpace, EndReserveCycle. A demand at or below
/// the minimum size never shrinks the buffer: after a spike it keeps the size of the spike until a demand above the
/// minimum settles. A derived class holds the storage, asserts "Buffer-index out of range." when an element at or
/// behind its size is reached, and frees in its destructor. One thread at a time.
class QUILLMARSH_API AdaptiveBufferBase
{
public:
    AdaptiveBufferBase();
    /// Copies the numbers; the storage is the derived class's matter, and never shared.
    AdaptiveBufferBase(AdaptiveBufferBase const &);
    AdaptiveBufferBase &operator=(AdaptiveBufferBase const &);
    virtual ~AdaptiveBufferBase();

    unsigned int GetMinSize() const { return minSize_; }
    /// The capacity that is now reserved.
    unsigned int GetSize() const { return size_; }

    /// Grows the buffer at once if it is smaller.
    void SetMinSize(unsigned int size);
    /// How many cycles in a row have to have the same demand as the one before before the buffer shrinks to it.
    void SetMinStableCycles(unsigned int numCycles);
    /// Makes the buffer as large as the minimum at once.
    void ForceMinSize();

    /// Begins a cycle, a frame as a rule: the demand starts at 0.
    void BeginReserveCycle();
    /// Makes sure that the buffer has at least this size. When it has to grow, its content is lost.
    void ReserveSpace(unsigned int size);
    /// Ends a cycle; shrinks to its demand when that has been the same for long enough.
    void EndReserveCycle();

protected:
    /// Allocates storage of a size that is not 0; there is none at that time.
    virtual void AllocateBuffer(unsigned int size) = 0;
    /// Frees the storage, if there is any.
    virtual void FreeBuffer() = 0;

private:
    void DoReserve(unsigned int size);

    unsigned int minSize_ = 0;
    unsigned int minStableCycles_ = 0;
    unsigned int size_ = 0;
    unsigned int stableCycles_ = 0;
    unsigned int lastDemand_ = 0;
    unsigned int demand_ = 0;
};

} // namespace quillmarsh

#endif
