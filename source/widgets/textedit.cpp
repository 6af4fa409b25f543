#include <quillmarsh/widgets/textedit.h>

#include <algorithm>

namespace quillmarsh::widgets
{

namespace
{

/// Older changes cannot be undone any more.
constexpr std::size_t s_maxChanges = 1000;

/// Kinds of glyphs: a word is a row of glyphs of one kind.
enum class eKind
{
    e_blank,
    e_letter,
    e_sign
};

eKind GetKind(char glyph)
{
    if (glyph == ' ' || glyph == '\xa0')
        return eKind::e_blank;
    bool const isAsciiLetter = (glyph >= 'a' && glyph <= 'z') || (glyph >= 'A' && glyph <= 'Z');
    bool const isDigit = glyph >= '0' && glyph <= '9';
    // From here on Latin-1 has letters, but for the signs of multiplication and division.
    bool const isOtherLetter = static_cast<unsigned char>(glyph) >= 0xc0 && glyph != '\xd7' && glyph != '\xf7';
    return isAsciiLetter || isDigit || isOtherLetter || glyph == '_' ? eKind::e_letter : eKind::e_sign;
}

bool IsControl(char glyph)
{
    return static_cast<unsigned char>(glyph) < ' ';
}

/// Returns the text as a single line.
string MakeLine(string const &text)
{
    string line = text;
    std::replace_if(
        line.begin(), line.end(), [](char glyph) { return glyph == '\n' || glyph == '\t'; }, ' ');
    std::erase_if(line, IsControl);
    return line;
}

/// Returns the place where the row of glyphs of one kind begins that ends at `place`.
unsigned int FindRowBegin(string const &text, unsigned int place)
{
    unsigned int begin = place;
    while (begin > 0 && GetKind(text[begin - 1]) == GetKind(text[place - 1]))
        --begin;
    return begin;
}

/// Returns the place where the row of glyphs of one kind ends that begins at `place`.
unsigned int FindRowEnd(string const &text, unsigned int place)
{
    unsigned int end = place;
    while (end < text.size() && GetKind(text[end]) == GetKind(text[place]))
        ++end;
    return end;
}

unsigned int FindWordLeft(string const &text, unsigned int place)
{
    if (place > 0 && GetKind(text[place - 1]) == eKind::e_blank)
        place = FindRowBegin(text, place);
    return FindRowBegin(text, place);
}

unsigned int FindWordRight(string const &text, unsigned int place)
{
    if (place < text.size() && GetKind(text[place]) != eKind::e_blank)
        place = FindRowEnd(text, place);
    bool const isAtBlank = place < text.size() && GetKind(text[place]) == eKind::e_blank;
    return isAtBlank ? FindRowEnd(text, place) : place;
}

} // namespace

TextEdit::TextEdit() = default;

// Text.

void TextEdit::SetText(string const &text)
{
    text_ = MakeLine(text);
    if (text_.size() > maxLength_)
        text_.resize(maxLength_);
    caret_ = anchor_ = GetLength();
    changes_.clear();
    numDone_ = 0;
    isTyping_ = false;
}

void TextEdit::SetMaxLength(unsigned int length)
{
    maxLength_ = length;
}

// Caret and selection.

string TextEdit::GetSelectedText() const
{
    return text_.substr(GetSelectionBegin(), GetSelectionEnd() - GetSelectionBegin());
}

unsigned int TextEdit::FindTarget(eMove move) const
{
    switch (move)
    {
    case e_move_left:
        return caret_ > 0 ? caret_ - 1 : 0;
    case e_move_right:
        return std::min(caret_ + 1, GetLength());
    case e_move_word_left:
        return FindWordLeft(text_, caret_);
    case e_move_word_right:
        return FindWordRight(text_, caret_);
    case e_move_begin:
        return 0;
    case e_move_end:
        return GetLength();
    }
    return caret_;
}

void TextEdit::Move(eMove move, bool select)
{
    bool const leavesSelection = HasSelection() && !select;
    if (leavesSelection && move == e_move_left)
        SetCaret(GetSelectionBegin(), false);
    else if (leavesSelection && move == e_move_right)
        SetCaret(GetSelectionEnd(), false);
    else
        SetCaret(FindTarget(move), select);
}

void TextEdit::SetCaret(unsigned int place, bool select)
{
    SetSelection(select ? anchor_ : place, place);
}

void TextEdit::SetSelection(unsigned int anchor, unsigned int caret)
{
    anchor_ = std::min(anchor, GetLength());
    caret_ = std::min(caret, GetLength());
    isTyping_ = false;
}

void TextEdit::SelectAll()
{
    SetSelection(0, GetLength());
}

void TextEdit::SelectWord(unsigned int place)
{
    if (text_.empty())
        return SetSelection(0, 0);
    place = std::min(place, GetLength() - 1);
    unsigned int const end = FindRowEnd(text_, place);
    SetSelection(FindRowBegin(text_, end), end);
}

// Changes.

bool TextEdit::Insert(string const &text)
{
    string line = MakeLine(text);
    std::size_t const kept = text_.size() - (GetSelectionEnd() - GetSelectionBegin());
    line.resize(std::min(line.size(), maxLength_ - std::min<std::size_t>(kept, maxLength_)));
    // A text of which nothing can be inserted does not delete the selection.
    if (line.empty() && !text.empty())
        return false;
    bool const isTyping = line.size() == 1 && !HasSelection();
    return Replace(GetSelectionBegin(), GetSelectionEnd(), line, isTyping);
}

bool TextEdit::Delete(eMove move)
{
    if (HasSelection())
        return Replace(GetSelectionBegin(), GetSelectionEnd(), string(), false);
    unsigned int const target = FindTarget(move);
    return Replace(std::min(caret_, target), std::max(caret_, target), string(), false);
}

bool TextEdit::Replace(unsigned int begin, unsigned int end, string const &text, bool isTyping)
{
    auto const newCaret = static_cast<unsigned int>(begin + text.size());
    if (text_.compare(begin, end - begin, text) == 0)
    {
        SetCaret(newCaret, false);
        return false;
    }
    bool const goesOn = isTyping && isTyping_ && numDone_ > 0 && numDone_ == changes_.size();
    if (goesOn)
        changes_.back().inserted += text;
    else
    {
        changes_.resize(numDone_);
        if (numDone_ == s_maxChanges)
            changes_.erase(changes_.begin());
        changes_.push_back({begin, text_.substr(begin, end - begin), text, caret_, anchor_});
        numDone_ = changes_.size();
    }
    text_.replace(begin, end - begin, text);
    SetCaret(newCaret, false);
    isTyping_ = isTyping;
    return true;
}

bool TextEdit::Undo()
{
    if (!CanUndo())
        return false;
    Change const &change = changes_[--numDone_];
    text_.replace(change.place, change.inserted.size(), change.removed);
    SetSelection(change.anchorBefore, change.caretBefore);
    return true;
}

bool TextEdit::Redo()
{
    if (!CanRedo())
        return false;
    Change const &change = changes_[numDone_++];
    text_.replace(change.place, change.removed.size(), change.inserted);
    SetCaret(static_cast<unsigned int>(change.place + change.inserted.size()), false);
    return true;
}

} // namespace quillmarsh::widgets
