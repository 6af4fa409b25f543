// The shaders that draw everything of the GUI.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_PROGRAM_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_PROGRAM_H

#include "device.h"

#include <quillmarsh/mathtools/matrix44.h>
#include <quillmarsh/mathtools/vector3.h>

namespace video_opengl
{

/// A texture coordinate that stands for "no texture": with one program and one format of vertices, filled shapes do not
/// interrupt the textured ones around them.
constexpr float s_untextured = -1e9f;

/// Where a vertex has its data.
enum eVertexInput : GLuint
{
    e_input_position = 0,
    e_input_color = 1,
    e_input_coordinate = 2
};

/// The program, with its own variables. It must be current when they are set.
class Program : NoCopy
{
public:
    /// Compiles the shaders. Throws VideoRendererException with the driver's text.
    explicit Program(std::shared_ptr<Device> device);

    void Use() const { gl_.UseProgram(object_.Get()); }
    /// Sets the transform of the positions, a matrix for row vectors.
    void SetTransform(mat4 const &transform) const { gl_.UniformMatrix4fv(transform_, 1, GL_FALSE, transform.ToPtr()); }
    /// Sets the way from transformed positions to OpenGL's cube: a factor, then an offset.
    void SetProjection(vec3 const &factor, vec3 const &offset) const;

private:
    OpenGLFunctions const &gl_;
    DeviceObject object_;
    GLint transform_ = -1;
    GLint factor_ = -1;
    GLint offset_ = -1;
};

} // namespace video_opengl

#endif
