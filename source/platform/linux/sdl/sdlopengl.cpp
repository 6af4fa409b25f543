#include <quillmarsh/platform/openglcontext.h>

#include "source/platform/linux/sdl/sdlwindow.h"
#include "source/platform/openglversion.h"

namespace quillmarsh::platform
{

struct OpenGLContext::System : NoCopy
{
    System(SDL_Window *itsWindow, SDL_GLContext itsContext) : window(itsWindow), context(itsContext) {}
    ~System() { SDL_GL_DeleteContext(context); }

    SDL_Window *window;
    SDL_GLContext context;
};

namespace
{

/// Sets the properties of the next context. SDL keeps them for the whole process.
void SetProperties(OpenGLContextDesc const &desc, bool reportsLoss)
{
    SDL_GL_ResetAttributes();
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, desc.majorVersion);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, desc.minorVersion);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_CORE);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_FLAGS,
                        SDL_GL_CONTEXT_FORWARD_COMPATIBLE_FLAG | (desc.isDebug ? SDL_GL_CONTEXT_DEBUG_FLAG : 0));
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_RESET_NOTIFICATION,
                        reportsLoss ? SDL_GL_CONTEXT_RESET_LOSE_CONTEXT : SDL_GL_CONTEXT_RESET_NO_NOTIFICATION);
}

OpenGLFunction Find(char const *name)
{
    return reinterpret_cast<OpenGLFunction>(SDL_GL_GetProcAddress(name));
}

SDL_GLContext CreateWished(SDL_Window *window, OpenGLContextDesc const &desc)
{
    SetProperties(desc, desc.reportsLoss);
    SDL_GLContext const context = SDL_GL_CreateContext(window);
    if (context || !desc.reportsLoss)
        return context;
    SetProperties(desc, false);
    return SDL_GL_CreateContext(window);
}

/// Reads what the driver offers from a context without any wish.
OpenGLOffer ReadOffer(SDL_Window *window)
{
    SDL_GL_ResetAttributes();
    SDL_GLContext const context = SDL_GL_CreateContext(window);
    if (!context)
        return {};
    OpenGLOffer offer = ReadOpenGLOffer(Find("glGetString"));
    SDL_GL_DeleteContext(context);
    return offer;
}

} // namespace

AutoPtr<OpenGLContext> OpenGLContext::Create(Window &window, OpenGLContextDesc const &desc, string &reason)
{
    SDL_Window *const sdlWindow = window.GetSystem().window;
    if (!window.GetSystem().HasFlag(SDL_WINDOW_OPENGL))
    {
        reason = "The window was not opened for OpenGL.";
        return nullptr;
    }
    SDL_GLContext const context = CreateWished(sdlWindow, desc);
    if (!context)
    {
        string const error = SDL_GetError();
        reason = DescribeMissingVersion(desc, ReadOffer(sdlWindow), error);
        return nullptr;
    }
    AutoPtr<OpenGLContext> result(new OpenGLContext);
    result->system_.reset(new System(sdlWindow, context));
    return result->MakeCurrent(reason) ? std::move(result) : nullptr;
}

void OpenGLContext::SystemDeleter::operator()(System *system) const
{
    delete system;
}

OpenGLContext::~OpenGLContext() = default;

bool OpenGLContext::MakeCurrent(string &reason)
{
    if (SDL_GL_MakeCurrent(system_->window, system_->context) == 0)
        return true;
    reason = string("The display refuses the OpenGL context: ") + SDL_GetError() + ".";
    return false;
}

bool OpenGLContext::IsCurrent() const
{
    return SDL_GL_GetCurrentContext() == system_->context;
}

void OpenGLContext::SwapBuffers()
{
    SDL_GL_SwapWindow(system_->window);
}

int OpenGLContext::SetSwapInterval(int interval)
{
    if (SDL_GL_SetSwapInterval(interval) != 0 && interval < 0)
        SDL_GL_SetSwapInterval(-interval);
    return SDL_GL_GetSwapInterval();
}

OpenGLFunction OpenGLContext::FindFunction(char const *name) const
{
    return Find(name);
}

OpenGLFunction OpenGLContext::FindCurrentFunction(char const *name)
{
    bool const isCurrent = IsSdlLoaded() && SDL_GL_GetCurrentContext() != nullptr;
    return isCurrent ? Find(name) : nullptr;
}

} // namespace quillmarsh::platform
