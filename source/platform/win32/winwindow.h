// A window of Windows.
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
    /// Null for no cursor, nothing for the arrow.
    std::optional<HCURSOR> cursor;
    /// What full screen gives back.
    bool isFullscreen = false;
    LONG_PTR styleBefore = 0;
    WINDOWPLACEMENT placementBefore = {};

    // What the messages leave out.
    bool isMouseInside = false;
    POINT lastPosition = {};
    wchar_t highSurrogate = 0;
};

/// Class of the windows, registered with the first of them.
wchar_t const *GetWindowClass();
/// Limits the cursor to the active window while it is held.
void UpdateCursorHold();
bool IsCursorHeld();

/// Lets the exception pass that a listener threw while Windows called back, which it may not cross.
void RethrowFromCallbacks();

} // namespace quillmarsh::platform

#endif
