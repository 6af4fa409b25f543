#include "source/gui/manager/parts.h"

namespace quillmarsh::gui::manager_parts
{

bool MouseCapture::Request(Component &component)
{
    if (target_.Get() != nullptr)
        return target_.Get() == &component;
    if (parts_.commandMode.IsActive() || !parts_.modality.Allows(component))
        return false;
    target_ = &component;
    isEnding_ = false;
    Message_MouseCapture message(true);
    component.DispatchMessage(message);
    return true;
}

void MouseCapture::Release(Component &component)
{
    if (target_.Get() == &component)
        End();
}

void MouseCapture::End()
{
    if (target_.Get() != nullptr && !isEnding_)
    {
        isEnding_ = true;
        Message_MouseCapture message(false);
        target_->DispatchMessage(message);
    }
    // False if the target has ended the capture itself: then it may be another one that runs now.
    if (isEnding_)
    {
        target_ = nullptr;
        isEnding_ = false;
    }
    parts_.pending.forceHitTest = true;
    parts_.mouse.hoverTime = 0;
}

} // namespace quillmarsh::gui::manager_parts
