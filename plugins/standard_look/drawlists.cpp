// Fields, lists, tabs, menus, the console's text.
#include "shaders.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/widgets/consoletext.h>
#include <quillmarsh/widgets/listbox.h>
#include <quillmarsh/widgets/menu.h>
#include <quillmarsh/widgets/textfield.h>

#include <algorithm>
#include <cmath>

namespace standard_look
{
namespace
{

/// Colour of a row's mark: files look like text, folders stand out.
color4b FindMarkColor(Painter const &painter, widgets::eMark mark, Ink const &ink, bool isSelected)
{
    bool const isFolder = mark == widgets::e_mark_folder || mark == widgets::e_mark_parent_folder;
    if (isSelected)
        return ink.text;
    switch (mark)
    {
    case widgets::e_mark_warning:
        return painter.GetSignals().warning;
    case widgets::e_mark_error:
        return painter.GetSignals().error;
    default:
        return isFolder ? painter.GetSignals().folder : ink.text;
    }
}

void DrawFieldText(Painter &painter, widgets::TextField const &field, Ink const &ink)
{
    Rectangle const area = field.GetTextArea();
    string const &glyphs = field.GetGlyphs();
    float const height = painter.GetMetrics().Height;
    float const top = std::floor(area.y + (area.height - height) / 2);
    float const left = field.GetTextX();
    widgets::TextEdit const &edit = field.GetEdit();
    unsigned int const begin = edit.GetSelectionBegin(), end = edit.GetSelectionEnd();
    bool const isSelected = edit.HasSelection() && field.IsFocused();
    if (isSelected)
    {
        float const from = field.GetGlyphX(begin);
        painter.Fill({from, top, field.GetGlyphX(end) - from, height}, painter.GetInk(e_ink_rowSelected).surface);
    }
    if (!isSelected)
        painter.DrawTextAt(glyphs.data(), glyphs.size(), {left, top}, ink.text);
    else
    {
        painter.DrawTextAt(glyphs.data(), begin, {left, top}, ink.text);
        painter.DrawTextAt(glyphs.data() + begin, end - begin, {field.GetGlyphX(begin), top},
                           painter.GetInk(e_ink_rowSelected).text);
        painter.DrawTextAt(glyphs.data() + end, glyphs.size() - end, {field.GetGlyphX(end), top}, ink.text);
    }
    if (field.IsFocused() && field.IsCaretShown())
    {
        float const width = Painter::Pixels(1);
        painter.Fill({std::round(field.GetGlyphX(edit.GetCaret())), top, width, height}, ink.text);
    }
}

eInk FindFieldInk(gui::Component const &component)
{
    if (!component.IsEnabled())
        return e_ink_fieldDisabled;
    return component.IsHot() ? e_ink_fieldHot : e_ink_field;
}

/// Inks of a row in a list: of its text, and of its detail.
struct RowInks
{
    eInk text;
    eInk detail;
};

RowInks FindRowInks(widgets::ListBox const &list, unsigned int index)
{
    if (!list.IsEnabled())
    {
        eInk const disabled = list.IsSelected(index) ? e_ink_accentDisabled : e_ink_rowDisabled;
        return {disabled, disabled};
    }
    if (list.IsSelected(index))
    {
        eInk const selected = list.IsFocused() ? e_ink_rowSelected : e_ink_rowSelectedIdle;
        return {selected, selected};
    }
    if (index == list.GetHotItem())
        return {e_ink_rowHot, e_ink_rowDetailHot};
    return {e_ink_row, e_ink_rowDetail};
}

void DrawListRow(Painter &painter, widgets::ListBox const &list, unsigned int index)
{
    Rectangle const row = list.GetRowArea(index);
    RowInks const inks = FindRowInks(list, index);
    Ink const &ink = painter.GetInk(inks.text);
    if (inks.text != e_ink_row && inks.text != e_ink_rowDisabled)
        painter.FillRound(row, e_part_corner4, ink.surface);
    float const margin = Painter::Pixels(Measures::TextMargin);
    Rectangle text = {row.x + margin, row.y, row.width - 2 * margin, row.height};
    if (list.GetMark(index) != widgets::e_mark_none)
    {
        float const mark = Painter::Pixels(Measures::MarkSize);
        painter.DrawMark(list.GetMark(index), {text.x, row.y, mark, row.height},
                         FindMarkColor(painter, list.GetMark(index), ink, list.IsSelected(index) || !list.IsEnabled()));
        text.x += mark + margin;
        text.width -= mark + margin;
    }
    string const &detail = list.GetDetailGlyphs(index);
    if (!detail.empty())
    {
        // The text has at least half of the row.
        float const width = std::min(painter.CalcSmallTextWidth(detail), std::floor(text.width / 2));
        painter.DrawSmallText(detail, {text.x + text.width - width, row.y, width, row.height},
                              painter.GetInk(inks.detail).text, 1);
        text.width -= width + margin;
    }
    painter.DrawText(list.GetGlyphs(index), text, ink.text);
    if (list.IsFocused() && index == list.GetCurrent() && list.HasMultipleSelection())
    {
        Rectangle inner = row;
        inner.Shrink(Painter::Pixels(2));
        painter.DrawFocus(inner, e_part_focus6);
    }
}

void DrawMenuRow(Painter &painter, widgets::Menu const &menu, unsigned int index)
{
    Rectangle const row = menu.GetRowArea(index);
    Ink const &popup = painter.GetInk(e_ink_popup);
    if (menu.IsSeparator(index))
    {
        float const margin = Painter::Pixels(Measures::Gap);
        float const line = Painter::Pixels(1);
        painter.Fill({row.x + margin, std::floor(row.y + (row.height - line) / 2), row.width - 2 * margin, line},
                     painter.GetSignals().line);
        return;
    }
    widgets::MenuItem const &item = menu.GetItem(index);
    bool const isCurrent = index == menu.GetCurrent() && item.isEnabled;
    Ink const &ink = !item.isEnabled ? painter.GetInk(e_ink_popupDisabled)
                     : isCurrent     ? painter.GetInk(e_ink_popupHot)
                                     : popup;
    if (isCurrent)
        painter.FillRound(row, e_part_corner4, ink.surface);
    float const mark = Painter::Pixels(Measures::MarkSize);
    float const margin = Painter::Pixels(Measures::TextMargin);
    painter.DrawMark(item.mark, {row.x + margin, row.y, mark, row.height},
                     FindMarkColor(painter, item.mark, ink, isCurrent || !item.isEnabled));
    float const left = menu.GetTextX(), right = menu.GetKeysEndX();
    string const &keys = menu.GetKeysGlyphs(index);
    float const keysWidth = keys.empty() ? 0 : painter.CalcTextWidth(keys);
    painter.DrawText(menu.GetGlyphs(index), {left, row.y, right - left - keysWidth, row.height}, ink.text);
    painter.DrawText(keys, {right - keysWidth, row.y, keysWidth, row.height},
                     isCurrent || !item.isEnabled ? ink.text : painter.GetInk(e_ink_popupKeys).text);
    if (menu.OpensMenu(index))
        painter.DrawMark(widgets::e_mark_arrow_right,
                         {row.x + row.width - margin - mark / 2 - mark / 2, row.y, mark, row.height}, ink.text);
}

eInk FindConsoleInk(unsigned int type)
{
    using quillmarsh::OutputStream;
    switch (type)
    {
    case OutputStream::e_typeWarning:
        return e_ink_consoleWarning;
    case OutputStream::e_typeError:
        return e_ink_consoleError;
    case OutputStream::e_typeAttention:
        return e_ink_consoleAttention;
    case OutputStream::e_typeQuery:
        return e_ink_consoleQuery;
    case OutputStream::e_typeEcho:
        return e_ink_consoleEcho;
    case OutputStream::e_typeDebug:
        return e_ink_consoleDebug;
    default:
        return e_ink_consoleInfo;
    }
}

/// Draws one row of the console's text, with what is selected of it.
void DrawConsoleRow(Painter &painter, widgets::ConsoleText const &console, unsigned int row)
{
    widgets::ConsoleText::Run const &run = console.GetRuns()[row];
    Rectangle const area = console.GetTextArea();
    vec2 const cell = console.GetCellSize();
    float const top = area.y + static_cast<float>(row) * cell.y;
    auto const place = [&](std::size_t column) { return area.x + static_cast<float>(column) * cell.x; };
    unsigned int begin = 0, end = 0;
    console.GetSelectedColumns(row, begin, end);
    std::size_t const length = run.glyphs.size();
    std::size_t const from = std::min<std::size_t>(begin, length), to = std::min<std::size_t>(end, length);
    color4b const color = painter.GetInk(FindConsoleInk(run.type)).text;
    Ink const &selected = painter.GetInk(e_ink_consoleSelected);
    if (end > begin)
        painter.Fill({place(begin), top, place(end) - place(begin), cell.y}, selected.surface);
    float const text = top + std::floor((cell.y - painter.GetMetrics().Height) / 2);
    painter.DrawTextAt(run.glyphs.data(), from, {place(0), text}, color);
    painter.DrawTextAt(run.glyphs.data() + from, to - from, {place(from), text}, selected.text);
    painter.DrawTextAt(run.glyphs.data() + to, length - to, {place(to), text}, color);
}

} // namespace

void DrawTextField(Painter &painter, gui::Component const &component)
{
    auto const *const field = dynamic_cast<widgets::TextField const *>(&component);
    bool const isWrong = field != nullptr && field->IsWrong() && component.IsEnabled();
    Ink const &ink = painter.GetInk(isWrong ? e_ink_fieldWrong : FindFieldInk(component));
    painter.DrawBox(painter.GetArea(), e_part_corner4, e_part_ring4, ink);
    if (component.IsFocused())
        painter.DrawFocus(painter.GetArea());
    if (field == nullptr)
        return;
    Rectangle const area = field->GetTextArea();
    if (field->GetGlyphs().empty() && !field->GetPlaceholderGlyphs().empty())
        painter.DrawText(
            field->GetPlaceholderGlyphs(), area,
            painter.GetInk(component.IsEnabled() && !isWrong ? e_ink_fieldHint : FindFieldInk(component)).text);
    bool const fits = field->GetTextX() >= area.x &&
                      field->GetGlyphX(static_cast<unsigned int>(field->GetGlyphs().size())) <= area.x + area.width;
    if (fits)
        return DrawFieldText(painter, *field, ink);
    Painter::Clip const clip(painter,
                             {area.x - Painter::Pixels(1), area.y, area.width + 2 * Painter::Pixels(1), area.height});
    DrawFieldText(painter, *field, ink);
}

void DrawListBox(Painter &painter, gui::Component const &component)
{
    painter.DrawBox(painter.GetArea(), e_part_corner4, e_part_ring4, painter.GetInk(FindFieldInk(component)));
    if (component.IsFocused())
        painter.DrawFocus(painter.GetArea());
    auto const *const list = dynamic_cast<widgets::ListBox const *>(&component);
    if (list == nullptr)
        return;
    Rectangle const rows = list->GetRowsArea();
    unsigned int const first = list->GetFirstVisible();
    unsigned int const end = std::min(first + list->GetNumVisible(), list->GetNumItems());
    for (unsigned int index = first; index < end; ++index)
    {
        Rectangle const row = list->GetRowArea(index);
        bool const isWhole = row.y >= rows.y && row.y + row.height <= rows.y + rows.height;
        if (isWhole)
        {
            DrawListRow(painter, *list, index);
            continue;
        }
        Painter::Clip const clip(painter, rows);
        DrawListRow(painter, *list, index);
    }
}

void DrawMenu(Painter &painter, gui::Component const &component)
{
    DrawPopup(painter, component);
    auto const *const menu = dynamic_cast<widgets::Menu const *>(&component);
    if (menu == nullptr)
        return;
    Rectangle const area = painter.GetArea();
    float const edge = Painter::Pixels(Measures::Grid);
    Rectangle const rows = {0, edge, area.width, area.height - 2 * edge};
    for (unsigned int index = 0; index < menu->GetNumItems(); ++index)
    {
        Rectangle const row = menu->GetRowArea(index);
        if (row.y + row.height <= rows.y || row.y >= rows.y + rows.height)
            continue;
        bool const isWhole = row.y >= rows.y && row.y + row.height <= rows.y + rows.height;
        if (isWhole)
        {
            DrawMenuRow(painter, *menu, index);
            continue;
        }
        Painter::Clip const clip(painter, rows);
        DrawMenuRow(painter, *menu, index);
    }
    for (bool const below : {false, true})
    {
        if (!menu->HasHiddenRows(below))
            continue;
        float const height = Painter::Pixels(Measures::MarkSize);
        Rectangle const end = {edge, below ? area.height - edge - height : edge, area.width - 2 * edge, height};
        painter.Fill(end, painter.GetInk(e_ink_popup).surface);
        painter.DrawMark(below ? widgets::e_mark_arrow_down : widgets::e_mark_arrow_up, end,
                         painter.GetInk(e_ink_popup).text);
    }
}

void DrawConsoleText(Painter &painter, gui::Component const &component)
{
    Ink const &ink = painter.GetInk(e_ink_field);
    painter.DrawBox(painter.GetArea(), e_part_corner4, e_part_ring4, ink);
    if (component.IsFocused())
        painter.DrawFocus(painter.GetArea());
    auto const *const console = dynamic_cast<widgets::ConsoleText const *>(&component);
    if (console == nullptr || console->GetRuns().empty())
        return;
    Painter::Clip const clip(painter, console->GetTextArea());
    for (unsigned int row = 0; row < console->GetRuns().size(); ++row)
        DrawConsoleRow(painter, *console, row);
}

} // namespace standard_look
