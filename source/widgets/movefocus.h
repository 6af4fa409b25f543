// The way of the focus through a branch.
#ifndef QUILLMARSH_SOURCE_WIDGETS_MOVEFOCUS_H
#define QUILLMARSH_SOURCE_WIDGETS_MOVEFOCUS_H

namespace quillmarsh::gui
{
class Component;
}

namespace quillmarsh::widgets
{

/// Does what MoveFocus() does, as if `current` had the focus; it may be null.
bool MoveFocusFrom(gui::Component &branch, gui::Component const *current, bool forward);

} // namespace quillmarsh::widgets

#endif
