#include "inspector.h"

#include <quillmarsh/widgets/label.h>

#include <algorithm>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

string ToLower(string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

} // namespace

Inspector::Inspector(gui::Component &parent, Workspace &workspace)
    : empty_(new widgets::Label(this, "Nothing is shown.", widgets::ShaderName_Hint)),
      header_(new gui::Component),
      tabs_(nullptr)
{
    SetGhost(true);
    header_->SetShaderName(widgets::ShaderName_Desk);
    header_->AttachTo(*this);
    tabs_ = new widgets::TabView(this);
    tabs_->AddPage("View");
    titles_.push_back("View");
    tabs_->SetAction([this, &workspace](unsigned int page) { workspace.Run("tab " + ToLower(titles_[page])); });
    AttachTo(parent);
}

Inspector::~Inspector() = default;

void Inspector::Add(Room &room)
{
    auto *const column = new ScrollColumn(*this);
    room.MakeInspector(column->GetStack());
    // Header and tabs cover what the column scrolls.
    header_->DetachFromParent();
    header_->AttachTo(*this);
    tabs_->DetachFromParent();
    tabs_->AttachTo(*this);
    unsigned int page = 0;
    if (room.GetNumDimensions() == 0)
    {
        tabs_->AddPage(room.GetTitle());
        titles_.push_back(room.GetTitle());
        page = static_cast<unsigned int>(titles_.size()) - 1;
    }
    columns_.push_back({&room, column, page});
    ShowColumns();
}

void Inspector::SetShown(Room const *room)
{
    if (room == shown_)
        return;
    shown_ = room;
    ShowColumns();
}

bool Inspector::ShowTab(string const &title)
{
    auto const found = std::find_if(titles_.begin(), titles_.end(),
                                    [&title](string const &each) { return ToLower(each) == ToLower(title); });
    if (found == titles_.end())
        return false;
    tabs_->ShowPage(static_cast<unsigned int>(found - titles_.begin()));
    ShowColumns();
    return true;
}

void Inspector::ShowColumns()
{
    unsigned int const page = tabs_->GetShownPage();
    for (Column const &each : columns_)
        each.column->SetVisible(each.page == page && (page != 0 || each.room == shown_));
    empty_->SetVisible(page == 0 && shown_ == nullptr);
    ReportDirtyGeometry();
}

void Inspector::Update()
{
    for (Column const &each : columns_)
    {
        if (each.column->IsVisible())
            each.column->FollowFocus();
    }
}

float Inspector::CalcWidth()
{
    return Measures::Pixels(Room::s_inspectorWidth + 2 * Measures::Margin + Measures::ScrollBarWidth);
}

void Inspector::RecalcLayout()
{
    float const margin = Measures::Pixels(Measures::Margin);
    float const tabHeight = Measures::Pixels(Measures::ControlHeight);
    float const header = tabHeight + Measures::Pixels(Measures::Gap) + margin;
    vec2 const size = GetSize();
    header_->SetPosition(0, 0);
    header_->SetSize(size.x, header);
    tabs_->SetPosition(margin, Measures::Pixels(Measures::Gap));
    tabs_->SetSize(std::max(0.0F, size.x - 2 * margin), tabHeight);
    empty_->SetPosition(margin, header);
    for (Column const &each : columns_)
    {
        each.column->SetPosition(margin, header);
        each.column->SetSize(std::max(0.0F, size.x - 2 * margin + Measures::Pixels(Measures::Grid)),
                             std::max(0.0F, size.y - header));
    }
}

} // namespace viewer
