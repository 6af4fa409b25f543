#include "source/gui/consolecells.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace quillmarsh::console_window
{
namespace
{

using platform::PixelRows;
using platform::drawing::Canvas;
using platform::drawing::Rect;

constexpr std::ptrdiff_t s_pixelBytes = 4;
/// A box, which monospace fonts contain, unlike U+FFFD: it takes one cell.
constexpr unsigned int s_replacement = 0x25a1;
/// Beyond it, a byte counts as a character, so that no line takes long.
constexpr std::size_t s_maxExactColumns = 16384;
/// Tiles are dropped when there are more colours, or more clusters of a colour.
constexpr std::size_t s_maxColors = 16;
constexpr std::size_t s_maxClusters = 2048;

bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

constexpr std::size_t s_wordBytes = sizeof(std::uint64_t);
/// Words that are counted at once. Sums of their bytes fit a byte.
constexpr std::size_t s_blockWords = 16;

/// Returns how many bytes of up to s_blockWords words begin a character.
std::size_t CountBegins(char const *bytes, std::size_t numWords)
{
    constexpr std::uint64_t ones = 0x0101010101010101u;
    std::uint64_t continuations = 0;
    for (std::size_t i = 0; i < numWords; ++i)
    {
        std::uint64_t word;
        std::memcpy(&word, bytes + i * s_wordBytes, s_wordBytes);
        continuations += (word >> 7) & (~word >> 6) & ones;
    }
    return numWords * s_wordBytes - static_cast<std::size_t>(continuations * ones >> 56);
}

/// Returns the position of the character after `count` characters. A character has at most four bytes.
std::size_t SkipColumns(std::string_view text, std::size_t count)
{
    std::size_t const exact = std::min(count, s_maxExactColumns);
    std::size_t const end = std::min(text.size(), 4 * exact);
    std::size_t at = 0, skipped = 0;
    for (std::size_t const numWords : {s_blockWords, std::size_t{1}})
    {
        std::size_t const step = numWords * s_wordBytes;
        for (; at + step <= end; at += step)
        {
            std::size_t const begins = CountBegins(text.data() + at, numWords);
            if (skipped + begins > exact)
                break;
            skipped += begins;
        }
    }
    for (; at < end && (IsContinuation(text[at]) || skipped < exact); ++at)
        skipped += IsContinuation(text[at]) ? 0 : 1;
    if (count == exact)
        return at;
    at += std::min(count - exact, text.size() - at);
    std::size_t const last = std::min(text.size(), at + 3);
    while (at < last && IsContinuation(text[at]))
        ++at;
    return at;
}

struct CodeRange
{
    unsigned int first;
    unsigned int last;
};

/// Accents and other signs that are drawn onto the character before them, and signs that are not visible.
constexpr CodeRange s_marks[] = {
    {0x0300, 0x036f}, {0x1ab0, 0x1aff}, {0x1dc0, 0x1dff}, {0x200b, 0x200f},
    {0x20d0, 0x20ff}, {0xfe00, 0xfe0f}, {0xfe20, 0xfe2f},
};

bool IsMark(unsigned int code)
{
    return std::any_of(std::begin(s_marks), std::end(s_marks),
                       [code](CodeRange const &range) { return code >= range.first && code <= range.last; });
}

/// Returns the code of the first character, and its number of bytes; U+25A1 and one byte when there is none.
unsigned int Decode(std::string_view text, std::size_t &length)
{
    auto const first = static_cast<unsigned char>(text.front());
    length = 1;
    if (first < 0x80)
        return first;
    std::size_t const size = static_cast<std::size_t>(std::countl_one(first));
    bool const isComplete =
        size >= 2 && size <= 4 && text.size() >= size &&
        std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(size), &IsContinuation);
    if (!isComplete)
        return s_replacement;
    unsigned int code = first & (0xffu >> (size + 1));
    for (std::size_t i = 1; i < size; ++i)
        code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3fu);
    length = size;
    constexpr unsigned int least[] = {0, 0, 0x80, 0x800, 0x10000};
    return code < least[size] ? s_replacement : code;
}

bool IsDrawable(unsigned int code)
{
    bool const isControl = code < 0x20 || (code >= 0x7f && code < 0xa0);
    bool const isSurrogate = code >= 0xd800 && code < 0xe000;
    return !isControl && !isSurrogate && code < 0xfffe;
}

void Fill(PixelRows const &pixels, Rect const &rect, platform::drawing::Color color)
{
    Canvas(pixels).FillRectangle(rect, color);
}

} // namespace

std::string_view GetColumns(std::string_view text, std::size_t begin, std::size_t length)
{
    std::string_view const rest = text.substr(SkipColumns(text, begin));
    return rest.substr(0, SkipColumns(rest, length));
}

void TakeCluster(std::string_view &text, wstring &cluster)
{
    cluster.clear();
    std::size_t length = 0;
    unsigned int const first = Decode(text, length);
    text.remove_prefix(length);
    if (first == '\r')
        return;
    cluster.push_back(static_cast<unsigned short>(IsDrawable(first) ? first : s_replacement));
    while (!text.empty())
    {
        unsigned int const code = Decode(text, length);
        if (!IsMark(code))
            return;
        cluster.push_back(static_cast<unsigned short>(code));
        text.remove_prefix(length);
    }
}

CellPainter::CellPainter(platform::drawing::Font &font, Color paper)
    : font_(font),
      paper_(paper),
      cellWidth_(std::max(static_cast<int>(std::ceil(font.GetAdvance('M') - 0.01f)), 1)),
      cellHeight_(std::max(static_cast<int>(std::ceil(font.GetLineHeight() - 0.01f)), 1))
{
}

CellPainter::~CellPainter() = default;

void CellPainter::DrawRow(PixelRows const &pixels, Rect const &row, std::string_view text, Color color)
{
    ColorTiles &tiles = FindTiles(color);
    int x = row.x;
    int const end = row.x + row.width;
    while (!text.empty())
    {
        Tile const &tile = FindTile(tiles, text, color);
        if (x + tile.width > end)
            break;
        auto const stride = static_cast<std::size_t>(tile.width * s_pixelBytes);
        unsigned char const *from = tile.pixels.data();
        unsigned char *to = pixels.GetRow(static_cast<std::size_t>(row.y)) + x * s_pixelBytes;
        for (int y = 0; y < cellHeight_ && stride > 0; ++y, from += stride, to += pixels.stride)
            std::memcpy(to, from, stride);
        x += tile.width;
    }
    Fill(pixels, {x, row.y, end - x, row.height}, paper_);
}

CellPainter::ColorTiles &CellPainter::FindTiles(Color color)
{
    unsigned int const key =
        static_cast<unsigned int>(color.red) << 16 | static_cast<unsigned int>(color.green) << 8 | color.blue;
    auto const found = std::find_if(colors_.begin(), colors_.end(),
                                    [key](AutoPtr<ColorTiles> const &each) { return each->color == key; });
    if (found != colors_.end())
        return **found;
    if (colors_.size() == s_maxColors)
        colors_.clear();
    colors_.push_back(std::make_unique<ColorTiles>());
    colors_.back()->color = key;
    return *colors_.back();
}

CellPainter::Tile const &CellPainter::FindTile(ColorTiles &tiles, std::string_view &text, Color color)
{
    // Most text is ASCII, and nothing follows that belongs to the character.
    auto const first = static_cast<unsigned char>(text.front());
    bool const isAlone = text.size() < 2 || static_cast<unsigned char>(text[1]) < 0x80;
    Tile *tile = nullptr;
    if (first >= ' ' && first < 0x7f && isAlone)
    {
        tile = &tiles.ascii[first];
        if (!tile->pixels.empty())
            return text.remove_prefix(1), *tile;
    }
    TakeCluster(text, cluster_);
    if (!tile)
    {
        if (tiles.others.size() == s_maxClusters)
            tiles.others.clear();
        tile = &tiles.others[cluster_];
    }
    if (tile->pixels.empty() && !cluster_.empty())
        DrawTile(*tile, cluster_, color);
    return *tile;
}

void CellPainter::DrawTile(Tile &tile, wstring const &cluster, Color color)
{
    bool const isWide = font_.GetAdvance(cluster.front()) > 1.5f * static_cast<float>(cellWidth_);
    tile.width = isWide ? 2 * cellWidth_ : cellWidth_;
    tile.pixels.resize(static_cast<std::size_t>(tile.width * s_pixelBytes * cellHeight_));
    PixelRows const rows = {tile.pixels.data(), tile.width * s_pixelBytes, static_cast<unsigned int>(cellHeight_),
                            static_cast<unsigned int>(tile.width), false};
    Canvas canvas(rows);
    canvas.Clear(paper_);
    canvas.DrawText(cluster, font_, {0, 0, static_cast<float>(tile.width), static_cast<float>(cellHeight_)}, false,
                    color);
}

} // namespace quillmarsh::console_window
