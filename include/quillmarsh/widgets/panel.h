// Windows inside the window: with a title, a frame to resize by, and a content.
#ifndef QUILLMARSH_WIDGETS_PANEL_H
#define QUILLMARSH_WIDGETS_PANEL_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/widgets/action.h>
#include <quillmarsh/widgets/looknames.h>

namespace quillmarsh::widgets
{

class TextButton;

/// @name The way of the focus
/// Order: children as they were attached, each before its own children. Components that cannot have the focus, that are
/// disabled, hidden, or empty are passed over. Frame thread only.
/// @{
/// Gives the focus to the component of a branch that comes after the one that has it, or before; around at the end, and
/// to the first or last one if none has it. Returns false if there is none.
QUILLMARSH_API bool MoveFocus(gui::Component &branch, bool forward);
/// Moves the focus for Tab, and for shift with Tab. Returns false for other keys. For top-level components that are no
/// panels.
QUILLMARSH_API bool MoveFocusByKey(gui::Component &branch, bool down, eKey key);
/// @}

/// Top-level window of a program's GUI: title bar, frame, and a content to which a program attaches its widgets.
///
/// The title bar moves it, the edges resize it, the cross closes it, which hides it. One that is larger than the window
/// is also moved by its background, so that every part of it can be reached; one that may be resized keeps within the
/// window's size when it opens, and when the window or the scale changes. Tab moves the focus, Enter presses the default
/// button, Escape the cancel button or closes the panel if that may be closed.
///
/// An active panel gives the focus to the component that had it before, or to the first one; also when the component
/// with the focus is deleted, hidden or disabled.
///
/// \code
/// auto *panel = new widgets::Panel("Settings");
/// auto *column = new widgets::Stack(true, &panel->GetContent());
/// new widgets::CheckBox(column, "Show the grid");
/// panel->FitToContent();
/// panel->Open();
/// \endcode
/// Frame thread only.
class QUILLMARSH_API Panel : public gui::Component
{
public:
    /// Invisible until Open(); `size` is in units. The title is UTF-8; without one there is no title bar.
    explicit Panel(string const &title, vec2 const &size = {320, 240});
    ~Panel() override;

    /// @name Title and content
    /// @{
    void SetTitle(string const &title);
    string const &GetTitle() const { return title_; }
    string const &GetTitleGlyphs() const { return titleGlyphs_; }
    bool HasTitle() const { return !title_.empty(); }
    /// Height of the title bar in pixels; 0 without a title.
    float GetTitleHeight() const;
    /// A ghost that fills the panel inside of title bar and margins. Layouters that fit to their parent fill it.
    gui::Component &GetContent() { return *content_; }
    /// Distance between frame and content in units; Measures::Margin at first.
    void SetMargin(float units);
    /// Sets the size, and the least size, that the content's children need, as far as they know their sizes before they
    /// are laid out: Stack and Grid do. Done once, at the next layout, and again with each change of look and scale.
    void FitToContent();
    /// @}

    /// @name What the user may do
    /// All true at first, but for resizing after FitToContent().
    /// @{
    void SetMovable(bool movable) { movable_ = movable; }
    bool IsMovable() const { return movable_; }
    void SetResizable(bool resizable) { resizable_ = resizable; }
    bool IsResizable() const { return resizable_; }
    void SetClosable(bool closable);
    bool IsClosable() const { return closable_; }
    /// @}

    /// @name Opening and closing
    /// @{
    /// Shows the panel in front, active, with the focus in it; at first in the middle of the window.
    void Open();
    /// Hides the panel, ends its modality, activates what was active before it opened, and calls the action of closing.
    /// Ignored while it is closed.
    void Close();
    /// Called after Close(). It may delete the panel.
    void SetCloseAction(std::function<void()> action) { closeAction_ = std::move(action); }
    /// Buttons that Enter and Escape press; null for none. Borrowed: a destroyed one is forgotten. A focused button
    /// takes Enter itself. With a cancel button that cannot be pressed, Escape does nothing.
    void SetDefaultButton(TextButton *button);
    void SetCancelButton(TextButton *button);
    /// @}

    string GetCaption() const override { return title_; }
    void RecalcSize() override;
    void RecalcLayout() override;
    /// Title bar and edges move and resize; the rest is client area.
    gui::eCommandArea HitTestCommandAreaSelf(vec2 const &position) override;
    /// A click of any button into the panel activates it and brings it to the front.
    bool OnActivate(bool byMouse, eMouseButton button, vec2 const &position, Component *clickedDescendant,
                    bool &autoBringToFront, bool &autoActivate) override;
    /// Keeps a part of the title bar inside the window, and the size within its limits.
    bool OnGeometryUpdateByManager(bool &confirm, gui::eGeometryUpdateEvent event, gui::eCommandArea area,
                                   eMouseButton button, vec2 const &newPosition, vec2 const &newSize) override;
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData) override;
    using Component::OnKeyboardFocus;
    /// Passes the focus on into the panel.
    bool OnKeyboardFocus(bool gotFocus) override;
    using Component::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;
    void OnChangedActive() override;
    void OnTimeDelta(double seconds) override;
    void OnWindowResize(unsigned int width, unsigned int height) override;
    void PostCacheShaderHandles() override;

private:
    void AdoptSize();
    void ApplyScale(float scale);
    void ApplySize(vec2 const &window);
    void Fit();
    void PlaceInWindow(vec2 const &window);
    vec2 KeepInside(vec2 const &position, vec2 const &window) const;
    bool IsLargerThanWindow() const;
    void Resize(gui::eCommandArea area, vec2 const &position, vec2 const &size);
    bool HasFocusInside() const;
    void GiveFocus();
    void ActivateFormer();

    string title_;
    string titleGlyphs_;
    /// Size that program or user gave it.
    vec2 sizeInUnits_;
    /// Size that it gave itself, in pixels.
    vec2 appliedSize_ = {0, 0};
    float scale_;
    float margin_;
    bool movable_ = true;
    bool resizable_ = true;
    bool closable_ = true;
    bool fitsToContent_ = false;
    bool isFitPending_ = false;
    bool isPlacePending_ = false;
    bool wasOpened_ = false;
    bool isCenterPending_ = false;
    gui::Component *content_ = nullptr;
    TextButton *closeButton_ = nullptr;
    gui::Watch<TextButton> defaultButton_;
    gui::Watch<TextButton> cancelButton_;
    /// Had the focus when the panel was active last.
    gui::Watch<gui::Component> lastFocus_;
    bool hadFocusInside_ = false;
    /// What was active when it opened.
    gui::Watch<gui::Component> formerTopLevel_;
    bool wasApplicationActive_ = false;
    Action<> closeAction_;
};

} // namespace quillmarsh::widgets

#endif
