// Bar that tells how much of a piece of work is done.
#ifndef QUILLMARSH_WIDGETS_PROGRESSBAR_H
#define QUILLMARSH_WIDGETS_PROGRESSBAR_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh::widgets
{

/// Bar that tells how much of a piece of work is done, or only that it goes on. Its height is its own, its width the
/// program's. Frame thread only.
class QUILLMARSH_API ProgressBar : public gui::Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. `width` is in units.
    explicit ProgressBar(gui::Component *parent, float width = 160);
    ~ProgressBar() override;

    /// Sets the part that is done, within 0 and 1; a negative value for work whose end nobody knows. NaN counts as
    /// negative.
    void SetValue(float value);
    /// Returns the part that is done; negative for work without a known end.
    float GetValue() const { return value_; }
    bool IsEndKnown() const { return value_ >= 0; }
    /// Text in the bar, in UTF-8; empty at first.
    void SetText(string const &text);
    string const &GetGlyphs() const { return glyphs_; }
    /// Goes from 0 to 1 in two seconds, again and again, while the end is not known: the place of a moving mark.
    float GetPhase() const { return phase_; }

    string GetCaption() const override;
    void RecalcSize() override;
    void OnTimeDelta(double seconds) override;

private:
    float width_;
    float value_ = 0;
    float phase_ = 0;
    string text_;
    string glyphs_;
};

} // namespace quillmarsh::widgets

#endif
