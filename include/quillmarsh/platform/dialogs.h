// Replaceable presenter of the library's modal dialogs.
#ifndef QUILLMARSH_PLATFORM_DIALOGS_H
#define QUILLMARSH_PLATFORM_DIALOGS_H

#include <quillmarsh/platform/types.h>

/// The public part of the platform layer.
namespace quillmarsh::platform
{

/// Buttons of a dialog.
enum class eDialogButtons
{
    e_ok,
    e_cancelOk,
    e_abortRetryIgnore
};
/// Button that was pressed.
enum class eDialogAnswer
{
    e_ok,
    e_cancel,
    e_abort,
    e_retry,
    e_ignore
};

/// Content of a modal error dialog. The buttons stand in the order that the name of their enumerator gives.
struct DialogRequest
{
    /// Buttons to choose from.
    eDialogButtons buttons = eDialogButtons::e_ok;
    /// Answer for the Enter key, and when nobody can be asked; one of the buttons.
    eDialogAnswer defaultAnswer = eDialogAnswer::e_ok;
    /// Title of the window, one line.
    string title;
    /// Text of any number of lines, in UTF-8.
    string text;
};

/// Shows modal dialogs and returns their answers.
///
/// The system's own presenter opens a window when there is a display, and asks on the terminal when there is only a
/// terminal. Without either it writes the text to the error stream and returns the default answer. A host installs its
/// own presenter to show dialogs in its own way; tests install one that scripts the answers.
class QUILLMARSH_API DialogPresenter
{
public:
    virtual ~DialogPresenter();

    /// Shows the dialog and blocks the calling thread until the user has answered. Does not throw. Any thread.
    virtual eDialogAnswer Present(DialogRequest const &request) = 0;
};

/// Installs a presenter and returns the previous one; null stands for the system's own in both. The presenter is
/// borrowed: it must live until it is replaced and no dialog is open. Any thread.
QUILLMARSH_API DialogPresenter *SetDialogPresenter(DialogPresenter *presenter);

/// Shows a dialog through the installed presenter and returns the answer. Any thread.
QUILLMARSH_API eDialogAnswer PresentDialog(DialogRequest const &request);

} // namespace quillmarsh::platform

#endif
