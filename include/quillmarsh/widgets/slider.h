// A value that is set by dragging.
#ifndef QUILLMARSH_WIDGETS_SLIDER_H
#define QUILLMARSH_WIDGETS_SLIDER_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/platform/types.h>
#include <quillmarsh/widgets/action.h>

namespace quillmarsh::widgets
{

/// Value within a range, set by a thumb on a track. A press beside the thumb moves it there and grabs it. Arrow keys and
/// wheel go by a step, Page Up and Page Down by ten, Home and End to the ends.
///
/// Horizontal values grow to the right, vertical ones upwards. Frame thread only.
class QUILLMARSH_API Slider : public gui::Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. `length` is in units. The range is 0 to 1, with a step of
    /// 0.01.
    Slider(bool vertical, gui::Component *parent, float length = 160);
    ~Slider() override;

    /// Sets range and step; swaps a range that is upside down. A step of 0 lets the value stand anywhere and makes the
    /// keys go by a hundredth. Ignores numbers that are not finite. Keeps the value within the new range.
    void SetRange(float minimum, float maximum, float step);
    float GetMinimum() const { return minimum_; }
    float GetMaximum() const { return maximum_; }
    float GetStep() const { return step_; }
    /// Sets the value within the range, rounded to a step, without the action. Ignores NaN.
    void SetValue(float value);
    float GetValue() const { return value_; }
    /// Place of the value in the range: 0 to 1.
    float GetFraction() const;
    bool IsVertical() const { return vertical_; }
    bool IsGrabbed() const;
    /// Called with each change that the user makes.
    void SetAction(std::function<void(float)> action) { action_ = std::move(action); }
    /// Called when the user lets go of the thumb, or has used keys or wheel.
    void SetEndAction(std::function<void(float)> action) { endAction_ = std::move(action); }

    /// @name Geometry, relative to the component, in pixels
    /// @{
    /// Extent of the track along the slider, between the places of the thumb's middle.
    float GetTrackBegin() const;
    float GetTrackLength() const;
    /// @}

    void RecalcSize() override;
    void RecalcLayout() override;
    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData) override;
    using Component::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;
    void OnChangedEnabled() override;

private:
    class SliderThumb;

    float GetLength() const { return vertical_ ? GetSize().y : GetSize().x; }
    float GetThumbLength() const;
    /// Distance of a fraction from the begin of the track, in pixels.
    float CalcTrackPlace(float fraction) const;
    void PlaceThumb();
    float Limit(double value) const;
    float CalcValue(double fraction) const;
    double GetKeyStep() const;
    bool ChangeByKeys(double value);
    /// Sets the value, and calls the action if it is another one. Returns whether this component is still there.
    bool ChangeByUser(float value);

    bool vertical_;
    float length_;
    float minimum_ = 0;
    float maximum_ = 1;
    float step_ = 0.01F;
    float value_ = 0;
    /// Part of a notch of the wheel that has not counted yet.
    int wheelRest_ = 0;
    SliderThumb *thumb_;
    Action<float> action_;
    Action<float> endAction_;
};

} // namespace quillmarsh::widgets

#endif
