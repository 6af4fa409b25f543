// A line or a rectangle that is measured.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_MEASUREMENT_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_MEASUREMENT_H

#include "figurestask.h"

namespace viewer
{

/// What is measured, in samples of an image. A plain record.
struct Measurement
{
    bool isLine = false;
    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;

    bool operator==(Measurement const &) const = default;

    double GetLength() const;
    /// Samples of the rectangle, with those of both corners, as far as they are in the image.
    SampleArea GetArea(quillmarsh::ImageBase const &image) const;
    /// "12.3", "4 × 3".
    string FormatSize(quillmarsh::ImageBase const &image) const;
    /// "Length 12.3\n(0, 0) to (12, 3)", "4 × 3 samples\nfrom (0, 0)".
    string Describe(quillmarsh::ImageBase const &image) const;
    /// The line of the console that measures the same.
    string FormatCommand() const;
};

/// Computes the figures of what is measured. The image must live on.
std::optional<Figures> ComputeFigures(quillmarsh::ImageBase const &image, Measurement const &measurement,
                                      std::function<bool(double)> const &progress);

} // namespace viewer

#endif
