#include "volumeinspector.h"

#include "room.h"

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace viewer::volumes
{

using namespace quillmarsh;
using namespace quillmarsh::widgets;

namespace
{

constexpr float s_nameWidth = 64;
constexpr float s_valueWidth = 44;
constexpr float s_width = Room::s_inspectorWidth;

/// Text of a fixed width, shortened where it does not fit.
class Cell : public Label
{
public:
    Cell(gui::Component *parent, string const &text, float width, char const *shader)
        : Label(parent, text, shader),
          width_(width)
    {
        SetFixedWidth(true);
    }

    void RecalcSize() override
    {
        Label::RecalcSize();
        SetSizeX(Measures::Pixels(width_));
    }

private:
    float width_;
};

string Capitalise(string text)
{
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z')
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
    return text;
}

string FormatValue(double value, float step)
{
    std::ostringstream text;
    text.setf(std::ios::fixed);
    text.precision(step >= 1 ? 0 : step >= 0.1F ? 1 : 3);
    text << value;
    return text.str();
}

} // namespace

VolumeInspector::VolumeInspector(PaneContext &context, Stack &column) : Stack(true, &column), context_(context)
{
    AddCut();
    AddSlab();
    AddFourth();
    AddTones();
}

void VolumeInspector::AddHeading(char const *text)
{
    new Label(this, text, ShaderName_Section);
}

VolumeInspector::Row &VolumeInspector::AddRow(char const *name, char const *toolTip, float step,
                                              std::function<double()> read, std::function<void(double)> change,
                                              std::function<string()> makeLine)
{
    auto *const line = new Stack(false, this);
    new Cell(line, name, s_nameWidth, ShaderName_Label);
    auto *const slider = new Slider(false, line, s_width - s_nameWidth - s_valueWidth - 2 * Measures::Gap);
    slider->SetToolTipText(toolTip);
    slider->SetAction([change = std::move(change)](float value) { change(double(value)); });
    slider->SetEndAction([this, makeLine = std::move(makeLine)](float) { context_.workspace.Echo(makeLine()); });
    auto *const value = new Cell(line, string(), s_valueWidth, ShaderName_Hint);
    return rows_.emplace_back(Row{slider, value, std::move(read), {}, step});
}

void VolumeInspector::AddChoice(char const *command, std::span<char const *const> names, unsigned int numColumns,
                                std::function<std::size_t()> read)
{
    auto *const grid = new Grid(numColumns, this, {Measures::Grid, Measures::Grid});
    float const width =
        std::floor((s_width - Measures::Grid * static_cast<float>(numColumns - 1)) / static_cast<float>(numColumns));
    unsigned int const group = ++numGroups_;
    Choice choice;
    for (char const *const name : names)
    {
        auto *const button = new TextButton(grid, Capitalise(name), TextButton::e_style_select, group);
        button->SetMinWidth(width);
        button->SetAction([this, command, name] { context_.workspace.Run(string(command) + ' ' + name); });
        choice.buttons.push_back(button);
    }
    choice.read = std::move(read);
    choices_.push_back(std::move(choice));
}

void VolumeInspector::AddSwitch(char const *text, char const *command, char const *toolTip,
                                bool VolumeSettings::*setting)
{
    auto *const box = new CheckBox(this, text, context_.scene.Settings().*setting);
    box->SetToolTipText(toolTip);
    box->SetAction([this, command](bool on) { context_.workspace.Run(string(command) + (on ? " on" : " off")); });
    switches_.push_back({box, setting});
}

void VolumeInspector::AddCut()
{
    AddHeading("Cross hair");
    constexpr char const *names[] = {"Column", "Row", "Layer"};
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        Scene &scene = context_.scene;
        auto change = [&scene, axis](double value)
        {
            Cut cut = scene.GetCut();
            cut[axis] = static_cast<unsigned int>(std::max(value, 0.0));
            scene.SetCut(cut);
        };
        Row &row = AddRow(
            names[axis], "Moves the cross hair (drag it in the panes; step by the wheel, and by , and .)", 1,
            [&scene, axis] { return double(scene.GetCut()[axis]); }, change, [&scene] { return MakeCutLine(scene); });
        row.range = [&scene, axis] { return vec2(0, static_cast<float>(std::max(scene.GetSize(axis), 2U) - 1)); };
    }
    AddSwitch("Show the cross hair", "cross", "Lines where each pane cuts the others (X)", &VolumeSettings::showsCross);
    AddSwitch("Smooth", "volume-smooth", "Draws between samples where they are enlarged (S)",
              &VolumeSettings::isSmooth);
}

void VolumeInspector::AddSlab()
{
    Scene &scene = context_.scene;
    AddHeading("Slab");
    AddChoice("slab-kind", GetProjectionNames(), 3,
              [&scene] { return static_cast<std::size_t>(scene.Settings().projection); });
    auto change = [&scene](double value)
    {
        scene.Settings().thickness = static_cast<unsigned int>(std::max(value, 1.0));
        scene.Changed();
    };
    Row &row = AddRow(
        "Slices", "Slices that are shown as one ([ and ])", 1, [&scene] { return double(scene.Settings().thickness); },
        change, [&scene] { return "slab " + MakeString(scene.Settings().thickness); });
    row.slider->SetRange(1, 100, 1);
}

void VolumeInspector::AddFourth()
{
    Scene &scene = context_.scene;
    AddHeading("Fourth pane");
    static constexpr char const *s_names[] = {"oblique", "volume"};
    AddChoice("fourth", s_names, 2, [&scene] { return scene.Settings().showsTurned ? 1U : 0U; });
    auto makeLine = [&scene] { return MakeObliqueLine(scene); };
    Row &yaw = AddRow(
        "Yaw", "Turns the oblique slice about the rows (or drag with Shift)", 1,
        [&scene] { return scene.Settings().oblique.yaw; },
        [&scene](double value)
        {
            scene.Settings().oblique.yaw = value;
            scene.Changed();
        },
        makeLine);
    yaw.slider->SetRange(-180, 180, 1);
    Row &pitch = AddRow(
        "Pitch", "Turns the oblique slice about the columns", 1, [&scene] { return scene.Settings().oblique.pitch; },
        [&scene](double value)
        {
            scene.Settings().oblique.pitch = value;
            scene.Changed();
        },
        makeLine);
    pitch.slider->SetRange(-90, 90, 1);
    Row &density = AddRow(
        "Density", "How opaque the turned volume is", 0.1F, [&scene] { return scene.Settings().density; },
        [&scene](double value)
        {
            scene.Settings().density = std::max(value, 0.05);
            scene.Changed();
        },
        [&scene] { return "density " + MakeString(scene.Settings().density); });
    density.slider->SetRange(0.1F, 6, 0.1F);
    AddSwitch("Turn by game controller", "follow-controller", "Its first two axes turn the volume (G)",
              &VolumeSettings::followsController);
    AddSwitch("Turn by tracker", "follow-tracker", "An orientation tracker turns the volume (T)",
              &VolumeSettings::followsTracker);
}

void VolumeInspector::AddTones()
{
    Scene &scene = context_.scene;
    AddHeading("Tones");
    struct End
    {
        char const *name;
        char const *toolTip;
        double DisplaySettings::*value;
    };
    static constexpr End s_ends[] = {
        {"Black", "Value that becomes black (or drag with the right button)", &DisplaySettings::low},
        {"White", "Value that becomes white", &DisplaySettings::high}};
    for (End const &end : s_ends)
    {
        auto change = [&scene, &end](double value)
        {
            DisplaySettings &tones = scene.Settings().tones;
            tones.*end.value = value / scene.GetLargest();
            // The other end gives way.
            constexpr double least = 1.0 / 4096;
            if (tones.high < tones.low + least)
                tones.*(&end == &s_ends[0] ? &DisplaySettings::high : &DisplaySettings::low) =
                    tones.*end.value + (&end == &s_ends[0] ? least : -least);
            scene.Changed();
        };
        Row &row = AddRow(
            end.name, end.toolTip, 0, [&scene, &end] { return scene.Settings().tones.*end.value * scene.GetLargest(); },
            change, [&scene] { return MakeWindowLine(scene); });
        row.range = [&scene]
        {
            auto const largest = static_cast<float>(scene.GetLargest());
            DisplaySettings const &tones = scene.Settings().tones;
            return vec2(std::min(0.0F, static_cast<float>(tones.low) * largest),
                        std::max(largest, static_cast<float>(tones.high) * largest));
        };
    }
    auto *const buttons = new Stack(false, this, Measures::Grid);
    struct Button
    {
        char const *text;
        char const *line;
        char const *toolTip;
    };
    static constexpr Button s_buttons[] = {
        {"Automatic", "volume-window auto", "From the least to the greatest value (A)"},
        {"Whole range", "volume-window all", "All values of the format (D)"}};
    for (Button const &row : s_buttons)
    {
        auto *const button = new TextButton(buttons, row.text);
        button->SetMinWidth((s_width - Measures::Grid) / 2);
        button->SetToolTipText(row.toolTip);
        button->SetAction([this, line = row.line] { context_.workspace.Run(line); });
    }
    AddChoice("volume-palette", GetPaletteNames(), 3,
              [&scene] { return static_cast<std::size_t>(scene.Settings().tones.palette); });
}

void VolumeInspector::Update()
{
    if (!IsBranchVisible())
        return;
    for (Row const &row : rows_)
    {
        double const value = row.read();
        if (row.range && !row.slider->IsGrabbed())
        {
            vec2 const range = row.range();
            if (row.slider->GetMinimum() != range.x || row.slider->GetMaximum() != range.y)
                row.slider->SetRange(range.x, range.y, row.step);
        }
        if (!row.slider->IsGrabbed() && row.slider->GetValue() != static_cast<float>(value))
            row.slider->SetValue(static_cast<float>(value));
        bool const isWhole = row.step >= 1 || (row.step == 0 && row.slider->GetMaximum() > 1.5F);
        row.value->SetText(FormatValue(value, isWhole ? 1 : row.step));
    }
    for (Choice const &choice : choices_)
    {
        std::size_t const selected = choice.read();
        for (std::size_t i = 0; i < choice.buttons.size(); ++i)
        {
            if (choice.buttons[i]->IsSelected() != (i == selected))
                choice.buttons[i]->SetSelected(i == selected, false, false);
        }
    }
    for (Switch const &each : switches_)
    {
        bool const isOn = context_.scene.Settings().*each.setting;
        if (each.box->IsOn() != isOn)
            each.box->SetOn(isOn, false);
    }
}

} // namespace viewer::volumes
