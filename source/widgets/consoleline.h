// Line of the console's panel.
#ifndef QUILLMARSH_SOURCE_WIDGETS_CONSOLELINE_H
#define QUILLMARSH_SOURCE_WIDGETS_CONSOLELINE_H

#include <quillmarsh/widgets/consolepanel.h>
#include <quillmarsh/widgets/textfield.h>

namespace quillmarsh
{
class ConsoleBuffers;
struct CompletionCandidate;
} // namespace quillmarsh

namespace quillmarsh::widgets
{

/// Field in which commands are typed. Frame thread only.
class ConsolePanel::Line : public TextField
{
public:
    /// Becomes a child of `parent`, which is part of `panel`.
    Line(ConsolePanel &panel, gui::Component &parent);
    ~Line() override;

    using TextField::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;

private:
    bool ActOnKey(eKey key, bool isRepeated);
    void EnterText();
    void Clear();
    void ShowHistory(bool older);
    void Complete();
    bool ReplaceTyped(string const &typed, string const &replacement, string const &rest);
    void List(std::vector<CompletionCandidate> const &candidates);

    ConsolePanel &panel_;
    /// Number of the command that is shown, from the latest one, 1; 0 for the user's own text.
    unsigned int historyPlace_ = 0;
    /// The user's own text, while commands of the history are shown.
    string ownText_;
    /// Text that the history has put into the line. It may have characters that the line cannot show.
    string shownText_;
};

} // namespace quillmarsh::widgets

#endif
