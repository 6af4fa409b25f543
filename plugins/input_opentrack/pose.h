// The pose in a datagram of OpenTrack.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENTRACK_POSE_H
#define QUILLMARSH_PLUGINS_INPUT_OPENTRACK_POSE_H

#include <quillmarsh/mathtools/quaternion.h>

#include <cstddef>
#include <span>

namespace input_opentrack
{

/// Orientation and position of a head on the axes of the trackers (see MakeOrientation()); the position is in metres.
struct Pose
{
    quillmarsh::quat orientation;
    quillmarsh::vec3 position;
};

/// Length of a datagram in bytes.
constexpr std::size_t s_poseSize = 48;

/// Reads a datagram: x, y, z in centimetres, yaw, pitch, roll in degrees, each a double in little-endian order.
///
/// OpenTrack counts x to the right, y up, z backwards, yaw to the right, pitch up, and roll to the right. False, with
/// `pose` unchanged, when the datagram has another size, or a value is not finite in single precision.
bool ReadPose(std::span<std::byte const> datagram, Pose &pose);

} // namespace input_opentrack

#endif
