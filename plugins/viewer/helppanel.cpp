#include "helppanel.h"

#include <quillmarsh/basetools/texttools.h>

#include <sstream>

namespace viewer
{

using namespace quillmarsh;

namespace
{

constexpr vec2 s_size = {520, 560};

/// True if each of the words stands in the text, in upper or lower case.
bool HasWords(string text, string words)
{
    LowerCase(text);
    LowerCase(words);
    std::istringstream stream(words);
    for (string word; stream >> word;)
    {
        if (text.find(word) == string::npos)
            return false;
    }
    return true;
}

} // namespace

HelpPanel::HelpPanel(Workspace &workspace, Desk &desk, Rooms const &rooms, std::span<KeyBinding const> globalKeys)
    : Panel("Keys", s_size),
      workspace_(workspace),
      desk_(desk),
      rooms_(rooms),
      globalKeys_(globalKeys)
{
    auto *const column = new widgets::Stack(true, &GetContent());
    column->SetFitToParent(true);
    column->SetAlignment(widgets::e_stack_stretch);
    search_ = new widgets::TextField(column);
    search_->SetPlaceholder("Search");
    search_->SetToolTipText("Lists the keys that have all of these words.");
    search_->SetAction([this](string const &words) { ListKeys(words); });
    list_ = new widgets::ListBox(column);
    list_->SetAction([this](unsigned int row) { ShowLine(row); });
    list_->SetOpenAction(
        [this](unsigned int row)
        {
            if (bindings_[row] != nullptr)
                workspace_.Run(bindings_[row]->line);
        });
    column->SetFill(*list_);
    line_ = new widgets::Label(column, string(), widgets::ShaderName_Hint);
    line_->SetFixedWidth(true);
    ListKeys(string());
}

HelpPanel::~HelpPanel() = default;

void HelpPanel::ListKeys(string const &words)
{
    std::vector<widgets::ListItem> items;
    bindings_.clear();
    Add("Window", globalKeys_, words, items);
    for (std::unique_ptr<Room> const &room : rooms_)
        Add(room->GetTitle(), room->GetKeys(), words, items);
    search_->SetWrong(items.empty());
    list_->SetItems(std::move(items));
    ShowLine(widgets::ListBox::s_noItem);
}

void HelpPanel::Add(char const *title, std::span<KeyBinding const> keys, string const &words,
                    std::vector<widgets::ListItem> &items)
{
    bool hasTitle = false;
    for (KeyBinding const &binding : keys)
    {
        string const key = FormatKey(binding);
        if (!HasWords(string(title) + ' ' + binding.description + ' ' + key + ' ' + binding.line, words))
            continue;
        if (!hasTitle)
        {
            items.push_back({.text = title, .mark = widgets::e_mark_arrow_down});
            bindings_.push_back(nullptr);
            hasTitle = true;
        }
        items.push_back({.text = binding.description, .detail = key});
        bindings_.push_back(&binding);
    }
}

void HelpPanel::ShowLine(unsigned int row)
{
    bool const isKey = row < bindings_.size() && bindings_[row] != nullptr;
    line_->SetText(isKey ? string("As a line of the console: ") + bindings_[row]->line
                         : string("Enter does what a row says, and shows it as a line of the console."));
}

bool HelpPanel::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character)
{
    // Letters are for the list, whether it knows them or not.
    bool const isFunctionKey = key >= e_key_f1 && key <= e_key_f12;
    return Panel::OnKeyboardKey(down, key, repeatCount, character) ||
           (down && isFunctionKey && desk_.RunKey(key, repeatCount));
}

void HelpPanel::Toggle()
{
    if (IsVisible())
    {
        Close();
        return;
    }
    Open();
    search_->SelectAll();
    search_->RequestKeyboardFocus();
}

} // namespace viewer
