// Vector of space.
#ifndef QUILLMARSH_MATHTOOLS_VECTOR3_H
#define QUILLMARSH_MATHTOOLS_VECTOR3_H

#include <quillmarsh/mathtools/vector2.h>

namespace quillmarsh
{

/// Three floats, and no other data. Angles are in degrees; positive ones turn counter-clockwise as seen from the tip of
/// the axis. A value type: any thread.
class vec3 : public SpatialVectorOperations<vec3>
{
public:
    /// @name Constants
    /// Usable in constant expressions, and from any constructor.
    /// @{
    static vec3 const ZERO;
    static vec3 const ONE;
    static vec3 const UNIT_X;
    static vec3 const UNIT_Y;
    static vec3 const UNIT_Z;
    /// Positive infinity in every component.
    static vec3 const INFINITY;
    /// @}

    /// Leaves the components unset.
    vec3() = default;
    /// Takes the components, in order.
    constexpr vec3(float newX, float newY, float newZ) : x(newX), y(newY), z(newZ) {}
    /// Takes the components from an array, in order.
    explicit constexpr vec3(float const *components) : vec3(components[0], components[1], components[2]) {}
    /// Takes a vector of the plane; `z` is 0.
    constexpr vec3(vec2 const &v) : vec3(v.x, v.y, 0.0f) {}
    /// Takes the leading components (defined in vector4.h).
    constexpr vec3(vec4 const &v);

    /// @name Components
    /// Set() stores all components, by value or from an array. ToPtr() and the conversions give the address of the
    /// first; the others follow it in order.
    /// @{
    constexpr vec3 &Set(float newX, float newY, float newZ) { return *this = vec3(newX, newY, newZ); }
    constexpr vec3 &Set(float const *components) { return *this = vec3(components); }
    constexpr float *ToPtr() { return &x; }
    constexpr float const *ToPtr() const { return &x; }
    constexpr operator float *() { return ToPtr(); }
    constexpr operator float const *() const { return ToPtr(); }
    /// @}

    /// Dot product.
    constexpr float Dot(vec3 const &other) const { return x * other.x + y * other.y + z * other.z; }

    /// @name Absolute values of the components
    /// The largest and the smallest one.
    /// @{
    constexpr float AbsMax() const;
    constexpr float AbsMin() const;
    /// @}

    /// @name Right-handed cross product
    /// The second form stores the product of its arguments.
    /// @{
    constexpr vec3 Cross(vec3 const &other) const
    {
        return vec3(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
    }
    constexpr vec3 &Cross(vec3 const &a, vec3 const &b) { return *this = a.Cross(b); }
    /// @}

    /// @name Rotation about an axis through the origin
    /// The `Unit` forms need an axis of unit length; the others scale the axis first. `Rotate...` changes the object.
    /// @{
    QUILLMARSH_API vec3 &RotationAroundUnit(vec3 const &unitAxis, float angle, vec3 const &source);
    vec3 RotationAroundUnit(vec3 const &unitAxis, float angle) const;
    vec3 &RotateAroundUnit(vec3 const &unitAxis, float angle) { return RotationAroundUnit(unitAxis, angle, *this); }
    vec3 &RotationAround(vec3 const &axis, float angle, vec3 const &source)
    {
        return RotationAroundUnit(axis.Unit(), angle, source);
    }
    vec3 RotationAround(vec3 const &axis, float angle) const { return RotationAroundUnit(axis.Unit(), angle); }
    vec3 &RotateAround(vec3 const &axis, float angle) { return RotationAround(axis, angle, *this); }
    /// @}

    /// @name Component by component
    /// See componentoperations.h.
    /// @{
    template<typename Function, typename... Operands>
    static constexpr vec3 Map(Function function, Operands const &...operands)
    {
        return vec3(function(operands.x...), function(operands.y...), function(operands.z...));
    }
    template<typename Predicate, typename... Operands>
    static constexpr bool All(Predicate predicate, Operands const &...operands)
    {
        return predicate(operands.x...) && predicate(operands.y...) && predicate(operands.z...);
    }
    /// @}

    float x;
    float y;
    float z;
};

static_assert(sizeof(vec3) == 3 * sizeof(float));

inline constexpr vec3 vec3::ZERO(0.0f, 0.0f, 0.0f);
inline constexpr vec3 vec3::ONE(1.0f, 1.0f, 1.0f);
inline constexpr vec3 vec3::UNIT_X(1.0f, 0.0f, 0.0f);
inline constexpr vec3 vec3::UNIT_Y(0.0f, 1.0f, 0.0f);
inline constexpr vec3 vec3::UNIT_Z(0.0f, 0.0f, 1.0f);
inline constexpr vec3 vec3::INFINITY(std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity(),
                                     std::numeric_limits<float>::infinity());

constexpr vec2::vec2(vec3 const &v) : vec2(v.x, v.y) {}

constexpr float vec3::AbsMax() const
{
    float const absZ = math_details::Absolute(z);
    float const inPlane = vec2(x, y).AbsMax();
    return inPlane < absZ ? absZ : inPlane;
}

constexpr float vec3::AbsMin() const
{
    float const absZ = math_details::Absolute(z);
    float const inPlane = vec2(x, y).AbsMin();
    return absZ < inPlane ? absZ : inPlane;
}

inline vec3 vec3::RotationAroundUnit(vec3 const &unitAxis, float angle) const
{
    vec3 result;
    return result.RotationAroundUnit(unitAxis, angle, *this);
}

/// Makes the vectors unit vectors at right angles to each other; the first keeps its direction.
QUILLMARSH_API void OrthoNormalize(vec3 &a, vec3 &b, vec3 &c);

} // namespace quillmarsh

#endif
