#include "sheet.h"

#include <algorithm>

namespace look_shapes
{

Sheet::Sheet(unsigned int width, unsigned int height)
    : width_(width),
      height_(height),
      pixels_(std::size_t{width} * height)
{
}

unsigned char Sheet::Get(unsigned int x, unsigned int y) const
{
    return x < width_ && y < height_ ? pixels_[std::size_t{y} * width_ + x] : static_cast<unsigned char>(0);
}

void Sheet::Cover(unsigned int x, unsigned int y, unsigned char coverage)
{
    if (x >= width_ || y >= height_)
        return;
    unsigned char &pixel = pixels_[std::size_t{y} * width_ + x];
    pixel = std::max(pixel, coverage);
}

} // namespace look_shapes
