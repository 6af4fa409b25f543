#include "measurement.h"

#include "numbers.h"

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;

namespace
{

struct Extent
{
    unsigned int first;
    unsigned int count;
};

/// Returns the samples from one position to another, both included, within an image.
Extent FindSamples(double from, double to, unsigned int size)
{
    double const last = static_cast<double>(size) - 1;
    double const first = std::floor(std::min(from, to)), end = std::floor(std::max(from, to));
    if (end < 0 || first > last)
        return {0, 0};
    auto const begin = static_cast<unsigned int>(std::max(first, 0.0));
    return {begin, static_cast<unsigned int>(std::min(end, last)) - begin + 1};
}

} // namespace

double Measurement::GetLength() const
{
    return std::hypot(x1 - x0, y1 - y0);
}

SampleArea Measurement::GetArea(ImageBase const &image) const
{
    Extent const columns = FindSamples(x0, x1, image.GetNumColumns());
    Extent const rows = FindSamples(y0, y1, image.GetNumRows());
    if (columns.count == 0 || rows.count == 0)
        return {};
    return {columns.first, rows.first, columns.count, rows.count};
}

string Measurement::FormatSize(ImageBase const &image) const
{
    if (isLine)
        return FormatNumber(GetLength(), 5);
    SampleArea const area = GetArea(image);
    return FormatNumber(area.width) + " × " + FormatNumber(area.height);
}

string Measurement::Describe(ImageBase const &image) const
{
    auto const point = [](double x, double y) { return '(' + FormatNumber(x) + ", " + FormatNumber(y) + ')'; };
    if (isLine)
        return "Length " + FormatSize(image) + '\n' + point(x0, y0) + " to " + point(x1, y1);
    SampleArea const area = GetArea(image);
    return FormatSize(image) + " samples\nfrom " + point(area.x, area.y);
}

string Measurement::FormatCommand() const
{
    string line = "measure";
    for (double const value : {x0, y0, x1, y1})
        line += ' ' + FormatNumber(value, 8);
    return isLine ? line + " -line" : line;
}

std::optional<Figures> ComputeFigures(ImageBase const &image, Measurement const &measurement,
                                      std::function<bool(double)> const &progress)
{
    if (measurement.isLine)
        return ComputeLineFigures(image, measurement.x0, measurement.y0, measurement.x1, measurement.y1);
    return ComputeFigures(image, measurement.GetArea(image), progress);
}

} // namespace viewer
