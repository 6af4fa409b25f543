// The manager's operations of input: mouse, keyboard, activation, modality, cycle queue.
#include "source/gui/manager/parts.h"

#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/gui/gui_manager.h>

#include <algorithm>

namespace quillmarsh::gui
{

namespace
{

/// @name Asks a device
/// They answer false while there is none, and for a number that is no key or button.
/// @{
template<typename Test>
bool Ask(Mouse const *mouse, eMouseButton button, Test &&test)
{
    return mouse != nullptr && button <= e_mouse_button_extra3 && test(*mouse) != 0;
}

template<typename Test>
bool Ask(Keyboard const *keyboard, eKey key, Test &&test)
{
    return keyboard != nullptr && key <= e_key_none && test(*keyboard) != 0;
}
/// @}

} // namespace

Mouse *Manager::GetMouse() const
{
    return parts_->devices.mouse;
}

vec2 Manager::GetMousePosition() const
{
    Mouse const *const mouse = GetMouse();
    if (mouse == nullptr)
        return vec2::ZERO;
    return {static_cast<float>(mouse->GetPositionX()), static_cast<float>(mouse->GetPositionY())};
}

vec2 Manager::GetMousePositionDelta() const
{
    return GetMouse() != nullptr ? GetMousePosition() - parts_->mouse.GetLastPosition() : vec2::ZERO;
}

int Manager::GetMouseWheelDelta() const
{
    Mouse const *const mouse = GetMouse();
    return mouse != nullptr ? mouse->GetDeltaWheel() : 0;
}

double Manager::GetMouseHoverTime() const
{
    return parts_->mouse.hoverTime;
}

void Manager::ResetMouseHoverTime(double seconds)
{
    parts_->mouse.hoverTime = seconds;
}

bool Manager::IsButtonDown(eMouseButton button) const
{
    return Ask(GetMouse(), button, [=](Mouse const &mouse) { return mouse.ButtonDown(button); });
}

bool Manager::IsButtonDown() const
{
    Mouse const *const mouse = GetMouse();
    return mouse != nullptr && mouse->ButtonDown();
}

bool Manager::IsButtonUp(eMouseButton button) const
{
    return Ask(GetMouse(), button, [=](Mouse const &mouse) { return mouse.ButtonUp(button); });
}

bool Manager::IsButtonUp() const
{
    Mouse const *const mouse = GetMouse();
    return mouse != nullptr && mouse->ButtonUp();
}

bool Manager::IsButtonPressed(eMouseButton button) const
{
    return Ask(GetMouse(), button, [=](Mouse const &mouse) { return mouse.ButtonPressed(button); });
}

bool Manager::IsButtonPressed() const
{
    Mouse const *const mouse = GetMouse();
    return mouse != nullptr && mouse->ButtonPressed();
}

Component *Manager::GetMouseOverTarget() const
{
    return &parts_->hitTest.GetTarget();
}

bool Manager::IsMouseOverTargetApplication() const
{
    return GetMouseOverTarget() == parts_->adapter.get();
}

Component *Manager::FindComponentAt(vec2 const &position)
{
    bool const isForced = parts_->pending.forceHitTest;
    manager_parts::HitTest test(*parts_);
    test.Collect(position);
    parts_->pending.forceHitTest = parts_->pending.forceHitTest || isForced;
    Component *const hit = &test.GetTarget();
    bool const isNothing = hit == parts_->nullTarget.get() || hit == parts_->adapter.get();
    return isNothing ? nullptr : hit;
}

bool Manager::IsIgnoringClicks() const
{
    return parts_->mouseButtons.swallowClicks;
}

void Manager::SetMouseRepeat(double delay, double interval)
{
    parts_->mouseButtons.repeatTimes.Set(delay, interval);
}

void Manager::GetMouseRepeat(double &delay, double &interval) const
{
    delay = parts_->mouseButtons.repeatTimes.delay;
    interval = parts_->mouseButtons.repeatTimes.interval;
}

void Manager::SetMouseDoubleClick(double seconds)
{
    parts_->mouseButtons.doubleClickTime = std::max(0.0, seconds);
}

double Manager::GetMouseDoubleClick() const
{
    return parts_->mouseButtons.doubleClickTime;
}

Component *Manager::GetMouseCaptureTarget() const
{
    return parts_->capture.GetTarget();
}

bool Manager::IsMouseCaptured() const
{
    return GetMouseCaptureTarget() != nullptr;
}

bool Manager::IsMouseCapturedByApplication() const
{
    return GetMouseCaptureTarget() == parts_->adapter.get();
}

bool Manager::RequestMouseCapture(Component &component)
{
    return parts_->capture.Request(component);
}

bool Manager::RequestMouseCapture(Application &)
{
    return parts_->capture.Request(*parts_->adapter);
}

void Manager::ReleaseMouseCapture(Component &component)
{
    parts_->capture.Release(component);
}

void Manager::ReleaseMouseCapture(Application &)
{
    parts_->capture.Release(*parts_->adapter);
}

Component *Manager::GetCommandTarget() const
{
    return parts_->commandMode.GetTarget();
}

eCommandArea Manager::GetCommandArea() const
{
    return parts_->commandMode.GetArea();
}

bool Manager::IsCommandModeActive() const
{
    return parts_->commandMode.IsActive();
}

void Manager::BreakCommandMode()
{
    parts_->commandMode.End();
}

Keyboard *Manager::GetKeyboard() const
{
    return parts_->devices.keyboard;
}

bool Manager::IsKeyDown(eKey key) const
{
    return Ask(GetKeyboard(), key, [=](Keyboard const &keyboard) { return keyboard.KeyDown(key); });
}

bool Manager::IsKeyDown() const
{
    Keyboard const *const keyboard = GetKeyboard();
    return keyboard != nullptr && keyboard->KeyDown();
}

bool Manager::IsKeyUp(eKey key) const
{
    return Ask(GetKeyboard(), key, [=](Keyboard const &keyboard) { return keyboard.KeyUp(key); });
}

bool Manager::IsKeyUp() const
{
    Keyboard const *const keyboard = GetKeyboard();
    return keyboard != nullptr && keyboard->KeyUp();
}

bool Manager::IsKeyPressed(eKey key) const
{
    return Ask(GetKeyboard(), key, [=](Keyboard const &keyboard) { return keyboard.KeyPressed(key); });
}

bool Manager::IsKeyPressed() const
{
    Keyboard const *const keyboard = GetKeyboard();
    return keyboard != nullptr && keyboard->KeyPressed();
}

bool Manager::IsKeyModifierPressed(eKeyModifier modifier) const
{
    Keyboard const *const keyboard = GetKeyboard();
    return keyboard != nullptr && modifier <= e_key_modifier_alt && keyboard->KeyModifierPressed(modifier) != 0;
}

bool Manager::IsKeyModifierPressed() const
{
    Keyboard const *const keyboard = GetKeyboard();
    return keyboard != nullptr && keyboard->KeyModifierPressed();
}

void Manager::SetKeyboardRepeat(double delay, double interval)
{
    parts_->keyboard.repeatTimes.Set(delay, interval);
}

void Manager::GetKeyboardRepeat(double &delay, double &interval) const
{
    delay = parts_->keyboard.repeatTimes.delay;
    interval = parts_->keyboard.repeatTimes.interval;
}

Component *Manager::GetKeyboardFocusTarget() const
{
    return &parts_->focus.GetTarget();
}

bool Manager::IsKeyboardFocusTargetApplication() const
{
    return GetKeyboardFocusTarget() == parts_->adapter.get();
}

bool Manager::RequestKeyboardFocus(Component &component)
{
    return parts_->focus.Request(component);
}

bool Manager::RequestKeyboardFocus(Application &)
{
    return parts_->focus.Request(*parts_->adapter);
}

void Manager::ReleaseKeyboardFocus(Component &component)
{
    parts_->focus.Release(component);
}

void Manager::ActivateTopLevel(Component &component, bool bringToFront)
{
    parts_->activation.ActivateTopLevel(component, bringToFront);
}

void Manager::ActivateApplication()
{
    parts_->activation.ActivateTopLevel(*parts_->adapter, false);
}

Component *Manager::GetActiveTopLevel() const
{
    return parts_->activation.GetActiveTopLevel();
}

bool Manager::IsApplicationActive() const
{
    return parts_->adapter->IsActive();
}

void Manager::SetBehaviorOnWindowActivate(bool swallowOnActivate, bool swallowOnCreate)
{
    parts_->activation.swallowOnActivate = swallowOnActivate;
    parts_->activation.swallowOnCreate = swallowOnCreate;
}

void Manager::GetBehaviorOnWindowActivate(bool &swallowOnActivate, bool &swallowOnCreate) const
{
    swallowOnActivate = parts_->activation.swallowOnActivate;
    swallowOnCreate = parts_->activation.swallowOnCreate;
}

void Manager::RunModal(Component &component)
{
    parts_->modality.Run(component);
}

void Manager::RunModal(Application &)
{
    parts_->modality.Run(*parts_->adapter);
}

void Manager::EndModal(Component &component)
{
    parts_->modality.End(component);
}

void Manager::EndModal(Application &)
{
    parts_->modality.End(*parts_->adapter);
}

Component *Manager::GetModalTarget() const
{
    return parts_->modality.GetTarget();
}

bool Manager::IsModalTargetApplication() const
{
    return GetModalTarget() == parts_->adapter.get();
}

bool Manager::IsRunningModal() const
{
    return GetModalTarget() != nullptr;
}

void Manager::SetCycleQueueKeys(eKey key, eKeyModifier modifier, eKeyModifier reverseModifier)
{
    parts_->cycleQueue.key = key;
    parts_->cycleQueue.modifier = modifier;
    parts_->cycleQueue.reverseModifier = reverseModifier;
}

void Manager::GetCycleQueueKeys(eKey &key, eKeyModifier &modifier, eKeyModifier &reverseModifier) const
{
    key = parts_->cycleQueue.key;
    modifier = parts_->cycleQueue.modifier;
    reverseModifier = parts_->cycleQueue.reverseModifier;
}

void Manager::SetCycleQueueProperties(bool enabled, bool insertOnCreate, bool insertOnTopLevel)
{
    parts_->cycleQueue.enabled = enabled;
    parts_->cycleQueue.insertOnCreate = insertOnCreate;
    parts_->cycleQueue.insertOnTopLevel = insertOnTopLevel;
}

void Manager::GetCycleQueueProperties(bool &enabled, bool &insertOnCreate, bool &insertOnTopLevel) const
{
    enabled = parts_->cycleQueue.enabled;
    insertOnCreate = parts_->cycleQueue.insertOnCreate;
    insertOnTopLevel = parts_->cycleQueue.insertOnTopLevel;
}

void Manager::CycleQueueClear()
{
    parts_->cycleQueue.members.Clear();
}

void Manager::CycleQueueInsert(Component &component)
{
    parts_->cycleQueue.members.Append(component);
}

void Manager::CycleQueueInsert(Application &)
{
    CycleQueueInsert(*parts_->adapter);
}

void Manager::CycleQueueRemove(Component &component)
{
    parts_->cycleQueue.members.Erase(component);
}

void Manager::CycleQueueRemove(Application &)
{
    CycleQueueRemove(*parts_->adapter);
}

void Manager::CycleQueueOrder(Component &first, Component &second)
{
    parts_->cycleQueue.Order(first, second);
}

void Manager::CycleQueueOrder(Component &first, Application &)
{
    parts_->cycleQueue.Order(first, *parts_->adapter);
}

void Manager::CycleQueueOrder(Application &, Component &second)
{
    parts_->cycleQueue.Order(*parts_->adapter, second);
}

void Manager::CycleQueueOrderToStart(Component &component)
{
    if (parts_->cycleQueue.members.Contains(component))
        parts_->cycleQueue.members.MoveToFront(component);
}

void Manager::CycleQueueOrderToStart(Application &)
{
    CycleQueueOrderToStart(*parts_->adapter);
}

void Manager::CycleQueueOrderToEnd(Component &component)
{
    if (parts_->cycleQueue.members.Contains(component))
        parts_->cycleQueue.members.MoveToEnd(component);
}

void Manager::CycleQueueOrderToEnd(Application &)
{
    CycleQueueOrderToEnd(*parts_->adapter);
}

void Manager::CycleQueueActivate(bool forward)
{
    parts_->cycleQueue.Activate(forward);
}

} // namespace quillmarsh::gui
