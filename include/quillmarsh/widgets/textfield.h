// Field for a line of text.
#ifndef QUILLMARSH_WIDGETS_TEXTFIELD_H
#define QUILLMARSH_WIDGETS_TEXTFIELD_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_rectangle.h>
#include <quillmarsh/widgets/action.h>
#include <quillmarsh/widgets/textedit.h>

#include <limits>

namespace quillmarsh::widgets
{

/// Field for a line of text, with caret, selection, undo and the clipboard. A text that is wider than the field scrolls.
///
/// Keys: arrows, Home, End; with control by words; with shift they select. Backspace and Delete, with control a word.
/// Ctrl+A, Ctrl+C, Ctrl+X, Ctrl+V, Ctrl+Z, Ctrl+Y, Ctrl+Shift+Z, Ctrl+Insert, Shift+Insert, Shift+Delete. A double click
/// selects a word, a third one everything; a drag selects. Frame thread only.
class QUILLMARSH_API TextField : public gui::Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. The text is UTF-8, `width` in units.
    explicit TextField(gui::Component *parent, string const &text = string(), float width = 160);
    ~TextField() override;

    /// @name Text, in UTF-8
    /// @{
    /// Replaces the text, without the actions.
    void SetText(string const &text);
    string GetText() const;
    /// Shown while the field is empty.
    void SetPlaceholder(string const &text);
    /// Greatest length in characters.
    void SetMaxLength(unsigned int length) { edit_.SetMaxLength(length); }
    /// A field that cannot be written to still has a caret, and can be copied from.
    void SetReadOnly(bool readOnly) { readOnly_ = readOnly; }
    bool IsReadOnly() const { return readOnly_; }
    /// Replaces the selection as typing does, and calls the action; also in a field that is read only.
    void Insert(string const &text);
    void SelectAll();
    /// Caret and selection.
    TextEdit const &GetEdit() const { return edit_; }
    /// @}

    /// Called with each change that the user makes.
    void SetAction(std::function<void(string const &)> action) { action_ = std::move(action); }
    /// Called for Enter. Without it, Enter goes on to the panel.
    void SetEnterAction(std::function<void(string const &)> action) { enterAction_ = std::move(action); }

    /// @name Drawing
    /// Glyph codes and pixels, relative to the component.
    /// @{
    string const &GetGlyphs() const { return edit_.GetText(); }
    string const &GetPlaceholderGlyphs() const { return placeholderGlyphs_; }
    /// Area of the text, inside of frame and margins.
    gui::Rectangle GetTextArea() const;
    /// Where the first glyph begins; less than the area's left edge in a field that has scrolled.
    float GetTextX() const;
    /// Where a glyph begins.
    float GetGlyphX(unsigned int place) const;
    /// False while the caret blinks.
    bool IsCaretShown() const { return isCaretShown_; }
    /// Marks the content as wrong, until the next change; the look shows it.
    void SetWrong(bool wrong) { wrong_ = wrong; }
    bool IsWrong() const { return wrong_; }
    /// @}

    string GetCaption() const override { return GetText(); }
    void RecalcSize() override;
    void UpdateGeometryCache() override;
    void OnTimeDelta(double seconds) override;
    bool OnMouseCapture(bool begin) override;
    bool OnMouseMove(bool hover, double hoverSeconds, vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData) override;
    using Component::OnKeyboardFocus;
    bool OnKeyboardFocus(bool gotFocus) override;
    using Component::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;

protected:
    /// The user has changed the text. Calls the action; an override calls the base last, as the field may be gone then.
    virtual void OnTextChanged();
    /// For derived classes that edit by keys of their own.
    TextEdit &GetEditForChange() { return edit_; }
    /// Shows the caret and scrolls to it, after a change of the edit.
    void UpdateCaret();

private:
    bool EditByKey(eKey key, char character);
    bool EditByClipboardKey(eKey key, bool isControl, bool isShift);
    bool EditByShortcut(eKey key, bool isShift);
    template<typename Function>
    bool Change(Function &&change);
    bool CopySelection();
    bool Cut();
    bool Paste();
    void OnEdited();
    void ReportEdited();
    void DragTo(float x);
    void ScrollToCaret();
    unsigned int FindGlyph(float x) const;
    unsigned int FindPlace(float x) const;
    void UpdateGlyphPlaces() const;

    float width_;
    TextEdit edit_;
    string placeholderGlyphs_;
    bool readOnly_ = false;
    bool wrong_ = false;
    float scroll_ = 0;
    bool isCaretShown_ = false;
    double caretTime_ = 0;
    /// Seconds since the caret was dragged.
    double dragTime_ = 0;
    double sinceDoubleClick_ = std::numeric_limits<double>::infinity();
    /// Right edges of the glyphs, for the text that they were measured from.
    mutable std::vector<float> glyphEnds_;
    mutable bool areGlyphsMeasured_ = false;
    Action<string const &> action_;
    Action<string const &> enterAction_;
};

} // namespace quillmarsh::widgets

#endif
