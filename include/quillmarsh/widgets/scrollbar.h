// Scroll bars.
#ifndef QUILLMARSH_WIDGETS_SCROLLBAR_H
#define QUILLMARSH_WIDGETS_SCROLLBAR_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/scrollgadget.h>
#include <quillmarsh/platform/types.h>
#include <quillmarsh/widgets/action.h>

namespace quillmarsh::widgets
{

/// Scroll bar of whatever is larger than its place, in steps: lines, rows, pixels. A press beside the thumb scrolls by a
/// page towards the mouse, and goes on while it is held; the wheel scrolls three steps. It never has the focus: its
/// owner handles the keys. Frame thread only.
class QUILLMARSH_API ScrollBar : public gui::Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. Its owner sets its length.
    ScrollBar(bool vertical, gui::Component *parent);
    ~ScrollBar() override;

    /// @name What is scrolled, in steps
    /// The setters do not call the action.
    /// @{
    /// Sets the sizes of the whole and of its visible part, and keeps the position within them.
    void SetSizes(unsigned int total, unsigned int visible);
    void SetScrollPosition(int position);
    unsigned int GetTotalSize() const { return gadget_.GetTotalSize(); }
    unsigned int GetVisibleSize() const { return gadget_.GetVisibleSize(); }
    unsigned int GetScrollPosition() const { return gadget_.GetPosition(); }
    unsigned int GetMaxScrollPosition() const { return gadget_.GetMaxPosition(); }
    /// True if there is something to scroll.
    bool IsNeeded() const { return gadget_.IsVisibleLessThanTotal(); }
    /// @}
    /// Steps of a notch of the wheel, at least 1; 3 at first.
    void SetWheelStep(unsigned int steps);
    /// Called with each new position that the user sets.
    void SetAction(std::function<void(unsigned int)> action) { action_ = std::move(action); }
    /// Scrolls as the user does: by lines, pages, or to an end, and calls the action if that changes the position.
    /// `offset` counts lines or pages.
    void Scroll(bool forward, gui::eScrollDistance distance, int offset = 1);
    bool IsVertical() const { return vertical_; }
    bool IsGrabbed() const;

    void RecalcSize() override;
    void RecalcLayout() override;
    bool OnMsgScroll(bool forward, gui::eScrollDistance distance, int offset) override;
    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;
    void OnChangedEnabled() override;

private:
    class ScrollThumb;

    float GetLength() const { return vertical_ ? GetSize().y : GetSize().x; }
    void ChangeByUser(long long position);
    void PlaceThumb();

    bool vertical_;
    unsigned int wheelStep_ = 3;
    /// Part of a notch of the wheel that has not scrolled yet.
    int wheelRest_ = 0;
    /// Last repetition of a held button that was handled: it is reported in each frame until the next one.
    unsigned int lastRepeat_ = 0;
    ScrollGadget gadget_;
    ScrollThumb *thumb_;
    Action<unsigned int> action_;
};

} // namespace quillmarsh::widgets

#endif
