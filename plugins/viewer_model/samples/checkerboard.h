// The checkerboard under colours that let something through.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_SAMPLES_CHECKERBOARD_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_SAMPLES_CHECKERBOARD_H

#include "display.h"

namespace viewer
{

/// Lays a row of colours over the board by their alpha, rounded to the nearest; they are opaque then. The first one lies
/// at (x, y) of the board.
void LayOverCheckerboard(Pixel *pixels, unsigned int count, int x, int y);

} // namespace viewer

#endif
