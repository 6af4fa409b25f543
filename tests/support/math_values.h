// Math values in tests: random values, their text in failures, and comparison with a tolerance.
#ifndef QUILLMARSH_TESTS_SUPPORT_MATH_VALUES_H
#define QUILLMARSH_TESTS_SUPPORT_MATH_VALUES_H

#include <quillmarsh/mathtools/quaternion.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <ostream>
#include <random>

namespace quillmarsh
{

// The test framework finds this function; otherwise it would print bytes.
template<typename T>
requires std::is_base_of_v<LinearOperations<T>, T>
void PrintTo(T const &value, std::ostream *out)
{
    for (std::size_t i = 0; i < sizeof(T) / sizeof(float); ++i)
        *out << (i == 0 ? "" : " ") << value.ToPtr()[i];
}

namespace tests
{

/// Returns a value with random components from -1 to 1.
template<typename T>
T MakeRandom(std::mt19937 &engine)
{
    std::uniform_real_distribution<float> numbers(-1.0f, 1.0f);
    T value;
    std::generate_n(value.ToPtr(), sizeof(T) / sizeof(float), [&] { return numbers(engine); });
    return value;
}

/// True when no component differs by more than the tolerance.
template<typename T>
testing::AssertionResult IsNear(T const &a, T const &b, float tolerance = 1e-5f)
{
    if ((a - b).NoiseFiltered(tolerance) == T::ZERO)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << testing::PrintToString(a) << " and " << testing::PrintToString(b);
}

template<typename T>
bool HaveSameBits(T const &a, T const &b)
{
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

/// Applies the matrix to a column vector.
inline vec3 Apply(mat3 const &matrix, vec3 const &v)
{
    return vec3(matrix.Row0().Dot(v), matrix.Row1().Dot(v), matrix.Row2().Dot(v));
}

} // namespace tests
} // namespace quillmarsh

#endif
