// Directions of sight, and the angles that make them.
#include <viewer_model/volumes/rotation.h>

#include <gtest/gtest.h>

namespace viewer
{
namespace
{

using quillmarsh::vec3;

void ExpectNear(vec3 const &expected, vec3 const &found, char const *what)
{
    EXPECT_NEAR(expected.x, found.x, 1e-5) << what;
    EXPECT_NEAR(expected.y, found.y, 1e-5) << what;
    EXPECT_NEAR(expected.z, found.z, 1e-5) << what;
}

TEST(Rotation, QuarterTurnsShowTheOtherSlices)
{
    Rotation const column = MakeRotation({.yaw = 90});
    ExpectNear({0, 0, 1}, column.right, "right of columns");
    ExpectNear({0, 1, 0}, column.down, "down of columns");
    Rotation const row = MakeRotation({.pitch = 90});
    ExpectNear({1, 0, 0}, row.right, "right of rows");
    ExpectNear({0, 0, 1}, row.down, "down of rows");
    // With the clock, what was to the right is below: the right of the view then looks up in the volume.
    ExpectNear({0, -1, 0}, MakeRotation({.roll = 90}).right, "roll");
}

TEST(Rotation, AnglesComeBack)
{
    RotationAngles const all[] = {{0, 0, 0}, {30, 20, 0}, {-170, 60, 100}, {90, -89, 5}, {12, -90, 0}, {45, 90, 0}};
    for (RotationAngles const &angles : all)
    {
        RotationAngles const found = FindAngles(MakeRotation(angles));
        EXPECT_NEAR(angles.yaw, found.yaw, 0.01) << angles.pitch;
        EXPECT_NEAR(angles.pitch, found.pitch, 0.05);
        EXPECT_NEAR(angles.roll, found.roll, 0.01) << angles.pitch;
    }
}

TEST(Rotation, ManySmallTurnsStayAtRightAngles)
{
    Rotation rotation;
    for (int i = 0; i < 10000; ++i)
        rotation = Turn(rotation, {.yaw = 1.7, .pitch = -0.9, .roll = 0.3});
    EXPECT_NEAR(1, rotation.right.Length(), 1e-5);
    EXPECT_NEAR(0, rotation.right.Dot(rotation.down), 1e-5);
    ExpectNear(rotation.right.Cross(rotation.down), rotation.away, "handedness");
}

} // namespace
} // namespace viewer
