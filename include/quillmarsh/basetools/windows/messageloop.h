// The message loop of a thread.
#ifndef QUILLMARSH_BASETOOLS_WINDOWS_MESSAGELOOP_H
#define QUILLMARSH_BASETOOLS_WINDOWS_MESSAGELOOP_H

#include <quillmarsh/platform/api.h>

namespace quillmarsh::win_utils
{

/// Takes the messages of the calling thread one at a time and dispatches them, until message 18 (quit) arrives. Waits
/// while there is no message. The thread has a message queue from here on. On the desktop's thread it also passes on
/// the events of windows (platform/desktopevents.h).
QUILLMARSH_API void RunStandardMessageLoop();

} // namespace quillmarsh::win_utils

#endif
