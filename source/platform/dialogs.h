// Seam: the system's own way to show a modal dialog.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DIALOGS_H
#define QUILLMARSH_SOURCE_PLATFORM_DIALOGS_H

#include <quillmarsh/platform/dialogs.h>

namespace quillmarsh::platform
{

/// Shows a dialog in a window, on the terminal, or on the error stream, in this order of preference.
eDialogAnswer PresentSystemDialog(DialogRequest const &request);

} // namespace quillmarsh::platform

#endif
