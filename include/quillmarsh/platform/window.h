// A window on the desktop, and the cursor in it.
#ifndef QUILLMARSH_PLATFORM_WINDOW_H
#define QUILLMARSH_PLATFORM_WINDOW_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// What a window is for.
enum class eWindowRole
{
    /// The window of the program, which its input belongs to. Whoever opened a window only for want of one gives it up.
    e_main,
    /// Any other.
    e_tool
};

/// What the user sees of a window.
enum class eWindowState
{
    e_hidden,
    e_normal,
    e_minimized,
    e_maximized,
    /// Covers the display that it is on, without a frame, in the mode that the display has.
    e_fullscreen
};

/// What a window begins with.
struct WindowDesc
{
    eWindowRole role = eWindowRole::e_main;
    /// One line, in UTF-8.
    string title = {};
    /// Of the client area, in pixels.
    int width = 640;
    int height = 480;
    /// Title, border, and buttons of the desktop.
    bool hasFrame = true;
    /// The user can change its size.
    bool isResizable = true;
    /// The client area is filled with a dark colour when it is exposed; off for a window that somebody draws.
    bool isFilled = false;
};

/// A window on the desktop. What happens to it is told by events (desktopevents.h).
///
/// A window is opened hidden; it is destroyed by its owner, never by the user. All operations are for the desktop's
/// thread, the one that opened the first of the windows that are open. Operations that change the window are wishes that
/// the desktop may refuse or carry out later; an event tells what came of them, in some cases within the call.
/// \code
/// string reason;
/// AutoPtr<platform::Window> window = platform::Window::Open({.title = "Viewer"}, reason);
/// if (window == nullptr)
///     GetConOut() << "There is no window: " << reason << std::endl;
/// else
///     window->Show();
/// \endcode
class QUILLMARSH_API Window : NoCopy
{
public:
    /// The system's side of a window; opaque.
    struct System;

    /// Place on the desktop, in pixels.
    struct Position
    {
        int x = 0;
        int y = 0;
    };
    /// Extent in pixels.
    struct Size
    {
        int width = 0;
        int height = 0;
    };

    /// Opens a window. Null when it cannot be had, for want of a display for one; then `reason` says why.
    static AutoPtr<Window> Open(WindowDesc const &desc, string &reason);
    /// Tells the listeners that the window goes, and closes it.
    ~Window();

    /// @name Windows that are open
    /// @{

    static unsigned int GetNumOpen();
    /// Gives the main window that was opened last; null without one.
    static Window *GetMain();
    /// Gives the window that has the keyboard focus; null when none of the program's has it.
    static Window *GetActive();
    /// Finds the window of a handle; null when it is of no window of ours.
    static Window *Find(HWND handle);
    /// @}

    /// Gives the system's own handle: on Windows the window's, on Linux an SDL_Window.
    HWND GetHandle() const;
    eWindowRole GetRole() const { return role_; }

    void SetTitle(string const &title);
    string GetTitle() const;

    /// @name State
    /// @{
    eWindowState GetState() const;
    void Show();
    void Hide();
    void Minimize();
    void Maximize();
    /// Undoes Minimize(), Maximize() and full screen.
    void Restore();
    void SetFullscreen();
    /// Brings the window to the front and asks for the keyboard focus.
    void Activate();
    bool IsActive() const;
    /// @}

    /// @name Geometry
    /// Of the client area: the frame lies around it.
    /// @{
    Position GetPosition() const;
    void SetPosition(Position position);
    Size GetSize() const;
    void SetSize(Size size);
    /// @}

    /// Asks for an event that the client area is to be drawn anew.
    void Invalidate();

    /// Shows a cursor while the mouse is in the client area; null for none. Borrowed until another one is set.
    void SetCursor(HCURSOR cursor);
    /// Moves the cursor to a pixel of the client area.
    void MoveCursor(int x, int y);

    /// For the platform layer.
    System &GetSystem() const { return *system_; }

private:
    /// Closes the system's window.
    struct SystemDeleter
    {
        void operator()(System *system) const;
    };

    explicit Window(eWindowRole role) : role_(role) {}
    /// Opens the system's window; null with the reason.
    static System *OpenSystem(Window &window, WindowDesc const &desc, string &reason);

    eWindowRole role_;
    std::unique_ptr<System, SystemDeleter> system_;
};

/// True when the environment names a display to open windows on. On Windows it always does.
QUILLMARSH_API bool HasDisplay();

/// Hides the cursor and holds it in the active window, or lets it go: while it is held, movements of the mouse have no
/// bounds. The desktop's thread only.
QUILLMARSH_API void HoldCursor(bool hold);

} // namespace quillmarsh::platform

#endif
