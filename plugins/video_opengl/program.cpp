#include "program.h"

#include <quillmarsh/basetools/exception.h>

#include <algorithm>
#include <utility>

namespace video_opengl
{
namespace
{

constexpr char s_vertexShader[] = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec4 color;
layout(location = 2) in vec2 coordinate;
uniform mat4 transform;
uniform vec3 factor;
uniform vec3 offset;
out vec4 vertexColor;
out vec2 vertexCoordinate;
void main()
{
    vec4 place = transform * vec4(position, 1.0);
    gl_Position = vec4(place.xyz * factor + offset * place.w, place.w);
    vertexColor = color;
    vertexCoordinate = coordinate;
}
)";

// The texture is read in any case, since a driver chooses the level by the neighbouring pixels.
constexpr char s_fragmentShader[] = R"(#version 330 core
uniform sampler2D picture;
in vec4 vertexColor;
in vec2 vertexCoordinate;
out vec4 result;
void main()
{
    vec4 texel = texture(picture, vertexCoordinate);
    result = vertexCoordinate.x < -1e8 ? vertexColor : vertexColor * texel;
}
)";

template<typename Read>
string ReadLog(Read read)
{
    char text[1024] = {};
    GLsizei length = 0;
    read(static_cast<GLsizei>(sizeof(text) - 1), &length, text);
    return text;
}

/// A shader in the time until its program is linked.
class Shader : NoCopy
{
public:
    Shader(OpenGLFunctions const &gl, GLenum kind, char const *source) : gl_(gl), name_(gl.CreateShader(kind))
    {
        gl.ShaderSource(name_, 1, &source, nullptr);
        gl.CompileShader(name_);
        GLint isCompiled = GL_FALSE;
        gl.GetShaderiv(name_, GL_COMPILE_STATUS, &isCompiled);
        if (isCompiled == GL_TRUE)
            return;
        string const log = ReadLog([&](GLsizei size, GLsizei *length, GLchar *text)
                                   { gl.GetShaderInfoLog(name_, size, length, text); });
        gl.DeleteShader(name_);
        QUILLMARSH_THROW(VideoRendererException, "The driver refuses a shader: " + log);
    }
    ~Shader() { gl_.DeleteShader(name_); }

    GLuint GetName() const { return name_; }

private:
    OpenGLFunctions const &gl_;
    GLuint name_;
};

} // namespace

Program::Program(std::shared_ptr<Device> device) : gl_(device->gl), object_(std::move(device), eObject::e_program)
{
    Shader const vertexShader(gl_, GL_VERTEX_SHADER, s_vertexShader);
    Shader const fragmentShader(gl_, GL_FRAGMENT_SHADER, s_fragmentShader);
    gl_.AttachShader(object_.Get(), vertexShader.GetName());
    gl_.AttachShader(object_.Get(), fragmentShader.GetName());
    gl_.LinkProgram(object_.Get());
    GLint isLinked = GL_FALSE;
    gl_.GetProgramiv(object_.Get(), GL_LINK_STATUS, &isLinked);
    if (isLinked != GL_TRUE)
    {
        string const log = ReadLog([&](GLsizei size, GLsizei *length, GLchar *text)
                                   { gl_.GetProgramInfoLog(object_.Get(), size, length, text); });
        QUILLMARSH_THROW(VideoRendererException, "The driver refuses the program: " + log);
    }
    transform_ = gl_.GetUniformLocation(object_.Get(), "transform");
    factor_ = gl_.GetUniformLocation(object_.Get(), "factor");
    offset_ = gl_.GetUniformLocation(object_.Get(), "offset");
    // The texture unit of the picture is 0, as for every new program.
}

void Program::SetProjection(vec3 const &factor, vec3 const &offset) const
{
    gl_.Uniform3f(factor_, factor.x, factor.y, factor.z);
    gl_.Uniform3f(offset_, offset.x, offset.y, offset.z);
}

} // namespace video_opengl
