#include <quillmarsh/gui/gui_widgets.h>

#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/gui/gui_watch.h>

#include <algorithm>
#include <cmath>

namespace quillmarsh::gui
{

Thumb::Thumb(bool reportVerticalOffset, Component *parent) : reportVerticalOffset_(reportVerticalOffset)
{
    SetCanDisable(true);
    if (parent != nullptr)
        AttachTo(*parent);
}

Thumb::~Thumb() = default;

bool Thumb::OnMouseCapture(bool begin)
{
    grabbed_ = begin;
    if (begin)
        OnThumbGrabbed();
    else
        OnThumbReleased();
    return true;
}

bool Thumb::OnMouseMove(bool, double, vec2 const &position)
{
    if (!IsMouseCaptureTarget())
        return false;
    vec2 const distance = position + GetAbsolutePosition() - grabStart_;
    float const offset = reportVerticalOffset_ ? distance.y : distance.x;
    if (offset != 0)
        OnThumbMoved(offset);
    return true;
}

bool Thumb::OnMouseButton(bool down, eMouseButton button, bool, unsigned int repeatCount, vec2 const &position)
{
    if (!down || button != actionButton_ || repeatCount > 0)
        return false;
    // Before the capture, whose handler may move the thumb.
    vec2 const start = position + GetAbsolutePosition();
    Watch<Thumb> const self(*this);
    if (RequestMouseCapture() && self.Get() != nullptr)
        grabStart_ = start;
    return true;
}

RubberBand::RubberBand(MessageHandler *target, unsigned int commandID) : CommandSender(target, commandID)
{
    SetVisible(false);
}

RubberBand::~RubberBand() = default;

bool RubberBand::OnMouseCapture(bool begin)
{
    Watch<RubberBand> const self(*this);
    SetActive(begin);
    if (!begin && self.Get() != nullptr)
    {
        ShowTopLevel(false, true);
        if (self.Get() != nullptr)
            SendCommandMessageToTarget();
    }
    return true;
}

bool RubberBand::OnMouseMove(bool, double, vec2 const &position)
{
    lastPosition_.Set(std::min(start_.x, position.x), std::min(start_.y, position.y));
    lastSize_.Set(std::abs(position.x - start_.x), std::abs(position.y - start_.y));
    SendCommandMessageToTarget();
    return true;
}

void RubberBand::Begin(vec2 const &position)
{
    vec2 const start = position;
    Watch<RubberBand> const self(*this);
    if (!RequestMouseCapture() || self.Get() == nullptr)
        return;
    SetPosition(0, 0);
    UpdateGeometry(true);
    if (self.Get() == nullptr)
        return;
    start_ = start;
    lastPosition_ = start;
    lastSize_.Set(0, 0);
    ShowTopLevel(true, true);
    if (self.Get() != nullptr)
        SendCommandMessageToTarget();
}

InterleavedRenderArea::InterleavedRenderArea(Component *parent, unsigned int areaCode) : areaCode_(areaCode)
{
    if (parent != nullptr)
        AttachTo(*parent);
}

InterleavedRenderArea::~InterleavedRenderArea() = default;

void InterleavedRenderArea::DrawSelf(Renderer &renderer)
{
    renderer.BeginInterleaved();
    Kernel::Instance().GetApplication().FrameRenderArea(*this);
    renderer.EndInterleaved();
}

} // namespace quillmarsh::gui
