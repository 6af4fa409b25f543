#include "stage.h"

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
      open_(new widgets::TextButton(this, "Open…"))
{
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

void Stage::RecalcLayout()
{
    if (view_ != nullptr)
    {
        view_->SetPosition(0, 0);
        view_->SetSize(GetSize());
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
    renderer.DrawRectangle(gui::RectangleC(gui::Rectangle(vec2::ZERO, GetSize()), s_shade));
}

bool Stage::OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData)
{
    DefaultProcessQueryFocus(byMouse, button, wantFocus, needCharacterData);
    return true;
}

} // namespace viewer
