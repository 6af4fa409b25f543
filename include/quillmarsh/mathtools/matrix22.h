// Matrix of two rows and two columns.
#ifndef QUILLMARSH_MATHTOOLS_MATRIX22_H
#define QUILLMARSH_MATHTOOLS_MATRIX22_H

#include <quillmarsh/mathtools/squarematrix.h>
#include <quillmarsh/mathtools/vector2.h>

namespace quillmarsh
{

class mat3;
class mat4;

/// 4 floats, row by row, and no other data: element (row, column) stands at `row * 2 + column`. A value type: any
/// thread.
class mat2 : public SquareMatrixOperations<mat2>
{
public:
    using SquareMatrixOperations<mat2>::Inverse;

    /// @name Constants
    /// Usable in constant expressions, and from any constructor.
    /// @{
    static mat2 const ZERO;
    static mat2 const IDENTITY;
    /// @}

    /// Leaves the elements unset.
    mat2() = default;
    /// Takes the elements, in order.
    constexpr mat2(float m00, float m01, float m10, float m11) : rows_{vec2(m00, m01), vec2(m10, m11)} {}
    /// Takes the rows, in order.
    constexpr mat2(vec2 const &row0, vec2 const &row1) : rows_{row0, row1} {}
    /// Takes the elements from an array, in order.
    explicit constexpr mat2(float const *elements) : rows_{vec2(elements), vec2(elements + 2)} {}
    /// Takes the upper left block (defined in matrix33.h).
    constexpr mat2(mat3 const &m);
    /// Takes the upper left block (defined in matrix44.h).
    constexpr mat2(mat4 const &m);

    /// @name Elements
    /// Set() stores all elements, by value or from an array. ToPtr() and the conversions give the address of the first;
    /// the others follow it in order, row by row.
    /// @{
    constexpr mat2 &Set(float m00, float m01, float m10, float m11) { return *this = mat2(m00, m01, m10, m11); }
    constexpr mat2 &Set(vec2 const &row0, vec2 const &row1) { return *this = mat2(row0, row1); }
    constexpr mat2 &Set(float const *elements) { return *this = mat2(elements); }
    constexpr float *ToPtr() { return &rows_[0].x; }
    constexpr float const *ToPtr() const { return &rows_[0].x; }
    constexpr operator float *() { return ToPtr(); }
    constexpr operator float const *() const { return ToPtr(); }
    /// Address of the first element of a row. Any integer type can be the index.
    template<typename Index>
    constexpr float *operator[](Index row)
    {
        return &rows_[row].x;
    }
    template<typename Index>
    constexpr float const *operator[](Index row) const
    {
        return &rows_[row].x;
    }
    /// @}

    /// @name Rows
    /// References to the rows. `index` is below the number of rows.
    /// @{
    constexpr vec2 &Row(unsigned int index) { return rows_[index]; }
    constexpr vec2 const &Row(unsigned int index) const { return rows_[index]; }
    constexpr vec2 &Row0() { return rows_[0]; }
    constexpr vec2 const &Row0() const { return rows_[0]; }
    constexpr vec2 &Row1() { return rows_[1]; }
    constexpr vec2 const &Row1() const { return rows_[1]; }
    /// @}

    /// @name Columns
    /// Copies of the columns. `index` is below the number of columns.
    /// @{
    constexpr vec2 Column(unsigned int index) const;
    constexpr void Column(unsigned int index, vec2 &column) const { column = Column(index); }
    constexpr vec2 Column0() const { return vec2(rows_[0].x, rows_[1].x); }
    constexpr void Column0(vec2 &column) const { column = Column0(); }
    constexpr vec2 Column1() const { return vec2(rows_[0].y, rows_[1].y); }
    constexpr void Column1(vec2 &column) const { column = Column1(); }
    /// @}

    /// Copy with rows and columns exchanged.
    constexpr mat2 Transposed() const { return mat2(Column0(), Column1()); }
    /// Sum of the diagonal.
    constexpr float Trace() const { return rows_[0].x + rows_[1].y; }
    /// Factor by which the matrix scales areas or volumes.
    constexpr float Determinant() const;

    /// Stores the inverse of the source: its adjugate times the inverse of its determinant. Fails, and stores IDENTITY,
    /// when the determinant is closer to 0 than MatrixInverseDefaultDeterminantTolerance.
    constexpr mat2 &Inverse(mat2 const &source, bool *failed = nullptr);

    /// @name Component by component
    /// See componentoperations.h.
    /// @{
    template<typename Function, typename... Operands>
    static constexpr mat2 Map(Function function, Operands const &...operands)
    {
        return mat2(vec2::Map(function, operands.rows_[0]...), vec2::Map(function, operands.rows_[1]...));
    }
    template<typename Predicate, typename... Operands>
    static constexpr bool All(Predicate predicate, Operands const &...operands)
    {
        return vec2::All(predicate, operands.rows_[0]...) && vec2::All(predicate, operands.rows_[1]...);
    }
    /// @}

    /// Product of two matrices; see SquareMatrixOperations.
    static constexpr mat2 Product(mat2 const &a, mat2 const &b);

private:
    vec2 rows_[2];
};

static_assert(sizeof(mat2) == 4 * sizeof(float));

inline constexpr mat2 mat2::ZERO(vec2::ZERO, vec2::ZERO);
inline constexpr mat2 mat2::IDENTITY(vec2::UNIT_X, vec2::UNIT_Y);

constexpr vec2 mat2::Column(unsigned int index) const
{
    return index == 0 ? Column0() : Column1();
}

constexpr mat2 mat2::Product(mat2 const &a, mat2 const &b)
{
    auto const row = [&b](vec2 const &left) { return b.rows_[0] * left.x + b.rows_[1] * left.y; };
    return mat2(row(a.rows_[0]), row(a.rows_[1]));
}

constexpr float mat2::Determinant() const
{
    return rows_[0].x * rows_[1].y - rows_[0].y * rows_[1].x;
}

constexpr mat2 &mat2::Inverse(mat2 const &source, bool *failed)
{
    float const determinant = source.Determinant();
    if (math_details::Absolute(determinant) < math_constants::MatrixInverseDefaultDeterminantTolerance)
        return FailInversion(failed);
    if (failed)
        *failed = false;
    mat2 const adjugate(source.rows_[1].y, -source.rows_[0].y, -source.rows_[1].x, source.rows_[0].x);
    return *this = adjugate * (1.0f / determinant);
}

} // namespace quillmarsh

#endif
