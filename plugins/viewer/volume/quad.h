// Four panes, with borders that can be dragged, or one of them alone.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_QUAD_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_QUAD_H

#include "pane.h"
#include "turnpane.h"

#include <quillmarsh/widgets/splitter.h>

namespace viewer::volumes
{

/// Holds the panes: layers at the top left, rows below them, columns beside the rows, and at the top right the oblique
/// slice or the turned volume. The same samples are thus above and beside each other. Frame thread only.
class Quad : public quillmarsh::gui::Component
{
public:
    Quad(PaneContext &context, quillmarsh::gui::Component &parent);

    /// Puts the panes where the context and the settings want them.
    void Arrange();
    /// The picture of every pane is no longer right.
    void InvalidatePanes();
    /// Sets the parts of width and height of the first column and row.
    void SetFractions(float x, float y);
    quillmarsh::vec2 GetFractions() const;
    TurnPane &GetTurnPane() { return *turned_; }
    /// Returns the pane that shows under the mouse; null if there is none.
    Pane const *FindPaneUnderMouse() const;

    void RecalcLayout() override;
    void UpdateGeometryCache() override;

private:
    class Place;

    void MovePane(Pane &pane, Place &place, bool isVisible);
    double CalcFitZoom() const;

    PaneContext &context_;
    /// Columns side by side, each with one pane above the other.
    quillmarsh::widgets::Splitter *columns_;
    std::array<quillmarsh::widgets::Splitter *, 2> rows_;
    /// Place of the whole room, then those of the four panes.
    Place *whole_;
    std::array<Place *, 4> places_;
    std::array<Pane *, s_numPanes> panes_;
    TurnPane *turned_;
};

} // namespace viewer::volumes

#endif
