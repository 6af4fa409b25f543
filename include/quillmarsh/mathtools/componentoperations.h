// Operations that vectors, matrices, quaternions and colours have in common, written once.
#ifndef QUILLMARSH_MATHTOOLS_COMPONENTOPERATIONS_H
#define QUILLMARSH_MATHTOOLS_COMPONENTOPERATIONS_H

#include <quillmarsh/mathtools/mathconstants.h>

namespace quillmarsh
{

/// Steps that the operations below share.
namespace math_details
{

/// Absolute value; also for constant expressions.
constexpr float Absolute(float value)
{
    return value < 0.0f ? -value : value;
}

/// True when the value is zero within the tolerance, whose ends count as zero.
constexpr bool IsNoise(float value, float tolerance)
{
    return -tolerance <= value && value <= tolerance;
}

} // namespace math_details

// The templates below are bases of the type T itself. They hold no data, and reach the components by two functions of
// T: `T::Map(function, operands...)` makes a T of what the function gives for each component of the operands, and
// `T::All(predicate, operands...)` tells whether the predicate holds for all of them.
//
// An operation with the operands as its arguments writes its result to the object; the operands may be the object
// itself. Operations that change the object return it. Value types all: any thread.

/// Sum, difference, product and quotient with a number, negation, exact comparison.
template<typename T>
class LinearOperations
{
public:
    /// @name Named forms
    /// Each stores its result in the object. With one argument less, the object is the left operand.
    /// @{
    constexpr T &Add(T const &a, T const &b)
    {
        return Self() = T::Map([](float x, float y) { return x + y; }, a, b);
    }
    constexpr T &Add(T const &other) { return Add(Self(), other); }
    constexpr T &Sub(T const &a, T const &b)
    {
        return Self() = T::Map([](float x, float y) { return x - y; }, a, b);
    }
    constexpr T &Sub(T const &other) { return Sub(Self(), other); }
    constexpr T &Mul(T const &a, float factor)
    {
        return Self() = T::Map([factor](float x) { return x * factor; }, a);
    }
    constexpr T &Mul(float factor) { return Mul(Self(), factor); }
    constexpr T &Div(T const &a, float divisor)
    {
        return Self() = T::Map([divisor](float x) { return x / divisor; }, a);
    }
    constexpr T &Div(float divisor) { return Div(Self(), divisor); }
    constexpr T &Neg(T const &a)
    {
        return Self() = T::Map([](float x) { return -x; }, a);
    }
    constexpr T &Neg() { return Neg(Self()); }
    /// @}

    /// @name Operators
    /// They do the same with the usual signs. Comparison is exact.
    /// @{
    constexpr T &operator+=(T const &other) { return Self().Add(Self(), other); }
    constexpr T &operator-=(T const &other) { return Self().Sub(Self(), other); }
    constexpr T &operator*=(float factor) { return Self().Mul(Self(), factor); }
    constexpr T &operator/=(float divisor) { return Self().Div(Self(), divisor); }
    friend constexpr T operator+(T const &a, T const &b)
    {
        T result;
        return result.Add(a, b);
    }
    friend constexpr T operator-(T const &a, T const &b)
    {
        T result;
        return result.Sub(a, b);
    }
    friend constexpr T operator*(T const &a, float factor)
    {
        T result;
        return result.Mul(a, factor);
    }
    friend constexpr T operator/(T const &a, float divisor)
    {
        T result;
        return result.Div(a, divisor);
    }
    friend constexpr T operator+(T const &a) { return a; }
    friend constexpr T operator-(T const &a)
    {
        T result;
        return result.Neg(a);
    }
    friend constexpr bool operator==(T const &a, T const &b)
    {
        return T::All([](float x, float y) { return x == y; }, a, b);
    }
    friend constexpr bool operator!=(T const &a, T const &b) { return !(a == b); }
    /// @}

private:
    constexpr T &Self() { return static_cast<T &>(*this); }
};

/// Product and quotient of corresponding components.
template<typename T>
class ComponentwiseOperations : public LinearOperations<T>
{
public:
    using LinearOperations<T>::Mul;
    using LinearOperations<T>::Div;
    using LinearOperations<T>::operator*=;
    using LinearOperations<T>::operator/=;

    /// @name Component by component
    /// As the operations with a number, but with the corresponding component of the other operand.
    /// @{
    constexpr T &Mul(T const &a, T const &b)
    {
        return Self() = T::Map([](float x, float y) { return x * y; }, a, b);
    }
    constexpr T &Mul(T const &other) { return Mul(Self(), other); }
    constexpr T &Div(T const &a, T const &b)
    {
        return Self() = T::Map([](float x, float y) { return x / y; }, a, b);
    }
    constexpr T &Div(T const &other) { return Div(Self(), other); }
    constexpr T &operator*=(T const &other) { return Mul(Self(), other); }
    constexpr T &operator/=(T const &other) { return Div(Self(), other); }
    friend constexpr T operator*(T const &a, T const &b)
    {
        T result;
        return result.Mul(a, b);
    }
    friend constexpr T operator/(T const &a, T const &b)
    {
        T result;
        return result.Div(a, b);
    }
    /// @}

private:
    constexpr T &Self() { return static_cast<T &>(*this); }
};

/// Removal of numbers that differ from zero only by the rounding of earlier operations.
template<typename T>
class NoiseFilterOperations
{
public:
    /// Sets every component from minus to plus `tolerance`, ends included, to 0.
    constexpr T &NoiseFilter(float tolerance = T::s_defaultNoiseTolerance)
    {
        auto const filter = [tolerance](float x) { return math_details::IsNoise(x, tolerance) ? 0.0f : x; };
        T &self = static_cast<T &>(*this);
        return self = T::Map(filter, self);
    }
    /// Filters the object in place as well: the source is not used.
    constexpr T &NoiseFilter(T const & /*source*/, float tolerance = T::s_defaultNoiseTolerance)
    {
        return NoiseFilter(tolerance);
    }
    /// Filtered copy.
    constexpr T NoiseFiltered(float tolerance = T::s_defaultNoiseTolerance) const
    {
        T result = static_cast<T const &>(*this);
        return result.NoiseFilter(tolerance);
    }
};

/// Length, and scaling to length 1.
template<typename T>
class LengthOperations
{
public:
    /// Square root of the sum of the squares.
    float Length() const { return std::sqrt(Self().Dot(Self())); }

    /// The object scaled to length 1. If its length is not above 0, the result is INFINITY, so that the failure does
    /// not pass as a value.
    T Unit() const
    {
        float const length = Length();
        return length > 0.0f ? Self() * (1.0f / length) : T::INFINITY;
    }
    /// Stores `a` scaled to length 1.
    T &Unit(T const &a)
    {
        T &self = static_cast<T &>(*this);
        return self = a.Unit();
    }
    /// Scales the object itself; see Unit().
    T &Unitize() { return Unit(Self()); }

private:
    constexpr T const &Self() const { return static_cast<T const &>(*this); }
};

/// Operations of all vectors.
template<typename T>
class VectorOperations : public ComponentwiseOperations<T>, public NoiseFilterOperations<T>
{
public:
    static constexpr float s_defaultNoiseTolerance = math_constants::VectorNoiseFilterDefaultTolerance;

    /// @name Tests for zero
    /// They are exact, or take a tolerance whose ends count as zero.
    /// @{
    constexpr bool IsZero() const { return IsZero(0.0f); }
    constexpr bool IsZero(float tolerance) const
    {
        return T::All([tolerance](float x) { return math_details::IsNoise(x, tolerance); }, Self());
    }
    constexpr bool HasZeroComponent() const { return HasZeroComponent(0.0f); }
    constexpr bool HasZeroComponent(float tolerance) const
    {
        return !T::All([tolerance](float x) { return !math_details::IsNoise(x, tolerance); }, Self());
    }
    /// @}

private:
    constexpr T const &Self() const { return static_cast<T const &>(*this); }
};

/// Operations of the vectors of the plane and of space.
template<typename T>
class SpatialVectorOperations : public VectorOperations<T>, public LengthOperations<T>
{
public:
    /// @name Measures
    /// Square of the length, and distances to another vector.
    /// @{
    constexpr float LengthSquared() const { return Self().Dot(Self()); }
    float Distance(T const &other) const { return (Self() - other).Length(); }
    constexpr float DistanceSquared(T const &other) const { return (Self() - other).LengthSquared(); }
    /// @}

    /// @name Projections
    /// `ProjectionTo` and `ProjectTo` project onto the line of any vector; a zero vector is not detected, and gives
    /// NaN. The `Unit` forms need a vector of unit length.
    /// @{
    constexpr T ProjectionTo(T const &target) const { return target * (Self().Dot(target) / target.LengthSquared()); }
    constexpr T &ProjectionTo(T const &source, T const &target) { return Self() = source.ProjectionTo(target); }
    constexpr T &ProjectTo(T const &target) { return Self() = ProjectionTo(target); }
    constexpr T ProjectionToUnit(T const &unit) const { return unit * Self().Dot(unit); }
    constexpr T &ProjectionToUnit(T const &source, T const &unit) { return Self() = source.ProjectionToUnit(unit); }
    constexpr T &ProjectToUnit(T const &unit) { return Self() = ProjectionToUnit(unit); }
    /// @}

    /// @name Comparisons with a tolerance
    /// `Orthogonal` and `Parallel` compare the cosine of the angle, and need unit vectors. Opposite vectors are
    /// parallel.
    /// @{
    constexpr bool Equal(T const &other, float radius = math_constants::VectorEqualTestDefaultToleranceRadius) const
    {
        return DistanceSquared(other) <= radius * radius;
    }
    constexpr bool Orthogonal(T const &other,
                              float maxCosAngle = math_constants::VectorOrthogonalTestDefaultMaxCosAngle) const
    {
        return math_details::Absolute(Self().Dot(other)) <= maxCosAngle;
    }
    constexpr bool Parallel(T const &other,
                            float minCosAngle = math_constants::VectorParallelTestDefaultMinCosAngle) const
    {
        return math_details::Absolute(Self().Dot(other)) >= minCosAngle;
    }
    /// @}

private:
    constexpr T &Self() { return static_cast<T &>(*this); }
    constexpr T const &Self() const { return static_cast<T const &>(*this); }
};

} // namespace quillmarsh

#endif
