// The Windows side of a window.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_WINWINDOW_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_WINWINDOW_H

#include <quillmarsh/platform/window.h>

#include "source/platform/win32/windows.h"

#include <atomic>
#include <optional>

namespace quillmarsh::platform
{

struct Window::System : NoCopy
{
    explicit System(Window &itsOwner) : owner(itsOwner) {}
    ~System();

    /// Gives the window's display a mode, or with null the desktop's. False when the display refuses it.
    bool SetDisplayMode(DisplayMode const *wanted);
    /// Leaves the display to another program that is active, and takes it again.
    void FollowFocus(bool isActive);
    void LimitSize(MINMAXINFO &info) const;

    Window &owner;
    HWND window = nullptr;
    HDC context = nullptr;
    bool isFilled = false;
    bool hasSystemKeys = true;
    bool keepsDisplayOn = false;
    /// True while a headless window has s_messageExposed in its queue. Any thread.
    std::atomic<bool> isInvalid{false};
    /// Sizes of the client area; 0 for no limit.
    Size smallest;
    Size largest;
    /// Mode of a full screen that does not have the desktop's.
    std::optional<DisplayMode> mode;
    bool isModeSet = false;
    /// Null hides the cursor; without a value it is the arrow.
    std::optional<HCURSOR> cursor;
    /// State to restore after full screen.
    bool isFullscreen = false;
    LONG_PTR styleBefore = 0;
    WINDOWPLACEMENT placementBefore = {};

    // State that the messages do not carry.
    bool isMouseInside = false;
    POINT lastPosition = {};
    wchar_t highSurrogate = 0;
};

/// Returns the name of the window class; the first call registers it. Null when the system refuses it.
wchar_t const *GetWindowClass();
/// Returns the style of a window that is not full screen.
DWORD GetWindowStyle(bool hasFrame, bool isResizable);
/// Posted to a headless window, which gets no WM_PAINT.
constexpr UINT s_messageExposed = WM_APP;
/// Confines the cursor to the active window, and hides it, while it is held; shows it otherwise unless ShowMouseCursor()
/// hides it.
void UpdateCursorHold();
bool IsCursorHeld();

/// Rethrows the exception that a listener threw during a call by Windows: it must not pass through Windows.
void RethrowFromCallbacks();

} // namespace quillmarsh::platform

#endif
