#include <quillmarsh/mathtools/vector4.h>

#include "tests/support/math_values.h"

// The constants also work after headers that define macros of the same names.
#include <math.h>

namespace quillmarsh
{
namespace
{

using tests::IsNear;
using tests::MakeRandom;

// Constants are initialised before any constructor of another file runs, and arithmetic works in constant expressions.
static_assert(vec3::ONE * vec3(1.0f, 2.0f, 4.0f) / 2.0f - vec3::UNIT_X == vec3(-0.5f, 1.0f, 2.0f));
static_assert(vec4::UNIT_W.HasZeroComponent() && !vec4::ONE.HasZeroComponent() && vec2::ZERO.IsZero());
static_assert(vec3(vec2(1.0f, 2.0f)) == vec3(1.0f, 2.0f, 0.0f));
static_assert(vec4(vec2(1.0f, 2.0f)) == vec4(1.0f, 2.0f, 0.0f, 1.0f));
static_assert(vec4(vec3(1.0f, 2.0f, 3.0f)) == vec4(1.0f, 2.0f, 3.0f, 1.0f));
static_assert(vec3(vec4(1.0f, 2.0f, 3.0f, 4.0f)) == vec3(1.0f, 2.0f, 3.0f));
static_assert(vec2(vec4(1.0f, 2.0f, 3.0f, 4.0f)) == vec2(vec3(1.0f, 2.0f, 3.0f)));

template<typename T>
class EveryVector : public testing::Test
{
};
using AllVectors = testing::Types<vec2, vec3, vec4>;
TYPED_TEST_SUITE(EveryVector, AllVectors);

TYPED_TEST(EveryVector, FormsOfAnOperationAgreeComponentByComponent)
{
    using T = TypeParam;
    std::mt19937 engine(7);
    T const a = MakeRandom<T>(engine), b = MakeRandom<T>(engine);
    T sum = a, product = a, quotient = a;
    sum += b;
    product.Mul(b);
    quotient /= b;
    for (std::size_t i = 0; i < sizeof(T) / sizeof(float); ++i)
    {
        EXPECT_EQ(sum[i], a[i] + b[i]);
        EXPECT_EQ(T().Sub(a, b)[i], a[i] - b[i]);
        EXPECT_EQ(product[i], a[i] * b[i]);
        EXPECT_EQ(quotient[i], a[i] / b[i]);
        EXPECT_EQ((a * 3.0f)[i], a[i] * 3.0f);
        EXPECT_EQ(T(a).Div(3.0f)[i], a[i] / 3.0f);
        EXPECT_EQ(T().Neg(a)[i], -a[i]);
    }
    // An operand may also be the result.
    EXPECT_EQ(T(a).Sub(b).Neg(), b - a);
    EXPECT_EQ(sum.Add(sum, sum), (a + b) * 2.0f);
}

TYPED_TEST(EveryVector, BothEndsOfAToleranceCountAsZero)
{
    using T = TypeParam;
    float const tolerance = 0.25f;
    T v = T::ONE * tolerance;
    EXPECT_TRUE(v.IsZero(tolerance));
    EXPECT_TRUE((-v).IsZero(tolerance));
    EXPECT_EQ(v.NoiseFiltered(tolerance), T::ZERO);
    v.y = std::nextafter(tolerance, 1.0f);
    EXPECT_FALSE(v.IsZero(tolerance));
    EXPECT_TRUE(v.HasZeroComponent(tolerance));
    EXPECT_FALSE(v.HasZeroComponent());
    EXPECT_EQ(v.NoiseFiltered(tolerance), T::UNIT_Y * v.y);
    EXPECT_TRUE((T::ZERO * -1.0f).IsZero());
}

TEST(Vector, NoiseFilterLooksAtItselfAndNotAtItsSource)
{
    EXPECT_EQ(vec2(0.00001f, 1.0f).NoiseFilter(vec2(5.0f, 0.0f), 0.0001f), vec2::UNIT_Y);
    EXPECT_EQ(vec4(1e-6f, 2e-6f, -1e-6f, 1.0f).NoiseFilter(vec4::ONE), vec4(0.0f, 2e-6f, 0.0f, 1.0f));
}

TEST(Vector, UnitOfZeroAndDivideByZeroSpreadInfinity)
{
    EXPECT_EQ(vec3::ZERO.Unit(), vec3::INFINITY);
    EXPECT_EQ(vec2(0.0f, 0.0f).Unitize(), vec2::INFINITY);
    EXPECT_EQ(vec4(1.0f, 2.0f, 3.0f, 0.0f).Normalized(), vec4::INFINITY);
    EXPECT_TRUE(std::isinf(vec3::INFINITY.z) && vec3::INFINITY.z > 0.0f);
    EXPECT_EQ(vec3(0.0f, 3.0f, 4.0f).Unit(), vec3(0.0f, 3.0f, 4.0f) * (1.0f / 5.0f));
    EXPECT_EQ(vec4(2.0f, 4.0f, 6.0f, 4.0f).Normalized(), vec4(0.5f, 1.0f, 1.5f, 1.0f));
}

TEST(Vector, ComparisonsIncludeTheirBoundary)
{
    EXPECT_TRUE(vec2::ZERO.Equal(vec2(3.0f, 4.0f), 5.0f));
    EXPECT_FALSE(vec2::ZERO.Equal(vec2(3.0f, 4.001f), 5.0f));
    EXPECT_TRUE(vec3::UNIT_X.Parallel(-vec3::UNIT_X));
    EXPECT_TRUE(vec3::UNIT_X.Orthogonal(vec3(0.5f, 0.0f, 0.0f), 0.5f));
    EXPECT_FALSE(vec3::UNIT_X.Orthogonal(vec3(std::nextafter(0.5f, 1.0f), 0.0f, 0.0f), 0.5f));
    EXPECT_TRUE(vec3::UNIT_X.Parallel(vec3(-0.5f, 0.0f, 0.0f), 0.5f));
    EXPECT_EQ(vec3(-3.0f, 1.0f, 2.0f).AbsMax(), 3.0f);
    EXPECT_EQ(vec3(-3.0f, -1.0f, 2.0f).AbsMin(), 1.0f);
    EXPECT_EQ(vec2(1.0f, -2.0f).AbsMax(), 2.0f);
    EXPECT_EQ(math_constants::VectorOrthogonalTestDefaultMaxCosAngle,
              static_cast<float>(std::cos(89.9999 * math_constants::PiOver180)));
    EXPECT_EQ(math_constants::VectorParallelTestDefaultMinCosAngle,
              static_cast<float>(std::cos(0.0001 * math_constants::PiOver180)));
}

TEST(Vector, ProjectionSplitsOffTheOrthogonalPart)
{
    std::mt19937 engine(11);
    for (int i = 0; i < 100; ++i)
    {
        vec3 const v = MakeRandom<vec3>(engine), target = MakeRandom<vec3>(engine), along = v.ProjectionTo(target);
        EXPECT_NEAR((v - along).Dot(target), 0.0f, 1e-5f);
        EXPECT_TRUE(IsNear(along.Cross(target), vec3::ZERO));
        EXPECT_TRUE(IsNear(vec3(v).ProjectToUnit(target.Unit()), along));
    }
}

TEST(Vector, TurnsCounterClockwiseByPositiveAngles)
{
    EXPECT_EQ(vec2(1.0f, 2.0f).CrossCCW(), vec2(-2.0f, 1.0f));
    EXPECT_EQ(vec2(1.0f, 2.0f).CrossCW(), vec2(2.0f, -1.0f));
    EXPECT_TRUE(IsNear(vec2(1.0f, 2.0f).RotationCCW(90.0f), vec2(-2.0f, 1.0f)));
    EXPECT_TRUE(IsNear(vec2(1.0f, 2.0f).RotateCW(90.0f), vec2(2.0f, -1.0f)));
    EXPECT_EQ(vec3::UNIT_X.Cross(vec3::UNIT_Y), vec3::UNIT_Z);
    EXPECT_TRUE(IsNear(vec3::UNIT_Z.RotationAround(vec3(0.0f, 5.0f, 0.0f), 90.0f), vec3::UNIT_X));
    EXPECT_TRUE(IsNear(vec3::ONE.RotationAround(vec3::ONE, 77.0f), vec3::ONE));

    std::mt19937 engine(13);
    vec3 const axis = MakeRandom<vec3>(engine).Unit(), v = MakeRandom<vec3>(engine);
    EXPECT_TRUE(IsNear(vec3(v).RotateAroundUnit(axis, 40.0f).RotateAroundUnit(axis, -40.0f), v));
    EXPECT_TRUE(IsNear(vec3().RotationAroundUnit(axis, 120.0f, v), v.RotationAroundUnit(axis, -240.0f)));
}

TEST(Vector, OrthoNormalizeKeepsTheFirstDirectionAndTheHand)
{
    std::mt19937 engine(17);
    for (int i = 0; i < 100; ++i)
    {
        vec3 const first = MakeRandom<vec3>(engine);
        vec3 a = first, b = MakeRandom<vec3>(engine), c = MakeRandom<vec3>(engine);
        bool const rightHanded = a.Cross(b).Dot(c) > 0.0f;
        OrthoNormalize(a, b, c);
        EXPECT_TRUE(IsNear(a, first.Unit()));
        EXPECT_TRUE(IsNear(a.Cross(b), rightHanded ? c : -c, 1e-3f));
    }
    vec2 a(2.0f, 0.0f);
    vec2 b(5.0f, -3.0f);
    OrthoNormalize(a, b);
    EXPECT_EQ(a, vec2::UNIT_X);
    EXPECT_EQ(b, -vec2::UNIT_Y);
}

} // namespace
} // namespace quillmarsh
