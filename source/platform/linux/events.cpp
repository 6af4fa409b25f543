// Events and named mutexes.
#include "source/platform/linux/futex.h"
#include "source/platform/linux/namedobjectfile.h"
#include "source/platform/linux/waitableobject.h"

#include <map>
#include <mutex>
#include <sys/mman.h>
#include <sys/stat.h>

namespace quillmarsh::platform
{
namespace
{

/// State of an event, also shared between processes. A process that dies cannot leave it inconsistent.
struct EventState
{
    std::uint32_t layout;
    std::uint32_t isManualReset;
    FutexWord isSignaled;
};
constexpr std::uint32_t s_eventLayout = 0x716d6531;

/// Memory that holds the state of an event. In one process, all handles of one name share it.
class EventMemory : NoCopy
{
public:
    EventMemory(bool initiallySignaled, bool manualReset)
        : own_{s_eventLayout, manualReset ? 1u : 0u, initiallySignaled ? 1u : 0u},
          state_(&own_)
    {
    }

    EventMemory(string const &path, bool initiallySignaled, bool manualReset)
        : EventMemory(initiallySignaled, manualReset)
    {
        state_ = nullptr;
        file_ = NamedObjectFile::Open(path, NamedObjectFile::eUse::e_shared, &own_, sizeof(own_));
        struct stat status = {};
        if (!file_ || fstat(file_->GetDescriptor(), &status) != 0 ||
            status.st_size < static_cast<off_t>(sizeof(EventState)))
            return;
        void *const memory =
            mmap(nullptr, sizeof(EventState), PROT_READ | PROT_WRITE, MAP_SHARED, file_->GetDescriptor(), 0);
        if (memory != MAP_FAILED)
            state_ = static_cast<EventState *>(memory);
    }

    ~EventMemory()
    {
        if (IsShared() && state_)
            munmap(state_, sizeof(EventState));
    }

    bool IsShared() const { return state_ != &own_; }
    bool IsUsable() const { return state_ && state_->layout == s_eventLayout; }
    EventState &GetState() const { return *state_; }

private:
    EventState own_;
    EventState *state_;
    AutoPtr<NamedObjectFile> file_;
};

std::shared_ptr<EventMemory> OpenNamedEvent(string const &name, bool initiallySignaled, bool manualReset)
{
    string const path = MakeNamedObjectPath(name);
    if (path.empty())
        return nullptr;

    static std::mutex s_mutex;
    static auto &s_open = *new std::map<string, std::weak_ptr<EventMemory>>;
    SuspensionDeferral const deferral;
    std::lock_guard const lock(s_mutex);
    std::erase_if(s_open, [](auto const &entry) { return entry.second.expired(); });
    std::shared_ptr<EventMemory> memory = s_open[path].lock();
    if (!memory)
    {
        memory = std::make_shared<EventMemory>(path, initiallySignaled, manualReset);
        s_open[path] = memory;
    }
    return memory->IsUsable() ? memory : nullptr;
}

class EventObject : public WaitableObject
{
public:
    explicit EventObject(std::shared_ptr<EventMemory> memory)
        : memory_(std::move(memory)),
          state_(memory_->GetState()),
          isShared_(memory_->IsShared())
    {
    }

    ~EventObject() override
    {
        SuspensionDeferral const deferral;
        memory_.reset();
    }

    eWaitResult Wait(unsigned int milliseconds) override
    {
        bool const isEndless = milliseconds == s_waitInfinite;
        timespec const deadline = isEndless || milliseconds == 0 ? timespec{} : MakeDeadline(milliseconds);
        while (!TakeSignal())
        {
            bool const isLate =
                milliseconds == 0 || !WaitForChange(state_.isSignaled, 0, isEndless ? nullptr : &deadline, isShared_);
            if (isLate)
                return TakeSignal() ? eWaitResult::e_signaled : eWaitResult::e_timedOut;
        }
        return eWaitResult::e_signaled;
    }

    void Set()
    {
        // Wakes all waiting threads; with automatic reset, the first to take the signal passes. So a thread that dies,
        // or is suspended, between waking and taking it does not lose the signal for the others.
        state_.isSignaled.store(1);
        NotifyChange(state_.isSignaled, isShared_);
    }

    void Clear() { state_.isSignaled.store(0); }

private:
    bool TakeSignal()
    {
        if (state_.isManualReset != 0)
            return state_.isSignaled.load() != 0;
        std::uint32_t signaled = 1;
        return state_.isSignaled.compare_exchange_strong(signaled, 0);
    }

    std::shared_ptr<EventMemory> memory_;
    EventState &state_;
    bool isShared_;
};

/// A named mutex. Only its existence matters; nobody waits for it.
class MutexObject : public WaitableObject
{
public:
    explicit MutexObject(AutoPtr<NamedObjectFile> file) : file_(std::move(file)) {}

    ~MutexObject() override
    {
        SuspensionDeferral const deferral;
        file_.reset();
    }

    eWaitResult Wait(unsigned int) override { return eWaitResult::e_failed; }

private:
    AutoPtr<NamedObjectFile> file_;
};

} // namespace

HANDLE CreateEventObject(bool initiallySignaled, bool manualReset, string const &name)
{
    std::shared_ptr<EventMemory> memory = name.empty() ? std::make_shared<EventMemory>(initiallySignaled, manualReset)
                                                       : OpenNamedEvent(name, initiallySignaled, manualReset);
    return memory ? MakeHandle(new EventObject(std::move(memory))) : nullptr;
}

bool SignalEvent(HANDLE event)
{
    auto *const object = GetObjectOf<EventObject>(event);
    if (object)
        object->Set();
    return object != nullptr;
}

bool ClearEvent(HANDLE event)
{
    auto *const object = GetObjectOf<EventObject>(event);
    if (object)
        object->Clear();
    return object != nullptr;
}

HANDLE CreateNewMutex(string const &name)
{
    string const path = MakeNamedObjectPath(name);
    if (path.empty())
        return nullptr;
    SuspensionDeferral const deferral;
    AutoPtr<NamedObjectFile> file = NamedObjectFile::Open(path, NamedObjectFile::eUse::e_exclusive, "", 0);
    return file ? MakeHandle(new MutexObject(std::move(file))) : nullptr;
}

eWaitResult WaitForObject(HANDLE object, unsigned int milliseconds)
{
    return object ? static_cast<WaitableObject *>(object)->Wait(milliseconds) : eWaitResult::e_failed;
}

void CloseObject(HANDLE object)
{
    if (object)
        static_cast<WaitableObject *>(object)->Close();
}

} // namespace quillmarsh::platform
