#include "shapes.h"

#include <algorithm>
#include <cmath>

namespace look_shapes
{
namespace
{

struct Point
{
    float x;
    float y;
};

// No hypot: a square root is rounded in the same way on every system.
float GetLength(float x, float y)
{
    return std::sqrt(x * x + y * y);
}

/// All distances are negative inside of a shape.
float GetDistanceToBox(Point p, float const *n)
{
    float const radius = n[4];
    float const x = std::abs(p.x - (n[0] + n[2]) * 0.5f) - ((n[2] - n[0]) * 0.5f - radius);
    float const y = std::abs(p.y - (n[1] + n[3]) * 0.5f) - ((n[3] - n[1]) * 0.5f - radius);
    return GetLength(std::max(x, 0.0f), std::max(y, 0.0f)) + std::min(std::max(x, y), 0.0f) - radius;
}

float GetDistanceToLine(Point p, Point from, Point to)
{
    Point const line = {to.x - from.x, to.y - from.y};
    Point const away = {p.x - from.x, p.y - from.y};
    float const square = line.x * line.x + line.y * line.y;
    float const along = square > 0 ? std::clamp((away.x * line.x + away.y * line.y) / square, 0.0f, 1.0f) : 0.0f;
    return GetLength(away.x - line.x * along, away.y - line.y * along);
}

float GetDistanceToTriangle(Point p, float const *n)
{
    Point const corners[] = {{n[0], n[1]}, {n[2], n[3]}, {n[4], n[5]}};
    float nearest = GetDistanceToLine(p, corners[2], corners[0]);
    unsigned int numLeft = 0;
    for (unsigned int i = 0; i < 3; ++i)
    {
        Point const from = corners[i], to = corners[(i + 1) % 3];
        nearest = std::min(nearest, GetDistanceToLine(p, from, to));
        numLeft += (to.x - from.x) * (p.y - from.y) - (to.y - from.y) * (p.x - from.x) > 0 ? 1u : 0u;
    }
    bool const isInside = numLeft == 0 || numLeft == 3;
    return (isInside ? -nearest : nearest) - n[6];
}

float GetDistance(Point p, Shape const &shape)
{
    float const *const n = shape.numbers;
    switch (shape.kind)
    {
    case eShape::e_disc:
        return GetLength(p.x - n[0], p.y - n[1]) - n[2];
    case eShape::e_ring:
        return std::abs(GetLength(p.x - n[0], p.y - n[1]) - n[2]) - n[3] * 0.5f;
    case eShape::e_box:
        return GetDistanceToBox(p, n);
    case eShape::e_frame:
        return std::abs(GetDistanceToBox(p, n)) - n[5] * 0.5f;
    case eShape::e_stroke:
        return GetDistanceToLine(p, {n[0], n[1]}, {n[2], n[3]}) - n[4] * 0.5f;
    case eShape::e_triangle:
        return GetDistanceToTriangle(p, n);
    }
    return 1;
}

/// Returns a distance that is never larger than that to the nearest edge.
float GetDistance(Point p, std::span<Shape const> shapes)
{
    float distance = 1e9f;
    for (Shape const &shape : shapes)
    {
        float const own = GetDistance(p, shape);
        distance = shape.cuts ? std::max(distance, -own) : std::min(distance, own);
    }
    return distance;
}

unsigned char CalcCoverage(Point middle, std::span<Shape const> shapes, float unitsPerPixel)
{
    constexpr int numPoints = 16;
    // From the middle of a pixel to its corner, and a little more.
    float const reach = 0.75f * unitsPerPixel;
    float const distance = GetDistance(middle, shapes);
    if (distance >= reach)
        return 0;
    if (distance <= -reach)
        return 255;
    int numInside = 0;
    for (int row = 0; row < numPoints; ++row)
    {
        for (int column = 0; column < numPoints; ++column)
        {
            auto const offset = [=](int index)
            { return (static_cast<float>(2 * index + 1) / (2 * numPoints) - 0.5f) * unitsPerPixel; };
            numInside += GetDistance({middle.x + offset(column), middle.y + offset(row)}, shapes) < 0 ? 1 : 0;
        }
    }
    return static_cast<unsigned char>((numInside * 255 + numPoints * numPoints / 2) / (numPoints * numPoints));
}

} // namespace

void DrawShapes(Sheet &sheet, Area const &area, std::span<Shape const> shapes, float pixelsPerUnit)
{
    float const unitsPerPixel = 1 / pixelsPerUnit;
    for (unsigned int y = 0; y < area.height; ++y)
    {
        for (unsigned int x = 0; x < area.width; ++x)
        {
            Point const middle = {(static_cast<float>(x) + 0.5f) * unitsPerPixel,
                                  (static_cast<float>(y) + 0.5f) * unitsPerPixel};
            sheet.Cover(area.x + x, area.y + y, CalcCoverage(middle, shapes, unitsPerPixel));
        }
    }
}

void DrawCorner(Sheet &sheet, unsigned int x, unsigned int y, unsigned int radius)
{
    auto const size = static_cast<float>(radius);
    Shape const disc = {eShape::e_disc, false, {size, size, size}};
    DrawShapes(sheet, {x, y, radius, radius}, {&disc, 1}, 1);
}

void DrawRingCorner(Sheet &sheet, unsigned int x, unsigned int y, unsigned int radius, unsigned int width)
{
    auto const size = static_cast<float>(radius);
    auto const line = static_cast<float>(width);
    Shape const ring = {eShape::e_ring, false, {size, size, size - line * 0.5f, line}};
    DrawShapes(sheet, {x, y, radius, radius}, {&ring, 1}, 1);
}

void DrawShadowCorner(Sheet &sheet, unsigned int x, unsigned int y, unsigned int radius)
{
    auto const size = static_cast<float>(radius);
    for (unsigned int row = 0; row < radius; ++row)
    {
        for (unsigned int column = 0; column < radius; ++column)
        {
            auto const away = [=](unsigned int place) { return (size - static_cast<float>(place) - 0.5f) / size; };
            float const rest = 1 - std::min(GetLength(away(column), away(row)), 1.0f);
            // Leaves both ends without a kink.
            float const coverage = rest * rest * (3 - 2 * rest);
            sheet.Cover(x + column, y + row, static_cast<unsigned char>(std::floor(coverage * 255 + 0.5f)));
        }
    }
}

} // namespace look_shapes
