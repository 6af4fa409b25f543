// Completion of half-typed console lines.
#ifndef QUILLMARSH_FRAMEWORK_COMPLETION_H
#define QUILLMARSH_FRAMEWORK_COMPLETION_H

#include <quillmarsh/platform/types.h>

#include <set>
#include <vector>

namespace quillmarsh
{

/// A text that can stand at the cursor of a half-typed line.
struct CompletionCandidate
{
    /// The text as it is meant, for lists: without quotes and escapes.
    string text;
    /// One line about it; may be empty.
    string description;
    /// What goes into the line; see Completions::begin.
    string replacement;
    /// False when more must follow without a blank: the value of an assignment, the rest of a path.
    bool isWhole = true;
};

/// What can stand at the cursor of a half-typed line.
struct Completions
{
    /// Index in the line of the first byte that a replacement replaces. The last one is the byte ahead of the cursor.
    std::size_t begin = 0;
    /// No text stands there twice.
    std::vector<CompletionCandidate> candidates;
    /// Replacement that types as much as all candidates have in common; the typed text itself when that is no more, or
    /// when there is no candidate.
    string commonReplacement;
};

/// Returns the lines that show candidates to a user with that many columns: a few with their descriptions, more of them
/// without, side by side, and only the first of very many. No line is wider, unless a single name is. With `coloured`,
/// descriptions are dim on a terminal. Any thread.
QUILLMARSH_API string FormatCandidates(std::vector<CompletionCandidate> const &candidates, std::size_t columns,
                                       bool coloured);

/// Takes the values that can complete a word. A CommandValue offers them.
class QUILLMARSH_API CompletionOffers
{
public:
    /// `prefix` is what is typed of the value, without quotes and escapes.
    explicit CompletionOffers(string const &prefix) : prefix_(prefix) {}

    /// What is typed of the value.
    string const &GetPrefix() const { return prefix_; }
    /// Offers a text with a description. Ignored when the text does not begin with what is typed, when it is offered
    /// already, or when it has characters that nobody can type. With `isWhole` false, more must follow.
    void Add(string const &text, string const &description = string(), bool isWhole = true);
    /// Offers a text that goes into the line as it stands, such as an option.
    void AddPlain(string const &text, string const &description = string(), bool isWhole = true);
    /// The offers in their order. Only plain ones have a replacement.
    std::vector<CompletionCandidate> const &GetCandidates() const { return candidates_; }

private:
    void Add(CompletionCandidate candidate);

    string const prefix_;
    std::vector<CompletionCandidate> candidates_;
    std::set<string> texts_;
};

/// @name Values that many commands offer
/// @{

/// Offers "true" and "false", and the other words for them when their first letter is typed.
QUILLMARSH_API void OfferBooleans(CompletionOffers &offers);
/// Offers the files and directories that the typed path can become. A relative path begins at the process directory.
/// Files whose names begin with a dot are offered when the dot is typed.
QUILLMARSH_API void OfferFiles(CompletionOffers &offers);
/// Offers the creation ids of the kernel's devices.
QUILLMARSH_API void OfferDevices(CompletionOffers &offers);
/// Offers the names of the kernel's plug-ins.
QUILLMARSH_API void OfferPlugins(CompletionOffers &offers);
/// @}

} // namespace quillmarsh

#endif
