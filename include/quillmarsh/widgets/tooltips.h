// Tool tips: the service that shows them.
#ifndef QUILLMARSH_WIDGETS_TOOLTIPS_H
#define QUILLMARSH_WIDGETS_TOOLTIPS_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh::widgets
{

/// Shows the tool tip of the component under the mouse, after the mouse has rested there, below the mouse and inside the
/// window. It provides the service gui::ToolTipServiceID: a program makes one, which the manager owns.
///
/// A tip goes with any movement away from its component, any press and any key. While tips were shown a moment ago, the
/// next one comes at once. Texts are UTF-8; long ones are wrapped. A component that wants more than its text overrides
/// OnQueryToolTipParams(): it is asked when the mouse comes over it, when the mouse has rested, and with each movement
/// while its tip is shown; the parent is asked if it does not answer. Frame thread only.
class QUILLMARSH_API ToolTips : public gui::Component
{
public:
    /// Registers as provider. Stands in the highest layer.
    ToolTips();
    ~ToolTips() override;

    /// Sets the seconds that the mouse must rest, at least 0; 0.6 at first.
    void SetDelay(double seconds);
    double GetDelay() const { return delay_; }
    /// Returns what is shown, as glyph codes with line feeds; empty while no tip is shown.
    string const &GetGlyphs() const { return glyphs_; }

    string GetCaption() const override;
    void RecalcSize() override;
    void RecalcLayout() override;

protected:
    void ServiceProviderPostEventDispatch(double timeDelta) override;

private:
    /// Hides the tip if it is to go. Returns whether the component under the mouse may have one.
    bool Follow(gui::Component &target, bool isPressed);
    void Ask(gui::Component &target, bool hasRested);
    void ShowTip(gui::ToolTipParams const &params);
    void HideTip();

    double delay_ = 0.6;
    /// Seconds since a tip was shown.
    double idle_ = 1e9;
    string text_;
    string glyphs_;
    /// Where the tip is to stand: position of the mouse, and the distance from it that the component wants.
    vec2 anchor_ = {0, 0};
    vec2 offset_ = {0, 0};
    gui::Watch<gui::Component> target_;
    /// A press or a key has sent its tip away; there is none until the mouse is over another component.
    bool isDismissed_ = false;
    /// The component has answered for this place of the mouse.
    bool wasAsked_ = false;
    bool wasAskedAtRest_ = false;
    vec2 lastMouse_ = {0, 0};
};

} // namespace quillmarsh::widgets

#endif
