// Translation, scale and rotation as one record.
#ifndef QUILLMARSH_GUI_GUI_TRANSFORM_H
#define QUILLMARSH_GUI_GUI_TRANSFORM_H

#include <quillmarsh/mathtools/matrix44.h>
#include <quillmarsh/mathtools/vector3.h>

namespace quillmarsh::gui
{

/// Scales, then rotates about y, x and z, in this order, then translates. A plain record: any thread.
struct QUILLMARSH_API Transform
{
    vec3 translation = vec3::ZERO;
    vec3 scale = vec3::ONE;
    /// Angles about the three axes, in degrees, counter-clockwise as seen from the tip of the axis.
    vec3 rotation = vec3::ZERO;

    /// Sets the matrix for column vectors.
    void GenerateMV(mat4 &matrix) const;
    /// Sets the matrix for row vectors: the transpose of the other one.
    void GenerateVM(mat4 &matrix) const;
    /// Returns the matrix for row vectors, as Renderer::SetTransform() takes it.
    operator mat4() const;
};

} // namespace quillmarsh::gui

#endif
