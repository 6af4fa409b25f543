// The Windows side of a window.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_WINWINDOW_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_WINWINDOW_H

#include <quillmarsh/platform/window.h>

#include "source/platform/win32/windows.h"

#include <optional>

namespace quillmarsh::platform
{

struct Window::System : NoCopy
{
    explicit System(Window &itsOwner) : owner(itsOwner) {}
    ~System()
    {
        if (window)
            DestroyWindow(window);
    }

    Window &owner;
    HWND window = nullptr;
    bool isFilled = false;
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

/// Returns the name of the window class; the first call registers it.
wchar_t const *GetWindowClass();
/// Confines the cursor to the active window while it is held.
void UpdateCursorHold();
bool IsCursorHeld();

/// Rethrows the exception that a listener threw during a call by Windows: it must not pass through Windows.
void RethrowFromCallbacks();

} // namespace quillmarsh::platform

#endif
