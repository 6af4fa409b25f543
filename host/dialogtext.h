// Dialogs as text.
#ifndef QUILLMARSH_HOST_DIALOGTEXT_H
#define QUILLMARSH_HOST_DIALOGTEXT_H

#include <quillmarsh/platform/dialogs.h>

#include <optional>

namespace quillmarsh::host
{

/// Formats a dialog for a terminal: title, text and question.
string FormatDialog(platform::DialogRequest const &request);
/// Formats only the question: the answers, and the default one.
string FormatQuestion(platform::DialogRequest const &request);

/// Returns the answer whose name is `typed`, or begins with it; the default answer for an empty text. Nothing for any
/// other text.
std::optional<platform::eDialogAnswer> FindDialogAnswer(platform::DialogRequest const &request, string const &typed);

/// Returns the name of an answer.
char const *GetAnswerName(platform::eDialogAnswer answer);

} // namespace quillmarsh::host

#endif
