#include "hostcommands.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_componentpath.h>
#include <quillmarsh/gui/gui_robot.h>

#include <algorithm>
#include <iterator>
#include <limits>

namespace quillmarsh::host
{

namespace
{

constexpr char s_szTo[] = "to";
constexpr char s_szX[] = "x";
constexpr char s_szY[] = "y";
constexpr char s_szMoveX[] = "dx";
constexpr char s_szMoveY[] = "dy";
constexpr char s_szButton[] = "button";
constexpr char s_szDelta[] = "delta";
constexpr char s_szFrames[] = "frames";
constexpr char s_szSeconds[] = "seconds";
constexpr char s_szText[] = "text";
constexpr char s_szLimit[] = "limit";
constexpr char s_szGone[] = "gone";

/// Paths that completion offers at most.
constexpr unsigned int s_maxOffers = 200;
/// Turn of the wheel by one notch.
constexpr int s_oneNotch = 120;

constexpr char const *s_buttons[] = {"left", "right", "middle"};

/// A line that the robot carries out.
struct Line
{
    gui::Robot &robot;
    ostream &out;
    CommandArguments const &arguments;
    /// Path, chord or text.
    string object;

    eMouseButton GetButton() const
    {
        string const *const name = arguments.FindAssignment(s_szButton);
        auto const *const found = std::find_if(std::begin(s_buttons), std::end(s_buttons),
                                               [&](char const *button) { return name != nullptr && *name == button; });
        return found == std::end(s_buttons) ? e_mouse_button_left
                                            : static_cast<eMouseButton>(found - std::begin(s_buttons));
    }

    std::optional<vec2> GetPlace() const
    {
        // The middle, where only one of the two is given.
        vec2 place(std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::quiet_NaN());
        bool const hasX = arguments.ReadAssignment(s_szX, place.x);
        bool const hasY = arguments.ReadAssignment(s_szY, place.y);
        return hasX || hasY ? std::optional<vec2>(place) : std::nullopt;
    }

    template<typename T>
    T Get(char const *name, T value) const
    {
        arguments.ReadAssignment(name, value);
        return value;
    }
};

void Drag(Line const &line)
{
    if (string const *const to = line.arguments.FindAssignment(s_szTo))
        line.robot.Drag(line.object, *to, line.GetButton());
    else
        line.robot.DragBy(line.object, {line.Get(s_szMoveX, 0.0f), line.Get(s_szMoveY, 0.0f)}, line.GetButton(),
                          line.GetPlace());
}

void Wait(Line const &line)
{
    unsigned int const limit = line.Get(s_szLimit, 0u);
    if (line.arguments.FindAssignment(s_szSeconds) != nullptr)
        line.robot.WaitSeconds(line.Get(s_szSeconds, 0.0));
    if (line.arguments.FindAssignment(s_szFrames) != nullptr || line.object.empty())
        line.robot.WaitFrames(line.Get(s_szFrames, 1u));
    if (line.object.empty())
        return;
    if (string const *const text = line.arguments.FindAssignment(s_szText))
        line.robot.WaitForText(line.object, *text, limit);
    else if (line.arguments.HasOption(s_szGone))
        line.robot.WaitForEnd(line.object, limit);
    else
        line.robot.WaitFor(line.object, limit);
}

/// Prints the paths of the components that can be seen, with their places.
void List(Line const &line)
{
    gui::Manager const &manager = gui::Manager::Instance();
    std::vector<gui::Component *> found =
        gui::ComponentPath(line.object.empty() ? "//*" : line.object).FindAll(manager);
    std::erase_if(found, [](gui::Component const *component) { return !component->IsBranchVisible(); });
    for (gui::Component const *const component : found)
    {
        vec2 const at = component->GetAbsolutePosition();
        line.out << gui::ComponentPath::Make(*component) << " at " << at.x << ',' << at.y << " size "
                 << component->GetSize().x << 'x' << component->GetSize().y
                 << (component->IsEnabled() ? "" : ", disabled") << '\n';
    }
    line.out << found.size() << (found.size() == 1 ? " component" : " components") << std::endl;
}

struct Verb
{
    char const *name;
    /// What the second argument is; null if there may be none.
    char const *object;
    void (*run)(Line const &line);
};

constexpr char s_szPath[] = "the path of a component";
constexpr char s_szChord[] = "a chord of keys";

constexpr Verb s_verbs[] = {
    {"move", s_szPath, [](Line const &line) { line.robot.Move(line.object, line.GetPlace()); }},
    {"click", s_szPath, [](Line const &line) { line.robot.Click(line.object, line.GetButton(), line.GetPlace()); }},
    {"double-click", s_szPath,
     [](Line const &line) { line.robot.DoubleClick(line.object, line.GetButton(), line.GetPlace()); }},
    {"drag", s_szPath, &Drag},
    {"wheel", s_szPath,
     [](Line const &line) { line.robot.Turn(line.object, line.Get(s_szDelta, s_oneNotch), line.GetPlace()); }},
    {"key", s_szChord, [](Line const &line) { line.robot.Key(line.object); }},
    {"hold", s_szChord, [](Line const &line) { line.robot.HoldKeys(line.object); }},
    {"release", s_szChord, [](Line const &line) { line.robot.ReleaseKeys(line.object); }},
    {"type", "a text", [](Line const &line) { line.robot.Type(line.object); }},
    {"wait", nullptr, &Wait},
    {"list", nullptr, &List},
};

Verb const *FindVerb(string const &name)
{
    auto const *const found =
        std::find_if(std::begin(s_verbs), std::end(s_verbs), [&](Verb const &verb) { return name == verb.name; });
    return found != std::end(s_verbs) ? found : nullptr;
}

constexpr CommandValue s_verb{"what the robot can do",
                              [](CommandArguments const &, string const &text) { return FindVerb(text) != nullptr; },
                              [](CommandArguments const &, CompletionOffers &offers)
                              {
                                  for (Verb const &verb : s_verbs)
                                      offers.Add(verb.name);
                              }};

void OfferPaths(CommandArguments const &, CompletionOffers &offers)
{
    if (!gui::Manager::IsCreated())
        return;
    unsigned int numOffers = 0;
    for (gui::Component const *const component : gui::ComponentPath("//*").FindAll(gui::Manager::Instance()))
    {
        if (component->IsBranchVisible() && numOffers++ < s_maxOffers)
            offers.Add(gui::ComponentPath::Make(*component));
    }
}

constexpr CommandValue s_path{"a text", nullptr, &OfferPaths};
constexpr CommandValue s_button{"a button (left, right or middle)",
                                [](CommandArguments const &, string const &text)
                                {
                                    return std::find_if(std::begin(s_buttons), std::end(s_buttons),
                                                        [&](char const *button)
                                                        { return text == button; }) != std::end(s_buttons);
                                },
                                [](CommandArguments const &, CompletionOffers &offers)
                                {
                                    for (char const *const button : s_buttons)
                                        offers.Add(button);
                                }};
constexpr CommandValue s_integer{"a whole number", &command_values::Converts<int>};

constexpr CommandWord s_words[] = {
    CommandWord::Option(s_szGone, "wait until the component cannot be seen any more\n"),
    CommandWord::Assignment(s_szTo, "string", "component to which drag moves\n", s_path),
    CommandWord::Assignment(s_szX, "real", "place in the component, in pixels from its left edge\n",
                            command_values::s_real),
    CommandWord::Assignment(s_szY, "real", "place in the component, in pixels from its upper edge\n",
                            command_values::s_real),
    CommandWord::Assignment(s_szMoveX, "real", "pixels by which drag moves to the right\n", command_values::s_real),
    CommandWord::Assignment(s_szMoveY, "real", "pixels by which drag moves down\n", command_values::s_real),
    CommandWord::Assignment(s_szButton, "string", "button of the mouse: left, right or middle\n", s_button),
    CommandWord::Assignment(s_szDelta, "integer", "turn of the wheel, 120 for a notch away from the user\n", s_integer),
    CommandWord::Assignment(s_szFrames, "uinteger", "number of frames to wait\n", command_values::s_uinteger),
    CommandWord::Assignment(s_szSeconds, "real", "seconds to wait\n", command_values::s_real),
    CommandWord::Assignment(s_szText, "string", "wait until the component has this text\n"),
    CommandWord::Assignment(s_szLimit, "uinteger", "fail when a wait takes more frames\n", command_values::s_uinteger),
    CommandWord::Argument("0) string",
                          "what to do: move, click, double-click, drag, wheel, key, hold, release, type, wait, list\n",
                          s_verb),
    CommandWord::Argument("1) string",
                          "component, by its path; for key, hold and release keys such as Control+A; for type a text\n",
                          s_path),
};

} // namespace

RobotCmd::RobotCmd(HostKernel &kernel, ConsoleLines &lines) : kernel_(kernel), lines_(lines)
{
    SetDefaultName("robot");
    SetShortDesc("Use the GUI as a person does");
}

std::span<CommandWord const> RobotCmd::GetWords() const
{
    return s_words;
}

bool RobotCmd::Execute(ostream &out, CommandArguments const &arguments)
{
    string const *const name = arguments.FindArgument(0);
    if (name == nullptr)
        return RefuseLine(out, "robot: what to do is missing, such as click");
    Verb const &verb = *FindVerb(*name);
    string const *const object = arguments.FindArgument(1);
    if (verb.object != nullptr && object == nullptr)
        return RefuseLine(out, "robot: " + *name + " needs " + verb.object);
    if (!HostKernel::HasGUI() || !kernel_.GetAutoInit().OpenDevices)
        return RefuseLine(out, "robot: this run has no GUI or no input devices");
    HostRobot &robot = kernel_.GetRobot();
    try
    {
        verb.run({robot.GetRobot(), out, arguments, object != nullptr ? *object : ""});
    }
    catch (GUIException const &thrown)
    {
        return RefuseLine(out, "robot: " + thrown.GetMessage());
    }
    if (!robot.GetRobot().IsBusy())
        return true;
    robot.Begin();
    lines_.WaitFor({[&robot](string &failure)
                    {
                        failure = robot.TakeFailure();
                        return !failure.empty() || !robot.GetRobot().IsBusy();
                    },
                    [&robot] { robot.GetRobot().Stop(); }});
    return true;
}

} // namespace quillmarsh::host
