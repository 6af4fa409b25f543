// The newest wish counts.
#include <viewer_model/files/latestwork.h>

#include <quillmarsh/dataobjects/dataexception.h>

#include <gtest/gtest.h>

#include <atomic>
#include <semaphore>

namespace viewer
{
namespace
{

using quillmarsh::sampled_data::DataException;

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
                begun_.release();
                gate_.acquire();
                wasStopped_ = !progress(0.5);
                return [this, letter] { finished_ += letter; };
            },
            [](string const &) {});
        begun_.acquire();
    }
    void WaitAndPoll(int count)
    {
        for (int i = 0; i < count; ++i)
            done_.acquire();
        work_.Poll();
    }

    string finished_;
    std::atomic<bool> wasStopped_ = false;
    std::counting_semaphore<> begun_{0};
    std::counting_semaphore<> gate_{0};
    std::counting_semaphore<> done_{0};
    LatestWork work_{[this] { done_.release(); }};
};

TEST_F(LatestWorks, TakesThePlaceOfWhatWaits)
{
    WishGate(0, 'a');
    Wish(1, 'b');
    Wish(0, 'c');
    Wish(1, 'd');
    EXPECT_TRUE(work_.IsBusy(1));
    gate_.release();
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
    gate_.release();
    WaitAndPoll(1);
    EXPECT_TRUE(wasStopped_);
    EXPECT_EQ("c", finished_);
    // Dropped between the work and its finish.
    Wish(3, 'd');
    done_.acquire();
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
