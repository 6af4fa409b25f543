// The functions of OpenGL that the plug-in uses.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_OPENGLFUNCTIONS_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_OPENGLFUNCTIONS_H

#include <quillmarsh/platform/openglcontext.h>

// Without it, the next header would include the system's own headers, whose macros take names of the library.
#define APIENTRY QUILLMARSH_OPENGL_CALL
#include <GL/glcorearb.h>
#undef APIENTRY

#include <functional>

namespace video_opengl
{

using namespace quillmarsh;

/// Each function with its type. All of them belong to version 3.3.
#define VIDEO_OPENGL_FUNCTIONS(X)                                                                                      \
    X(ActiveTexture, PFNGLACTIVETEXTUREPROC)                                                                           \
    X(AttachShader, PFNGLATTACHSHADERPROC)                                                                             \
    X(BindBuffer, PFNGLBINDBUFFERPROC)                                                                                 \
    X(BindFramebuffer, PFNGLBINDFRAMEBUFFERPROC)                                                                       \
    X(BindRenderbuffer, PFNGLBINDRENDERBUFFERPROC)                                                                     \
    X(BindSampler, PFNGLBINDSAMPLERPROC)                                                                               \
    X(BindTexture, PFNGLBINDTEXTUREPROC)                                                                               \
    X(BindVertexArray, PFNGLBINDVERTEXARRAYPROC)                                                                       \
    X(BlendEquation, PFNGLBLENDEQUATIONPROC)                                                                           \
    X(BlendFunc, PFNGLBLENDFUNCPROC)                                                                                   \
    X(BlendFuncSeparate, PFNGLBLENDFUNCSEPARATEPROC)                                                                   \
    X(BlitFramebuffer, PFNGLBLITFRAMEBUFFERPROC)                                                                       \
    X(BufferData, PFNGLBUFFERDATAPROC)                                                                                 \
    X(BufferSubData, PFNGLBUFFERSUBDATAPROC)                                                                           \
    X(CheckFramebufferStatus, PFNGLCHECKFRAMEBUFFERSTATUSPROC)                                                         \
    X(Clear, PFNGLCLEARPROC)                                                                                           \
    X(ClearColor, PFNGLCLEARCOLORPROC)                                                                                 \
    X(ClearDepth, PFNGLCLEARDEPTHPROC)                                                                                 \
    X(ClearStencil, PFNGLCLEARSTENCILPROC)                                                                             \
    X(ColorMask, PFNGLCOLORMASKPROC)                                                                                   \
    X(CompileShader, PFNGLCOMPILESHADERPROC)                                                                           \
    X(CreateProgram, PFNGLCREATEPROGRAMPROC)                                                                           \
    X(CreateShader, PFNGLCREATESHADERPROC)                                                                             \
    X(DeleteBuffers, PFNGLDELETEBUFFERSPROC)                                                                           \
    X(DeleteFramebuffers, PFNGLDELETEFRAMEBUFFERSPROC)                                                                 \
    X(DeleteProgram, PFNGLDELETEPROGRAMPROC)                                                                           \
    X(DeleteRenderbuffers, PFNGLDELETERENDERBUFFERSPROC)                                                               \
    X(DeleteShader, PFNGLDELETESHADERPROC)                                                                             \
    X(DeleteTextures, PFNGLDELETETEXTURESPROC)                                                                         \
    X(DeleteVertexArrays, PFNGLDELETEVERTEXARRAYSPROC)                                                                 \
    X(DepthFunc, PFNGLDEPTHFUNCPROC)                                                                                   \
    X(DepthMask, PFNGLDEPTHMASKPROC)                                                                                   \
    X(DepthRange, PFNGLDEPTHRANGEPROC)                                                                                 \
    X(Disable, PFNGLDISABLEPROC)                                                                                       \
    X(DrawElements, PFNGLDRAWELEMENTSPROC)                                                                             \
    X(Enable, PFNGLENABLEPROC)                                                                                         \
    X(EnableVertexAttribArray, PFNGLENABLEVERTEXATTRIBARRAYPROC)                                                       \
    X(FramebufferRenderbuffer, PFNGLFRAMEBUFFERRENDERBUFFERPROC)                                                       \
    X(GenBuffers, PFNGLGENBUFFERSPROC)                                                                                 \
    X(GenFramebuffers, PFNGLGENFRAMEBUFFERSPROC)                                                                       \
    X(GenRenderbuffers, PFNGLGENRENDERBUFFERSPROC)                                                                     \
    X(GenTextures, PFNGLGENTEXTURESPROC)                                                                               \
    X(GenVertexArrays, PFNGLGENVERTEXARRAYSPROC)                                                                       \
    X(GetError, PFNGLGETERRORPROC)                                                                                     \
    X(GetIntegerv, PFNGLGETINTEGERVPROC)                                                                               \
    X(GetProgramInfoLog, PFNGLGETPROGRAMINFOLOGPROC)                                                                   \
    X(GetProgramiv, PFNGLGETPROGRAMIVPROC)                                                                             \
    X(GetShaderInfoLog, PFNGLGETSHADERINFOLOGPROC)                                                                     \
    X(GetShaderiv, PFNGLGETSHADERIVPROC)                                                                               \
    X(GetString, PFNGLGETSTRINGPROC)                                                                                   \
    X(GetStringi, PFNGLGETSTRINGIPROC)                                                                                 \
    X(GetTexLevelParameteriv, PFNGLGETTEXLEVELPARAMETERIVPROC)                                                         \
    X(GetUniformLocation, PFNGLGETUNIFORMLOCATIONPROC)                                                                 \
    X(LinkProgram, PFNGLLINKPROGRAMPROC)                                                                               \
    X(PixelStorei, PFNGLPIXELSTOREIPROC)                                                                               \
    X(PolygonMode, PFNGLPOLYGONMODEPROC)                                                                               \
    X(ReadBuffer, PFNGLREADBUFFERPROC)                                                                                 \
    X(ReadPixels, PFNGLREADPIXELSPROC)                                                                                 \
    X(RenderbufferStorageMultisample, PFNGLRENDERBUFFERSTORAGEMULTISAMPLEPROC)                                         \
    X(Scissor, PFNGLSCISSORPROC)                                                                                       \
    X(ShaderSource, PFNGLSHADERSOURCEPROC)                                                                             \
    X(StencilMask, PFNGLSTENCILMASKPROC)                                                                               \
    X(TexImage1D, PFNGLTEXIMAGE1DPROC)                                                                                 \
    X(TexImage2D, PFNGLTEXIMAGE2DPROC)                                                                                 \
    X(TexImage3D, PFNGLTEXIMAGE3DPROC)                                                                                 \
    X(TexParameteri, PFNGLTEXPARAMETERIPROC)                                                                           \
    X(TexParameteriv, PFNGLTEXPARAMETERIVPROC)                                                                         \
    X(TexSubImage1D, PFNGLTEXSUBIMAGE1DPROC)                                                                           \
    X(TexSubImage2D, PFNGLTEXSUBIMAGE2DPROC)                                                                           \
    X(TexSubImage3D, PFNGLTEXSUBIMAGE3DPROC)                                                                           \
    X(Uniform1i, PFNGLUNIFORM1IPROC)                                                                                   \
    X(Uniform3f, PFNGLUNIFORM3FPROC)                                                                                   \
    X(Uniform4f, PFNGLUNIFORM4FPROC)                                                                                   \
    X(UniformMatrix4fv, PFNGLUNIFORMMATRIX4FVPROC)                                                                     \
    X(UseProgram, PFNGLUSEPROGRAMPROC)                                                                                 \
    X(VertexAttribPointer, PFNGLVERTEXATTRIBPOINTERPROC)                                                               \
    X(Viewport, PFNGLVIEWPORTPROC)

/// Functions of newer versions and of extensions. They are null where the driver lacks them.
#define VIDEO_OPENGL_OPTIONAL_FUNCTIONS(X)                                                                             \
    X(DebugMessageCallback, PFNGLDEBUGMESSAGECALLBACKPROC)                                                             \
    X(GetGraphicsResetStatus, PFNGLGETGRAPHICSRESETSTATUSPROC)

/// Addresses of the functions, under their names without "gl". The functions belong to the current context.
struct OpenGLFunctions
{
    /// Gives the address of a function by its full name; null when there is none.
    using Door = std::function<platform::OpenGLFunction(char const *)>;

    /// Loads all functions. Throws VideoSubsystemException with the name of a missing one.
    explicit OpenGLFunctions(Door const &door);

#define VIDEO_OPENGL_DECLARE(name, type) type name = nullptr;
    VIDEO_OPENGL_FUNCTIONS(VIDEO_OPENGL_DECLARE)
    VIDEO_OPENGL_OPTIONAL_FUNCTIONS(VIDEO_OPENGL_DECLARE)
#undef VIDEO_OPENGL_DECLARE
};

} // namespace video_opengl

#endif
