#include "rotation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace viewer
{

using namespace quillmarsh;

namespace
{

constexpr double s_degree = std::numbers::pi / 180;

/// Turns two directions at right angles towards each other.
void TurnPair(vec3 &first, vec3 &second, double degrees)
{
    auto const cosine = static_cast<float>(std::cos(degrees * s_degree));
    auto const sine = static_cast<float>(std::sin(degrees * s_degree));
    vec3 const old = first;
    first = old * cosine + second * sine;
    second = second * cosine - old * sine;
}

/// Takes away what rounding has added up.
void Straighten(Rotation &rotation)
{
    rotation.right = rotation.right.Unit();
    rotation.down = (rotation.down - rotation.right * rotation.right.Dot(rotation.down)).Unit();
    rotation.away = rotation.right.Cross(rotation.down);
}

} // namespace

Rotation MakeRotation(RotationAngles const &angles)
{
    return Turn(Rotation(), angles);
}

Rotation Turn(Rotation const &rotation, RotationAngles const &angles)
{
    Rotation result = rotation;
    TurnPair(result.right, result.away, angles.yaw);
    TurnPair(result.down, result.away, angles.pitch);
    TurnPair(result.down, result.right, angles.roll);
    Straighten(result);
    return result;
}

RotationAngles FindAngles(Rotation const &rotation)
{
    // The y of the directions is that of the pitch and the roll only.
    RotationAngles angles;
    angles.pitch = -std::asin(std::clamp(double(rotation.away.y), -1.0, 1.0)) / s_degree;
    bool const isUpright = std::abs(rotation.away.y) < 0.99999F;
    if (isUpright)
    {
        angles.yaw = std::atan2(-double(rotation.away.x), double(rotation.away.z)) / s_degree;
        angles.roll = std::atan2(-double(rotation.right.y), double(rotation.down.y)) / s_degree;
    }
    else
    {
        // Yaw and roll turn about the same axis: yaw takes it all.
        angles.yaw = std::atan2(double(rotation.right.z), double(rotation.right.x)) / s_degree;
    }
    return angles;
}

} // namespace viewer
