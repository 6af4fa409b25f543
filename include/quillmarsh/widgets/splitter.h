// Two areas with an edge between them that can be moved.
#ifndef QUILLMARSH_WIDGETS_SPLITTER_H
#define QUILLMARSH_WIDGETS_SPLITTER_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/platform/types.h>
#include <quillmarsh/widgets/action.h>

namespace quillmarsh::widgets
{

/// Two areas, one beside the other or one above the other, with a bar between them that the mouse drags, and that arrow
/// keys move while it has the focus. A double click on the bar puts it back where the program has put it. Frame thread
/// only.
class QUILLMARSH_API Splitter : public gui::Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. `vertical` puts the second area below the first one. `size`
    /// is in units.
    Splitter(bool vertical, gui::Component *parent, vec2 const &size = {320, 240});
    ~Splitter() override;

    /// Ghosts that fill their part, for the program to attach widgets to.
    gui::Component &GetFirst() { return *first_; }
    gui::Component &GetSecond() { return *second_; }

    /// Sets the first area's part of the extent, within 0 and 1, without the action; 0.5 at first. That is the place to
    /// which a double click puts the bar back. Ignores NaN.
    void SetFraction(float fraction);
    float GetFraction() const { return fraction_; }
    /// Sets the least extents of both areas, in units; 40 at first. Where both do not fit, they share in proportion.
    void SetMinSizes(float first, float second);
    bool IsVertical() const { return vertical_; }
    /// Called with each new fraction that the user sets.
    void SetAction(std::function<void(float)> action) { action_ = std::move(action); }

    void RecalcSize() override;
    void RecalcLayout() override;

private:
    class SplitterThumb;

    /// Extent of both areas along the splitter, in pixels.
    float CalcRoom() const;
    /// Extent of the first area for a fraction, within the limits.
    float CalcFirstExtent(float fraction) const;
    void ChangeByUser(float fraction);

    bool vertical_;
    vec2 sizeInUnits_;
    float fraction_ = 0.5F;
    float firstFraction_ = 0.5F;
    float minFirst_ = 40;
    float minSecond_ = 40;
    gui::Component *first_;
    gui::Component *second_;
    SplitterThumb *thumb_;
    Action<float> action_;
};

} // namespace quillmarsh::widgets

#endif
