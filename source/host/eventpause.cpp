#include "eventpause.h"

#include <quillmarsh/platform/desktopevents.h>

namespace quillmarsh::host
{

namespace
{

/// Shorter pauses are exact, and nobody notices that an event waits for their end.
constexpr std::chrono::milliseconds s_longPause(40);

} // namespace

bool EventPause::IsWorthwhile(Clock::time_point time)
{
    return time - Clock::now() >= s_longPause && platform::CanWaitForDesktop();
}

void EventPause::PauseUntil(Clock::time_point time, std::function<bool()> const &isWoken)
{
    using namespace std::chrono;
    isPausing_ = true;
    while (!isWoken())
    {
        auto const rest = ceil<milliseconds>(time - Clock::now());
        if (rest <= milliseconds::zero() || platform::WaitForDesktop(static_cast<unsigned int>(rest.count())))
            break;
    }
    isPausing_ = false;
}

void EventPause::WakeUp()
{
    if (isPausing_)
        platform::EndDesktopWait();
}

} // namespace quillmarsh::host
