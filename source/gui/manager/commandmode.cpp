#include "source/gui/manager/parts.h"

namespace quillmarsh::gui::manager_parts
{

namespace
{

/// How an area resizes: what the size gains when the mouse moves by one pixel along each axis, and along which axes the
/// far edges stay where they are, because the near ones are dragged.
struct Resize
{
    float gainX;
    float gainY;
    bool keepsFarX;
    bool keepsFarY;
};

/// By area, from e_area_resize_n on. An edge that is dragged keeps the opposite corner.
constexpr Resize s_resizes[] = {{0, -1, true, true},   // n
                                {0, 1, false, false},  // s
                                {-1, 0, true, true},   // w
                                {1, 0, false, false},  // e
                                {-1, -1, true, true},  // nw
                                {1, -1, false, true},  // ne
                                {-1, 1, true, false},  // sw
                                {1, 1, false, false}}; // se
static_assert(sizeof(s_resizes) / sizeof(Resize) == e_area_resize_se - e_area_resize_n + 1);

bool IsResize(eCommandArea area)
{
    return area >= e_area_resize_n && area <= e_area_resize_se;
}

/// Tells a component of the begin or the end of a move or resize; of other areas it is told nothing.
void Notify(Component &target, eCommandArea area, eGeometryUpdateEvent moveEvent, eGeometryUpdateEvent resizeEvent)
{
    if (area != e_area_move && !IsResize(area))
        return;
    eGeometryUpdateEvent const event = area == e_area_move ? moveEvent : resizeEvent;
    Message_GeometryUpdateByManager message(event, area, e_mouse_button_left, vec2::ZERO, vec2::ONE, true);
    target.DispatchMessage(message);
}

} // namespace

void CommandMode::TryStart(Component &hit, eCommandArea area, vec2 const &mousePosition)
{
    button_ = parts_.mouseButtons.firstDownButton;
    Watch<Component> const hitWatch(hit);
    Watch<Component> const top(hit.GetTopLevelAncestor());
    Message_GeometryUpdateByManager query(e_geom_query, area, button_, top->GetPosition(), top->GetSize(), false);
    top->DispatchMessage(query);
    if (!query.GetConfirmEvent() || top.Get() == nullptr)
        return;
    startMouse_ = mousePosition;
    area_ = area;
    isEnding_ = false;
    target_ = top.Get();
    Begin();
    // A target that has broken the command off leaves the focus to the click.
    if (IsActive() && parts_.mouse.focusRequest.Get() == nullptr && hitWatch.Get() != nullptr)
        parts_.focus.ChangeTarget(*hitWatch, true, button_);
}

void CommandMode::Begin()
{
    parts_.keyboard.ResetRepeat();
    parts_.mouseButtons.ResetRepeat();
    startPosition_ = target_->GetPosition();
    startSize_ = target_->GetSize();
    Notify(*target_, area_, e_geom_move_begin, e_geom_resize_begin);
    if (!IsActive())
        return;
    if (area_ == e_area_move)
        Membership::SetActiveGeomUpdateEvent(*target_, e_geom_moving, area_);
    else if (IsResize(area_))
        Membership::SetActiveGeomUpdateEvent(*target_, e_geom_resizing, area_);
}

void CommandMode::Step(vec2 const &mousePosition)
{
    if (!IsActive())
        return;
    vec2 const distance = mousePosition - startMouse_;
    if (area_ == e_area_move)
        Apply(startPosition_ + distance, target_->GetSize());
    if (!IsResize(area_))
        return;
    Resize const &resize = s_resizes[area_ - e_area_resize_n];
    vec2 const wanted = startSize_ + vec2(resize.gainX * distance.x, resize.gainY * distance.y);
    vec2 const size = target_->CalcMinMaxClampedSize(wanted);
    vec2 position = target_->GetPosition();
    if (resize.keepsFarX || resize.keepsFarY)
    {
        vec2 const kept = startPosition_ + startSize_ - size;
        position.x = resize.keepsFarX ? kept.x : startPosition_.x;
        position.y = resize.keepsFarY ? kept.y : startPosition_.y;
    }
    Apply(position, size);
}

void CommandMode::Apply(vec2 const &position, vec2 const &size)
{
    bool const isMove = area_ == e_area_move;
    Message_GeometryUpdateByManager step(isMove ? e_geom_moving : e_geom_resizing, area_, button_, position, size,
                                         true);
    target_->DispatchMessage(step);
    if (!step.GetConfirmEvent() || !IsActive())
        return;
    Component &target = *target_;
    target.SetSize(step.GetNewSize());
    target.SetPosition(step.GetNewPosition());
    if (isMove)
        target.UpdateAbsolutePositionCache();
    else
        target.UpdateGeometry(true);
}

void CommandMode::End()
{
    if (!IsActive())
        return;
    if (!isEnding_)
    {
        isEnding_ = true;
        Membership::SetActiveGeomUpdateEvent(*target_, e_geom_none, e_area_client);
        Notify(*target_, area_, e_geom_move_end, e_geom_resize_end);
    }
    target_ = nullptr;
    isEnding_ = false;
    area_ = e_area_client;
    parts_.pending.forceHitTest = true;
    parts_.mouse.hoverTime = 0;
    parts_.keyboard.ResetRepeat();
    parts_.mouseButtons.ResetRepeat();
}

} // namespace quillmarsh::gui::manager_parts
