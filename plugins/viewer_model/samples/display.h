// How samples become colours on the screen.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_SAMPLES_DISPLAY_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_SAMPLES_DISPLAY_H

#include "channels.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace viewer
{

/// Colour on the screen: the word of an A8R8G8B8 sample, alpha 255.
using Pixel = std::uint32_t;

/// Tables of colours for single values.
enum class ePalette
{
    e_none,
    e_heat,
    e_rainbow,
    e_spectral,
    e_cyclic
};
/// "none", "heat", "rainbow", "spectral", "cyclic", in the order of the enumeration.
std::span<char const *const> GetPaletteNames();

/// Colour of a value that is not a number.
constexpr Pixel s_notANumber = 0xFFFF00FF;
/// The two colours of the checkerboard under alpha, the first one where (x / 8 + y / 8) is even.
constexpr Pixel s_checkerboard[] = {0xFF999999, 0xFF666666};

/// Settings of the display of samples. A plain record; its default shows the samples as they are.
struct DisplaySettings
{
    /// Index of the only channel to show, as in GetChannels(); -1 for all together.
    int channel = -1;
    /// What the window of `low` and `high` gives is multiplied by two to the power of this.
    double exposure = 0;
    /// Then it is cut to 0..1 and raised to 1 / gamma. Above 0.
    double gamma = 1;
    /// Values, as parts of the nominal range, that become black and white. With `low` above `high`, the display is a
    /// negative; with both equal, values above become white, and the others black.
    double low = 0;
    double high = 1;
    /// Shows the result in these colours; of red, green and blue together, their luminance.
    ePalette palette = ePalette::e_none;
    /// Shows a checkerboard where alpha lets it through; without, alpha is ignored.
    bool showAlpha = true;

    bool operator==(DisplaySettings const &) const = default;
};

/// Turns samples of one format into colours. A channel by itself, and alpha without colours, are shown as grey. Samples
/// of a format that is not known are black. Immutable; any thread.
class ToneMap
{
public:
    ToneMap(quillmarsh::eSampleFormat format, DisplaySettings const &settings);

    /// Writes `count` colours. Where alpha counts, samples lie over a checkerboard of 8 by 8 pixels whose place is given
    /// by the pixel (x, y) of the first sample; they run along x.
    void Map(unsigned char const *samples, unsigned int count, Pixel *pixels, int x, int y) const;
    /// Returns the colour of a single value of one channel, as a part of the nominal range, by window, exposure, gamma
    /// and palette.
    Pixel MapValue(double part) const { return std::isnan(part) ? s_notANumber : colours_[FindStep(part)]; }
    /// True if a checkerboard may show: the same samples have other colours in another place then.
    bool DependsOnPlace() const { return isOverBoard_; }

private:
    enum class eKind
    {
        e_unknown,
        e_float,
        /// One field of words is shown.
        e_value,
        e_colours
    };
    /// Bits of one channel in a word; none if `largest` is 0.
    struct Field
    {
        unsigned int shift = 0;
        unsigned int largest = 0;
    };

    void SelectFields(std::span<Channel const> channels);
    void MakeThresholds();
    void MakeTables();
    unsigned int FindStep(double part) const;

    /// @name Write colours, with alpha over a checkerboard that is to come
    /// @{
    template<typename Word, typename FindColour>
    void WriteColours(unsigned char const *samples, unsigned int count, Pixel *pixels, FindColour findColour) const;
    template<typename Word>
    void MapWords(unsigned char const *samples, unsigned int count, Pixel *pixels) const;
    void CopyWords(unsigned char const *samples, unsigned int count, Pixel *pixels) const;
    /// @}
    void MapFloats(unsigned char const *samples, unsigned int count, Pixel *pixels) const;

    DisplaySettings settings_;
    eKind kind_ = eKind::e_unknown;
    unsigned int sampleByteSize_ = 0;
    /// The only channel, or red, green and blue.
    std::array<Field, 3> colourFields_;
    Field alphaField_;
    bool isOverBoard_ = false;
    /// True for words that are colours already.
    bool isIdentity_ = false;
    /// Colour of each of the 256 steps from black to white.
    std::array<Pixel, 256> colours_;
    /// Of each value of a field: its step, the colour of that, and the alpha.
    std::array<unsigned char, 256> steps_{};
    std::array<Pixel, 256> valueColours_{};
    std::array<unsigned char, 256> alphas_{};
    /// Factor of values less `low`.
    double scale_ = 1;
    /// From which product on each step is shown; infinity after the last.
    std::array<double, 257> thresholds_;
    /// Step at the lower end of each of equal parts of 0..1, to begin the search there.
    std::array<unsigned char, 4097> firstSteps_;
};

} // namespace viewer

#endif
