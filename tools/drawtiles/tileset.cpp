#include "tileset.h"

#include "look_shapes/marks.h"

namespace drawtiles
{
namespace
{

using look_shapes::Area;
using look_shapes::eMark;
using look_shapes::Sheet;

constexpr unsigned int s_numTiles = 4;
constexpr unsigned int s_tileSize = 32;
/// Threshold of the loader.
constexpr unsigned int s_threshold = 0x60;

struct Place
{
    eMark mark;
    unsigned int row;
    unsigned int column;
};

/// The arrow to the right and the cursors stand where the standard tiles look for them, and turn them. Row 3 is free
/// for tiles that are named by row and column.
constexpr Place s_places[] = {
    {eMark::e_check, 0, 0},        {eMark::e_dot, 0, 1},        {eMark::e_arrowRight, 0, 3},
    {eMark::e_cursorArrow, 1, 0},  {eMark::e_cursorMove, 1, 1}, {eMark::e_cursorHorizontal, 1, 2},
    {eMark::e_cursorRising, 1, 3}, {eMark::e_minus, 2, 0},      {eMark::e_plus, 2, 1},
    {eMark::e_close, 2, 2},        {eMark::e_cursorStop, 2, 3}, {eMark::e_information, 3, 0},
    {eMark::e_warning, 3, 1},      {eMark::e_question, 3, 2},   {eMark::e_error, 3, 3},
};

/// Place of the tile without any edge, for filled areas.
constexpr Area s_filled = {2 * s_tileSize, 0, s_tileSize, s_tileSize};

unsigned char LiftAboveThreshold(unsigned char coverage)
{
    if (coverage > s_threshold)
        return coverage;
    return static_cast<unsigned char>(coverage > s_threshold / 2 ? s_threshold + 1 : 0);
}

} // namespace

Sheet DrawTileSet()
{
    Sheet smooth(s_numTiles * s_tileSize, s_numTiles * s_tileSize);
    for (Place const &place : s_places)
        DrawMark(smooth, place.column * s_tileSize, place.row * s_tileSize, place.mark, s_tileSize);
    look_shapes::Shape const everything = {look_shapes::eShape::e_box, false, {-1, -1, 17, 17, 0}};
    DrawShapes(smooth, s_filled, {&everything, 1}, s_tileSize / look_shapes::s_markSize);

    Sheet lifted(smooth.GetWidth(), smooth.GetHeight());
    for (unsigned int y = 0; y < smooth.GetHeight(); ++y)
    {
        for (unsigned int x = 0; x < smooth.GetWidth(); ++x)
            lifted.Cover(x, y, LiftAboveThreshold(smooth.Get(x, y)));
    }
    return lifted;
}

} // namespace drawtiles
