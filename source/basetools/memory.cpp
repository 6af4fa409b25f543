#include <quillmarsh/basetools/memory.h>

#include <quillmarsh/basetools/exception.h>

#include "source/platform/allocation.h"

#include <algorithm>

namespace quillmarsh
{
namespace
{

thread_local bool s_isHandling = false;

/// Throws for a request that failed. Its size may be unknown.
[[noreturn]] void ThrowNoMemory(std::size_t size, bool isSizeKnown)
{
    // Making the message allocates. If that fails too, the exception has no message.
    if (s_isHandling)
        throw NoMemoryException();

    struct HandlingSentry
    {
        HandlingSentry() { s_isHandling = true; }
        ~HandlingSentry() { s_isHandling = false; }
    } const sentry;
    string const amount = isSizeKnown ? std::to_string(size) : string("an unknown number of");
    QUILLMARSH_THROW(NoMemoryException, "Failed to allocate " + amount + " bytes");
}

void HandleFailedNew()
{
    std::size_t const size = platform::GetFailedAllocationSize();
    ThrowNoMemory(size, size != 0);
}

} // namespace

NewThrowsExceptionSentry::NewThrowsExceptionSentry() : previousHandler_(std::set_new_handler(&HandleFailedNew)) {}

NewThrowsExceptionSentry::~NewThrowsExceptionSentry()
{
    QUILLMARSH_VERIFY(std::set_new_handler(previousHandler_) == &HandleFailedNew,
                      "quillmarsh-new-handler was unhooked by non-quillmarsh code.");
}

int NewThrowsExceptionSentry::NewHandler(unsigned int size)
{
    ThrowNoMemory(size, true);
}

AdaptiveBufferBase::AdaptiveBufferBase() = default;
AdaptiveBufferBase::AdaptiveBufferBase(AdaptiveBufferBase const &) = default;
AdaptiveBufferBase &AdaptiveBufferBase::operator=(AdaptiveBufferBase const &) = default;
AdaptiveBufferBase::~AdaptiveBufferBase() = default;

void AdaptiveBufferBase::SetMinSize(unsigned int size)
{
    minSize_ = size;
    if (size_ < size)
        DoReserve(size);
    stableCycles_ = 0;
}

void AdaptiveBufferBase::SetMinStableCycles(unsigned int numCycles)
{
    minStableCycles_ = numCycles;
}

void AdaptiveBufferBase::ForceMinSize()
{
    DoReserve(minSize_);
    stableCycles_ = 0;
}

void AdaptiveBufferBase::BeginReserveCycle()
{
    lastDemand_ = demand_;
    demand_ = 0;
}

void AdaptiveBufferBase::ReserveSpace(unsigned int size)
{
    demand_ = std::max(demand_, size);
    if (size_ < size)
        DoReserve(std::max(size, minSize_));
}

void AdaptiveBufferBase::EndReserveCycle()
{
    if (lastDemand_ == demand_)
        ++stableCycles_;
    else
        stableCycles_ = 0;

    bool const isStable = stableCycles_ >= minStableCycles_;
    if (isStable && demand_ < size_ && demand_ > minSize_)
        DoReserve(demand_);
}

void AdaptiveBufferBase::DoReserve(unsigned int size)
{
    FreeBuffer();
    size_ = size;
    if (size != 0)
        AllocateBuffer(size);
}

} // namespace quillmarsh
