#include <quillmarsh/widgets/slider.h>

#include <quillmarsh/widgets/looknames.h>
#include <quillmarsh/widgets/measures.h>

#include "source/widgets/dragthumb.h"
#include "source/widgets/inputhelp.h"
#include "source/widgets/units.h"

#include <algorithm>
#include <cmath>

namespace quillmarsh::widgets
{

namespace
{

/// Steps of Page Up and Page Down.
constexpr double s_stepsOfPage = 10;
/// Steps of keys and wheel in a range without steps.
constexpr double s_keyStepsOfRange = 100;

} // namespace

class Slider::SliderThumb : public DragThumb
{
public:
    explicit SliderThumb(Slider &slider) : DragThumb(slider.vertical_, &slider), slider_(slider)
    {
        SetShaderName(ShaderName_SliderThumb);
    }

    void OnDragBegin() override { startFraction_ = slider_.GetFraction(); }

    void OnThumbMoved(float distance) override
    {
        float const length = slider_.GetTrackLength();
        if (length <= 0)
            return;
        float const sign = slider_.IsVertical() ? -1.0F : 1.0F;
        slider_.ChangeByUser(slider_.CalcValue(startFraction_ + sign * distance / length));
    }

    void OnThumbReleased() override { slider_.endAction_(slider_.GetValue()); }

    /// Begins a drag where the mouse is on the track, which need not be the place of a whole step.
    void Grab(float fraction)
    {
        gui::Watch<SliderThumb> const self(*this);
        if (RequestMouseCapture() && self.Get() != nullptr)
            startFraction_ = fraction;
    }

private:
    Slider &slider_;
    float startFraction_ = 0;
};

Slider::Slider(bool vertical, gui::Component *parent, float length)
    : vertical_(vertical),
      length_(LimitUnits(length)),
      thumb_(nullptr)
{
    SetShaderName(ShaderName_Slider);
    SetCanDisable(true);
    SetCanFocus(true);
    thumb_ = new SliderThumb(*this);
    if (parent != nullptr)
        AttachTo(*parent);
}

Slider::~Slider() = default;

// The value.

void Slider::SetRange(float minimum, float maximum, float step)
{
    if (!std::isfinite(minimum) || !std::isfinite(maximum) || !std::isfinite(step))
        return;
    minimum_ = std::min(minimum, maximum);
    maximum_ = std::max(minimum, maximum);
    step_ = std::max(step, 0.0F);
    value_ = Limit(value_);
    PlaceThumb();
}

void Slider::SetValue(float value)
{
    if (std::isnan(value))
        return;
    value_ = Limit(value);
    PlaceThumb();
}

float Slider::GetFraction() const
{
    double const range = static_cast<double>(maximum_) - minimum_;
    return range > 0 ? static_cast<float>((static_cast<double>(value_) - minimum_) / range) : 0;
}

bool Slider::IsGrabbed() const
{
    return thumb_->IsGrabbed();
}

/// The end of the range is a place too, also where it is no whole number of steps.
float Slider::Limit(double value) const
{
    double const limited = std::clamp<double>(value, minimum_, maximum_);
    if (step_ <= 0)
        return static_cast<float>(limited);
    double const steps = std::round((limited - minimum_) / step_);
    double const stepped = std::min<double>(minimum_ + steps * step_, maximum_);
    bool const isNearerToEnd = maximum_ - limited < std::abs(stepped - limited);
    return isNearerToEnd ? maximum_ : std::clamp(static_cast<float>(stepped), minimum_, maximum_);
}

float Slider::CalcValue(double fraction) const
{
    return Limit(minimum_ + fraction * (static_cast<double>(maximum_) - minimum_));
}

double Slider::GetKeyStep() const
{
    return step_ > 0 ? step_ : (static_cast<double>(maximum_) - minimum_) / s_keyStepsOfRange;
}

bool Slider::ChangeByUser(float value)
{
    float const old = value_;
    SetValue(value);
    if (value_ == old)
        return true;
    gui::Watch<Slider> const self(*this);
    action_(value_);
    return self.Get() != nullptr;
}

bool Slider::ChangeByKeys(double value)
{
    float const old = value_;
    float const limited = Limit(value);
    if (ChangeByUser(limited) && limited != old)
        endAction_(value_);
    return true;
}

// Geometry.

float Slider::GetThumbLength() const
{
    return std::max(0.0F, std::min(Measures::Pixels(Measures::MarkSize), GetLength()));
}

float Slider::GetTrackBegin() const
{
    return std::floor(GetThumbLength() / 2);
}

float Slider::GetTrackLength() const
{
    return std::max(0.0F, GetLength() - GetThumbLength());
}

float Slider::CalcTrackPlace(float fraction) const
{
    return std::round((vertical_ ? 1 - fraction : fraction) * GetTrackLength());
}

void Slider::PlaceThumb()
{
    float const length = GetThumbLength();
    float const across = vertical_ ? GetSize().x : GetSize().y;
    float const width = std::max(0.0F, std::min(Measures::Pixels(Measures::MarkSize), across));
    float const edge = std::floor((across - width) / 2);
    float const place = CalcTrackPlace(GetFraction());
    if (vertical_)
        PlaceComponent(*thumb_, {edge, place}, {width, length});
    else
        PlaceComponent(*thumb_, {place, edge}, {length, width});
}

void Slider::RecalcSize()
{
    float const length = Measures::Pixels(length_);
    float const width = Measures::Pixels(Measures::ControlHeight);
    SetSize(vertical_ ? vec2(width, length) : vec2(length, width));
}

void Slider::RecalcLayout()
{
    PlaceThumb();
}

// Input.

bool Slider::OnMouseWheel(int delta, vec2 const &)
{
    int const notches = TakeNotches(wheelRest_, delta);
    return notches == 0 || ChangeByKeys(value_ + notches * GetKeyStep());
}

bool Slider::OnMouseButton(bool down, eMouseButton button, bool, unsigned int repeatCount, vec2 const &position)
{
    if (button != e_mouse_button_left)
        return false;
    float const length = GetTrackLength();
    if (!down || repeatCount != 0 || length <= 0)
        return true;
    float const place = (vertical_ ? position.y : position.x) - GetTrackBegin();
    float const fraction = std::clamp(vertical_ ? 1 - place / length : place / length, 0.0F, 1.0F);
    if (ChangeByUser(CalcValue(fraction)))
        thumb_->Grab(fraction);
    return true;
}

bool Slider::OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData)
{
    DefaultProcessQueryFocus(byMouse, button, wantFocus, needCharacterData);
    return true;
}

bool Slider::OnKeyboardKey(bool down, eKey key, unsigned int, char)
{
    if (!down || IsControlPressed() || IsAltPressed())
        return false;
    switch (key)
    {
    case e_key_arrow_right:
    case e_key_arrow_up:
        return ChangeByKeys(value_ + GetKeyStep());
    case e_key_arrow_left:
    case e_key_arrow_down:
        return ChangeByKeys(value_ - GetKeyStep());
    case e_key_page_up:
        return ChangeByKeys(value_ + s_stepsOfPage * GetKeyStep());
    case e_key_page_down:
        return ChangeByKeys(value_ - s_stepsOfPage * GetKeyStep());
    case e_key_home:
        return ChangeByKeys(minimum_);
    case e_key_end:
        return ChangeByKeys(maximum_);
    default:
        return false;
    }
}

void Slider::OnChangedEnabled()
{
    thumb_->SetEnabled(IsEnabled());
    if (!IsEnabled())
        thumb_->ReleaseGrab();
}

} // namespace quillmarsh::widgets
