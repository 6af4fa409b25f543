// Modes of the display, and a desktop that needs none.
#ifndef QUILLMARSH_PLATFORM_DISPLAYMODES_H
#define QUILLMARSH_PLATFORM_DISPLAYMODES_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh::platform
{

/// One mode of a display.
struct DisplayMode
{
    /// Width and height in pixels.
    unsigned int width = 0;
    unsigned int height = 0;
    /// Bits of a pixel in memory; 32 for colours with 24 bits.
    unsigned int bitsPerPixel = 0;
    /// Refreshes in a second, in hertz; 0 when the display does not tell.
    unsigned int frequency = 0;

    bool operator==(DisplayMode const &) const = default;
};

/// @name The first display
/// The functions return false without a display, and leave the output unchanged. Any thread.
///
/// A headless desktop has stand-in modes, so that programs which choose by the desktop work without a display: 640 x
/// 480, 800 x 600, 1024 x 768, 1280 x 1024, 1600 x 1200, and the size of the headless desktop itself, each with 32 bits
/// and 60 Hz. A display that reports a size of 0 x 0 gets the same modes; its desktop has the largest one.
/// @{

/// Reads the mode of the desktop.
QUILLMARSH_API bool ReadDesktopMode(DisplayMode &mode);
/// Reads the modes in which a window can be full screen (Window::SetFullscreen), each once, smallest first.
QUILLMARSH_API bool ReadDisplayModes(std::vector<DisplayMode> &modes);
/// @}

/// Returns how large texts and marks are on the user's desktop: 1 for 96 dots of the display in an inch, 2 for twice as
/// many. Within 0.5 and 4; 1 when the desktop does not tell, and when it is headless. Any thread.
QUILLMARSH_API float ReadDisplayScale();

/// @name Headless desktop
/// A desktop of this process alone, which nobody sees. Windows open on it, have their sizes and states, serve OpenGL,
/// and get events for what the program does with them. There is no mouse and no keyboard.
/// On Linux it needs no display and no window system. On Windows the windows exist, but are never shown.
/// @{

/// Replaces the desktop by a headless one. Returns false and sets `reason` to a text for the user when a window is open,
/// when the size is out of range (1 to 16384), and when the system cannot do it. The desktop's thread.
QUILLMARSH_API bool UseHeadlessDesktop(int width, int height, string &reason);
/// Goes back to the system's desktop. Returns false when a window is open. The desktop's thread.
QUILLMARSH_API bool LeaveHeadlessDesktop();
/// True while the desktop is headless. Any thread.
QUILLMARSH_API bool IsHeadless();
/// @}

} // namespace quillmarsh::platform

#endif
