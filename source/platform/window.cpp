#include <quillmarsh/platform/window.h>

#include "source/platform/desktopevents.h"
#include "source/platform/headlesswindow.h"
#include "source/platform/threads.h"

#include <algorithm>
#include <atomic>

namespace quillmarsh::platform
{
namespace
{

constexpr unsigned int s_noThread = 0;

std::atomic<unsigned int> s_desktopThread{s_noThread};

std::vector<Window *> &GetWindows()
{
    static std::vector<Window *> &s_windows = *new std::vector<Window *>;
    return s_windows;
}

DesktopEvent MakeEvent(eDesktopEvent kind, Window &window)
{
    DesktopEvent event = {kind};
    event.window = &window;
    return event;
}

/// Makes the calling thread the desktop's thread; false when another thread is.
bool TakeDesktop()
{
    unsigned int const thisThread = GetCurrentThreadNumber();
    unsigned int owner = s_noThread;
    return s_desktopThread.compare_exchange_strong(owner, thisThread) || owner == thisThread;
}

void LeaveDesktop()
{
    if (GetWindows().empty())
        s_desktopThread = s_noThread;
}

} // namespace

std::vector<Window *> const &GetOpenWindows()
{
    return GetWindows();
}

bool IsDesktopThread()
{
    // Checked first: a program without windows never pays for the thread's number.
    unsigned int const owner = s_desktopThread;
    return owner != s_noThread && owner == GetCurrentThreadNumber();
}

AutoPtr<Window> Window::Open(WindowDesc const &desc, string &reason, eWindowStep *failedStep)
{
    eWindowStep step = eWindowStep::e_window;
    AutoPtr<Window> window(new Window(desc.role));
    bool const isOurs = TakeDesktop();
    if (isOurs)
        window->system_.reset(OpenSystem(*window, desc, reason, step));
    else
        reason = "Another thread has windows open, and all windows belong to one thread.";
    if (window->system_ == nullptr)
    {
        if (isOurs)
            LeaveDesktop();
        if (failedStep)
            *failedStep = step;
        return nullptr;
    }
    if (IsHeadless())
        window->headless_.reset(new Headless(*window));
    GetWindows().push_back(window.get());
    TellDesktop(MakeEvent(eDesktopEvent::e_windowOpened, *window));
    return window;
}

Window::~Window()
{
    if (system_ == nullptr)
        return;
    TellDesktop(MakeEvent(eDesktopEvent::e_windowClosing, *this));
    std::erase(GetWindows(), this);
    system_.reset();
    LeaveDesktop();
}

unsigned int Window::GetNumOpen()
{
    return static_cast<unsigned int>(GetWindows().size());
}

Window *Window::GetMain()
{
    auto const &windows = GetWindows();
    auto const found = std::find_if(windows.rbegin(), windows.rend(),
                                    [](Window const *window) { return window->GetRole() == eWindowRole::e_main; });
    return found != windows.rend() ? *found : nullptr;
}

Window *Window::GetActive()
{
    auto const &windows = GetWindows();
    auto const found =
        std::find_if(windows.begin(), windows.end(), [](Window const *window) { return window->IsActive(); });
    return found != windows.end() ? *found : nullptr;
}

Window *Window::Find(HWND handle)
{
    auto const &windows = GetWindows();
    auto const found = std::find_if(windows.begin(), windows.end(),
                                    [handle](Window const *window) { return window->GetHandle() == handle; });
    return found != windows.end() ? *found : nullptr;
}

} // namespace quillmarsh::platform
