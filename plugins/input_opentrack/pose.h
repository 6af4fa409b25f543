// What a datagram of OpenTrack says.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENTRACK_POSE_H
#define QUILLMARSH_PLUGINS_INPUT_OPENTRACK_POSE_H

#include <quillmarsh/mathtools/quaternion.h>

#include <cstddef>
#include <span>

namespace input_opentrack
{

/// How a head is turned, and where it is, on the axes of the trackers (see MakeOrientation()); in metres.
struct Pose
{
    quillmarsh::quat orientation;
    quillmarsh::vec3 position;
};

/// Length of a datagram.
constexpr std::size_t s_poseSize = 48;

/// Reads a datagram: x, y, z in centimetres, yaw, pitch, roll in degrees, each a double in little-endian order.
///
/// OpenTrack counts x to the right, y up, z backwards, yaw to the right, pitch up, and roll to the right. False, and no
/// change, when the size is another one, or a value is not finite in single precision.
bool ReadPose(std::span<std::byte const> datagram, Pose &pose);

} // namespace input_opentrack

#endif
