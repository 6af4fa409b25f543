// Text of the console window in cells: one or two for each character.
#ifndef QUILLMARSH_SOURCE_GUI_CONSOLECELLS_H
#define QUILLMARSH_SOURCE_GUI_CONSOLECELLS_H

#include "source/platform/drawing.h"

#include <array>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

namespace quillmarsh::console_window
{

/// Returns the part of a UTF-8 text that begins at a character and has at most that many characters. Takes time for
/// the first 16384 characters at most: each byte after them counts as a character.
std::string_view GetColumns(std::string_view text, std::size_t begin, std::size_t length);

/// Takes the first cluster from a UTF-8 text: a character and the accents that follow it. A byte that is no part of a
/// character, a character above U+FFFF and a control character become U+25A1; the cluster of a carriage return is empty.
void TakeCluster(std::string_view &text, wstring &cluster);

/// Draws text with a monospace font into a grid of cells. Each cluster is drawn by the drawing service once for each
/// colour, and copied from then on. Only the thread that made it may use it.
class CellPainter : NoCopy
{
public:
    using Color = platform::drawing::Color;

    /// The font is borrowed. `paper` is the ground on which all text is drawn.
    CellPainter(platform::drawing::Font &font, Color paper);
    ~CellPainter();

    int GetCellWidth() const { return cellWidth_; }
    int GetCellHeight() const { return cellHeight_; }

    /// Draws a text at the left end of a row of cells, and fills the row to its end. `row` lies within the pixels and is
    /// as high as a cell. Clusters without room for all of their cells are not drawn.
    void DrawRow(platform::PixelRows const &pixels, platform::drawing::Rect const &row, std::string_view text,
                 Color color);

private:
    /// A drawn cluster.
    struct Tile
    {
        int width = 0;
        std::vector<unsigned char> pixels;
    };
    /// The clusters of one colour.
    struct ColorTiles
    {
        unsigned int color = 0;
        std::array<Tile, 128> ascii;
        std::map<wstring, Tile> others;
    };

    ColorTiles &FindTiles(Color color);
    Tile const &FindTile(ColorTiles &tiles, std::string_view &text, Color color);
    void DrawTile(Tile &tile, wstring const &cluster, Color color);

    platform::drawing::Font &font_;
    Color const paper_;
    int cellWidth_;
    int cellHeight_;
    wstring cluster_;
    std::vector<AutoPtr<ColorTiles>> colors_;
};

} // namespace quillmarsh::console_window

#endif
