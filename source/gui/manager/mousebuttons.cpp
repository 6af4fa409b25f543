#include "source/gui/manager/mousebuttons.h"

#include <quillmarsh/devices/mouse.h>

#include <algorithm>

namespace quillmarsh::gui::manager_parts
{

void RepeatTimes::Set(double newDelay, double newInterval)
{
    delay = std::max(newDelay, 0.0);
    interval = std::max(newInterval, 0.0);
}

bool RepeatClock::IsDue(RepeatTimes const &times)
{
    double const wanted = count != 0 ? times.interval : times.delay;
    bool const isDue = wanted + lastRepeatTime <= repeatTime;
    if (!isDue)
        return false;
    lastRepeatTime = repeatTime;
    ++count;
    return true;
}

void MouseButtons::Process(Mouse &mouse, double timeDelta)
{
    ReadEvents(mouse);
    timeSinceClick += static_cast<float>(timeDelta);
    if (downCount != 0)
        ProcessPress();
    else if (repeatButton != s_noMouseButton)
        ProcessRepeat(mouse, timeDelta);
    if (swallowClicks)
    {
        bool const hasRelease = std::find(std::begin(up), std::end(up), true) != std::end(up);
        ResetEvents();
        swallowClicks = !hasRelease;
    }
}

void MouseButtons::ReadEvents(Mouse &mouse)
{
    eventCount = 0;
    downCount = 0;
    firstDownButton = s_noMouseButton;
    for (unsigned int i = 0; i < s_numMouseButtons; ++i)
    {
        auto const button = static_cast<eMouseButton>(i);
        down[i] = mouse.ButtonDown(button) != 0;
        up[i] = mouse.ButtonUp(button) != 0;
        if (down[i] || up[i])
            ++eventCount;
        if (!down[i])
            continue;
        ++downCount;
        if (firstDownButton == s_noMouseButton)
            firstDownButton = button;
    }
}

void MouseButtons::ProcessPress()
{
    repeatButton = firstDownButton;
    repeatClock.Restart();
    if (downCount > 1)
    {
        lastClickButton = s_noMouseButton;
        doubleClickPending = false;
        return;
    }
    doubleClickPending = firstDownButton == lastClickButton && timeSinceClick <= doubleClickTime;
    if (doubleClickPending)
    {
        // A third press in time is not the second one of another double click.
        timeSinceClick = static_cast<float>(doubleClickTime);
        return;
    }
    lastClickButton = firstDownButton;
    timeSinceClick = 0;
}

void MouseButtons::ProcessRepeat(Mouse &mouse, double timeDelta)
{
    repeatClock.Advance(timeDelta);
    if (mouse.ButtonPressed(repeatButton) != 0)
    {
        repeatClock.IsDue(repeatTimes);
        return;
    }
    repeatButton = s_noMouseButton;
    repeatClock.count = 0;
}

void MouseButtons::ResetRepeat()
{
    repeatButton = s_noMouseButton;
    repeatClock.Restart();
}

void MouseButtons::ResetDoubleClick()
{
    lastClickButton = s_noMouseButton;
    doubleClickPending = false;
    timeSinceClick = 0;
}

void MouseButtons::ResetEvents()
{
    eventCount = 0;
    downCount = 0;
    firstDownButton = s_noMouseButton;
    std::fill(std::begin(down), std::end(down), false);
    std::fill(std::begin(up), std::end(up), false);
    ResetRepeat();
    ResetDoubleClick();
}

} // namespace quillmarsh::gui::manager_parts
