// An OpenGL context for a window.
#ifndef QUILLMARSH_PLATFORM_OPENGLCONTEXT_H
#define QUILLMARSH_PLATFORM_OPENGLCONTEXT_H

#include <quillmarsh/platform/window.h>

namespace quillmarsh::platform
{

/// Properties of a new context.
struct OpenGLContextDesc
{
    /// Pixels of the window, the same as in WindowDesc::openGL. On Linux the window has its pixels since it was opened,
    /// and these have no effect. On Windows a window gets its pixels with its first context, for good.
    OpenGLPixels pixels = {};
    /// The oldest version that serves the caller. The context has this version or a newer one, in its core profile and
    /// without the functions that are marked as deprecated.
    /// @{
    int majorVersion = 3;
    int minorVersion = 3;
    /// @}
    /// Requests a context that checks more and reports more through GL_KHR_debug.
    bool isDebug = false;
    /// Requests a context that reports when the device is lost, where the driver has such contexts: it then has the
    /// extension GL_ARB_robustness or GL_KHR_robustness.
    bool reportsLoss = true;
};

/// Any function of OpenGL. The caller casts it to its own type, in which QUILLMARSH_OPENGL_CALL stands where Khronos'
/// headers have APIENTRY.
using OpenGLFunction = void (*)();

/// OpenGL context of a window that was opened with WindowDesc::openGL.
///
/// The window outlives its contexts. All operations belong to the desktop's thread. The context is current on it from
/// its creation on, until another one becomes current.
/// \code
/// string reason;
/// AutoPtr<platform::OpenGLContext> context = platform::OpenGLContext::Create(window, {}, reason);
/// if (context == nullptr)
///     GetConOut() << "There is no OpenGL: " << reason << std::endl;
/// else
///     context->SetSwapInterval(1);
/// \endcode
class QUILLMARSH_API OpenGLContext : NoCopy
{
public:
    /// The system's part of a context; opaque.
    struct System;

    /// Creates a context and makes it current. Returns null when there is no OpenGL or only an older one, and sets
    /// `reason` to a text for the user, which names the driver's version if there is one.
    static AutoPtr<OpenGLContext> Create(Window &window, OpenGLContextDesc const &desc, string &reason);
    /// Deletes the context; if it is current, none is afterwards.
    ~OpenGLContext();

    /// Makes the context current. Returns false with a reason for the user when the system refuses, for example
    /// because the display has gone.
    bool MakeCurrent(string &reason);
    /// True while the context is the current one.
    bool IsCurrent() const;

    /// Shows what was drawn into the back buffer. The content of the back buffer is undefined afterwards. The context
    /// must be current.
    void SwapBuffers();

    /// Sets the number of vertical retraces that SwapBuffers() waits for: 0 does not wait; -1 waits for one, but not
    /// when the frame is late. Returns the number that counts from now on: a driver may refuse to wait, or not to
    /// wait, and one that does not know -1 takes 1. The context must be current.
    int SetSwapInterval(int interval);

    /// Returns a function of OpenGL by its name; null when the driver lacks it. Some drivers return an address for
    /// every name, so check version and extensions first. The context must be current.
    OpenGLFunction FindFunction(char const *name) const;
    /// Does the same for the context that is current on the calling thread, whoever has made it; null when none is.
    static OpenGLFunction FindCurrentFunction(char const *name);

private:
    /// Deletes the system's context.
    struct SystemDeleter
    {
        void operator()(System *system) const;
    };

    OpenGLContext() = default;

    std::unique_ptr<System, SystemDeleter> system_;
};

} // namespace quillmarsh::platform

#endif
