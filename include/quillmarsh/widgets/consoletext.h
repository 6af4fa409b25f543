// The console's text as a component.
#ifndef QUILLMARSH_WIDGETS_CONSOLETEXT_H
#define QUILLMARSH_WIDGETS_CONSOLETEXT_H

#include <quillmarsh/basetools/consoleoutputbuffer.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_rectangle.h>
#include <quillmarsh/platform/types.h>

#include <atomic>
#include <limits>
#include <vector>

namespace quillmarsh::widgets
{

class ScrollBar;

/// Text of a ConsoleOutputBuffer in a font of one width: with the types of its parts, scrolling, selection and copying.
/// While its last line is visible, it follows the buffer; once the user has scrolled back, it stays at the same text for
/// as long as the buffer holds that.
///
/// Any thread may write to the buffer: a change only sets a flag, and a frame copies the visible lines while somebody can
/// see them. A drag selects, a double click selects a word, a third one the line, Ctrl+A everything, Ctrl+C copies as
/// UTF-8, Escape selects nothing. Arrow keys, Page Up and Down, Home and End and the wheel scroll; the wheel with shift
/// sideways. Frame thread only.
class QUILLMARSH_API ConsoleText : public gui::Component, public ConsoleOutputBuffer::Observer
{
public:
    /// Place in the text.
    struct Place
    {
        /// Number of the line, as ConsoleOutputBuffer::GetNumDroppedLines() counts: it stays when other lines are dropped.
        unsigned long long line;
        unsigned int column;
        bool operator==(Place const &) const = default;
        /// By line, then by column.
        bool operator<(Place const &other) const
        {
            return line != other.line ? line < other.line : column < other.column;
        }
    };
    /// Visible part of a line.
    struct Run
    {
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
    bool IsAtEnd() const { return follows_; }
    void SelectAll();
    void ClearSelection();
    bool HasSelection() const { return anchor_ != caret_; }
    /// Returns the selected text in UTF-8, with line feeds. What the buffer has dropped is not in it; control characters
    /// and bytes that are no UTF-8 are replacement characters.
    string GetSelectedText() const;
    /// Puts the selected text on the clipboard. Returns false if nothing is selected, or if the system refuses.
    bool CopySelection();
    /// @}

    /// @name For shaders, as of this frame
    /// Rows and columns count from the top left corner of the text area, in cells.
    /// @{
    /// Returns the visible rows from the top, each with what is in the visible columns. Empty in an empty area.
    std::vector<Run> const &GetRuns() const { return runs_; }
    /// Area of the text, inside of margins and scroll bars.
    gui::Rectangle GetTextArea() const;
    /// Size of a glyph's cell, in pixels.
    vec2 GetCellSize() const { return cellSize_; }
    /// Selected columns of a row; begin and end are the same where nothing is selected. A selected end of line counts
    /// as one more column.
    void GetSelectedColumns(unsigned int row, unsigned int &begin, unsigned int &end) const;
    /// Number of rows and columns that have room; a row or column that is cut counts only if it is the first one.
    unsigned int GetNumRows() const;
    unsigned int GetNumColumns() const;
    /// First visible line, as in Place, and first visible column.
    Place GetFirstPlace() const { return {firstLine_, firstColumn_}; }
    /// @}

    string GetCaption() const override { return GetSelectedText(); }
    void RecalcSize() override;
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
    void UpdateCellSize();
    void CopyVisibleLines();
    void PlaceView(ConsoleOutputBuffer const &buffer);
    void UpdateScrollBars();
    void ForgetDroppedSelection();
    void ScrollTo(unsigned long long line, unsigned int column);
    bool EditByShortcut(eKey key);
    bool ScrollByKey(eKey key);
    void DragTo(vec2 const &position);
    Place FindPlace(vec2 const &position, bool roundColumn) const;
    void SelectWord(Place const &place);
    void SelectLine(unsigned long long line);
    string GetLineColumns(unsigned long long line) const;

    ConsoleOutputBuffer *source_ = nullptr;
    std::atomic<bool> hasChanged_{true};
    vec2 sizeInUnits_;
    vec2 cellSize_ = {1, 1};
    ScrollBar *verticalBar_;
    ScrollBar *horizontalBar_;
    /// @name As of the last copy
    /// @{
    std::vector<Run> runs_;
    unsigned long long firstHeldLine_ = 0;
    unsigned int numLines_ = 0;
    unsigned int maxColumns_ = 0;
    /// @}
    unsigned long long firstLine_ = 0;
    unsigned int firstColumn_ = 0;
    bool follows_ = true;
    /// Ends of the selection: where it began, and where it goes on.
    Place anchor_ = {0, 0};
    Place caret_ = {0, 0};
    /// Seconds since the selection was dragged, and since a double click.
    double dragTime_ = 0;
    double sinceDoubleClick_ = std::numeric_limits<double>::infinity();
};

} // namespace quillmarsh::widgets

#endif
