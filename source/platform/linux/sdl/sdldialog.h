// Dialogs in a window.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLDIALOG_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLDIALOG_H

#include <quillmarsh/platform/dialogs.h>

#include <optional>

namespace quillmarsh::platform
{

/// Shows a dialog in a window of its own, which needs none of the desktop's and blocks its events. Nothing when there is
/// no display for it. One thread at a time, any thread.
std::optional<eDialogAnswer> PresentWindowDialog(DialogRequest const &request);

} // namespace quillmarsh::platform

#endif
