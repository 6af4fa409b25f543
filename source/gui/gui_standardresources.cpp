#include <quillmarsh/gui/gui_standardresources.h>

#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/signaloperations.h>
#include <quillmarsh/gui/gui_cursors.h>
#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_textures.h>

#include <iterator>

namespace quillmarsh::gui
{

namespace std_tile_textures
{
namespace
{

/// Place of a tile, and how it is turned.
struct TileRow
{
    unsigned int row;
    unsigned int column;
    RectangleCT::eTexTransform transform;
};

/// By eTile.
constexpr TileRow s_tiles[] = {
    {0, 0, RectangleCT::e_tex_none},     // 0
    {0, 1, RectangleCT::e_tex_none},     // 1
    {0, 2, RectangleCT::e_tex_none},     // 2
    {0, 3, RectangleCT::e_tex_mirror_h}, // 3
    {0, 3, RectangleCT::e_tex_none},     // 4
    {0, 3, RectangleCT::e_tex_rotate_a}, // 5
    {0, 3, RectangleCT::e_tex_rotate_c}, // 6
    {2, 2, RectangleCT::e_tex_none},     // 7
    {1, 0, RectangleCT::e_tex_none},     // arrow
    {1, 1, RectangleCT::e_tex_none},     // move
    {1, 2, RectangleCT::e_tex_rotate_a}, // resize vertical
    {1, 2, RectangleCT::e_tex_none},     // resize horizontal
    {1, 3, RectangleCT::e_tex_none},     // resize rising
    {1, 3, RectangleCT::e_tex_rotate_a}, // resize falling
    {2, 0, RectangleCT::e_tex_none},     // 14
    {2, 1, RectangleCT::e_tex_none},     // 15
    {2, 3, RectangleCT::e_tex_none},     // stop
};
static_assert(std::size(s_tiles) == e_tile_stop + 1);

} // namespace

bool RegisterTileTexture_Set0(ostream &log, bool multiLevel, string const &fileName)
{
    constexpr unsigned char darkest = 0x60;
    constexpr unsigned int size = 128;
    constexpr unsigned int numTiles = 4;

    NamedParameterList params;
    params.Insert(NamedParameter(signal_codec_parameters::Param_OriginBottom, true), true);
    AutoPtr<ImageBase> const image(LoadImageA(fileName, &params));
    if (!image)
    {
        log << "Failed to load tile-texure: " << TileTextureName_Set0 << " from file: " << fileName << std::endl;
        return false;
    }
    ProcessSamples_BGRToA_ThresholdBGR(*image, darkest);
    auto texture = std::make_unique<TileTexture>(e_format_A8R8G8B8, multiLevel, size, size, numTiles, numTiles);
    texture->SetSourceImage(image.get(), true);
    Manager::Instance().RegisterTileTexture(TileTextureName_Set0, texture);
    return true;
}

TileParams MakeTileParams(eTile tile)
{
    TileRow const &place = s_tiles[tile < std::size(s_tiles) ? tile : e_tile_0];
    TileParams params;
    params.tileTextureName = TileTextureName_Set0;
    params.tileRow = place.row;
    params.tileColumn = place.column;
    params.texTransform = place.transform;
    return params;
}

} // namespace std_tile_textures

namespace std_fonts
{
namespace
{

/// How the glyphs of a standard font are placed before they are measured.
struct GlyphBoxes
{
    float widthMono;
    float hOffsetMono;
    float width;
    float hOffset;
};

AutoPtr<FontTexture> MakeFont(char const *family, bool asciiSubsetOnly, unsigned int textureWidth, bool multiLevel)
{
    auto font = std::make_unique<FontTexture>(asciiSubsetOnly, textureWidth, multiLevel);
    font->SetGenerateImageFromSystemFont(true);
    font->SetFamilyName(family);
    return font;
}

void MeasureGlyphs(FontTexture &font, GlyphBoxes const &boxes)
{
    font.SetGlyphWidthMono(boxes.widthMono);
    font.SetGlyphHOffsetMono(boxes.hOffsetMono);
    font.SetGlyphWidths(boxes.width);
    font.SetGlyphHOffsets(boxes.hOffset);
    font.SetGlyphHeight(0.95f);
    font.SetGlyphVOffset(0.025f);
    font.CalcGlyphPropertiesFromImage(0.4f, 1, 1, 1, 1);
}

} // namespace

void RegisterFont_Default(ostream &, bool asciiSubsetOnly, unsigned int textureWidth, bool multiLevel,
                          string const &name)
{
    AutoPtr<FontTexture> font = MakeFont(SystemFont_Default, asciiSubsetOnly, textureWidth, multiLevel);
    MeasureGlyphs(*font, {0.8f, 0.1f, 0.7f, 0.15f});
    font->SetDefaultSpacingMono(0);
    font->SetDefaultSpacing(0.05f);
    Manager::Instance().RegisterFont(name, font);
}

void RegisterFont_Console(ostream &, bool asciiSubsetOnly, unsigned int textureWidth, bool multiLevel,
                          string const &name)
{
    AutoPtr<FontTexture> font = MakeFont(SystemFont_Console, asciiSubsetOnly, textureWidth, multiLevel);
    font->SetImageGenerationParameters(0.9f, 0, 0, 0, 0);
    MeasureGlyphs(*font, {0.55f, 0.225f, 0.5f, 0.25f});
    Manager::Instance().RegisterFont(name, font);
}

} // namespace std_fonts

namespace std_cursors
{
namespace
{

using std_tile_textures::eTile;

struct CursorRow
{
    char const *name;
    eTile tile;
    vec2 hotSpot;
};

constexpr vec2 s_middle = {0.5f, 0.5f};

constexpr CursorRow s_cursors[] = {
    {CursorName_Void, std_tile_textures::e_tile_arrow, {0, 0}},
    {CursorName_Client, std_tile_textures::e_tile_arrow, {0, 0}},
    {CursorName_Move, std_tile_textures::e_tile_move, s_middle},
    {CursorName_ResizeN, std_tile_textures::e_tile_resize_vertical, s_middle},
    {CursorName_ResizeS, std_tile_textures::e_tile_resize_vertical, s_middle},
    {CursorName_ResizeW, std_tile_textures::e_tile_resize_horizontal, s_middle},
    {CursorName_ResizeE, std_tile_textures::e_tile_resize_horizontal, s_middle},
    {CursorName_ResizeNW, std_tile_textures::e_tile_resize_falling, s_middle},
    {CursorName_ResizeSE, std_tile_textures::e_tile_resize_falling, s_middle},
    {CursorName_ResizeNE, std_tile_textures::e_tile_resize_rising, s_middle},
    {CursorName_ResizeSW, std_tile_textures::e_tile_resize_rising, s_middle},
    {CursorName_Stop, std_tile_textures::e_tile_stop, s_middle},
};

} // namespace

void RegisterCursors(ostream &)
{
    vec2 const size = {16, 16};
    color4b const white = {255, 255, 255, 255};
    // The manager owns each from its constructor on.
    for (CursorRow const &row : s_cursors)
        new ImageCursor(row.name, std_tile_textures::MakeTileParams(row.tile), row.hotSpot, size, white);
}

} // namespace std_cursors

} // namespace quillmarsh::gui
