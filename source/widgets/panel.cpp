#include <quillmarsh/widgets/panel.h>

#include "source/widgets/inputhelp.h"
#include "source/widgets/movefocus.h"
#include "source/widgets/units.h"

#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/textbutton.h>
#include <quillmarsh/widgets/textencoding.h>

#include <algorithm>
#include <utility>

namespace quillmarsh::widgets
{

namespace
{

/// Presses a button that can be pressed; others and null are ignored.
void PressIfUsable(TextButton *button)
{
    if (button != nullptr && button->IsEnabled() && button->IsBranchVisible())
        button->Press();
}

} // namespace

Panel::Panel(string const &title, vec2 const &size)
    : title_(title),
      titleGlyphs_(ToGlyphs(title)),
      sizeInUnits_(LimitUnits(size)),
      scale_(Measures::GetScale()),
      margin_(Measures::Margin)
{
    SetVisible(false);
    SetShaderName(ShaderName_Panel);
    content_ = new gui::Component();
    content_->SetGhost(true);
    content_->AttachTo(*this);
    closeButton_ = new TextButton(this, string());
    closeButton_->SetShaderName(ShaderName_ToolButton);
    closeButton_->SetMark(e_mark_cross);
    closeButton_->SetCanFocus(false);
    closeButton_->SetVisible(HasTitle());
    closeButton_->SetAction([this] { Close(); });
    vec2 const minSize(2 * Measures::Margin, 2 * Measures::Margin);
    vec2 const titleSize(2 * Measures::TitleHeight, Measures::TitleHeight);
    SetMinSize(Measures::Pixels(HasTitle() ? minSize + titleSize : minSize));
    appliedSize_ = CalcMinMaxClampedSize(Measures::Pixels(sizeInUnits_));
    SetSize(appliedSize_);
}

Panel::~Panel() = default;

void Panel::SetTitle(string const &title)
{
    if (title == title_)
        return;
    title_ = title;
    titleGlyphs_ = ToGlyphs(title);
    closeButton_->SetVisible(closable_ && HasTitle());
    isFitPending_ = fitsToContent_;
    ReportDirtyGeometry();
}

float Panel::GetTitleHeight() const
{
    if (!HasTitle())
        return 0;
    return std::max(Measures::Pixels(Measures::TitleHeight), GetTextHeight(*this) + Measures::Pixels(Measures::Grid));
}

void Panel::SetMargin(float units)
{
    margin_ = LimitUnits(units);
    isFitPending_ = fitsToContent_;
    ReportDirtyGeometry();
}

void Panel::FitToContent()
{
    fitsToContent_ = true;
    isFitPending_ = true;
    resizable_ = false;
    ReportDirtyGeometry();
}

void Panel::SetClosable(bool closable)
{
    closable_ = closable;
    closeButton_->SetVisible(closable_ && HasTitle());
}

void Panel::Open()
{
    gui::Manager &manager = gui::Manager::Instance();
    gui::Watch<Panel> const self(*this);
    if (!IsVisible())
    {
        formerTopLevel_ = manager.GetActiveTopLevel();
        wasApplicationActive_ = manager.IsApplicationActive();
        isPlacePending_ = true;
        isCenterPending_ = !wasOpened_;
        wasOpened_ = true;
    }
    ActivateTopLevel(true);
    // Nobody is activated while the components of a click are told.
    if (self.Get() != nullptr)
        ShowTopLevel(true, true);
    // The click that opens the panel is not to take the focus away again.
    if (self.Get() != nullptr)
        RequestKeyboardFocus();
}

void Panel::Close()
{
    if (!IsVisible())
        return;
    gui::Manager &manager = gui::Manager::Instance();
    gui::Watch<Panel> const self(*this);
    if (manager.GetCommandTarget() == this)
        manager.BreakCommandMode();
    if (self.Get() != nullptr)
        EndModal();
    if (self.Get() != nullptr && IsActive())
        ActivateFormer();
    if (self.Get() != nullptr)
        SetVisible(false);
    if (self.Get() == nullptr)
        return;
    formerTopLevel_ = nullptr;
    closeAction_();
}

void Panel::ActivateFormer()
{
    gui::Manager &manager = gui::Manager::Instance();
    gui::Component *const former = formerTopLevel_;
    if (former != nullptr && former->IsTopLevel() && former->IsVisible())
        former->ActivateTopLevel(true);
    else if (wasApplicationActive_)
        manager.ActivateApplication();
}

void Panel::SetDefaultButton(TextButton *button)
{
    if (defaultButton_.Get() != nullptr)
        defaultButton_->SetDefault(false);
    defaultButton_ = button;
    if (button != nullptr)
        button->SetDefault(true);
}

void Panel::SetCancelButton(TextButton *button)
{
    cancelButton_ = button;
}

// Activity and focus.

bool Panel::OnActivate(bool, eMouseButton, vec2 const &, Component *, bool &autoBringToFront, bool &autoActivate)
{
    autoBringToFront = true;
    autoActivate = true;
    return true;
}

void Panel::OnChangedActive()
{
    gui::Manager &manager = gui::Manager::Instance();
    if (!IsActive() && HasFocusInside())
        lastFocus_ = manager.GetKeyboardFocusTarget();
    hadFocusInside_ = false;
    manager.TimeNotifyRegister(*this, IsActive());
}

bool Panel::HasFocusInside() const
{
    gui::Component const *const focus = gui::Manager::Instance().GetKeyboardFocusTarget();
    return focus->IsDescendantOf(*this) && focus->IsEnabled() && focus->IsBranchVisible();
}

bool Panel::OnKeyboardQueryFocus(bool, eMouseButton, bool &wantFocus, bool &needCharacterData)
{
    // A click beside the widgets leaves the focus where it is.
    wantFocus = !HasFocusInside();
    needCharacterData = false;
    return true;
}

bool Panel::OnKeyboardFocus(bool gotFocus)
{
    if (gotFocus)
        GiveFocus();
    return true;
}

void Panel::GiveFocus()
{
    gui::Component *const last = lastFocus_;
    bool const isUsable =
        last != nullptr && last->IsDescendantOf(*this) && last->IsEnabled() && last->IsBranchVisible();
    if (isUsable)
        last->RequestKeyboardFocus();
    else
        MoveFocusFrom(*this, last, true);
}

void Panel::OnTimeDelta(double)
{
    if (HasFocusInside())
    {
        lastFocus_ = gui::Manager::Instance().GetKeyboardFocusTarget();
        hadFocusInside_ = true;
        return;
    }
    if (!std::exchange(hadFocusInside_, false))
        return;
    // A component that is still there has passed the focus on itself.
    gui::Component const *const last = lastFocus_;
    bool const isLost =
        last == nullptr || !last->IsDescendantOf(*this) || !last->IsEnabled() || !last->IsBranchVisible();
    if (isLost)
        RequestKeyboardFocus();
}

bool Panel::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char)
{
    if (!down || IsControlPressed() || IsAltPressed())
        return false;
    if (key == e_key_tab)
        return MoveFocusByKey(*this, down, key);
    if (IsEnterKey(key))
    {
        bool const isConsumed = defaultButton_.Get() != nullptr;
        if (repeatCount == 0)
            PressIfUsable(defaultButton_);
        return isConsumed;
    }
    bool const hasCancel = cancelButton_.Get() != nullptr;
    if (key != e_key_escape || !(hasCancel || closable_))
        return false;
    if (repeatCount > 0)
        return true;
    if (hasCancel)
        PressIfUsable(cancelButton_);
    else
        Close();
    return true;
}

} // namespace quillmarsh::widgets
