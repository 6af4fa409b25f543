// Dialogs as text.
#ifndef QUILLMARSH_HOST_DIALOGTEXT_H
#define QUILLMARSH_HOST_DIALOGTEXT_H

#include <quillmarsh/platform/dialogs.h>

#include <optional>

namespace quillmarsh::host
{

/// A dialog as it shows on a terminal: title, text, and the question with the answers and the default one.
string FormatDialog(platform::DialogRequest const &request);

/// Answer that a key stands for: the first letter of its name, or the end of a line for the default one. Nothing for any
/// other key.
std::optional<platform::eDialogAnswer> FindDialogAnswer(platform::DialogRequest const &request, char key);

/// Name of an answer.
char const *GetAnswerName(platform::eDialogAnswer answer);

} // namespace quillmarsh::host

#endif
