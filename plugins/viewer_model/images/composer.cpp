#include "composer.h"

#include "rowblends.h"

#include <quillmarsh/basetools/diagnostics.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;

namespace
{

/// Where the pixels of one axis lie in a level.
struct AxisPlaces
{
    /// The pixels that show the image: from `first` to before `end`, counted in the area.
    unsigned int first = 0;
    unsigned int end = 0;
    /// For each of these, the sample, and for smooth pictures the next one with its weight.
    std::vector<SamplePlace> places;
};

/// One axis of a picture to make.
struct Axis
{
    unsigned int areaStart;
    unsigned int areaSize;
    /// Size of the picture; the placement's position and zoom.
    double viewSize;
    double position;
    double zoom;
    /// Size of the image and of its level, whose samples are `scale` samples of the image.
    unsigned int imageSize;
    unsigned int levelSize;
    double scale;
};

SamplePlace FindPlace(double position, unsigned int size, bool smooth)
{
    double const last = size - 1;
    if (!smooth)
    {
        auto const index = static_cast<unsigned int>(std::min(std::floor(position), last));
        return {index, index, 0};
    }
    // Whole parts of the weight, counted from the middle of the first sample.
    double const parts = std::clamp(std::floor((position - 0.5) * s_blendParts + 0.5), 0.0, last * s_blendParts);
    auto const whole = static_cast<std::uint64_t>(parts);
    auto const index = static_cast<unsigned int>(whole / s_blendParts);
    auto const weight = static_cast<unsigned int>(whole % s_blendParts);
    return {index, weight != 0 ? index + 1 : index, weight};
}

AxisPlaces FindPlaces(Axis const &axis, bool smooth)
{
    AxisPlaces result;
    for (unsigned int i = 0; i < axis.areaSize; ++i)
    {
        double const pixel = static_cast<double>(axis.areaStart) + i + 0.5;
        double const sample = axis.position + (pixel - axis.viewSize / 2) / axis.zoom;
        if (!(sample >= 0 && sample < axis.imageSize))
            continue;
        if (result.places.empty())
            result.first = i;
        result.end = i + 1;
        result.places.push_back(FindPlace(sample / axis.scale, axis.levelSize, smooth));
    }
    return result;
}

bool AreEqual(SamplePlace const &a, SamplePlace const &b)
{
    return a.index == b.index && a.weight == b.weight;
}

/// True if each place is the sample after the one before.
bool AreRun(std::span<SamplePlace const> places)
{
    for (std::size_t i = 0; i < places.size(); ++i)
    {
        if (places[i].weight != 0 || places[i].index != places[0].index + i)
            return false;
    }
    return true;
}

/// Returns what to add to the pixels of an axis, so that the checkerboard begins at the image's edge, and moves with it.
int FindBoardShift(double edge)
{
    constexpr double period = 16;
    double const rest = std::fmod(std::round(edge), period);
    return std::isfinite(rest) ? static_cast<int>(period - rest) % 16 : 0;
}

/// Makes the rows of a picture from a level.
class RowComposer
{
public:
    RowComposer(ImageBase const &level, ToneMap const &tones, AxisPlaces const &columns, bool smooth)
        : level_(level),
          tones_(tones),
          columns_(columns),
          blender_(smooth ? MakeRowBlender(level.GetSampleFormat()) : nullptr),
          isRun_(AreRun(columns.places)),
          samples_(columns.places.size() * level.GetSampleByteSize())
    {
    }

    /// Writes the pixels of a row, whose first one lies at (x, y) of the picture.
    void Compose(SamplePlace const &row, Pixel *pixels, int x, int y)
    {
        std::size_t const rowSize = level_.GetRowByteSize();
        unsigned char const *const upper = level_.GetSamplesB() + row.index * rowSize;
        unsigned char const *const lower = level_.GetSamplesB() + row.next * rowSize;
        std::span<SamplePlace const> const places = columns_.places;
        unsigned char const *samples = samples_.data();
        if (isRun_ && row.weight == 0)
            samples = upper + std::size_t{places.front().index} * level_.GetSampleByteSize();
        else if (blender_)
            blender_->Blend(samples_.data(), upper, lower, row.weight, places);
        else
            PickSamples(samples_.data(), upper, level_.GetSampleByteSize(), places);
        tones_.Map(samples, static_cast<unsigned int>(places.size()), pixels, x, y);
    }

private:
    ImageBase const &level_;
    ToneMap const &tones_;
    AxisPlaces const &columns_;
    AutoPtr<RowBlender> blender_;
    /// True if no sample of a row has to be moved.
    bool isRun_;
    std::vector<unsigned char> samples_;
};

} // namespace

void ComposeImage(ImageBase &picture, PixelArea const &area, ImageLevels const &levels, ToneMap const &tones,
                  Placement const &placement, bool smooth, int level, Pixel background)
{
    bool const isPicture = picture.GetSampleFormat() == e_format_A8R8G8B8;
    QUILLMARSH_ASSERT(isPicture, "Pictures of images have the format A8R8G8B8.");
    if (!isPicture || area.x >= picture.GetNumColumns() || area.y >= picture.GetNumRows())
        return;
    unsigned int const width = std::min(area.width, picture.GetNumColumns() - area.x);
    unsigned int const height = std::min(area.height, picture.GetNumRows() - area.y);
    unsigned int const number = std::min(
        level >= 0 ? static_cast<unsigned int>(level) : levels.FindLevel(placement.zoom), levels.GetNumLevels() - 1);
    ImageBase const &image = levels.GetLevel(0), &source = levels.GetLevel(number);
    double const scale = std::ldexp(1, static_cast<int>(number));
    bool const isBlended = smooth && placement.zoom < 1;
    AxisPlaces columns, rows;
    if (placement.zoom > 0)
    {
        columns = FindPlaces({area.x, width, static_cast<double>(picture.GetNumColumns()), placement.x, placement.zoom,
                              image.GetNumColumns(), source.GetNumColumns(), scale},
                             isBlended);
        rows = FindPlaces({area.y, height, static_cast<double>(picture.GetNumRows()), placement.y, placement.zoom,
                           image.GetNumRows(), source.GetNumRows(), scale},
                          isBlended);
    }
    RowComposer composer(source, tones, columns, isBlended);
    int const boardX =
        FindBoardShift(placement.ToViewX(0, picture.GetNumColumns())) + static_cast<int>(area.x + columns.first);
    int const boardY = FindBoardShift(placement.ToViewY(0, picture.GetNumRows()));
    Pixel const *previous = nullptr;
    for (unsigned int i = 0; i < height; ++i)
    {
        unsigned int const y = area.y + i;
        int const board = boardY + static_cast<int>(y);
        auto *const pixels =
            reinterpret_cast<Pixel *>(picture.GetSamplesB() + std::size_t{y} * picture.GetRowByteSize()) + area.x;
        if (i < rows.first || i >= rows.end || columns.places.empty())
        {
            std::fill_n(pixels, width, background);
            continue;
        }
        std::size_t const row = i - rows.first;
        std::fill_n(pixels, columns.first, background);
        std::fill(pixels + columns.end, pixels + width, background);
        bool const isSame =
            previous && AreEqual(rows.places[row], rows.places[row - 1]) && (!tones.DependsOnPlace() || board % 8 != 0);
        if (isSame)
            std::copy(previous + columns.first, previous + columns.end, pixels + columns.first);
        else
            composer.Compose(rows.places[row], pixels + columns.first, boardX, board);
        previous = pixels;
    }
}

} // namespace viewer
