#include <quillmarsh/platform/program.h>

#include "source/platform/win32/consolesettings.h"
#include "source/platform/win32/windows.h"

#include <cstdio>
#include <mutex>

namespace quillmarsh::platform
{

struct SignalWatch::State
{
    std::function<void(eSignal)> onSignal;
};

namespace
{

/// Exit status of a process that Ctrl+C ended.
constexpr UINT s_controlCExit = 0xC000013A;

std::mutex s_signalMutex;
std::function<void(eSignal)> const *s_onSignal = nullptr;

eSignal ToSignal(DWORD event)
{
    switch (event)
    {
    case CTRL_C_EVENT:
        return eSignal::e_interrupt;
    case CTRL_CLOSE_EVENT:
        return eSignal::e_hangUp;
    default:
        return eSignal::e_terminate;
    }
}

/// The system calls this on a new thread for each event.
BOOL WINAPI OnConsoleEvent(DWORD event)
{
    {
        std::lock_guard const lock(s_signalMutex);
        if (!s_onSignal)
            return FALSE;
        (*s_onSignal)(ToSignal(event));
    }
    // Except for an interrupt, the process ends when this returns. The wait lets the program end by itself.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(3000);
    return TRUE;
}

} // namespace

SignalWatch::SignalWatch(std::function<void(eSignal)> onSignal) : state_(std::make_unique<State>())
{
    state_->onSignal = std::move(onSignal);
    {
        std::lock_guard const lock(s_signalMutex);
        s_onSignal = &state_->onSignal;
    }
    SetConsoleCtrlHandler(&OnConsoleEvent, TRUE);
}

SignalWatch::~SignalWatch()
{
    SetConsoleCtrlHandler(&OnConsoleEvent, FALSE);
    std::lock_guard const lock(s_signalMutex);
    s_onSignal = nullptr;
}

void EndProcessBySignal(eSignal)
{
    std::fflush(nullptr);
    RestoreConsole();
    // exit() would run static destructors, which may wait for the calling thread.
    TerminateProcess(GetCurrentProcess(), s_controlCExit);
    for (;;)
        Sleep(INFINITE);
}

} // namespace quillmarsh::platform
