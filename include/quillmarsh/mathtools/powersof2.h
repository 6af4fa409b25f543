// Powers of two around a number.
#ifndef QUILLMARSH_MATHTOOLS_POWERSOF2_H
#define QUILLMARSH_MATHTOOLS_POWERSOF2_H

#include <bit>

namespace quillmarsh
{

namespace math_details
{

/// The highest power of two of 32 bits. Larger results are replaced by it.
constexpr unsigned int s_highestPowerOf2 = 0x80000000u;

} // namespace math_details

// Any thread.

/// The lowest power of two that is not below `n`; 1 for 0.
constexpr unsigned int GEqualPowerOf2(unsigned int n)
{
    return n >= math_details::s_highestPowerOf2 ? math_details::s_highestPowerOf2 : std::bit_ceil(n);
}

/// The highest power of two that is not above `n`; 1 for 0.
constexpr unsigned int LEqualPowerOf2(unsigned int n)
{
    return n == 0 ? 1u : std::bit_floor(n);
}

/// The nearest power of two; of two that are equally near, the higher one.
constexpr unsigned int ClosestPowerOf2(unsigned int n)
{
    unsigned int const lower = LEqualPowerOf2(n);
    unsigned int const higher = GEqualPowerOf2(n);
    return n - lower < higher - n ? lower : higher;
}

/// True when `n` is a power of two; 0 is not.
constexpr bool IsPowerOf2(unsigned int n)
{
    return GEqualPowerOf2(n) == n;
}

} // namespace quillmarsh

#endif
