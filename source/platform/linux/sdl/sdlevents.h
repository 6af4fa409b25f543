// SDL's event queue, which only these functions read.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLEVENTS_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLEVENTS_H

#include <optional>

namespace quillmarsh::platform
{

/// Waits for an event and leaves it in the queue. Returns false when the time has passed; without `milliseconds` there
/// is no limit. The desktop's thread only.
bool WaitForDesktopEvent(std::optional<unsigned int> milliseconds);
/// Ends the present wait, or the next one. Any thread.
void WakeDesktop();

} // namespace quillmarsh::platform

#endif
