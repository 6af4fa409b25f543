// Operations that the square matrices have in common.
#ifndef QUILLMARSH_MATHTOOLS_SQUAREMATRIX_H
#define QUILLMARSH_MATHTOOLS_SQUAREMATRIX_H

#include <quillmarsh/mathtools/componentoperations.h>
#include <quillmarsh/mathtools/mathserializer.h>

namespace quillmarsh
{

namespace math_details
{

/// Throws MatrixNotInvertibleException with "Uninvertible matrix.".
[[noreturn]] QUILLMARSH_API void ThrowUninvertibleMatrix();

} // namespace math_details

/// Base of a square matrix type T, without data. Value types: any thread.
///
/// Matrices are stored row by row. In functions with the suffix `MV` they are applied to column vectors, and in
/// functions with the suffix `VM` to row vectors; the two matrices of a transformation are the transpose of each other.
///
/// T supplies `T::Product(a, b)`, `Transposed()` and `Inverse(source, failed)`; see also componentoperations.h.
template<typename T>
class SquareMatrixOperations : public LinearOperations<T>, public NoiseFilterOperations<T>
{
public:
    static constexpr float s_defaultNoiseTolerance = math_constants::MatrixNoiseFilterDefaultTolerance;

    using LinearOperations<T>::Mul;
    using LinearOperations<T>::operator*=;

    /// @name Products
    /// Element (i, j) is the sum over k, from 0 up, of the left (i, k) times the right (k, j).
    /// @{
    constexpr T &Mul(T const &a, T const &b) { return Self() = T::Product(a, b); }
    constexpr T &Mul(T const &other) { return PostMul(other); }
    /// The object becomes the product of itself and `other`.
    constexpr T &PostMul(T const &other) { return Self() = T::Product(Self(), other); }
    /// The object becomes the product of `other` and itself.
    constexpr T &PreMul(T const &other) { return Self() = T::Product(other, Self()); }
    constexpr T &operator*=(T const &other) { return PostMul(other); }
    friend constexpr T operator*(T const &a, T const &b) { return T::Product(a, b); }
    /// @}

    /// @name Transposition
    /// Exchanges rows and columns: of the source, or of the object itself.
    /// @{
    constexpr T &Transpose() { return Self() = Self().Transposed(); }
    constexpr T &Transpose(T const &source) { return Self() = source.Transposed(); }
    /// @}

    constexpr T &SetIdentity() { return Self() = T::IDENTITY; }

    /// @name Inversion
    /// A matrix that cannot be inverted gives IDENTITY, and sets `failed` to true, unless that is null; the `E` forms
    /// throw MatrixNotInvertibleException, "Uninvertible matrix.", instead. `Invert` changes the object itself.
    /// @{
    constexpr T Inverse(bool *failed = nullptr) const
    {
        T result;
        result.Inverse(Self(), failed);
        return result;
    }
    constexpr T &Invert(bool *failed = nullptr) { return Self() = Inverse(failed); }
    constexpr T InverseE() const
    {
        T result;
        result.InverseE(Self());
        return result;
    }
    constexpr T &InverseE(T const &source)
    {
        bool failed = false;
        Self().Inverse(source, &failed);
        if (failed)
            math_details::ThrowUninvertibleMatrix();
        return Self();
    }
    constexpr T &InvertE() { return InverseE(T(Self())); }
    /// @}

protected:
    /// Stores the result of an inversion that failed.
    constexpr T &FailInversion(bool *failed)
    {
        if (failed)
            *failed = true;
        return SetIdentity();
    }

private:
    constexpr T &Self() { return static_cast<T &>(*this); }
    constexpr T const &Self() const { return static_cast<T const &>(*this); }
};

} // namespace quillmarsh

#endif
