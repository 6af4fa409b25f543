#include "plot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace viewer
{

using namespace quillmarsh;

namespace
{

constexpr Pixel s_back = 0xFF15181D;
constexpr Pixel s_laneBack = 0xFF1B1F26;
constexpr Pixel s_grid = 0xFF2B313B;
constexpr Pixel s_zero = 0xFF454E5C;
constexpr Pixel s_span = 0xFF2A3A52;
constexpr Pixel s_spanEdge = 0xFF6E9BD8;

struct ChannelColour
{
    char initial;
    Pixel colour;
};

constexpr ChannelColour s_colours[] = {
    {'r', 0xFFF2685F}, {'g', 0xFF62CC72}, {'b', 0xFF5EA2FA}, {'l', 0xFF58CBC9}, {'a', 0xFFC79BF0}};

Pixel Blend(Pixel under, Pixel over, unsigned int part)
{
    unsigned int const rest = 256 - part;
    Pixel const redBlue = ((under & 0xFF00FF) * rest + (over & 0xFF00FF) * part) >> 8 & 0xFF00FF;
    Pixel const green = ((under & 0xFF00) * rest + (over & 0xFF00) * part) >> 8 & 0xFF00;
    return 0xFF000000 | redBlue | green;
}

/// Part of a picture to draw on.
class Sheet
{
public:
    Sheet(ImageBase &picture, unsigned int left, unsigned int top, unsigned int width, unsigned int height)
        : pixels_(reinterpret_cast<Pixel *>(picture.GetSamplesB())),
          pitch_(picture.GetNumColumns()),
          left_(static_cast<int>(std::min(left, picture.GetNumColumns()))),
          top_(static_cast<int>(std::min(top, picture.GetNumRows()))),
          right_(static_cast<int>(std::min<std::uint64_t>(std::uint64_t(left) + width, picture.GetNumColumns()))),
          bottom_(static_cast<int>(std::min<std::uint64_t>(std::uint64_t(top) + height, picture.GetNumRows())))
    {
    }

    int GetLeft() const { return left_; }
    int GetTop() const { return top_; }
    int GetRight() const { return right_; }
    int GetBottom() const { return bottom_; }
    Pixel *Row(int y) const { return pixels_ + static_cast<std::size_t>(y) * pitch_; }

    void Fill(double x0, double y0, double x1, double y1, Pixel colour) const
    {
        int const begin = ClampX(x0);
        int const end = ClampX(x1);
        for (int y = ClampY(y0); begin < end && y < ClampY(y1); ++y)
            std::fill(Row(y) + begin, Row(y) + end, colour);
    }

    int ClampX(double x) const { return Clamp(x, left_, right_); }
    int ClampY(double y) const { return Clamp(y, top_, bottom_); }

private:
    static int Clamp(double value, int low, int high)
    {
        return static_cast<int>(std::clamp(value, static_cast<double>(low), static_cast<double>(high)));
    }

    Pixel *pixels_;
    std::size_t pitch_;
    int left_;
    int top_;
    int right_;
    int bottom_;
};

/// Vertical piece of a plot in a column of pixels, in 256ths of a pixel; nothing if `bottom` is not below `top`.
struct Piece
{
    int top = 0;
    int bottom = 0;
};

/// Columns of pieces that are drawn together: their pixels of one row share a line of the cache.
class PieceBlock
{
public:
    static constexpr std::size_t s_width = 16;

    PieceBlock(std::span<Piece const> pieces, Pixel colour, unsigned int part)
        : pieces_(pieces),
          colour_(colour),
          part_(part)
    {
        for (Piece const &piece : pieces)
        {
            if (piece.top >= piece.bottom)
            {
                innerBottom_ = 0;
                continue;
            }
            top_ = std::min(top_, piece.top);
            bottom_ = std::max(bottom_, piece.bottom);
            innerTop_ = std::max(innerTop_, piece.top);
            innerBottom_ = std::min(innerBottom_, piece.bottom);
        }
        for (std::size_t i = 0; i < sizeof(added_) / sizeof(added_[0]); ++i)
            added_[i] = static_cast<unsigned short>((colour >> (i % 4 * 8) & 255) * part);
    }

    int GetFirstRow() const { return top_ / 256; }
    int GetEndRow() const { return (bottom_ + 255) / 256; }

    void DrawRow(Pixel *pixels, int y) const
    {
        bool const isInside = y * 256 >= innerTop_ && y * 256 + 256 <= innerBottom_ && pieces_.size() == s_width;
        if (isInside)
            DrawWholeRow(pixels);
        else
            DrawPartOfRow(pixels, y);
    }

private:
    void DrawWholeRow(Pixel *pixels) const
    {
        constexpr std::size_t size = s_width * sizeof(Pixel);
        auto const rest = static_cast<unsigned short>(256 - part_);
        std::array<unsigned char, size> bytes;
        std::memcpy(bytes.data(), pixels, size);
        for (std::size_t i = 0; i < size; ++i)
            bytes[i] = static_cast<unsigned char>(static_cast<unsigned short>(bytes[i] * rest + added_[i]) >> 8);
        std::memcpy(pixels, bytes.data(), size);
    }

    void DrawPartOfRow(Pixel *pixels, int y) const
    {
        for (Piece const &piece : pieces_)
        {
            int const covered = std::min(piece.bottom, y * 256 + 256) - std::max(piece.top, y * 256);
            if (covered > 0)
                *pixels = Blend(*pixels, colour_, static_cast<unsigned int>(covered) * part_ / 256);
            ++pixels;
        }
    }

    std::span<Piece const> pieces_;
    Pixel colour_;
    unsigned int part_;
    /// Colour times part, byte by byte, for all columns.
    std::array<unsigned short, s_width * sizeof(Pixel)> added_;
    int top_ = std::numeric_limits<int>::max();
    int bottom_ = 0;
    /// Rows between them are covered in all columns.
    int innerTop_ = 0;
    int innerBottom_ = std::numeric_limits<int>::max();
};

/// Draws a piece in each column, with soft ends.
void DrawPieces(Sheet const &sheet, std::span<Piece const> pieces, Pixel colour, unsigned int part)
{
    auto const count = std::min(pieces.size(), static_cast<std::size_t>(sheet.GetRight() - sheet.GetLeft()));
    for (std::size_t x = 0; x < count; x += PieceBlock::s_width)
    {
        PieceBlock const block(pieces.subspan(x, std::min(PieceBlock::s_width, count - x)), colour, part);
        int const end = std::min(sheet.GetBottom(), block.GetEndRow());
        for (int y = std::max(sheet.GetTop(), block.GetFirstRow()); y < end; ++y)
            block.DrawRow(sheet.Row(y) + sheet.GetLeft() + x, y);
    }
}

/// Makes pieces of a lane from values.
class PieceMaker
{
public:
    PieceMaker(PlotLane const &lane, double thickness)
        : lane_(lane),
          thickness_(thickness),
          least_(lane.top - 4.0),
          most_(lane.top + static_cast<double>(lane.height) + 4)
    {
    }

    Piece Make(double low, double high) const
    {
        if (std::isnan(low) || std::isnan(high))
            return {};
        double top = lane_.ToPixel(high);
        double bottom = lane_.ToPixel(low);
        double const missing = thickness_ - (bottom - top);
        if (missing > 0)
        {
            top -= missing / 2;
            bottom += missing / 2;
        }
        return {Round(top), Round(bottom)};
    }

private:
    int Round(double pixel) const { return static_cast<int>(std::clamp(pixel, least_, most_) * 256); }

    PlotLane const &lane_;
    double thickness_;
    double least_;
    double most_;
};

/// Pieces of one channel: the band of its extremes, and the line of its means.
struct ChannelPieces
{
    std::vector<Piece> band;
    std::vector<Piece> line;
};

/// Returns the extent that reaches the one before, too, so that a plot has no gaps.
Extent Connect(Extent extent, Extent const &before)
{
    if (extent.low > before.high)
        extent.low = before.high;
    if (extent.high < before.low)
        extent.high = before.low;
    return extent;
}

/// Finds the edges of columns that have at least one sample.
class ColumnEdges
{
public:
    ColumnEdges(PlotLayout const &layout, std::uint64_t numSamples)
        : first_(std::floor(layout.begin / layout.samplesPerPixel + 1e-6)),
          step_(layout.samplesPerPixel),
          numSamples_(static_cast<double>(numSamples))
    {
        // Edges at whole runs need no samples at their ends; an eighth of a pixel is not seen.
        while (snap_ * SignalLevels::s_factor * 8 <= step_)
            snap_ *= SignalLevels::s_factor;
    }

    /// Columns stand at multiples of their width, so a plot that moves does not flicker.
    std::uint64_t Get(unsigned int column) const
    {
        double const place = std::floor((first_ + column) * step_ / snap_ + 0.5) * snap_;
        return static_cast<std::uint64_t>(std::clamp(place, 0.0, numSamples_));
    }

private:
    double first_;
    double step_;
    double numSamples_;
    double snap_ = 1;
};

void MakeBands(ChannelPieces &pieces, SignalLevels const &levels, unsigned int channel, PlotLayout const &layout,
               PieceMaker const &maker)
{
    ColumnEdges const edges(layout, levels.GetNumSamples());
    std::uint64_t begin = edges.Get(0);
    // The column to the left gives the first one its connection.
    Extent before = levels.GetExtent(channel, begin > 0 ? begin - 1 : 0, begin);
    for (unsigned int x = 0; x < layout.width; ++x)
    {
        std::uint64_t const end = edges.Get(x + 1);
        Extent const extent = levels.GetExtent(channel, begin, end);
        Extent const joined = Connect(extent, before);
        pieces.band.push_back(maker.Make(static_cast<double>(joined.low), static_cast<double>(joined.high)));
        Extent const mean = Connect({extent.mean, extent.mean, 0}, {before.mean, before.mean, 0});
        pieces.line.push_back(maker.Make(static_cast<double>(mean.low), static_cast<double>(mean.high)));
        before = extent;
        begin = end;
    }
}

/// Values between samples, on straight lines.
class Interpolation
{
public:
    Interpolation(SignalLevels const &levels, unsigned int channel) : levels_(levels), channel_(channel) {}

    /// Returns the value of a sample; NaN where there is none.
    double GetSample(double index) const
    {
        if (index < 0 || index >= static_cast<double>(levels_.GetNumSamples()))
            return std::numeric_limits<double>::quiet_NaN();
        return levels_.GetValue(channel_, static_cast<std::uint64_t>(index));
    }
    double GetPlace(double place) const
    {
        double const index = std::floor(place - 0.5);
        double const part = place - 0.5 - index;
        double const low = GetSample(index);
        return part > 0 ? low + (GetSample(index + 1) - low) * part : low;
    }

private:
    SignalLevels const &levels_;
    unsigned int channel_;
};

void MakeLine(ChannelPieces &pieces, SignalLevels const &levels, unsigned int channel, PlotLayout const &layout,
              PieceMaker const &maker)
{
    Interpolation const values(levels, channel);
    for (unsigned int x = 0; x < layout.width; ++x)
    {
        double const begin = layout.ToPlace(layout.left + x);
        double const end = begin + layout.samplesPerPixel;
        double low = std::numeric_limits<double>::infinity();
        double high = -low;
        auto const add = [&](double value)
        {
            // False for NaN.
            low = value < low ? value : low;
            high = value > high ? value : high;
        };
        add(values.GetPlace(begin));
        add(values.GetPlace(end));
        double const point = std::ceil(begin - 0.5);
        if (point + 0.5 < end)
            add(values.GetSample(point));
        pieces.line.push_back(low <= high ? maker.Make(low, high) : Piece());
    }
}

void DrawDot(Sheet const &sheet, double x, double y, double radius, Pixel colour)
{
    for (int row = sheet.ClampY(y - radius - 1); row < sheet.ClampY(y + radius + 2); ++row)
    {
        for (int column = sheet.ClampX(x - radius - 1); column < sheet.ClampX(x + radius + 2); ++column)
        {
            double const distance = std::hypot(column + 0.5 - x, row + 0.5 - y);
            double const part = std::clamp(radius + 0.5 - distance, 0.0, 1.0);
            Pixel &pixel = sheet.Row(row)[column];
            pixel = Blend(pixel, colour, static_cast<unsigned int>(part * 256));
        }
    }
}

/// Least distance of samples that have dots, in thicknesses of a line.
constexpr double s_dotDistance = 5;

void DrawDots(Sheet const &sheet, SignalLevels const &levels, unsigned int channel, PlotLayout const &layout,
              PlotLane const &lane, Pixel colour)
{
    double const count = static_cast<double>(levels.GetNumSamples());
    double const end = std::min(count, std::ceil(layout.ToPlace(layout.left + layout.width)));
    for (double index = std::max(0.0, std::floor(layout.begin)); index < end; ++index)
    {
        double const value = levels.GetValue(channel, static_cast<std::uint64_t>(index));
        if (std::isfinite(value))
            DrawDot(sheet, layout.ToPixel(index + 0.5), lane.ToPixel(value), layout.size.line * 1.6, colour);
    }
}

void DrawChannel(Sheet const &sheet, SignalLevels const &levels, unsigned int channel, PlotLayout const &layout,
                 PlotLane const &lane)
{
    Pixel const colour = GetChannelColour(levels.GetSignalChannels()[channel]);
    PieceMaker const maker(lane, layout.size.line);
    ChannelPieces pieces;
    if (layout.samplesPerPixel > 1)
    {
        MakeBands(pieces, levels, channel, layout, maker);
        // The more samples in a pixel, the less a band says, and the more the mean does.
        double const fade = std::clamp(std::log2(layout.samplesPerPixel) / 5, 0.0, 1.0);
        DrawPieces(sheet, pieces.band, colour, static_cast<unsigned int>(256 - fade * 150));
        DrawPieces(sheet, pieces.line, Blend(colour, 0xFFFFFFFF, 110), static_cast<unsigned int>(fade * 230));
        return;
    }
    MakeLine(pieces, levels, channel, layout, maker);
    DrawPieces(sheet, pieces.line, colour, 256);
    if (layout.samplesPerPixel * s_dotDistance * layout.size.line <= 1)
        DrawDots(sheet, levels, channel, layout, lane, Blend(colour, 0xFFFFFFFF, 60));
}

/// Fills a lane with what stands behind the plots.
void DrawLaneBack(Sheet const &sheet, PlotSettings const &settings, PlotLayout const &layout, PlotLane const &lane)
{
    double const top = sheet.GetTop();
    double const bottom = sheet.GetBottom();
    double const right = sheet.GetRight();
    sheet.Fill(layout.left, top, right, bottom, s_laneBack);
    double const spanBegin = layout.ToPixel(static_cast<double>(settings.span.begin));
    double const spanEnd = layout.ToPixel(static_cast<double>(settings.span.end));
    if (!settings.span.IsEmpty())
        sheet.Fill(spanBegin, top, std::max(spanEnd, spanBegin + 1), bottom, s_span);
    for (PlotTick const &tick : layout.ticks)
        sheet.Fill(std::floor(tick.pixel), top, std::floor(tick.pixel) + 1, bottom, s_grid);
    for (PlotTick const &tick : lane.ticks)
        sheet.Fill(layout.left, std::floor(tick.pixel), right, std::floor(tick.pixel) + 1, s_grid);
    double const zero = std::floor(lane.ToPixel(0));
    if (lane.low < 0 && lane.high > 0)
        sheet.Fill(layout.left, zero, right, zero + 1, s_zero);
    if (settings.span.IsEmpty())
        return;
    sheet.Fill(std::floor(spanBegin), top, std::floor(spanBegin) + 1, bottom, s_spanEdge);
    sheet.Fill(std::floor(spanEnd), top, std::floor(spanEnd) + 1, bottom, s_spanEdge);
}

} // namespace

Pixel GetChannelColour(Channel const &channel)
{
    for (ChannelColour const &row : s_colours)
    {
        if (row.initial == channel.name[0])
            return row.colour;
    }
    return 0xFFFFFFFF;
}

Pixel GetPlotBackground()
{
    return s_back;
}

void ComposePlot(ImageBase &picture, SignalLevels const &levels, PlotSettings const &settings, PlotLayout const &layout)
{
    Sheet const whole(picture, 0, 0, picture.GetNumColumns(), picture.GetNumRows());
    whole.Fill(0, 0, picture.GetNumColumns(), picture.GetNumRows(), s_back);
    for (PlotLane const &lane : layout.lanes)
    {
        Sheet const sheet(picture, layout.left, lane.top, layout.width, lane.height);
        DrawLaneBack(sheet, settings, layout, lane);
        for (unsigned int channel = 0; channel < levels.GetSignalChannels().size(); ++channel)
        {
            if ((lane.channels >> channel & 1) != 0)
                DrawChannel(sheet, levels, channel, layout, lane);
        }
    }
}

} // namespace viewer
