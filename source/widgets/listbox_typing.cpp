// Rows of a list that are found by typing their first letters.
#include <quillmarsh/widgets/listbox.h>

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/scrollbar.h>

#include "source/widgets/glyphcase.h"

namespace quillmarsh::widgets
{

namespace
{

/// Longest time between two letters of one text.
constexpr double s_typingSeconds = 1;

} // namespace

bool ListBox::SearchByTyping(char character)
{
    gui::Manager::Instance().TimeNotifyRegister(*this, true);
    typedRest_ = s_typingSeconds;
    typed_ += ToLowerGlyph(character);
    bool const hasCurrent = current_ < rows_.size();
    unsigned int const next = hasCurrent ? current_ + 1 : 0;
    // More letters may still fit the row that the first ones have found; the same letter again goes on to the next row.
    bool const isFirstLetter = typed_.size() == 1;
    unsigned int row = FindTyped(typed_, isFirstLetter || !hasCurrent ? next : current_);
    bool const isOneLetter = typed_.find_first_not_of(typed_[0]) == string::npos;
    if (row == s_noItem && isOneLetter)
        row = FindTyped(typed_.substr(0, 1), next);
    if (row != s_noItem)
        GoTo(row, false, false);
    return true;
}

/// Searches from a row on, and around at the end.
unsigned int ListBox::FindTyped(string const &typed, unsigned int first) const
{
    unsigned int const numRows = GetNumItems();
    for (unsigned int i = 0; i < numRows; ++i)
    {
        auto const row = static_cast<unsigned int>((static_cast<std::size_t>(first) + i) % numRows);
        if (BeginsWithLower(rows_[row].glyphs, typed))
            return row;
    }
    return s_noItem;
}

void ListBox::OnTimeDelta(double seconds)
{
    typedRest_ -= seconds;
    if (typedRest_ > 0)
        return;
    typed_.clear();
    gui::Manager::Instance().TimeNotifyRegister(*this, false);
}

void ListBox::OnChangedEnabled()
{
    scrollBar_->SetEnabled(IsEnabled());
}

} // namespace quillmarsh::widgets
