// Editing of one line of text.
#ifndef QUILLMARSH_WIDGETS_TEXTEDIT_H
#define QUILLMARSH_WIDGETS_TEXTEDIT_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh::widgets
{

/// One line of text with a caret, a selection and undo. It draws nothing and knows no keys. A value type: one thread at
/// a time.
///
/// The text is glyph codes; see textencoding.h. Places are numbers of glyphs, from 0 to the length; those beyond are
/// limited. The selection lies between anchor and caret, and is empty where they are the same.
class QUILLMARSH_API TextEdit
{
public:
    /// How far the caret goes.
    enum eMove : unsigned int
    {
        e_move_left = 0,
        e_move_right,
        /// To the begin of the word, or of the one before.
        e_move_word_left,
        /// To the begin of the next word.
        e_move_word_right,
        e_move_begin,
        e_move_end
    };

    TextEdit();

    /// @name Text
    /// @{
    string const &GetText() const { return text_; }
    /// Returns the number of glyphs.
    unsigned int GetLength() const { return static_cast<unsigned int>(text_.size()); }
    /// Replaces everything, puts the caret at the end, and forgets what could be undone. Line feeds and tabs become
    /// blanks; other control characters are left out, and so is what is over the maximum length.
    void SetText(string const &text);
    /// Greatest length in glyphs; a million at first. A longer text stays, but takes nothing more.
    void SetMaxLength(unsigned int length);
    unsigned int GetMaxLength() const { return maxLength_; }
    /// @}

    /// @name Caret and selection
    /// @{
    unsigned int GetCaret() const { return caret_; }
    unsigned int GetAnchor() const { return anchor_; }
    unsigned int GetSelectionBegin() const { return caret_ < anchor_ ? caret_ : anchor_; }
    unsigned int GetSelectionEnd() const { return caret_ < anchor_ ? anchor_ : caret_; }
    bool HasSelection() const { return caret_ != anchor_; }
    string GetSelectedText() const;
    /// Moves the caret. Without `select` the selection goes: left and right go to its end on that side then.
    void Move(eMove move, bool select);
    void SetCaret(unsigned int place, bool select);
    void SetSelection(unsigned int anchor, unsigned int caret);
    void SelectAll();
    /// Selects the word at a place; between words, the blanks.
    void SelectWord(unsigned int place);
    /// @}

    /// @name Changes
    /// They return whether the text has changed. The last thousand can be undone; letters typed one after the other are
    /// undone as one.
    /// @{
    /// Puts a text in place of the selection; as SetText(), with as much as there is room for. Where nothing of the text
    /// can be inserted, the selection stays.
    bool Insert(string const &text);
    /// Deletes the selection, or what the caret would pass.
    bool Delete(eMove move);
    bool Undo();
    bool Redo();
    bool CanUndo() const { return numDone_ != 0; }
    bool CanRedo() const { return numDone_ < changes_.size(); }
    /// @}

private:
    /// Replacement of a part of the text.
    struct Change
    {
        unsigned int place;
        string removed;
        string inserted;
        unsigned int caretBefore;
        unsigned int anchorBefore;
    };

    unsigned int FindTarget(eMove move) const;
    bool Replace(unsigned int begin, unsigned int end, string const &text, bool isTyping);

    string text_;
    unsigned int caret_ = 0;
    unsigned int anchor_ = 0;
    unsigned int maxLength_ = 1000000;
    std::vector<Change> changes_;
    /// Changes that are in force; those behind can be redone.
    std::size_t numDone_ = 0;
    /// The next letter belongs to the last change.
    bool isTyping_ = false;
};

} // namespace quillmarsh::widgets

#endif
