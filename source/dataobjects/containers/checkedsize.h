// Sizes of containers, computed without overflow.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_CONTAINERS_CHECKEDSIZE_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_CONTAINERS_CHECKEDSIZE_H

#include <cstdint>
#include <initializer_list>

namespace quillmarsh
{

/// The largest size of a container in bytes, which also limits the number of samples.
inline constexpr std::uint64_t s_largestByteSize = 0xFFFFFFFF;

/// Returns the product of the factors, or the largest 64-bit number if the product exceeds it.
std::uint64_t SaturatingProduct(std::initializer_list<std::uint64_t> factors);

/// Throws the NoMemoryException of a block of this size.
[[noreturn]] void ThrowNoMemory(std::uint64_t byteSize);

} // namespace quillmarsh

#endif
