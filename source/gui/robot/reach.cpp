#include "source/gui/robot/reach.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_componentpath.h>
#include <quillmarsh/gui/gui_manager.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace quillmarsh::gui::robot_parts
{

namespace
{

/// Rows and columns of the places that are tried behind the middle.
constexpr int s_gridSize = 7;

string MakeText(float number)
{
    return MakeString(static_cast<int>(std::lround(number)));
}

string DescribeOutside(Component const &component, Manager const &manager)
{
    vec2 const at = component.GetAbsolutePosition();
    return "it is outside of the window: it stands at " + MakeText(at.x) + "," + MakeText(at.y) + " with a size of " +
           MakeText(component.GetSize().x) + "x" + MakeText(component.GetSize().y) + ", and the window has a size of " +
           MakeString(manager.GetWindowWidth()) + "x" + MakeString(manager.GetWindowHeight());
}

/// Part of the component that is inside the window.
struct Area
{
    vec2 begin;
    vec2 end;

    Area(Component const &component, Manager const &manager)
        : begin(std::max(component.GetAbsolutePosition().x, 0.0f), std::max(component.GetAbsolutePosition().y, 0.0f)),
          end(component.GetAbsolutePosition() + component.GetSize())
    {
        end.x = std::min(end.x, manager.GetWindowSize().x);
        end.y = std::min(end.y, manager.GetWindowSize().y);
    }

    bool Contains(vec2 const &at) const { return at.x >= begin.x && at.x < end.x && at.y >= begin.y && at.y < end.y; }
};

bool IsInWindow(vec2 const &at, Manager const &manager)
{
    return at.x >= 0 && at.y >= 0 && at.x < manager.GetWindowSize().x && at.y < manager.GetWindowSize().y;
}

vec2 ToPixel(vec2 const &at)
{
    return {std::floor(at.x), std::floor(at.y)};
}

std::vector<vec2> ListPlaces(Component const &component, Area const &area, std::optional<vec2> const &wanted)
{
    if (wanted)
    {
        vec2 const middle = component.GetSize() * 0.5f;
        vec2 const place(std::isnan(wanted->x) ? middle.x : wanted->x, std::isnan(wanted->y) ? middle.y : wanted->y);
        return {ToPixel(component.GetAbsolutePosition() + place)};
    }
    std::vector<vec2> places = {ToPixel(component.GetAbsolutePosition() + component.GetSize() * 0.5f),
                                ToPixel((area.begin + area.end) * 0.5f)};
    vec2 const cell = (area.end - area.begin) * (1.0f / static_cast<float>(s_gridSize));
    for (int row = 0; row < s_gridSize; ++row)
    {
        for (int column = 0; column < s_gridSize; ++column)
        {
            vec2 const inGrid(static_cast<float>(column) + 0.5f, static_cast<float>(row) + 0.5f);
            places.push_back(ToPixel(area.begin + vec2(inGrid.x * cell.x, inGrid.y * cell.y)));
        }
    }
    // A pixel may begin ahead of a component that does not stand on whole pixels.
    std::erase_if(places, [&](vec2 const &at) { return !area.Contains(at); });
    return places;
}

string DescribeCover(Component const &component, Component const *cover, Manager const &manager)
{
    if (cover != nullptr)
        return "it is covered by " + ComponentPath::Make(*cover);
    if (manager.IsModalTargetApplication())
        return "the application is modal";
    if (Component const *const modal = manager.GetModalTarget())
        return "it cannot be reached while " + ComponentPath::Make(*modal) + " is modal";
    return component.IsGhost() ? "it lets the mouse through, and nothing is behind it" : "the mouse does not hit it";
}

/// Finds what the mouse hits at the places; null if it is something else. `cover` gets what is there instead at first.
Component *FindHit(Manager &manager, Component &component, std::vector<vec2> const &places, vec2 &place,
                   Component *&cover)
{
    Component *best = nullptr;
    for (vec2 const &at : places)
    {
        Component *const hit = manager.FindComponentAt(at);
        if (&at == &places.front())
            cover = hit;
        bool const isBetter = hit != nullptr && IsHitMeant(component, *hit) && (best == nullptr || hit == &component);
        if (!isBetter)
            continue;
        best = hit;
        place = at;
        if (hit == &component)
            break;
    }
    return best;
}

} // namespace

bool IsHitMeant(Component const &component, Component const &hit)
{
    return &hit == &component || hit.IsDescendantOf(component) || (component.IsGhost() && hit.IsAncestorOf(component));
}

string DescribeHidden(Component const &component)
{
    if (!component.IsVisible())
        return "it is hidden";
    for (Component const *parent = component.GetParent(); parent != nullptr; parent = parent->GetParent())
    {
        if (!parent->IsVisible())
            return "it is hidden together with " + ComponentPath::Make(*parent);
    }
    return "";
}

Reach FindReach(Manager &manager, Component &component, ReachWish const &wish)
{
    if (string const hidden = DescribeHidden(component); !hidden.empty())
        return {hidden};
    Area const area(component, manager);
    std::vector<vec2> const places = ListPlaces(component, area, wish.place);
    if (component.GetSize().x <= 0 || component.GetSize().y <= 0)
        return {"it has no size"};
    if (places.empty() || !IsInWindow(places.front(), manager))
        return {DescribeOutside(component, manager)};
    vec2 place = places.front();
    if (!wish.mayBeCovered)
    {
        Component *cover = nullptr;
        Component const *const hit = FindHit(manager, component, places, place, cover);
        if (hit == nullptr)
            return {DescribeCover(component, cover, manager)};
        if (wish.mustBeEnabled && !hit->IsEnabled())
            return {hit == &component ? "it is disabled" : ComponentPath::Make(*hit) + ", which is there, is disabled"};
    }
    return {"", static_cast<int>(place.x), static_cast<int>(place.y)};
}

} // namespace quillmarsh::gui::robot_parts
