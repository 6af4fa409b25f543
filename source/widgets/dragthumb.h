// Handles that widgets are dragged by.
#ifndef QUILLMARSH_SOURCE_WIDGETS_DRAGTHUMB_H
#define QUILLMARSH_SOURCE_WIDGETS_DRAGTHUMB_H

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_widgets.h>

namespace quillmarsh::widgets
{

/// Handle that is dragged along one axis. Unlike its base class it also reports when the mouse is back where the drag
/// began, and it may be grabbed by RequestMouseCapture() alone. A report may delete it. Frame thread only.
class DragThumb : public gui::Thumb
{
public:
    using Thumb::Thumb;

    bool OnMouseMove(bool hover, double, vec2 const &) override
    {
        if (hover || !IsGrabbed())
            return false;
        vec2 const distance = gui::Manager::Instance().GetMousePosition() - start_;
        OnThumbMoved(IsReportingVerticalOffset() ? distance.y : distance.x);
        return true;
    }

    void OnThumbGrabbed() override
    {
        start_ = gui::Manager::Instance().GetMousePosition();
        OnDragBegin();
    }

protected:
    /// The drag begins where the mouse is now. By default it does nothing.
    virtual void OnDragBegin() {}

private:
    vec2 start_ = {0, 0};
};

/// Gives a component that its owner alone lays out another place, in whole pixels, without a new layout.
inline void PlaceComponent(gui::Component &component, vec2 const &position, vec2 const &size)
{
    if (component.GetPosition() == position && component.GetSize() == size)
        return;
    component.SetPosition(position);
    component.SetSize(size);
    component.UpdateAbsolutePositionCache();
    gui::Manager::Instance().ForceHitTestAtNextFrame();
}

} // namespace quillmarsh::widgets

#endif
