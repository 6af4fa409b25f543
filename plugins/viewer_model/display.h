// How samples become colours on the screen.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_DISPLAY_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_DISPLAY_H

#include "channels.h"

#include <array>
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

/// Settings of the display of samples. A plain record; its default shows the samples as they are.
struct DisplaySettings
{
    /// Index of the only channel to show, as in GetChannels(); -1 for all together.
    int channel = -1;
    /// Values are multiplied by two to the power of this.
    double exposure = 0;
    /// Values of 0..1 are raised to 1 / gamma.
    double gamma = 1;
    /// Values, as parts of the nominal range, that become black and white.
    double low = 0;
    double high = 1;
    ePalette palette = ePalette::e_none;
    /// Shows a checkerboard where alpha lets it through; without, alpha is ignored.
    bool showAlpha = true;

    bool operator==(DisplaySettings const &) const = default;
};

/// Turns samples of one format into colours. Immutable; any thread.
class ToneMap
{
public:
    ToneMap(quillmarsh::eSampleFormat format, DisplaySettings const &settings);

    /// Writes `count` colours. Where alpha counts, samples lie over a checkerboard of 8 by 8 pixels whose place is given
    /// by the pixel (x, y) of the first sample; they run along x.
    void Map(unsigned char const *samples, unsigned int count, Pixel *pixels, int x, int y) const;
    /// Returns the colour of a single value of one channel, as a part of the nominal range, by window, exposure, gamma
    /// and palette.
    Pixel MapValue(double part) const;

private:
    void MakeTable();

    quillmarsh::eSampleFormat format_;
    DisplaySettings settings_;
    /// For every byte, or every value of a word's field, the byte on the screen.
    std::array<unsigned char, 256> table_;
    /// Colours of one channel.
    std::array<Pixel, 256> colours_;
    /// For floats: the same at more steps.
    std::vector<Pixel> fineColours_;
};

} // namespace viewer

#endif
