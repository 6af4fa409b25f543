// A column of widgets that may be higher than its place.
#ifndef QUILLMARSH_PLUGINS_VIEWER_SCROLLCOLUMN_H
#define QUILLMARSH_PLUGINS_VIEWER_SCROLLCOLUMN_H

#include <quillmarsh/widgets/scrollbar.h>
#include <quillmarsh/widgets/stack.h>

namespace viewer
{

/// Column of widgets that scrolls by wheel, scroll bar, and with the focus. It does not cut its widgets: what stands
/// above and below it has to be opaque, and to be attached later. Its parent sets its size. Frame thread only.
class ScrollColumn : public quillmarsh::gui::Component
{
public:
    explicit ScrollColumn(quillmarsh::gui::Component &parent);
    ~ScrollColumn() override;

    /// Where the widgets are attached to.
    quillmarsh::widgets::Stack &GetStack() { return *stack_; }
    /// Scrolls to the component with the focus, if it is one of the column's and has just got it.
    void FollowFocus();

    void RecalcLayout() override;
    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, quillmarsh::vec2 const &position) override;

private:
    void ScrollTo(float top);

    quillmarsh::widgets::Stack *stack_;
    quillmarsh::widgets::ScrollBar *bar_;
    /// Pixels that are hidden above.
    float top_ = 0;
    quillmarsh::gui::Watch<quillmarsh::gui::Component> lastFocus_;
};

} // namespace viewer

#endif
