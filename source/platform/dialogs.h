// Seam: the system's own modal dialogs.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DIALOGS_H
#define QUILLMARSH_SOURCE_PLATFORM_DIALOGS_H

#include <quillmarsh/platform/dialogs.h>

namespace quillmarsh::platform
{

/// Shows a dialog in a window; without a display on the terminal; without a terminal on the error stream.
eDialogAnswer PresentSystemDialog(DialogRequest const &request);

} // namespace quillmarsh::platform

#endif
