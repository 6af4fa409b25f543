// The pane with the turned volume.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_TURNPANE_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_TURNPANE_H

#include "pane.h"

namespace viewer::volumes
{

/// The volume as a whole, turned by the mouse. Where the renderer is OpenGL, the room draws it into the area that this
/// pane has; elsewhere the pane shows the greatest values along the line of sight.
class TurnPane : public Pane
{
public:
    static constexpr unsigned int s_areaCode = 0x564F4C;

    explicit TurnPane(PaneContext &context);

    /// Whether the room can draw into the area, and why not; false at first.
    void SetDrawsArea(bool draws, string const &reason);

    bool FindPlace(quillmarsh::vec2 const &position, quillmarsh::vec3 &place) const override;
    string GetTitle() const override;
    void DrawSelf(quillmarsh::gui::Renderer &renderer) override;
    void RecalcLayout() override;

protected:
    void Compose(quillmarsh::ImageBase &picture) override;
    void DrawOver(quillmarsh::gui::Renderer &renderer) override;
    bool DragLeft(quillmarsh::vec2 const &position, quillmarsh::vec2 const &distance) override;
    string GetLeftLine() const override;
    void DragMiddle(quillmarsh::vec2 const &distance) override;
    string GetMiddleLine() const override;
    void Step(int count) override;
    string GetStepLine() const override;
    void ZoomAt(double factor, quillmarsh::vec2 const &position) override;
    string GetZoomLine() const override;

private:
    class Notes;

    void DrawNotes(quillmarsh::gui::Renderer &renderer);

    bool drawsArea_ = false;
    string reason_;
    quillmarsh::gui::Component *area_;
    quillmarsh::gui::Component *notes_;
};

} // namespace viewer::volumes

#endif
