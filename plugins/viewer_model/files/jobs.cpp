#include "jobs.h"

#include "failures.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace viewer
{

using namespace quillmarsh;

namespace
{

using Clock = std::chrono::steady_clock;
/// Progress wakes the frame thread no more often than this.
constexpr auto s_progressInterval = std::chrono::milliseconds(50);

} // namespace

struct Jobs::State
{
    struct Entry
    {
        Job job;
        Work work;
        Failed failed;
        bool isStopped = false;
    };

    explicit State(std::function<void()> wakeFrame) : wake(std::move(wakeFrame))
    {
        thread = std::thread([this] { Run(); });
    }

    ~State()
    {
        {
            std::lock_guard const lock(mutex);
            isEnding = true;
            for (auto const &entry : entries)
                entry->isStopped = true;
        }
        changed.notify_all();
        thread.join();
    }

    void Run()
    {
        std::unique_lock lock(mutex);
        while (!isEnding)
        {
            if (entries.empty())
            {
                changed.wait(lock);
                continue;
            }
            std::shared_ptr<Entry> const entry = entries.front();
            entry->job.isRunning = true;
            lock.unlock();
            Finish finish = RunOne(*entry);
            lock.lock();
            finished.push_back(std::move(finish));
            std::erase(entries, entry);
            lock.unlock();
            wake();
            lock.lock();
        }
    }

    /// Returns what Poll() has to call.
    Finish RunOne(Entry &entry)
    {
        Clock::time_point next = Clock::now();
        string reason;
        try
        {
            Finish finish = entry.work([&](double part) { return Report(entry, part, next); });
            std::lock_guard const lock(mutex);
            if (finish || !entry.isStopped)
                return finish;
            reason = s_szStopped;
        }
        catch (...)
        {
            reason = DescribeException();
        }
        return [failed = entry.failed, reason]
        {
            if (failed)
                failed(reason);
        };
    }

    bool Report(Entry &entry, double part, Clock::time_point &next)
    {
        Clock::time_point const now = Clock::now();
        bool shallWake = false;
        {
            std::lock_guard const lock(mutex);
            shallWake = now >= next && entry.job.part != part;
            entry.job.part = std::min(part, 1.0);
            if (entry.isStopped)
                return false;
        }
        if (shallWake)
        {
            next = now + s_progressInterval;
            wake();
        }
        return true;
    }

    std::function<void()> wake;
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::shared_ptr<Entry>> entries;
    std::vector<Finish> finished;
    unsigned int lastNumber = 0;
    bool isEnding = false;
    std::thread thread;
};

Jobs::Jobs(std::function<void()> wake) : state_(std::make_unique<State>(std::move(wake))) {}

Jobs::~Jobs() = default;

unsigned int Jobs::Start(string const &title, Work work, Failed failed)
{
    auto entry = std::make_shared<State::Entry>();
    unsigned int number = 0;
    {
        std::lock_guard const lock(state_->mutex);
        number = ++state_->lastNumber;
        *entry = {{number, title, 0, false}, std::move(work), std::move(failed)};
        state_->entries.push_back(std::move(entry));
    }
    state_->changed.notify_all();
    return number;
}

bool Jobs::Stop(unsigned int number)
{
    std::lock_guard const lock(state_->mutex);
    auto const found = std::find_if(state_->entries.begin(), state_->entries.end(),
                                    [&](auto const &entry) { return entry->job.number == number; });
    if (found == state_->entries.end())
        return false;
    (*found)->isStopped = true;
    if (!(*found)->job.isRunning)
    {
        state_->finished.push_back(
            [failed = (*found)->failed]
            {
                if (failed)
                    failed(s_szStopped);
            });
        state_->entries.erase(found);
    }
    return true;
}

void Jobs::StopAll()
{
    for (Job const &job : List())
        Stop(job.number);
}

void Jobs::Poll()
{
    std::vector<Finish> finished;
    {
        std::lock_guard const lock(state_->mutex);
        finished.swap(state_->finished);
    }
    for (Finish const &finish : finished)
    {
        if (finish)
            finish();
    }
}

std::vector<Jobs::Job> Jobs::List() const
{
    std::lock_guard const lock(state_->mutex);
    std::vector<Job> jobs;
    for (auto const &entry : state_->entries)
        jobs.push_back(entry->job);
    return jobs;
}

} // namespace viewer
