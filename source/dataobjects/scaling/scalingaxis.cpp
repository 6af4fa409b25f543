#include "source/dataobjects/scaling/scalingaxis.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quillmarsh
{
namespace
{

constexpr double s_lanczosLobes = 3;

/// Sine of `x` times pi. The system's sine would give other bits on other systems.
double SinPi(double x)
{
    double turned = x - 2 * std::floor(x / 2 + 0.5);
    if (std::abs(turned) > 0.5)
        turned = std::copysign(1.0, turned) - turned;
    double const t = turned * 3.14159265358979323846;
    double sum = 0;
    for (int i = 21; i > 1; i -= 2)
        sum = (1 - sum) * (t * t) / (i * (i - 1));
    return t * (1 - sum);
}

double Sinc(double x)
{
    return x == 0 ? 1.0 : SinPi(x) / (3.14159265358979323846 * x);
}

double Lanczos(double x)
{
    return std::abs(x) < s_lanczosLobes ? Sinc(x) * Sinc(x / s_lanczosLobes) : 0.0;
}

/// Appends the weights of one sample, divided by their sum. Drops weights of 0 at both ends.
void Append(ScalingAxis &axis, std::uint64_t first, std::vector<double> const &weights)
{
    std::size_t begin = 0, end = weights.size();
    while (end - begin > 1 && weights[begin] == 0)
        ++begin;
    while (end - begin > 1 && weights[end - 1] == 0)
        --end;
    double sum = 0;
    for (std::size_t i = begin; i < end; ++i)
        sum += weights[i];
    axis.first.push_back(static_cast<unsigned int>(first + begin));
    axis.start.push_back(axis.weights.size());
    for (std::size_t i = begin; i < end; ++i)
        axis.weights.push_back(static_cast<float>(weights[i] / sum));
}

/// Weighs the samples between two places. A sample of the source has the length `n`, one of the destination `m`.
void AppendArea(ScalingAxis &axis, std::uint64_t i, std::uint64_t n, std::uint64_t m, std::vector<double> &weights)
{
    std::uint64_t const begin = i * m, end = begin + m;
    std::uint64_t const first = begin / n, last = (end - 1) / n;
    weights.clear();
    for (std::uint64_t j = first; j <= last; ++j)
        weights.push_back(static_cast<double>(std::min(end, (j + 1) * n) - std::max(begin, j * n)));
    Append(axis, first, weights);
}

void AppendLanczos(ScalingAxis &axis, std::uint64_t i, std::uint64_t n, std::uint64_t m, std::vector<double> &weights)
{
    double const ratio = static_cast<double>(m) / static_cast<double>(n);
    double const stretch = std::max(ratio, 1.0);
    double const center = (static_cast<double>(i) + 0.5) * ratio - 0.5;
    double const reach = s_lanczosLobes * stretch;
    auto const first = static_cast<std::uint64_t>(std::max(std::ceil(center - reach), 0.0));
    auto const last = static_cast<std::uint64_t>(std::min(std::floor(center + reach), static_cast<double>(m - 1)));
    weights.clear();
    for (std::uint64_t j = first; j <= last; ++j)
        weights.push_back(Lanczos((static_cast<double>(j) - center) / stretch));
    Append(axis, first, weights);
}

} // namespace

ScalingAxis MakeScalingAxis(unsigned int dstCount, unsigned int srcCount, eScaleFilter filter)
{
    ScalingAxis axis;
    std::vector<double> weights;
    for (unsigned int i = 0; i < dstCount; ++i)
        (filter == e_scale_area ? AppendArea : AppendLanczos)(axis, i, dstCount, srcCount, weights);
    axis.start.push_back(axis.weights.size());
    return axis;
}

} // namespace quillmarsh
