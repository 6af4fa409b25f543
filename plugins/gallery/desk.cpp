#include "desk.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/label.h>

#include <algorithm>
#include <sstream>

namespace gallery
{

using namespace quillmarsh;
using namespace quillmarsh::widgets;

namespace
{

constexpr unsigned int s_themeGroup = 1;
constexpr unsigned int s_scaleGroup = 2;
constexpr float s_sideWidth = 200;

struct ThemeSwitch
{
    char const *text;
    char const *theme;
};
constexpr ThemeSwitch s_themes[] = {{"Dark", "dark"}, {"Light", "light"}};

struct ScaleSwitch
{
    char const *text;
    float scale;
};
constexpr ScaleSwitch s_scales[] = {{"1", 1.F}, {"1.5", 1.5F}, {"2", 2.F}};

string ToLower(string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

/// True if every word of `words` stands in title, hint or keywords.
bool Matches(Section const &section, string const &words)
{
    string const text = ToLower(string(section.title) + ' ' + section.hint + ' ' + section.keywords);
    std::istringstream stream(ToLower(words));
    for (string word; stream >> word;)
    {
        if (text.find(word) == string::npos)
            return false;
    }
    return true;
}

/// Column that takes the height it gets, so that a tall page leaves the column beside it within the window.
class Page : public Stack
{
public:
    explicit Page(gui::Component &parent) : Stack(true, &parent, Measures::Margin) {}

    void RecalcSize() override
    {
        Stack::RecalcSize();
        SetSizeY(0);
    }
};

} // namespace

Desk::Desk() : Panel(string()), shown_(&GetSections().front())
{
    SetMovable(false);
    SetResizable(false);
    SetClosable(false);
    SetShaderName(ShaderName_Desk);
    auto *const columns = new Stack(false, &GetContent(), Measures::Margin);
    columns->SetFitToParent(true);
    columns->SetAlignment(e_stack_stretch);

    auto *const side = new Stack(true, columns);
    side->SetAlignment(e_stack_stretch);
    new Label(side, "Gallery", ShaderName_Heading);
    search_ = new TextField(side, string(), s_sideWidth);
    search_->SetPlaceholder("Search");
    search_->SetToolTipText("Lists the sections that have all of these words;\nEnter shows the first one.");
    search_->SetAction([this](string const &words) { ListSections(words); });
    search_->SetEnterAction(
        [this](string const &words)
        {
            if (listed_.empty())
                return;
            Show(*listed_.front());
            ListSections(words);
        });
    list_ = new ListBox(side, {s_sideWidth, 72});
    list_->SetAction([this](unsigned int index) { Show(*listed_[index]); });
    side->SetFill(*list_);
    MakeSwitches(*side);

    page_ = new Page(*columns);
    columns->SetFill(*page_);
    ListSections(string());
    Show(*shown_);
}

void Desk::MakeSwitches(gui::Component &parent)
{
    new Label(&parent, "Theme", ShaderName_Hint);
    auto *const themes = new Stack(false, &parent);
    for (ThemeSwitch const &row : s_themes)
    {
        auto *const button = new TextButton(themes, row.text, TextButton::e_style_select, s_themeGroup);
        button->SetAction([theme = row.theme]
                          { Kernel::Instance().QueueCommandLine(string("var look.theme ") + theme); });
        themes_.push_back(button);
    }
    new Label(&parent, "Scale", ShaderName_Hint);
    auto *const scales = new Stack(false, &parent);
    for (ScaleSwitch const &row : s_scales)
    {
        auto *const button = new TextButton(scales, row.text, TextButton::e_style_select, s_scaleGroup);
        button->SetMinWidth(48);
        button->SetAction([text = row.text] { Kernel::Instance().QueueCommandLine(string("var look.scale ") + text); });
        scales_.push_back(button);
    }
}

void Desk::ShowLook(string const &theme, float scale)
{
    for (std::size_t i = 0; i < themes_.size(); ++i)
        themes_[i]->SetSelected(theme == s_themes[i].theme, false, false);
    for (std::size_t i = 0; i < scales_.size(); ++i)
        scales_[i]->SetSelected(scale == s_scales[i].scale, false, false);
}

void Desk::ListSections(string const &words)
{
    listed_.clear();
    std::vector<ListItem> items;
    for (Section const &section : GetSections())
    {
        if (!Matches(section, words))
            continue;
        listed_.push_back(&section);
        items.push_back({.text = section.title});
    }
    list_->SetItems(std::move(items));
    auto const found = std::find(listed_.begin(), listed_.end(), shown_);
    if (found != listed_.end())
        list_->Select(static_cast<unsigned int>(found - listed_.begin()));
    search_->SetWrong(listed_.empty());
}

bool Desk::ShowSection(string const &title)
{
    for (Section const &section : GetSections())
    {
        if (ToLower(section.title) != ToLower(title))
            continue;
        Show(section);
        search_->SetText(string());
        ListSections(string());
        return true;
    }
    return false;
}

void Desk::Show(Section const &section)
{
    shown_ = &section;
    page_->DeleteAllChildren();
    new Label(page_, section.title, ShaderName_Heading);
    new Label(page_, section.hint, ShaderName_Hint);
    section.build(*page_);
    ReportDirtyGeometry();
}

void Desk::RecalcSize()
{
    Panel::RecalcSize();
    SetPosition(0, 0);
    SetSize(gui::Manager::Instance().GetWindowSize());
}

void Desk::OnWindowResize(unsigned int, unsigned int)
{
    ReportDirtyGeometry();
}

} // namespace gallery
