#include "source/platform/linux/sdl/sdlevents.h"

#include "source/platform/desktopevents.h"
#include "source/platform/linux/messagequeue.h"
#include "source/platform/linux/sdl/sdlkeys.h"
#include "source/platform/linux/sdl/sdlwindow.h"

#include <algorithm>
#include <iterator>

namespace quillmarsh::platform
{
namespace
{

struct WindowEventRow
{
    SDL_WindowEventID id;
    eDesktopEvent kind;
    bool isOn = false;
};

constexpr WindowEventRow s_windowEvents[] = {
    {SDL_WINDOWEVENT_CLOSE, eDesktopEvent::e_windowCloseWish},
    {SDL_WINDOWEVENT_FOCUS_GAINED, eDesktopEvent::e_windowActive, true},
    {SDL_WINDOWEVENT_FOCUS_LOST, eDesktopEvent::e_windowActive, false},
    {SDL_WINDOWEVENT_SHOWN, eDesktopEvent::e_windowGeometry},
    {SDL_WINDOWEVENT_HIDDEN, eDesktopEvent::e_windowGeometry},
    {SDL_WINDOWEVENT_MOVED, eDesktopEvent::e_windowGeometry},
    {SDL_WINDOWEVENT_SIZE_CHANGED, eDesktopEvent::e_windowGeometry},
    {SDL_WINDOWEVENT_MINIMIZED, eDesktopEvent::e_windowGeometry},
    {SDL_WINDOWEVENT_MAXIMIZED, eDesktopEvent::e_windowGeometry},
    {SDL_WINDOWEVENT_RESTORED, eDesktopEvent::e_windowGeometry},
    {SDL_WINDOWEVENT_EXPOSED, eDesktopEvent::e_windowExposed},
    {SDL_WINDOWEVENT_ENTER, eDesktopEvent::e_mouseInside, true},
    {SDL_WINDOWEVENT_LEAVE, eDesktopEvent::e_mouseInside, false},
};

struct PlainEventRow
{
    SDL_EventType type;
    eDesktopEvent kind;
};

/// Events that belong to no window.
constexpr PlainEventRow s_plainEvents[] = {
    {SDL_QUIT, eDesktopEvent::e_exitWish},
    {SDL_CLIPBOARDUPDATE, eDesktopEvent::e_clipboard},
    {SDL_DISPLAYEVENT, eDesktopEvent::e_displays},
    {SDL_KEYMAPCHANGED, eDesktopEvent::e_keyboardLayout},
};

/// State at the event that is being sent; SDL itself already knows the events behind it.
KeyModifiers s_modifiers;

DesktopEvent MakeEvent(eDesktopEvent kind, Uint32 windowID)
{
    DesktopEvent event = {kind};
    if (SDL_Window *const window = SDL_GetWindowFromID(windowID))
        event.window = Window::Find(reinterpret_cast<HWND>(window));
    return event;
}

void OnWindowEvent(SDL_WindowEvent const &event)
{
    auto const row = std::find_if(std::begin(s_windowEvents), std::end(s_windowEvents),
                                  [&event](WindowEventRow const &each) { return each.id == event.event; });
    if (row == std::end(s_windowEvents))
        return;
    DesktopEvent told = MakeEvent(row->kind, event.windowID);
    // The window may have been closed meanwhile.
    if (!told.window)
        return;
    told.isOn = row->isOn;
    Window::System &system = told.window->GetSystem();
    if (event.event == SDL_WINDOWEVENT_ENTER || event.event == SDL_WINDOWEVENT_FOCUS_GAINED)
        s_modifiers = MakeModifiers(SDL_GetModState());
    if (event.event == SDL_WINDOWEVENT_ENTER)
        system.ApplyCursor();
    if (event.event == SDL_WINDOWEVENT_EXPOSED && system.isFilled)
        system.Fill();
    TellDesktop(told);
}

void OnUserEvent(SDL_UserEvent const &event)
{
    DesktopEvent const told =
        MakeEvent(event.code == e_user_windowMoved ? eDesktopEvent::e_windowGeometry : eDesktopEvent::e_windowWoken,
                  event.windowID);
    if (event.code != e_user_wake && told.window)
        TellDesktop(told);
}

/// Sends the events that Window::Invalidate() has asked for. They come last, and once for each window, so that a
/// listener that asks for the next one does not hold up the others.
void TellInvalidWindows()
{
    std::vector<Window *> const &windows = GetOpenWindows();
    // Listeners may open and destroy windows; a window that this walk misses for that reason is handled next time.
    for (std::size_t i = 0; i < windows.size(); ++i)
    {
        Window::System &system = windows[i]->GetSystem();
        if (!system.isInvalid.exchange(false))
            continue;
        if (system.isFilled)
            system.Fill();
        DesktopEvent event = {eDesktopEvent::e_windowExposed};
        event.window = windows[i];
        TellDesktop(event);
    }
}

void OnKey(SDL_KeyboardEvent const &event)
{
    DesktopEvent told = MakeEvent(eDesktopEvent::e_key, event.windowID);
    told.key = FindKey(event.keysym.scancode);
    told.isOn = event.state == SDL_PRESSED;
    told.isRepeat = event.repeat != 0;
    told.modifiers = s_modifiers = MakeModifiers(event.keysym.mod);
    if (told.isOn)
        LearnKeyDown(told.key, told.modifiers);
    TellDesktop(told);
}

void OnText(SDL_TextInputEvent const &event)
{
    LearnText(event.text);
    DesktopEvent told = MakeEvent(eDesktopEvent::e_text, event.windowID);
    static_assert(sizeof(told.text) == sizeof(event.text));
    std::copy(std::begin(event.text), std::end(event.text), told.text);
    TellDesktop(told);
}

DesktopEvent MakeMouseEvent(eDesktopEvent kind, Uint32 windowID, int x, int y)
{
    DesktopEvent event = MakeEvent(kind, windowID);
    event.x = x;
    event.y = y;
    event.modifiers = s_modifiers;
    return event;
}

void OnMouseMove(SDL_MouseMotionEvent const &event)
{
    DesktopEvent told = MakeMouseEvent(eDesktopEvent::e_mouseMove, event.windowID, event.x, event.y);
    told.moveX = static_cast<float>(event.xrel);
    told.moveY = static_cast<float>(event.yrel);
    TellDesktop(told);
}

void OnMouseButton(SDL_MouseButtonEvent const &event)
{
    constexpr eMouseButton buttons[] = {e_mouse_button_extra3, e_mouse_button_left,   e_mouse_button_middle,
                                        e_mouse_button_right,  e_mouse_button_extra1, e_mouse_button_extra2};
    DesktopEvent told = MakeMouseEvent(eDesktopEvent::e_mouseButton, event.windowID, event.x, event.y);
    told.button = buttons[event.button < std::size(buttons) ? event.button : 0];
    told.isOn = event.state == SDL_PRESSED;
    TellDesktop(told);
}

void OnMouseWheel(SDL_MouseWheelEvent const &event)
{
    DesktopEvent told = MakeMouseEvent(eDesktopEvent::e_mouseWheel, event.windowID, event.mouseX, event.mouseY);
    told.wheel = event.direction == SDL_MOUSEWHEEL_FLIPPED ? -event.preciseY : event.preciseY;
    TellDesktop(told);
}

void OnDrop(SDL_DropEvent const &event)
{
    string const fileName = event.file ? event.file : "";
    SDL_free(event.file);
    DesktopEvent told = MakeEvent(eDesktopEvent::e_fileDropped, event.windowID);
    told.fileName = fileName;
    // Text is dropped here, too, and windows close.
    if (event.type == SDL_DROPFILE && told.window)
        TellDesktop(told);
}

void OnPlainEvent(SDL_Event const &event)
{
    if (event.type == SDL_KEYMAPCHANGED)
        ForgetCharacters();
    for (PlainEventRow const &row : s_plainEvents)
    {
        if (row.type == event.type)
            TellDesktop({row.kind});
    }
}

void OnEvent(SDL_Event const &event)
{
    switch (event.type)
    {
    case SDL_WINDOWEVENT:
        return OnWindowEvent(event.window);
    case SDL_USEREVENT:
        return OnUserEvent(event.user);
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        return OnKey(event.key);
    case SDL_TEXTINPUT:
        return OnText(event.text);
    case SDL_MOUSEMOTION:
        return OnMouseMove(event.motion);
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        return OnMouseButton(event.button);
    case SDL_MOUSEWHEEL:
        return OnMouseWheel(event.wheel);
    case SDL_DROPFILE:
    case SDL_DROPTEXT:
        return OnDrop(event.drop);
    default:
        return OnPlainEvent(event);
    }
}

} // namespace

void TakeDesktopEvents()
{
    SDL_Event event;
    // A listener may destroy the last window, which also ends SDL's video part.
    while (IsDesktopThread() && SDL_PollEvent(&event))
        OnEvent(event);
    if (IsDesktopThread())
        TellInvalidWindows();
}

void PumpDesktop()
{
    if (!IsDesktopThread())
        return;
    TakeDesktopEvents();
    DispatchWindowTimers();
}

bool WaitForDesktopEvent(std::optional<unsigned int> milliseconds)
{
    constexpr unsigned int longest = 1000000;
    return SDL_WaitEventTimeout(nullptr, milliseconds ? static_cast<int>(std::min(*milliseconds, longest)) : -1) != 0;
}

bool WaitForSystemEvents(unsigned int milliseconds)
{
    return WaitForDesktopEvent(milliseconds);
}

void EndDesktopWait()
{
    WakeDesktop();
}

void WakeDesktop()
{
    if (!IsSdlLoaded())
        return;
    SDL_Event event = {};
    event.user.type = SDL_USEREVENT;
    event.user.code = e_user_wake;
    SDL_PushEvent(&event);
}

} // namespace quillmarsh::platform
