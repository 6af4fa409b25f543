#include "source/gui/manager/ancestorwalk.h"
#include "source/gui/manager/parts.h"

#include <quillmarsh/devices/keyboard.h>

namespace quillmarsh::gui::manager_parts
{

KeyboardFocus::Answer KeyboardFocus::Ask(Component &target, bool byMouse, eMouseButton button)
{
    Answer answer;
    bool isWanted = false;
    for (AncestorWalk walk(target); Component *component = walk.Next();)
    {
        if (!component->IsEnabled())
            continue;
        Watch<Component> const watch(*component);
        Message_KeyboardQueryFocus query(byMouse, button, component == parts_.adapter.get(), false);
        component->DispatchMessage(query);
        if (!query.GetWantFocus() || watch.Get() == nullptr)
            continue;
        if (!isWanted)
            answer.wanting = component;
        isWanted = true;
        answer.needsCharacters = answer.needsCharacters || query.GetNeedCharacterData();
    }
    return answer;
}

void KeyboardFocus::ChangeTarget(Component &target, bool byMouse, eMouseButton button)
{
    if (&target == target_)
        return;
    Watch<Component> const watch(target);
    Answer const answer = Ask(target, byMouse, button);
    Component *newTarget = answer.wanting.Get();
    bool needsCharacters = answer.needsCharacters;
    if (newTarget == nullptr)
    {
        bool const leavesBranch =
            watch.Get() != nullptr && &target.GetTopLevelAncestor() != &target_->GetTopLevelAncestor();
        newTarget = leavesBranch ? parts_.nullTarget.get() : target_;
        needsCharacters = false;
    }
    if (!parts_.modality.Allows(*newTarget))
    {
        newTarget = parts_.nullTarget.get();
        needsCharacters = false;
    }
    if (newTarget != target_)
        MoveTo(*newTarget, needsCharacters);
}

void KeyboardFocus::MoveTo(Component &newTarget, bool needsCharacters)
{
    Watch<Component> const newWatch(newTarget);
    if (!isLeaving_)
    {
        isLeaving_ = true;
        Watch<Component> const oldWatch(*target_);
        target_->SetFocused(false);
        if (oldWatch.Get() != nullptr)
        {
            Message_KeyboardFocus message(false);
            oldWatch->DispatchMessage(message);
        }
        bool const hasMovedElsewhere = !isLeaving_;
        if (hasMovedElsewhere)
            return;
    }
    isLeaving_ = false;
    target_ = newWatch.Get() != nullptr ? newWatch.Get() : parts_.nullTarget.get();
    needsCharacters_ = needsCharacters && newWatch.Get() != nullptr;
    Membership::Mark(*target_, e_mark_target);
    Watch<Component> const told(*target_);
    told->SetFocused(true);
    if (told.Get() != nullptr && target_ == told.Get())
    {
        Message_KeyboardFocus message(true);
        told->DispatchMessage(message);
    }
    SetupKeyboard();
}

bool KeyboardFocus::Request(Component &component)
{
    Component const *const command = parts_.commandMode.GetTarget();
    if (command != nullptr && !component.IsDescendantOf(*command))
        return false;
    if (!parts_.modality.Allows(component))
        return false;
    parts_.mouse.focusRequest = &component;
    ChangeTarget(component, false, s_noMouseButton);
    return true;
}

void KeyboardFocus::Release(Component &component)
{
    if (target_ == &component)
        ChangeTarget(*parts_.adapter, false, s_noMouseButton);
}

void KeyboardFocus::Repair()
{
    if (!target_->IsEnabled())
    {
        Component *const parent = target_->GetParent();
        ChangeTarget(parent != nullptr ? *parent : *parts_.adapter, false, s_noMouseButton);
    }
    if (!target_->IsBranchVisible())
        ChangeTarget(*parts_.adapter, false, s_noMouseButton);
}

void KeyboardFocus::SetupKeyboard()
{
    if (parts_.devices.keyboard != nullptr)
        parts_.devices.keyboard->EnableCharacterMapping(needsCharacters_);
    parts_.keyboard.ResetRepeat();
}

void KeyboardFocus::OnDeleted(Component &component)
{
    if (target_ == &component)
        target_ = parts_.nullTarget.get();
}

void KeyboardDispatch::Dispatch(Keyboard &keyboard)
{
    parts_.focus.Repair();
    if (parts_.cycleQueue.DispatchKey(keyboard))
        return;
    Collect(keyboard);
    if (numDown_ != 0)
        SendDowns();
    else if (repeatKey_ != e_key_none)
        SendRepeats(keyboard);
    for (unsigned int i = 0; i < numUp_; ++i)
        NotifyKey(up_[i].key, false, 0, up_[i].character);
}

void KeyboardDispatch::ResetRepeat()
{
    repeatKey_ = e_key_none;
    repeatCharacter_ = 0;
    repeatClock_.Restart();
}

void KeyboardDispatch::Collect(Keyboard &keyboard)
{
    numDown_ = 0;
    numUp_ = 0;
    for (unsigned int code = 0; code < e_key_none; ++code)
    {
        auto const key = static_cast<eKey>(code);
        bool const isDown = keyboard.KeyDown(key) != 0;
        bool const isUp = keyboard.KeyUp(key) != 0;
        if (!isDown && !isUp)
            continue;
        char character = 0;
        if (!parts_.focus.NeedsCharacters() || !keyboard.MapKeyToCharacter(key, character))
            character = 0;
        if (isDown)
            down_[numDown_++] = {key, character};
        if (isUp)
            up_[numUp_++] = {key, character};
    }
}

void KeyboardDispatch::SendDowns()
{
    for (unsigned int i = 0; i < numDown_; ++i)
        NotifyKey(down_[i].key, true, 0, down_[i].character);
    repeatKey_ = down_[0].key;
    repeatCharacter_ = down_[0].character;
    repeatClock_.Restart();
}

void KeyboardDispatch::SendRepeats(Keyboard &keyboard)
{
    repeatClock_.Advance(parts_.timeDelta);
    if (keyboard.KeyPressed(repeatKey_) == 0)
        repeatKey_ = e_key_none;
    else if (repeatClock_.IsDue(repeatTimes))
        NotifyKey(repeatKey_, true, repeatClock_.count, repeatCharacter_);
}

void KeyboardDispatch::NotifyKey(eKey key, bool down, unsigned int repeatCount, char character)
{
    Message_KeyboardKey message(key, down, repeatCount, character);
    for (AncestorWalk walk(parts_.focus.GetTarget()); Component *component = walk.Next();)
    {
        if (component->DispatchMessage(message))
            return;
    }
}

} // namespace quillmarsh::gui::manager_parts
