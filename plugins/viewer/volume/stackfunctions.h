// The functions of OpenGL that draw the turned volume.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_STACKFUNCTIONS_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_STACKFUNCTIONS_H

#include <quillmarsh/platform/openglcontext.h>

// Without it, the next header would include the system's own headers, whose macros take names of the library.
#define APIENTRY QUILLMARSH_OPENGL_CALL
#include <GL/glcorearb.h>
#undef APIENTRY

namespace viewer::volumes
{

/// Each function with its type. All of them belong to version 3.3.
#define VIEWER_STACK_FUNCTIONS(X)                                                                                      \
    X(ActiveTexture, PFNGLACTIVETEXTUREPROC)                                                                           \
    X(AttachShader, PFNGLATTACHSHADERPROC)                                                                             \
    X(BindFramebuffer, PFNGLBINDFRAMEBUFFERPROC)                                                                       \
    X(BindTexture, PFNGLBINDTEXTUREPROC)                                                                               \
    X(BindVertexArray, PFNGLBINDVERTEXARRAYPROC)                                                                       \
    X(BlendFunc, PFNGLBLENDFUNCPROC)                                                                                   \
    X(CheckFramebufferStatus, PFNGLCHECKFRAMEBUFFERSTATUSPROC)                                                         \
    X(Clear, PFNGLCLEARPROC)                                                                                           \
    X(ClearColor, PFNGLCLEARCOLORPROC)                                                                                 \
    X(CompileShader, PFNGLCOMPILESHADERPROC)                                                                           \
    X(CreateProgram, PFNGLCREATEPROGRAMPROC)                                                                           \
    X(CreateShader, PFNGLCREATESHADERPROC)                                                                             \
    X(DeleteFramebuffers, PFNGLDELETEFRAMEBUFFERSPROC)                                                                 \
    X(DeleteProgram, PFNGLDELETEPROGRAMPROC)                                                                           \
    X(DeleteShader, PFNGLDELETESHADERPROC)                                                                             \
    X(DeleteTextures, PFNGLDELETETEXTURESPROC)                                                                         \
    X(DeleteVertexArrays, PFNGLDELETEVERTEXARRAYSPROC)                                                                 \
    X(Disable, PFNGLDISABLEPROC)                                                                                       \
    X(DrawArrays, PFNGLDRAWARRAYSPROC)                                                                                 \
    X(DrawArraysInstanced, PFNGLDRAWARRAYSINSTANCEDPROC)                                                               \
    X(Enable, PFNGLENABLEPROC)                                                                                         \
    X(Finish, PFNGLFINISHPROC)                                                                                         \
    X(FramebufferTexture2D, PFNGLFRAMEBUFFERTEXTURE2DPROC)                                                             \
    X(GenFramebuffers, PFNGLGENFRAMEBUFFERSPROC)                                                                       \
    X(GenTextures, PFNGLGENTEXTURESPROC)                                                                               \
    X(GenVertexArrays, PFNGLGENVERTEXARRAYSPROC)                                                                       \
    X(GetIntegerv, PFNGLGETINTEGERVPROC)                                                                               \
    X(GetProgramInfoLog, PFNGLGETPROGRAMINFOLOGPROC)                                                                   \
    X(GetProgramiv, PFNGLGETPROGRAMIVPROC)                                                                             \
    X(GetUniformLocation, PFNGLGETUNIFORMLOCATIONPROC)                                                                 \
    X(LinkProgram, PFNGLLINKPROGRAMPROC)                                                                               \
    X(PixelStorei, PFNGLPIXELSTOREIPROC)                                                                               \
    X(ShaderSource, PFNGLSHADERSOURCEPROC)                                                                             \
    X(TexImage2D, PFNGLTEXIMAGE2DPROC)                                                                                 \
    X(TexImage3D, PFNGLTEXIMAGE3DPROC)                                                                                 \
    X(TexParameteri, PFNGLTEXPARAMETERIPROC)                                                                           \
    X(Uniform1f, PFNGLUNIFORM1FPROC)                                                                                   \
    X(Uniform1i, PFNGLUNIFORM1IPROC)                                                                                   \
    X(Uniform2f, PFNGLUNIFORM2FPROC)                                                                                   \
    X(Uniform3f, PFNGLUNIFORM3FPROC)                                                                                   \
    X(UniformMatrix3fv, PFNGLUNIFORMMATRIX3FVPROC)                                                                     \
    X(UseProgram, PFNGLUSEPROGRAMPROC)                                                                                 \
    X(Viewport, PFNGLVIEWPORTPROC)

/// Addresses of the functions in the current context, under their names without "gl".
struct StackFunctions
{
    /// Loads all of them. Returns false if there is no context, or if it lacks one.
    bool Load();

#define VIEWER_STACK_DECLARE(name, type) type name = nullptr;
    VIEWER_STACK_FUNCTIONS(VIEWER_STACK_DECLARE)
#undef VIEWER_STACK_DECLARE
};

} // namespace viewer::volumes

#endif
