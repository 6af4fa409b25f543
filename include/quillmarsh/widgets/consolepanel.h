// The console of a program inside its GUI.
#ifndef QUILLMARSH_WIDGETS_CONSOLEPANEL_H
#define QUILLMARSH_WIDGETS_CONSOLEPANEL_H

#include <quillmarsh/widgets/panel.h>

#include <vector>

namespace quillmarsh::widgets
{

class ConsoleText;
class TextField;

/// Console of the program as a panel: its text, and a line to enter commands, with history and completion.
///
/// A key opens and closes it, whatever has the focus: F9 at first. In the line, Up and Down go through the history, Tab
/// completes and lists what can stand there, Enter queues the line with the kernel, Escape empties it or closes the
/// panel, Page Up and Down scroll the text. Delayed screenshots are made without it. Frame thread only.
class QUILLMARSH_API ConsolePanel : public Panel
{
public:
    /// Takes buffers and interpreter of the kernel. Closed at first; it stands at the top of the window.
    ConsolePanel();
    ~ConsolePanel() override;

    /// Sets the key that opens and closes it; e_key_none for none.
    void SetToggleKey(eKey key) { toggleKey_ = key; }
    eKey GetToggleKey() const { return toggleKey_; }
    /// Opens the closed panel, and closes the open one.
    void Toggle();

    ConsoleText &GetText() { return *text_; }
    TextField &GetLine() { return *line_; }
    /// Enters a line, in UTF-8, as if it was typed.
    void Enter(string const &line);

    void OnTimeDelta(double seconds) override;
    void OnWindowResize(unsigned int width, unsigned int height) override;

private:
    class Line;

    ConsoleText *text_ = nullptr;
    TextField *line_ = nullptr;
    eKey toggleKey_ = e_key_f9;
};

} // namespace quillmarsh::widgets

#endif
