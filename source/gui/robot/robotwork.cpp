#include "source/gui/robot/robotwork.h"

#include <quillmarsh/basetools/texttools.h>

#include <cmath>
#include <utility>

namespace quillmarsh::gui
{

Robot::Work::Work() : hands(std::make_shared<robot_parts::Hands>()) {}

void Robot::Work::AddPress(string const &what, string const &path, eMouseButton button,
                           std::optional<vec2> const &place)
{
    Add(what, MakeAim(path, {place}));
    Add(what, MakeWake());
    Add(what, MakeCalm(button));
    // The component may have moved meanwhile.
    Add(what, MakeAim(path, {place}));
    Add(what, MakeButton(button, true));
}

bool Robot::Work::Advance()
{
    if (IsBusy())
        CountTime();
    isSettled_ = isSettled_ || hands->PassFrame();
    if (!isSettled_)
    {
        if (++unsettledFrames_ > waitLimit)
            Fail("nobody samples its mouse and keyboard");
        return true;
    }
    unsettledFrames_ = 0;
    while (!steps_.empty())
    {
        eStep const result = RunStep();
        if (result == eStep::e_goesOn)
        {
            ++frames_;
            return true;
        }
        frames_ = 0;
        if (!steps_.empty())
            steps_.pop_front();
        if (result == eStep::e_doneInFrame)
            return true;
    }
    return false;
}

Robot::Work::eStep Robot::Work::RunStep()
{
    try
    {
        CheckDevices();
        // A step that fails drops all steps, also itself.
        Run const run = steps_.front().run;
        return run();
    }
    catch (...)
    {
        Stop();
        isSettled_ = true;
        throw;
    }
}

void Robot::Work::Stop()
{
    steps_.clear();
    frames_ = 0;
    unsettledFrames_ = 0;
    robot_parts::Hands::State state = hands->Get();
    if (state.buttons.none() && state.keys.none())
        return;
    state.buttons.reset();
    state.keys.reset();
    hands->Set(state);
    isSettled_ = false;
}

Robot::Work::eStep Robot::Work::GoOn(unsigned int limit, string const &obstacle)
{
    if (frames_ >= limit)
        Fail(obstacle);
    return eStep::e_goesOn;
}

void Robot::Work::Fail(string const &reason)
{
    string const what = steps_.empty() ? "go on" : steps_.front().what;
    Stop();
    // Maybe nobody samples the device any more.
    isSettled_ = true;
    RobotException thrown;
    thrown.SetMessage("The robot cannot " + what + ": " + reason + ".");
    throw thrown;
}

void Robot::Work::CheckDevices()
{
    Manager const &manager = Manager::Instance();
    auto const *const mouse = dynamic_cast<robot_parts::RobotMouse *>(manager.GetMouse());
    auto const *const keyboard = dynamic_cast<robot_parts::RobotKeyboard *>(manager.GetKeyboard());
    bool const hasMouse = mouse != nullptr && mouse->IsHeldBy(*hands);
    bool const hasKeyboard = keyboard != nullptr && keyboard->IsHeldBy(*hands);
    if (!hasMouse || !hasKeyboard)
        Fail(string("the GUI does not use the ") + (hasMouse ? "keyboard" : "mouse") +
             " of the robot, which must be connected ahead of others");
}

/// Adds the time of the last frame. That of a press lies between it and the press before.
void Robot::Work::CountTime()
{
    double const seconds = Manager::Instance().GetTimeDelta();
    (hasPressFrame_ ? secondsSincePress_ : secondsBetweenPresses_) += seconds;
    hasPressFrame_ = true;
}

void Robot::Work::SetPointer(int x, int y)
{
    Manager const &manager = Manager::Instance();
    robot_parts::Hands::State state = hands->Get();
    state.x = x;
    state.y = y;
    auto const isBelow = [](int value, unsigned int limit)
    { return value >= 0 && static_cast<unsigned int>(value) < limit; };
    state.isInside = isBelow(x, manager.GetWindowWidth()) && isBelow(y, manager.GetWindowHeight());
    hands->Set(state);
    isSettled_ = false;
}

void Robot::Work::SetKey(eKey key, bool isPressed)
{
    robot_parts::Hands::State state = hands->Get();
    state.keys[key] = isPressed;
    hands->Set(state);
    isSettled_ = false;
}

Robot::Work::eStep Robot::Work::Aim(ComponentPath const &path, ReachWish const &wish)
{
    Manager &manager = Manager::Instance();
    if (manager.GetMouse()->IsActiveRelativeMode())
        return GoOn(patience, "the mouse is in relative mode, so that the GUI does not follow it");
    string seen;
    Component *const component = path.Find(manager, seen);
    if (component == nullptr)
    {
        seen.pop_back();
        bool const isMissing = path.FindAll(manager).empty();
        return GoOn(patience, (isMissing ? "there is no such component. " : "several components fit. ") + seen);
    }
    robot_parts::Reach const reach = robot_parts::FindReach(manager, *component, wish);
    if (!reach.obstacle.empty())
        return GoOn(patience, reach.obstacle);
    robot_parts::Hands::State const &state = hands->Get();
    if (!state.isInside || state.x != reach.x || state.y != reach.y)
    {
        SetPointer(reach.x, reach.y);
        return GoOn(patience, "its place changes all the time");
    }
    Component const &over = *manager.GetMouseOverTarget();
    if (wish.mayBeCovered || robot_parts::IsHitMeant(*component, over))
        return eStep::e_done;
    manager.ForceHitTestAtNextFrame();
    return GoOn(patience, "the mouse is over " +
                              (manager.IsMouseOverTargetApplication() ? "the application" : ComponentPath::Make(over)));
}

Robot::Work::Run Robot::Work::MakeAim(string const &path, ReachWish const &wish)
{
    return [this, parsed = ComponentPath(path), wish] { return Aim(parsed, wish); };
}

Robot::Work::Run Robot::Work::MakePointer(int x, int y)
{
    return [this, x, y]
    {
        SetPointer(x, y);
        return eStep::e_doneInFrame;
    };
}

Robot::Work::Run Robot::Work::MakeWake()
{
    return [this]
    {
        robot_parts::Hands::State state = hands->Get();
        bool const isPressed = state.buttons[e_mouse_button_left];
        if (!isPressed && !Manager::Instance().IsIgnoringClicks())
            return eStep::e_done;
        state.buttons[e_mouse_button_left] = !isPressed;
        hands->Set(state);
        isSettled_ = false;
        return eStep::e_goesOn;
    };
}

Robot::Work::Run Robot::Work::MakeCalm(eMouseButton button)
{
    return [this, button]
    {
        Manager const &manager = Manager::Instance();
        bool const mayBeDouble = pressed_.Get() == manager.GetMouseOverTarget() && button == pressedButton_ &&
                                 secondsSincePress_ <= manager.GetMouseDoubleClick();
        if (!mayBeDouble)
            return eStep::e_done;
        // Frames may be short: the limit counts those without time.
        if (std::exchange(calmSeconds_, secondsSincePress_) != secondsSincePress_)
            frames_ = 0;
        return GoOn(waitLimit, "it would be a double click, as no time passes between the frames");
    };
}

Robot::Work::Run Robot::Work::MakeButton(eMouseButton button, bool isPressed)
{
    return [this, button, isPressed]
    {
        robot_parts::Hands::State state = hands->Get();
        state.buttons[button] = isPressed;
        hands->Set(state);
        isSettled_ = false;
        if (isPressed)
        {
            pressed_ = Manager::Instance().GetMouseOverTarget();
            pressedButton_ = button;
            secondsBetweenPresses_ = secondsSincePress_;
            secondsSincePress_ = 0;
            hasPressFrame_ = false;
        }
        return eStep::e_doneInFrame;
    };
}

Robot::Work::Run Robot::Work::MakeDoubleClickCheck()
{
    return [this]
    {
        double const longest = Manager::Instance().GetMouseDoubleClick();
        if (secondsBetweenPresses_ > longest)
            Fail("the frames are too slow: " + MakeString(secondsBetweenPresses_) +
                 " s passed between the presses, and a double click takes " + MakeString(longest) + " s at most");
        pressed_ = nullptr;
        return eStep::e_done;
    };
}

Robot::Work::Run Robot::Work::MakeDrag(string const &path, vec2 const &distance)
{
    struct Way
    {
        int step = 0;
        vec2 start;
    };
    constexpr int s_numSteps = 5;
    AutoPtr<ComponentPath> parsed = path.empty() ? nullptr : std::make_unique<ComponentPath>(path);
    return [this, parsed = std::shared_ptr<ComponentPath>(std::move(parsed)), distance, way = std::make_shared<Way>()]
    {
        robot_parts::Hands::State const &state = hands->Get();
        if (way->step == 0)
            way->start.Set(static_cast<float>(state.x), static_cast<float>(state.y));
        vec2 end = way->start + distance;
        if (parsed != nullptr)
        {
            string seen;
            Component *const component = parsed->Find(Manager::Instance(), seen);
            if (component == nullptr)
                Fail("the other component is not there. " + seen.substr(0, seen.size() - 1));
            robot_parts::Reach const reach = robot_parts::FindReach(Manager::Instance(), *component, {{}, false, true});
            if (!reach.obstacle.empty())
                Fail("the other component cannot be reached: " + reach.obstacle);
            end.Set(static_cast<float>(reach.x), static_cast<float>(reach.y));
        }
        ++way->step;
        vec2 const at = way->start + (end - way->start) * (static_cast<float>(way->step) / s_numSteps);
        SetPointer(static_cast<int>(std::lround(at.x)), static_cast<int>(std::lround(at.y)));
        return way->step == s_numSteps ? eStep::e_doneInFrame : eStep::e_goesOn;
    };
}

Robot::Work::Run Robot::Work::MakeTurn(int delta)
{
    return [this, delta]
    {
        hands->Set(hands->Get(), delta);
        isSettled_ = false;
        return eStep::e_doneInFrame;
    };
}

Robot::Work::Run Robot::Work::MakeFrames(unsigned int frames)
{
    return [this, frames] { return frames_ < frames ? eStep::e_goesOn : eStep::e_done; };
}

Robot::Work::Run Robot::Work::MakeSeconds(double seconds)
{
    return [this, seconds, passed = std::make_shared<double>(0.0)]
    {
        if (frames_ > 0)
            *passed += Manager::Instance().GetTimeDelta();
        return *passed < seconds ? eStep::e_goesOn : eStep::e_done;
    };
}

Robot::Work::Run Robot::Work::MakeWait(std::function<string()> check, unsigned int limit)
{
    return [this, check = std::move(check), limit]
    {
        string const obstacle = check();
        if (obstacle.empty())
            return eStep::e_done;
        unsigned int const frames = limit != 0 ? limit : waitLimit;
        return GoOn(frames, obstacle + " after " + MakeString(frames) + " frames");
    };
}

} // namespace quillmarsh::gui
