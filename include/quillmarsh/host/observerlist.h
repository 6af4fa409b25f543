// List of observers that may change while it is walked.
#ifndef QUILLMARSH_HOST_OBSERVERLIST_H
#define QUILLMARSH_HOST_OBSERVERLIST_H

#include <algorithm>
#include <vector>

namespace quillmarsh::host
{

/// Borrowed observers in the order in which they were added.
///
/// While the list is walked, also by a walk inside another, observers may come and go: one that was removed is not
/// called any more, one that was added is called from the next walk on.
template<typename Observer>
class ObserverList
{
public:
    void Add(Observer *observer)
    {
        if (observer != nullptr && std::find(observers_.begin(), observers_.end(), observer) == observers_.end())
            observers_.push_back(observer);
    }

    void Remove(Observer *observer)
    {
        auto const found = std::find(observers_.begin(), observers_.end(), observer);
        if (observer == nullptr || found == observers_.end())
            return;
        if (numWalks_ == 0)
            observers_.erase(found);
        else
            *found = nullptr;
    }

    /// Number of observers.
    unsigned int GetSize() const
    {
        return static_cast<unsigned int>(observers_.size()) -
               static_cast<unsigned int>(std::count(observers_.begin(), observers_.end(), nullptr));
    }

    void Clear()
    {
        for (Observer *const observer : std::vector(observers_))
            Remove(observer);
    }

    /// Calls `call` with each observer.
    template<typename Call>
    void ForEach(Call &&call)
    {
        WalkSentry const sentry(*this);
        std::size_t const count = observers_.size();
        for (std::size_t i = 0; i < count; ++i)
        {
            if (observers_[i] != nullptr)
                call(*observers_[i]);
        }
    }

private:
    /// The last walk to end closes the gaps, also when an observer threw.
    class WalkSentry
    {
    public:
        explicit WalkSentry(ObserverList &list) : list_(list) { ++list_.numWalks_; }
        ~WalkSentry()
        {
            if (--list_.numWalks_ == 0)
                std::erase(list_.observers_, nullptr);
        }
        WalkSentry(WalkSentry const &) = delete;
        WalkSentry &operator=(WalkSentry const &) = delete;

    private:
        ObserverList &list_;
    };

    std::vector<Observer *> observers_;
    unsigned int numWalks_ = 0;
};

} // namespace quillmarsh::host

#endif
