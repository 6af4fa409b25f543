// Clamping of settings that a caller may give as NaN.
#ifndef QUILLMARSH_SOURCE_BASETOOLS_CLAMPING_H
#define QUILLMARSH_SOURCE_BASETOOLS_CLAMPING_H

#include <algorithm>
#include <cmath>

namespace quillmarsh
{

/// The value, pulled into the range from `low` to `high`. NaN counts as `defaultValue`.
template<typename T>
T ClampSetting(T value, T low, T high, T defaultValue)
{
    return std::clamp(std::isnan(value) ? defaultValue : value, low, high);
}

/// The value, raised to `low` if it is below it. NaN counts as `defaultValue`.
template<typename T>
T RaiseSetting(T value, T low, T defaultValue)
{
    return std::max(low, std::isnan(value) ? defaultValue : value);
}

} // namespace quillmarsh

#endif
