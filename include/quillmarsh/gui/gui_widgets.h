// Widgets that are dragged, and the hole in the GUI that the application draws into.
#ifndef QUILLMARSH_GUI_GUI_WIDGETS_H
#define QUILLMARSH_GUI_GUI_WIDGETS_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_rectangle.h>

namespace quillmarsh::gui
{

/// Base of handles that the mouse drags along one axis, for sliders and scroll bars. It reports the drag, and does not
/// move itself. Frame thread only.
class QUILLMARSH_API Thumb : public Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. It can be disabled.
    Thumb(bool reportVerticalOffset, Component *parent);
    ~Thumb() override;

    bool OnMouseCapture(bool begin) override;
    bool OnMouseMove(bool hover, double hoverSeconds, vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;

    /// @name Reports of a drag
    /// @{
    virtual void OnThumbGrabbed() = 0;
    /// The mouse was moved. `offset` is the distance in pixels from the place where the thumb was grabbed, never 0.
    virtual void OnThumbMoved(float offset) = 0;
    virtual void OnThumbReleased() = 0;
    /// @}

    /// True if it reports vertical offsets, false if horizontal ones.
    bool IsReportingVerticalOffset() const { return reportVerticalOffset_; }
    bool IsGrabbed() const { return grabbed_; }
    /// Ends the drag; harmless if there is none.
    void ReleaseGrab() { ReleaseMouseCapture(); }
    /// Sets the button of the mouse that counts; the left one at first.
    void SetActionButton(eMouseButton button) { actionButton_ = button; }
    eMouseButton GetActionButton() const { return actionButton_; }

private:
    bool reportVerticalOffset_;
    eMouseButton actionButton_ = e_mouse_button_left;
    bool grabbed_ = false;
    /// Position of the mouse in the window.
    vec2 grabStart_ = {0, 0};
};

/// Top-level component with which the user drags out a rectangle. It sends its command at the begin, with each movement
/// and at the end; IsActive() and IsVisible() tell them apart. Frame thread only.
class QUILLMARSH_API RubberBand : public Component, public CommandSender
{
public:
    /// Invisible until Begin(). The target is borrowed, see SetCommandTarget().
    RubberBand(MessageHandler *target, unsigned int commandID);
    ~RubberBand() override;

    bool OnMouseCapture(bool begin) override;
    bool OnMouseMove(bool hover, double hoverSeconds, vec2 const &position) override;

    /// Begins at a position in the window. Does nothing if the mouse cannot be captured.
    void Begin(vec2 const &position);
    /// Gives the rectangle in the window, as of the last movement.
    void GetLastArea(Rectangle &area) const { area.Set(lastPosition_, lastSize_); }

private:
    vec2 start_ = {0, 0};
    vec2 lastPosition_ = {0, 0};
    vec2 lastSize_ = {0, 0};
};

/// Hole in the GUI into which the application draws, by Application::FrameRenderArea(). Frame thread only.
class QUILLMARSH_API InterleavedRenderArea : public Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null.
    InterleavedRenderArea(Component *parent, unsigned int areaCode);
    ~InterleavedRenderArea() override;

    void DrawSelf(Renderer &renderer) override;

    /// The application tells its areas apart by this code.
    void SetAreaCode(unsigned int areaCode) { areaCode_ = areaCode; }
    unsigned int GetAreaCode() const { return areaCode_; }

private:
    unsigned int areaCode_;
};

} // namespace quillmarsh::gui

#endif
