// The event queue of SDL, which nobody else reads.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLEVENTS_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLEVENTS_H

#include <optional>

namespace quillmarsh::platform
{

/// Waits until an event is there, and leaves it there; false when the time has passed, which is without a limit when no
/// milliseconds are given. The desktop's thread only.
bool WaitForDesktopEvent(std::optional<unsigned int> milliseconds);
/// Ends the wait in progress, or the next one. Any thread.
void WakeDesktop();

} // namespace quillmarsh::platform

#endif
