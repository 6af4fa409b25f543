#include "imageplace.h"

#include <algorithm>
#include <cmath>

namespace viewer
{
namespace
{

/// Tells whole steps of the zoom from the step itself, in spite of rounding.
constexpr double s_tolerance = 1e-6;

ImagePlace::Size Limit(ImagePlace::Size const &size)
{
    return {std::max(size.width, 1.0), std::max(size.height, 1.0)};
}

/// Returns the next zoom of the row that is larger, or smaller.
double FindNextZoom(double zoom, bool larger)
{
    double const power = std::exp2(std::floor(std::log2(zoom) + s_tolerance));
    double const steps[] = {power / 2, power * 3 / 4, power, power * 3 / 2, power * 2, power * 3};
    double next = zoom;
    for (double const step : steps)
    {
        if (larger && step > zoom * (1 + s_tolerance))
            return step;
        if (!larger && step < zoom * (1 - s_tolerance))
            next = step;
    }
    return next;
}

/// Pixels by which samples begin ahead of whole pixels. With zooms such as 3/2, the middle of a pixel would lie on the
/// edge of two samples, and rounding would choose one of them.
constexpr double s_edgeShift = 1.0 / 65536;

/// Returns the middle of a view, so that a sample's edge lies at a whole pixel.
double Align(double middle, double zoom, double viewSize, double imageSize)
{
    double const edge = std::round(viewSize / 2 - std::clamp(middle, 0.0, imageSize) * zoom);
    return (viewSize / 2 - edge + s_edgeShift) / zoom;
}

} // namespace

void ImagePlace::SetViewSize(Size const &size)
{
    if (Limit(size) == view_)
        return;
    view_ = Limit(size);
    Settle();
}

void ImagePlace::SetImageSize(Size const &size)
{
    if (Limit(size) == image_)
        return;
    image_ = Limit(size);
    Fit();
}

void ImagePlace::SetMaxZoom(double zoom)
{
    maxZoom_ = std::max(zoom, 1.0);
    Settle();
}

double ImagePlace::GetFitZoom() const
{
    double const zoom = std::min(view_.width / image_.width, view_.height / image_.height);
    return zoom < 1 ? zoom : std::min(std::floor(zoom), maxZoom_);
}

double ImagePlace::GetMinZoom() const
{
    return std::min(GetFitZoom(), 1.0);
}

void ImagePlace::Fit()
{
    isFit_ = true;
    Settle();
}

void ImagePlace::Settle()
{
    if (isFit_)
        placement_ = {image_.width / 2, image_.height / 2, GetFitZoom()};
    placement_.zoom = std::clamp(placement_.zoom, GetMinZoom(), maxZoom_);
    placement_.x = Align(placement_.x, placement_.zoom, view_.width, image_.width);
    placement_.y = Align(placement_.y, placement_.zoom, view_.height, image_.height);
}

void ImagePlace::Zoom(double zoom, double x, double y)
{
    double const pixelX = placement_.ToViewX(x, view_.width), pixelY = placement_.ToViewY(y, view_.height);
    isFit_ = false;
    placement_.zoom = std::clamp(zoom, GetMinZoom(), maxZoom_);
    placement_.x = x - (pixelX - view_.width / 2) / placement_.zoom;
    placement_.y = y - (pixelY - view_.height / 2) / placement_.zoom;
    Settle();
}

void ImagePlace::Step(bool larger, double x, double y)
{
    double const zoom = FindNextZoom(placement_.zoom, larger);
    double const fitZoom = GetFitZoom();
    if (!larger && fitZoom <= 1 && zoom <= fitZoom * (1 + s_tolerance))
        Fit();
    else
        Zoom(zoom, x, y);
}

void ImagePlace::Pan(double pixelsX, double pixelsY)
{
    Center(placement_.x - pixelsX / placement_.zoom, placement_.y - pixelsY / placement_.zoom);
}

void ImagePlace::Center(double x, double y)
{
    isFit_ = false;
    placement_.x = x;
    placement_.y = y;
    Settle();
}

} // namespace viewer
