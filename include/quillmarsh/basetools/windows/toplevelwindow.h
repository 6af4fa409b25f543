// A window of the program, with its messages turned into virtual calls.
#ifndef QUILLMARSH_BASETOOLS_WINDOWS_TOPLEVELWINDOW_H
#define QUILLMARSH_BASETOOLS_WINDOWS_TOPLEVELWINDOW_H

#include <quillmarsh/basetools/windows/messagehook.h>
#include <quillmarsh/basetools/windows/windowmessages.h>
#include <quillmarsh/basetools/windows/winutils.h>
#include <quillmarsh/platform/window.h>

namespace quillmarsh
{

/// Base of the program's windows: geometry, state and look of a window, its input as virtual calls, and a frame that the
/// window draws itself.
///
/// The events of the desktop (platform/desktopevents.h) become messages with the numbers of windowmessages.h, the same on
/// every system. MessageHandler() turns a message into one of the virtual calls below it.
///
/// A window without the desktop's frame can be its own frame: MouseHitTest() says what each point of it is. The caption
/// moves the window, its edges size it, its buttons close, minimize and maximize it; command areas call
/// OnCommandAreaActivated().
///
/// A derived class opens the window by CreateSystemWindow() and closes it by DestroySystemWindow(), at the latest in its
/// destructor if it wants its virtual calls until then. All that is set before the window exists applies from its
/// creation on. The operations belong to the desktop's thread, except where they say otherwise.
/// \code
/// class Notice : public TopLevelWindow
/// {
/// public:
///     Notice()
///     {
///         SetText("Notice");
///         SetSize(320, 120);
///         SetUseGdiplus(true);
///         CreateSystemWindow(0, win_utils::e_style_popup, 0);
///         CenterOnDesktop();
///         Show();
///     }
///     eWindowArea MouseHitTest(win_utils::Point const &point, unsigned int &subCode) override
///     {
///         bool const isCaption = point.y < 24;
///         return isCaption ? e_area_caption : TopLevelWindow::MouseHitTest(point, subCode);
///     }
///     void OnClose() override { DestroySystemWindow(); }
/// };
/// \endcode
class QUILLMARSH_API TopLevelWindow : NoCopy
{
public:
    /// What a point of the window is. The comments tell what the mouse does there; elsewhere it does nothing.
    enum eWindowArea : unsigned int
    {
        /// Outside the window.
        e_area_none = 0,
        /// The left button moves the window, twice in a row it maximizes or restores it. The right button opens the
        /// system's menu.
        e_area_caption = 1,
        /// Frame that does not size the window.
        e_area_border = 2,
        /// Command area; its sub-code tells which.
        e_area_help = 3,
        /// Sends e_message_close.
        e_area_close = 4,
        /// Minimizes the window.
        e_area_minimize = 5,
        /// Maximizes or restores the window.
        e_area_maximize = 6,
        /// Command area; its sub-code tells which.
        e_area_command = 7,
        /// Opens the system's menu.
        e_area_system = 8,
        /// Command area; its sub-code tells which.
        e_area_menu = 9,
        /// Calls the mouse operations.
        e_area_client = 10,
        /// @name Edges and corners
        /// They size the window.
        /// @{
        e_area_left = 11,
        e_area_right = 12,
        e_area_top = 13,
        e_area_topLeft = 14,
        e_area_topRight = 15,
        e_area_bottom = 16,
        e_area_bottomLeft = 17,
        e_area_bottomRight = 18,
        /// @}
        /// Number of areas.
        e_area_numAreas
    };

    /// Why the size changed.
    enum eResizeAction : unsigned int
    {
        /// Back from minimized, maximized or full screen.
        e_resize_restored = 0,
        e_resize_minimized = 1,
        e_resize_maximized = 2,
        /// The program or the user sized the window, or it covers its display now.
        e_resize_sized = 3
    };

    /// Makes an object without a window. The icon is borrowed until another one is set; null for the default.
    explicit TopLevelWindow(HICON icon = nullptr);
    /// Closes the window.
    virtual ~TopLevelWindow();

    /// @name Messages
    /// @{

    /// Handles a message: turns it into the calls below, and does what areas and system commands stand for. Returns true
    /// when the message is done; `result` is then what the system gets. An override calls it for the messages that it
    /// does not handle itself.
    virtual bool MessageHandler(long &result, HWND window, unsigned int message, unsigned int wParam, long lParam);
    /// Returns the area of a point of the client area, and for a command area its sub-code. The default has only
    /// e_area_client and, outside of it, e_area_none.
    virtual eWindowArea MouseHitTest(win_utils::Point const &point, unsigned int &subCode);

    virtual void OnSystemColorsChanged();
    virtual void OnSystemSettingsChanged();
    virtual void OnDisplaySettingsChanged();
    /// The window got the keyboard focus or lost it.
    virtual void OnActivated(bool active);
    /// The user wants to close the window. The default leaves it open.
    virtual void OnClose();
    virtual void OnMoved();
    virtual void OnResized(eResizeAction action);
    /// Paints the client area. The default fills it with the system's colour of windows. It needs SetUseGdiplus(true), or
    /// asserts "Gdiplus not initialized.", once for all windows that repaint while the dialog of this assertion stands.
    virtual void OnPaint();
    /// The mouse is in another area, or in another command of the same area.
    virtual void OnMouseEnter(eWindowArea area, unsigned int subCode);
    virtual void OnAlwaysOnTop(bool onTop);
    /// The left button went down and up in a command area.
    virtual void OnCommandAreaActivated(unsigned int subCode);

    /// @name Input
    /// Positions are in pixels of the client area; `keys` has bits of win_utils::eMouseKeys. The mouse calls are for
    /// e_area_client, and go on outside of it for a button that went down there; the wheel's call is for all areas.
    /// @{
    virtual void OnMouseMove(win_utils::Point const &point, unsigned int keys);
    /// `delta` is 120 for each notch away from the user.
    virtual void OnMouseWheel(int delta, win_utils::Point const &point, unsigned int keys);
    virtual void OnMouseButtonLeft(bool down, win_utils::Point const &point, unsigned int keys);
    virtual void OnMouseButtonMiddle(bool down, win_utils::Point const &point, unsigned int keys);
    virtual void OnMouseButtonRight(bool down, win_utils::Point const &point, unsigned int keys);
    /// `key` is a virtual key (virtualkeys.h), `flags` has bits of win_utils::eKeyFlags.
    virtual void OnKeyDown(unsigned int key, long flags);
    virtual void OnKeyUp(unsigned int key, long flags);
    /// One byte of typed text in UTF-8, or a control character.
    virtual void OnChar(char character);
    /// @}
    /// @}

    /// @name Hooks
    /// The window borrows them; null for none. See MessageHook.
    /// @{
    static void SetMessageHook(MessageHook *hook);
    static MessageHook *GetMessageHook();
    void SetKeyboardMessageHook(KeyboardMessageHook *hook);
    void SetMouseMessageHook(MouseMessageHook *hook);
    /// @}

    /// Passes a message to the window's hooks and to its MessageHandler(); returns the result. Does nothing and returns 0
    /// for a handle that no TopLevelWindow has.
    static long MessageHandlerMapper(HWND window, unsigned int message, unsigned int wParam, long lParam);

    /// @name The system's window
    /// @{

    /// Null without a window.
    HWND GetHWND() const;
    /// Device context of the client area; null without a window, and on Linux.
    HDC GetHDC() const;
    /// The window as the platform layer has it, for example for an OpenGL context or full screen; null without a window.
    /// What changes there arrives as messages.
    platform::Window *GetPlatformWindow() const;
    /// @}

    /// @name Showing
    /// Without a window they assert "System-window not created." and do nothing.
    /// @{
    void Show();
    /// Shows the window minimized; with `activate` it has the keyboard focus when it is restored.
    void ShowMinimized(bool activate);
    void ShowMaximized();
    void Hide();
    void Restore();
    void Minimize();
    /// A window without a frame of the desktop takes the position of SetMaximizedPosition(), and the size of the work
    /// area within the maximum size.
    void Maximize();
    /// Brings the window to the front, and gives it the keyboard focus.
    void Activate();
    bool IsActive() const;
    bool IsMinimized() const;
    bool IsMaximized() const;
    /// @}

    /// Keeps the window above others; also before the window exists.
    void SetAlwaysOnTop(bool onTop);
    bool IsAlwaysOnTop() const;

    /// @name Geometry
    /// In pixels of the desktop. Position and size are those of the whole window with its frame.
    /// @{
    void SetPosition(int x, int y);
    /// Gives the window the position that was last set, again.
    void UpdatePosition();
    /// Position of the window while it is maximized, instead of the corner of the work area.
    void SetMaximizedPosition(int x, int y);
    void GetCurrentPosition(int &x, int &y) const;
    /// Both are raised to 1 and to the minimum size, and limited by the maximum size. A client area has at most 16384
    /// pixels in each direction.
    void SetSize(unsigned int width, unsigned int height);
    /// Gives the window the size that was last set, again.
    void UpdateSize();
    /// Smallest size that the window takes; 0 for no limit. A larger present size is kept.
    void SetMinSize(unsigned int width, unsigned int height);
    void GetMinSize(unsigned int &width, unsigned int &height) const;
    /// Largest size that the window takes; 0 for no limit.
    void SetMaxSize(unsigned int width, unsigned int height);
    void GetMaxSize(unsigned int &width, unsigned int &height) const;
    void GetSize(unsigned int &width, unsigned int &height) const;
    void GetClientAreaSize(unsigned int &width, unsigned int &height) const;
    void SetPositionAndSize(int x, int y, unsigned int width, unsigned int height);
    /// Places the window in the middle of the work area.
    void CenterOnDesktop();
    /// Gives the window position and size of the work area.
    void FillDesktop();
    /// Gives the edges of the part of the client area that lies on the desktop, right and bottom exclusive. Returns
    /// false, and zeros, when no part does, and while the window is hidden or minimized.
    bool GetVisibleClientAreaScreenCoords(int &left, int &top, int &right, int &bottom) const;
    /// @}

    /// @name Look
    /// @{

    /// Title: one line, in UTF-8.
    void SetText(string const &text);
    string const &GetText() const;
    /// The icon is borrowed until another one is set; platform::Window::MakeIcon() makes one.
    void SetIcon(HICON icon);
    /// Applies opacity and colour key, which is so from the beginning, or shows the window opaque.
    void EnableCompositingEffects(bool enable);
    /// 0 is invisible, 255 opaque. There is no colour key afterwards.
    void SetOpacity(unsigned char opacity);
    /// Pixels of this colour are not drawn, on Windows. The window is opaque elsewhere.
    void SetColorKey(color4b key);
    void SetOpacityAndColorKey(unsigned char opacity, color4b key);
    /// Repaints the window each time that it has moved.
    void SetForceRepaintOnMove(bool force);
    /// @}

    /// @name Mouse cursor
    /// @{
    void ShowMouseCursor(bool show);
    /// Shape for an area, borrowed; null for the arrow. Asserts "Invalid enumeration value." for a value that is no area.
    void SetMouseCursorShape(eWindowArea area, HICON shape);
    /// Edges have the arrows for sizing, all other areas the arrow.
    void ResetMouseCursorShapes();
    /// Handles the present mouse position as a movement, because the areas have changed.
    void SynthesizeMouseMove();
    /// @}

    /// @name Which input calls are made; all are enabled at first
    /// @{
    void EnableMessageDispatchMouseMove(bool enable);
    void EnableMessageDispatchMouseWheel(bool enable);
    void EnableMessageDispatchMouseButtons(bool enable);
    void EnableMessageDispatchKeyboardKeyStates(bool enable);
    void EnableMessageDispatchKeyboardCharEvents(bool enable);
    /// @}

    /// Posts e_message_null to the window, and so ends a wait for messages. Any thread, while the window exists.
    void PostNullMessage();

protected:
    /// @name Life
    /// @{

    /// Role of the window to be created; e_tool at first.
    void SetRole(platform::eWindowRole role);
    /// Makes the window to be created one for OpenGL.
    void SetOpenGLPixels(std::optional<platform::OpenGLPixels> const &pixels);
    /// Creates the window, hidden, with bits of win_utils::eWindowStyle and win_utils::eExtendedWindowStyle. Child windows
    /// and siblings are always clipped; layered and transparent are taken off `exStyle`. `classStyle` has no effect.
    /// Asserts "System-window already created." on a second call. Throws SystemResourceException, "RegisterClassEx()
    /// failed.", "CreateWindowEx() failed." or "GetDC() failed.".
    void CreateSystemWindow(unsigned int classStyle, unsigned long style, unsigned long exStyle);
    /// Closes the window. Asserts "System-window not created." without one. Does nothing while e_message_destroy is being
    /// handled: the window closes after it.
    void DestroySystemWindow();
    /// Why the last CreateSystemWindow() failed, as a text for the user.
    string const &GetCreationFailure() const;
    /// Starts the system's drawing for this window, or ends it. Throws SystemResourceException.
    void SetUseGdiplus(bool use);
    /// @}

    /// @name Styles
    /// They add or remove bits of win_utils::eWindowStyle. Return true when that changed the style.
    /// @{
    bool AddWindowStyles(unsigned long styles);
    bool RemoveWindowStyles(unsigned long styles);
    /// @}

    /// Reads position, size and state from the system's window. Messages do it by themselves.
    void CacheGeometryParameters();

    /// @name Keys for system commands
    /// The window itself turns keys into system commands, the same on every system; each key can be switched off, and all
    /// of them at once. All are on at first. Keys that the desktop takes for itself never arrive here.
    /// @{
    void EnableCloseThroughAltF4(bool enable);
    void EnableMenuThroughF10(bool enable);
    void EnableMenuThroughAltSpace(bool enable);
    void EnableSystemCommandEmulation(bool enable);
    /// @}

    /// Requests a repaint of the client area. Several requests may give one repaint. Any thread, while the window exists.
    void PostRepaint();
    /// Shows pixels in the client area, from its upper left corner on. Not for a window for OpenGL.
    void ShowPixels(platform::PixelRows const &pixels);
    /// Ends the message loop of the window's thread (messageloop.h).
    void PostQuit();

    /// @name Keys
    /// By virtual key (virtualkeys.h). False for other numbers.
    /// @{
    bool IsKeyDown(int key) const;
    /// True while Caps Lock, Num Lock or Scroll Lock is on.
    bool IsKeyToggled(int key) const;
    /// @}

    /// @name The area under the mouse
    /// @{
    eWindowArea GetCurrentMouseArea() const;
    unsigned int GetCurrentMouseAreaSubCode() const;
    bool IsMouseInArea(eWindowArea area) const;
    /// True in any command area with this sub-code.
    bool IsMouseInCommandArea(unsigned int subCode) const;
    /// @}

private:
    struct State;
    class Listener;

    // What messages do; toplevelwindow_messages.cpp.
    void HandleActivation(bool isActive);
    bool HandleGeometry(unsigned int message, unsigned int wParam);
    bool HandleMouse(unsigned int message, unsigned int wParam, long lParam);
    bool HandleKeyboard(unsigned int message, unsigned int wParam, long lParam);
    bool HandleSystemCommand(unsigned int command, long lParam);

    void HandleMouseMove(win_utils::Point const &point, unsigned int keys);
    void HandleMouseWheel(win_utils::Point const &onDesktop, unsigned int wParam);
    /// `button` is a bit of win_utils::eMouseKeys.
    void HandleButton(unsigned int button, bool isDown, win_utils::Point const &point, unsigned int keys);

    // The area under the mouse, and the own frame; toplevelwindow_frame.cpp.
    /// False while a button holds the mouse in the area in which it went down.
    bool IsMouseFree() const;
    void UpdateMouseArea(win_utils::Point const &point);
    void SetMouseArea(eWindowArea area, unsigned int subCode);
    void ApplyMouseCursor();
    /// The left button went down or up outside the client area.
    void PressFrame(win_utils::Point const &point);
    void ReleaseFrame(win_utils::Point const &point);
    bool CanMoveWindow() const;
    bool CanSizeWindow() const;
    platform::Window::Position ToDesktop(win_utils::Point const &point) const;
    void EnterSizeMove(eWindowArea area, win_utils::Point const &point);
    void ContinueSizeMove(win_utils::Point const &point);
    void ExitSizeMove();

    /// Returns the object of a system's window; null without one.
    static TopLevelWindow *Find(HWND handle);
    /// Makes Find() find the object, or not any more.
    void Register(bool isThere);
    /// Returns the window; asserts "System-window not created." and returns null without one.
    platform::Window *NeedWindow() const;
    /// Gives a window without a frame of the desktop position and size at once.
    void Place(platform::Window::Area const &area);
    void CloseSystemWindow();
    void ApplyStyles();
    void ApplyOpacity();
    void ApplySizeLimits();
    long Send(unsigned int message, unsigned int wParam, long lParam);

    AutoPtr<State> state_;
};

} // namespace quillmarsh

#endif
