#include "sections.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/listbox.h>
#include <quillmarsh/widgets/progressbar.h>
#include <quillmarsh/widgets/scrollbar.h>
#include <quillmarsh/widgets/slider.h>
#include <quillmarsh/widgets/splitter.h>
#include <quillmarsh/widgets/tabview.h>
#include <quillmarsh/widgets/textbutton.h>
#include <quillmarsh/widgets/textfield.h>

#include <sstream>

namespace gallery
{

using namespace quillmarsh;
using namespace quillmarsh::widgets;

namespace
{

string ToText(float value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

/// Adds a titled sample for each state.
template<typename Make>
void AddStates(Grid &grid, Make const &make)
{
    for (State const &state : GetStates())
    {
        new Label(&grid, state.title, ShaderName_Hint);
        state.apply(make(grid));
    }
}

/// Scroll bar of a length in units.
class SampleBar : public ScrollBar
{
public:
    SampleBar(gui::Component &parent, float length) : ScrollBar(false, &parent), length_(length) {}

    void RecalcSize() override
    {
        ScrollBar::RecalcSize();
        SetSizeX(Measures::Pixels(length_));
    }

private:
    float length_;
};

constexpr char const *s_planets[] = {"Mercury", "Venus", "Earth", "Mars", "Jupiter", "Saturn", "Uranus", "Neptune"};

} // namespace

void BuildSliders(Stack &page)
{
    auto *const columns = new Stack(false, &page, 32);
    columns->SetAlignment(e_stack_start);
    auto *const grid = new Grid(2, columns, {20, 12});
    AddStates(*grid,
              [](Grid &parent) -> gui::Component &
              {
                  auto *const slider = new Slider(false, &parent, 200);
                  slider->SetValue(0.6F);
                  return *slider;
              });
    new Label(grid, "Exposure", ShaderName_Label);
    auto *const row = new Stack(false, grid);
    auto *const exposure = new Slider(false, row, 200);
    exposure->SetRange(-4, 4, 0.25F);
    auto *const value = new Label(row, "0");
    exposure->SetAction([value](float exposed) { value->SetText(ToText(exposed)); });

    auto *const vertical = new Stack(false, columns, 20);
    for (float const fraction : {0.25F, 0.5F, 1.F})
        (new Slider(true, vertical, 160))->SetValue(fraction);

    new Label(&page, "Scroll bar", ShaderName_Hint);
    (new SampleBar(page, 320))->SetSizes(400, 100);
    new Label(&page, "Progress, with and without a known end", ShaderName_Hint);
    auto *const known = new ProgressBar(&page, 320);
    known->SetValue(0.4F);
    known->SetText("40 %");
    (new ProgressBar(&page, 320))->SetValue(-1);
}

void BuildFields(Stack &page)
{
    auto *const grid = new Grid(2, &page, {20, 12});
    AddStates(*grid, [](Grid &parent) -> gui::Component & { return *new TextField(&parent, "Nebula.tif", 240); });
    new Label(grid, "Empty", ShaderName_Hint);
    (new TextField(grid, string(), 240))->SetPlaceholder("Name of the file");
    new Label(grid, "Selected", ShaderName_Hint);
    auto *const selected = new TextField(grid, "All of it is selected", 240);
    selected->SelectAll();
    selected->SetFocused(true);
    new Label(grid, "Wrong", ShaderName_Hint);
    (new TextField(grid, "12x", 240))->SetWrong(true);
    new Label(grid, "Read only", ShaderName_Hint);
    (new TextField(grid, "1024 by 768", 240))->SetReadOnly(true);
    new Label(grid, "Longer than the field", ShaderName_Hint);
    new TextField(grid, "The quick brown fox jumps over the lazy dog, and over the fence behind it", 240);
}

void BuildLists(Stack &page)
{
    auto *const columns = new Stack(false, &page, 20);
    columns->SetAlignment(e_stack_start);
    auto *const one = new Stack(true, columns);
    new Label(one, "One row", ShaderName_Hint);
    auto *const planets = new ListBox(one, {200, 220});
    for (char const *planet : s_planets)
        planets->AddItem({.text = planet});
    planets->Select(2);

    auto *const several = new Stack(true, columns);
    new Label(several, "Several rows, with marks and details", ShaderName_Hint);
    auto *const files = new ListBox(several, {280, 220});
    files->SetMultipleSelection(true);
    files->AddItem({.text = "Recordings", .mark = e_mark_folder});
    files->AddItem({.text = "Nebula.tif", .mark = e_mark_picture, .detail = "12 MB"});
    files->AddItem({.text = "Head.qmvol", .mark = e_mark_volume, .detail = "64 MB"});
    files->AddItem({.text = "Pulse.qmsig", .mark = e_mark_signal, .detail = "3 MB"});
    files->AddItem({.text = "A name that is much too long for the list that it stands in.txt",
                    .mark = e_mark_file,
                    .detail = "1 KB"});
    files->SetSelected(1, true);
    files->SetSelected(3, true);

    auto *const many = new Stack(true, columns);
    new Label(many, "A hundred thousand rows", ShaderName_Hint);
    auto *const numbers = new ListBox(many, {160, 220});
    std::vector<ListItem> items(100000);
    for (std::size_t i = 0; i < items.size(); ++i)
        items[i].text = std::to_string(i);
    numbers->SetItems(std::move(items));

    auto *const disabled = new ListBox(&page, {200, 80});
    disabled->AddItem({.text = "Disabled"});
    disabled->AddItem({.text = "Selected and disabled"});
    disabled->Select(1);
    disabled->SetCanDisable(true);
    disabled->SetEnabled(false);
}

void BuildTabs(Stack &page)
{
    auto *const tabs = new TabView(&page, {560, 180});
    char const *const titles[] = {"Image", "Volume", "Signal"};
    for (char const *title : titles)
    {
        auto *const column = new Stack(true, &tabs->AddPage(title));
        column->SetMargin(Measures::Margin);
        new Label(column, string("The page of the tab ") + title + '.');
        new CheckBox(column, "Show it at start", true);
    }

    auto *const splitter = new Splitter(false, &page, {560, 200});
    auto *const left = new Stack(true, &splitter->GetFirst());
    left->SetMargin(Measures::Margin);
    new Label(left, "First");
    auto *const right = new Stack(true, &splitter->GetSecond());
    right->SetFitToParent(true);
    right->SetAlignment(e_stack_stretch);
    auto *const nested = new Splitter(true, right, {40, 40});
    right->SetFill(*nested);
    auto *const above = new Stack(true, &nested->GetFirst());
    above->SetMargin(Measures::Margin);
    new Label(above, "Second, above");
    auto *const below = new Stack(true, &nested->GetSecond());
    below->SetMargin(Measures::Margin);
    new Label(below, "Second, below");
}

} // namespace gallery
