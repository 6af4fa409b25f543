#include "panes.h"

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;

namespace
{

/// Pixels between two images side by side.
constexpr unsigned int s_gap = 2;

Pane MakePane(ImageState const &state, ImageLevelsPtr const &levels, PixelArea const &area)
{
    Pane pane;
    pane.area = area;
    pane.levels = levels;
    pane.display = state.GetDisplayFor(levels->GetLevel(0).GetSampleFormat());
    pane.placement = state.place.Get();
    return pane;
}

} // namespace

DisplaySettings GetDifferenceDisplay(ImageState const &state)
{
    DisplaySettings display;
    display.palette = state.display.palette;
    display.gamma = state.display.gamma;
    display.high = 1 / state.comparison.settings.scale;
    return display;
}

ImagePlace::Size GetPaneSize(ImageState const &state, unsigned int width, unsigned int height)
{
    unsigned int const half = (width - std::min(width, s_gap)) / 2;
    bool const isShared = state.comparison.Is(eComparison::e_side);
    return {static_cast<double>(isShared ? std::max(half, 1u) : width), static_cast<double>(height)};
}

std::vector<Pane> MakePanes(ImageState const &state, unsigned int width, unsigned int height)
{
    std::vector<Pane> panes;
    if (state.GetLevels() == nullptr)
        return panes;
    Comparison const &comparison = state.comparison;
    PixelArea const whole = {0, 0, width, height};
    ImageLevelsPtr const other = comparison.GetOther();
    string const title = state.GetTitle(), otherTitle = other != nullptr ? comparison.GetDocument()->GetTitle() : "";
    panes.push_back(MakePane(state, state.GetLevels(), whole));
    if (other == nullptr)
        return panes;
    panes[0].title = title;
    switch (comparison.settings.mode)
    {
    case eComparison::e_blink:
        if (comparison.showsOther)
        {
            panes[0] = MakePane(state, other, whole);
            panes[0].title = otherTitle;
        }
        break;
    case eComparison::e_difference:
        if (comparison.GetDifference() == nullptr)
            break;
        panes[0] = MakePane(state, comparison.GetDifference(), whole);
        panes[0].display = GetDifferenceDisplay(state);
        panes[0].title = GetDifferenceNames()[static_cast<std::size_t>(comparison.settings.difference)] +
                         string(" difference of ") + title + " and " + otherTitle;
        break;
    case eComparison::e_divider:
    {
        auto const place = static_cast<unsigned int>(std::lround(comparison.settings.divider * width));
        panes[0].area.width = place;
        panes.push_back(MakePane(state, other, {place, 0, width - place, height}));
        break;
    }
    case eComparison::e_side:
    {
        auto const half = static_cast<unsigned int>(GetPaneSize(state, width, height).width);
        panes[0].area.width = half;
        panes.push_back(MakePane(state, other, {width - half, 0, half, height}));
        // The place refers to the middle of a half.
        double const shift = (width - half) / 2.0 / state.place.Get().zoom;
        panes[0].placement.x += shift;
        panes[1].placement.x -= shift;
        break;
    }
    }
    if (panes.size() == 2)
        panes[1].title = otherTitle;
    return panes;
}

} // namespace viewer
