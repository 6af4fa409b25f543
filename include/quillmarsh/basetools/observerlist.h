// List of observers that may change while it is walked.
#ifndef QUILLMARSH_BASETOOLS_OBSERVERLIST_H
#define QUILLMARSH_BASETOOLS_OBSERVERLIST_H

#include <algorithm>
#include <vector>

namespace quillmarsh
{

/// Borrowed observers in the order in which they were added.
///
/// Observers may come and go while they are called, also when one of them starts another call of all: an observer that
/// was removed is not called any more, one that was added is called from the next ForEach() on, and no other misses its
/// call. One thread at a time.
/// \code
/// listeners_.ForEach([&](Listener &listener) { listener.OnChanged(*this); });
/// \endcode
template<typename Observer>
class ObserverList
{
public:
    /// Adds the observer at the end. Null is ignored, and so is an observer that is in the list already.
    void Add(Observer *observer)
    {
        if (observer != nullptr && std::find(observers_.begin(), observers_.end(), observer) == observers_.end())
            observers_.push_back(observer);
    }

    /// Removes the observer; harmless if it was never added.
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

    /// Removes all observers.
    void Clear()
    {
        std::fill(observers_.begin(), observers_.end(), nullptr);
        if (numWalks_ == 0)
            observers_.clear();
    }

    /// Number of observers.
    unsigned int GetSize() const
    {
        return static_cast<unsigned int>(observers_.size()) -
               static_cast<unsigned int>(std::count(observers_.begin(), observers_.end(), nullptr));
    }

    /// Calls `call` with each observer, in order. What it throws passes through, and ends the walk.
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

} // namespace quillmarsh

#endif
