// Numbers of units that programs give.
#ifndef QUILLMARSH_SOURCE_WIDGETS_UNITS_H
#define QUILLMARSH_SOURCE_WIDGETS_UNITS_H

#include <quillmarsh/mathtools/vector2.h>

#include <algorithm>

namespace quillmarsh::widgets
{

/// Greatest extent of a widget: far beyond any window, and still exact in pixels at any scale.
constexpr float s_maxUnits = 1 << 16;

/// Limits an extent to numbers that a layout can work with; what is no number becomes 0.
constexpr float LimitUnits(float units)
{
    // In this order, std::max() gives 0 for NaN.
    return std::min(std::max(0.0F, units), s_maxUnits);
}

inline vec2 LimitUnits(vec2 const &units)
{
    return {LimitUnits(units.x), LimitUnits(units.y)};
}

} // namespace quillmarsh::widgets

#endif
