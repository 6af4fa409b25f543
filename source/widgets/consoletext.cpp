#include <quillmarsh/widgets/consoletext.h>

#include "source/widgets/consolecharacters.h"
#include "source/widgets/inputhelp.h"
#include "source/widgets/units.h"

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_shaders.h>
#include <quillmarsh/platform/clipboard.h>
#include <quillmarsh/widgets/looknames.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/scrollbar.h>
#include <quillmarsh/widgets/textedit.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillmarsh::widgets
{

namespace
{

/// Returns how many cells of a size fit into a length; at least one, unless the length is 0.
unsigned int CountCells(float length, float size)
{
    return length > 0 ? static_cast<unsigned int>(std::max(std::floor(length / size), 1.0f)) : 0;
}

} // namespace

ConsoleText::ConsoleText(gui::Component *parent, ConsoleOutputBuffer *source, vec2 const &size)
    : sizeInUnits_(LimitUnits(size)),
      verticalBar_(new ScrollBar(true, this)),
      horizontalBar_(new ScrollBar(false, this))
{
    SetCanDisable(true);
    SetCanFocus(true);
    SetShaderName(ShaderName_ConsoleText);
    SetClientAreaCursorName(CursorName_Text);
    verticalBar_->SetAction([this](unsigned int position) { ScrollTo(firstHeldLine_ + position, firstColumn_); });
    horizontalBar_->SetAction([this](unsigned int position) { ScrollTo(firstLine_, position); });
    horizontalBar_->SetVisible(false);
    gui::Manager::Instance().TimeNotifyRegister(*this, true);
    SetTextSource(source);
    if (parent != nullptr)
        AttachTo(*parent);
}

ConsoleText::~ConsoleText()
{
    // Other threads may be writing: after this, none is in OnChanged().
    if (source_ != nullptr)
        source_->RemoveObserver(*this);
}

void ConsoleText::SetTextSource(ConsoleOutputBuffer *source)
{
    if (source_ != nullptr)
        source_->RemoveObserver(*this);
    source_ = source;
    ClearSelection();
    firstLine_ = 0;
    firstColumn_ = 0;
    follows_ = true;
    hasChanged_ = true;
    if (source_ != nullptr)
        source_->AddObserver(*this);
}

// Following the buffer.

void ConsoleText::OnChanged(ConsoleOutputBuffer const &)
{
    hasChanged_ = true;
}

void ConsoleText::CopyVisibleLines()
{
    // Before the copy, so that a change during it counts in the next frame.
    hasChanged_ = false;
    runs_.resize(source_ != nullptr ? runs_.size() : 0);
    numLines_ = 0;
    if (source_ != nullptr)
    {
        ConsoleOutputBufferSentry const lock(*source_);
        PlaceView(*source_);
        auto const firstRow = static_cast<unsigned int>(firstLine_ - firstHeldLine_);
        runs_.resize(std::min(GetNumRows(), numLines_ - firstRow));
        for (std::size_t row = 0; row < runs_.size(); ++row)
        {
            Run &run = runs_[row];
            std::string_view line = source_->GetLine(firstRow + static_cast<unsigned int>(row), run.type);
            line.remove_prefix(SkipColumns(line, firstColumn_));
            run.glyphs = line.substr(0, SkipColumns(line, GetNumColumns()));
        }
    }
    for (Run &run : runs_)
        run.glyphs = MakeColumns(run.glyphs);
    ForgetDroppedSelection();
    UpdateScrollBars();
}

/// Limits the view to the lines that the buffer holds, under its lock.
void ConsoleText::PlaceView(ConsoleOutputBuffer const &buffer)
{
    firstHeldLine_ = buffer.GetNumDroppedLines();
    numLines_ = buffer.GetNumLines();
    maxColumns_ = buffer.GetMaxColumns();
    unsigned long long const lastFirstLine = firstHeldLine_ + numLines_ - std::clamp(GetNumRows(), 1u, numLines_);
    firstLine_ = follows_ ? lastFirstLine : std::clamp(firstLine_, firstHeldLine_, lastFirstLine);
    follows_ = firstLine_ == lastFirstLine;
    firstColumn_ = std::min(firstColumn_, maxColumns_ - std::min(GetNumColumns(), maxColumns_));
}

void ConsoleText::ForgetDroppedSelection()
{
    if (std::max(anchor_, caret_).line < firstHeldLine_)
        ClearSelection();
}

void ConsoleText::UpdateScrollBars()
{
    verticalBar_->SetSizes(std::max(numLines_, 1u), std::max(GetNumRows(), 1u));
    verticalBar_->SetScrollPosition(numLines_ > 0 ? static_cast<int>(firstLine_ - firstHeldLine_) : 0);
    horizontalBar_->SetSizes(std::max(maxColumns_, 1u), std::max(GetNumColumns(), 1u));
    horizontalBar_->SetScrollPosition(static_cast<int>(firstColumn_));
    // Only where it leaves room for text.
    float const height = Measures::Pixels(Measures::ScrollBarWidth) + 2 * Measures::Pixels(Measures::Grid);
    bool const isShown = horizontalBar_->IsNeeded() && GetSize().y >= height + cellSize_.y;
    if (horizontalBar_->IsVisible() == isShown)
        return;
    horizontalBar_->SetVisible(isShown);
    ReportDirtyGeometry();
}

// Geometry.

gui::Rectangle ConsoleText::GetTextArea() const
{
    float const margin = Measures::Pixels(Measures::Grid);
    float const bar = Measures::Pixels(Measures::ScrollBarWidth);
    float const height = GetSize().y - (horizontalBar_->IsVisible() ? bar : 0);
    return {margin, margin, std::max(GetSize().x - bar - 2 * margin, 0.0f), std::max(height - 2 * margin, 0.0f)};
}

unsigned int ConsoleText::GetNumRows() const
{
    gui::Rectangle const area = GetTextArea();
    return area.width > 0 ? CountCells(area.height, cellSize_.y) : 0;
}

unsigned int ConsoleText::GetNumColumns() const
{
    return CountCells(GetTextArea().width, cellSize_.x);
}

void ConsoleText::UpdateCellSize()
{
    gui::BaseShader const *const shader = GetBaseShader();
    float width = GetTextHeight(*this) / 2;
    if (shader != nullptr && shader->GetFont() != nullptr)
    {
        // Glyphs may have a distance.
        gui::Font const &font = *shader->GetFont();
        gui::TextMetricsL const &metrics = shader->GetTextMetricsL();
        width = font.CalcTextWidth(metrics, "MM") - font.CalcTextWidth(metrics, "M");
    }
    cellSize_ = {std::max(width, 1.0f), std::max(GetLineHeight(*this), 1.0f)};
}

void ConsoleText::RecalcSize()
{
    UpdateCellSize();
    SetSize(Measures::Pixels(sizeInUnits_));
}

void ConsoleText::RecalcLayout()
{
    float const bar = std::min(Measures::Pixels(Measures::ScrollBarWidth), GetSize().x);
    float const across = horizontalBar_->IsVisible() ? std::min(bar, GetSize().y) : 0;
    verticalBar_->SetPosition(GetSize().x - bar, 0);
    verticalBar_->SetSize(bar, GetSize().y - across);
    horizontalBar_->SetPosition(0, GetSize().y - across);
    horizontalBar_->SetSize(GetSize().x - bar, across);
}

void ConsoleText::UpdateGeometryCache()
{
    CopyVisibleLines();
}

// Time.

void ConsoleText::OnTimeDelta(double seconds)
{
    sinceDoubleClick_ += seconds;
    dragTime_ += seconds;
    // Nobody sees what a hidden console misses.
    if (hasChanged_ && IsBranchVisible())
        CopyVisibleLines();
    constexpr double dragStep = 0.03;
    if (IsMouseCaptureTarget() && dragTime_ >= dragStep)
        DragTo(CalcRelativeMousePosition());
}

// Scrolling.

void ConsoleText::ScrollTo(unsigned long long line, unsigned int column)
{
    // The view follows again if that is its last place.
    follows_ = false;
    firstLine_ = line;
    firstColumn_ = column;
    CopyVisibleLines();
}

void ConsoleText::ScrollToEnd()
{
    follows_ = true;
    CopyVisibleLines();
}

bool ConsoleText::OnMsgScroll(bool forward, gui::eScrollDistance distance, int offset)
{
    verticalBar_->Scroll(forward, distance, offset);
    return true;
}

bool ConsoleText::OnMouseWheel(int delta, vec2 const &position)
{
    bool const isSideways = IsShiftPressed();
    ScrollBar &bar = isSideways ? *horizontalBar_ : *verticalBar_;
    return bar.OnMouseWheel(delta, position);
}

// Selection.

void ConsoleText::ClearSelection()
{
    caret_ = anchor_;
}

void ConsoleText::SelectAll()
{
    if (source_ == nullptr)
        return;
    ConsoleOutputBufferSentry const lock(*source_);
    unsigned int const last = source_->GetNumLines() - 1;
    unsigned long long const first = source_->GetNumDroppedLines();
    anchor_ = {first, 0};
    caret_ = {first + last, static_cast<unsigned int>(MakeColumns(source_->GetLine(last)).size())};
}

string ConsoleText::GetSelectedText() const
{
    if (!HasSelection() || source_ == nullptr)
        return {};
    Place begin = std::min(anchor_, caret_);
    Place const end = std::max(anchor_, caret_);
    string text;
    std::size_t lastLineAt = 0;
    {
        ConsoleOutputBufferSentry const lock(*source_);
        unsigned long long const first = source_->GetNumDroppedLines();
        unsigned long long const past = first + source_->GetNumLines();
        if (end.line < first || begin.line >= past)
            return {};
        begin = std::max(begin, Place{first, 0});
        for (unsigned long long line = begin.line; line <= end.line && line < past; ++line)
        {
            if (line != begin.line)
                text += '\n';
            lastLineAt = text.size();
            text += source_->GetLine(static_cast<unsigned int>(line - first));
        }
    }
    // Without the lock, as this may take its time.
    text.resize(lastLineAt + SkipColumns(std::string_view(text).substr(lastLineAt), end.column));
    std::size_t const beginAt = SkipColumns(text, begin.column);
    string selected;
    selected.reserve(text.size() - beginAt);
    AppendClean(selected, std::string_view(text).substr(beginAt));
    return selected;
}

bool ConsoleText::CopySelection()
{
    string const text = GetSelectedText();
    return !text.empty() && platform::WriteClipboardText(text);
}

void ConsoleText::GetSelectedColumns(unsigned int row, unsigned int &begin, unsigned int &end) const
{
    begin = end = 0;
    auto const [first, last] = std::minmax(anchor_, caret_);
    unsigned long long const line = firstLine_ + row;
    if (row >= runs_.size() || line < first.line || line > last.line)
        return;
    auto const length = static_cast<unsigned int>(runs_[row].glyphs.size());
    auto const toView = [this](unsigned int column) { return column - std::min(column, firstColumn_); };
    unsigned int const from = line == first.line ? toView(first.column) : 0;
    unsigned int const to = line == last.line ? toView(last.column) : length + 1;
    end = std::min(to, GetNumColumns());
    begin = std::min(from, end);
    if (begin == end)
        begin = end = 0;
}

/// Returns the place under a position of the mouse, or nearest to it. With `roundColumn`, it is the nearest boundary
/// between two columns, else the column itself.
ConsoleText::Place ConsoleText::FindPlace(vec2 const &position, bool roundColumn) const
{
    if (runs_.empty())
        return {firstLine_, 0};
    gui::Rectangle const area = GetTextArea();
    float const row = std::floor((position.y - area.y) / cellSize_.y);
    float const column = std::floor((position.x - area.x) / cellSize_.x + (roundColumn ? 0.5f : 0));
    auto const numRows = static_cast<float>(runs_.size());
    auto const shownRow = static_cast<std::size_t>(std::clamp(row, 0.0f, numRows - 1));
    auto const length = static_cast<float>(runs_[shownRow].glyphs.size());
    // Below the last line, everything is selected.
    float const shownColumn = row >= numRows ? length : std::clamp(column, 0.0f, length);
    return {firstLine_ + shownRow, firstColumn_ + static_cast<unsigned int>(shownColumn)};
}

/// Returns the columns of a whole line; empty if the buffer has dropped it.
string ConsoleText::GetLineColumns(unsigned long long line) const
{
    if (source_ == nullptr)
        return {};
    ConsoleOutputBufferSentry const lock(*source_);
    unsigned long long const first = source_->GetNumDroppedLines();
    bool const isHeld = line >= first && line - first < source_->GetNumLines();
    return isHeld ? MakeColumns(source_->GetLine(static_cast<unsigned int>(line - first))) : string();
}

void ConsoleText::SelectWord(Place const &place)
{
    TextEdit edit;
    edit.SetText(GetLineColumns(place.line));
    edit.SelectWord(place.column);
    anchor_ = {place.line, edit.GetSelectionBegin()};
    caret_ = {place.line, edit.GetSelectionEnd()};
}

void ConsoleText::SelectLine(unsigned long long line)
{
    anchor_ = {line, 0};
    caret_ = {line, static_cast<unsigned int>(GetLineColumns(line).size())};
}

/// Moves the end of the selection to the mouse. Beside the text area, the text scrolls by a line or column.
void ConsoleText::DragTo(vec2 const &position)
{
    dragTime_ = 0;
    gui::Rectangle const area = GetTextArea();
    if (position.y < area.y || position.y >= area.y + area.height)
        verticalBar_->Scroll(position.y >= area.y, gui::e_scroll_line);
    if (position.x < area.x || position.x >= area.x + area.width)
        horizontalBar_->Scroll(position.x >= area.x, gui::e_scroll_line);
    caret_ = FindPlace(position, true);
}

// Mouse.

bool ConsoleText::OnMouseCapture(bool)
{
    return true;
}

bool ConsoleText::OnMouseMove(bool hover, double, vec2 const &position)
{
    if (!IsMouseCaptureTarget())
        return false;
    // Beside the text, it scrolls by time.
    if (!hover && GetTextArea().HitTest(position))
        DragTo(position);
    return true;
}

bool ConsoleText::OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                                vec2 const &position)
{
    if (button != e_mouse_button_left)
        return false;
    if (!down || repeatCount > 0)
        return true;
    bool const isThirdClick = !doubleClick && sinceDoubleClick_ <= gui::Manager::Instance().GetMouseDoubleClick();
    sinceDoubleClick_ = doubleClick ? 0 : std::numeric_limits<double>::infinity();
    if (doubleClick)
        SelectWord(FindPlace(position, false));
    else if (isThirdClick)
        SelectLine(FindPlace(position, false).line);
    else
    {
        caret_ = FindPlace(position, true);
        if (!IsShiftPressed())
            anchor_ = caret_;
        dragTime_ = 0;
        RequestMouseCapture();
    }
    return true;
}

// Keyboard.

bool ConsoleText::OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &)
{
    bool needsCharacters = false;
    DefaultProcessQueryFocus(byMouse, button, wantFocus, needsCharacters);
    return true;
}

bool ConsoleText::OnKeyboardKey(bool down, eKey key, unsigned int, char)
{
    if (!down || !IsEnabled())
        return false;
    bool const isControl = IsControlPressed();
    if (isControl && EditByShortcut(key))
        return true;
    if (key == e_key_escape && HasSelection())
    {
        ClearSelection();
        return true;
    }
    return ScrollByKey(key);
}

bool ConsoleText::EditByShortcut(eKey key)
{
    switch (key)
    {
    case e_key_a:
        SelectAll();
        return true;
    case e_key_c:
    case e_key_insert:
        CopySelection();
        return true;
    default:
        return false;
    }
}

bool ConsoleText::ScrollByKey(eKey key)
{
    struct ScrollKey
    {
        eKey key;
        bool isVertical;
        bool forward;
        gui::eScrollDistance distance;
    };
    constexpr ScrollKey keys[] = {
        {e_key_arrow_up, true, false, gui::e_scroll_line},    {e_key_arrow_down, true, true, gui::e_scroll_line},
        {e_key_page_up, true, false, gui::e_scroll_page},     {e_key_page_down, true, true, gui::e_scroll_page},
        {e_key_home, true, false, gui::e_scroll_whole},       {e_key_end, true, true, gui::e_scroll_whole},
        {e_key_arrow_left, false, false, gui::e_scroll_line}, {e_key_arrow_right, false, true, gui::e_scroll_line},
    };
    auto const *const found =
        std::find_if(std::begin(keys), std::end(keys), [key](ScrollKey const &row) { return row.key == key; });
    if (found == std::end(keys))
        return false;
    (found->isVertical ? *verticalBar_ : *horizontalBar_).Scroll(found->forward, found->distance);
    return true;
}

} // namespace quillmarsh::widgets
