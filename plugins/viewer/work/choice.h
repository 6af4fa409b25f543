// A button that shows one of several words, and offers the others.
#ifndef QUILLMARSH_PLUGINS_VIEWER_WORK_CHOICE_H
#define QUILLMARSH_PLUGINS_VIEWER_WORK_CHOICE_H

#include <quillmarsh/widgets/textbutton.h>

#include <vector>

namespace viewer
{

using quillmarsh::string;

/// Button with the chosen word; it opens a menu of all words. Frame thread only.
class Choice : public quillmarsh::widgets::TextButton
{
public:
    /// Chooses the first word. There is at least one.
    Choice(Component *parent, std::vector<string> words);

    string const &GetChosen() const { return words_[chosen_]; }
    void Choose(unsigned int index);
    /// Chooses a word; keeps the choice if there is no such word.
    void Choose(string const &word);
    /// Called when the user has chosen.
    void SetChooseAction(std::function<void()> action) { onChosen_ = std::move(action); }

private:
    void OpenMenu();

    std::vector<string> words_;
    unsigned int chosen_ = 0;
    std::function<void()> onChosen_;
};

} // namespace viewer

#endif
