// The console of a program inside its GUI.
#ifndef QUILLMARSH_WIDGETS_CONSOLEPANEL_H
#define QUILLMARSH_WIDGETS_CONSOLEPANEL_H

#include <quillmarsh/gui/gui_watch.h>
#include <quillmarsh/widgets/panel.h>

namespace quillmarsh::widgets
{

class ConsoleText;
class TextField;

/// Console of the program as a panel: its text, and a line to enter commands, with history and completion.
///
/// A key opens and closes it, whatever has the focus, also while another panel is modal: F9 at first. In the line, Up and
/// Down go through the history of the console's buffers, Tab completes and lists what can stand there, Shift+Tab leaves
/// the line, Enter queues it with the kernel, Escape empties it or closes the panel, Page Up and Down scroll the text.
/// What had the focus has it again after the panel was closed. Delayed screenshots are made without the panel. Frame
/// thread only.
class QUILLMARSH_API ConsolePanel : public Panel
{
public:
    /// Takes buffers and interpreter of the kernel, which must exist. Closed at first; it stands at the top of the window
    /// and is as wide.
    ConsolePanel();
    ~ConsolePanel() override;

    /// Sets the key that opens and closes it; e_key_none for none.
    void SetToggleKey(eKey key) { toggleKey_ = key; }
    eKey GetToggleKey() const { return toggleKey_; }
    /// Opens the closed panel, and closes the open one.
    void Toggle();

    ConsoleText &GetText() { return *text_; }
    TextField &GetLine() { return *line_; }
    /// Enters a line, in UTF-8, as if it was typed. Blank lines and comments, which begin with "#", do nothing.
    void Enter(string const &line);

    void RecalcSize() override;
    void RecalcLayout() override;
    void OnTimeDelta(double seconds) override;
    void OnChangedActive() override;
    void OnWindowResize(unsigned int width, unsigned int height) override;

private:
    class Line;

    void HideFromScreenshots();
    void RememberFocus();
    void RestoreFocus();
    void FollowVisibility();

    ConsoleText *text_ = nullptr;
    TextField *line_ = nullptr;
    eKey toggleKey_ = e_key_f9;
    /// As of the last frame.
    bool wasVisible_ = false;
    /// Had the focus before the panel was shown; null for the application.
    gui::Watch<gui::Component> previousFocus_;
};

} // namespace quillmarsh::widgets

#endif
