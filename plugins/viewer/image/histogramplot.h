// The histogram as a picture.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_HISTOGRAMPLOT_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_HISTOGRAMPLOT_H

#include "imagestate.h"

#include <quillmarsh/gui/gui_component.h>

namespace viewer
{

/// Draws the histogram of the figures, with the window over it, whose ends are dragged. Frame thread only.
class HistogramPlot : public quillmarsh::gui::Component
{
public:
    HistogramPlot(quillmarsh::gui::Component *parent, std::shared_ptr<ImageState> state);
    ~HistogramPlot() override;

    void RecalcSize() override;
    void DrawSelf(quillmarsh::gui::Renderer &renderer) override;
    bool OnMouseCapture(bool begin) override;
    bool OnMouseMove(bool hover, double hoverSeconds, quillmarsh::vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, quillmarsh::eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       quillmarsh::vec2 const &position) override;

private:
    void DrawChannel(quillmarsh::gui::Renderer &renderer, ChannelFigures const &figures, double most,
                     quillmarsh::color4b color) const;
    double CountOf(std::uint64_t count) const;
    double ToPart(float x) const;
    void DragTo(float x);

    std::shared_ptr<ImageState> state_;
    /// End of the window that is dragged: 1 low, 2 high, 0 none.
    int dragged_ = 0;
};

} // namespace viewer

#endif
