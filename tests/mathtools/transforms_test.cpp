#include <quillmarsh/mathtools/powersof2.h>
#include <quillmarsh/mathtools/transforms.h>

#include "tests/support/math_values.h"

namespace quillmarsh
{
namespace
{

using tests::Apply;
using tests::IsNear;
using tests::MakeRandom;

TEST(Transforms, QuarterTurnsAreRightHanded)
{
    std::tuple<eAxis, vec3, vec3, vec3> const turns[] = {{e_axisX, vec3::UNIT_X, vec3::UNIT_Y, vec3::UNIT_Z},
                                                         {e_axisY, vec3::UNIT_Y, vec3::UNIT_Z, vec3::UNIT_X},
                                                         {e_axisZ, vec3::UNIT_Z, vec3::UNIT_X, vec3::UNIT_Y}};
    for (auto const &[axis, unitAxis, from, to] : turns)
    {
        mat3 byAxis, byUnitAxis;
        GenerateRotateMV(byAxis, 90.0f, axis);
        GenerateRotateMV(byUnitAxis, 90.0f, unitAxis);
        EXPECT_TRUE(Apply(byAxis, from).Equal(to));
        EXPECT_TRUE(Apply(byUnitAxis, from).Equal(to));
    }
    mat2 plane;
    GenerateRotateMV(plane, 90.0f);
    EXPECT_TRUE(IsNear(plane.Column0(), vec2::UNIT_Y));
}

/// Checks that the four forms of a generator differ only by transposition and by the identity around the block.
void ExpectForms(auto generateMV, auto generateVM)
{
    mat3 block, transposed;
    mat4 whole, wholeTransposed;
    generateMV(block);
    generateVM(transposed);
    generateMV(whole);
    generateVM(wholeTransposed);
    EXPECT_EQ(transposed, block.Transposed());
    EXPECT_EQ(whole, mat4(block));
    EXPECT_EQ(wholeTransposed, mat4(transposed));
}

TEST(Transforms, FormsDifferByTranspositionOnly)
{
    std::mt19937 engine(2);
    vec3 const a = MakeRandom<vec3>(engine), b = MakeRandom<vec3>(engine), c = MakeRandom<vec3>(engine);
    ExpectForms([](auto &m) { GenerateRotateMV(m, 20.0f, e_axisY); },
                [](auto &m) { GenerateRotateVM(m, 20.0f, e_axisY); });
    ExpectForms([&](auto &m) { GenerateRotateMV(m, 20.0f, a); }, [&](auto &m) { GenerateRotateVM(m, 20.0f, a); });
    ExpectForms([&](auto &m) { GenerateRotateMV(m, a, b, c); }, [&](auto &m) { GenerateRotateVM(m, a, b, c); });
    ExpectForms([](auto &m) { GenerateEulerHPR_MV(m, 1.0f, 2.0f, 3.0f); },
                [](auto &m) { GenerateEulerHPR_VM(m, 1.0f, 2.0f, 3.0f); });
    ExpectForms([](auto &m) { GenerateEulerPHR_MV(m, 1.0f, 2.0f, 3.0f); },
                [](auto &m) { GenerateEulerPHR_VM(m, 1.0f, 2.0f, 3.0f); });

    mat4 axes;
    vec3 x, y, z;
    GenerateRotateMV(axes, a, b, c);
    EXPECT_EQ(vec3(axes.Column1()), b);
    FactorRotateMV(axes, x, y, z);
    EXPECT_TRUE(x == a && y == b && z == c);
    FactorRotateVM(axes.Transposed(), x, y, z);
    EXPECT_TRUE(x == a && y == b && z == c);

    mat4 move;
    GenerateTranslateMV(move, 1.0f, 2.0f, 3.0f);
    EXPECT_EQ(move.Column3(), vec4(1.0f, 2.0f, 3.0f, 1.0f));
    mat4 moveRows;
    GenerateTranslateVM(moveRows, 1.0f, 2.0f, 3.0f);
    EXPECT_EQ(moveRows, move.Transposed());
    mat3 plane;
    GenerateTranslateMV(plane, 1.0f, 2.0f);
    EXPECT_EQ(plane, mat3(1.0f, 0.0f, 1.0f, 0.0f, 1.0f, 2.0f, 0.0f, 0.0f, 1.0f));
    GenerateUniformScale(move, 3.0f);
    EXPECT_EQ(move, mat4(mat3::IDENTITY * 3.0f));
}

TEST(Transforms, EulerAnglesComposeAndComeBack)
{
    for (float const heading : {-170.0f, -30.0f, 0.0f, 75.0f})
        for (float const pitch : {-80.0f, 0.0f, 35.0f})
            for (float const roll : {-100.0f, 10.0f, 179.0f})
            {
                mat3 h, p, r, m;
                GenerateRotateMV(h, heading, e_axisY);
                GenerateRotateMV(p, pitch, e_axisX);
                GenerateRotateMV(r, roll, e_axisZ);
                GenerateEulerHPR_MV(m, heading, pitch, roll);
                EXPECT_TRUE(IsNear(m, r * p * h));
                vec3 back;
                FactorEulerHPR_MV(m, back.x, back.y, back.z);
                EXPECT_TRUE(IsNear(back, vec3(heading, pitch, roll), 1e-3f));

                // Heading is the middle angle here, so it takes the small one.
                GenerateEulerPHR_VM(m, pitch, heading, roll);
                GenerateRotateMV(h, pitch, e_axisY);
                GenerateRotateMV(p, heading, e_axisX);
                EXPECT_TRUE(IsNear(m, (r * h * p).Transposed()));
                FactorEulerPHR_VM(mat4(m), back.x, back.y, back.z);
                EXPECT_TRUE(IsNear(back, vec3(pitch, heading, roll), 1e-3f));
            }
}

TEST(Transforms, EulerAnglesAtThePolesHaveNoRoll)
{
    // At the poles both turns have the same axis, and the first angle is the sum of both.
    mat4 m;
    vec3 back;
    for (float const sign : {1.0f, -1.0f})
    {
        GenerateEulerHPR_MV(m, 50.0f, 90.0f * sign, 20.0f);
        FactorEulerHPR_MV(m, back.x, back.y, back.z);
        EXPECT_TRUE(IsNear(back, vec3(20.0f + sign * 50.0f, 90.0f * sign, 0.0f), 1e-4f));
        GenerateEulerPHR_MV(m, -90.0f * sign, 50.0f, 20.0f);
        FactorEulerPHR_MV(m, back.x, back.y, back.z);
        EXPECT_TRUE(IsNear(back, vec3(-90.0f * sign, 20.0f + sign * 50.0f, 0.0f), 1e-4f));
    }
}

TEST(Transforms, DirectionLooksAlongZAndDownForPositivePitch)
{
    vec3 direction;
    DirectionFromEulerHP(direction, 0.0f, 0.0f);
    EXPECT_EQ(direction, vec3::UNIT_Z);
    DirectionFromEulerHP(direction, 0.0f, 90.0f);
    EXPECT_TRUE(IsNear(direction, -vec3::UNIT_Y));
    DirectionFromEulerHP(direction, -120.0f, 40.0f);
    float heading, pitch;
    EulerHPFromDirection(direction, heading, pitch);
    EXPECT_NEAR(heading, -120.0f, 1e-3f);
    EXPECT_NEAR(pitch, 40.0f, 1e-3f);
}

TEST(Transforms, OrthographicProjectionMapsTheBox)
{
    mat4 m;
    auto const depthOf = [&m](float depth) { return m.Row2().Dot(vec4(0.0f, 0.0f, depth, 1.0f)); };
    GenerateProjectionOrthoMV(m, false, false, 2.0f, 6.0f, -1.0f, 3.0f, 5.0f, 9.0f);
    EXPECT_EQ(m.Row0().Dot(vec4(2.0f, 0.0f, 0.0f, 1.0f)), -1.0f);
    EXPECT_EQ(m.Row1().Dot(vec4(0.0f, 3.0f, 0.0f, 1.0f)), 1.0f);
    EXPECT_EQ(depthOf(5.0f), -1.0f);
    EXPECT_EQ(depthOf(9.0f), 1.0f);
    GenerateProjectionOrthoMV(m, true, true, 2.0f, 6.0f, -1.0f, 3.0f, 5.0f, 9.0f);
    EXPECT_EQ(m.Row2(), vec4(0.0f, 0.0f, -0.25f, -1.25f));
    mat4 const kept = m;
    mat4 transposed;
    GenerateProjectionOrthoVM(transposed, true, true, 2.0f, 6.0f, -1.0f, 3.0f, 5.0f, 9.0f);
    EXPECT_EQ(transposed, m.Transposed());
    GenerateProjectionOrthoMV(m, true, true, 2.0f, 2.0f, -1.0f, 3.0f, 5.0f, 9.0f);
    GenerateProjectionOrthoVM(m, true, true, 2.0f, 6.0f, -1.0f, 3.0f, 5.0f, 5.0f);
    EXPECT_EQ(m, kept);
}

TEST(Transforms, AnglesAreRemappedWithTheirBoundaries)
{
    std::tuple<float, float, float> const remaps[] = {
        {0.0f, 0.0f, 0.0f},      {180.0f, 180.0f, 0.0f},   {-180.0f, -180.0f, 0.0f},  {540.0f, 180.0f, 0.0f},
        {-181.0f, 179.0f, 1.0f}, {181.0f, -179.0f, -1.0f}, {90.0f, 90.0f, 90.0f},     {-90.0f, -90.0f, -90.0f},
        {100.0f, 100.0f, 80.0f}, {269.5f, -90.5f, -89.5f}, {270.0f, -90.0f, -90.0f},  {-90.5f, -90.5f, -89.5f},
        {359.5f, -0.5f, -0.5f},  {360.5f, 0.5f, 0.5f},     {-720.25f, -0.25f, -0.25f}};
    for (auto const &[given, to180, to90] : remaps)
    {
        float angle = given;
        RemapAngleTo180DegRange(angle);
        EXPECT_EQ(angle, to180) << given;
        angle = given;
        RemapAngleTo90DegRange(angle);
        EXPECT_EQ(angle, to90) << given;
    }
    float huge = 1e30f;
    RemapAngleTo180DegRange(huge);
    EXPECT_TRUE(std::isfinite(huge));
}

TEST(PowersOf2, RoundUpDownAndToTheNearest)
{
    constexpr unsigned int top = 0x80000000u;
    std::tuple<unsigned int, unsigned int, unsigned int, unsigned int, bool> const rows[] = {
        {0, 1, 1, 1, false},
        {1, 1, 1, 1, true},
        {2, 2, 2, 2, true},
        {3, 4, 2, 4, false},
        {5, 8, 4, 4, false},
        {6, 8, 4, 8, false},
        {top - 1, top, top / 2, top, false},
        {top, top, top, top, true},
        {top + 1, top, top, top, false},
        {~0u, top, top, top, false}};
    for (auto const &[n, up, down, closest, is] : rows)
    {
        EXPECT_EQ(GEqualPowerOf2(n), up) << n;
        EXPECT_EQ(LEqualPowerOf2(n), down) << n;
        EXPECT_EQ(ClosestPowerOf2(n), closest) << n;
        EXPECT_EQ(IsPowerOf2(n), is) << n;
    }
}

} // namespace
} // namespace quillmarsh
