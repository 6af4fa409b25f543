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
/// next one comes at once. A component that wants more than its text overrides OnQueryToolTipParams(). Frame thread
/// only.
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

protected:
    void ServiceProviderPostEventDispatch(double timeDelta) override;

private:
    void ShowTip(gui::ToolTipParams const &params);
    void HideTip();

    double delay_ = 0.6;
    /// Seconds since a tip was shown.
    double idle_ = 1e9;
    string text_;
    string glyphs_;
    gui::Watch<gui::Component> target_;
    /// A press or a key has sent its tip away; there is none until the mouse is over another component.
    bool isDismissed_ = false;
};

} // namespace quillmarsh::widgets

#endif
