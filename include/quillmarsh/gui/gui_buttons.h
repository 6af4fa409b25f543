// Widgets that are pressed.
#ifndef QUILLMARSH_GUI_GUI_BUTTONS_H
#define QUILLMARSH_GUI_GUI_BUTTONS_H

#include <quillmarsh/gui/gui_component.h>

namespace quillmarsh::gui
{

/// Base of buttons that report each press of the action button. Frame thread only.
class QUILLMARSH_API PressButton : public Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. It can be disabled.
    explicit PressButton(Component *parent);
    ~PressButton() override;

    bool OnDeactivate(bool byMouse) override;
    bool OnMouseEnterExit(bool enter, bool direct, vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;

    /// The button was pressed, or is repeated while it stays pressed.
    virtual void OnPressed() = 0;

    /// Sets the state only.
    void SetPressed(bool pressed) { pressed_ = pressed; }
    bool IsPressed() const { return pressed_; }
    /// Sets the button of the mouse that counts; the left one at first.
    void SetActionButton(eMouseButton button) { actionButton_ = button; }
    eMouseButton GetActionButton() const { return actionButton_; }

private:
    eMouseButton actionButton_ = e_mouse_button_left;
    bool pressed_ = false;
};

/// Base of buttons that report when they are released again with the mouse over them. Frame thread only.
class QUILLMARSH_API PushButton : public Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. It can be disabled.
    explicit PushButton(Component *parent);
    ~PushButton() override;

    bool OnDeactivate(bool byMouse) override;
    bool OnMouseCapture(bool begin) override;
    bool OnMouseMove(bool hover, double hoverSeconds, vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;

    /// The button was released.
    virtual void OnPressed() = 0;

    /// Sets the state only.
    void SetPressed(bool pressed) { pressed_ = pressed; }
    bool IsPressed() const { return pressed_; }
    /// Sets the button of the mouse that counts; the left one at first.
    void SetActionButton(eMouseButton button) { actionButton_ = button; }
    eMouseButton GetActionButton() const { return actionButton_; }

private:
    void HandlePressRelease();

    eMouseButton actionButton_ = e_mouse_button_left;
    bool pressed_ = false;
};

/// Button that sends a command. Its style tells when, and what it remembers: flag 1 of the component is its toggled
/// state, which stands for "on" and "selected". Frame thread only.
class QUILLMARSH_API Button : public Component, public CommandSender
{
public:
    /// Kinds of button.
    enum eStyle : unsigned int
    {
        e_style_press = 0, ///< sends its command when it is pressed, and while it stays pressed
        e_style_push,      ///< sends it when it is released with the mouse over it
        e_style_on_off,    ///< toggles then, and sends it
        e_style_select     ///< is selected then, deselects its siblings of the same group, and sends it
    };

    /// Becomes a child of `parent`; stays top-level for null. It can be disabled. The target is borrowed, see
    /// SetCommandTarget().
    Button(Component *parent, MessageHandler *target, unsigned int commandID, eStyle style, unsigned int groupID);
    ~Button() override;

    bool OnDeactivate(bool byMouse) override;
    bool OnMouseCapture(bool begin) override;
    bool OnMouseEnterExit(bool enter, bool direct, vec2 const &position) override;
    bool OnMouseMove(bool hover, double hoverSeconds, vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;
    /// Toggles a button of e_style_on_off, without its command.
    bool OnMsgOnOff(bool on) override;
    /// Selects or deselects a button of e_style_select and this group, without its command.
    bool OnMsgSelect(bool select, unsigned int groupID) override;

    /// @name Style
    /// @{

    /// Sets the style, and clears the toggled state.
    void SetStyle(eStyle style);
    eStyle GetStyle() const { return style_; }
    void SetGroupID(unsigned int groupID) { groupID_ = groupID; }
    unsigned int GetGroupID() const { return groupID_; }
    /// Sets the button of the mouse that counts; the left one at first.
    void SetActionButton(eMouseButton button) { actionButton_ = button; }
    eMouseButton GetActionButton() const { return actionButton_; }
    /// @}

    /// @name State
    /// @{

    /// Sets the state only.
    void SetPressed(bool pressed) { pressed_ = pressed; }
    bool IsPressed() const { return pressed_; }
    /// Sets the state only.
    void SetToggled(bool toggled) { SetFlagsOnOff(s_toggledFlag, toggled); }
    bool IsToggled() const { return IsFlagOn(s_toggledFlag) != 0; }
    bool IsOn() const { return IsToggled(); }
    /// Toggles a button of e_style_on_off; ignored for others.
    void SetOn(bool on, bool sendCommand);
    bool IsSelected() const { return IsToggled(); }
    /// Selects or deselects a button of e_style_select; ignored for others.
    void SetSelected(bool select, bool deselectOthers, bool sendCommand);
    void Select(bool sendCommand) { SetSelected(true, true, sendCommand); }
    /// @}

private:
    static constexpr unsigned int s_toggledFlag = 1;

    void HandlePressRelease();

    eStyle style_;
    unsigned int groupID_;
    eMouseButton actionButton_ = e_mouse_button_left;
    bool pressed_ = false;
};

} // namespace quillmarsh::gui

#endif
