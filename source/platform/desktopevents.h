// Seam: the listeners, the open windows, and the events that the system delivers.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DESKTOPEVENTS_H
#define QUILLMARSH_SOURCE_PLATFORM_DESKTOPEVENTS_H

#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

#include <vector>

namespace quillmarsh::platform
{

/// Sends an event to all listeners.
void TellDesktop(DesktopEvent const &event);

/// Returns the open windows in the order in which they were opened. The desktop's thread only.
std::vector<Window *> const &GetOpenWindows();

/// True when the calling thread owns the open windows; false when no window is open. Any thread.
bool IsDesktopThread();

/// Does the work of WaitForDesktop(), where it can wait.
bool WaitForSystemEvents(unsigned int milliseconds);

/// Takes all pending events of windows and sends them to the listeners. Does nothing on any thread but the desktop's.
void TakeDesktopEvents();

} // namespace quillmarsh::platform

#endif
