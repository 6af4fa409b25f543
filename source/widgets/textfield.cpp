#include <quillmarsh/widgets/textfield.h>

#include "source/widgets/inputhelp.h"
#include "source/widgets/units.h"

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_shaders.h>
#include <quillmarsh/platform/clipboard.h>
#include <quillmarsh/widgets/looknames.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/textencoding.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

namespace quillmarsh::widgets
{

namespace
{

/// Seconds for which the caret is shown, and for which it is not.
constexpr double s_blinkTime = 0.5;
/// Seconds between two steps of a text that scrolls because the mouse is held beside it.
constexpr double s_dragStep = 0.03;

/// Key that moves the caret, or that deletes what the caret would pass.
struct MoveKey
{
    eKey key;
    bool withControl;
    TextEdit::eMove move;
};
constexpr MoveKey s_moveKeys[] = {
    {e_key_arrow_left, false, TextEdit::e_move_left},   {e_key_arrow_left, true, TextEdit::e_move_word_left},
    {e_key_arrow_right, false, TextEdit::e_move_right}, {e_key_arrow_right, true, TextEdit::e_move_word_right},
    {e_key_home, false, TextEdit::e_move_begin},        {e_key_home, true, TextEdit::e_move_begin},
    {e_key_end, false, TextEdit::e_move_end},           {e_key_end, true, TextEdit::e_move_end},
};
constexpr MoveKey s_deleteKeys[] = {
    {e_key_backspace, false, TextEdit::e_move_left},
    {e_key_backspace, true, TextEdit::e_move_word_left},
    {e_key_delete, false, TextEdit::e_move_right},
    {e_key_delete, true, TextEdit::e_move_word_right},
};

MoveKey const *FindKey(std::span<MoveKey const> keys, eKey key, bool withControl)
{
    auto const found = std::find_if(
        keys.begin(), keys.end(), [=](MoveKey const &row) { return row.key == key && row.withControl == withControl; });
    return found != keys.end() ? &*found : nullptr;
}

/// Modifiers of a key. The right alt key gives letters of their own on many keyboards; some systems report control with
/// it.
struct Modifiers
{
    bool isControl;
    bool isShift;
    bool isAlt;
};

Modifiers GetModifiers()
{
    bool const isRightAlt = gui::Manager::Instance().IsKeyPressed(e_key_r_alt);
    return {IsControlPressed() && !isRightAlt, IsShiftPressed(), IsAltPressed() && !isRightAlt};
}

} // namespace

TextField::TextField(gui::Component *parent, string const &text, float width) : width_(LimitUnits(width))
{
    SetCanDisable(true);
    SetCanFocus(true);
    SetShaderName(ShaderName_TextField);
    SetClientAreaCursorName(CursorName_Text);
    edit_.SetText(ToGlyphs(text));
    if (parent != nullptr)
        AttachTo(*parent);
}

TextField::~TextField() = default;

// Text.

void TextField::SetText(string const &text)
{
    edit_.SetText(ToGlyphs(text));
    OnEdited();
}

string TextField::GetText() const
{
    return FromGlyphs(edit_.GetText());
}

void TextField::SetPlaceholder(string const &text)
{
    placeholderGlyphs_ = ToGlyphs(text);
}

void TextField::Insert(string const &text)
{
    if (edit_.Insert(ToGlyphs(text)))
        ReportEdited();
    else
        UpdateCaret();
}

void TextField::SelectAll()
{
    edit_.SelectAll();
    UpdateCaret();
}

void TextField::OnTextChanged()
{
    if (action_)
        action_(GetText());
}

void TextField::OnEdited()
{
    areGlyphsMeasured_ = false;
    wrong_ = false;
    UpdateCaret();
}

void TextField::ReportEdited()
{
    OnEdited();
    OnTextChanged();
}

// Places.

gui::Rectangle TextField::GetTextArea() const
{
    float const margin = Measures::Pixels(Measures::TextMargin);
    float const height = std::min(GetTextHeight(*this), GetSize().y);
    return {margin, std::floor((GetSize().y - height) / 2), std::max(GetSize().x - 2 * margin, 0.0f), height};
}

float TextField::GetTextX() const
{
    return GetTextArea().x - scroll_;
}

float TextField::GetGlyphX(unsigned int place) const
{
    UpdateGlyphPlaces();
    place = std::min(place, edit_.GetLength());
    return GetTextX() + (place > 0 ? glyphEnds_[place - 1] : 0);
}

void TextField::UpdateGlyphPlaces() const
{
    if (areGlyphsMeasured_)
        return;
    areGlyphsMeasured_ = true;
    gui::BaseShader const *const shader = GetBaseShader();
    if (shader != nullptr && shader->GetFont() != nullptr)
        return shader->GetFont()->CalcTextWidths(glyphEnds_, shader->GetTextMetricsL(), edit_.GetText());
    float const width = GetTextHeight(*this) / 2;
    glyphEnds_.resize(edit_.GetLength());
    for (std::size_t i = 0; i < glyphEnds_.size(); ++i)
        glyphEnds_[i] = static_cast<float>(i + 1) * width;
}

/// Returns the number of glyphs that end at or before `x`, which is relative to the component.
unsigned int TextField::FindGlyph(float x) const
{
    UpdateGlyphPlaces();
    auto const end = std::upper_bound(glyphEnds_.begin(), glyphEnds_.end(), x - GetTextX());
    return static_cast<unsigned int>(end - glyphEnds_.begin());
}

/// Returns the boundary between two glyphs that is nearest to `x`.
unsigned int TextField::FindPlace(float x) const
{
    unsigned int const glyph = FindGlyph(x);
    if (glyph == edit_.GetLength())
        return glyph;
    return 2 * x < GetGlyphX(glyph) + GetGlyphX(glyph + 1) ? glyph : glyph + 1;
}

void TextField::UpdateCaret()
{
    caretTime_ = 0;
    isCaretShown_ = IsFocused();
    ScrollToCaret();
}

/// Moves the text so that the caret is in the text area, and so that no room stays empty while the text goes on at its
/// other end.
void TextField::ScrollToCaret()
{
    float const width = GetTextArea().width;
    float const caretWidth = Measures::Pixels(1);
    float const caret = GetGlyphX(edit_.GetCaret()) - GetTextX();
    float const end = GetGlyphX(edit_.GetLength()) - GetTextX() + caretWidth;
    float scroll = std::max(scroll_, caret + caretWidth - width);
    scroll = std::min({scroll, caret, std::max(end - width, 0.0f)});
    scroll_ = std::ceil(scroll);
}

// Geometry and time.

void TextField::RecalcSize()
{
    areGlyphsMeasured_ = false;
    SetSize(Measures::Pixels({width_, Measures::ControlHeight}));
}

void TextField::UpdateGeometryCache()
{
    ScrollToCaret();
}

void TextField::OnTimeDelta(double seconds)
{
    sinceDoubleClick_ += seconds;
    caretTime_ += seconds;
    isCaretShown_ = IsFocused() && std::fmod(caretTime_, 2 * s_blinkTime) < s_blinkTime;
    if (!IsMouseCaptureTarget())
        return;
    dragTime_ += seconds;
    if (dragTime_ >= s_dragStep)
        DragTo(CalcRelativeMousePosition().x);
}

// Mouse.

bool TextField::OnMouseCapture(bool)
{
    return true;
}

bool TextField::OnMouseMove(bool hover, double, vec2 const &position)
{
    if (!IsMouseCaptureTarget())
        return false;
    gui::Rectangle const area = GetTextArea();
    bool const isInside = position.x >= area.x && position.x <= area.x + area.width;
    // Beside the text, it scrolls by time.
    if (!hover && isInside)
        DragTo(position.x);
    return true;
}

/// Moves the caret to the mouse. Beside the text area, it goes on by one glyph.
void TextField::DragTo(float x)
{
    dragTime_ = 0;
    gui::Rectangle const area = GetTextArea();
    unsigned int place = FindPlace(std::clamp(x, area.x, area.x + area.width));
    if (x < area.x && place > 0)
        --place;
    else if (x > area.x + area.width)
        ++place;
    if (place != edit_.GetCaret())
    {
        edit_.SetCaret(place, true);
        UpdateCaret();
    }
}

bool TextField::OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                              vec2 const &position)
{
    if (button != e_mouse_button_left)
        return false;
    if (!down || repeatCount > 0)
        return true;
    bool const isThirdClick = !doubleClick && sinceDoubleClick_ <= gui::Manager::Instance().GetMouseDoubleClick();
    sinceDoubleClick_ = doubleClick ? 0 : std::numeric_limits<double>::infinity();
    if (doubleClick)
        edit_.SelectWord(FindGlyph(position.x));
    else if (isThirdClick)
        edit_.SelectAll();
    else
        edit_.SetCaret(FindPlace(position.x), GetModifiers().isShift);
    UpdateCaret();
    if (!doubleClick && !isThirdClick)
    {
        dragTime_ = 0;
        RequestMouseCapture();
    }
    return true;
}

// Keyboard.

bool TextField::OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData)
{
    DefaultProcessQueryFocus(byMouse, button, wantFocus, needCharacterData);
    needCharacterData = wantFocus;
    return true;
}

bool TextField::OnKeyboardFocus(bool gotFocus)
{
    // Time runs only while the field has the focus.
    sinceDoubleClick_ = std::numeric_limits<double>::infinity();
    gui::Manager::Instance().TimeNotifyRegister(*this, gotFocus);
    UpdateCaret();
    return true;
}

bool TextField::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character)
{
    if (!down || !IsEnabled())
        return false;
    if (IsEnterKey(key) && enterAction_)
    {
        if (repeatCount == 0)
            enterAction_(GetText());
        return true;
    }
    return !IsEnterKey(key) && EditByKey(key, character);
}

/// Returns whether the field uses the key. It may be gone then.
bool TextField::EditByKey(eKey key, char character)
{
    Modifiers const modifiers = GetModifiers();
    if (modifiers.isAlt)
        return false;
    if (key == e_key_insert || (key == e_key_delete && modifiers.isShift))
        return EditByClipboardKey(key, modifiers.isControl, modifiers.isShift);
    if (MoveKey const *const row = FindKey(s_moveKeys, key, modifiers.isControl))
    {
        edit_.Move(row->move, modifiers.isShift);
        UpdateCaret();
        return true;
    }
    if (MoveKey const *const row = FindKey(s_deleteKeys, key, modifiers.isControl))
        return Change([&] { return edit_.Delete(row->move); });
    if (modifiers.isControl)
        return EditByShortcut(key, modifiers.isShift);
    if (!IsShownCharacter(character))
        return false;
    return Change([&] { return edit_.Insert(string(1, character)); });
}

bool TextField::EditByClipboardKey(eKey key, bool isControl, bool isShift)
{
    if (key == e_key_delete)
        return Cut();
    if (isShift)
        return Paste();
    if (isControl)
        CopySelection();
    return isControl;
}

bool TextField::EditByShortcut(eKey key, bool isShift)
{
    switch (key)
    {
    case e_key_a:
        SelectAll();
        return true;
    case e_key_c:
        CopySelection();
        return true;
    case e_key_x:
        return Cut();
    case e_key_v:
        return Paste();
    case e_key_z:
        return Change([&] { return isShift ? edit_.Redo() : edit_.Undo(); });
    case e_key_y:
        return Change([&] { return edit_.Redo(); });
    default:
        return false;
    }
}

/// Changes the text by `change`, which returns whether it did. Always true: the key was used.
template<typename Function>
bool TextField::Change(Function &&change)
{
    if (readOnly_)
        return true;
    if (change())
        ReportEdited();
    else
        UpdateCaret();
    return true;
}

bool TextField::CopySelection()
{
    return edit_.HasSelection() && platform::WriteClipboardText(FromGlyphs(edit_.GetSelectedText()));
}

bool TextField::Cut()
{
    // What the clipboard does not take stays.
    if (readOnly_ || !CopySelection())
        return true;
    return Change([&] { return edit_.Delete(TextEdit::e_move_left); });
}

bool TextField::Paste()
{
    return Change([&] { return edit_.Insert(ToGlyphs(platform::ReadClipboardText())); });
}

} // namespace quillmarsh::widgets
