// Dialogs in a window.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLDIALOG_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLDIALOG_H

#include <quillmarsh/platform/dialogs.h>

#include <optional>

namespace quillmarsh::platform
{

/// Shows a dialog in a window of its own, independent of the desktop's windows, whose events wait meanwhile. Returns
/// nothing when there is no display. Any thread, one at a time.
std::optional<eDialogAnswer> PresentWindowDialog(DialogRequest const &request);

} // namespace quillmarsh::platform

#endif
