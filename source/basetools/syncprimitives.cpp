#include <quillmarsh/basetools/syncprimitives.h>

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/texttools.h>

#include "source/platform/threads.h"

#include <algorithm>

namespace quillmarsh
{
namespace
{

constexpr std::size_t s_maxKernelNameLength = 260;

} // namespace

void ForceWinKernelName(string &name)
{
    if (name.size() > s_maxKernelNameLength)
        name.resize(s_maxKernelNameLength);

    std::size_t start = 0;
    for (string const prefix : {"Local\\", "Global\\", "Session\\"})
    {
        if (MatchPrefix(name, prefix))
            start = prefix.size();
    }
    std::replace(name.begin() + static_cast<std::ptrdiff_t>(start), name.end(), '\\', '/');
}

CriticalSection::CriticalSection()
{
    static_assert(sizeof(section_) == platform::s_criticalSectionSize);
    platform::MakeCriticalSection(section_);
}

CriticalSection::~CriticalSection()
{
    platform::DestroyCriticalSection(section_);
}

void CriticalSection::Enter()
{
    platform::EnterCriticalSection(section_);
}

bool CriticalSection::TryEnter()
{
    return platform::TryEnterCriticalSection(section_);
}

void CriticalSection::Leave()
{
    platform::LeaveCriticalSection(section_);
}

Event::Event(bool initiallySignaled, bool manualReset, string const &name, bool forceKernelName) : name_(name)
{
    if (forceKernelName)
        ForceWinKernelName(name_);
    handle_ = platform::CreateEventObject(initiallySignaled, manualReset, name_);
    if (!handle_)
        QUILLMARSH_THROW(SystemResourceException, "CreateEvent() failed.");
}

Event::~Event()
{
    platform::CloseObject(handle_);
}

bool Event::Set()
{
    return platform::SignalEvent(handle_);
}

bool Event::Reset()
{
    return platform::ClearEvent(handle_);
}

bool Event::WaitInfinite()
{
    return platform::WaitForObject(handle_, platform::s_waitInfinite) == platform::eWaitResult::e_signaled;
}

bool Event::Wait(unsigned int milliseconds, bool &timedOut)
{
    platform::eWaitResult const result = platform::WaitForObject(handle_, milliseconds);
    timedOut = result == platform::eWaitResult::e_timedOut;
    return result != platform::eWaitResult::e_failed;
}

SingleInstanceFlagSentry::SingleInstanceFlagSentry(string const &name, bool forceKernelName) : name_(name)
{
    if (forceKernelName)
        ForceWinKernelName(name_);
    if (!name_.empty())
        handle_ = platform::CreateNewMutex(name_);
}

SingleInstanceFlagSentry::~SingleInstanceFlagSentry()
{
    if (handle_)
        platform::CloseObject(handle_);
}

} // namespace quillmarsh
