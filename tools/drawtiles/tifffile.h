// A picture as the bytes of a TIFF file.
#ifndef QUILLMARSH_TOOLS_DRAWTILES_TIFFFILE_H
#define QUILLMARSH_TOOLS_DRAWTILES_TIFFFILE_H

#include "look_shapes/sheet.h"

#include <string>

namespace drawtiles
{

/// Returns a TIFF file with a sheet as opaque grays in red, green, blue and alpha: 8 bits each, top row first, not
/// compressed. It is written here, and not by the system's encoder, because the bytes are the same everywhere.
std::string MakeTiffFile(look_shapes::Sheet const &sheet);

} // namespace drawtiles

#endif
