#include "imageinspector.h"

#include "../room.h"
#include "histogramplot.h"
#include "imagewords.h"
#include "numbers.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/widgets/filedialog.h>
#include <quillmarsh/widgets/menu.h>

#include <algorithm>

namespace viewer
{

using namespace quillmarsh;
using namespace quillmarsh::widgets;

namespace
{

/// A number of the display with its widgets, and the line that sets it to a text.
struct Setting
{
    char const *title;
    char const *tip;
    float minimum;
    float maximum;
    float step;
    double DisplaySettings::*number;
    string (*format)(DisplaySettings const &display, string const &text);
};

constexpr Setting s_settings[] = {
    {"Exposure", "Each step doubles the values (E, Shift+E)", -8, 8, 0.25F, &DisplaySettings::exposure,
     [](DisplaySettings const &, string const &text) { return "exposure " + text; }},
    {"Gamma", "Values are raised to 1 / gamma (G, Shift+G)", 0.2F, 4, 0.05F, &DisplaySettings::gamma,
     [](DisplaySettings const &, string const &text) { return "gamma " + text; }},
    {"Black", "What becomes black, as a part of the range of values", 0, 1, 0.005F, &DisplaySettings::low,
     [](DisplaySettings const &display, string const &text)
     { return "window " + text + ' ' + FormatNumber(display.high); }},
    {"White", "What becomes white, as a part of the range of values", 0, 1, 0.005F, &DisplaySettings::high,
     [](DisplaySettings const &display, string const &text)
     { return "window " + FormatNumber(display.low) + ' ' + text; }}};

constexpr float s_choiceWidth = 164;
constexpr float s_switchWidth = 72;
constexpr unsigned int s_maxChannels = 4;
constexpr char const *s_figureTitles[] = {"", "Minimum", "Maximum", "Mean", "Deviation"};
constexpr vec2 s_tableGap = {8, 2};
constexpr vec2 s_rowGap = {8, 4};
/// Numbers of the groups of buttons of which one is selected.
constexpr unsigned int s_switchGroup = 1;

string Capitalize(string text)
{
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z')
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
    return text;
}

} // namespace

ImageInspector::ImageInspector(Stack &column, std::shared_ptr<ImageState> state) : state_(std::move(state))
{
    MakePlace(column);
    MakeColours(column);
    MakeHistogram(column);
    MakeMeasure(column);
    MakeComparison(column);
}

// Pieces.

TextButton *ImageInspector::AddButton(gui::Component &parent, char const *text, char const *tip, string const &line)
{
    auto *const button = new TextButton(&parent, text);
    button->SetMinWidth(40);
    button->SetToolTipText(tip);
    button->SetAction([this, line] { Run(line); });
    return button;
}

TextButton *ImageInspector::AddChoice(Grid &grid, char const *title, char const *tip,
                                      std::function<void(TextButton &)> open)
{
    new TitleLabel(grid, title);
    auto *const button = new TextButton(&grid, string());
    button->SetMark(e_mark_arrow_down);
    button->SetMinWidth(s_choiceWidth);
    button->SetToolTipText(tip);
    button->SetAction([button, open = std::move(open)] { open(*button); });
    return button;
}

std::vector<TextButton *> ImageInspector::AddSwitches(gui::Component &parent, std::span<char const *const> names,
                                                      string const &command)
{
    std::vector<TextButton *> buttons;
    for (char const *const name : names)
    {
        auto *const button = new TextButton(&parent, Capitalize(name), TextButton::e_style_select, s_switchGroup);
        button->SetMinWidth(s_switchWidth);
        button->SetAction([this, line = command + name] { Run(line); });
        buttons.push_back(button);
    }
    return buttons;
}

ImageInspector::FiguresTable ImageInspector::AddFigures(Stack &column)
{
    FiguresTable table;
    table.grid = new Grid(static_cast<unsigned int>(std::size(s_figureTitles)), &column, s_tableGap);
    for (char const *const title : s_figureTitles)
        new Label(table.grid, title, ShaderName_Hint);
    for (std::size_t i = 0; i < s_maxChannels * std::size(s_figureTitles); ++i)
        table.cells.push_back(new Label(table.grid, string(), ShaderName_Hint));
    return table;
}

void ImageInspector::OpenNames(TextButton const &button, string const &command, std::vector<string> const &names,
                               std::size_t current)
{
    std::vector<MenuItem> items;
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        items.push_back({.text = Capitalize(names[i]),
                         .action = [state = state_, line = command + names[i]] { state->GetWorkspace().Run(line); },
                         .mark = i == current ? e_mark_check : e_mark_none});
    }
    Menu::OpenBelow(std::move(items), button);
}

void ImageInspector::OpenChannels(TextButton const &button)
{
    std::vector<string> names = {"all"};
    for (Channel const &channel : GetChannels(state_->GetFormat()))
        names.push_back(channel.name);
    OpenNames(button, "channel ", names, static_cast<unsigned int>(state_->display.channel + 1));
}

void ImageInspector::OpenLevels(TextButton const &button)
{
    std::vector<string> names = {"auto"};
    ImageLevelsPtr const levels = state_->GetLevels();
    for (unsigned int level = 0; levels != nullptr && level < levels->GetNumLevels(); ++level)
        names.push_back(MakeString(level));
    OpenNames(button, "level ", names, static_cast<unsigned int>(state_->level + 1));
}

void ImageInspector::OpenImages(TextButton const &button)
{
    auto const run = [state = state_](string const &name)
    { state->GetWorkspace().Run("compare " + CommandLineParser().FormatWord(name)); };
    Workspace &workspace = state_->GetWorkspace();
    std::vector<MenuItem> items;
    for (DocumentPtr const &document : workspace.GetDocuments().GetAll())
    {
        LoadedPtr const &loaded = document->GetLoaded();
        bool const isOther =
            document != workspace.GetDocuments().GetCurrent() && loaded != nullptr && loaded->imageLevels != nullptr;
        string const &file = document->GetFileName();
        if (isOther)
        {
            items.push_back({.text = document->GetTitle(),
                             .action = [run, name = file.empty() ? document->GetTitle() : file] { run(name); },
                             .mark = e_mark_picture});
        }
    }
    if (!items.empty())
        items.push_back({.text = string()});
    items.push_back({.text = "Another file…",
                     .action = [run, folder = workspace.GetFolder().GetPath()]
                     { FileDialog::Show({.title = "Compare with", .directory = folder, .action = run}); },
                     .mark = e_mark_folder});
    Menu::OpenBelow(std::move(items), button);
}

// Parts of the column.

void ImageInspector::MakePlace(Stack &column)
{
    new Label(&column, "Image", ShaderName_Section);
    auto *const row = new Stack(false, &column, 4);
    AddButton(*row, "Fit", "Show the whole image (0)", "zoom fit");
    AddButton(*row, "1:1", "One pixel for each sample (1)", "zoom 1");
    AddButton(*row, "", "Zoom out (-)", "zoom out")->SetMark(e_mark_minus);
    AddButton(*row, "", "Zoom in (+)", "zoom in")->SetMark(e_mark_plus);
    zoom_ = new Label(row, string());
    auto *const grid = new Grid(2, &column, s_rowGap);
    level_ = AddChoice(*grid, "Level", "The image at half, a quarter and so on of its size ([ and ])",
                       [this](TextButton &button) { OpenLevels(button); });
}

void ImageInspector::MakeColours(Stack &column)
{
    new Label(&column, "Colours", ShaderName_Section);
    auto *const choices = new Grid(2, &column, s_rowGap);
    channel_ = AddChoice(*choices, "Channel", "What is shown of each sample (C)",
                         [this](TextButton &button) { OpenChannels(button); });
    palette_ = AddChoice(*choices, "Palette", "Colours for the values (P)",
                         [this](TextButton &button)
                         {
                             std::span<char const *const> const names = GetPaletteNames();
                             OpenNames(button, "palette ", {names.begin(), names.end()},
                                       static_cast<std::size_t>(state_->display.palette));
                         });
    auto *const grid = new Grid(3, &column, s_rowGap);
    for (Setting const &setting : s_settings)
    {
        auto const format = [state = state_, &setting](string const &text)
        { return setting.format(state->display, text); };
        settings_.emplace_back(*grid,
                               ValueRow::Params{.title = setting.title,
                                                .tip = setting.tip,
                                                .minimum = setting.minimum,
                                                .maximum = setting.maximum,
                                                .step = setting.step,
                                                .drag =
                                                    [state = state_, &setting](double value)
                                                {
                                                    state->display.*setting.number = value;
                                                    state->Change();
                                                },
                                                .dragEnd = [state = state_, format](double value)
                                                { state->GetWorkspace().Echo(format(FormatNumber(value, 4))); },
                                                .type = [this, format](string const &text) { Run(format(text)); }});
    }
    auto *const row = new Stack(false, &column);
    AddButton(*row, "Auto window", "Black is the least value, and white the greatest (W)", "window auto");
    AddButton(*row, "Reset", "Show the samples as they are (R)", "reset-display");
    alpha_ = new CheckBox(&column, "Checkerboard through alpha");
    alpha_->SetToolTipText("Without it, alpha is ignored (A)");
    alpha_->SetAction([this](bool on) { Run(on ? "alpha on" : "alpha off"); });
}

void ImageInspector::MakeHistogram(Stack &column)
{
    new Label(&column, "Histogram", ShaderName_Section);
    showsHistogram_ = new CheckBox(&column, "Show the histogram");
    showsHistogram_->SetToolTipText("Count the samples by their values (H)");
    showsHistogram_->SetAction([this](bool on) { Run(on ? "histogram on" : "histogram off"); });
    histogram_ = new Stack(true, &column);
    new HistogramPlot(histogram_, state_);
    isLogarithmic_ = new CheckBox(histogram_, "Logarithmic");
    isLogarithmic_->SetToolTipText("Small numbers of samples show as well (L)");
    isLogarithmic_->SetAction([this](bool on) { Run(on ? "histogram -log=on" : "histogram -log=off"); });
    isOfView_ = new CheckBox(histogram_, "Of what is in view");
    isOfView_->SetToolTipText("And not of the whole image (V)");
    isOfView_->SetAction([this](bool on) { Run(on ? "histogram -of=view" : "histogram -of=image"); });
    figures_ = AddFigures(*histogram_);
}

void ImageInspector::MakeMeasure(Stack &column)
{
    new Label(&column, "Measure", ShaderName_Section);
    auto *const row = new Stack(false, &column, 4);
    tools_ = AddSwitches(*row, GetImageToolNames(), "measure -tool=");
    char const *const tips[] = {"A drag moves the image", "A drag measures a line (Ctrl with the drag)",
                                "A drag measures a rectangle (Shift with the drag)"};
    for (std::size_t i = 0; i < tools_.size(); ++i)
        tools_[i]->SetToolTipText(tips[i]);
    measured_ = new Label(&column, string());
    measuredFigures_ = AddFigures(column);
}

void ImageInspector::MakeComparison(Stack &column)
{
    new Label(&column, "Compare", ShaderName_Section);
    auto *const row = new Stack(false, &column, 4);
    other_ = new TextButton(row, "With…");
    other_->SetToolTipText("Choose the image to compare with");
    other_->SetAction([this] { OpenImages(*other_); });
    endComparison_ = AddButton(*row, "", "End the comparison", "compare off");
    endComparison_->SetMark(e_mark_cross);
    comparison_ = new Stack(true, &column);
    auto *const modes = new Grid(2, comparison_, {4, 4});
    modes_ = AddSwitches(*modes, GetComparisonNames(), "compare -mode=");
    char const *const tips[] = {"Both beside each other", "One or the other (B)",
                                "One to the left of the divider, one to the right: drag it", "What differs (D)"};
    for (std::size_t i = 0; i < modes_.size(); ++i)
    {
        modes_[i]->SetMinWidth(112);
        modes_[i]->SetToolTipText(tips[i]);
    }
    difference_ = new Stack(true, comparison_);
    auto *const choices = new Grid(2, difference_, s_rowGap);
    differenceKind_ = AddChoice(*choices, "Kind", "How the difference is computed",
                                [this](TextButton &button)
                                {
                                    std::span<char const *const> const names = GetDifferenceNames();
                                    OpenNames(button, "difference ", {names.begin(), names.end()},
                                              static_cast<std::size_t>(state_->comparison.settings.difference));
                                });
    auto *const grid = new Grid(3, difference_, s_rowGap);
    scale_.emplace_back(*grid,
                        ValueRow::Params{.title = "Scale",
                                         .tip = "The difference is shown this many times as large",
                                         .minimum = 1,
                                         .maximum = 64,
                                         .step = 1,
                                         .drag =
                                             [state = state_](double value)
                                         {
                                             state->comparison.settings.scale = value;
                                             state->Change();
                                         },
                                         .dragEnd = [state = state_](double value)
                                         { state->GetWorkspace().Echo("difference -scale=" + FormatNumber(value)); },
                                         .type = [this](string const &text) { Run("difference -scale=" + text); }});
    differenceFigures_ = new Label(difference_, string(), ShaderName_Hint);
    differenceFigures_->SetWrapWidth(Room::s_inspectorWidth);
}

// Update.

void ImageInspector::Update()
{
    UpdatePlace();
    UpdateColours();
    UpdateFigures();
    UpdateMeasure();
    UpdateComparison();
}

namespace
{

void SetShown(gui::Component &component, bool shown)
{
    if (component.IsVisible() == shown)
        return;
    component.SetVisible(shown);
    component.ReportDirtyGeometry();
}

void SetOn(CheckBox &box, bool on)
{
    if (box.IsOn() != on)
        box.SetOn(on, false);
}

void SetText(TextButton &button, string const &text)
{
    if (button.GetText() != text)
        button.SetText(text);
}

void Select(std::vector<TextButton *> const &buttons, std::size_t selected)
{
    for (std::size_t i = 0; i < buttons.size(); ++i)
    {
        if (buttons[i]->IsSelected() != (i == selected))
            buttons[i]->SetSelected(i == selected, false, false);
    }
}

} // namespace

void ImageInspector::UpdatePlace()
{
    bool const hasImage = state_->GetImage() != nullptr;
    zoom_->SetText(hasImage ? FormatZoom(state_->place.Get().zoom) : string());
    SetText(*level_, state_->level < 0 ? "Auto" : MakeString(state_->level));
}

void ImageInspector::UpdateColours()
{
    std::span<Channel const> const channels = GetChannels(state_->GetFormat());
    auto const channel = static_cast<std::size_t>(state_->display.channel);
    bool const hasChannel = state_->display.channel >= 0 && channel < channels.size();
    SetText(*channel_, Capitalize(hasChannel ? channels[channel].name : "all"));
    SetText(*palette_, Capitalize(GetPaletteNames()[static_cast<std::size_t>(state_->display.palette)]));
    SetOn(*alpha_, state_->display.showAlpha);
    // The window of floats goes as far as their values do.
    double low = 0, high = 1;
    bool const isFloat = !channels.empty() && channels[0].isFloat;
    Figures const *const figures = state_->GetFigures();
    if (isFloat && figures != nullptr && !figures->channels.empty())
    {
        low = std::min(low, figures->channels[0].minimum);
        high = std::max(high, figures->channels[0].maximum);
    }
    for (std::size_t i = 0; i < settings_.size(); ++i)
    {
        Setting const &setting = s_settings[i];
        bool const isWindow = setting.number == &DisplaySettings::low || setting.number == &DisplaySettings::high;
        if (isWindow)
            settings_[i].SetRange(low, high);
        settings_[i].Show(state_->display.*setting.number);
    }
}

void ImageInspector::ShowFigures(FiguresTable const &table, Figures const *figures)
{
    SetShown(*table.grid, figures != nullptr);
    if (figures == nullptr)
        return;
    constexpr std::size_t numColumns = std::size(s_figureTitles);
    for (std::size_t row = 0; row < s_maxChannels; ++row)
    {
        bool const hasRow = row < figures->channels.size();
        ChannelFigures const *const channel = hasRow ? &figures->channels[row] : nullptr;
        string texts[numColumns];
        if (hasRow)
        {
            texts[0] = Capitalize(channel->name).substr(0, 1);
            double const numbers[] = {channel->minimum, channel->maximum, channel->mean, channel->deviation};
            for (std::size_t i = 0; i < std::size(numbers); ++i)
                texts[i + 1] = FormatNumber(numbers[i], 4);
        }
        for (std::size_t i = 0; i < numColumns; ++i)
        {
            Label &cell = *table.cells[row * numColumns + i];
            SetShown(cell, hasRow);
            cell.SetText(texts[i]);
        }
    }
}

void ImageInspector::UpdateFigures()
{
    SetOn(*showsHistogram_, state_->histogram.isShown);
    SetOn(*isLogarithmic_, state_->histogram.isLogarithmic);
    SetOn(*isOfView_, state_->histogram.isOfView);
    SetShown(*histogram_, state_->histogram.isShown);
    ShowFigures(figures_, state_->GetFigures());
}

void ImageInspector::UpdateMeasure()
{
    Select(tools_, static_cast<std::size_t>(state_->tool));
    std::optional<Measurement> const &measurement = state_->GetMeasurement();
    bool const isShown = measurement && state_->GetImage() != nullptr;
    SetShown(*measured_, isShown);
    if (isShown)
        measured_->SetText(measurement->Describe(*state_->GetImage()));
    ShowFigures(measuredFigures_, isShown ? state_->GetMeasured() : nullptr);
}

void ImageInspector::UpdateComparison()
{
    Comparison const &comparison = state_->comparison;
    SetText(*other_, comparison.IsOn() ? "With " + comparison.GetDocument()->GetTitle() : "With…");
    SetShown(*endComparison_, comparison.IsOn());
    SetShown(*comparison_, comparison.IsOn());
    Select(modes_, static_cast<std::size_t>(comparison.settings.mode));
    SetShown(*difference_, comparison.settings.mode == eComparison::e_difference);
    SetText(*differenceKind_,
            Capitalize(GetDifferenceNames()[static_cast<std::size_t>(comparison.settings.difference)]));
    scale_.front().Show(comparison.settings.scale);
    string text = comparison.GetFailure();
    if (ChannelFigures const *const figures = comparison.GetFigures())
    {
        text = "Mean " + FormatNumber(figures->mean, 4) + ", greatest " + FormatNumber(figures->maximum, 4) +
               ", deviation " + FormatNumber(figures->deviation, 4);
    }
    else if (comparison.IsComputing())
        text = "Computing…";
    differenceFigures_->SetText(text);
}

} // namespace viewer
