#include "source/platform/linux/endsignals.h"

#include <quillmarsh/platform/program.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <thread>

#include <sys/eventfd.h>
#include <unistd.h>

namespace quillmarsh::platform
{
namespace
{

struct NumberedSignal
{
    int number;
    eSignal signal;
};

constexpr NumberedSignal s_signals[] = {
    {SIGINT, eSignal::e_interrupt}, {SIGTERM, eSignal::e_terminate}, {SIGHUP, eSignal::e_hangUp},
    {SIGWINCH, eSignal::e_resize},  {SIGCONT, eSignal::e_continue},
};

/// True for signals that the system does nothing about by default.
bool IsHarmless(int number)
{
    return number == SIGWINCH || number == SIGCONT;
}

eSignal ToSignal(int number)
{
    for (NumberedSignal const &row : s_signals)
    {
        if (row.number == number)
            return row.signal;
    }
    return eSignal::e_terminate;
}

int ToNumber(eSignal signal)
{
    for (NumberedSignal const &row : s_signals)
    {
        if (row.signal == signal && !IsHarmless(row.number))
            return row.number;
    }
    return SIGTERM;
}

bool IsIgnored(int number)
{
    struct sigaction present = {};
    return sigaction(number, nullptr, &present) == 0 && present.sa_handler == SIG_IGN;
}

} // namespace

int GetEndSignalDescriptor()
{
    static int const s_descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    return s_descriptor;
}

struct SignalWatch::State
{
    sigset_t signals;
    sigset_t previous;
    std::atomic<bool> ending{false};
    std::thread thread;
};

SignalWatch::SignalWatch(std::function<void(eSignal)> onSignal) : state_(std::make_unique<State>())
{
    State &state = *state_;
    sigemptyset(&state.signals);
    for (NumberedSignal const &row : s_signals)
    {
        // sigwait would also receive a signal that is ignored.
        if (IsHarmless(row.number) || !IsIgnored(row.number))
            sigaddset(&state.signals, row.number);
    }
    // All later threads inherit the block. One thread waits for the signals, and so may do anything when one arrives.
    pthread_sigmask(SIG_BLOCK, &state.signals, &state.previous);
    state.thread = std::thread(
        [&state, onSignal = std::move(onSignal)]
        {
            int number = 0;
            while (sigwait(&state.signals, &number) == 0 && !state.ending)
            {
                if (number == SIGTERM || number == SIGHUP)
                    eventfd_write(GetEndSignalDescriptor(), 1);
                onSignal(ToSignal(number));
            }
        });
}

SignalWatch::~SignalWatch()
{
    state_->ending = true;
    pthread_kill(state_->thread.native_handle(), SIGWINCH);
    state_->thread.join();
    pthread_sigmask(SIG_SETMASK, &state_->previous, nullptr);
}

void EndProcessBySignal(eSignal signal)
{
    std::fflush(nullptr);
    int const number = ToNumber(signal);
    std::signal(number, SIG_DFL);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, number);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    // Raised in this thread, where it is unblocked, so that the process ends before the call returns.
    raise(number);
    _exit(128 + number);
}

} // namespace quillmarsh::platform
