// Work on a thread of its own.
#include "viewer_model/files/jobs.h"

#include <quillmarsh/dataobjects/dataexception.h>

#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <atomic>

namespace viewer
{
namespace
{

using quillmarsh::sampled_data::DataException;

class ViewerJobs : public testing::Test
{
protected:
    bool Await(std::size_t numEvents)
    {
        return quillmarsh::tests::WaitUntil([&] { return jobs_.Poll(), events_.size() >= numEvents; });
    }
    /// Starts a job that goes on until it is stopped or `ends_` is set.
    unsigned int StartLong(string const &name)
    {
        return jobs_.Start(
            name,
            [this, name](Jobs::Progress const &progress) -> Jobs::Finish
            {
                isRunning_ = true;
                while (!ends_)
                {
                    if (!progress(0.25))
                        return {};
                }
                return [this, name] { events_.push_back(name + " done"); };
            },
            Tell(name));
    }
    Jobs::Failed Tell(string const &name)
    {
        return [this, name](string const &reason) { events_.push_back(name + ": " + reason); };
    }

    std::atomic<bool> ends_ = false;
    std::atomic<bool> isRunning_ = false;
    std::atomic<int> numWakes_ = 0;
    std::vector<string> events_;
    Jobs jobs_{[this] { ++numWakes_; }};
};

TEST_F(ViewerJobs, RunInTheirOrderAndTellFailures)
{
    unsigned int const first = StartLong("first");
    jobs_.Start(
        "second", [](Jobs::Progress const &) -> Jobs::Finish { throw DataException("no luck"); }, Tell("second"));
    jobs_.Start(
        "third", [](Jobs::Progress const &) -> Jobs::Finish { return {}; }, Tell("third"));
    ASSERT_TRUE(quillmarsh::tests::WaitUntil([&] { return jobs_.List().at(0).part == 0.25; }));
    std::vector<Jobs::Job> const jobs = jobs_.List();
    ASSERT_EQ(jobs.size(), 3u);
    EXPECT_EQ(jobs[0].number, first);
    EXPECT_TRUE(jobs[0].isRunning);
    EXPECT_FALSE(jobs[1].isRunning);
    jobs_.Poll();
    EXPECT_TRUE(events_.empty());
    ends_ = true;
    ASSERT_TRUE(Await(2));
    EXPECT_EQ(events_, (std::vector<string>{"first done", "second: no luck"}));
    EXPECT_TRUE(quillmarsh::tests::WaitUntil([&] { return jobs_.List().empty(); }));
    EXPECT_GE(numWakes_, 3);
}

TEST_F(ViewerJobs, StopWhetherTheyRunOrWait)
{
    unsigned int const first = StartLong("first");
    unsigned int const second = StartLong("second");
    ASSERT_TRUE(quillmarsh::tests::WaitUntil([&] { return isRunning_.load(); }));
    EXPECT_TRUE(jobs_.Stop(second));
    EXPECT_TRUE(jobs_.Stop(first));
    EXPECT_FALSE(jobs_.Stop(first + 100));
    ASSERT_TRUE(Await(2));
    EXPECT_EQ(events_, (std::vector<string>{"second: stopped", "first: stopped"}));

    // What was finished in spite of the stop counts.
    ends_ = true;
    unsigned int const third = StartLong("third");
    jobs_.Stop(third);
    ASSERT_TRUE(Await(3));
    EXPECT_TRUE(events_[2] == "third done" || events_[2] == "third: stopped");
}

TEST_F(ViewerJobs, EndWithTheirOwner)
{
    {
        Jobs jobs([] {});
        jobs.Start(
            "long",
            [this](Jobs::Progress const &progress) -> Jobs::Finish
            {
                isRunning_ = true;
                while (progress(-1))
                {
                }
                return {};
            },
            Tell("long"));
        ASSERT_TRUE(quillmarsh::tests::WaitUntil([&] { return isRunning_.load(); }));
    }
    EXPECT_TRUE(events_.empty());
}

} // namespace
} // namespace viewer
