#include <quillmarsh/widgets/textbutton.h>

#include "source/widgets/inputhelp.h"

#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/textencoding.h>

#include <algorithm>

namespace quillmarsh::widgets
{

namespace
{

/// Width of a push button with a text, in units.
constexpr float s_minPushWidth = 72;

/// Keys with these modifiers are no keys of a button.
bool IsCommandModifierPressed()
{
    return IsControlPressed() || IsAltPressed();
}

bool IsPressKey(eKey key)
{
    return key == e_key_space || IsEnterKey(key);
}

/// Size of a mark with a text beside it, which may be empty.
vec2 CalcMarkedSize(TextButton const &button)
{
    float const mark = Measures::Pixels(Measures::MarkSize);
    float const height = std::max(Measures::Pixels(Measures::RowHeight), GetTextHeight(button));
    if (button.GetGlyphs().empty())
        return {mark, height};
    return {mark + Measures::Pixels(Measures::Gap) + CalcTextWidth(button, button.GetGlyphs()), height};
}

} // namespace

TextButton::TextButton(gui::Component *parent, string const &text, eStyle style, unsigned int groupID)
    : Button(parent, nullptr, 0, style, groupID),
      text_(text),
      glyphs_(ToGlyphs(text)),
      minWidth_(style == e_style_push && !text.empty() ? s_minPushWidth : 0)
{
    SetCanFocus(true);
    SetShaderName(ShaderName_Button);
}

TextButton::~TextButton() = default;

void TextButton::SetAction(std::function<void()> action)
{
    action_ = std::move(action);
    if (action_)
        SetCommandTarget(this);
    else if (GetCommandTarget() == this)
        SetCommandTarget(nullptr);
}

void TextButton::Press()
{
    if (!IsEnabled())
        return;
    switch (GetStyle())
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

void TextButton::SetText(string const &text)
{
    if (text == text_)
        return;
    text_ = text;
    glyphs_ = ToGlyphs(text);
    ReportDirtyGeometry();
}

void TextButton::SetMark(eMark mark)
{
    mark_ = mark;
    ReportDirtyGeometry();
}

void TextButton::SetMinWidth(float units)
{
    minWidth_ = units;
    ReportDirtyGeometry();
}

void TextButton::SetDefault(bool isDefault)
{
    isDefault_ = isDefault;
}

void TextButton::RecalcSize()
{
    bool const hasText = !glyphs_.empty();
    float const height =
        std::max(Measures::Pixels(Measures::ControlHeight), GetTextHeight(*this) + Measures::Pixels(Measures::Grid));
    float width = hasText ? 2 * Measures::Pixels(Measures::TextMargin) + CalcTextWidth(*this, glyphs_) : height;
    if (hasText && mark_ != e_mark_none)
        width += Measures::Pixels(Measures::MarkSize) + Measures::Pixels(Measures::Gap);
    SetSize(std::max(width, Measures::Pixels(minWidth_)), height);
}

bool TextButton::OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData)
{
    if (!CanFocus())
        return false;
    DefaultProcessQueryFocus(byMouse, button, wantFocus, needCharacterData);
    return true;
}

bool TextButton::OnKeyboardFocus(bool gotFocus)
{
    if (!gotFocus)
        heldKey_ = e_key_none;
    return true;
}

bool TextButton::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char)
{
    if (!down)
    {
        if (heldKey_ != key)
            return false;
        heldKey_ = e_key_none;
        if (GetStyle() != e_style_press)
            Press();
        return true;
    }
    if (!IsPressKey(key) || !IsEnabled() || IsCommandModifierPressed())
        return false;
    bool const repeats = GetStyle() == e_style_press;
    // A key that went down elsewhere is still held when the focus comes here.
    if (repeatCount > 0 && (!repeats || heldKey_ != key))
        return true;
    bool const actsAtOnce = repeats || key != e_key_space;
    if (repeats || !actsAtOnce)
        heldKey_ = key;
    if (actsAtOnce)
        Press();
    return true;
}

bool TextButton::OnCommand(unsigned int commandID)
{
    if (!action_)
        return Button::OnCommand(commandID);
    action_();
    return true;
}

CheckBox::CheckBox(gui::Component *parent, string const &text, bool on) : TextButton(parent, text, e_style_on_off)
{
    SetShaderName(ShaderName_CheckBox);
    SetToggled(on);
}

CheckBox::~CheckBox() = default;

void CheckBox::SetAction(std::function<void(bool)> action)
{
    if (action)
        TextButton::SetAction([this, action = std::move(action)] { action(IsOn()); });
    else
        TextButton::SetAction(nullptr);
}

void CheckBox::RecalcSize()
{
    SetSize(CalcMarkedSize(*this));
}

RadioButton::RadioButton(gui::Component *parent, string const &text, unsigned int groupID, bool selected)
    : TextButton(parent, text, e_style_select, groupID)
{
    SetShaderName(ShaderName_RadioButton);
    SetToggled(selected);
}

RadioButton::~RadioButton() = default;

void RadioButton::RecalcSize()
{
    SetSize(CalcMarkedSize(*this));
}

bool RadioButton::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character)
{
    bool const forward = key == e_key_arrow_down || key == e_key_arrow_right;
    bool const backward = key == e_key_arrow_up || key == e_key_arrow_left;
    if (!(forward || backward) || !down || !IsEnabled() || IsCommandModifierPressed())
        return TextButton::OnKeyboardKey(down, key, repeatCount, character);
    RadioButton *const neighbour = FindNeighbour(forward);
    if (neighbour == nullptr)
        return true;
    gui::Watch<RadioButton> const watch(neighbour);
    neighbour->RequestKeyboardFocus();
    if (watch.Get() != nullptr)
        watch->Press();
    return true;
}

RadioButton *RadioButton::FindNeighbour(bool forward)
{
    if (GetParent() == nullptr)
        return nullptr;
    std::vector<Component *> const &row = GetParent()->GetChildren();
    std::size_t const size = row.size();
    std::size_t const own = static_cast<std::size_t>(std::find(row.begin(), row.end(), this) - row.begin());
    for (std::size_t distance = 1; distance < size; ++distance)
    {
        std::size_t const index = (own + (forward ? distance : size - distance)) % size;
        auto *const other = dynamic_cast<RadioButton *>(row[index]);
        bool const isInGroup = other != nullptr && other->GetGroupID() == GetGroupID();
        if (isInGroup && other->IsEnabled() && other->IsVisible())
            return other;
    }
    return nullptr;
}

} // namespace quillmarsh::widgets
