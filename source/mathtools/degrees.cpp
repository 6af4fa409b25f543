#include "source/mathtools/degrees.h"

#include <cstddef>

namespace quillmarsh
{
namespace
{

/// Series of sine and cosine up to an eighth of a turn: the factors of the square, after the leading 1.
/// @{
constexpr double s_sineTerms[] = {
    -1.0 / 6.0,        1.0 / 120.0,        -1.0 / 5040.0,          1.0 / 362880.0,
    -1.0 / 39916800.0, 1.0 / 6227020800.0, -1.0 / 1307674368000.0, 1.0 / 355687428096000.0};
constexpr double s_cosineTerms[] = {-1.0 / 2.0,       1.0 / 24.0,        -1.0 / 720.0,         1.0 / 40320.0,
                                    -1.0 / 3628800.0, 1.0 / 479001600.0, -1.0 / 87178291200.0, 1.0 / 20922789888000.0};
/// @}

template<std::size_t numTerms>
double Sum(double const (&terms)[numTerms], double square)
{
    double sum = terms[numTerms - 1];
    for (std::size_t i = numTerms - 1; i-- > 0;)
        sum = sum * square + terms[i];
    return 1.0 + sum * square;
}

/// A quarter of a turn, as a sum of parts whose multiples are exact up to `s_largestAngle`.
constexpr double s_quarter[] = {0x1.921fb544p+0, 0x1.0b4611a6p-34, 0x1.3198a2e037073p-69};
constexpr float s_largestAngle = 67108864.0f;

} // namespace

SineCosine::SineCosine(float degrees)
{
    // In larger angles, whole turns are whole degrees, which are removed exactly.
    bool const isLarge = !(std::abs(degrees) < s_largestAngle);
    double const angle = isLarge ? std::fmod(static_cast<double>(degrees), 360.0) : static_cast<double>(degrees);
    if (std::isnan(angle))
    {
        sine = cosine = std::numeric_limits<float>::quiet_NaN();
        return;
    }
    double const x = angle * math_constants::PiOver180;
    double const quarters = x * (2.0 / math_constants::Pi);
    int const nearest = static_cast<int>(quarters + (quarters < 0.0 ? -0.5 : 0.5));
    double const rest = x - nearest * s_quarter[0] - nearest * s_quarter[1] - nearest * s_quarter[2];

    double const square = rest * rest;
    auto const sineOfRest = static_cast<float>(rest * Sum(s_sineTerms, square));
    auto const cosineOfRest = static_cast<float>(Sum(s_cosineTerms, square));
    bool const isOdd = nearest & 1;
    bool const isBehindHalf = nearest & 2;
    float const turnedSine = isOdd ? cosineOfRest : sineOfRest;
    float const turnedCosine = isOdd ? -sineOfRest : cosineOfRest;
    sine = isBehindHalf ? -turnedSine : turnedSine;
    cosine = isBehindHalf ? -turnedCosine : turnedCosine;
}

} // namespace quillmarsh
