#include "stage.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/gui/gui_renderer.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

/// Width of the message's lines, in units.
constexpr float s_messageWidth = 440;
/// Darkens the surface of any theme.
constexpr color4b s_shade = {0, 0, 0, 40};

} // namespace

Stage::Stage(gui::Component &parent, Workspace &workspace)
    : heading_(new widgets::Label(this, string(), widgets::ShaderName_Heading)),
      text_(new widgets::Label(this, string())),
      failure_(new widgets::Label(this, string(), widgets::ShaderName_Failure)),
      open_(new widgets::TextButton(this, "Open…")),
      tabs_(new widgets::TabView(this))
{
    tabs_->SetVisible(false);
    tabs_->SetAction([&workspace](unsigned int page) { workspace.Run("document " + MakeString(page + 1)); });
    SetCanFocus(true);
    open_->SetToolTipText("Choose a file (Ctrl+O)");
    open_->SetAction([&workspace] { workspace.Run("open"); });
    for (widgets::Label *const label : {text_, failure_})
        label->SetWrapWidth(s_messageWidth);
    AttachTo(parent);
}

Stage::~Stage() = default;

void Stage::ShowView(Component *view)
{
    if (view == view_)
        return;
    if (view_ != nullptr)
        view_->SetVisible(false);
    view_ = view;
    if (view_ != nullptr)
        view_->SetVisible(true);
    ShowMessage();
}

void Stage::SetMessage(string const &heading, string const &text, bool isFailure)
{
    heading_->SetText(heading);
    text_->SetText(isFailure ? string() : text);
    failure_->SetText(isFailure ? text : string());
    ShowMessage();
}

void Stage::ShowMessage()
{
    for (widgets::Label *const label : {heading_, text_, failure_})
        label->SetVisible(view_ == nullptr && !label->GetText().empty());
    open_->SetVisible(view_ == nullptr && !text_->GetText().empty());
    ReportDirtyGeometry();
}

void Stage::ShowTitles(std::vector<string> const &titles, unsigned int shown)
{
    while (tabs_->GetNumPages() > titles.size())
        delete tabs_->GetPage(tabs_->GetNumPages() - 1);
    for (unsigned int i = 0; i < titles.size(); ++i)
    {
        if (i == tabs_->GetNumPages())
            tabs_->AddPage(titles[i]);
        else if (tabs_->GetTab(i)->GetCaption() != titles[i])
            tabs_->SetTitle(i, titles[i]);
    }
    tabs_->ShowPage(shown);
    tabs_->SetVisible(titles.size() > 1);
    ReportDirtyGeometry();
}

float Stage::CalcTabsHeight() const
{
    return tabs_->IsVisible() ? Measures::Pixels(Measures::Gap + Measures::ControlHeight) : 0;
}

void Stage::RecalcLayout()
{
    float const margin = Measures::Pixels(Measures::Margin);
    float const tabsHeight = CalcTabsHeight();
    tabs_->SetPosition(margin, Measures::Pixels(Measures::Gap));
    tabs_->SetSize(std::max(0.0F, GetSize().x - 2 * margin), Measures::Pixels(Measures::ControlHeight));
    if (view_ != nullptr)
    {
        view_->SetPosition(0, tabsHeight);
        view_->SetSize(GetSize().x, std::max(0.0F, GetSize().y - tabsHeight));
        return;
    }
    float const gap = Measures::Pixels(Measures::Margin);
    Component *const parts[] = {heading_, text_, failure_, open_};
    float height = -gap;
    for (Component const *const part : parts)
        height += part->IsVisible() ? part->GetSize().y + gap : 0;
    float y = std::max(0.0F, std::round((GetSize().y - height) / 2));
    for (Component *const part : parts)
    {
        if (!part->IsVisible())
            continue;
        part->SetPosition(std::round((GetSize().x - part->GetSize().x) / 2), y);
        y += part->GetSize().y + gap;
    }
}

void Stage::DrawSelf(gui::Renderer &renderer)
{
    vec2 const corner(0, CalcTabsHeight());
    if (view_ == nullptr)
        renderer.DrawRectangle(gui::RectangleC(gui::Rectangle(corner, GetSize() - corner), s_shade));
}

bool Stage::OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData)
{
    DefaultProcessQueryFocus(byMouse, button, wantFocus, needCharacterData);
    return true;
}

} // namespace viewer
