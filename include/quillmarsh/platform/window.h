// A window on the desktop, and the cursor in it.
#ifndef QUILLMARSH_PLATFORM_WINDOW_H
#define QUILLMARSH_PLATFORM_WINDOW_H

#include <quillmarsh/platform/types.h>

#include <optional>

namespace quillmarsh::platform
{

/// What a window is for.
enum class eWindowRole
{
    /// The program's main window, which gets its input. A driver that opened a window of its own, because there was
    /// none, closes it when this one opens.
    e_main,
    /// Any other window.
    e_tool
};

/// How a window is shown.
enum class eWindowState
{
    e_hidden,
    e_normal,
    e_minimized,
    e_maximized,
    /// Covers its display, without a frame, in the display's present mode.
    e_fullscreen
};

/// Pixels of a window that OpenGL draws, with 8 bits for each colour and two buffers.
struct OpenGLPixels
{
    int numAlphaBits = 0;
    int numDepthBits = 24;
    int numStencilBits = 8;
    /// Samples of each pixel; 0 for no multisampling.
    int numSamples = 0;
};

/// Initial properties of a window.
struct WindowDesc
{
    eWindowRole role = eWindowRole::e_main;
    /// One line, in UTF-8.
    string title = {};
    /// Width and height of the client area in pixels.
    int width = 640;
    int height = 480;
    /// Gives the window the desktop's title bar, border and buttons.
    bool hasFrame = true;
    /// Lets the user change the size.
    bool isResizable = true;
    /// Fills the client area with a dark colour when it is exposed. Leave it off for a window that the program draws.
    bool isFilled = false;
    /// Makes a window for OpenGL, for which Open() fails without a driver or when the driver lacks these pixels. On
    /// Windows any window serves OpenGL, and the owner of the context chooses the pixels: the values have no effect.
    std::optional<OpenGLPixels> openGL = {};
};

/// A window on the desktop. Events report what happens to it (desktopevents.h).
///
/// A new window is hidden until Show(). Its owner destroys it; the user cannot. All operations belong to the desktop's
/// thread: the thread that opened the first of the open windows. Operations that change a window are requests, which
/// the desktop may refuse or carry out later; an event reports the result, in some cases during the call.
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
    /// The system's part of a window; opaque.
    struct System;

    /// Position on the desktop in pixels.
    struct Position
    {
        int x = 0;
        int y = 0;
    };
    /// Width and height in pixels.
    struct Size
    {
        int width = 0;
        int height = 0;
    };

    /// Opens a window. On failure, for example without a display, it returns null and sets `reason` to a text for the
    /// user.
    static AutoPtr<Window> Open(WindowDesc const &desc, string &reason);
    /// Sends e_windowClosing to the listeners, and closes the window.
    ~Window();

    /// @name Open windows
    /// @{

    /// Returns the number of open windows.
    static unsigned int GetNumOpen();
    /// Returns the main window that was opened last; null without one.
    static Window *GetMain();
    /// Returns the window that has the keyboard focus; null when no window of the program has it.
    static Window *GetActive();
    /// Returns the window that has a handle; null when the handle belongs to no Window.
    static Window *Find(HWND handle);
    /// @}

    /// Returns the system's handle: the window's HWND on Windows, its SDL_Window on Linux.
    HWND GetHandle() const;
    /// Returns the role that the window was opened with.
    eWindowRole GetRole() const { return role_; }

    /// @name Title
    /// The text of the title bar: one line, in UTF-8.
    /// @{
    void SetTitle(string const &title);
    string GetTitle() const;
    /// @}

    /// @name State
    /// Each operation requests the state of its name; GetState() returns the present one.
    /// @{
    eWindowState GetState() const;
    void Show();
    void Hide();
    void Minimize();
    void Maximize();
    /// Undoes Minimize(), Maximize() and SetFullscreen().
    void Restore();
    void SetFullscreen();
    /// Brings the window to the front and requests the keyboard focus.
    void Activate();
    bool IsActive() const;
    /// @}

    /// @name Geometry
    /// Positions and sizes are those of the client area, without the frame, in pixels.
    /// @{
    Position GetPosition() const;
    void SetPosition(Position position);
    Size GetSize() const;
    void SetSize(Size size);
    /// @}

    /// Requests an event e_windowExposed for the client area.
    void Invalidate();

    /// Sets the cursor for the client area; null hides it. The cursor is borrowed until another one is set.
    void SetCursor(HCURSOR cursor);
    /// Moves the cursor to a pixel of the client area.
    void MoveCursor(int x, int y);

    /// Returns the system's part, for the platform layer only.
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

/// True when the environment names a display for windows; always true on Windows.
QUILLMARSH_API bool HasDisplay();

/// Hides the cursor and holds it in the active window, or releases it. While it is held, the edges of the display do
/// not limit mouse movements. The desktop's thread only.
QUILLMARSH_API void HoldCursor(bool hold);

} // namespace quillmarsh::platform

#endif
