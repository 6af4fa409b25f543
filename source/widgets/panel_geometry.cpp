// Panels: size, place, and what the mouse does with them.
#include <quillmarsh/widgets/panel.h>

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/textbutton.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace quillmarsh::widgets
{

namespace
{

vec2 Min(vec2 const &a, vec2 const &b)
{
    return {std::min(a.x, b.x), std::min(a.y, b.y)};
}

vec2 Max(vec2 const &a, vec2 const &b)
{
    return {std::max(a.x, b.x), std::max(a.y, b.y)};
}

/// Rounds; infinite limits stay infinite.
vec2 Round(vec2 const &value)
{
    return {std::round(value.x), std::round(value.y)};
}

/// Room that the parts around the content take.
struct Border
{
    float margin;
    float title;

    vec2 GetSize() const { return {2 * margin, 2 * margin + title}; }
};

/// Distance of a corner's ends from the corner, as a multiple of the edge.
constexpr float s_cornerLength = 3;

/// Areas by row and column: near edge, middle, far edge.
constexpr gui::eCommandArea s_areas[3][3] = {{gui::e_area_resize_nw, gui::e_area_resize_n, gui::e_area_resize_ne},
                                             {gui::e_area_resize_w, gui::e_area_client, gui::e_area_resize_e},
                                             {gui::e_area_resize_sw, gui::e_area_resize_s, gui::e_area_resize_se}};

/// Returns the index of the edge at which a place is.
unsigned int FindEdge(float place, float length, float edge)
{
    if (place < edge)
        return 0;
    return place >= length - edge ? 2 : 1;
}

gui::eCommandArea FindResizeArea(vec2 const &position, vec2 const &size, float edge)
{
    unsigned int const column = FindEdge(position.x, size.x, edge);
    unsigned int const row = FindEdge(position.y, size.y, edge);
    if (column == 1 && row == 1)
        return gui::e_area_client;
    float const corner = edge * s_cornerLength;
    unsigned int const cornerColumn = column != 1 ? column : FindEdge(position.x, size.x, corner);
    unsigned int const cornerRow = row != 1 ? row : FindEdge(position.y, size.y, corner);
    return s_areas[cornerRow][cornerColumn];
}

bool DragsEdge(gui::eCommandArea area, std::initializer_list<gui::eCommandArea> areas)
{
    return std::find(areas.begin(), areas.end(), area) != areas.end();
}

} // namespace

// The program or the user may have set another size than the last one that was applied.
void Panel::AdoptSize()
{
    if (GetSize() == appliedSize_)
        return;
    appliedSize_ = GetSize();
    sizeInUnits_ = GetSize() / scale_;
}

void Panel::RecalcSize()
{
    AdoptSize();
    if (float const scale = Measures::GetScale(); scale != scale_)
        ApplyScale(scale);
    if (isFitPending_)
        Fit();
}

void Panel::ApplyScale(float scale)
{
    float const factor = scale / scale_;
    vec2 const minSize = Round(GetMinSize() * factor);
    vec2 const maxSize = Round(GetMaxSize() * factor);
    scale_ = scale;
    SetMinSize(vec2::ZERO);
    SetMaxSize(maxSize);
    SetMinSize(minSize);
    ApplySize(vec2::INFINITY);
    isPlacePending_ = true;
    isFitPending_ = fitsToContent_;
}

void Panel::ApplySize(vec2 const &window)
{
    appliedSize_ = CalcMinMaxClampedSize(Min(Measures::Pixels(sizeInUnits_), window));
    SetSize(appliedSize_);
}

void Panel::Fit()
{
    isFitPending_ = false;
    vec2 needed(0, 0);
    bool isEmpty = true;
    for (gui::Component const *child : content_->GetChildren())
    {
        if (!child->IsVisible())
            continue;
        needed = Max(needed, child->CalcEndPosition());
        isEmpty = false;
    }
    if (isEmpty)
        return;
    Border const border{Measures::Pixels(margin_), GetTitleHeight()};
    vec2 size = needed + border.GetSize();
    if (HasTitle())
    {
        float const titleWidth = CalcTextWidth(*this, titleGlyphs_) + 2 * Measures::Pixels(Measures::Margin);
        size.x = std::max(size.x, titleWidth + (closable_ ? border.title : 0));
    }
    size = Min(Max(Round(size), vec2(0, 0)), GetMaxSize());
    SetMinSize(size);
    // A user who may resize it keeps what he has made larger.
    SetSize(resizable_ ? CalcMinMaxClampedSize(GetSize()) : size);
    appliedSize_ = GetSize();
    sizeInUnits_ = GetSize() / scale_;
}

void Panel::RecalcLayout()
{
    if (isPlacePending_)
        PlaceInWindow(GetParentSize());
    Border const border{Measures::Pixels(margin_), GetTitleHeight()};
    content_->SetPosition(border.margin, border.title + border.margin);
    content_->SetSize(Max(GetSize() - border.GetSize(), vec2(0, 0)));
    vec2 const button = closeButton_->GetSize();
    float const edge = Measures::Pixels(Measures::ResizeEdge);
    closeButton_->SetPosition(std::max(GetSize().x - button.x - edge, 0.0F),
                              std::max(std::round((border.title - button.y) / 2), 0.0F));
}

void Panel::PlaceInWindow(vec2 const &window)
{
    isPlacePending_ = false;
    if (!IsTopLevel())
        return;
    if (resizable_)
        ApplySize(window);
    if (isCenterPending_)
        SetPosition(Round(Max((window - GetSize()) * 0.5F, vec2(0, 0))));
    isCenterPending_ = false;
    // Wholly inside, if it fits.
    if (movable_)
        SetPosition(Max(Min(GetPosition(), window - GetSize()), vec2(0, 0)));
}

void Panel::OnWindowResize(unsigned int width, unsigned int height)
{
    if (!IsTopLevel())
        return;
    AdoptSize();
    Component::OnWindowResize(width, height);
    vec2 const window(static_cast<float>(width), static_cast<float>(height));
    vec2 const size = GetSize();
    if (resizable_ && scale_ == Measures::GetScale())
        ApplySize(window);
    if (GetSize() != size)
        PlaceInWindow(window);
    else if (movable_)
        SetPosition(KeepInside(GetPosition(), window));
    ReportDirtyGeometry();
}

void Panel::PostCacheShaderHandles()
{
    isFitPending_ = fitsToContent_;
    Component::PostCacheShaderHandles();
}

// The part of the title bar that stays inside is wide enough to be dragged. A panel that is higher than the window may
// be moved up until its lower edge is seen.
vec2 Panel::KeepInside(vec2 const &position, vec2 const &window) const
{
    float const handle = Measures::Pixels(Measures::TitleHeight);
    float const width = std::min(2 * handle, GetSize().x);
    float const top = std::min(0.0F, window.y - GetSize().y);
    return Round(Max(Min(position, window - vec2(width, handle)), vec2(width - GetSize().x, top)));
}

bool Panel::IsLargerThanWindow() const
{
    vec2 const window = GetParentSize();
    return IsTopLevel() && (GetSize().x > window.x || GetSize().y > window.y);
}

gui::eCommandArea Panel::HitTestCommandAreaSelf(vec2 const &position)
{
    if (resizable_)
    {
        gui::eCommandArea const area = FindResizeArea(position, GetSize(), Measures::Pixels(Measures::ResizeEdge));
        if (area != gui::e_area_client)
            return area;
    }
    bool const isHandle = position.y < GetTitleHeight() || IsLargerThanWindow();
    return movable_ && isHandle ? gui::e_area_move : gui::e_area_client;
}

bool Panel::OnGeometryUpdateByManager(bool &confirm, gui::eGeometryUpdateEvent event, gui::eCommandArea area,
                                      eMouseButton button, vec2 const &newPosition, vec2 const &newSize)
{
    switch (event)
    {
    case gui::e_geom_query:
    {
        bool const isAllowed = area == gui::e_area_move ? movable_ : area < gui::e_area_resize_n || resizable_;
        confirm = isAllowed && button == e_mouse_button_left;
        return true;
    }
    case gui::e_geom_moving:
    {
        confirm = false;
        SetPosition(KeepInside(newPosition, GetParentSize()));
        UpdateAbsolutePositionCache();
        return true;
    }
    case gui::e_geom_resizing:
    {
        confirm = false;
        Resize(area, newPosition, newSize);
        return true;
    }
    default:
        return Component::OnGeometryUpdateByManager(confirm, event, area, button, newPosition, newSize);
    }
}

void Panel::Resize(gui::eCommandArea area, vec2 const &position, vec2 const &size)
{
    using namespace gui;
    vec2 const window = GetParentSize();
    float const handle = Measures::Pixels(Measures::TitleHeight);
    float const width = std::min(2 * handle, GetMinSize().x);
    vec2 start = position;
    vec2 end = position + size;
    bool const dragsLeft = DragsEdge(area, {e_area_resize_w, e_area_resize_nw, e_area_resize_sw});
    bool const dragsTop = DragsEdge(area, {e_area_resize_n, e_area_resize_nw, e_area_resize_ne});
    if (dragsLeft)
        start.x = std::min(start.x, window.x - width);
    if (DragsEdge(area, {e_area_resize_e, e_area_resize_ne, e_area_resize_se}))
        end.x = std::max(end.x, width);
    if (dragsTop)
    {
        float const top = std::min(0.0F, GetPosition().y);
        float const lowest = std::min(end.y - GetMinSize().y, window.y - handle);
        start.y = std::max(std::min(start.y, lowest), top);
    }
    vec2 const limited = CalcMinMaxClampedSize(end - start);
    // The edges that are not dragged stay where they are.
    SetPosition(dragsLeft ? end.x - limited.x : start.x, dragsTop ? end.y - limited.y : start.y);
    SetSize(limited);
    UpdateGeometry(true);
}

} // namespace quillmarsh::widgets
