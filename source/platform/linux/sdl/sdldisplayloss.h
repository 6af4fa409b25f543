// Lets the program survive the end of its X server.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLDISPLAYLOSS_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLDISPLAYLOSS_H

#include "source/platform/linux/sdl/sdlfunctions.h"

namespace quillmarsh::platform
{

/// Takes care of the connection of a window to its X server. By default the process would end where it stands when the
/// server ends or the network fails. Instead, the program gets SDL_QUIT, and what it still does with its windows has no
/// effect. Does nothing on other window systems, and with an old library.
void WatchDisplay(SDL_Window *window);

/// True when the display has gone. SDL cannot leave it then, or open another one, and what SDL waits for never comes:
/// showing, hiding and destroying a window, and its full screen.
bool IsDisplayLost();

} // namespace quillmarsh::platform

#endif
