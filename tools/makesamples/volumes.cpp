#include "formulas.h"
#include "samples.h"

#include <cmath>
#include <cstring>

namespace makesamples
{

namespace
{

using namespace quillmarsh;

/// A point of a volume: x to the right, y down, z to the back, each from -1 to 1.
struct Point
{
    double x, y, z;

    double Length() const { return std::sqrt(x * x + y * y + z * z); }
    Point From(Point const &other) const { return {x - other.x, y - other.y, z - other.z}; }
    Point By(Point const &scale) const { return {x / scale.x, y / scale.y, z / scale.z}; }
};

/// Fills a volume with a value for each point.
template<typename Value, typename Formula>
SampledData Make(eSampleFormat format, unsigned int size, Formula const &formula)
{
    SampledData data(format, {size, size, size});
    auto &volume = *data.Get<VolumeBase>();
    auto const place = [size](unsigned int index) { return (2 * index + 1.0) / size - 1; };
    for (unsigned int layer = 0; layer < size; ++layer)
    {
        for (unsigned int row = 0; row < size; ++row)
        {
            for (unsigned int column = 0; column < size; ++column)
            {
                Value const value = formula(Point{place(column), place(row), place(layer)});
                std::memcpy(volume.SampleB(layer, row, column), &value, sizeof value);
            }
        }
    }
    return data;
}

/// Puts a body with a soft surface over what is there: `distance` is below 0 inside.
double Put(double below, double distance, double value)
{
    return Mix(below, value, Step(0.018, -0.018, distance));
}

/// Distance to an ellipsoid, roughly.
double ToEllipsoid(Point const &point, Point const &middle, Point const &radii)
{
    return (point.From(middle).By(radii).Length() - 1) * std::min({radii.x, radii.y, radii.z});
}

double ToTorus(Point const &point, double radius, double thickness)
{
    double const ring = std::sqrt(point.x * point.x + point.z * point.z) - radius;
    return std::sqrt(ring * ring + point.y * point.y) - thickness;
}

/// Distance to a screw about the vertical axis, from its nearest turn in a slice.
double ToScrew(Point const &point, double phase)
{
    double const turns = 1.6 * point.y + phase;
    Point const middle{0.16 * Cosine(turns), point.y, 0.16 * Sine(turns)};
    return std::max(point.From(middle).Length() - 0.055, std::abs(point.y) - 0.62);
}

/// A hollow body with a grained filling, two lobes with veins, a ring, a screw of two threads, and balls that get
/// smaller along a circle.
unsigned char FindDensity(Point const &point)
{
    double const grain = Fractal(3, 9 * point.x, 9 * point.y, 9 * point.z) - 0.5;
    double const shell = ToEllipsoid(point, {0, 0, 0}, {0.88, 0.95, 0.8});
    double value = Put(0, shell, 150 + 40 * grain);
    value = Put(value, shell + 0.07, 42 + 28 * grain);
    for (double const side : {-1.0, 1.0})
    {
        double const lobe = ToEllipsoid(point, {0.44 * side, -0.05, 0}, {0.22, 0.5, 0.4});
        double const vein = std::abs(Fractal(2, 5 * point.x + 40, 5 * point.y, 5 * point.z) - 0.5);
        value = Put(value, lobe, Mix(190, 88 + 30 * grain, Step(0.01, 0.05, vein)));
    }
    value = Put(value, ToTorus(point.From({0, 0.64, 0}), 0.34, 0.07), 205);
    value = Put(value, ToScrew(point, 0), 235);
    value = Put(value, ToScrew(point, 0.5), 120);
    for (int ball = 0; ball < 10; ++ball)
    {
        double const turn = ball / 10.0;
        Point const middle{0.52 * Cosine(turn), -0.66, 0.46 * Sine(turn)};
        value = Put(value, point.From(middle).Length() - 0.085 + 0.0065 * ball, 255);
    }
    return static_cast<unsigned char>(std::clamp(value + 0.5, 0.0, 255.0));
}

/// Two springs of waves, with values from -1 to 1 outside of what a screen shows.
float FindField(Point const &point)
{
    double sum = 0;
    for (double const side : {-1.0, 1.0})
    {
        double const distance = point.From({0.4 * side, 0, 0.1 * side}).Length();
        sum += Cosine(4.5 * distance) * Exponential(-1.8 * distance);
    }
    return static_cast<float>(sum);
}

constexpr Sample s_volumes[] = {
    {"body.qmdp.volume", [] { return Make<unsigned char>(e_format_L8, 96, &FindDensity); }},
    {"waves.qmdp.volume", [] { return Make<float>(e_format_FP32NormL, 48, &FindField); }},
};

} // namespace

std::span<Sample const> GetVolumes()
{
    return s_volumes;
}

} // namespace makesamples
