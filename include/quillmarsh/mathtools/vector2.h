// Vector of the plane.
#ifndef QUILLMARSH_MATHTOOLS_VECTOR2_H
#define QUILLMARSH_MATHTOOLS_VECTOR2_H

#include <quillmarsh/mathtools/componentoperations.h>
#include <quillmarsh/mathtools/mathserializer.h>

namespace quillmarsh
{

class vec3;
class vec4;

/// Two floats, and no other data. Angles are in degrees. A value type: any thread.
class vec2 : public SpatialVectorOperations<vec2>
{
public:
    /// @name Constants
    /// Usable in constant expressions, and from any constructor.
    /// @{
    static vec2 const ZERO;
    static vec2 const ONE;
    static vec2 const UNIT_X;
    static vec2 const UNIT_Y;
    /// Positive infinity in every component.
    static vec2 const INFINITY;
    /// @}

    /// Leaves the components unset.
    vec2() = default;
    /// Takes the components, in order.
    constexpr vec2(float newX, float newY) : x(newX), y(newY) {}
    /// Takes the components from an array, in order.
    explicit constexpr vec2(float const *components) : vec2(components[0], components[1]) {}
    /// Takes the leading components (defined in vector3.h).
    constexpr vec2(vec3 const &v);
    /// Takes the leading components (defined in vector4.h).
    constexpr vec2(vec4 const &v);

    /// @name Components
    /// Set() stores all components, by value or from an array. ToPtr() and the conversions give the address of the
    /// first; the others follow it in order.
    /// @{
    constexpr vec2 &Set(float newX, float newY) { return *this = vec2(newX, newY); }
    constexpr vec2 &Set(float const *components) { return *this = vec2(components); }
    constexpr float *ToPtr() { return &x; }
    constexpr float const *ToPtr() const { return &x; }
    constexpr operator float *() { return ToPtr(); }
    constexpr operator float const *() const { return ToPtr(); }
    /// @}

    /// Dot product.
    constexpr float Dot(vec2 const &other) const { return x * other.x + y * other.y; }

    /// @name Absolute values of the components
    /// The largest and the smallest one.
    /// @{
    constexpr float AbsMax() const;
    constexpr float AbsMin() const;
    /// @}

    /// @name Perpendiculars
    /// The vector turned by 90 degrees, counter-clockwise or clockwise; its length stays. A form with an argument
    /// stores the perpendicular of the argument.
    /// @{
    constexpr vec2 CrossCCW() const { return vec2(-y, x); }
    constexpr vec2 &CrossCCW(vec2 const &a) { return *this = a.CrossCCW(); }
    constexpr vec2 CrossCW() const { return vec2(y, -x); }
    constexpr vec2 &CrossCW(vec2 const &a) { return *this = a.CrossCW(); }
    /// @}

    /// @name Rotation about the origin
    /// Positive angles turn counter-clockwise in the `CCW` forms and clockwise in the `CW` forms. `Rotate...` changes
    /// the object.
    /// @{
    QUILLMARSH_API vec2 RotationCCW(float angle) const;
    vec2 &RotationCCW(float angle, vec2 const &source) { return *this = source.RotationCCW(angle); }
    vec2 &RotateCCW(float angle) { return *this = RotationCCW(angle); }
    vec2 RotationCW(float angle) const { return RotationCCW(-angle); }
    vec2 &RotationCW(float angle, vec2 const &source) { return *this = source.RotationCW(angle); }
    vec2 &RotateCW(float angle) { return *this = RotationCW(angle); }
    /// @}

    /// @name Component by component
    /// See componentoperations.h.
    /// @{
    template<typename Function, typename... Operands>
    static constexpr vec2 Map(Function function, Operands const &...operands)
    {
        return vec2(function(operands.x...), function(operands.y...));
    }
    template<typename Predicate, typename... Operands>
    static constexpr bool All(Predicate predicate, Operands const &...operands)
    {
        return predicate(operands.x...) && predicate(operands.y...);
    }
    /// @}

    float x;
    float y;
};

static_assert(sizeof(vec2) == 2 * sizeof(float));

inline constexpr vec2 vec2::ZERO(0.0f, 0.0f);
inline constexpr vec2 vec2::ONE(1.0f, 1.0f);
inline constexpr vec2 vec2::UNIT_X(1.0f, 0.0f);
inline constexpr vec2 vec2::UNIT_Y(0.0f, 1.0f);
inline constexpr vec2 vec2::INFINITY(std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity());

constexpr float vec2::AbsMax() const
{
    float const absX = math_details::Absolute(x);
    float const absY = math_details::Absolute(y);
    return absX < absY ? absY : absX;
}

constexpr float vec2::AbsMin() const
{
    float const absX = math_details::Absolute(x);
    float const absY = math_details::Absolute(y);
    return absY < absX ? absY : absX;
}

/// Makes both vectors unit vectors at a right angle; the first keeps its direction.
QUILLMARSH_API void OrthoNormalize(vec2 &a, vec2 &b);

} // namespace quillmarsh

#endif
