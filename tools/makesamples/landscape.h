// A picture of mountains at a lake.
#ifndef QUILLMARSH_TOOLS_MAKESAMPLES_LANDSCAPE_H
#define QUILLMARSH_TOOLS_MAKESAMPLES_LANDSCAPE_H

namespace makesamples
{

/// Parts from 0 to 1; alpha is 1 where the colour covers all.
struct Color
{
    double red, green, blue, alpha;
};

/// Returns the colour of the landscape: x from 0 on to the right, y from 0 at the top to 1 at the bottom.
Color FindLandscape(double x, double y);

} // namespace makesamples

#endif
