// The newest wish counts.
#include <viewer_model/files/latestwork.h>

#include <quillmarsh/dataobjects/dataexception.h>

#include <gtest/gtest.h>

#include "tests/support/waiting.h"

#include <atomic>

namespace viewer
{
namespace
{

using quillmarsh::sampled_data::DataException;

/// std::counting_semaphore would do, but with GCC 12 it can miss a release on Windows.
class Passes
{
public:
    void Release() { ++count_; }
    void Acquire()
    {
        ASSERT_TRUE(quillmarsh::tests::WaitUntil([this] { return count_ > 0; }));
        --count_;
    }

private:
    std::atomic<int> count_ = 0;
};

class LatestWorks : public testing::Test
{
protected:
    /// Wishes for work that writes a letter when it is finished.
    void Wish(unsigned int purpose, char letter)
    {
        work_.Wish(
            purpose,
            [this, letter](Jobs::Progress const &) -> Jobs::Finish { return [this, letter] { finished_ += letter; }; },
            [](string const &) {});
    }
    /// Wishes for work that waits for Release(), and notes whether it was told to stop.
    void WishGate(unsigned int purpose, char letter)
    {
        work_.Wish(
            purpose,
            [this, letter](Jobs::Progress const &progress) -> Jobs::Finish
            {
                begun_.Release();
                gate_.Acquire();
                wasStopped_ = !progress(0.5);
                return [this, letter] { finished_ += letter; };
            },
            [](string const &) {});
        begun_.Acquire();
    }
    void WaitAndPoll(int count)
    {
        for (int i = 0; i < count; ++i)
            done_.Acquire();
        work_.Poll();
    }

    string finished_;
    std::atomic<bool> wasStopped_ = false;
    Passes begun_;
    Passes gate_;
    Passes done_;
    LatestWork work_{[this] { done_.Release(); }};
};

TEST_F(LatestWorks, TakesThePlaceOfWhatWaits)
{
    WishGate(0, 'a');
    Wish(1, 'b');
    Wish(0, 'c');
    Wish(1, 'd');
    EXPECT_TRUE(work_.IsBusy(1));
    gate_.Release();
    WaitAndPoll(3);
    // What ran was not disturbed.
    EXPECT_EQ("acd", finished_);
    EXPECT_FALSE(wasStopped_);
    EXPECT_FALSE(work_.IsBusy(0) || work_.IsBusy(1));
}

TEST_F(LatestWorks, DroppedWorkFinishesNothing)
{
    WishGate(0, 'a');
    Wish(1, 'b');
    Wish(2, 'c');
    work_.Drop(0);
    work_.Drop(1);
    EXPECT_FALSE(work_.IsBusy(0));
    gate_.Release();
    WaitAndPoll(1);
    EXPECT_TRUE(wasStopped_);
    EXPECT_EQ("c", finished_);
    // Dropped between the work and its finish.
    Wish(3, 'd');
    done_.Acquire();
    work_.Drop(3);
    work_.Poll();
    EXPECT_EQ("c", finished_);
}

TEST_F(LatestWorks, FailuresAreTold)
{
    string reason;
    work_.Wish(
        0, [](Jobs::Progress const &) -> Jobs::Finish { throw DataException("too large"); },
        [&](string const &text) { reason = text; });
    WaitAndPoll(1);
    EXPECT_EQ("too large", reason);
    Wish(0, 'a');
    WaitAndPoll(1);
    EXPECT_EQ("a", finished_);
}

} // namespace
} // namespace viewer
