// A sheet of coverage, on which shapes are drawn.
#ifndef QUILLMARSH_PLUGINS_LOOK_SHAPES_SHEET_H
#define QUILLMARSH_PLUGINS_LOOK_SHAPES_SHEET_H

#include <cstddef>
#include <vector>

namespace look_shapes
{

/// Rectangle on a sheet, in pixels.
struct Area
{
    unsigned int x = 0;
    unsigned int y = 0;
    unsigned int width = 0;
    unsigned int height = 0;
};

/// Pixels with a coverage from 0, outside of all shapes, to 255. Row 0 is at the top.
class Sheet
{
public:
    Sheet(unsigned int width, unsigned int height);

    unsigned int GetWidth() const { return width_; }
    unsigned int GetHeight() const { return height_; }
    /// Returns the coverage of a pixel; 0 outside of the sheet.
    unsigned char Get(unsigned int x, unsigned int y) const;
    /// Sets the coverage of a pixel to the larger of its own and this one. Nothing happens outside of the sheet.
    void Cover(unsigned int x, unsigned int y, unsigned char coverage);

private:
    unsigned int width_;
    unsigned int height_;
    std::vector<unsigned char> pixels_;
};

} // namespace look_shapes

#endif
