// What a top-level window knows; shared by its source files.
#ifndef QUILLMARSH_SOURCE_BASETOOLS_WINDOWS_TOPLEVELWINDOWSTATE_H
#define QUILLMARSH_SOURCE_BASETOOLS_WINDOWS_TOPLEVELWINDOWSTATE_H

#include <quillmarsh/basetools/windows/toplevelwindow.h>
#include <quillmarsh/platform/desktopevents.h>

#include <chrono>
#include <memory>
#include <optional>

namespace quillmarsh
{

/// Turns the events of the desktop into messages of one window.
class TopLevelWindow::Listener : public platform::DesktopListener, NoCopy
{
public:
    explicit Listener(TopLevelWindow &owner);

    void OnDesktopEvent(platform::DesktopEvent const &event) override;
    /// Sends messages for what has changed about the window since the last call.
    void TellGeometry();

private:
    void TellKey(platform::DesktopEvent const &event);
    void TellMouse(platform::DesktopEvent const &event);
    void TellPlainEvent(platform::DesktopEvent const &event);

    TopLevelWindow &owner_;
    HWND handle_;
    /// Position and size of the client area, state, and visibility, as the last messages told them.
    platform::Window::Area toldArea_;
    unsigned int toldKind_ = win_utils::e_size_restored;
    bool toldFullscreen_ = false;
    bool toldVisible_ = false;
    /// The last key went down or up together with Alt: its text is no input.
    bool isAltDown_ = false;
    /// Part of a notch of the wheel that has not been told.
    float wheelRest_ = 0;
    platform::DesktopSubscription subscription_;
};

struct TopLevelWindow::State
{
    using Position = platform::Window::Position;
    using Size = platform::Window::Size;
    using Area = platform::Window::Area;

    /// Ends with the object: a call that may destroy it is followed by a look at a weak pointer to this.
    std::shared_ptr<char> const life = std::make_shared<char>();

    /// @name For the window to be created
    /// @{
    platform::eWindowRole role = platform::eWindowRole::e_tool;
    std::optional<platform::OpenGLPixels> pixels;
    string creationFailure;
    /// @}

    AutoPtr<platform::Window> window;
    /// The message that the window is about to close is being handled.
    bool isClosing = false;
    AutoPtr<Listener> listener;
    unsigned int thread = 0;
    AutoPtr<win_utils::GdiplusGuard> gdiplus;

    string text;
    HICON icon = nullptr;
    unsigned long style = 0;

    /// @name Geometry of the whole window, as it was last set or told by the system
    /// @{
    Position position;
    Size size = {640, 480};
    Size clientSize = size;
    bool isPositionSet = false;
    bool isSizeSet = false;
    Size minSize;
    Size maxSize;
    std::optional<Position> maximizedPosition;
    /// Place to go back to, while a window without a frame of the desktop is maximized.
    std::optional<Area> placeBefore;
    /// Position and size change together: the messages wait until both have.
    bool isPlacing = false;
    /// @}

    bool isActive = false;
    bool isMinimized = false;
    bool isMaximized = false;
    bool isAlwaysOnTop = false;
    /// The last size message told another state than the normal one.
    bool isToBeRestored = false;
    bool forcesRepaintOnMove = false;

    bool hasCompositing = true;
    unsigned char opacity = 255;
    std::optional<platform::Window::Color> colorKey;

    bool showsCursor = true;
    /// Null for the arrow.
    HICON cursorShapes[e_area_numAreas] = {};

    bool dispatchesMouseMove = true;
    bool dispatchesMouseWheel = true;
    bool dispatchesMouseButtons = true;
    bool dispatchesKeyStates = true;
    bool dispatchesChars = true;

    bool emulatesSystemCommands = true;
    bool closesThroughAltF4 = true;
    bool opensMenuThroughF10 = true;
    bool opensMenuThroughAltSpace = true;

    KeyboardMessageHook *keyboardHook = nullptr;
    MouseMessageHook *mouseHook = nullptr;

    /// @name Mouse
    /// @{
    eWindowArea area = e_area_none;
    unsigned int subCode = 0;
    /// Buttons that went down in the client area, those that went down elsewhere in the window, and all that are down, as
    /// bits of win_utils::eMouseKeys.
    unsigned int clientButtons = 0;
    unsigned int frameButtons = 0;
    unsigned int buttons = 0;
    /// Area of the frame in which the left button went down; none while it is up.
    eWindowArea pressedArea = e_area_none;
    unsigned int pressedSubCode = 0;
    /// Last click on the caption.
    std::chrono::steady_clock::time_point lastClick;
    win_utils::Point lastClickPoint;
    /// A message comes from the desktop, which knows where the mouse is.
    bool isFromDesktop = false;
    /// @}

    /// A movement or change of size by the mouse.
    struct SizeMove
    {
        eWindowArea area;
        /// Mouse and window at the beginning.
        Position mouse;
        Area window;
    };
    std::optional<SizeMove> sizeMove;

    bool HasOwnFrame() const { return (style & win_utils::e_style_caption) != win_utils::e_style_caption; }
    /// Returns a size within the limits, and at least 1.
    Size Limit(Size wanted) const;
    /// Forgets the buttons that are down, whose release may never be told.
    void ForgetButtons();
};

} // namespace quillmarsh

#endif
