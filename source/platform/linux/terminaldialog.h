// Dialogs without a display.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_TERMINALDIALOG_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_TERMINALDIALOG_H

#include <quillmarsh/platform/dialogs.h>

#include <span>

namespace quillmarsh::platform
{

struct DialogButton
{
    eDialogAnswer answer;
    /// Its first letter selects the button on the terminal.
    char const *name;
};

/// Returns the buttons of a dialog, from left to right.
std::span<DialogButton const> GetDialogButtons(eDialogButtons buttons);

/// Writes the dialog to the error stream and reads the answer from the terminal: the first letter of a button, or Enter
/// for the default. Without a terminal it returns the default.
eDialogAnswer PresentTerminalDialog(DialogRequest const &request);

} // namespace quillmarsh::platform

#endif
