// Quaternion, the rotation type of trackers and gesture analysis.
#ifndef QUILLMARSH_MATHTOOLS_QUATERNION_H
#define QUILLMARSH_MATHTOOLS_QUATERNION_H

#include <quillmarsh/mathtools/matrix44.h>

#include <bit>
#include <type_traits>

namespace quillmarsh
{

/// Four floats, the vector part first and the scalar part last. Angles are in degrees.
///
/// A quaternion of length 1 stands for a rotation; no operation scales to that length by itself. The suffixes `MV` and
/// `VM` tell on which side of a matrix the vectors stand; see SquareMatrixOperations. A value type: any thread.
class quat : public LinearOperations<quat>, public NoiseFilterOperations<quat>, public LengthOperations<quat>
{
public:
    static constexpr float s_defaultNoiseTolerance = math_constants::QuaternionNoiseFilterDefaultTolerance;

    using LinearOperations<quat>::Mul;
    using LinearOperations<quat>::operator*=;

    /// @name Constants
    /// Usable in constant expressions, and from any constructor.
    /// @{
    static quat const ZERO;
    static quat const IDENTITY;
    /// Positive infinity in every component.
    static quat const INFINITY;
    /// @}

    /// Leaves the components unset.
    quat() = default;
    /// Takes the components, in order.
    constexpr quat(float newX, float newY, float newZ, float newW) : x(newX), y(newY), z(newZ), w(newW) {}
    /// Takes the components from an array, in order.
    explicit constexpr quat(float const *components) : quat(components[0], components[1], components[2], components[3])
    {
    }
    /// See FromRotationAxisAngle().
    quat(vec3 const &unitAxis, float angle) { FromRotationAxisAngle(unitAxis, angle); }

    /// @name Components
    /// Set() stores all components, by value or from an array. ToPtr() and the conversions give the address of the
    /// first; the others follow it in order.
    /// @{
    constexpr quat &Set(float newX, float newY, float newZ, float newW) { return *this = quat(newX, newY, newZ, newW); }
    constexpr quat &Set(float const *components) { return *this = quat(components); }
    /// See FromRotationAxisAngle().
    quat &Set(vec3 const &unitAxis, float angle) { return FromRotationAxisAngle(unitAxis, angle); }
    constexpr float *ToPtr() { return &x; }
    constexpr float const *ToPtr() const { return &x; }
    constexpr operator float *() { return ToPtr(); }
    constexpr operator float const *() const { return ToPtr(); }
    /// @}

    /// @name Product
    /// In a product of rotations the right factor turns a vector first.
    /// @{
    constexpr quat &Mul(quat const &a, quat const &b) { return *this = Product(a, b); }
    constexpr quat &Mul(quat const &other) { return Mul(*this, other); }
    constexpr quat &operator*=(quat const &other) { return Mul(*this, other); }
    friend constexpr quat operator*(quat const &a, quat const &b) { return Product(a, b); }
    /// @}

    /// Dot product of all four components.
    constexpr float Dot(quat const &other) const { return x * other.x + y * other.y + z * other.z + w * other.w; }
    /// Sum of the squares of the components.
    constexpr float Norm() const { return Dot(*this); }

    /// @name Conjugate
    /// Negates the vector part: of the source, or of the object itself.
    /// @{
    constexpr quat &Conjugate(quat const &source) { return *this = source.InverseU(); }
    constexpr quat &Conjugate() { return Conjugate(*this); }
    /// @}

    /// @name Inverse
    /// The inverse is INFINITY when the norm is not above 0. The `U` forms need a unit quaternion, and only negate the
    /// vector part. `Invert...` changes the object.
    /// @{
    constexpr quat Inverse() const;
    constexpr quat &Inverse(quat const &source) { return *this = source.Inverse(); }
    constexpr quat &Invert() { return *this = Inverse(); }
    constexpr quat InverseU() const { return quat(-x, -y, -z, w); }
    constexpr quat &InverseU(quat const &source) { return *this = source.InverseU(); }
    constexpr quat &InvertU() { return *this = InverseU(); }
    /// @}

    /// @name Combination of rotations
    /// @{

    /// Stores the rotation by `first` and then by `second`: the product of `second` and `first`.
    constexpr quat &Combine(quat const &first, quat const &second) { return Mul(second, first); }
    /// Stores the rotation by `other` and then by the object: the product of the object and `other`.
    constexpr quat &PreCombine(quat const &other) { return Mul(*this, other); }
    /// Stores the rotation by the object and then by `other`: the product of `other` and the object.
    constexpr quat &PostCombine(quat const &other) { return Mul(other, *this); }

    /// @}
    /// @name Rotation of a vector
    /// These use the rotation matrix. A quaternion that is not of unit length does not give a rotation.
    /// @{
    constexpr void Rotate(vec3 &result, vec3 const &v) const { result = Rotate(v); }
    constexpr vec3 Rotate(vec3 const &v) const;
    constexpr vec3 operator*(vec3 const &v) const { return Rotate(v); }
    /// @}

    /// @name Axis and angle
    /// The rotation about an axis of unit length.
    /// @{
    QUILLMARSH_API quat &FromRotationAxisAngle(vec3 const &unitAxis, float angle);
    /// Gives axis and angle. Without a vector part the axis is Z and the angle 0. `w` is not clamped: above 1 the angle
    /// is NaN.
    QUILLMARSH_API void ToRotationAxisAngle(vec3 &axis, float &angle) const;
    /// @}

    /// @name Rotation matrix
    /// Conversions to and from the matrix of the rotation.
    /// @{
    constexpr void ToRotationMatrixMV(mat3 &matrix) const;
    constexpr void ToRotationMatrixMV(mat4 &matrix) const;
    constexpr void ToRotationMatrixVM(mat3 &matrix) const;
    constexpr void ToRotationMatrixVM(mat4 &matrix) const;
    /// Two quaternions of opposite sign stand for each rotation; the result may be either.
    QUILLMARSH_API quat &FromRotationMatrixMV(mat3 const &matrix);
    quat &FromRotationMatrixMV(mat4 const &matrix) { return FromRotationMatrixMV(mat3(matrix)); }
    quat &FromRotationMatrixVM(mat3 const &matrix) { return FromRotationMatrixMV(matrix.Transposed()); }
    quat &FromRotationMatrixVM(mat4 const &matrix) { return FromRotationMatrixVM(mat3(matrix)); }
    /// @}

    /// @name Axes of the rotated coordinate system
    /// Conversions to and from the three axes, which are of unit length and at right angles.
    /// @{
    QUILLMARSH_API void ToCoordSystemAxes(vec3 &xAxis, vec3 &yAxis, vec3 &zAxis) const;
    QUILLMARSH_API quat &FromCoordSystemAxes(vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis);
    /// @}

    /// Stores the shortest rotation that turns `from` into `to`; both are of unit length. Opposite vectors have no such
    /// rotation, and are not detected.
    QUILLMARSH_API quat &ShortestArcRotation(vec3 const &from, vec3 const &to);

    /// @name Component by component
    /// See componentoperations.h.
    /// @{
    template<typename Function, typename... Operands>
    static constexpr quat Map(Function function, Operands const &...operands)
    {
        return quat(function(operands.x...), function(operands.y...), function(operands.z...), function(operands.w...));
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

private:
    static constexpr quat Product(quat const &a, quat const &b);
    /// The same sums in the same order, four at a time.
    static quat ProductInLanes(quat const &a, quat const &b);
};

static_assert(sizeof(quat) == 4 * sizeof(float));

inline constexpr quat quat::ZERO(0.0f, 0.0f, 0.0f, 0.0f);
inline constexpr quat quat::IDENTITY(0.0f, 0.0f, 0.0f, 1.0f);
inline constexpr quat quat::INFINITY(std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity(),
                                     std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity());

constexpr quat quat::Product(quat const &a, quat const &b)
{
    if (!std::is_constant_evaluated())
        return ProductInLanes(a, b);
    return quat(a.y * b.z - a.z * b.y + a.x * b.w + a.w * b.x, //
                a.z * b.x - a.x * b.z + a.y * b.w + a.w * b.y, //
                a.x * b.y - a.y * b.x + a.z * b.w + a.w * b.z, //
                a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z);
}

inline quat quat::ProductInLanes(quat const &a, quat const &b)
{
    using Floats = float __attribute__((vector_size(16)));
    using Words = unsigned int __attribute__((vector_size(16)));
    Floats const p{a.x, a.y, a.z, a.w};
    Floats const q{b.x, b.y, b.z, b.w};

    // One column of terms each; the last two are taken away from w and added to the others.
    Floats const first = __builtin_shufflevector(p, p, 1, 2, 0, 3) * __builtin_shufflevector(q, q, 2, 0, 1, 3);
    Floats const second = __builtin_shufflevector(p, p, 2, 0, 1, 0) * __builtin_shufflevector(q, q, 1, 2, 0, 0);
    Floats const third = __builtin_shufflevector(p, p, 0, 1, 2, 1) * __builtin_shufflevector(q, q, 3, 3, 3, 1);
    Floats const fourth = __builtin_shufflevector(p, p, 3, 3, 3, 2) * __builtin_shufflevector(q, q, 0, 1, 2, 2);
    auto const negateW = [](Floats lanes) {
        return std::bit_cast<Floats>(std::bit_cast<Words>(lanes) ^ Words{0, 0, 0, 0x80000000u});
    };
    Floats const sum = first - second + negateW(third) + negateW(fourth);
    return quat(sum[0], sum[1], sum[2], sum[3]);
}

constexpr quat quat::Inverse() const
{
    float const norm = Norm();
    return norm > 0.0f ? InverseU() / norm : INFINITY;
}

constexpr vec3 quat::Rotate(vec3 const &v) const
{
    mat3 matrix;
    ToRotationMatrixMV(matrix);
    return vec3(matrix.Row0().Dot(v), matrix.Row1().Dot(v), matrix.Row2().Dot(v));
}

constexpr void quat::ToRotationMatrixMV(mat3 &matrix) const
{
    float const x2 = 2.0f * x;
    float const y2 = 2.0f * y;
    float const z2 = 2.0f * z;
    matrix.Set(1.0f - y2 * y - z2 * z, x2 * y - z2 * w, x2 * z + y2 * w, //
               x2 * y + z2 * w, 1.0f - x2 * x - z2 * z, y2 * z - x2 * w, //
               x2 * z - y2 * w, y2 * z + x2 * w, 1.0f - x2 * x - y2 * y);
}

constexpr void quat::ToRotationMatrixMV(mat4 &matrix) const
{
    mat3 rotation;
    ToRotationMatrixMV(rotation);
    matrix = rotation;
}

constexpr void quat::ToRotationMatrixVM(mat3 &matrix) const
{
    mat3 rotation;
    ToRotationMatrixMV(rotation);
    matrix = rotation.Transposed();
}

constexpr void quat::ToRotationMatrixVM(mat4 &matrix) const
{
    mat3 rotation;
    ToRotationMatrixVM(rotation);
    matrix = rotation;
}

} // namespace quillmarsh

#endif
