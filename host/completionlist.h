// The list of candidates that the terminal shows when the user asks for completion.
#ifndef QUILLMARSH_HOST_COMPLETIONLIST_H
#define QUILLMARSH_HOST_COMPLETIONLIST_H

#include <quillmarsh/framework/completion.h>

namespace quillmarsh::host
{

/// Lines of the candidates for a terminal with that many columns: a few with their descriptions, more of them without,
/// side by side, and only the first of very many. No line is wider than the terminal, unless a single name is. With
/// `coloured`, descriptions are dim.
string FormatCandidates(std::vector<CompletionCandidate> const &candidates, std::size_t columns, bool coloured);

} // namespace quillmarsh::host

#endif
