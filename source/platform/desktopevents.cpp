#include "source/platform/desktopevents.h"

#include <quillmarsh/basetools/observerlist.h>
#include <quillmarsh/platform/displaymodes.h>

namespace quillmarsh::platform
{
namespace
{

ObserverList<DesktopListener> &GetListeners()
{
    // Never destroyed: listeners of plug-ins that stay loaded may unsubscribe late.
    static ObserverList<DesktopListener> &s_listeners = *new ObserverList<DesktopListener>;
    return s_listeners;
}

} // namespace

DesktopListener::~DesktopListener() = default;

DesktopSubscription::DesktopSubscription(DesktopListener &listener) : listener_(listener)
{
    GetListeners().Add(&listener);
}

DesktopSubscription::~DesktopSubscription()
{
    GetListeners().Remove(&listener_);
}

void TellDesktop(DesktopEvent const &event)
{
    GetListeners().ForEach([&event](DesktopListener &listener) { listener.OnDesktopEvent(event); });
}

bool CanWaitForDesktop()
{
    return IsDesktopThread() && !IsHeadless();
}

bool WaitForDesktop(unsigned int milliseconds)
{
    return CanWaitForDesktop() && WaitForSystemEvents(milliseconds);
}

} // namespace quillmarsh::platform
