#include "source/widgets/consoleline.h"

#include "source/widgets/inputhelp.h"

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>
#include <quillmarsh/gui/gui_watch.h>
#include <quillmarsh/widgets/consoletext.h>
#include <quillmarsh/widgets/textencoding.h>

#include <algorithm>
#include <utility>

namespace quillmarsh::widgets
{

ConsolePanel::Line::Line(ConsolePanel &panel, gui::Component &parent) : TextField(&parent), panel_(panel)
{
    SetPlaceholder("Command; Tab completes");
}

ConsolePanel::Line::~Line() = default;

bool ConsolePanel::Line::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character)
{
    if (!down || !IsEnabled())
        return false;
    // The panel looks at this key by itself. Its character is no text.
    if (key == panel_.GetToggleKey())
        return true;
    bool const isPlain = !IsControlPressed() && !IsAltPressed();
    if (isPlain && ActOnKey(key, repeatCount > 0))
        return true;
    bool const leavesLine = key == e_key_tab || key == e_key_escape;
    return !leavesLine && TextField::OnKeyboardKey(down, key, repeatCount, character);
}

bool ConsolePanel::Line::ActOnKey(eKey key, bool isRepeated)
{
    switch (key)
    {
    case e_key_arrow_up:
    case e_key_arrow_down:
        ShowHistory(key == e_key_arrow_up);
        return true;
    case e_key_page_up:
    case e_key_page_down:
        return panel_.GetText().OnMsgScroll(key == e_key_page_down, gui::e_scroll_page, 1);
    case e_key_enter:
    case e_key_num_enter:
        if (!isRepeated)
            EnterText();
        return true;
    case e_key_escape:
        if (GetGlyphs().empty())
            return false;
        Clear();
        return true;
    case e_key_tab:
        if (IsShiftPressed())
            return false;
        if (!isRepeated)
            Complete();
        return true;
    default:
        return false;
    }
}

void ConsolePanel::Line::EnterText()
{
    bool const isUnchanged = GetGlyphs() == ToGlyphs(shownText_);
    string const text = isUnchanged ? shownText_ : GetText();
    Clear();
    panel_.Enter(text);
}

void ConsolePanel::Line::Clear()
{
    SetText(string());
    shownText_.clear();
    historyPlace_ = 0;
}

void ConsolePanel::Line::ShowHistory(bool older)
{
    ConsoleBuffers const *const buffers = Kernel::Instance().GetConsoleBuffers();
    if (buffers == nullptr || (!older && historyPlace_ == 0))
        return;
    string command;
    unsigned int wanted = older ? historyPlace_ + 1 : historyPlace_ - 1;
    {
        CommandHistorySentry const lock(*buffers);
        unsigned int const count = buffers->GetNumCommandsInHistory();
        wanted = std::min(wanted, count);
        if (wanted > 0)
            command = buffers->GetCommandFromHistory(count - wanted);
    }
    if (wanted == historyPlace_)
        return;
    if (historyPlace_ == 0)
        ownText_ = GetText();
    historyPlace_ = wanted;
    shownText_ = wanted > 0 ? command : ownText_;
    SetText(shownText_);
}

void ConsolePanel::Line::Complete()
{
    std_command_interpreter::Interpreter const *const interpreter = Kernel::Instance().GetCommandInterpreter();
    if (interpreter == nullptr)
        return;
    string const text = GetText();
    std::size_t const cursor = FromGlyphs(GetGlyphs().substr(0, GetEdit().GetCaret())).size();
    Completions const found = interpreter->FindCompletions(text, cursor);
    if (found.candidates.empty() || found.begin > cursor)
        return;
    string replacement = found.commonReplacement;
    bool const isDecided = found.candidates.size() == 1;
    bool const isAtWordEnd = cursor == text.size() || IsBlank(text[cursor]);
    if (isDecided && found.candidates.front().isWhole && cursor == text.size())
        replacement += ' ';
    gui::Watch<Line> const self(*this);
    bool const isTyped = ReplaceTyped(text.substr(found.begin, cursor - found.begin), replacement, text.substr(cursor));
    bool const needsList = !isTyped || (!isDecided && isAtWordEnd);
    if (needsList && self.Get() != nullptr)
        List(found.candidates);
}

/// Replaces the text in front of the caret. What already stands behind the caret is not typed twice. Returns false, and
/// changes nothing, for a text that the line cannot show. The action of the field may have deleted the line.
bool ConsolePanel::Line::ReplaceTyped(string const &typed, string const &replacement, string const &rest)
{
    if (!HasAllGlyphs(replacement))
        return false;
    TextEdit &edit = GetEditForChange();
    unsigned int const caret = edit.GetCaret();
    bool const keepsTyped = MatchPrefix(replacement, typed);
    string const added = keepsTyped ? replacement.substr(typed.size()) : replacement;
    auto const numAdded = static_cast<unsigned int>(ToGlyphs(added).size());
    if (keepsTyped && MatchPrefix(rest, added))
    {
        edit.SetCaret(caret + numAdded, false);
        UpdateCaret();
        return true;
    }
    auto const numTyped = static_cast<unsigned int>(ToGlyphs(typed).size());
    edit.SetSelection(keepsTyped ? caret : caret - numTyped, caret);
    Insert(added);
    return true;
}

void ConsolePanel::Line::List(std::vector<CompletionCandidate> const &candidates)
{
    ConsoleBuffers *const buffers = Kernel::Instance().GetConsoleBuffers();
    if (buffers == nullptr)
        return;
    ConsoleText &text = panel_.GetText();
    AutoPtr<ConsoleOutputStream> const out(buffers->CreateOutputStream());
    out->SetCurrentOutputType(OutputStream::e_typeQuery);
    *out << FormatCandidates(candidates, std::max(text.GetNumColumns(), 1u), false) << std::flush;
    text.ScrollToEnd();
}

} // namespace quillmarsh::widgets
