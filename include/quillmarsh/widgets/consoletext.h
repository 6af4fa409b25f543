// The console's text as a component.
#ifndef QUILLMARSH_WIDGETS_CONSOLETEXT_H
#define QUILLMARSH_WIDGETS_CONSOLETEXT_H

#include <quillmarsh/basetools/consoleoutputbuffer.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_rectangle.h>
#include <quillmarsh/platform/types.h>

#include <atomic>
#include <vector>

namespace quillmarsh::widgets
{

class ScrollBar;

/// Text of a ConsoleOutputBuffer in a font of one width: with the types of its parts, scrolling, selection and copying.
/// While its last line is visible, it follows the buffer; once the user has scrolled back, it stays at the same text.
///
/// Any thread may write to the buffer: a change only sets a flag, and a frame copies the visible lines. A drag selects, a
/// double click selects a word, Ctrl+A everything, Ctrl+C copies as UTF-8. Arrow keys, Page Up and Down, Home and End
/// and the wheel scroll. Frame thread only.
class QUILLMARSH_API ConsoleText : public gui::Component, public ConsoleOutputBuffer::Observer
{
public:
    /// Place in the text.
    struct Place
    {
        /// Number of the line since the text source was set, whatever the buffer has dropped since then.
        unsigned int line;
        unsigned int column;
        /// By line, then by column.
        auto operator<=>(Place const &) const = default;
    };
    /// Part of a visible line that has one type.
    struct Run
    {
        /// Row from the top of the component.
        unsigned int row;
        unsigned int column;
        /// An OutputStream::eOutputType.
        unsigned int type;
        string glyphs;
    };

    /// Becomes a child of `parent`; stays top-level for null. `size` is in units. The buffer is borrowed until another
    /// one is set; null for none.
    ConsoleText(gui::Component *parent, ConsoleOutputBuffer *source, vec2 const &size = {640, 240});
    ~ConsoleText() override;
    void SetTextSource(ConsoleOutputBuffer *source);

    /// @name Scrolling and selection
    /// @{
    /// Scrolls to the last line, and follows the buffer from there.
    void ScrollToEnd();
    bool IsAtEnd() const;
    void SelectAll();
    void ClearSelection();
    bool HasSelection() const { return selectionBegin_ != selectionEnd_; }
    /// Returns the selected text in UTF-8, with line feeds; what the buffer has dropped is not in it.
    string GetSelectedText() const;
    /// Puts the selected text on the clipboard. Returns false if nothing is selected, or if the system refuses.
    bool CopySelection();
    /// @}

    /// @name For shaders, as of this frame
    /// @{
    std::vector<Run> const &GetRuns() const { return runs_; }
    gui::Rectangle GetTextArea() const;
    /// Size of a glyph's cell, in pixels.
    vec2 GetCellSize() const;
    /// Selected columns of a row of the component; begin and end are the same where nothing is selected.
    void GetSelectedColumns(unsigned int row, unsigned int &begin, unsigned int &end) const;
    unsigned int GetNumRows() const;
    /// @}

    string GetCaption() const override { return GetSelectedText(); }
    void RecalcLayout() override;
    void UpdateGeometryCache() override;
    void OnTimeDelta(double seconds) override;
    bool OnMsgScroll(bool forward, gui::eScrollDistance distance, int offset) override;
    bool OnMouseCapture(bool begin) override;
    bool OnMouseMove(bool hover, double hoverSeconds, vec2 const &position) override;
    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData) override;
    using Component::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;
    /// The buffer calls it, on any thread.
    void OnChanged(ConsoleOutputBuffer const &buffer) override;

private:
    void CopyVisibleLines();
    Place FindPlace(vec2 const &position) const;

    ConsoleOutputBuffer *source_ = nullptr;
    std::atomic<bool> hasChanged_{true};
    ScrollBar *scrollBar_;
    std::vector<Run> runs_;
    unsigned int firstLine_ = 0;
    bool follows_ = true;
    Place selectionBegin_ = {0, 0};
    Place selectionEnd_ = {0, 0};
};

} // namespace quillmarsh::widgets

#endif
