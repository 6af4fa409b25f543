// Dialogs where there is no display.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_TERMINALDIALOG_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_TERMINALDIALOG_H

#include <quillmarsh/platform/dialogs.h>

#include <span>

namespace quillmarsh::platform
{

struct DialogButton
{
    eDialogAnswer answer;
    /// Its first letter answers for it on the terminal.
    char const *name;
};

/// The buttons of a dialog, from left to right.
std::span<DialogButton const> GetDialogButtons(eDialogButtons buttons);

/// Writes the dialog to the error stream and takes the answer from the terminal: the first letter of a button, or Enter
/// for the default, which is also the answer where there is no terminal.
eDialogAnswer PresentTerminalDialog(DialogRequest const &request);

} // namespace quillmarsh::platform

#endif
