#include "display.h"

#include "checkerboard.h"
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
constexpr Pixel s_withoutAlpha = 0x00FFFFFF;

} // namespace

std::span<char const *const> GetPaletteNames()
{
    return s_paletteNames;
}

ToneMap::ToneMap(eSampleFormat format, DisplaySettings const &settings)
    : settings_(settings),
      sampleByteSize_(sample_formats::ExtractByteSize(format)),
      colours_(GetPalette(settings.palette))
{
    MakeThresholds();
    SelectFields(GetChannels(format));
    MakeTables();
}

void ToneMap::SelectFields(std::span<Channel const> channels)
{
    if (channels.empty())
        return;
    if (channels.front().isFloat)
    {
        kind_ = eKind::e_float;
        return;
    }
    auto const fieldOf = [&](std::size_t index) -> Field {
        return {channels[index].shift, static_cast<unsigned int>(channels[index].largest)};
    };
    bool const areColours = settings_.channel < 0 && channels.size() >= 3;
    bool const hasAlpha = settings_.channel < 0 && channels.size() % 2 == 0;
    kind_ = areColours ? eKind::e_colours : eKind::e_value;
    std::size_t const first =
        std::clamp<std::size_t>(static_cast<std::size_t>(std::max(settings_.channel, 0)), 0, channels.size() - 1);
    for (std::size_t i = 0; i < (areColours ? 3 : 1); ++i)
        colourFields_[i] = fieldOf(first + i);
    alphaField_ = hasAlpha ? fieldOf(channels.size() - 1) : Field{};
    isOverBoard_ = settings_.showAlpha && hasAlpha;
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
    // More than one step in a part is rare.
    step += value >= thresholds_[step + 1] ? 1 : 0;
    while (value >= thresholds_[step + 1])
        [[unlikely]]++ step;
    return step;
}

void ToneMap::MakeTables()
{
    unsigned int const largest = colourFields_[0].largest;
    isIdentity_ = kind_ == eKind::e_colours && largest == 255 && settings_.palette == ePalette::e_none;
    for (unsigned int value = 0; value <= largest; ++value)
    {
        steps_[value] = static_cast<unsigned char>(FindStep(largest == 0 ? 0 : static_cast<double>(value) / largest));
        valueColours_[value] = colours_[steps_[value]];
        isIdentity_ = isIdentity_ && steps_[value] == value;
    }
    for (unsigned int value = 0; value <= alphaField_.largest; ++value)
        alphas_[value] = static_cast<unsigned char>(alphaField_.largest == 0 ? 255 : value * 255 / alphaField_.largest);
}

template<typename Word, typename FindColour>
void ToneMap::WriteColours(unsigned char const *samples, unsigned int count, Pixel *pixels,
                           FindColour const findColour) const
{
    // Copies, so that no pixel that is written could change them.
    unsigned char const *const alphas = alphas_.data();
    Field const alphaField = alphaField_;
    bool const isOverBoard = isOverBoard_;
    for (unsigned int i = 0; i < count; ++i)
    {
        Word word;
        std::memcpy(&word, samples + i * sizeof(word), sizeof(word));
        Pixel const alpha = isOverBoard ? alphas[word >> alphaField.shift & alphaField.largest] : 255;
        pixels[i] = findColour(word) | alpha << 24;
    }
}

template<typename Word>
void ToneMap::MapWords(unsigned char const *samples, unsigned int count, Pixel *pixels) const
{
    auto const write = [&](auto const &findColour) { WriteColours<Word>(samples, count, pixels, findColour); };
    auto const [first, second, third] = colourFields_;
    unsigned char const *const steps = steps_.data();
    Pixel const *const colours = kind_ == eKind::e_value ? valueColours_.data() : colours_.data();
    auto const step = [steps](unsigned int word, Field const &field) -> unsigned int
    { return steps[word >> field.shift & field.largest]; };
    if (kind_ == eKind::e_value)
        write([=, field = first](unsigned int word)
              { return colours[word >> field.shift & field.largest] & s_withoutAlpha; });
    else if (settings_.palette == ePalette::e_none)
        write([=, r = first, g = second, b = third](unsigned int word)
              { return step(word, r) << 16 | step(word, g) << 8 | step(word, b); });
    else
        write(
            [=, r = first, g = second, b = third](unsigned int word) {
                return colours[(77 * step(word, r) + 150 * step(word, g) + 29 * step(word, b) + 128) >> 8] &
                       s_withoutAlpha;
            });
}

void ToneMap::CopyWords(unsigned char const *samples, unsigned int count, Pixel *pixels) const
{
    std::memcpy(pixels, samples, count * sizeof(Pixel));
    for (unsigned int i = 0; !isOverBoard_ && i < count; ++i)
        pixels[i] |= s_opaque;
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
    else if (isIdentity_)
        CopyWords(samples, count, pixels);
    else if (sampleByteSize_ == 1)
        MapWords<std::uint8_t>(samples, count, pixels);
    else if (sampleByteSize_ == 2)
        MapWords<std::uint16_t>(samples, count, pixels);
    else
        MapWords<std::uint32_t>(samples, count, pixels);
    if (isOverBoard_)
        LayOverCheckerboard(pixels, count, x, y);
}

} // namespace viewer
