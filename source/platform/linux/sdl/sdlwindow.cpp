#include "source/platform/linux/sdl/sdlwindow.h"

#include "source/platform/desktopevents.h"

namespace quillmarsh::platform
{
namespace
{

SDL_WindowFlags GetFlags(WindowDesc const &desc)
{
    unsigned int flags = SDL_WINDOW_HIDDEN;
    if (!desc.hasFrame)
        flags |= SDL_WINDOW_BORDERLESS;
    if (desc.isResizable)
        flags |= SDL_WINDOW_RESIZABLE;
    if (desc.openGL)
        flags |= SDL_WINDOW_OPENGL;
    return static_cast<SDL_WindowFlags>(flags);
}

/// Sets the pixels of the next window. SDL keeps them for the whole process, so none are left over from another one.
void SetPixels(OpenGLPixels const &pixels)
{
    SDL_GL_ResetAttributes();
    for (SDL_GLattr const colour : {SDL_GL_RED_SIZE, SDL_GL_GREEN_SIZE, SDL_GL_BLUE_SIZE})
        SDL_GL_SetAttribute(colour, 8);
    SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, pixels.numAlphaBits);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, pixels.numDepthBits);
    SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, pixels.numStencilBits);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, pixels.numSamples > 0 ? 1 : 0);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, pixels.numSamples);
}

} // namespace

void Window::System::Fill()
{
    SDL_Surface *const surface = SDL_GetWindowSurface(window);
    if (!surface)
        return;
    SDL_FillRect(surface, nullptr, SDL_MapRGB(surface->format, 40, 44, 52));
    SDL_UpdateWindowSurface(window);
}

void Window::System::ApplyCursor()
{
    SDL_ShowCursor(cursor == nullptr ? SDL_DISABLE : SDL_ENABLE);
    SDL_SetCursor(cursor.value_or(SDL_GetDefaultCursor()));
}

Window::System *Window::OpenSystem(Window &, WindowDesc const &desc, string &reason)
{
    auto system = std::make_unique<System>();
    if (!system->video.IsStarted())
    {
        reason = SdlVideoUse::GetReason();
        return nullptr;
    }
    if (desc.openGL)
        SetPixels(*desc.openGL);
    system->window = SDL_CreateWindow(desc.title.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, desc.width,
                                      desc.height, GetFlags(desc));
    if (!system->window)
    {
        reason = string("The display refuses a window: ") + SDL_GetError() + ".";
        return nullptr;
    }
    system->isFilled = desc.isFilled;
    return system.release();
}

void Window::SystemDeleter::operator()(System *system) const
{
    delete system;
}

HWND Window::GetHandle() const
{
    return reinterpret_cast<HWND>(system_->window);
}

void Window::SetTitle(string const &title)
{
    SDL_SetWindowTitle(system_->window, title.c_str());
}

string Window::GetTitle() const
{
    return SDL_GetWindowTitle(system_->window);
}

eWindowState Window::GetState() const
{
    if (!system_->HasFlag(SDL_WINDOW_SHOWN))
        return eWindowState::e_hidden;
    if (system_->HasFlag(SDL_WINDOW_MINIMIZED))
        return eWindowState::e_minimized;
    if (system_->HasFlag(SDL_WINDOW_FULLSCREEN_DESKTOP))
        return eWindowState::e_fullscreen;
    return system_->HasFlag(SDL_WINDOW_MAXIMIZED) ? eWindowState::e_maximized : eWindowState::e_normal;
}

void Window::Show()
{
    SDL_ShowWindow(system_->window);
    if (system_->isFilled)
        system_->Fill();
}

void Window::Hide()
{
    SDL_HideWindow(system_->window);
}

void Window::Minimize()
{
    SDL_MinimizeWindow(system_->window);
}

void Window::Maximize()
{
    SDL_MaximizeWindow(system_->window);
}

void Window::Restore()
{
    if (!system_->HasFlag(SDL_WINDOW_FULLSCREEN_DESKTOP))
    {
        SDL_RestoreWindow(system_->window);
        return;
    }
    SDL_SetWindowFullscreen(system_->window, 0);
    // Some window managers forget size and position.
    SetSize(system_->sizeBefore);
    SetPosition(system_->positionBefore);
}

void Window::SetFullscreen()
{
    if (system_->HasFlag(SDL_WINDOW_FULLSCREEN_DESKTOP))
        return;
    system_->positionBefore = GetPosition();
    system_->sizeBefore = GetSize();
    SDL_SetWindowFullscreen(system_->window, SDL_WINDOW_FULLSCREEN_DESKTOP);
}

void Window::Activate()
{
    SDL_RaiseWindow(system_->window);
}

bool Window::IsActive() const
{
    return system_->HasFlag(SDL_WINDOW_INPUT_FOCUS);
}

Window::Position Window::GetPosition() const
{
    Position position;
    SDL_GetWindowPosition(system_->window, &position.x, &position.y);
    return position;
}

void Window::SetPosition(Position position)
{
    SDL_SetWindowPosition(system_->window, position.x, position.y);
}

Window::Size Window::GetSize() const
{
    Size size;
    SDL_GetWindowSize(system_->window, &size.width, &size.height);
    return size;
}

void Window::SetSize(Size size)
{
    SDL_SetWindowSize(system_->window, size.width, size.height);
}

void Window::Invalidate()
{
    SDL_Event event = {};
    event.type = SDL_WINDOWEVENT;
    event.window.windowID = SDL_GetWindowID(system_->window);
    event.window.event = SDL_WINDOWEVENT_EXPOSED;
    SDL_PushEvent(&event);
}

void Window::SetCursor(HCURSOR cursor)
{
    system_->cursor = reinterpret_cast<SDL_Cursor *>(cursor);
    if (SDL_GetMouseFocus() == system_->window)
        system_->ApplyCursor();
}

void Window::MoveCursor(int x, int y)
{
    SDL_WarpMouseInWindow(system_->window, x, y);
}

void HoldCursor(bool hold)
{
    if (IsDesktopThread())
        SDL_SetRelativeMouseMode(hold ? SDL_TRUE : SDL_FALSE);
}

} // namespace quillmarsh::platform
