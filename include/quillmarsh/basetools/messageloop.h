// The message loop of a thread.
#ifndef QUILLMARSH_BASETOOLS_MESSAGELOOP_H
#define QUILLMARSH_BASETOOLS_MESSAGELOOP_H

#include <quillmarsh/platform/api.h>

namespace quillmarsh::win_utils
{

/// Takes the messages of the calling thread one at a time and dispatches them, until message 18 (quit) comes. Waits
/// while there is none. The thread has a message queue from here on. On the desktop's thread the events of windows are
/// told as well (platform/desktopevents.h).
QUILLMARSH_API void RunStandardMessageLoop();

} // namespace quillmarsh::win_utils

#endif
