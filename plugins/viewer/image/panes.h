// How images share a view.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_PANES_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_PANES_H

#include "imagestate.h"

namespace viewer
{

/// Part of the view that shows one image.
struct Pane
{
    PixelArea area;
    /// What is drawn: an image, or a difference.
    ImageLevelsPtr levels;
    DisplaySettings display;
    /// Refers to the whole view.
    Placement placement;
    /// Name in the corner; empty while there is one image only.
    string title;
};

/// Returns the size of what ImageState::place refers to: the view, or each half of two images side by side.
ImagePlace::Size GetPaneSize(ImageState const &state, unsigned int width, unsigned int height);
/// Returns the parts of a view of a size in pixels; none without an image.
std::vector<Pane> MakePanes(ImageState const &state, unsigned int width, unsigned int height);
/// Settings that show a difference: black is none, white is the nominal range divided by the scale.
DisplaySettings GetDifferenceDisplay(ImageState const &state);

} // namespace viewer

#endif
