#include "files/filelist.h"

#include "files/filerow.h"

#include <quillmarsh/gui/gui_manager.h>

#include <algorithm>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

/// Movement of the wheel for one notch.
constexpr int s_notch = 120;

} // namespace

FileList::FileList(gui::Component &parent, Client client)
    : client_(std::move(client)),
      bar_(new widgets::ScrollBar(true, this))
{
    SetShaderName(widgets::ShaderName_Group);
    SetCanFocus(true);
    bar_->SetAction([this](unsigned int position) { ScrollTo(position); });
    AttachTo(parent);
}

FileList::~FileList() = default;

// Entries.

unsigned int FileList::GetNumEntries() const
{
    return entries_ != nullptr ? static_cast<unsigned int>(entries_->size()) : 0;
}

void FileList::SetEntries(std::vector<FolderEntry> const &entries, string const &current)
{
    entries_ = &entries;
    current_ = current;
    auto const found = std::find_if(entries.begin(), entries.end(),
                                    [this](FolderEntry const &entry) { return entry.name == selectedName_; });
    selected_ = found != entries.end() ? static_cast<unsigned int>(found - entries.begin()) : s_none;
    ReportDirtyGeometry();
}

void FileList::Select(string const &name)
{
    selectedName_ = name;
    selected_ = s_none;
    for (unsigned int i = 0; i < GetNumEntries(); ++i)
    {
        if ((*entries_)[i].name == name)
            selected_ = i;
    }
    ShowSelected();
    ReportDirtyGeometry();
}

void FileList::SelectByUser(unsigned int index)
{
    if (index >= GetNumEntries())
        return;
    selected_ = index;
    selectedName_ = (*entries_)[index].name;
    ShowSelected();
    FillRows();
}

void FileList::Refresh()
{
    FillRows();
}

string FileList::GetCaption() const
{
    return selected_ < GetNumEntries() ? (*entries_)[selected_].name : string();
}

// Rows.

unsigned int FileList::CountWholeRows() const
{
    float const room = GetSize().y - 2 * Measures::Pixels(1);
    return room > 0 ? static_cast<unsigned int>(room / Measures::Pixels(FileRow::s_height)) : 0;
}

unsigned int FileList::GetNumVisible() const
{
    return std::min(CountWholeRows(), GetNumEntries() - std::min(first_, GetNumEntries()));
}

void FileList::ScrollTo(unsigned int first)
{
    unsigned int const numRows = CountWholeRows();
    unsigned int const last = GetNumEntries() > numRows ? GetNumEntries() - numRows : 0;
    if (std::min(first, last) == first_)
        return;
    first_ = std::min(first, last);
    bar_->SetScrollPosition(static_cast<int>(first_));
    FillRows();
}

void FileList::ShowSelected()
{
    unsigned int const numRows = CountWholeRows();
    if (selected_ == s_none || numRows == 0)
        return;
    if (selected_ < first_)
        ScrollTo(selected_);
    else if (selected_ >= first_ + numRows)
        ScrollTo(selected_ - numRows + 1);
}

void FileList::FillRows()
{
    unsigned int const numVisible = GetNumVisible();
    for (unsigned int i = 0; i < rows_.size(); ++i)
    {
        bool const isShown = i < numVisible;
        rows_[i]->SetVisible(isShown);
        if (!isShown)
            continue;
        unsigned int const index = first_ + i;
        FolderEntry const &entry = (*entries_)[index];
        rows_[i]->Show(
            index, entry,
            {.isSelected = index == selected_, .isCurrent = entry.name == current_, .isFocused = IsFocused()});
    }
    client_.changed();
}

/// Its parent gives it more.
void FileList::RecalcSize()
{
    SetSize(Measures::Pixels(FileRow::s_height), Measures::Pixels(FileRow::s_height));
}

void FileList::RecalcLayout()
{
    float const frame = Measures::Pixels(1);
    float const rowHeight = Measures::Pixels(FileRow::s_height);
    float const barWidth = Measures::Pixels(Measures::ScrollBarWidth);
    unsigned int const numRows = CountWholeRows();
    while (rows_.size() < numRows)
        rows_.push_back(new FileRow(*this));
    first_ = std::min(first_, GetNumEntries() > numRows ? GetNumEntries() - numRows : 0);
    bar_->SetSizes(GetNumEntries(), std::max(1U, numRows));
    bar_->SetScrollPosition(static_cast<int>(first_));
    bar_->SetVisible(bar_->IsNeeded());
    bar_->SetPosition(GetSize().x - frame - barWidth, frame);
    bar_->SetSize(barWidth, std::max(0.0F, GetSize().y - 2 * frame));
    float const width = std::max(0.0F, GetSize().x - 2 * frame - (bar_->IsVisible() ? barWidth : 0));
    for (unsigned int i = 0; i < rows_.size(); ++i)
    {
        rows_[i]->SetPosition(frame, frame + static_cast<float>(i) * rowHeight);
        rows_[i]->SetSize(width, rowHeight);
    }
    FillRows();
}

// Input.

bool FileList::OnMouseWheel(int delta, vec2 const &)
{
    wheelRest_ += delta;
    int const notches = wheelRest_ / s_notch;
    wheelRest_ -= notches * s_notch;
    long long const first = static_cast<long long>(first_) - 3LL * notches;
    ScrollTo(static_cast<unsigned int>(std::max(0LL, first)));
    return true;
}

bool FileList::OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData)
{
    DefaultProcessQueryFocus(byMouse, button, wantFocus, needCharacterData);
    return true;
}

bool FileList::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char)
{
    unsigned int const count = GetNumEntries();
    if (!down || count == 0 || gui::Manager::Instance().IsKeyModifierPressed())
        return false;
    unsigned int const page = std::max(1U, CountWholeRows());
    bool const isAny = selected_ != s_none;
    switch (key)
    {
    case e_key_arrow_up:
        SelectByUser(isAny && selected_ > 0 ? selected_ - 1 : 0);
        return true;
    case e_key_arrow_down:
        SelectByUser(isAny ? std::min(selected_ + 1, count - 1) : 0);
        return true;
    case e_key_page_up:
        SelectByUser(isAny && selected_ > page ? selected_ - page : 0);
        return true;
    case e_key_page_down:
        SelectByUser(std::min((isAny ? selected_ : 0) + page, count - 1));
        return true;
    case e_key_home:
        SelectByUser(0);
        return true;
    case e_key_end:
        SelectByUser(count - 1);
        return true;
    case e_key_enter:
    case e_key_num_enter:
        if (isAny && repeatCount == 0)
            client_.open(selected_);
        return isAny;
    default:
        return false;
    }
}

void FileList::OnChangedFocused()
{
    FillRows();
}

} // namespace viewer
