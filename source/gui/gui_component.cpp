// Components: life, state, and what they ask the manager for.
#include <quillmarsh/gui/gui_component.h>

#include "source/gui/branchwalk.h"
#include "source/gui/manager/safelists.h"

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_shaders.h>

namespace quillmarsh::gui
{

// Life.

bool Component::s_bDefaultEnableShaderHitTest = false;

Component::Component()
{
    Manager::Instance().NotifyObjectCreateDelete(*this, true);
}

Component::~Component()
{
    manager_parts::Membership::Mark(*this, manager_parts::e_mark_destroyed);
    ReleaseWatches();
    ChildWalk::OnDestroyed(*this);
    DetachFromParent();
    DeleteAllChildren();
    Manager::Instance().NotifyObjectCreateDelete(*this, false);
}

// Stacking.

void Component::SetLayer(unsigned int layer)
{
    if (layer_ == layer)
        return;
    layer_ = layer;
    Manager::Instance().NotifyComponentLayerChanged(*this);
}

void Component::BringToFront()
{
    Manager::Instance().BringToFront(*this);
}

void Component::SendToBack()
{
    Manager::Instance().SendToBack(*this);
}

void Component::BringInFront(Component &other)
{
    Manager::Instance().SetZOrder(*this, other);
}

void Component::SendBehind(Component &other)
{
    Manager::Instance().SetZOrder(other, *this);
}

// Visibility. A handler may change the state again: what follows a call goes by the state that is there then.

void Component::SetVisible(bool visible)
{
    Watch<Component> const self(*this);
    if (visible_ != visible)
    {
        visible_ = visible;
        OnChangedVisible();
        if (self.Get() != nullptr && IsTopLevel())
            PropagateChangedBranchVisible(visible_);
        if (self.Get() == nullptr)
            return;
        Manager::Instance().NotifyComponentVisibilityChanged(*this);
        if (self.Get() == nullptr)
            return;
        recalcLayoutDone_ = false;
    }
    if (visible_)
        return;
    SetActive(false);
    if (self.Get() != nullptr)
        PropagateActiveToDescendants(false);
}

bool Component::IsBranchVisible() const
{
    Component const *component = this;
    while (component != nullptr && component->visible_)
        component = component->parent_;
    return component == nullptr;
}

void Component::PropagateVisibleToChildren(bool visible)
{
    for (ChildWalk walk(*this); Component *child = walk.Next();)
        child->SetVisible(visible);
}

void Component::PropagateVisibleToDescendants(bool visible)
{
    for (ChildWalk walk(*this); Component *child = walk.Next();)
    {
        WalkBranch(*child,
                   [visible](Component &component)
                   {
                       component.SetVisible(visible);
                       return true;
                   });
    }
}

void Component::PropagateChangedBranchVisible(bool visible)
{
    WalkBranch(*this,
               [visible](Component &component)
               {
                   component.OnChangedBranchVisible(visible);
                   return true;
               });
}

void Component::SetGhost(bool ghost)
{
    if (IsGhost() == ghost)
        return;
    solid_ = !ghost;
    Manager::Instance().ForceHitTestAtNextFrame();
}

void Component::SetOverlay(bool overlay)
{
    if (overlay_ == overlay)
        return;
    overlay_ = overlay;
    Manager::Instance().NotifyComponentOverlayChanged(*this);
}

// State.

void Component::SetEnabled(bool enabled)
{
    bool const newEnabled = enabled || !canDisable_;
    if (enabled_ == newEnabled)
        return;
    Watch<Component> const self(*this);
    enabled_ = newEnabled;
    OnChangedEnabled();
    if (self.Get() == nullptr || enabled_)
        return;
    SetActive(false);
    SetFocused(false);
}

void Component::SetFocused(bool focused)
{
    bool const newFocused = focused && enabled_ && canFocus_;
    if (focused_ == newFocused)
        return;
    focused_ = newFocused;
    OnChangedFocused();
}

void Component::SetActive(bool active)
{
    // A disabled component loses its activity without a call, and yet can be activated.
    if (!enabled_)
        active_ = false;
    if (active_ == active)
        return;
    active_ = active;
    OnChangedActive();
}

void Component::PropagateActiveToDescendants(bool active)
{
    for (ChildWalk walk(*this); Component *child = walk.Next();)
    {
        WalkBranch(*child,
                   [active](Component &component)
                   {
                       component.SetActive(active);
                       return true;
                   });
    }
}

void Component::SetMouseOver(bool over, bool direct)
{
    mouseOver_ = over;
    mouseOverDirect_ = direct;
}

void Component::SetFlags(unsigned int flags)
{
    if (flags_ == flags)
        return;
    flags_ = flags;
    OnChangedFlags();
}

void Component::OnTimeDelta(double) {}

void Component::OnChangedBranchVisible(bool) {}

void Component::OnChangedVisible() {}

void Component::OnChangedEnabled() {}

void Component::OnChangedFocused() {}

void Component::OnChangedActive() {}

void Component::OnChangedFlags() {}

string Component::GetCaption() const
{
    return {};
}

// Mouse, keyboard, activation, modality.

bool Component::IsMouseCaptureTarget() const
{
    return Manager::Instance().GetMouseCaptureTarget() == this;
}

bool Component::RequestMouseCapture()
{
    return Manager::Instance().RequestMouseCapture(*this);
}

void Component::ReleaseMouseCapture()
{
    Manager::Instance().ReleaseMouseCapture(*this);
}

bool Component::IsKeyboardFocusTarget() const
{
    return Manager::Instance().GetKeyboardFocusTarget() == this;
}

bool Component::RequestKeyboardFocus()
{
    return Manager::Instance().RequestKeyboardFocus(*this);
}

bool Component::RequestKeyboardFocusToAncestor(bool releaseIfTopLevel)
{
    if (!IsKeyboardFocusTarget())
        return false;
    if (parent_ != nullptr)
        return parent_->RequestKeyboardFocus();
    if (releaseIfTopLevel)
        ReleaseKeyboardFocus();
    return releaseIfTopLevel;
}

void Component::ReleaseKeyboardFocus()
{
    Manager::Instance().ReleaseKeyboardFocus(*this);
}

void Component::ShowTopLevel(bool show, bool bringToFront)
{
    Watch<Component> const self(*this);
    SetVisible(show);
    if (self.Get() != nullptr && IsTopLevel() && visible_ && bringToFront)
        BringToFront();
}

void Component::ActivateTopLevel(bool bringToFront)
{
    Manager::Instance().ActivateTopLevel(*this, bringToFront);
}

void Component::RunModal()
{
    Manager::Instance().RunModal(*this);
}

void Component::EndModal()
{
    Manager::Instance().EndModal(*this);
}

bool Component::IsRunningModal() const
{
    return Manager::Instance().GetModalTarget() == this;
}

// Cursor, shader, drawing.

void Component::SetClientAreaCursorName(string const &name)
{
    clientAreaCursorName_ = name;
    RequestCursorRecache();
}

void Component::SetShaderName(string const &name)
{
    shaderName_ = name;
    RequestShaderRecache();
}

void Component::RequestCursorRecache()
{
    Manager::Instance().RequestCursorRecache(*this);
}

void Component::RequestShaderRecache()
{
    Manager::Instance().RequestShaderRecache(*this);
}

bool Component::CacheCursorHandles(Manager &manager)
{
    if (clientAreaCursorName_.empty())
        return true;
    clientAreaCursor_ = manager.GetCursor(clientAreaCursorName_);
    return clientAreaCursor_ != nullptr;
}

void Component::PostCacheCursorHandles() {}

void Component::OnCursorListChanged(Manager &) {}

bool Component::CacheShaderHandles(Manager &manager)
{
    BaseShader const *const shader = manager.GetShader(shaderName_);
    bool const fits = CheckShader(shader);
    SetBaseShader(fits ? shader : nullptr);
    return fits;
}

void Component::PostCacheShaderHandles()
{
    ReportDirtyGeometry();
}

void Component::OnShaderListChanged(Manager &) {}

bool Component::CheckShader(BaseShader const *) const
{
    return true;
}

void Component::DrawSelf(Renderer &renderer)
{
    if (baseShader_ != nullptr)
        baseShader_->DrawComponent(*this, renderer);
}

// Hit test.

bool Component::HitTestSelf(vec2 const &position) const
{
    return 0 <= position.x && position.x < size_.x && 0 <= position.y && position.y < size_.y;
}

eCommandArea Component::HitTestCommandAreaSelf(vec2 const &)
{
    return defaultCommandArea_;
}

bool Component::HitTest(vec2 const &position) const
{
    if (IsGhost() || !HitTestSelf(position))
        return false;
    return !enabledShaderHitTest_ || baseShader_ == nullptr || baseShader_->HitTest(*this, position);
}

eCommandArea Component::HitTestCommandArea(vec2 const &position)
{
    eCommandArea const area = HitTestCommandAreaSelf(position);
    return enabledShaderHitTest_ && baseShader_ != nullptr ? baseShader_->HitTestCommandArea(area, position) : area;
}

} // namespace quillmarsh::gui
