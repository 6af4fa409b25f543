// The colours of single values.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_SAMPLES_PALETTES_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_SAMPLES_PALETTES_H

#include "display.h"

namespace viewer
{

using Colours = std::array<Pixel, 256>;

/// Returns the colours of a palette, from the lowest value to the highest; greys for e_none. Neighbours look equally
/// different everywhere in a palette. Any thread.
Colours const &GetPalette(ePalette palette);

} // namespace viewer

#endif
