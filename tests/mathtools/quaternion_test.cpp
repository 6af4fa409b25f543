#include <quillmarsh/mathtools/quaternion.h>
#include <quillmarsh/mathtools/transforms.h>

#include "tests/support/math_values.h"

namespace quillmarsh
{
namespace
{

using tests::IsNear;
using tests::MakeRandom;

// i j = k and so on, evaluated by the compiler.
constexpr quat s_i(1.0f, 0.0f, 0.0f, 0.0f), s_j(0.0f, 1.0f, 0.0f, 0.0f), s_k(0.0f, 0.0f, 1.0f, 0.0f);
static_assert(s_i * s_j == s_k && s_j * s_k == s_i && s_k * s_i == s_j && s_i * s_i == -quat::IDENTITY);

TEST(Quaternion, CombinesInTheOrderOfTheTurns)
{
    std::mt19937 engine(2);
    quat const a = MakeRandom<quat>(engine).Unit(), b = MakeRandom<quat>(engine).Unit();
    vec3 const v = MakeRandom<vec3>(engine);
    EXPECT_TRUE(IsNear(quat().Combine(a, b).Rotate(v), b.Rotate(a.Rotate(v))));
    EXPECT_EQ(quat(a).PostCombine(b), b * a);
    EXPECT_EQ(quat(b).PreCombine(a), b * a);
    quat product = b;
    EXPECT_EQ(product *= a, b * a);
}

TEST(Quaternion, InversesDifferForWhatIsNoRotation)
{
    std::mt19937 engine(3);
    quat const q = MakeRandom<quat>(engine);
    EXPECT_TRUE(IsNear(q * q.Inverse(), quat::IDENTITY));
    EXPECT_EQ(q.InverseU(), quat(-q.x, -q.y, -q.z, q.w));
    EXPECT_EQ(quat(q).Conjugate(), q.InverseU());
    EXPECT_EQ(quat::ZERO.Unit(), quat::INFINITY);
    EXPECT_EQ(quat::ZERO.Inverse(), quat::INFINITY);
    EXPECT_EQ(quat::ZERO.InverseU(), quat::ZERO);
    EXPECT_EQ(quat(1e-6f, 1.0f, -1e-6f, 2e-6f).NoiseFilter(q), quat(0.0f, 1.0f, 0.0f, 2e-6f));
    EXPECT_EQ(quat(1.0f, 2.0f, 3.0f, 4.0f).Norm(), 30.0f);
}

TEST(Quaternion, AgreesWithAxisAngleAndMatrix)
{
    EXPECT_TRUE(IsNear(quat(vec3::UNIT_Y, 90.0f) * vec3::UNIT_Z, vec3::UNIT_X));
    std::mt19937 engine(4);
    for (float const angle : {10.0f, 90.0f, 179.0f, 300.0f})
    {
        vec3 const axis = MakeRandom<vec3>(engine).Unit();
        quat const q(axis, angle);
        vec3 axisBack;
        float angleBack;
        q.ToRotationAxisAngle(axisBack, angleBack);
        EXPECT_TRUE(IsNear(axisBack, axis, 1e-4f));
        EXPECT_NEAR(angleBack, angle, 1e-2f);

        mat3 expected, matrix;
        mat4 whole;
        GenerateRotateMV(expected, angle, axis);
        q.ToRotationMatrixMV(matrix);
        EXPECT_TRUE(IsNear(matrix, expected));
        q.ToRotationMatrixVM(whole);
        EXPECT_EQ(whole, mat4(matrix).Transposed());

        vec3 x, y, z;
        q.ToCoordSystemAxes(x, y, z);
        EXPECT_EQ(y, matrix.Column1());
        quat const back = quat().FromCoordSystemAxes(x, y, z);
        EXPECT_TRUE(IsNear(back * (back.Dot(q) < 0.0f ? -1.0f : 1.0f), q));
        EXPECT_EQ(quat().FromRotationMatrixVM(whole), back);
    }
}

TEST(Quaternion, WithoutATurnTheAxisIsZ)
{
    vec3 axis;
    float angle;
    quat::IDENTITY.ToRotationAxisAngle(axis, angle);
    EXPECT_EQ(axis, vec3::UNIT_Z);
    EXPECT_EQ(angle, 0.0f);
    quat(0.5f, 0.0f, 0.0f, 1.5f).ToRotationAxisAngle(axis, angle);
    EXPECT_TRUE(std::isnan(angle));
}

TEST(Quaternion, FromMatrixTakesTheEarlierBranchOnATie)
{
    // Half turns have trace -1; in the last, X and Y tie, and so on.
    float const half = std::sqrt(0.5f);
    std::pair<vec3, quat> const turns[] = {
        {vec3::UNIT_X, {1.0f, 0.0f, 0.0f, 0.0f}},         {vec3::UNIT_Y, {0.0f, 1.0f, 0.0f, 0.0f}},
        {vec3::UNIT_Z, {0.0f, 0.0f, 1.0f, 0.0f}},         {{half, -half, 0.0f}, {half, -half, 0.0f, 0.0f}},
        {{0.0f, half, -half}, {0.0f, half, -half, 0.0f}}, {{-half, 0.0f, half}, {half, 0.0f, -half, 0.0f}}};
    for (auto const &[axis, expected] : turns)
    {
        // Exact except for the axis: twice the dyadic product, minus the identity.
        auto const row = [&halfAxis = axis](float component, vec3 const &unit)
        { return (halfAxis * (2.0f * component)).NoiseFiltered() - unit; };
        mat3 m(row(axis.x, vec3::UNIT_X), row(axis.y, vec3::UNIT_Y), row(axis.z, vec3::UNIT_Z));
        m.NoiseFilter();
        EXPECT_TRUE(IsNear(quat().FromRotationMatrixMV(m), expected));
        EXPECT_TRUE(IsNear(quat().FromRotationMatrixMV(mat4(m)), expected));
    }
}

TEST(Quaternion, ShortestArcLeadsFromOneVectorToTheOther)
{
    EXPECT_EQ(quat().ShortestArcRotation(vec3::UNIT_X, vec3::UNIT_X), quat::IDENTITY);
    EXPECT_TRUE(std::isnan(quat().ShortestArcRotation(vec3::UNIT_X, -vec3::UNIT_X).x));
    std::mt19937 engine(5);
    vec3 const from = MakeRandom<vec3>(engine).Unit(), to = MakeRandom<vec3>(engine).Unit();
    EXPECT_TRUE(IsNear(quat().ShortestArcRotation(from, to).Rotate(from), to));
}

} // namespace
} // namespace quillmarsh
