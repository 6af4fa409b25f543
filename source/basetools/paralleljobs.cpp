#include <quillmarsh/basetools/paralleljobs.h>

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace quillmarsh
{
namespace
{

/// Jobs that several threads take one by one.
class JobQueue : NoCopy
{
public:
    JobQueue(std::size_t count, std::function<void(std::size_t)> const &work) : count_(count), work_(work) {}

    /// Does jobs until none is left.
    void Work()
    {
        for (std::size_t index; (index = next_.fetch_add(1)) < count_;)
        {
            try
            {
                work_(index);
            }
            catch (...)
            {
                KeepFailure(index);
            }
        }
    }

    void ThrowFailure() const
    {
        if (failure_)
            std::rethrow_exception(failure_);
    }

private:
    void KeepFailure(std::size_t index)
    {
        std::lock_guard const lock(mutex_);
        if (failure_ && failedIndex_ < index)
            return;
        failure_ = std::current_exception();
        failedIndex_ = index;
    }

    std::size_t const count_;
    std::function<void(std::size_t)> const &work_;
    std::atomic<std::size_t> next_ = 0;
    std::mutex mutex_;
    std::exception_ptr failure_;
    std::size_t failedIndex_ = 0;
};

} // namespace

unsigned int GetNumParallelThreads()
{
    return std::max(std::thread::hardware_concurrency(), 1u);
}

void RunInParallel(unsigned int numThreads, std::size_t count, std::function<void(std::size_t index)> const &work)
{
    JobQueue queue(count, work);
    std::vector<std::thread> threads;
    for (std::size_t i = 1; i < std::min<std::size_t>(numThreads, count); ++i)
    {
        try
        {
            threads.emplace_back(&JobQueue::Work, &queue);
        }
        catch (std::system_error const &)
        {
            break;
        }
    }
    queue.Work();
    for (std::thread &thread : threads)
        thread.join();
    queue.ThrowFailure();
}

} // namespace quillmarsh
