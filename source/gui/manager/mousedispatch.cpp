#include "source/gui/manager/ancestorwalk.h"
#include "source/gui/manager/parts.h"

#include <quillmarsh/devices/mouse.h>

namespace quillmarsh::gui::manager_parts
{

void MouseDispatch::Dispatch(Mouse &mouse)
{
    vec2 const position(static_cast<float>(mouse.GetPositionX()), static_cast<float>(mouse.GetPositionY()));
    bool const relativeMode = mouse.IsActiveRelativeMode();
    if (relativeMode || !mouse.IsPositionInsideAppWindowClientArea())
        DispatchOutside(position, relativeMode);
    else
        DispatchInside(mouse, position);
}

void MouseDispatch::DispatchOutside(vec2 const &position, bool relativeMode)
{
    parts_.commandMode.End();
    parts_.capture.End();
    if (!inside_)
        return;
    inside_ = false;
    if (!relativeMode)
        parts_.cursorDisplay.DisplaySystemCursor(true);
    NotifyMouseExit(position);
}

void MouseDispatch::DispatchInside(Mouse &mouse, vec2 const &position)
{
    if (!inside_)
    {
        inside_ = true;
        parts_.cursorDisplay.DisplaySystemCursor(parts_.cursorDisplay.IsShownSystemCursor());
        parts_.hitTest.Invalidate();
    }
    bool moved = position != lastPosition_;
    lastPosition_ = position;
    parts_.mouseButtons.Process(mouse, parts_.timeDelta);
    if (DispatchCaptured(moved, position))
        return;
    if (moved || parts_.mouseButtons.downCount != 0)
        hoverTime = 0;
    else
        hoverTime += parts_.timeDelta;
    focusRequest = nullptr;
    if (DispatchCommand(mouse, moved, position))
        return;
    DispatchMoves(moved, position);
    DispatchClick(position);
    DispatchToTop(mouse, position);
    if (moved)
        parts_.hitTest.KeepRecords();
    if (parts_.mouseButtons.downCount != 0)
    {
        parts_.clickBranches.Keep();
        parts_.mouseButtons.previousDownButton = parts_.mouseButtons.firstDownButton;
    }
}

bool MouseDispatch::DispatchCaptured(bool moved, vec2 const &position)
{
    Component *const target = parts_.capture.GetTarget();
    if (target == nullptr)
        return false;
    if (parts_.mouseButtons.eventCount != 0)
        parts_.capture.End();
    else if (moved)
        NotifyMouseMove(*target, position);
    return true;
}

bool MouseDispatch::DispatchCommand(Mouse &mouse, bool moved, vec2 const &position)
{
    if (!parts_.commandMode.IsActive())
        return false;
    if (parts_.mouseButtons.doubleClickPending)
    {
        SetButtonTarget(*parts_.commandMode.GetTarget());
        NotifyMouseButtons(position);
    }
    if (mouse.ButtonPressed(parts_.commandMode.GetButton()) == 0)
    {
        parts_.commandMode.End();
        return false;
    }
    if (moved)
        parts_.commandMode.Step(position);
    return true;
}

void MouseDispatch::DispatchMoves(bool &moved, vec2 const &position)
{
    HitTest &hitTest = parts_.hitTest;
    if (moved || parts_.pending.forceHitTest)
    {
        parts_.pending.forceHitTest = false;
        moved = true;
        hitTest.Collect(position);
        if (hitTest.GetNewTop().component != hitTest.GetOldTop().component)
        {
            parts_.mouseButtons.ResetRepeat();
            parts_.mouseButtons.ResetDoubleClick();
        }
    }
    if (moved)
    {
        hitTest.ExtractDifferences();
        NotifyMouseOver(position);
        NotifyMouseMove(hitTest.GetTarget(), position);
    }
    else if (hoverTime != 0)
    {
        NotifyMouseHover(hitTest.GetTarget(), position);
    }
}

void MouseDispatch::DispatchClick(vec2 const &position)
{
    MouseButtons const &buttons = parts_.mouseButtons;
    if (buttons.downCount == 0)
        return;
    parts_.clickBranches.ExtractBranch(parts_.hitTest.GetTarget());
    parts_.clickBranches.ExtractDifferences(buttons.firstDownButton == buttons.previousDownButton);
    parts_.activation.DispatchClick(position);
}

void MouseDispatch::DispatchToTop(Mouse &mouse, vec2 const &position)
{
    // The target is asked for anew at each step, as a handler may have deleted it.
    HitTest const &hitTest = parts_.hitTest;
    MouseButtons &buttons = parts_.mouseButtons;
    eCommandArea const area =
        hitTest.GetTarget().HitTestCommandArea(position - hitTest.GetTarget().GetAbsolutePosition());
    parts_.cursorDisplay.SetupActiveCursor(hitTest.GetTarget(), area, position);
    if (area != e_area_client && buttons.downCount != 0)
        parts_.commandMode.TryStart(hitTest.GetTarget(), area, position);
    if (!parts_.commandMode.IsActive())
    {
        NotifyMouseWheel(hitTest.GetTarget(), position, mouse.GetDeltaWheel());
        SetButtonTarget(hitTest.GetTarget());
        NotifyMouseButtons(position);
        if (buttons.doubleClickPending)
        {
            buttons.lastClickButton = s_noMouseButton;
            buttons.doubleClickPending = false;
        }
    }
    Component &top = hitTest.GetTarget();
    bool const isFocusFree = focusRequest.Get() == nullptr && &top != &parts_.focus.GetTarget();
    if (buttons.downCount != 0 && isFocusFree)
        parts_.focus.ChangeTarget(top, true, buttons.firstDownButton);
}

void MouseDispatch::OnDeleted(Component &component)
{
    if (buttonTarget == &component)
        buttonTarget = parts_.nullTarget.get();
}

void MouseDispatch::SetButtonTarget(Component &target)
{
    buttonTarget = &target;
    Membership::Mark(target, e_mark_target);
}

void MouseDispatch::NotifyMouseButtons(vec2 const &position)
{
    if (!buttonTarget->IsEnabled())
        return;
    MouseButtons &buttons = parts_.mouseButtons;
    Message_MouseButton message;
    auto const send = [&](eMouseButton button, bool down, bool doubleClick, unsigned int repeatCount)
    {
        message.SetButtonCode(button);
        message.SetButtonDown(down);
        message.SetDoubleClick(doubleClick);
        message.SetRepeatCount(repeatCount);
        message.position = position - buttonTarget->GetAbsolutePosition();
        buttonTarget->DispatchMessage(message);
    };
    if (buttons.repeatClock.count != 0)
    {
        send(buttons.repeatButton, true, false, buttons.repeatClock.count);
        return;
    }
    if (buttons.doubleClickPending)
    {
        buttons.doubleClickPending = false;
        send(buttons.lastClickButton, true, true, 0);
        return;
    }
    for (bool const down : {true, false})
    {
        for (unsigned int i = 0; i < s_numMouseButtons; ++i)
        {
            if (down ? buttons.down[i] : buttons.up[i])
                send(static_cast<eMouseButton>(i), down, false, 0);
        }
    }
}

void MouseDispatch::NotifyMouseWheel(Component &target, vec2 const &position, int delta)
{
    if (delta == 0)
        return;
    Message_MouseWheel message(delta, vec2::ZERO);
    for (AncestorWalk walk(target); Component *component = walk.Next();)
    {
        if (!component->IsEnabled())
            continue;
        message.position = position - component->GetAbsolutePosition();
        if (component->DispatchMessage(message))
            return;
    }
}

void MouseDispatch::NotifyMouseMove(Component &target, vec2 const &position)
{
    Message_MouseMove message(false, 0, position - target.GetAbsolutePosition());
    target.DispatchMessage(message);
}

void MouseDispatch::NotifyMouseHover(Component &target, vec2 const &position)
{
    Message_MouseMove message(true, hoverTime, position - target.GetAbsolutePosition());
    target.DispatchMessage(message);
}

void MouseDispatch::NotifyMouseOver(vec2 const &position)
{
    parts_.hitTest.ForEachLeft([&](Component &component, bool) { ReportMouseOver(component, false, false, position); });
    parts_.hitTest.ForEachEntered([&](Component &component, bool covered)
                                  { ReportMouseOver(component, true, !covered, position); });
}

void MouseDispatch::NotifyMouseExit(vec2 const &position)
{
    parts_.queues.all.ForEach([&](Component &component) { ReportMouseOver(component, false, false, position); });
    ReportMouseOver(*parts_.adapter, false, false, position);
}

void MouseDispatch::ReportMouseOver(Component &component, bool over, bool direct, vec2 const &position)
{
    bool const isChange = over != component.IsMouseOver() || (over && direct != component.IsMouseOverDirect());
    if (!isChange)
        return;
    direct = over && direct;
    component.SetMouseOver(over, direct);
    Message_MouseEnterExit message(over, direct, position - component.GetAbsolutePosition());
    component.DispatchMessage(message);
}

} // namespace quillmarsh::gui::manager_parts
