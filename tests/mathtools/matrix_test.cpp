#include <quillmarsh/mathtools/matrix44.h>

#include "tests/support/failures.h"
#include "tests/support/math_values.h"

namespace quillmarsh
{
namespace
{

using tests::HaveSameBits;
using tests::IsNear;
using tests::MakeRandom;

static_assert(mat3(mat2(1.0f, 2.0f, 3.0f, 4.0f)) == mat3(1.0f, 2.0f, 0.0f, 3.0f, 4.0f, 0.0f, 0.0f, 0.0f, 1.0f));
static_assert(mat2(mat4(mat2(1.0f, 2.0f, 3.0f, 4.0f))) == mat2(1.0f, 2.0f, 3.0f, 4.0f));
static_assert(mat4(mat3::IDENTITY * 2.0f).Column3() == vec4::UNIT_W);
static_assert((mat4::IDENTITY * 4.0f).Inverse() == mat4::IDENTITY * 0.25f);

template<typename T>
constexpr unsigned int s_order = sizeof(T) == sizeof(mat2)   ? 2
                                 : sizeof(T) == sizeof(mat3) ? 3
                                                             : 4;

template<typename T>
class EveryMatrix : public testing::Test
{
};
using AllMatrices = testing::Types<mat2, mat3, mat4>;
TYPED_TEST_SUITE(EveryMatrix, AllMatrices);

TYPED_TEST(EveryMatrix, ProductSumsFromTheFirstElementOn)
{
    using T = TypeParam;
    std::mt19937 engine(3);
    T const a = MakeRandom<T>(engine), b = MakeRandom<T>(engine);
    T expected;
    for (unsigned int i = 0; i < s_order<T>; ++i)
        for (unsigned int j = 0; j < s_order<T>; ++j)
        {
            expected[i][j] = a[i][0] * b[0][j];
            for (unsigned int k = 1; k < s_order<T>; ++k)
                expected[i][j] += a[i][k] * b[k][j];
        }
    EXPECT_TRUE(HaveSameBits(a * b, expected));
    T target = a;
    EXPECT_EQ(target.PostMul(b), expected);
    target = b;
    EXPECT_EQ(target.PreMul(a), expected);
    target = a;
    EXPECT_EQ(target *= target, a * a);
}

TYPED_TEST(EveryMatrix, RowsAreInPlaceAndColumnsAreCopies)
{
    using T = TypeParam;
    std::mt19937 engine(4);
    T const source = MakeRandom<T>(engine);
    T m;
    m.Transpose(source);
    for (unsigned int i = 0; i < s_order<T>; ++i)
    {
        EXPECT_EQ(m.Column(i), source.Row(i));
        for (unsigned int j = 0; j < s_order<T>; ++j)
        {
            EXPECT_EQ(m[i][j], source[j][i]);
            EXPECT_EQ(m.ToPtr()[i * s_order<T> + j], m[i][j]);
        }
    }
    m.Row(1).x = 7.0f;
    EXPECT_EQ(m[1][0], 7.0f);
    EXPECT_EQ(m.SetIdentity().Trace(), static_cast<float>(s_order<T>));
}

TYPED_TEST(EveryMatrix, InverseUndoesAndDeterminantMultiplies)
{
    using T = TypeParam;
    std::mt19937 engine(5);
    for (int i = 0; i < 200; ++i)
    {
        T const a = MakeRandom<T>(engine), b = MakeRandom<T>(engine);
        EXPECT_NEAR((a * b).Determinant(), a.Determinant() * b.Determinant(), 1e-4f);
        if (std::fabs(a.Determinant()) < 0.05f)
            continue;
        bool failed = true;
        T const inverse = a.Inverse(&failed);
        EXPECT_FALSE(failed);
        EXPECT_TRUE(IsNear(a * inverse, T::IDENTITY, 1e-3f));
        T inPlace = a;
        EXPECT_EQ(inPlace.InvertE(), inverse);
        EXPECT_EQ(inPlace.Inverse(inPlace), inverse.Inverse());
    }
}

TYPED_TEST(EveryMatrix, UninvertibleGivesIdentityOrThrows)
{
    using T = TypeParam;
    bool failed = false;
    EXPECT_EQ(T::ZERO.Inverse(&failed), T::IDENTITY);
    EXPECT_TRUE(failed);
    T m = T::ZERO;
    EXPECT_EQ(m.Invert(nullptr), T::IDENTITY);
    m = T::ZERO;
    EXPECT_EQ(tests::MessageOf<MatrixNotInvertibleException>([&] { m.InvertE(); }), "Uninvertible matrix.");
}

template<typename T>
bool IsUninvertible(T const &matrix)
{
    bool failed = false;
    static_cast<void>(matrix.Inverse(&failed));
    return failed;
}

TEST(Matrix, BoundariesOfInversionDiffer)
{
    float const boundary = 1e-6f;
    float const below = std::nextafter(boundary, 0.0f);
    float const above = std::nextafter(boundary, 1.0f);
    auto const fails2 = [](float d) { return IsUninvertible(mat2(d, 0.0f, 0.0f, -1.0f)); };
    auto const fails3 = [](float d) { return IsUninvertible(mat3(d, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f)); };
    auto const fails4 = [](float d)
    {
        mat4 m = mat4::IDENTITY;
        m[2][2] = -d;
        return IsUninvertible(m);
    };
    EXPECT_FALSE(fails2(boundary));
    EXPECT_TRUE(fails2(below));
    EXPECT_FALSE(fails3(boundary));
    EXPECT_TRUE(fails3(below));
    EXPECT_FALSE(fails4(above));
    EXPECT_TRUE(fails4(boundary));
}

TEST(Matrix, InverseThatDestroysItsSourceIsTheSame)
{
    std::mt19937 engine(6);
    mat4 m = MakeRandom<mat4>(engine);
    mat4 const inverse = m.Inverse();
    EXPECT_EQ(mat4().InverseNCE(m), inverse);
    mat4 zero = mat4::ZERO;
    EXPECT_THROW(mat4().InverseNCE(zero), MatrixNotInvertibleException);
}

} // namespace
} // namespace quillmarsh
