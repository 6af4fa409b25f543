#include "source/gui/manager/activation.h"

#include "source/gui/manager/parts.h"

namespace quillmarsh::gui::manager_parts
{

namespace
{

bool IsShownAndActive(Component const &component)
{
    return component.IsVisible() && component.IsActive();
}

/// Clears a switch for its own life.
class Disallow : NoCopy
{
public:
    explicit Disallow(bool &allowed) : allowed_(allowed) { allowed_ = false; }
    ~Disallow() { allowed_ = true; }

private:
    bool &allowed_;
};

/// False for a modifier that does not exist.
bool IsPressed(Keyboard const &keyboard, eKeyModifier modifier)
{
    return modifier <= e_key_modifier_alt && keyboard.KeyModifierPressed(modifier) != 0;
}

void Deactivate(Component &component, Message_Deactivate &message)
{
    Watch<Component> const watch(component);
    component.DispatchMessage(message);
    if (watch.Get() != nullptr)
        component.SetActive(false);
}

} // namespace

void Activation::ActivateTopLevel(Component &component, bool bringToFront)
{
    if (!allowed_ || !component.IsTopLevel())
        return;
    Watch<Component> const watch(component);
    parts_.capture.End();
    parts_.commandMode.End();
    NotifyDeactivate(parts_.queues.all, &component, false);
    if (&component != parts_.adapter.get())
    {
        Message_Deactivate message(false);
        Deactivate(*parts_.adapter, message);
    }
    if (watch.Get() == nullptr)
        return;
    parts_.clickBranches.SetTo(component);
    parts_.mouseButtons.previousDownButton = e_mouse_button_left;
    parts_.pending.forceHitTest = true;
    NotifyActivate(parts_.clickBranches.oldBranch, false, vec2::ZERO);
    if (watch.Get() != nullptr)
        component.ShowTopLevel(true, bringToFront);
    if (watch.Get() != nullptr)
        parts_.focus.ChangeTarget(component, false, s_noMouseButton);
}

void Activation::DispatchClick(vec2 const &position)
{
    Disallow const disallow(allowed_);
    NotifyDeactivate(parts_.clickBranches.toDeactivate, nullptr, true);
    NotifyActivate(parts_.clickBranches.toActivate, true, position);
}

template<typename List>
void Activation::NotifyDeactivate(List &list, Component const *except, bool byMouse)
{
    Message_Deactivate message(byMouse);
    list.ForEach(
        [&](Component &component)
        {
            if (&component != except)
                Deactivate(component, message);
        });
}

void Activation::NotifyActivate(ComponentRow &list, bool byMouse, vec2 const &position)
{
    Watch<Component> const hit(parts_.hitTest.GetTarget());
    eMouseButton const button = parts_.mouseButtons.firstDownButton;
    list.ForEach(
        [&](Component &component)
        {
            Watch<Component> const watch(component);
            Component *const clickedDescendant = hit.Get() == &component ? nullptr : hit.Get();
            Message_Activate message(byMouse, button, position - component.GetAbsolutePosition(), clickedDescendant,
                                     true, true);
            component.DispatchMessage(message);
            if (watch.Get() != nullptr && message.GetAutoActivate())
                component.SetActive(true);
            if (watch.Get() != nullptr && component.IsTopLevel() && message.GetAutoBringToFront())
                parts_.queues.BringToFront(component);
        });
}

Component *Activation::GetActiveTopLevel() const
{
    return parts_.queues.topLevel.FindFirst(IsShownAndActive);
}

void Activation::OnWindowActive(bool active)
{
    parts_.mouseButtons.swallowClicks = swallowOnActivate;
    if (!active)
        return;
    parts_.mouseButtons.ResetRepeat();
    parts_.mouseButtons.ResetDoubleClick();
    parts_.keyboard.ResetRepeat();
}

void Activation::OnWindowCreated()
{
    parts_.mouseButtons.swallowClicks = swallowOnCreate;
}

void CycleQueue::Activate(bool forward)
{
    int const size = static_cast<int>(members.GetSize());
    int current = -1;
    for (int i = 0; i < size && current < 0; ++i)
    {
        if (IsShownAndActive(*members.Get(static_cast<unsigned int>(i))))
            current = i;
    }
    int const step = forward ? 1 : -1;
    int next = current + step;
    if (next < 0 || next >= size)
        next = forward ? 0 : size - 1;
    for (int tried = 0; tried < size; ++tried)
    {
        Component &component = *members.Get(static_cast<unsigned int>(next));
        if (component.IsVisible())
        {
            parts_.activation.ActivateTopLevel(component, true);
            return;
        }
        next = (next + step + size) % size;
    }
}

bool CycleQueue::DispatchKey(Keyboard &keyboard)
{
    bool const isDown = enabled && key < e_key_none && keyboard.KeyDown(key) != 0;
    if (!isDown || (modifier != Manager::s_noKeyModifier && !IsPressed(keyboard, modifier)))
        return false;
    Activate(reverseModifier == Manager::s_noKeyModifier || !IsPressed(keyboard, reverseModifier));
    return true;
}

void CycleQueue::Order(Component &first, Component &second)
{
    if (members.Contains(first) && members.Contains(second) && members.IsAhead(second, first))
        members.Swap(first, second);
}

void CycleQueue::Dump(ostream &out, unsigned int tabs) const
{
    members.FindFirst(
        [&](Component const &component)
        {
            component.DumpHierarchy(out, tabs, false, false, 0, true, 0);
            return false;
        });
}

void Modality::Run(Component &component)
{
    if (!component.IsTopLevel())
        return;
    stack_.push_back(&component);
    Membership::Mark(component, e_mark_modal_stack);
    ActivateTarget();
}

void Modality::End(Component &component)
{
    if (GetTarget() != &component)
        return;
    stack_.pop_back();
    if (GetTarget() != nullptr)
        ActivateTarget();
}

void Modality::ActivateTarget()
{
    Component &target = *GetTarget();
    parts_.activation.ActivateTopLevel(target, &target != parts_.adapter.get());
}

void Modality::EndIfHidden()
{
    Component *const target = GetTarget();
    if (target != nullptr && !target->IsVisible())
        End(*target);
}

bool Modality::Allows(Component const &component) const
{
    return stack_.empty() || &component.GetTopLevelAncestor() == stack_.back();
}

void Modality::OnDeleted(Component &component)
{
    std::erase(stack_, &component);
}

} // namespace quillmarsh::gui::manager_parts
