#include "latestwork.h"

#include <quillmarsh/basetools/exception.h>

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace viewer
{

using namespace quillmarsh;

struct LatestWork::State
{
    struct Errand
    {
        unsigned int purpose;
        Jobs::Work work;
        Jobs::Failed failed;
        /// After the work.
        Jobs::Finish finish;
        string failure;
    };

    explicit State(std::function<void()> itsWake) : wake(std::move(itsWake)), thread([this] { Run(); }) {}
    ~State()
    {
        {
            std::lock_guard const lock(mutex);
            isEnding = true;
            isDropped = true;
            waiting.clear();
        }
        changed.notify_all();
        thread.join();
    }

    void Run()
    {
        std::unique_lock lock(mutex);
        while (true)
        {
            changed.wait(lock, [this] { return isEnding || !waiting.empty(); });
            if (isEnding)
                return;
            Errand errand = std::move(waiting.front());
            waiting.pop_front();
            running = &errand;
            isDropped = false;
            lock.unlock();
            Do(errand);
            lock.lock();
            running = nullptr;
            if (isDropped)
                continue;
            done.push_back(std::move(errand));
            lock.unlock();
            wake();
            lock.lock();
        }
    }

    void Do(Errand &errand)
    {
        try
        {
            errand.finish = errand.work(
                [this](double)
                {
                    std::lock_guard const lock(mutex);
                    return !isDropped;
                });
        }
        catch (Exception const &thrown)
        {
            errand.failure = thrown.GetMessage();
        }
        catch (std::exception const &thrown)
        {
            errand.failure = thrown.what();
        }
        // What the work holds is not needed for the finish.
        errand.work = nullptr;
    }

    std::function<void()> wake;
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<Errand> waiting;
    std::vector<Errand> done;
    Errand const *running = nullptr;
    bool isDropped = false;
    bool isEnding = false;
    std::thread thread;
};

LatestWork::LatestWork(std::function<void()> wake) : state_(std::make_unique<State>(std::move(wake))) {}

LatestWork::~LatestWork() = default;

void LatestWork::Wish(unsigned int purpose, Jobs::Work work, Jobs::Failed failed)
{
    {
        std::lock_guard const lock(state_->mutex);
        std::erase_if(state_->waiting, [&](State::Errand const &errand) { return errand.purpose == purpose; });
        state_->waiting.push_back({purpose, std::move(work), std::move(failed), {}, string()});
    }
    state_->changed.notify_one();
}

void LatestWork::Drop(unsigned int purpose)
{
    std::lock_guard const lock(state_->mutex);
    auto const isOf = [&](State::Errand const &errand) { return errand.purpose == purpose; };
    std::erase_if(state_->waiting, isOf);
    std::erase_if(state_->done, isOf);
    if (state_->running != nullptr && isOf(*state_->running))
        state_->isDropped = true;
}

bool LatestWork::IsBusy(unsigned int purpose) const
{
    std::lock_guard const lock(state_->mutex);
    auto const isOf = [&](State::Errand const &errand) { return errand.purpose == purpose; };
    return std::any_of(state_->waiting.begin(), state_->waiting.end(), isOf) ||
           std::any_of(state_->done.begin(), state_->done.end(), isOf) ||
           (state_->running != nullptr && !state_->isDropped && isOf(*state_->running));
}

void LatestWork::Poll()
{
    std::vector<State::Errand> done;
    {
        std::lock_guard const lock(state_->mutex);
        done.swap(state_->done);
    }
    for (State::Errand const &errand : done)
    {
        if (!errand.failure.empty())
            errand.failed(errand.failure);
        else if (errand.finish)
            errand.finish();
    }
}

} // namespace viewer
