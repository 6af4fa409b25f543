#include "lineeditor.h"

#include <quillmarsh/basetools/texttools.h>

#include <cwchar>

namespace quillmarsh::host
{

namespace
{

/// Number of characters of a text in the encoding of the locale.
std::size_t CountCharacters(string const &text)
{
    char const *rest = text.c_str();
    std::mbstate_t state{};
    std::size_t const count = std::mbsrtowcs(nullptr, &rest, 0, &state);
    return count == static_cast<std::size_t>(-1) ? text.size() : count;
}

} // namespace

// Called by the frame thread

bool LineEditor::TakeCompletion(string &line, std::size_t &cursor)
{
    if (!TakeHandOver(completion_, line))
        return false;
    // The editor changes nothing more until it has its answer.
    cursor = completion_.cursor;
    return true;
}

void LineEditor::AnswerCompletion(Completions const &completions)
{
    ChangeAndWake(
        [&]
        {
            completion_.completions = completions;
            completion_.state = HandOver::eState::e_done;
        });
}

// The editor's thread

unsigned char LineEditor::Complete()
{
    LineInfo const *const line = el_line(editor_);
    string const text(line->buffer, line->lastchar);
    auto const cursor = static_cast<std::size_t>(line->cursor - line->buffer);
    HandOverAndWait(completion_, text, cursor);
    Completions completions;
    {
        std::lock_guard const lock(mutex_);
        completions = std::move(completion_.completions);
    }
    if (completions.candidates.empty() || completions.begin > cursor)
        return CC_REFRESH_BEEP;
    string replacement = completions.commonReplacement;
    bool const isDecided = completions.candidates.size() == 1;
    bool const atWordEnd = cursor == text.size() || IsBlank(text[cursor]);
    if (isDecided && completions.candidates.front().isWhole && cursor == text.size())
        replacement += ' ';
    ReplaceTyped(text.substr(completions.begin, cursor - completions.begin), replacement, text.substr(cursor));
    if (isDecided || !atWordEnd)
        return CC_REFRESH;
    {
        std::lock_guard const lock(mutex_);
        work_.text += FormatCandidates(completions.candidates, GetTerminalColumns(), coloured_);
    }
    DoWork();
    return CC_REFRESH;
}

/// Replaces the text in front of the cursor. What already stands behind the cursor is not typed twice.
void LineEditor::ReplaceTyped(string const &typed, string const &replacement, string const &rest)
{
    std::size_t const numKept = MatchPrefix(replacement, typed) ? typed.size() : 0;
    if (numKept < typed.size())
        el_deletestr(editor_, static_cast<int>(CountCharacters(typed)));
    string const added = replacement.substr(numKept);
    if (!added.empty() && MatchPrefix(rest, added))
        el_cursor(editor_, static_cast<int>(CountCharacters(added)));
    else if (!added.empty())
        el_insertstr(editor_, added.c_str());
}

} // namespace quillmarsh::host
