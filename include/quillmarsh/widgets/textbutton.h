// Buttons with a text, a mark, or both: push buttons, check boxes, radio buttons.
#ifndef QUILLMARSH_WIDGETS_TEXTBUTTON_H
#define QUILLMARSH_WIDGETS_TEXTBUTTON_H

#include <quillmarsh/gui/gui_buttons.h>
#include <quillmarsh/widgets/action.h>
#include <quillmarsh/widgets/looknames.h>

namespace quillmarsh::widgets
{

/// Button with a text, a mark, or both. Its size comes from them, but for a minimum width; with a mark only, it is a
/// square. The content stands in the middle: the mark, Measures::Gap, the text. Space and Enter press it while it has
/// the focus, which Tab and a click give it: Enter at once, Space when it is released.
///
/// \code
/// auto *open = new widgets::TextButton(&panel, "Open…");
/// open->SetAction([] { GetConOut() << "Open what?" << std::endl; });
/// \endcode
/// Frame thread only.
class QUILLMARSH_API TextButton : public gui::Button
{
public:
    /// Becomes a child of `parent`; stays top-level for null. The text is UTF-8.
    TextButton(gui::Component *parent, string const &text, eStyle style = e_style_push, unsigned int groupID = 0);
    ~TextButton() override;

    /// Makes the button its own command target and calls `action` with each of its commands. A program that wants
    /// messages sets a command target instead. An empty function takes the action away.
    void SetAction(std::function<void()> action);
    /// Does what a click does: presses, toggles or selects by its style, and sends the command. Ignored while disabled.
    void Press();

    /// @name What it shows
    /// @{
    void SetText(string const &text);
    string const &GetText() const { return text_; }
    string const &GetGlyphs() const { return glyphs_; }
    void SetMark(eMark mark);
    eMark GetMark() const { return mark_; }
    /// Width is at least this, in units: 72 for push buttons with a text at first.
    void SetMinWidth(float units);
    /// The button that Enter presses anywhere in its panel; the look makes it stand out.
    void SetDefault(bool isDefault);
    bool IsDefault() const { return isDefault_; }
    /// True while a key holds it down; the look draws it as pressed.
    bool IsHeldByKey() const { return heldKey_ != e_key_none; }
    /// @}

    string GetCaption() const override { return text_; }
    void RecalcSize() override;
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData) override;
    using Component::OnKeyboardFocus;
    bool OnKeyboardFocus(bool gotFocus) override;
    using Component::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;
    bool OnCommand(unsigned int commandID) override;

private:
    string text_;
    string glyphs_;
    eMark mark_ = e_mark_none;
    float minWidth_;
    bool isDefault_ = false;
    eKey heldKey_ = e_key_none;
    Action<> action_;
};

/// Button that is on or off, with a check mark. The action gets the new state. The mark stands at the left edge, the text
/// beside it, with Measures::Gap between them. Frame thread only.
class QUILLMARSH_API CheckBox : public TextButton
{
public:
    CheckBox(gui::Component *parent, string const &text, bool on = false);
    ~CheckBox() override;
    void SetAction(std::function<void(bool)> action);

    void RecalcSize() override;
};

/// Button of which one of a group is selected, among the children of one parent. The arrow keys select the next and the
/// previous one, around at the ends, and give it the focus. Mark and text stand as those of a CheckBox. Frame thread
/// only.
class QUILLMARSH_API RadioButton : public TextButton
{
public:
    RadioButton(gui::Component *parent, string const &text, unsigned int groupID, bool selected = false);
    ~RadioButton() override;

    void RecalcSize() override;
    using TextButton::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;

private:
    /// Returns the next button of the group that can be selected, or the previous one; null if there is no other.
    RadioButton *FindNeighbour(bool forward);
};

} // namespace quillmarsh::widgets

#endif
