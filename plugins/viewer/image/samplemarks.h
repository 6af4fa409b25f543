// Lines between enlarged samples, and numbers in them.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_SAMPLEMARKS_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_SAMPLEMARKS_H

#include "panes.h"

#include <quillmarsh/gui/gui_component.h>

namespace viewer
{

/// Draws the marks of enlarged samples: lines where a sample is at least 16 pixels wide, its numbers where they fit.
class SampleMarks
{
public:
    /// Draws the marks of a pane in a view of a size; `component` gives the font. `level` is that of ImageState.
    void Draw(quillmarsh::gui::Renderer &renderer, quillmarsh::gui::Component const &component, Pane const &pane,
              ToneMap const &tones, int level) const;

private:
    struct Cells;
    struct Writing;

    static Cells FindCells(quillmarsh::vec2 const &viewSize, Pane const &pane, int level);
    static void DrawLines(quillmarsh::gui::Renderer &renderer, Pane const &pane, Cells const &cells);
    static void DrawNumbers(Writing const &writing, Pane const &pane, ToneMap const &tones, Cells const &cells);
};

} // namespace viewer

#endif
