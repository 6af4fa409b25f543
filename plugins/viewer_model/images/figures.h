// Figures of a part of an image: histogram, mean, extremes.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_FIGURES_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_FIGURES_H

#include <viewer_model/samples/channels.h>

#include <quillmarsh/dataobjects/imagebase.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace viewer
{

/// Samples of an image, from (x, y) on.
struct SampleArea
{
    unsigned int x = 0;
    unsigned int y = 0;
    unsigned int width = 0;
    unsigned int height = 0;

    bool operator==(SampleArea const &) const = default;
};

/// Figures of one channel, in the format's own numbers.
struct ChannelFigures
{
    char const *name = "";
    double minimum = 0;
    double maximum = 0;
    double mean = 0;
    /// Of all values, not of a sample of them.
    double deviation = 0;
    std::uint64_t numNaN = 0;
    /// Number of samples in each of 256 equal parts of the nominal range; floats outside of it count in the first or
    /// last part.
    std::vector<std::uint64_t> histogram;
};

struct Figures
{
    std::uint64_t numSamples = 0;
    std::vector<ChannelFigures> channels;
};

/// Returns the figures of an area, which is cut to the image. `progress` as in ImageLevels::Build(); nothing when it
/// stops. Any thread.
std::optional<Figures> ComputeFigures(quillmarsh::ImageBase const &image, SampleArea const &area,
                                      std::function<bool(double)> const &progress = {});
/// Returns the figures of the samples on a line from (x0, y0) to (x1, y1) in samples, one for each step of a sample.
Figures ComputeLineFigures(quillmarsh::ImageBase const &image, double x0, double y0, double x1, double y1);

} // namespace viewer

#endif
