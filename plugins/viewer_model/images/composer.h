// Pictures of images, as large as the view that shows them.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_COMPOSER_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_COMPOSER_H

#include "imagelevels.h"
#include <viewer_model/samples/display.h>

namespace viewer
{

/// Place of an image in a view: which sample lies where, and how large.
struct Placement
{
    /// Position in the image, in samples from its top left corner, that lies in the middle of the view.
    double x = 0;
    double y = 0;
    /// Pixels of the view for a sample of the image.
    double zoom = 1;

    bool operator==(Placement const &) const = default;

    /// @name Between pixels of a view of a size, and samples
    /// @{
    double ToImageX(double pixel, double viewWidth) const { return x + (pixel - viewWidth / 2) / zoom; }
    double ToImageY(double pixel, double viewHeight) const { return y + (pixel - viewHeight / 2) / zoom; }
    double ToViewX(double sample, double viewWidth) const { return (sample - x) * zoom + viewWidth / 2; }
    double ToViewY(double sample, double viewHeight) const { return (sample - y) * zoom + viewHeight / 2; }
    /// @}
};

/// Rectangle of a picture's pixels to fill.
struct PixelArea
{
    unsigned int x = 0;
    unsigned int y = 0;
    unsigned int width = 0;
    unsigned int height = 0;
};

/// Fills an area of a picture in A8R8G8B8 with an image: each pixel shows the sample under its centre, of the level that
/// FindLevel() gives, or between the four nearest samples of that level when `smooth` and the zoom is below 1. Outside
/// of the image it gets `background`. The checkerboard under alpha begins at the image's corner. Placement coordinates refer to the whole picture. `level` forces a level unless it
/// is -1. Any thread; the time depends on the area only.
void ComposeImage(quillmarsh::ImageBase &picture, PixelArea const &area, ImageLevels const &levels,
                  ToneMap const &tones, Placement const &placement, bool smooth, int level, Pixel background);

/// How two images are compared.
enum class eDifference
{
    /// |a - b| of each channel.
    e_absolute,
    /// (a - b) squared, as a part of the range.
    e_squared,
    /// |a - b| / max(a, b); 0 where both are 0.
    e_relative
};
/// "absolute", "squared", "relative".
std::span<char const *const> GetDifferenceNames();

/// Makes the picture of the difference of two images of one size and format: FP32NormL, the greatest of the channels, as
/// a part of the nominal range, multiplied by `scale`. Throws a DataException that names both sizes or formats.
/// `progress` as in ImageLevels::Build(); null when it stops.
ContentPtr MakeDifference(Content const &a, Content const &b, eDifference difference, double scale,
                          std::function<bool(double)> const &progress = {});

} // namespace viewer

#endif
