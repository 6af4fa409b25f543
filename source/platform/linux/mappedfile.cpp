#include <quillmarsh/platform/mappedfile.h>

#include "source/platform/files.h"
#include "source/platform/plainfiles.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <limits>
#include <mutex>

#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillmarsh::platform
{
namespace
{

/// A mapped file as the signal handler sees it. Ranges are never freed, so that the handler can walk their list at any
/// time; those of closed files are used again.
struct Range
{
    std::atomic<bool> isUsed{false};
    std::atomic<std::uintptr_t> begin{0};
    std::atomic<std::uintptr_t> end{0};
    std::atomic<int> descriptor{-1};
    std::atomic<bool> isDamaged{false};
    Range *next = nullptr;
};

std::atomic<Range *> s_ranges = nullptr;
std::mutex s_mutex;
std::uintptr_t s_pageSize = 0;
struct sigaction s_previous;

Range *FindRange(std::uintptr_t address)
{
    for (Range *range = s_ranges.load(); range; range = range->next)
    {
        if (address >= range->begin.load() && address < range->end.load())
            return range;
    }
    return nullptr;
}

/// Puts zeros in place of the page, and of all that follows if the file ends ahead of it.
bool ReplacePages(Range &range, std::uintptr_t address)
{
    std::uintptr_t const page = address / s_pageSize * s_pageSize;
    struct stat info = {};
    bool const isPastEnd = fstat(range.descriptor.load(), &info) == 0 &&
                           static_cast<std::uint64_t>(info.st_size) <= page - range.begin.load();
    std::size_t const byteSize = isPastEnd ? range.end.load() - page : s_pageSize;
    // The call itself: tools for finding faults put functions of their own around mmap(), which would see a write here.
    constexpr int flags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED | MAP_NORESERVE;
    if (syscall(SYS_mmap, page, byteSize, PROT_READ, flags, -1, 0) == -1)
        return false;
    range.isDamaged = true;
    return true;
}

/// Calls only what a handler may call. The instruction that has failed is repeated when this returns.
void OnBusError(int number, siginfo_t *info, void *context)
{
    int const reason = errno;
    // A signal that a program has sent has no address.
    bool const isFault = info->si_code > 0;
    auto const address = reinterpret_cast<std::uintptr_t>(info->si_addr);
    Range *const range = isFault ? FindRange(address) : nullptr;
    bool const isMended = range && ReplacePages(*range, address);
    errno = reason;
    if (isMended)
        return;
    if ((s_previous.sa_flags & SA_SIGINFO) != 0)
        s_previous.sa_sigaction(number, info, context);
    else if (s_previous.sa_handler != SIG_DFL && s_previous.sa_handler != SIG_IGN)
        s_previous.sa_handler(number);
    // Comes once more when this returns.
    else if (s_previous.sa_handler == SIG_DFL || isFault)
    {
        signal(number, SIG_DFL);
        raise(number);
    }
}

void InstallHandler()
{
    static std::once_flag s_once;
    std::call_once(s_once,
                   []
                   {
                       s_pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
                       sigaction(SIGBUS, nullptr, &s_previous);
                       struct sigaction action = {};
                       action.sa_sigaction = OnBusError;
                       action.sa_flags = SA_SIGINFO | SA_ONSTACK;
                       sigemptyset(&action.sa_mask);
                       sigaction(SIGBUS, &action, nullptr);
                   });
}

Range &TakeRange()
{
    std::lock_guard const lock(s_mutex);
    for (Range *range = s_ranges.load(); range; range = range->next)
    {
        if (!range->isUsed.exchange(true))
            return *range;
    }
    auto *const range = new Range;
    range->isUsed = true;
    range->next = s_ranges.load();
    s_ranges = range;
    return *range;
}

void ReleaseRange(Range &range)
{
    range.end = 0;
    range.begin = 0;
    range.descriptor = -1;
    range.isDamaged = false;
    range.isUsed = false;
}

} // namespace

struct MappedFile::State
{
    FilePtr file;
    void *bytes = nullptr;
    std::uint64_t byteSize = 0;
    Range *range = nullptr;

    ~State()
    {
        if (range)
            ReleaseRange(*range);
        if (bytes)
            munmap(bytes, byteSize);
    }
};

MappedFile::MappedFile(AutoPtr<State> state) : state_(std::move(state)) {}

MappedFile::~MappedFile() = default;

AutoPtr<MappedFile> MappedFile::Open(string const &fileName, string &reason)
{
    auto state = std::make_unique<State>();
    state->file = OpenPlainFile(MakeStreamPath(fileName), state->byteSize);
    if (!state->file)
    {
        reason = "cannot be opened: " + DescribeLastFailure();
        return nullptr;
    }
    if (state->byteSize > std::numeric_limits<std::size_t>::max())
    {
        reason = "is too large to be mapped";
        return nullptr;
    }
    if (state->byteSize > 0)
    {
        InstallHandler();
        int const descriptor = fileno(state->file.get());
        void *const bytes = mmap(nullptr, state->byteSize, PROT_READ, MAP_PRIVATE, descriptor, 0);
        if (bytes == MAP_FAILED)
        {
            reason = "cannot be mapped: " + DescribeLastFailure();
            return nullptr;
        }
        state->bytes = bytes;
        state->range = &TakeRange();
        state->range->descriptor = descriptor;
        state->range->begin = reinterpret_cast<std::uintptr_t>(bytes);
        state->range->end = reinterpret_cast<std::uintptr_t>(bytes) + state->byteSize;
    }
    return AutoPtr<MappedFile>(new MappedFile(std::move(state)));
}

unsigned char const *MappedFile::GetBytes() const
{
    return static_cast<unsigned char const *>(state_->bytes);
}

std::uint64_t MappedFile::GetByteSize() const
{
    return state_->byteSize;
}

bool MappedFile::IsDamaged() const
{
    return state_->range && state_->range->isDamaged;
}

} // namespace quillmarsh::platform
