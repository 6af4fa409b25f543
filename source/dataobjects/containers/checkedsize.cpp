#include "source/dataobjects/containers/checkedsize.h"

#include <quillmarsh/basetools/exception.h>

#include <limits>
#include <string>

namespace quillmarsh
{

std::uint64_t SaturatingProduct(std::initializer_list<std::uint64_t> factors)
{
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t product = 1;
    for (std::uint64_t const factor : factors)
    {
        if (factor == 0)
            return 0;
        product = product > largest / factor ? largest : product * factor;
    }
    return product;
}

void ThrowNoMemory(std::uint64_t byteSize)
{
    QUILLMARSH_THROW(NoMemoryException, "Failed to allocate " + std::to_string(byteSize) + " bytes");
}

} // namespace quillmarsh
