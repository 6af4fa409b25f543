// Dialogs as text.
#ifndef QUILLMARSH_HOST_DIALOGTEXT_H
#define QUILLMARSH_HOST_DIALOGTEXT_H

#include <quillmarsh/platform/dialogs.h>

#include <optional>

namespace quillmarsh::host
{

/// A dialog as it shows on a terminal: title, text and question.
string FormatDialog(platform::DialogRequest const &request);
/// The question alone: the answers, and the default one.
string FormatQuestion(platform::DialogRequest const &request);

/// Answer that a text stands for: its name or the begin of it, or nothing at all for the default answer. Nothing for any
/// other text.
std::optional<platform::eDialogAnswer> FindDialogAnswer(platform::DialogRequest const &request, string const &typed);

/// Name of an answer.
char const *GetAnswerName(platform::eDialogAnswer answer);

} // namespace quillmarsh::host

#endif
