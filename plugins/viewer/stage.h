// The middle of the window: the view of the current document, or a word about why there is none.
#ifndef QUILLMARSH_PLUGINS_VIEWER_STAGE_H
#define QUILLMARSH_PLUGINS_VIEWER_STAGE_H

#include "workspace.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/tabview.h>
#include <quillmarsh/widgets/textbutton.h>

namespace viewer
{

/// Holds the views of all rooms, of which one shows, and a message for the time without one. It takes the focus that no
/// other component wants, so that keys reach the bindings. Frame thread only.
class Stage : public quillmarsh::gui::Component
{
public:
    explicit Stage(quillmarsh::gui::Component &parent, Workspace &workspace);
    ~Stage() override;

    /// Shows a view, which is a child; null for the message.
    void ShowView(Component *view);
    /// Sets the message that shows without a view. `isFailure` colours the text.
    void SetMessage(string const &heading, string const &text, bool isFailure);

    /// Shows the titles of open documents as tabs above the view, if there are several.
    void ShowTitles(std::vector<string> const &titles, unsigned int shown);

    void RecalcLayout() override;
    void DrawSelf(quillmarsh::gui::Renderer &renderer) override;
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, quillmarsh::eMouseButton button, bool &wantFocus,
                              bool &needCharacterData) override;

private:
    void ShowMessage();
    /// Height of the tabs, in pixels; 0 if there are none.
    float CalcTabsHeight() const;

    Component *view_ = nullptr;
    quillmarsh::widgets::Label *heading_;
    quillmarsh::widgets::Label *text_;
    quillmarsh::widgets::Label *failure_;
    quillmarsh::widgets::TextButton *open_;
    /// Of the documents; its pages are empty.
    quillmarsh::widgets::TabView *tabs_;
};

} // namespace viewer

#endif
