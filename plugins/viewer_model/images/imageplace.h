// Zooming and moving an image in a view.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_IMAGEPLACE_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_IMAGEPLACE_H

#include "composer.h"

namespace viewer
{

/// Where an image lies in a view while both change their sizes, and how a user moves it. Samples begin at whole pixels of
/// the view, so that moves by whole pixels move the whole picture. A value type.
class ImagePlace
{
public:
    /// Width and height, of the view in pixels, of the image in samples.
    struct Size
    {
        double width = 1;
        double height = 1;

        bool operator==(Size const &) const = default;
    };

    /// @name Sizes
    /// At least 1. A view of another size keeps what is in its middle, an image of another size is fitted. A fitted
    /// image stays fitted.
    /// @{
    void SetViewSize(Size const &size);
    void SetImageSize(Size const &size);
    Size const &GetViewSize() const { return view_; }
    Size const &GetImageSize() const { return image_; }
    /// Pixels for a sample at the largest zoom; 64 at first.
    void SetMaxZoom(double zoom);
    /// @}

    Placement const &Get() const { return placement_; }
    /// The whole image shows, as large as possible. It is enlarged by whole numbers only.
    void Fit();
    bool IsFit() const { return isFit_; }
    /// Zoom of the fitted image, or 1 if that is smaller.
    double GetMinZoom() const;
    double GetMaxZoom() const { return maxZoom_; }
    /// Sets the zoom within its limits. The position (x, y) in the image, in samples, keeps its place in the view.
    void Zoom(double zoom, double x, double y);
    /// Goes to the next of the zooms ... 1/2, 3/4, 1, 3/2, 2, 3, 4, 6 ... that is larger or smaller, likewise. The
    /// smallest one is the fitted image.
    void Step(bool larger, double x, double y);
    /// Moves the image to the right and down, in pixels of the view. Its edges go no farther than to the view's middle.
    void Pan(double pixelsX, double pixelsY);
    /// Brings a position in the image to the middle of the view.
    void Center(double x, double y);

private:
    double GetFitZoom() const;
    void Settle();

    Size view_;
    Size image_;
    double maxZoom_ = 64;
    Placement placement_;
    bool isFit_ = true;
};

} // namespace viewer

#endif
