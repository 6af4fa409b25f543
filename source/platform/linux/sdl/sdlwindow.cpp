#include "source/platform/linux/sdl/sdlwindow.h"

#include "source/platform/desktopevents.h"
#include "source/platform/linux/sdl/sdldisplayloss.h"

#include <algorithm>

namespace quillmarsh::platform
{
namespace
{

bool s_isMouseCursorShown = true;

SDL_WindowFlags GetFlags(WindowDesc const &desc)
{
    unsigned int flags = SDL_WINDOW_HIDDEN;
    if (!desc.hasFrame)
        flags |= SDL_WINDOW_BORDERLESS;
    if (desc.isResizable)
        flags |= SDL_WINDOW_RESIZABLE;
    if (!desc.isInTaskBar)
        flags |= SDL_WINDOW_SKIP_TASKBAR;
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
    SDL_ShowCursor(cursor == nullptr || !s_isMouseCursorShown ? SDL_DISABLE : SDL_ENABLE);
    SDL_SetCursor(cursor.value_or(SDL_GetDefaultCursor()));
}

Window::System *Window::OpenSystem(Window &, WindowDesc const &desc, string &reason, eWindowStep &)
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
    WatchDisplay(system->window);
    system->id = SDL_GetWindowID(system->window);
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

HDC Window::GetDeviceContext() const
{
    return nullptr;
}

eWindowState Window::GetStateOnDesktop() const
{
    if (!system_->HasFlag(SDL_WINDOW_SHOWN))
        return eWindowState::e_hidden;
    if (system_->HasFlag(SDL_WINDOW_MINIMIZED))
        return eWindowState::e_minimized;
    if (system_->HasFlag(SDL_WINDOW_FULLSCREEN_DESKTOP))
        return eWindowState::e_fullscreen;
    return system_->HasFlag(SDL_WINDOW_MAXIMIZED) ? eWindowState::e_maximized : eWindowState::e_normal;
}

void Window::ShowOnDesktop()
{
    if (IsDisplayLost())
        return;
    SDL_ShowWindow(system_->window);
    if (system_->isFilled)
        system_->Fill();
}

void Window::HideOnDesktop()
{
    if (IsDisplayLost())
        return;
    SDL_HideWindow(system_->window);
}

void Window::MinimizeOnDesktop()
{
    SDL_MinimizeWindow(system_->window);
}

void Window::MaximizeOnDesktop()
{
    SDL_MaximizeWindow(system_->window);
}

void Window::RestoreOnDesktop()
{
    if (IsDisplayLost())
        return;
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

bool Window::SetFullscreenOnDesktop(DisplayMode const *mode, string &reason)
{
    if (IsDisplayLost())
    {
        reason = SdlVideoUse::GetReason();
        return false;
    }
    bool const wasFullscreen = system_->HasFlag(SDL_WINDOW_FULLSCREEN_DESKTOP);
    Area const before = {GetPosition(), GetSize()};
    SDL_DisplayMode found = {};
    if (mode && !FindSdlMode(SDL_GetWindowDisplayIndex(system_->window), *mode, found))
    {
        reason = "The display does not have the mode.";
        return false;
    }
    bool const isSet =
        (!mode || SDL_SetWindowDisplayMode(system_->window, &found) == 0) &&
        SDL_SetWindowFullscreen(system_->window,
                                static_cast<Uint32>(mode ? SDL_WINDOW_FULLSCREEN : SDL_WINDOW_FULLSCREEN_DESKTOP)) == 0;
    if (!isSet)
        reason = string("The display refuses the mode: ") + SDL_GetError() + ".";
    else if (!wasFullscreen)
    {
        system_->positionBefore = before.position;
        system_->sizeBefore = before.size;
    }
    return isSet;
}

void Window::ActivateOnDesktop()
{
    SDL_RaiseWindow(system_->window);
}

bool Window::IsActiveOnDesktop() const
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
    // SDL sends no event for a position that it knows.
    PushWindowEvent(system_->id, e_user_windowMoved);
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

void Window::SetSizeLimits(Size smallest, Size largest)
{
    // The largest size that SDL opens a window with. X11 has no sizes from twice of it on.
    static constexpr int none = 16384;
    auto const limit = [](int length) { return length > 0 ? std::min(length, none) : none; };
    // SDL refuses a limit that contradicts the other one, also when that one is about to change.
    SDL_SetWindowMinimumSize(system_->window, 1, 1);
    SDL_SetWindowMaximumSize(system_->window, limit(largest.width), limit(largest.height));
    SDL_SetWindowMinimumSize(system_->window, std::clamp(smallest.width, 1, limit(largest.width)),
                             std::clamp(smallest.height, 1, limit(largest.height)));
}

Window::Frame Window::GetFrame() const
{
    Frame frame;
    SDL_GetWindowBordersSize(system_->window, &frame.top, &frame.left, &frame.bottom, &frame.right);
    return frame;
}

Window::Area Window::GetWorkAreaOnDesktop() const
{
    SDL_Rect area = {};
    SDL_GetDisplayUsableBounds(SDL_GetWindowDisplayIndex(system_->window), &area);
    return {{area.x, area.y}, {area.w, area.h}};
}

void ShowMouseCursor(bool show)
{
    s_isMouseCursorShown = show;
    SDL_Window *const entered = IsDesktopThread() ? SDL_GetMouseFocus() : nullptr;
    // A window that the mouse is not in applies its cursor when the mouse enters.
    if (Window const *const window = entered != nullptr ? Window::Find(reinterpret_cast<HWND>(entered)) : nullptr)
        window->GetSystem().ApplyCursor();
}

bool IsMouseCursorShown()
{
    return s_isMouseCursorShown;
}

void HoldCursor(bool hold)
{
    if (IsDesktopThread())
        SDL_SetRelativeMouseMode(hold ? SDL_TRUE : SDL_FALSE);
}

} // namespace quillmarsh::platform
