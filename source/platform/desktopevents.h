// Seam: the listeners, the open windows, and the events that the system's side brings.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DESKTOPEVENTS_H
#define QUILLMARSH_SOURCE_PLATFORM_DESKTOPEVENTS_H

#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

#include <vector>

namespace quillmarsh::platform
{

/// Tells all listeners.
void TellDesktop(DesktopEvent const &event);

/// The windows that are open, in the order in which they were opened. The desktop's thread only.
std::vector<Window *> const &GetOpenWindows();

/// True on the thread that owns the windows that are open; false when none is. Any thread.
bool IsDesktopThread();

/// Takes all events of windows that are there, and tells them. Does nothing on a thread other than the desktop's.
void TakeDesktopEvents();

} // namespace quillmarsh::platform

#endif
