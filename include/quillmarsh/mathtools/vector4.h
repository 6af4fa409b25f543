// Homogeneous vector of space.
#ifndef QUILLMARSH_MATHTOOLS_VECTOR4_H
#define QUILLMARSH_MATHTOOLS_VECTOR4_H

#include <quillmarsh/mathtools/vector3.h>

namespace quillmarsh
{

/// Four floats, and no other data. A value type: any thread.
class vec4 : public VectorOperations<vec4>
{
public:
    /// @name Constants
    /// Usable in constant expressions, and from any constructor.
    /// @{
    static vec4 const ZERO;
    static vec4 const ONE;
    static vec4 const UNIT_X;
    static vec4 const UNIT_Y;
    static vec4 const UNIT_Z;
    static vec4 const UNIT_W;
    /// Positive infinity in every component.
    static vec4 const INFINITY;
    /// @}

    /// Leaves the components unset.
    vec4() = default;
    /// Takes the components, in order.
    constexpr vec4(float newX, float newY, float newZ, float newW) : x(newX), y(newY), z(newZ), w(newW) {}
    /// Takes the components from an array, in order.
    explicit constexpr vec4(float const *components) : vec4(components[0], components[1], components[2], components[3])
    {
    }
    /// Takes a point of the plane; `z` is 0 and `w` is 1.
    constexpr vec4(vec2 const &v) : vec4(v.x, v.y, 0.0f, 1.0f) {}
    /// Takes a point; `w` is 1.
    constexpr vec4(vec3 const &v) : vec4(v.x, v.y, v.z, 1.0f) {}

    /// @name Components
    /// Set() stores all components, by value or from an array. ToPtr() and the conversions give the address of the
    /// first; the others follow it in order.
    /// @{
    constexpr vec4 &Set(float newX, float newY, float newZ, float newW) { return *this = vec4(newX, newY, newZ, newW); }
    constexpr vec4 &Set(float const *components) { return *this = vec4(components); }
    constexpr float *ToPtr() { return &x; }
    constexpr float const *ToPtr() const { return &x; }
    constexpr operator float *() { return ToPtr(); }
    constexpr operator float const *() const { return ToPtr(); }
    /// @}

    /// Dot product.
    constexpr float Dot(vec4 const &other) const { return x * other.x + y * other.y + z * other.z + w * other.w; }

    /// @name Homogeneous divide
    /// `w` becomes 1. A vector with `w` 0 becomes INFINITY.
    /// @{
    constexpr vec4 Normalized() const;
    constexpr vec4 &Normalize() { return *this = Normalized(); }
    constexpr vec4 &Normalize(vec4 const &source) { return *this = source.Normalized(); }
    /// @}

    /// @name Component by component
    /// See componentoperations.h.
    /// @{
    template<typename Function, typename... Operands>
    static constexpr vec4 Map(Function function, Operands const &...operands)
    {
        return vec4(function(operands.x...), function(operands.y...), function(operands.z...), function(operands.w...));
    }
    template<typename Predicate, typename... Operands>
    static constexpr bool All(Predicate predicate, Operands const &...operands)
    {
        return predicate(operands.x...) && predicate(operands.y...) && predicate(operands.z...) &&
               predicate(operands.w...);
    }
    /// @}

    float x;
    float y;
    float z;
    float w;
};

static_assert(sizeof(vec4) == 4 * sizeof(float));

inline constexpr vec4 vec4::ZERO(0.0f, 0.0f, 0.0f, 0.0f);
inline constexpr vec4 vec4::ONE(1.0f, 1.0f, 1.0f, 1.0f);
inline constexpr vec4 vec4::UNIT_X(1.0f, 0.0f, 0.0f, 0.0f);
inline constexpr vec4 vec4::UNIT_Y(0.0f, 1.0f, 0.0f, 0.0f);
inline constexpr vec4 vec4::UNIT_Z(0.0f, 0.0f, 1.0f, 0.0f);
inline constexpr vec4 vec4::UNIT_W(0.0f, 0.0f, 0.0f, 1.0f);
inline constexpr vec4 vec4::INFINITY(std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity(),
                                     std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity());

constexpr vec2::vec2(vec4 const &v) : vec2(v.x, v.y) {}

constexpr vec3::vec3(vec4 const &v) : vec3(v.x, v.y, v.z) {}

constexpr vec4 vec4::Normalized() const
{
    if (w == 0.0f)
        return INFINITY;
    float const factor = 1.0f / w;
    return vec4(x * factor, y * factor, z * factor, 1.0f);
}

} // namespace quillmarsh

#endif
