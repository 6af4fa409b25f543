// Replaceable presenter of the library's modal dialogs.
#ifndef QUILLMARSH_PLATFORM_DIALOGS_H
#define QUILLMARSH_PLATFORM_DIALOGS_H

#include <quillmarsh/platform/types.h>

/// What the library shows of its platform layer.
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

/// What a modal error dialog shows. The buttons stand in the order that their enumerator names.
struct DialogRequest
{
    /// Buttons to choose from.
    eDialogButtons buttons = eDialogButtons::e_ok;
    /// Answer that a confirmation without a choice gives; one of the buttons.
    eDialogAnswer defaultAnswer = eDialogAnswer::e_ok;
    /// Title of the window, one line.
    string title;
    /// Text of any number of lines, in UTF-8.
    string text;
};

/// Shows modal dialogs and brings their answer.
///
/// The system's own presenter opens a window where a display is there, asks on the terminal where only that is there,
/// and else writes the text to the error stream and answers with the default. A host puts its own in place to show
/// dialogs in its own way, and tests to script the answers.
class QUILLMARSH_API DialogPresenter
{
public:
    virtual ~DialogPresenter();

    /// Shows the dialog and blocks the calling thread, which can be any, until it is answered. Does not throw.
    virtual eDialogAnswer Present(DialogRequest const &request) = 0;
};

/// Puts a presenter in the place of the present one, which is returned; null stands for the system's own, both ways.
/// The presenter is borrowed, and must stay until it is replaced and no dialog is open. Any thread.
QUILLMARSH_API DialogPresenter *SetDialogPresenter(DialogPresenter *presenter);

/// Shows a dialog through the present presenter.
QUILLMARSH_API eDialogAnswer PresentDialog(DialogRequest const &request);

} // namespace quillmarsh::platform

#endif
