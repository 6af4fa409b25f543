#include "display.h"

#include "palettes.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace viewer
{

using namespace quillmarsh;

namespace
{

constexpr char const *s_paletteNames[] = {"none", "heat", "rainbow", "spectral", "cyclic"};

constexpr Pixel s_opaque = 0xFF000000;

/// Lays a colour over another one: `alpha` of 255 parts of it, rounded to the nearest.
Pixel LayOver(Pixel colour, unsigned int alpha, Pixel below)
{
    constexpr Pixel mask = 0x00FF00FF;
    auto const blend = [&](unsigned int shift)
    {
        Pixel const sum = (colour >> shift & mask) * alpha + (below >> shift & mask) * (255 - alpha) + 0x00800080;
        return (sum + (sum >> 8 & mask)) >> 8 & mask;
    };
    return s_opaque | blend(0) | (blend(8) & 0xFF) << 8;
}

} // namespace

std::span<char const *const> GetPaletteNames()
{
    return s_paletteNames;
}

struct ToneMap::Layout
{
    eSampleFormat format;
    /// The channels in the order of GetChannels(), without alpha where there are colours too.
    unsigned int numColours;
    std::array<Field, 3> colours;
    Field alpha;
};

constexpr ToneMap::Layout ToneMap::s_layouts[] = {
    {e_format_L8, 1, {{{0, 255}}}, {}},
    {e_format_A8, 1, {{{0, 255}}}, {}},
    {e_format_A8L8, 1, {{{0, 255}}}, {8, 255}},
    {e_format_A4R4G4B4, 3, {{{8, 15}, {4, 15}, {0, 15}}}, {12, 15}},
    {e_format_A1R5G5B5, 3, {{{10, 31}, {5, 31}, {0, 31}}}, {15, 1}},
    {e_format_X8R8G8B8, 3, {{{16, 255}, {8, 255}, {0, 255}}}, {}},
    {e_format_A8R8G8B8, 3, {{{16, 255}, {8, 255}, {0, 255}}}, {24, 255}},
    {e_format_FP32NormL, 0, {}, {}},
    {e_format_FP32NormA, 0, {}, {}},
};

ToneMap::ToneMap(eSampleFormat format, DisplaySettings const &settings)
    : settings_(settings),
      sampleByteSize_(sample_formats::ExtractByteSize(format)),
      colours_(GetPalette(settings.palette))
{
    MakeThresholds();
    for (Layout const &layout : s_layouts)
    {
        if (layout.format == format)
            SelectFields(layout);
    }
    MakeTables();
}

void ToneMap::SelectFields(Layout const &layout)
{
    kind_ = layout.numColours == 0 ? eKind::e_float : layout.numColours == 1 ? eKind::e_value : eKind::e_colours;
    colourFields_ = layout.colours;
    if (kind_ == eKind::e_float)
        return;
    if (settings_.channel < 0)
    {
        alphaField_ = layout.alpha;
        isOverBoard_ = settings_.showAlpha && alphaField_.largest != 0;
        return;
    }
    kind_ = eKind::e_value;
    auto const channel = static_cast<unsigned int>(settings_.channel);
    colourFields_[0] = channel < layout.numColours ? layout.colours[channel] : layout.alpha;
}

void ToneMap::MakeThresholds()
{
    double const range = settings_.high - settings_.low;
    // A window without width: anything above its place is far above white.
    scale_ = range != 0 ? std::exp2(settings_.exposure) / range : 1e300;
    double const gamma = settings_.gamma > 0 ? settings_.gamma : 1;
    thresholds_[0] = 0;
    for (unsigned int step = 1; step < 256; ++step)
        thresholds_[step] = std::pow((step - 0.5) / 255, gamma);
    thresholds_[256] = std::numeric_limits<double>::infinity();
    unsigned int step = 0;
    for (std::size_t i = 0; i < firstSteps_.size(); ++i)
    {
        while (thresholds_[step + 1] <= static_cast<double>(i) / static_cast<double>(firstSteps_.size() - 1))
            ++step;
        firstSteps_[i] = static_cast<unsigned char>(step);
    }
}

unsigned int ToneMap::FindStep(double part) const
{
    double const product = (part - settings_.low) * scale_;
    double const value = product > 0 ? std::min(product, 1.0) : 0;
    unsigned int step = firstSteps_[static_cast<std::size_t>(value * static_cast<double>(firstSteps_.size() - 1))];
    while (value >= thresholds_[step + 1])
        ++step;
    return step;
}

void ToneMap::MakeTables()
{
    unsigned int const largest = colourFields_[0].largest;
    isIdentity_ = largest == 255 && settings_.palette == ePalette::e_none;
    for (unsigned int value = 0; value <= largest; ++value)
    {
        steps_[value] = static_cast<unsigned char>(FindStep(largest == 0 ? 0 : static_cast<double>(value) / largest));
        valueColours_[value] = colours_[steps_[value]];
        isIdentity_ = isIdentity_ && steps_[value] == value;
    }
    for (unsigned int value = 0; value <= alphaField_.largest; ++value)
        alphas_[value] = static_cast<unsigned char>(alphaField_.largest == 0 ? 255 : value * 255 / alphaField_.largest);
}

Pixel ToneMap::FindColour(unsigned int word) const
{
    auto const read = [&](unsigned int index)
    { return word >> colourFields_[index].shift & colourFields_[index].largest; };
    if (kind_ == eKind::e_value)
        return valueColours_[read(0)];
    if (isIdentity_)
        return s_opaque | word;
    unsigned int const red = steps_[read(0)], green = steps_[read(1)], blue = steps_[read(2)];
    if (settings_.palette == ePalette::e_none)
        return s_opaque | red << 16 | green << 8 | blue;
    return colours_[(77 * red + 150 * green + 29 * blue + 128) >> 8];
}

template<typename Word>
void ToneMap::MapWords(unsigned char const *samples, unsigned int count, Pixel *pixels, int x, int y) const
{
    for (unsigned int i = 0; i < count; ++i)
    {
        Word word;
        std::memcpy(&word, samples + i * sizeof(word), sizeof(word));
        pixels[i] = FindColour(word);
        if (!isOverBoard_)
            continue;
        int const place = (x + static_cast<int>(i)) >> 3 ^ y >> 3;
        pixels[i] =
            LayOver(pixels[i], alphas_[word >> alphaField_.shift & alphaField_.largest], s_checkerboard[place & 1]);
    }
}

void ToneMap::MapFloats(unsigned char const *samples, unsigned int count, Pixel *pixels) const
{
    for (unsigned int i = 0; i < count; ++i)
    {
        float value;
        std::memcpy(&value, samples + i * sizeof(value), sizeof(value));
        pixels[i] = MapValue(static_cast<double>(value));
    }
}

void ToneMap::Map(unsigned char const *samples, unsigned int count, Pixel *pixels, int x, int y) const
{
    if (kind_ == eKind::e_unknown)
        std::fill_n(pixels, count, s_opaque);
    else if (kind_ == eKind::e_float)
        MapFloats(samples, count, pixels);
    else if (sampleByteSize_ == 1)
        MapWords<std::uint8_t>(samples, count, pixels, x, y);
    else if (sampleByteSize_ == 2)
        MapWords<std::uint16_t>(samples, count, pixels, x, y);
    else
        MapWords<std::uint32_t>(samples, count, pixels, x, y);
}

} // namespace viewer
