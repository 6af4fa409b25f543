// A window on the desktop, and the cursor in it.
#ifndef QUILLMARSH_PLATFORM_WINDOW_H
#define QUILLMARSH_PLATFORM_WINDOW_H

#include <quillmarsh/platform/displaymodes.h>
#include <quillmarsh/platform/inputcodes.h>
#include <quillmarsh/platform/pixelrows.h>
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
    /// Covers its display, without a frame.
    e_fullscreen
};

/// Step at which a window could not be opened.
enum class eWindowStep
{
    /// The system refuses this kind of window. Windows only.
    e_class,
    /// There is no display, or the system refuses the window.
    e_window,
    /// The system gives no device context for the window. Windows only.
    e_deviceContext
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
    /// Lets the keys of the system close the window. Windows only: Alt and F4. On Linux they belong to the desktop.
    bool hasSystemKeys = true;
    /// Lists the window in the desktop's task bar.
    bool isInTaskBar = true;
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
    /// Widths of a frame in pixels.
    struct Frame
    {
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
    };
    /// Rectangle on the desktop in pixels.
    struct Area
    {
        Position position;
        Size size;
    };
    /// Colour without transparency.
    struct Color
    {
        unsigned char red = 0;
        unsigned char green = 0;
        unsigned char blue = 0;
    };

    /// Opens a window. On failure, for example without a display, it returns null and sets `reason` to a text for the
    /// user, and `failedStep` unless it is null.
    static AutoPtr<Window> Open(WindowDesc const &desc, string &reason, eWindowStep *failedStep = nullptr);
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
    /// Returns the device context of the client area, which exists as long as the window; null on Linux.
    HDC GetDeviceContext() const;

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
    /// Covers the display in its present mode.
    void SetFullscreen();
    /// Covers the display in another mode, until Restore() or the end of the window; a frequency of 0 stands for any.
    /// While another program is active, the window is minimized and the display has the desktop's mode. Returns false
    /// and sets `reason` to a text for the user, when the display does not take the mode; the window is then unchanged.
    bool SetFullscreen(DisplayMode const &mode, string &reason);
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
    /// Limits the sizes that the window can have. A width or height of 0 is no limit.
    void SetSizeLimits(Size smallest, Size largest);
    /// Returns the frame around the client area; zeros when the desktop does not tell.
    Frame GetFrame() const;
    /// Returns the part of the window's display that no task bar covers.
    Area GetWorkArea() const;
    /// @}

    /// @name Look
    /// @{

    /// Changes what WindowDesc sets under these names.
    void SetFrame(bool hasFrame, bool isResizable);
    /// Keeps the window above all others.
    void SetAlwaysOnTop(bool isOnTop);
    /// Sets how much the window covers what is behind it: 0 not at all, 255 completely. Needs a desktop that draws
    /// windows through one another; others show the window as it is.
    /// On Windows all pixels of the colour `key` are transparent, also for the mouse; on Linux `key` has no effect.
    void SetOpacity(unsigned char opacity, std::optional<Color> const &key = std::nullopt);
    /// Sets the icon for title bar and task bar, from MakeIcon() or, on Windows, from the system; null for the default.
    /// The icon is borrowed until another one is set.
    void SetIcon(HICON icon);
    /// Makes an icon. Returns null when the system refuses it. Free it by FreeIcon().
    static HICON MakeIcon(PixelRows const &pixels);
    static void FreeIcon(HICON icon);
    /// Sets the cursor for the client area; null hides it. The cursor is borrowed until another one is set.
    void SetCursor(HCURSOR cursor);
    /// @}

    /// @name Painting
    /// @{

    /// Requests an event e_windowExposed for the client area. Several requests may give one event. Any thread, while
    /// the window is open.
    void Invalidate();
    /// Shows an image in the client area, from its upper left corner on. Alpha has no effect. Not for a window that
    /// OpenGL draws.
    void ShowImage(PixelRows const &pixels);
    /// @}

    /// Sends an event e_windowWoken at the next pump, and ends a wait for messages. Any thread, while the window is
    /// open.
    void Wake();
    /// Stops screen saver and power saving of the display, or allows them again. A new window allows them.
    void KeepDisplayOn(bool keepOn);
    /// Opens the system's menu of the window at a pixel of the client area, if the window has that menu. Windows only:
    /// on Linux programs cannot open it.
    void OpenSystemMenu(Position position);

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

    /// The window on a headless desktop, which has no window manager.
    class Headless;
    struct HeadlessDeleter
    {
        void operator()(Headless *headless) const;
    };

    explicit Window(eWindowRole role) : role_(role) {}
    /// Opens the system's window; null with reason and step.
    static System *OpenSystem(Window &window, WindowDesc const &desc, string &reason, eWindowStep &failedStep);

    // The operations of the same names on the system's desktop.
    eWindowState GetStateOnDesktop() const;
    void ShowOnDesktop();
    void HideOnDesktop();
    void MinimizeOnDesktop();
    void MaximizeOnDesktop();
    void RestoreOnDesktop();
    /// Null for the present mode.
    bool SetFullscreenOnDesktop(DisplayMode const *mode, string &reason);
    void ActivateOnDesktop();
    bool IsActiveOnDesktop() const;
    Area GetWorkAreaOnDesktop() const;

    eWindowRole role_;
    std::unique_ptr<System, SystemDeleter> system_;
    /// Null on the system's desktop.
    std::unique_ptr<Headless, HeadlessDeleter> headless_;
};

/// True when the environment names a display for windows, until that display ends; also true while the desktop is
/// headless, and always on Windows.
QUILLMARSH_API bool HasDisplay();

/// Gives the position of the mouse on the desktop, also outside the program's windows. Returns false when the desktop
/// does not tell. The desktop's thread only.
QUILLMARSH_API bool FindMouse(Window::Position &position);

/// True while a key is down, as far as the program's windows know. The desktop's thread only.
QUILLMARSH_API bool IsKeyDown(eKey key);

/// @name Locks of the keyboard
/// True while a lock is on. The desktop's thread only.
/// @{
QUILLMARSH_API bool IsCapsLockOn();
QUILLMARSH_API bool IsNumLockOn();
QUILLMARSH_API bool IsScrollLockOn();
/// @}

/// Hides the cursor and holds it in the active window, or releases it. While it is held, the edges of the display do
/// not limit mouse movements. The desktop's thread only.
QUILLMARSH_API void HoldCursor(bool hold);

/// @name Cursor in all windows of the program
/// Shown at first. Hidden, no window shows the cursor that it has. The desktop's thread only.
/// @{
QUILLMARSH_API void ShowMouseCursor(bool show);
QUILLMARSH_API bool IsMouseCursorShown();
/// @}

} // namespace quillmarsh::platform

#endif
