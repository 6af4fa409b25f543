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
    /// Puts the previous handler back. Fails a verification when other code has replaced our handler meanwhile.
    ~NewThrowsExceptionSentry();

    /// Throws a NoMemoryException that names the size.
    [[noreturn]] static int NewHandler(unsigned int size);

private:
    std::new_handler previousHandler_;
};

/// Capacity of a working buffer that grows at once, and shrinks only after a run of equal demands.
///
/// It is used in cycles, usually frames: BeginReserveCycle(), any number of ReserveSpace(), EndReserveCycle(). A demand
/// at or below the minimum size never shrinks the buffer: after one large demand the buffer keeps that size until a
/// demand above the minimum stays the same. A derived class holds the storage, asserts "Buffer-index out of range." for
/// an index that is not below its size, and frees the storage in its destructor. One thread at a time.
class QUILLMARSH_API AdaptiveBufferBase
{
public:
    AdaptiveBufferBase();
    /// Copies the numbers. The derived class copies the storage, which is never shared.
    AdaptiveBufferBase(AdaptiveBufferBase const &);
    AdaptiveBufferBase &operator=(AdaptiveBufferBase const &);
    virtual ~AdaptiveBufferBase();

    /// Size that the buffer keeps at least; 0 at first.
    unsigned int GetMinSize() const { return minSize_; }
    /// Capacity that is reserved now.
    unsigned int GetSize() const { return size_; }

    /// Sets the minimum size, and grows the buffer at once if it is smaller.
    void SetMinSize(unsigned int size);
    /// Sets how many cycles in a row must repeat the demand of the cycle before them until the buffer shrinks to it.
    void SetMinStableCycles(unsigned int numCycles);
    /// Gives the buffer the minimum size at once. Its content is lost.
    void ForceMinSize();

    /// Begins a cycle, usually a frame: the demand starts at 0.
    void BeginReserveCycle();
    /// Makes sure that the buffer has at least this size. If it has to grow, its content is lost.
    void ReserveSpace(unsigned int size);
    /// Ends a cycle, and shrinks the buffer to its demand when that has been the same for long enough.
    void EndReserveCycle();

protected:
    /// Allocates storage of a size that is not 0. It is called while there is no storage.
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
