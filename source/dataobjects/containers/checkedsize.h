// Sizes of containers, computed so that they cannot wrap.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_CONTAINERS_CHECKEDSIZE_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_CONTAINERS_CHECKEDSIZE_H

#include <cstdint>
#include <initializer_list>

namespace quillmarsh
{

/// The largest size of a container in bytes, and so the largest count of its samples.
inline constexpr std::uint64_t s_largestByteSize = 0xFFFFFFFF;

/// Product of the factors; the largest 64-bit number when it is larger.
std::uint64_t SaturatingProduct(std::initializer_list<std::uint64_t> factors);

/// Throws the NoMemoryException of a block of this size.
[[noreturn]] void ThrowNoMemory(std::uint64_t byteSize);

} // namespace quillmarsh

#endif
