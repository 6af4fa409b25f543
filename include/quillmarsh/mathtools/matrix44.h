// Matrix of four rows and four columns.
#ifndef QUILLMARSH_MATHTOOLS_MATRIX44_H
#define QUILLMARSH_MATHTOOLS_MATRIX44_H

#include <quillmarsh/mathtools/matrix33.h>
#include <quillmarsh/mathtools/vector4.h>

#include <bit>
#include <type_traits>
#include <utility>

namespace quillmarsh
{

/// 16 floats, row by row, and no other data: element (row, column) stands at `row * 4 + column`. A value type: any
/// thread.
class mat4 : public SquareMatrixOperations<mat4>
{
public:
    using SquareMatrixOperations<mat4>::Inverse;

    /// @name Constants
    /// Usable in constant expressions, and from any constructor.
    /// @{
    static mat4 const ZERO;
    static mat4 const IDENTITY;
    /// @}

    /// Leaves the elements unset.
    mat4() = default;
    /// Takes the elements, in order.
    constexpr mat4(float m00, float m01, float m02, float m03, float m10, float m11, float m12, float m13, float m20,
                   float m21, float m22, float m23, float m30, float m31, float m32, float m33)
        : rows_{vec4(m00, m01, m02, m03), vec4(m10, m11, m12, m13), vec4(m20, m21, m22, m23), vec4(m30, m31, m32, m33)}
    {
    }
    /// Takes the rows, in order.
    constexpr mat4(vec4 const &row0, vec4 const &row1, vec4 const &row2, vec4 const &row3)
        : rows_{row0, row1, row2, row3}
    {
    }
    /// Takes the elements from an array, in order.
    explicit constexpr mat4(float const *elements)
        : rows_{vec4(elements), vec4(elements + 4), vec4(elements + 8), vec4(elements + 12)}
    {
    }
    /// Takes the upper left block; the rest is that of the identity.
    /// @{
    constexpr mat4(mat2 const &m) : mat4(Extended(m.Row0()), Extended(m.Row1()), vec4::UNIT_Z, vec4::UNIT_W) {}
    constexpr mat4(mat3 const &m) : mat4(Extended(m.Row0()), Extended(m.Row1()), Extended(m.Row2()), vec4::UNIT_W) {}
    /// @}

    /// @name Elements
    /// Set() stores all elements, by value or from an array. ToPtr() and the conversions give the address of the first;
    /// the others follow it in order, row by row.
    /// @{
    constexpr mat4 &Set(float m00, float m01, float m02, float m03, float m10, float m11, float m12, float m13,
                        float m20, float m21, float m22, float m23, float m30, float m31, float m32, float m33)
    {
        return *this = mat4(m00, m01, m02, m03, m10, m11, m12, m13, m20, m21, m22, m23, m30, m31, m32, m33);
    }
    constexpr mat4 &Set(vec4 const &row0, vec4 const &row1, vec4 const &row2, vec4 const &row3)
    {
        return *this = mat4(row0, row1, row2, row3);
    }
    constexpr mat4 &Set(float const *elements) { return *this = mat4(elements); }
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
    constexpr vec4 &Row(unsigned int index) { return rows_[index]; }
    constexpr vec4 const &Row(unsigned int index) const { return rows_[index]; }
    constexpr vec4 &Row0() { return rows_[0]; }
    constexpr vec4 const &Row0() const { return rows_[0]; }
    constexpr vec4 &Row1() { return rows_[1]; }
    constexpr vec4 const &Row1() const { return rows_[1]; }
    constexpr vec4 &Row2() { return rows_[2]; }
    constexpr vec4 const &Row2() const { return rows_[2]; }
    constexpr vec4 &Row3() { return rows_[3]; }
    constexpr vec4 const &Row3() const { return rows_[3]; }
    /// @}

    /// @name Columns
    /// Copies of the columns. `index` is below the number of columns.
    /// @{
    constexpr vec4 Column(unsigned int index) const;
    constexpr void Column(unsigned int index, vec4 &column) const { column = Column(index); }
    constexpr vec4 Column0() const { return vec4(rows_[0].x, rows_[1].x, rows_[2].x, rows_[3].x); }
    constexpr void Column0(vec4 &column) const { column = Column0(); }
    constexpr vec4 Column1() const { return vec4(rows_[0].y, rows_[1].y, rows_[2].y, rows_[3].y); }
    constexpr void Column1(vec4 &column) const { column = Column1(); }
    constexpr vec4 Column2() const { return vec4(rows_[0].z, rows_[1].z, rows_[2].z, rows_[3].z); }
    constexpr void Column2(vec4 &column) const { column = Column2(); }
    constexpr vec4 Column3() const { return vec4(rows_[0].w, rows_[1].w, rows_[2].w, rows_[3].w); }
    constexpr void Column3(vec4 &column) const { column = Column3(); }
    /// @}

    /// Copy with rows and columns exchanged.
    constexpr mat4 Transposed() const { return mat4(Column0(), Column1(), Column2(), Column3()); }
    /// Sum of the diagonal.
    constexpr float Trace() const { return rows_[0].x + rows_[1].y + rows_[2].z + rows_[3].w; }
    /// Factor by which the matrix scales areas or volumes.
    constexpr float Determinant() const;

    /// Stores the inverse of the source, by elimination with the largest element of each column as its pivot. Fails,
    /// and stores IDENTITY, when a pivot is not above MatrixInverseDefaultDividerTolerance.
    constexpr mat4 &Inverse(mat4 const &source, bool *failed = nullptr);

    /// @name Inversion without a copy
    /// Each stores the inverse of the source, and changes the source meanwhile. The `E` form throws where the other
    /// fails.
    /// @{
    constexpr mat4 &InverseNC(mat4 &source, bool *failed = nullptr);
    constexpr mat4 &InverseNCE(mat4 &source);
    /// @}

    /// @name Component by component
    /// See componentoperations.h.
    /// @{
    template<typename Function, typename... Operands>
    static constexpr mat4 Map(Function function, Operands const &...operands)
    {
        return mat4(vec4::Map(function, operands.rows_[0]...), vec4::Map(function, operands.rows_[1]...),
                    vec4::Map(function, operands.rows_[2]...), vec4::Map(function, operands.rows_[3]...));
    }
    template<typename Predicate, typename... Operands>
    static constexpr bool All(Predicate predicate, Operands const &...operands)
    {
        return vec4::All(predicate, operands.rows_[0]...) && vec4::All(predicate, operands.rows_[1]...) &&
               vec4::All(predicate, operands.rows_[2]...) && vec4::All(predicate, operands.rows_[3]...);
    }
    /// @}

    /// Product of two matrices; see SquareMatrixOperations.
    static constexpr mat4 Product(mat4 const &a, mat4 const &b);

private:
    /// The product with four columns at a time: the same sums in the same order.
    static mat4 ProductInLanes(mat4 const &a, mat4 const &b);
    static constexpr vec4 Extended(vec3 const &row) { return vec4(row.x, row.y, row.z, 0.0f); }

    vec4 rows_[4];
};

static_assert(sizeof(mat4) == 16 * sizeof(float));

inline constexpr mat4 mat4::ZERO(vec4::ZERO, vec4::ZERO, vec4::ZERO, vec4::ZERO);
inline constexpr mat4 mat4::IDENTITY(vec4::UNIT_X, vec4::UNIT_Y, vec4::UNIT_Z, vec4::UNIT_W);

constexpr mat2::mat2(mat4 const &m) : mat2(m.Row0(), m.Row1()) {}

constexpr mat3::mat3(mat4 const &m) : mat3(m.Row0(), m.Row1(), m.Row2()) {}

constexpr vec4 mat4::Column(unsigned int index) const
{
    return index == 0 ? Column0() : index == 1 ? Column1() : index == 2 ? Column2() : Column3();
}

constexpr mat4 mat4::Product(mat4 const &a, mat4 const &b)
{
    if (!std::is_constant_evaluated())
        return ProductInLanes(a, b);
    auto const row = [&b](vec4 const &left)
    { return b.rows_[0] * left.x + b.rows_[1] * left.y + b.rows_[2] * left.z + b.rows_[3] * left.w; };
    return mat4(row(a.rows_[0]), row(a.rows_[1]), row(a.rows_[2]), row(a.rows_[3]));
}

inline mat4 mat4::ProductInLanes(mat4 const &a, mat4 const &b)
{
    using Floats = float __attribute__((vector_size(16)));
    auto const load = [](vec4 const &row) { return std::bit_cast<Floats>(row); };
    Floats const b0 = load(b.rows_[0]);
    Floats const b1 = load(b.rows_[1]);
    Floats const b2 = load(b.rows_[2]);
    Floats const b3 = load(b.rows_[3]);
    auto const row = [&](vec4 const &left)
    { return std::bit_cast<vec4>(b0 * left.x + b1 * left.y + b2 * left.z + b3 * left.w); };
    return mat4(row(a.rows_[0]), row(a.rows_[1]), row(a.rows_[2]), row(a.rows_[3]));
}

constexpr float mat4::Determinant() const
{
    // By the determinants of two rows each, upper and lower half.
    auto const &[a, b, c, d] = rows_;
    float const upper01 = a.x * b.y - a.y * b.x;
    float const upper02 = a.x * b.z - a.z * b.x;
    float const upper03 = a.x * b.w - a.w * b.x;
    float const upper12 = a.y * b.z - a.z * b.y;
    float const upper13 = a.y * b.w - a.w * b.y;
    float const upper23 = a.z * b.w - a.w * b.z;
    float const lower01 = c.x * d.y - c.y * d.x;
    float const lower02 = c.x * d.z - c.z * d.x;
    float const lower03 = c.x * d.w - c.w * d.x;
    float const lower12 = c.y * d.z - c.z * d.y;
    float const lower13 = c.y * d.w - c.w * d.y;
    float const lower23 = c.z * d.w - c.w * d.z;
    return upper01 * lower23 - upper02 * lower13 + upper03 * lower12 + upper12 * lower03 - upper13 * lower02 +
           upper23 * lower01;
}

namespace math_details
{

/// Component by index, 0 the first.
template<unsigned int index>
constexpr float Element(vec4 const &row)
{
    return index == 0 ? row.x : index == 1 ? row.y : index == 2 ? row.z : row.w;
}

/// Makes column `index` of the source equal to that of the identity, by operations on rows that are also done to the
/// result. Returns false when there is no pivot. Both are given by the addresses of their rows, so that the rows stay
/// in registers.
template<unsigned int index, typename Row>
constexpr bool Eliminate(Row *const (&source)[4], Row *const (&result)[4])
{
    unsigned int pivotRow = index;
    float pivotWeight = Absolute(Element<index>(*source[index]));
    for (unsigned int row = index + 1; row < 4; ++row)
    {
        float const weight = Absolute(Element<index>(*source[row]));
        if (weight > pivotWeight)
        {
            pivotRow = row;
            pivotWeight = weight;
        }
    }
    if (pivotWeight <= math_constants::MatrixInverseDefaultDividerTolerance)
        return false;
    for (unsigned int row = index + 1; row < 4; ++row)
    {
        if (row == pivotRow)
        {
            std::swap(*source[index], *source[row]);
            std::swap(*result[index], *result[row]);
        }
    }

    float const scale = 1.0f / Element<index>(*source[index]);
    *source[index] = *source[index] * scale;
    *result[index] = *result[index] * scale;
    for (unsigned int row = 0; row < 4; ++row)
    {
        if (row == index)
            continue;
        float const factor = Element<index>(*source[row]);
        *source[row] = *source[row] - *source[index] * factor;
        *result[row] = *result[row] - *result[index] * factor;
    }
    return true;
}

/// Turns the source into the identity, and the result, which begins as the identity, into the inverse of the source.
template<typename Row>
constexpr bool EliminateAll(Row (&source)[4], Row (&result)[4])
{
    Row *const sourceRows[4] = {&source[0], &source[1], &source[2], &source[3]};
    Row *const resultRows[4] = {&result[0], &result[1], &result[2], &result[3]};
    return Eliminate<0>(sourceRows, resultRows) && Eliminate<1>(sourceRows, resultRows) &&
           Eliminate<2>(sourceRows, resultRows) && Eliminate<3>(sourceRows, resultRows);
}

} // namespace math_details

constexpr mat4 &mat4::InverseNC(mat4 &source, bool *failed)
{
    mat4 result = IDENTITY;
    if (!math_details::EliminateAll(source.rows_, result.rows_))
        return FailInversion(failed);
    if (failed)
        *failed = false;
    return *this = result;
}

constexpr mat4 &mat4::Inverse(mat4 const &source, bool *failed)
{
    mat4 scratch = source;
    return InverseNC(scratch, failed);
}

constexpr mat4 &mat4::InverseNCE(mat4 &source)
{
    bool failed = false;
    InverseNC(source, &failed);
    if (failed)
        math_details::ThrowUninvertibleMatrix();
    return *this;
}

} // namespace quillmarsh

#endif
