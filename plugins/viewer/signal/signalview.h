// The plot of a signal, with mouse and marks.
#ifndef QUILLMARSH_PLUGINS_VIEWER_SIGNAL_SIGNALVIEW_H
#define QUILLMARSH_PLUGINS_VIEWER_SIGNAL_SIGNALVIEW_H

#include "signalstate.h"
#include "view.h"

#include <optional>

namespace viewer
{

/// Shows the plot of the signal. The wheel zooms about the mouse, with control the values, with shift it scrolls; the
/// left button moves the plot, the right one, or shift with the left one, marks a span. Frame thread only.
class SignalView : public View
{
public:
    /// The state is borrowed, and may go ahead of this view.
    SignalView(quillmarsh::gui::Component &parent, SignalState &state);
    ~SignalView() override;

    /// Follows the state, and tells the console what the wheel has done. Once a frame.
    void Update(double seconds);
    /// Sample, place and values under the mouse; empty without the mouse.
    string DescribeMouse() const;

    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, quillmarsh::vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, quillmarsh::eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       quillmarsh::vec2 const &position) override;
    bool OnMouseMove(bool hover, double hoverSeconds, quillmarsh::vec2 const &position) override;
    bool OnMouseEnterExit(bool enter, bool direct, quillmarsh::vec2 const &position) override;
    bool OnMouseCapture(bool begin) override;

protected:
    void Compose(quillmarsh::ImageBase &picture) override;
    void DrawOver(quillmarsh::gui::Renderer &renderer) override;

private:
    enum class eDrag
    {
        e_none,
        e_pan,
        e_span
    };

    PlotSize CalcSize(unsigned int width, unsigned int height) const;
    void LayOut(unsigned int width, unsigned int height);
    void DrawAxes(quillmarsh::gui::Renderer &renderer);
    void DrawNames(quillmarsh::gui::Renderer &renderer);
    void DrawMarker(quillmarsh::gui::Renderer &renderer);
    void DrawValues(quillmarsh::gui::Renderer &renderer, PlotLane const &lane, float x);
    std::optional<std::uint64_t> FindSample() const;
    void DragTo(quillmarsh::vec2 const &position);
    void EndDrag();
    void ScaleValues(double factor, double pixel);

    SignalState &state_;
    PlotLayout layout_;
    unsigned int revision_ = 0;
    /// Position of the mouse in the view; nothing while it is elsewhere.
    std::optional<quillmarsh::vec2> mouse_;
    eDrag drag_ = eDrag::e_none;
    /// What the drag began with: settings, layout, and the place under the mouse.
    PlotSettings dragSettings_;
    PlotLayout dragLayout_;
    quillmarsh::vec2 dragBegin_ = {0, 0};
    /// Line that says what the wheel has done, to be told when it has come to rest.
    string pendingEcho_;
    double restSeconds_ = 0;
};

/// @name Console lines that set the same
/// @{
string FormatRangeLine(PlotSettings const &settings);
string FormatValuesLine(PlotSettings const &settings);
string FormatSpanLine(PlotSettings const &settings);
/// @}

} // namespace viewer

#endif
