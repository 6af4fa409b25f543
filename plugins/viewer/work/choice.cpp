#include "choice.h"

#include <quillmarsh/gui/gui_watch.h>
#include <quillmarsh/widgets/menu.h>

#include <algorithm>

namespace viewer
{

using namespace quillmarsh;

Choice::Choice(Component *parent, std::vector<string> words) : TextButton(parent, words[0]), words_(std::move(words))
{
    SetMark(widgets::e_mark_arrow_down);
    SetAction([this] { OpenMenu(); });
}

void Choice::Choose(unsigned int index)
{
    chosen_ = index;
    SetText(words_[index]);
}

void Choice::Choose(string const &word)
{
    auto const found = std::find(words_.begin(), words_.end(), word);
    if (found != words_.end())
        Choose(static_cast<unsigned int>(found - words_.begin()));
}

void Choice::OpenMenu()
{
    std::vector<widgets::MenuItem> items;
    for (unsigned int i = 0; i < words_.size(); ++i)
    {
        gui::Watch<Choice> const choice(this);
        auto const choose = [choice, i]
        {
            if (!choice)
                return;
            choice->Choose(i);
            if (choice->onChosen_)
                choice->onChosen_();
        };
        items.push_back({words_[i], choose, i == chosen_ ? widgets::e_mark_check : widgets::e_mark_none});
    }
    widgets::Menu::OpenBelow(std::move(items), *this);
}

} // namespace viewer
