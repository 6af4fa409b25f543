// Standard set of tiles, fonts and cursors that a host offers to every application.
#ifndef QUILLMARSH_GUI_GUI_STANDARDRESOURCES_H
#define QUILLMARSH_GUI_GUI_STANDARDRESOURCES_H

#include <quillmarsh/gui/gui_drawparams.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh::gui
{

/// Standard tile texture: 4 by 4 tiles of 32 by 32 pixels.
namespace std_tile_textures
{

/// Name under which the texture is registered.
inline constexpr char TileTextureName_Set0[] = "std/set0";
/// Name of its file.
inline constexpr char DefaultFileName_Set0[] = "gui_std_tiletexture_set0.tif";

/// Tile of the standard texture, in one of the ways in which it is turned.
enum eTile : unsigned int
{
    e_tile_0 = 0,
    e_tile_1,
    e_tile_2,
    e_tile_3,
    e_tile_4,
    e_tile_5,
    e_tile_6,
    e_tile_7,
    e_tile_arrow,
    e_tile_move,
    e_tile_resize_vertical,
    e_tile_resize_horizontal,
    e_tile_resize_rising,
    e_tile_resize_falling,
    e_tile_14,
    e_tile_15,
    e_tile_stop
};

/// Loads the texture from an image file of 128 by 128 pixels, makes dark pixels transparent, and registers it with the
/// manager. On failure it writes a line to `log`, and returns false. Frame thread only.
QUILLMARSH_API bool RegisterTileTexture_Set0(ostream &log, bool multiLevel, string const &fileName);

/// Returns name, place and turn of a tile; those of the first tile for any other value. Any thread.
QUILLMARSH_API TileParams MakeTileParams(eTile tile);

} // namespace std_tile_textures

/// Standard fonts, which are made from fonts of the system.
namespace std_fonts
{

/// Name under which the default font is registered.
inline constexpr char FontName_Default[] = "std/default";
/// Family of the default font.
inline constexpr char SystemFont_Default[] = "Tahoma";
/// Name under which the console's font is registered.
inline constexpr char FontName_Console[] = "std/console";
/// Family of the console's font.
inline constexpr char SystemFont_Console[] = "Lucida Console";

/// @name Registration
/// They make a font and register it with the manager under `name`. Messages go to `log`. The other parameters are those
/// of FontTexture. Frame thread only.
/// @{
QUILLMARSH_API void RegisterFont_Default(ostream &log, bool asciiSubsetOnly, unsigned int textureWidth, bool multiLevel,
                                         string const &name);
QUILLMARSH_API void RegisterFont_Console(ostream &log, bool asciiSubsetOnly, unsigned int textureWidth, bool multiLevel,
                                         string const &name);
/// @}

} // namespace std_fonts

/// Standard cursors, which are tiles of the standard texture.
namespace std_cursors
{

/// @name Names of the cursors
/// All but the last are those of the areas, see eCommandArea.
/// @{
inline constexpr char CursorName_Void[] = "std/void";
inline constexpr char CursorName_Client[] = "std/client";
inline constexpr char CursorName_Move[] = "std/move";
inline constexpr char CursorName_ResizeN[] = "std/resizeN";
inline constexpr char CursorName_ResizeS[] = "std/resizeS";
inline constexpr char CursorName_ResizeW[] = "std/resizeW";
inline constexpr char CursorName_ResizeE[] = "std/resizeE";
inline constexpr char CursorName_ResizeNW[] = "std/resizeNW";
inline constexpr char CursorName_ResizeNE[] = "std/resizeNE";
inline constexpr char CursorName_ResizeSW[] = "std/resizeSW";
inline constexpr char CursorName_ResizeSE[] = "std/resizeSE";
inline constexpr char CursorName_Stop[] = "std/stop";
/// @}

/// Makes the twelve cursors, 16 by 16 pixels and white; the manager owns them. Their texture has to be registered
/// before the next synchronisation. Frame thread only.
QUILLMARSH_API void RegisterCursors(ostream &log);

} // namespace std_cursors

} // namespace quillmarsh::gui

#endif
