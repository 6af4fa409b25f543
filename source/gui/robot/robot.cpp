#include <quillmarsh/gui/gui_robot.h>

#include "source/gui/robot/latin1.h"
#include "source/gui/robot/robotwork.h"

#include <quillmarsh/devices/keyboardlayout.h>

#include <algorithm>
#include <iterator>

namespace quillmarsh::gui
{

namespace
{

struct KeyAlias
{
    char const *name;
    eKey key;
};

/// Names of modifiers that people use, beside those of the keys.
constexpr KeyAlias s_aliases[] = {
    {"shift", e_key_l_shift}, {"control", e_key_l_control}, {"ctrl", e_key_l_control},
    {"alt", e_key_l_alt},     {"altgr", e_key_r_alt},
};

bool FindKey(string const &name, eKey &key)
{
    string lower = name;
    LowerCase(lower);
    auto const *const found = std::find_if(std::begin(s_aliases), std::end(s_aliases),
                                           [&](KeyAlias const &alias) { return lower == alias.name; });
    if (found == std::end(s_aliases))
        return FindKeyOfName(name, key);
    key = found->key;
    return true;
}

std::vector<eKey> ParseChord(string const &chord)
{
    std::vector<string> names;
    BreakIntoLines(chord, names, '+');
    std::vector<eKey> keys;
    for (string &name : names)
    {
        TrimWhitespace(name);
        eKey key = e_key_none;
        if (!FindKey(name, key))
            QUILLMARSH_THROW(GUIException,
                             string("There is no key '").append(name) + "', which the chord '" + chord + "' names.");
        keys.push_back(key);
    }
    if (keys.empty())
        QUILLMARSH_THROW(GUIException, "A chord has no keys.");
    return keys;
}

std::vector<eKey> Reverse(std::vector<eKey> keys)
{
    std::reverse(keys.begin(), keys.end());
    return keys;
}

string ConvertText(string const &text)
{
    string latin1;
    if (!robot_parts::ToLatin1(text, latin1))
        QUILLMARSH_THROW(GUIException,
                         "The text '" + text + "' has characters that are not in Latin-1, or is no UTF-8.");
    return latin1;
}

string MakeTypedText(string const &text)
{
    string latin1 = ConvertText(text);
    for (std::size_t i = 0; i < latin1.size(); ++i)
    {
        KeyStroke stroke;
        if (!FindLayoutStroke(latin1[i], stroke))
            QUILLMARSH_THROW(GUIException,
                             "The character with the code " +
                                 MakeString(static_cast<unsigned int>(static_cast<unsigned char>(latin1[i]))) +
                                 " cannot be typed.");
    }
    return latin1;
}

string Quote(string const &text)
{
    return "\"" + text + "\"";
}

/// Says why a path leads to no component that can be seen; empty if it does.
string DescribeMissing(ComponentPath const &path)
{
    std::vector<Component *> const found = path.FindAll(Manager::Instance());
    if (std::any_of(found.begin(), found.end(),
                    [](Component const *component) { return component->IsBranchVisible(); }))
        return "";
    if (!found.empty())
        return robot_parts::DescribeHidden(*found.front());
    string seen;
    path.Find(Manager::Instance(), seen);
    return "there is no such component. " + seen.substr(0, seen.size() - 1);
}

string DescribeOtherText(ComponentPath const &path, string const &text)
{
    if (string missing = DescribeMissing(path); !missing.empty())
        return missing;
    string seen;
    Component const *const component = path.Find(Manager::Instance(), seen);
    if (component == nullptr)
        return seen.substr(0, seen.size() - 1);
    string const caption = component->GetCaption();
    return caption == text ? "" : "its text is " + Quote(caption);
}

string DescribeThere(ComponentPath const &path)
{
    return DescribeMissing(path).empty() ? "it is still there" : "";
}

} // namespace

RobotException::RobotException() = default;

RobotException::RobotException(RobotException const &) = default;

RobotException &RobotException::operator=(RobotException const &) = default;

RobotException::~RobotException() = default;

Robot::Robot() : work_(std::make_unique<Work>()) {}

Robot::Robot(std::function<void()> runFrame) : runFrame_(std::move(runFrame)), work_(std::make_unique<Work>()) {}

Robot::~Robot() = default;

AutoPtr<HumanInterfaceDevice> Robot::CreateMouse() const
{
    return std::make_unique<robot_parts::RobotDevice<robot_parts::RobotMouse>>(work_->hands, "Mouse of the robot");
}

AutoPtr<HumanInterfaceDevice> Robot::CreateKeyboard() const
{
    return std::make_unique<robot_parts::RobotDevice<robot_parts::RobotKeyboard>>(work_->hands,
                                                                                  "Keyboard of the robot");
}

void Robot::SetPatience(unsigned int frames)
{
    work_->patience = frames;
}

unsigned int Robot::GetPatience() const
{
    return work_->patience;
}

void Robot::SetWaitLimit(unsigned int frames)
{
    work_->waitLimit = frames;
}

unsigned int Robot::GetWaitLimit() const
{
    return work_->waitLimit;
}

void Robot::Move(string const &path, std::optional<vec2> const &place)
{
    work_->Add("move to " + path, work_->MakeAim(path, {place, false, false}));
    Finish();
}

void Robot::MoveTo(int x, int y)
{
    work_->Add("move to " + MakeString(x) + "," + MakeString(y), work_->MakePointer(x, y));
    Finish();
}

void Robot::Click(string const &path, eMouseButton button, std::optional<vec2> const &place)
{
    string const what = "click " + path;
    work_->AddPress(what, path, button, place);
    work_->Add(what, work_->MakeButton(button, false));
    Finish();
}

void Robot::DoubleClick(string const &path, eMouseButton button, std::optional<vec2> const &place)
{
    string const what = "double-click " + path;
    work_->AddPress(what, path, button, place);
    work_->Add(what, work_->MakeButton(button, false));
    work_->Add(what, work_->MakeButton(button, true));
    work_->Add(what, work_->MakeButton(button, false));
    work_->Add(what, work_->MakeDoubleClickCheck());
    Finish();
}

void Robot::Drag(string const &path, string const &to, eMouseButton button)
{
    string const what = "drag " + path + " to " + to;
    work_->AddPress(what, path, button, {});
    work_->Add(what, work_->MakeDrag(to, vec2::ZERO));
    work_->Add(what, work_->MakeButton(button, false));
    Finish();
}

void Robot::DragBy(string const &path, vec2 const &distance, eMouseButton button, std::optional<vec2> const &place)
{
    string const what = "drag " + path;
    work_->AddPress(what, path, button, place);
    work_->Add(what, work_->MakeDrag("", distance));
    work_->Add(what, work_->MakeButton(button, false));
    Finish();
}

void Robot::Turn(string const &path, int delta, std::optional<vec2> const &place)
{
    work_->Add("turn the wheel over " + path, work_->MakeAim(path, {place}));
    work_->Add("turn the wheel over " + path, work_->MakeTurn(delta));
    Finish();
}

void Robot::PressButton(eMouseButton button)
{
    work_->Add("press a button", work_->MakeButton(button, true));
    Finish();
}

void Robot::ReleaseButton(eMouseButton button)
{
    work_->Add("release a button", work_->MakeButton(button, false));
    Finish();
}

void Robot::Key(string const &chord)
{
    std::vector<eKey> const keys = ParseChord(chord);
    work_->Add("press " + chord, work_->MakeKeys(keys, true));
    work_->Add("release " + chord, work_->MakeKeys(Reverse(keys), false));
    Finish();
}

void Robot::HoldKeys(string const &chord)
{
    work_->Add("hold " + chord, work_->MakeKeys(ParseChord(chord), true));
    Finish();
}

void Robot::ReleaseKeys(string const &chord)
{
    work_->Add("release " + chord, work_->MakeKeys(Reverse(ParseChord(chord)), false));
    Finish();
}

void Robot::Type(string const &text)
{
    work_->Add("type " + Quote(text), work_->MakeTyping(MakeTypedText(text)));
    Finish();
}

void Robot::WaitFrames(unsigned int frames)
{
    work_->Add("wait", work_->MakeFrames(frames));
    Finish();
}

void Robot::WaitSeconds(double seconds)
{
    work_->Add("wait", work_->MakeSeconds(seconds));
    Finish();
}

void Robot::WaitFor(string const &path, unsigned int limit)
{
    work_->Add("wait any longer for " + path,
               work_->MakeWait([parsed = ComponentPath(path)] { return DescribeMissing(parsed); }, limit));
    Finish();
}

void Robot::WaitForEnd(string const &path, unsigned int limit)
{
    work_->Add("wait any longer for the end of " + path,
               work_->MakeWait([parsed = ComponentPath(path)] { return DescribeThere(parsed); }, limit));
    Finish();
}

void Robot::WaitForText(string const &path, string const &text, unsigned int limit)
{
    if (!robot_parts::IsUtf8(text))
        QUILLMARSH_THROW(GUIException, "The text '" + text + "' is no UTF-8.");
    work_->Add("wait any longer until " + path + " has the text " + Quote(text),
               work_->MakeWait(
                   [parsed = ComponentPath(path), wanted = text] { return DescribeOtherText(parsed, wanted); }, limit));
    Finish();
}

void Robot::WaitUntil(std::function<bool()> isTrue, string const &condition, unsigned int limit)
{
    auto const check = [isTrue = std::move(isTrue)] { return isTrue() ? "" : "it is not so"; };
    work_->Add("wait any longer until " + condition, work_->MakeWait(check, limit));
    Finish();
}

Component &Robot::Find(string const &path)
{
    string seen;
    if (Component *const component = ComponentPath(path).Find(Manager::Instance(), seen))
        return *component;
    RobotException thrown;
    thrown.SetMessage("The robot cannot find " + path + ": " + seen);
    throw thrown;
}

bool Robot::Advance()
{
    return work_->Advance();
}

bool Robot::IsBusy() const
{
    return work_->IsBusy();
}

void Robot::Stop()
{
    work_->Stop();
}

void Robot::Finish()
{
    while (runFrame_ && Advance())
        runFrame_();
}

} // namespace quillmarsh::gui
