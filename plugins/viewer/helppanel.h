// The page that lists all keys.
#ifndef QUILLMARSH_PLUGINS_VIEWER_HELPPANEL_H
#define QUILLMARSH_PLUGINS_VIEWER_HELPPANEL_H

#include "desk.h"

#include <quillmarsh/widgets/listbox.h>
#include <quillmarsh/widgets/textfield.h>

namespace viewer
{

/// Lists the keys of the window and of all rooms, with a field that searches them. Opening a row runs its line. The
/// manager owns it; desk and rooms are borrowed. Frame thread only.
class HelpPanel : public quillmarsh::widgets::Panel
{
public:
    HelpPanel(Workspace &workspace, Desk &desk, Rooms const &rooms, std::span<KeyBinding const> globalKeys);
    ~HelpPanel() override;

    /// Opens the closed panel with the focus in the search field, and closes the open one.
    void Toggle();

    using Panel::OnKeyboardKey;
    bool OnKeyboardKey(bool down, quillmarsh::eKey key, unsigned int repeatCount, char character) override;

private:
    void ListKeys(string const &words);
    void Add(char const *title, std::span<KeyBinding const> keys, string const &words,
             std::vector<quillmarsh::widgets::ListItem> &items);
    void ShowLine(unsigned int row);

    Workspace &workspace_;
    Desk &desk_;
    Rooms const &rooms_;
    std::span<KeyBinding const> globalKeys_;
    quillmarsh::widgets::TextField *search_;
    quillmarsh::widgets::ListBox *list_;
    quillmarsh::widgets::Label *line_;
    /// Of each row of the list; null for a title.
    std::vector<KeyBinding const *> bindings_;
};

} // namespace viewer

#endif
