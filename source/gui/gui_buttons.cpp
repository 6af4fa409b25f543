#include <quillmarsh/gui/gui_buttons.h>

#include <quillmarsh/gui/gui_watch.h>

namespace quillmarsh::gui
{

PressButton::PressButton(Component *parent)
{
    SetCanDisable(true);
    if (parent != nullptr)
        AttachTo(*parent);
}

PressButton::~PressButton() = default;

bool PressButton::OnDeactivate(bool)
{
    pressed_ = false;
    return true;
}

bool PressButton::OnMouseEnterExit(bool, bool, vec2 const &)
{
    pressed_ = false;
    return true;
}

bool PressButton::OnMouseButton(bool down, eMouseButton button, bool, unsigned int, vec2 const &)
{
    if (button != actionButton_)
        return false;
    pressed_ = down;
    if (down)
        OnPressed();
    return true;
}

PushButton::PushButton(Component *parent)
{
    SetCanDisable(true);
    if (parent != nullptr)
        AttachTo(*parent);
}

PushButton::~PushButton() = default;

bool PushButton::OnDeactivate(bool)
{
    pressed_ = false;
    return true;
}

bool PushButton::OnMouseCapture(bool begin)
{
    if (begin)
    {
        pressed_ = true;
        return true;
    }
    if (!pressed_)
        return false;
    HandlePressRelease();
    return true;
}

bool PushButton::OnMouseMove(bool hover, double, vec2 const &position)
{
    if (hover || !IsMouseCaptureTarget())
        return false;
    pressed_ = HitTestSelf(position);
    return true;
}

bool PushButton::OnMouseButton(bool down, eMouseButton button, bool, unsigned int repeatCount, vec2 const &)
{
    if (button != actionButton_ || repeatCount > 0)
        return false;
    if (down)
    {
        RequestMouseCapture();
        return true;
    }
    if (!pressed_)
        return false;
    Watch<PushButton> const self(*this);
    ReleaseMouseCapture();
    // The end of a capture has reported the press already.
    if (self.Get() != nullptr && pressed_)
        HandlePressRelease();
    return true;
}

void PushButton::HandlePressRelease()
{
    pressed_ = false;
    OnPressed();
}

Button::Button(Component *parent, MessageHandler *target, unsigned int commandID, eStyle style, unsigned int groupID)
    : CommandSender(target, commandID),
      style_(style),
      groupID_(groupID)
{
    SetCanDisable(true);
    if (parent != nullptr)
        AttachTo(*parent);
}

Button::~Button() = default;

bool Button::OnDeactivate(bool)
{
    pressed_ = false;
    return true;
}

bool Button::OnMouseCapture(bool begin)
{
    if (style_ == e_style_press)
        return false;
    if (begin)
    {
        pressed_ = true;
        return true;
    }
    if (!pressed_)
        return false;
    HandlePressRelease();
    return true;
}

bool Button::OnMouseEnterExit(bool enter, bool, vec2 const &)
{
    if (style_ != e_style_press)
        return false;
    if (!enter)
        pressed_ = false;
    return true;
}

bool Button::OnMouseMove(bool hover, double, vec2 const &position)
{
    if (style_ == e_style_press || hover || !IsMouseCaptureTarget())
        return false;
    pressed_ = HitTestSelf(position);
    return true;
}

bool Button::OnMouseButton(bool down, eMouseButton button, bool, unsigned int repeatCount, vec2 const &)
{
    if (button != actionButton_)
        return false;
    if (style_ == e_style_press)
    {
        pressed_ = down;
        if (down)
            SendCommandMessageToTarget();
        return true;
    }
    if (repeatCount > 0)
        return false;
    if (down)
    {
        RequestMouseCapture();
        return true;
    }
    if (!pressed_)
        return false;
    Watch<Button> const self(*this);
    ReleaseMouseCapture();
    // The end of a capture has acted on the release already.
    if (self.Get() != nullptr && pressed_)
        HandlePressRelease();
    return true;
}

bool Button::OnMsgOnOff(bool on)
{
    if (style_ != e_style_on_off)
        return false;
    SetToggled(on);
    return true;
}

bool Button::OnMsgSelect(bool select, unsigned int groupID)
{
    if (style_ != e_style_select || groupID != groupID_)
        return false;
    SetToggled(select);
    return true;
}

void Button::SetStyle(eStyle style)
{
    style_ = style;
    SetToggled(false);
}

void Button::SetOn(bool on, bool sendCommand)
{
    if (style_ != e_style_on_off)
        return;
    Watch<Button> const self(*this);
    SetToggled(on);
    if (sendCommand && self.Get() != nullptr)
        SendCommandMessageToTarget();
}

void Button::SetSelected(bool select, bool deselectOthers, bool sendCommand)
{
    if (style_ != e_style_select)
        return;
    Watch<Button> const self(*this);
    SetToggled(select);
    if (deselectOthers && self.Get() != nullptr)
    {
        Message_Select deselect(false, groupID_);
        SendMessageToSiblings(deselect);
    }
    if (sendCommand && self.Get() != nullptr)
        SendCommandMessageToTarget();
}

void Button::HandlePressRelease()
{
    pressed_ = false;
    switch (style_)
    {
    case e_style_press:
    case e_style_push:
        SendCommandMessageToTarget();
        break;
    case e_style_on_off:
        SetOn(!IsOn(), true);
        break;
    case e_style_select:
        if (!IsSelected())
            Select(true);
        break;
    }
}

} // namespace quillmarsh::gui
