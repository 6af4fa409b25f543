#include "deviceboard.h"
#include "room.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/dataexception.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/filedialog.h>
#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/panel.h>
#include <quillmarsh/widgets/textbutton.h>

#include <cmath>
#include <ostream>

namespace viewer
{
namespace
{

using namespace quillmarsh;
using sampled_data::DataException;
using widgets::Measures;

constexpr vec2 s_panelSize(560, 480);
constexpr vec2 s_minPanelSize(320, 200);

constexpr KeyBinding s_keys[] = {
    {e_key_f6, e_plain, "devices", "Show or hide the panel of input devices"},
};

constexpr CommandWord s_devicesWords[] = {
    CommandWord::Argument("0) on-or-off", "shows or hides it\n", command_values::s_boolean),
    CommandWord::Assignment("x", "number", "place of its left edge\n", command_values::s_real),
    CommandWord::Assignment("y", "number", "place of its upper edge\n", command_values::s_real),
    CommandWord::Assignment("width", "number", "its width, from 320 on\n", command_values::s_real),
    CommandWord::Assignment("height", "number", "its height, from 200 on\n", command_values::s_real)};
constexpr CommandWord s_recordWords[] = {CommandWord::Option("stop", "ends the recording\n")};

/// The panel, in which the keys of the window work as well.
class DevicesPanel : public widgets::Panel
{
public:
    explicit DevicesPanel(Workspace &workspace) : Panel("Input devices", s_panelSize), workspace_(workspace)
    {
        SetMinSize(Measures::Pixels(s_minPanelSize));
        SetCloseAction([&workspace] { workspace.Invalidate(); });
    }

    using Panel::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override
    {
        return Panel::OnKeyboardKey(down, key, repeatCount, character) || (down && workspace_.RunKey(key, repeatCount));
    }

private:
    Workspace &workspace_;
};

class DevicesRoom : public Room
{
public:
    explicit DevicesRoom(Workspace &workspace) : workspace_(workspace) {}

    char const *GetTitle() const override { return "Devices"; }
    std::span<KeyBinding const> GetKeys() const override { return s_keys; }
    void AddCommands(CommandSet &commands) override;

    void MakeInspector(widgets::Stack &column) override;

    void ConnectDevice(HumanInterfaceDevice &device) override { watch_.Connect(device); }
    void DisconnectDevices() override { watch_.DisconnectAll(); }

    void Update(double seconds) override;
    void WriteState(ostream &out) const override;

private:
    void MakePanel();
    void MakeButtons(gui::Component &row);
    void ShowPanel(bool show);
    void PlacePanel(CommandArguments const &arguments);
    void RunDevices(ostream &out, CommandArguments const &arguments);
    void AskForRecording(bool isSaving);

    Workspace &workspace_;
    DeviceWatch watch_;
    /// @name Owned by the manager and by their parents, and null ahead of MakeInspector()
    /// @{
    widgets::Panel *panel_ = nullptr;
    ScrolledBoard *scrolled_ = nullptr;
    DeviceBoard *board_ = nullptr;
    /// @}
};

void DevicesRoom::AddCommands(CommandSet &commands)
{
    commands.Add("devices", "Show or hide the panel of input devices", s_devicesWords,
                 "show it if it is hidden, and hide it otherwise",
                 [this](ostream &out, CommandArguments const &arguments) { RunDevices(out, arguments); });
    commands.Add("record-devices", "Ask for a file, and record the input devices", s_recordWords,
                 "ask for a file to write",
                 [this](ostream &, CommandArguments const &arguments)
                 {
                     if (arguments.HasOption("stop"))
                         workspace_.Run("record -stop");
                     else
                         AskForRecording(true);
                 });
    commands.Add("play-devices", "Ask for a recording, and play it as an input device", {}, "ask for a file to play",
                 [this](ostream &, CommandArguments const &) { AskForRecording(false); });
}

void DevicesRoom::RunDevices(ostream &, CommandArguments const &arguments)
{
    if (panel_ == nullptr)
        throw DataException("there is no window yet");
    bool const isPlaced = arguments.FindAssignment("x") != nullptr || arguments.FindAssignment("y") != nullptr ||
                          arguments.FindAssignment("width") != nullptr || arguments.FindAssignment("height") != nullptr;
    bool show = !panel_->IsVisible();
    if (string const *const text = arguments.FindArgument(0))
        ToValue(*text, show);
    else if (isPlaced)
        show = panel_->IsVisible();
    ShowPanel(show);
    if (isPlaced)
    {
        // It goes to the middle of the window first, and then to its place.
        panel_->UpdateGeometry(true);
        PlacePanel(arguments);
    }
}

void DevicesRoom::PlacePanel(CommandArguments const &arguments)
{
    float const scale = Measures::GetScale();
    vec2 position = panel_->GetPosition() / scale;
    vec2 size = panel_->GetSize() / scale;
    arguments.ReadAssignment("x", position.x);
    arguments.ReadAssignment("y", position.y);
    arguments.ReadAssignment("width", size.x);
    arguments.ReadAssignment("height", size.y);
    constexpr float limit = 1e5F;
    for (float const number : {position.x, position.y, size.x, size.y})
    {
        if (!(std::abs(number) <= limit))
            throw DataException("a place or size is within -1e5 and 1e5: " + MakeString(number));
    }
    panel_->SetPosition(Measures::Pixels(position.x), Measures::Pixels(position.y));
    panel_->SetSize(Measures::Pixels(std::max(size.x, s_minPanelSize.x)),
                    Measures::Pixels(std::max(size.y, s_minPanelSize.y)));
    panel_->ReportDirtyGeometry();
    panel_->ForceTopLevelComponentInsideWindow();
    workspace_.Invalidate();
}

void DevicesRoom::ShowPanel(bool show)
{
    if (show == panel_->IsVisible())
        return;
    if (show)
        panel_->Open();
    else
        panel_->Close();
    workspace_.Invalidate();
}

void DevicesRoom::AskForRecording(bool isSaving)
{
    widgets::FileDialog::Show(
        {.title = isSaving ? "Record input devices" : "Play a recording of input devices",
         .isSaving = isSaving,
         .fileName = isSaving ? "recording.txt" : "",
         .extensions = {"txt"},
         // The dialog has asked whether a file shall be replaced.
         .action = [this, isSaving](string const &name)
         { workspace_.Run((isSaving ? "record -overwrite " : "play ") + CommandLineParser().FormatWord(name)); }});
    workspace_.Invalidate();
}

void DevicesRoom::MakeButtons(gui::Component &row)
{
    struct Button
    {
        char const *text;
        char const *line;
        char const *tip;
    };
    constexpr Button buttons[] = {
        {"Record…", "record-devices", "Record all input devices into a file"},
        {"Stop recording", "record -stop", "End the recording"},
        {"Play…", "play-devices", "Play a recording as an input device, again and again"},
        {"Stop playing", "play -stop", "Remove the devices that play recordings"},
    };
    for (Button const &each : buttons)
    {
        auto *const button = new widgets::TextButton(&row, each.text);
        button->SetMinWidth(0);
        button->SetToolTipText(each.tip);
        button->SetAction([this, line = each.line] { workspace_.Run(line); });
    }
}

void DevicesRoom::MakeInspector(widgets::Stack &column)
{
    new widgets::Label(&column, "Input devices", widgets::ShaderName_Section);
    auto *const grid = new widgets::Grid(2, &column, {Measures::Grid, Measures::Grid});
    MakeButtons(*grid);
    auto *const open = new widgets::TextButton(&column, "Show in a panel");
    open->SetToolTipText("Show the input devices in a panel of their own (F6)");
    open->SetAction([this] { workspace_.Run("devices on"); });
    board_ = new DeviceBoard(column, watch_, s_inspectorWidth);
    MakePanel();
}

void DevicesRoom::MakePanel()
{
    panel_ = new DevicesPanel(workspace_);
    auto *const column = new widgets::Stack(true, &panel_->GetContent());
    column->SetAlignment(widgets::e_stack_stretch);
    column->SetFitToParent(true);
    MakeButtons(*new widgets::Stack(false, column, Measures::Grid));
    scrolled_ = new ScrolledBoard(*column, watch_);
    column->SetFill(*scrolled_);
}

void DevicesRoom::Update(double seconds)
{
    bool const isPanelShown = scrolled_ != nullptr && scrolled_->IsBranchVisible();
    bool const isBoardShown = board_ != nullptr && board_->IsBranchVisible();
    watch_.Update(seconds, isPanelShown || isBoardShown);
    if (isPanelShown)
        scrolled_->GetBoard().Update();
    if (isBoardShown)
        board_->Update();
    if (isPanelShown || isBoardShown)
        workspace_.Invalidate();
}

void DevicesRoom::WriteState(ostream &out) const
{
    if (panel_ == nullptr)
        return;
    float const scale = Measures::GetScale();
    vec2 const position = panel_->GetPosition() / scale;
    vec2 const size = panel_->GetSize() / scale;
    if (panel_->IsVisible())
        out << "devices on -x=" << std::round(position.x) << " -y=" << std::round(position.y)
            << " -width=" << std::round(size.x) << " -height=" << std::round(size.y) << '\n';
}

} // namespace

std::unique_ptr<Room> MakeDevicesRoom(Workspace &workspace)
{
    return std::make_unique<DevicesRoom>(workspace);
}

} // namespace viewer
