// What stands behind menus.
#ifndef QUILLMARSH_SOURCE_WIDGETS_MENUBACKDROP_H
#define QUILLMARSH_SOURCE_WIDGETS_MENUBACKDROP_H

#include <quillmarsh/widgets/menu.h>

namespace quillmarsh::widgets
{

/// Parent of the first menu of a chain, which is the parent of the next one, and so on. Knows who was active and focused
/// before.
class Menu::Backdrop : public gui::Component
{
public:
    explicit Backdrop(gui::Rectangle const &anchor);

    /// Shows the menu, modal and with the focus.
    void Run(Menu &menu);
    /// Gives focus and activity back, and deletes this component with all menus. If another modal component stands
    /// above the menus, both stay with that one.
    void Close();

    /// @name Mouse
    /// @{
    /// Tells whether the mouse stands elsewhere than at the last call: components are also told of a move when something
    /// has moved below the mouse.
    bool HasMouseMoved();
    /// A release chooses only when the mouse has been moved or pressed in a menu. Otherwise it ends the click that has
    /// opened the menu.
    bool TakesRelease() const { return takesRelease_; }
    void SetTakesRelease() { takesRelease_ = true; }
    /// @}

    void RecalcSize() override;
    void RecalcLayout() override;
    void OnWindowResize(unsigned int width, unsigned int height) override;
    bool OnDeactivate(bool byMouse) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;

private:
    gui::Rectangle anchor_;
    vec2 openedAt_ = {0, 0};
    vec2 mouseAt_ = {0, 0};
    bool takesRelease_ = false;
    bool isClosing_ = false;
    bool wasApplicationActive_ = false;
    gui::Watch<gui::Component> wasActive_;
    gui::Watch<gui::Component> hadFocus_;
};

} // namespace quillmarsh::widgets

#endif
