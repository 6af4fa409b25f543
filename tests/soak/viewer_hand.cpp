#include "tests/soak/viewer_hand.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/framework/completion.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>
#include <quillmarsh/platform/window.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace quillmarsh::tests
{

namespace
{

constexpr char const *s_modifiers[] = {"", "", "", "", "", "Control+", "Shift+", "Alt+", "Control+Shift+"};
/// Values that a line can have anywhere.
constexpr char const *s_values[] = {"0",   "1",    "-1",  "2",   "0.5",   "7.25", "100", "1e9", "-1e300", "4294967295",
                                    "nan", "true", "off", "all", "'a b'", "''",   "red", "*",   "-x=1",   "-h"};
constexpr char const *s_texts[] = {"0.75", "-3", "1e30", "png land", "soak", "mean", "x", "open body.qmdp.volume"};
/// These end the program or wait, or take the robot away.
constexpr char const *s_forbidden[] = {"exit", "quit", "crash", "wait", "robot", "alias", "hid-watch", "video-config"};

string ReadWhole(std::filesystem::path const &name)
{
    std::ifstream file(name, std::ios::binary);
    return string(std::istreambuf_iterator<char>(file), {});
}

void WriteWhole(std::filesystem::path const &name, string const &content)
{
    std::ofstream(name, std::ios::binary | std::ios::trunc) << content;
}

bool IsShown(char const *path)
{
    try
    {
        gui::Robot::Find(path);
        return true;
    }
    catch (GUIException const &)
    {
        return false;
    }
}

} // namespace

Files::Files(Dice &dice, std::filesystem::path const &samples, std::filesystem::path const &folder) : dice_(dice)
{
    std::filesystem::create_directories(folder / "bad");
    std::filesystem::copy(samples, folder / "good", std::filesystem::copy_options::recursive);
    for (auto const &entry : std::filesystem::recursive_directory_iterator(folder / "good"))
    {
        if (entry.is_regular_file())
            good_.push_back({entry.path(), ReadWhole(entry.path())});
    }
    // The order of a directory differs between machines.
    std::sort(good_.begin(), good_.end(), [](File const &a, File const &b) { return a.name < b.name; });
    for (File const &file : good_)
    {
        bad_.push_back({folder / "bad" / file.name.filename(), Damage(file.content)});
        WriteWhole(bad_.back().name, bad_.back().content);
    }
}

string Files::Damage(string content)
{
    switch (dice_.Roll(4))
    {
    case 0:
        content.resize(dice_.Roll(content.size()));
        break;
    case 1:
        content.clear();
        break;
    case 2:
        for (unsigned int i = 0; i < 20; ++i)
            content[dice_.Roll(content.size())] = static_cast<char>(dice_.Roll(256));
        break;
    default:
        // Among the dimensions and the fields of the head.
        for (unsigned int i = 0; i < 4; ++i)
            content[dice_.Roll(std::min<std::size_t>(content.size(), 96))] = static_cast<char>(dice_.Roll(256));
        break;
    }
    return content;
}

string Files::Pick(bool good)
{
    return dice_.Pick(good ? good_ : bad_).name.string();
}

void Files::Change()
{
    File const &file = dice_.Pick(good_);
    unsigned int const dice = dice_.Roll(5);
    std::error_code error;
    if (dice == 0)
        std::filesystem::remove(file.name, error);
    else if (dice == 1)
        WriteWhole(file.name, Damage(file.content));
    else if (dice == 2)
        WriteWhole(file.name, dice_.Pick(good_).content);
    else if (dice == 3)
        std::filesystem::resize_file(file.name, dice_.Roll(file.content.size()), error);
    else
        WriteWhole(file.name, file.content);
}

constexpr ViewerHand::WeightedAction ViewerHand::s_actions[] = {
    {40, &ViewerHand::PressKey},  {16, &ViewerHand::Click},    {10, &ViewerHand::Drag},   {8, &ViewerHand::Turn},
    {4, &ViewerHand::Type},       {10, &ViewerHand::OpenGood}, {3, &ViewerHand::OpenBad}, {3, &ViewerHand::ChangeFile},
    {14, &ViewerHand::EnterLine}, {1, &ViewerHand::Resize},    {4, &ViewerHand::Rest},
};

ViewerHand::ViewerHand(Dice &dice, Files &files, host::Session &session)
    : dice_(dice),
      files_(files),
      kernel_(session.GetKernel()),
      robot_(kernel_.GetRobot().GetRobot())
{
    for (unsigned int key = 0; key < 256; ++key)
    {
        string const name = GetKeyName(static_cast<eKey>(key));
        if (!name.empty())
            keys_.push_back(name);
    }
}

void ViewerHand::Act()
{
    // An operation that cannot be done is no fault of the viewer.
    kernel_.GetRobot().TakeFailure();
    if (robot_.IsBusy())
        return;
    // Whoever chooses files at random would leave the folder.
    if (IsShown("FileDialog"))
        return AnswerFileDialog();
    unsigned int whole = 0;
    for (WeightedAction const &each : s_actions)
        whole += each.weight;
    unsigned int dice = dice_.Roll(whole);
    for (WeightedAction const &each : s_actions)
    {
        if (dice < each.weight)
        {
            (this->*each.action)();
            return;
        }
        dice -= each.weight;
    }
}

void ViewerHand::PressKey()
{
    string const chord = dice_.Pick(s_modifiers) + dice_.Pick(keys_);
    // They end the program.
    if (chord.ends_with("+Q") || chord == "Alt+F4")
        return;
    try
    {
        robot_.Key(chord);
    }
    catch (GUIException const &)
    {
        // Two modifiers are no chord.
    }
}

void ViewerHand::MoveAnywhere()
{
    platform::Window const *const window = kernel_.GetAppWindow();
    platform::Window::Size const size = window != nullptr ? window->GetSize() : platform::Window::Size{100, 100};
    robot_.MoveTo(static_cast<int>(dice_.Roll(static_cast<std::size_t>(std::max(size.width, 1)))),
                  static_cast<int>(dice_.Roll(static_cast<std::size_t>(std::max(size.height, 1)))));
}

void ViewerHand::Click()
{
    MoveAnywhere();
    eMouseButton const button = dice_.IsOneIn(5) ? e_mouse_button_right : e_mouse_button_left;
    for (unsigned int i = dice_.IsOneIn(4) ? 2 : 1; i > 0; --i)
    {
        robot_.PressButton(button);
        robot_.ReleaseButton(button);
    }
}

void ViewerHand::Drag()
{
    eMouseButton const buttons[] = {e_mouse_button_left, e_mouse_button_left, e_mouse_button_right,
                                    e_mouse_button_middle};
    eMouseButton const button = dice_.Pick(buttons);
    MoveAnywhere();
    robot_.PressButton(button);
    for (unsigned int i = dice_.Roll(6); i > 0; --i)
        MoveAnywhere();
    robot_.ReleaseButton(button);
}

void ViewerHand::Turn()
{
    constexpr char const *places[] = {"View", "ListBox", "*"};
    robot_.Turn(string("//") + dice_.Pick(places), 120 * (static_cast<int>(dice_.Roll(9)) - 4));
}

void ViewerHand::Type()
{
    robot_.Type(dice_.Pick(s_texts) + string(dice_.IsOneIn(2) ? "\n" : ""));
}

void ViewerHand::OpenGood()
{
    kernel_.QueueCommandLine("open " + CommandLineParser().FormatWord(files_.Pick(true)));
}

void ViewerHand::OpenBad()
{
    kernel_.QueueCommandLine("open " + CommandLineParser().FormatWord(files_.Pick(false)));
}

void ViewerHand::ChangeFile()
{
    files_.Change();
}

/// Makes a line as Tab would, word by word, with values in between that may be nonsense.
string ViewerHand::MakeLine()
{
    std_command_interpreter::Interpreter const &interpreter = *kernel_.GetCommandInterpreter();
    string line;
    for (unsigned int i = 1 + dice_.Roll(4); i > 0; --i)
    {
        Completions offers = interpreter.FindCompletions(line);
        std::erase_if(offers.candidates, [](CompletionCandidate const &each) { return each.text == "-h"; });
        bool const isOffered = !offers.candidates.empty() && (line.empty() || !dice_.IsOneIn(3));
        if (isOffered)
        {
            CompletionCandidate const &candidate = dice_.Pick(offers.candidates);
            if (line.empty() &&
                std::find(std::begin(s_forbidden), std::end(s_forbidden), candidate.text) != std::end(s_forbidden))
                return {};
            line.replace(offers.begin, string::npos, candidate.replacement);
            if (!candidate.isWhole)
                line += dice_.Pick(s_values);
        }
        else
            line += dice_.Pick(s_values);
        line += ' ';
    }
    return line;
}

void ViewerHand::EnterLine()
{
    kernel_.QueueCommandLine(MakeLine());
}

void ViewerHand::Resize()
{
    platform::Window *const window = kernel_.GetAppWindow();
    if (window != nullptr)
        window->SetSize({static_cast<int>(1 + dice_.Roll(1280)), static_cast<int>(1 + dice_.Roll(800))});
}

void ViewerHand::Rest()
{
    robot_.WaitFrames(dice_.Roll(40));
}

void ViewerHand::AnswerFileDialog()
{
    if (dice_.IsOneIn(2))
        return robot_.Key("Escape");
    static constexpr char const *s_names[] = {"soak.png", "soak.qmdp.image", "body.qmdp.volume", "soak", "no/such", ""};
    robot_.Key("Control+A");
    robot_.Type(dice_.Pick(s_names) + string("\n"));
    robot_.Key("Escape");
}

} // namespace quillmarsh::tests
