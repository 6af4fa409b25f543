// Matrix of three rows and three columns.
#ifndef QUILLMARSH_MATHTOOLS_MATRIX33_H
#define QUILLMARSH_MATHTOOLS_MATRIX33_H

#include <quillmarsh/mathtools/matrix22.h>
#include <quillmarsh/mathtools/vector3.h>

namespace quillmarsh
{

class mat4;

/// 9 floats, row by row, and no other data: element (row, column) stands at `row * 3 + column`. A value type: any
/// thread.
class mat3 : public SquareMatrixOperations<mat3>
{
public:
    using SquareMatrixOperations<mat3>::Inverse;

    /// @name Constants
    /// Usable in constant expressions, and from any constructor.
    /// @{
    static mat3 const ZERO;
    static mat3 const IDENTITY;
    /// @}

    /// Leaves the elements unset.
    mat3() = default;
    /// Takes the elements, in order.
    constexpr mat3(float m00, float m01, float m02, float m10, float m11, float m12, float m20, float m21, float m22)
        : rows_{vec3(m00, m01, m02), vec3(m10, m11, m12), vec3(m20, m21, m22)}
    {
    }
    /// Takes the rows, in order.
    constexpr mat3(vec3 const &row0, vec3 const &row1, vec3 const &row2) : rows_{row0, row1, row2} {}
    /// Takes the elements from an array, in order.
    explicit constexpr mat3(float const *elements) : rows_{vec3(elements), vec3(elements + 3), vec3(elements + 6)} {}
    /// Takes the upper left block; the rest is that of the identity.
    constexpr mat3(mat2 const &m) : mat3(m.Row0(), m.Row1(), vec3::UNIT_Z) {}
    /// Takes the upper left block (defined in matrix44.h).
    constexpr mat3(mat4 const &m);

    /// @name Elements
    /// Set() stores all elements, by value or from an array. ToPtr() and the conversions give the address of the first;
    /// the others follow it in order, row by row.
    /// @{
    constexpr mat3 &Set(float m00, float m01, float m02, float m10, float m11, float m12, float m20, float m21,
                        float m22)
    {
        return *this = mat3(m00, m01, m02, m10, m11, m12, m20, m21, m22);
    }
    constexpr mat3 &Set(vec3 const &row0, vec3 const &row1, vec3 const &row2) { return *this = mat3(row0, row1, row2); }
    constexpr mat3 &Set(float const *elements) { return *this = mat3(elements); }
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
    constexpr vec3 &Row(unsigned int index) { return rows_[index]; }
    constexpr vec3 const &Row(unsigned int index) const { return rows_[index]; }
    constexpr vec3 &Row0() { return rows_[0]; }
    constexpr vec3 const &Row0() const { return rows_[0]; }
    constexpr vec3 &Row1() { return rows_[1]; }
    constexpr vec3 const &Row1() const { return rows_[1]; }
    constexpr vec3 &Row2() { return rows_[2]; }
    constexpr vec3 const &Row2() const { return rows_[2]; }
    /// @}

    /// @name Columns
    /// Copies of the columns. `index` is below the number of columns.
    /// @{
    constexpr vec3 Column(unsigned int index) const;
    constexpr void Column(unsigned int index, vec3 &column) const { column = Column(index); }
    constexpr vec3 Column0() const { return vec3(rows_[0].x, rows_[1].x, rows_[2].x); }
    constexpr void Column0(vec3 &column) const { column = Column0(); }
    constexpr vec3 Column1() const { return vec3(rows_[0].y, rows_[1].y, rows_[2].y); }
    constexpr void Column1(vec3 &column) const { column = Column1(); }
    constexpr vec3 Column2() const { return vec3(rows_[0].z, rows_[1].z, rows_[2].z); }
    constexpr void Column2(vec3 &column) const { column = Column2(); }
    /// @}

    /// Copy with rows and columns exchanged.
    constexpr mat3 Transposed() const { return mat3(Column0(), Column1(), Column2()); }
    /// Sum of the diagonal.
    constexpr float Trace() const { return rows_[0].x + rows_[1].y + rows_[2].z; }
    /// Factor by which the matrix scales areas or volumes.
    constexpr float Determinant() const;

    /// Stores the inverse of the source: its adjugate divided by its determinant. Fails, and stores IDENTITY, when the
    /// determinant is closer to 0 than MatrixInverseDefaultDeterminantTolerance.
    constexpr mat3 &Inverse(mat3 const &source, bool *failed = nullptr);

    /// @name Component by component
    /// See componentoperations.h.
    /// @{
    template<typename Function, typename... Operands>
    static constexpr mat3 Map(Function function, Operands const &...operands)
    {
        return mat3(vec3::Map(function, operands.rows_[0]...), vec3::Map(function, operands.rows_[1]...),
                    vec3::Map(function, operands.rows_[2]...));
    }
    template<typename Predicate, typename... Operands>
    static constexpr bool All(Predicate predicate, Operands const &...operands)
    {
        return vec3::All(predicate, operands.rows_[0]...) && vec3::All(predicate, operands.rows_[1]...) &&
               vec3::All(predicate, operands.rows_[2]...);
    }
    /// @}

    /// Product of two matrices; see SquareMatrixOperations.
    static constexpr mat3 Product(mat3 const &a, mat3 const &b);

private:
    constexpr mat3 Adjugate() const;

    vec3 rows_[3];
};

static_assert(sizeof(mat3) == 9 * sizeof(float));

inline constexpr mat3 mat3::ZERO(vec3::ZERO, vec3::ZERO, vec3::ZERO);
inline constexpr mat3 mat3::IDENTITY(vec3::UNIT_X, vec3::UNIT_Y, vec3::UNIT_Z);

constexpr mat2::mat2(mat3 const &m) : mat2(m.Row0(), m.Row1()) {}

constexpr vec3 mat3::Column(unsigned int index) const
{
    return index == 0 ? Column0() : index == 1 ? Column1() : Column2();
}

constexpr mat3 mat3::Product(mat3 const &a, mat3 const &b)
{
    auto const row = [&b](vec3 const &left) { return b.rows_[0] * left.x + b.rows_[1] * left.y + b.rows_[2] * left.z; };
    return mat3(row(a.rows_[0]), row(a.rows_[1]), row(a.rows_[2]));
}

constexpr mat3 mat3::Adjugate() const
{
    auto const &[a, b, c] = rows_;
    return mat3(b.y * c.z - b.z * c.y, a.z * c.y - a.y * c.z, a.y * b.z - a.z * b.y, //
                b.z * c.x - b.x * c.z, a.x * c.z - a.z * c.x, a.z * b.x - a.x * b.z, //
                b.x * c.y - b.y * c.x, a.y * c.x - a.x * c.y, a.x * b.y - a.y * b.x);
}

constexpr float mat3::Determinant() const
{
    return rows_[0].Dot(Adjugate().Column0());
}

constexpr mat3 &mat3::Inverse(mat3 const &source, bool *failed)
{
    mat3 const adjugate = source.Adjugate();
    float const determinant = source.rows_[0].Dot(adjugate.Column0());
    if (math_details::Absolute(determinant) < math_constants::MatrixInverseDefaultDeterminantTolerance)
        return FailInversion(failed);
    if (failed)
        *failed = false;
    return *this = adjugate / determinant;
}

} // namespace quillmarsh

#endif
