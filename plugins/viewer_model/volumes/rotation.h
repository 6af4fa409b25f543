// Directions of sight into a volume.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_VOLUMES_ROTATION_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_VOLUMES_ROTATION_H

#include <quillmarsh/mathtools/vector3.h>

namespace viewer
{

/// Directions of a view, in the volume: x along columns, y along rows, z along layers. All are of unit length and at
/// right angles. A plain record; its default looks at layers, with rows and columns as they are.
struct Rotation
{
    quillmarsh::vec3 right = {1, 0, 0};
    quillmarsh::vec3 down = {0, 1, 0};
    quillmarsh::vec3 away = {0, 0, 1};
};

/// Angles in degrees, applied in this order. A yaw of 90 has layers to the right, a pitch of 90 has them downwards, and
/// a positive roll turns the picture with the clock.
struct RotationAngles
{
    double yaw = 0;
    double pitch = 0;
    double roll = 0;
};

Rotation MakeRotation(RotationAngles const &angles);
/// Returns angles that make the rotation, with a pitch within -90 and 90.
RotationAngles FindAngles(Rotation const &rotation);
/// Turns by angles about the axes of the view itself, whatever the rotation is.
Rotation Turn(Rotation const &rotation, RotationAngles const &angles);

} // namespace viewer

#endif
