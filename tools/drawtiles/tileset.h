// The picture of the standard tile set.
#ifndef QUILLMARSH_TOOLS_DRAWTILES_TILESET_H
#define QUILLMARSH_TOOLS_DRAWTILES_TILESET_H

#include "look_shapes/sheet.h"

namespace drawtiles
{

/// Draws the tile set: 4 by 4 tiles of 32 by 32 pixels, white on black.
///
/// Who loads it takes the luminance as alpha and paints black what is not above a threshold. A soft edge in white
/// therefore needs luminances above the threshold: lower ones would be a dark fringe. Pixels of less coverage than half
/// the threshold are left out, and the others raised to the first luminance above it.
look_shapes::Sheet DrawTileSet();

} // namespace drawtiles

#endif
