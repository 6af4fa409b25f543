#include <quillmarsh/basetools/paralleljobs.h>

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

namespace quillmarsh
{
namespace
{

TEST(ParallelJobs, DoEachJobOnceAndThrowTheFirstFailure)
{
    EXPECT_GE(GetNumParallelThreads(), 1u);
    for (unsigned int const numThreads : {0u, 1u, 3u, 50u})
    {
        std::vector<std::atomic<int>> calls(20);
        RunInParallel(numThreads, calls.size(), [&](std::size_t i) { ++calls[i]; });
        auto const fail = [&](std::size_t i)
        {
            ++calls[i];
            if (i % 4 == 3)
                throw std::runtime_error(std::to_string(i));
        };
        try
        {
            RunInParallel(numThreads, calls.size(), fail);
            ADD_FAILURE();
        }
        catch (std::runtime_error const &thrown)
        {
            EXPECT_STREQ("3", thrown.what());
        }
        for (std::atomic<int> const &count : calls)
            EXPECT_EQ(2, count);
    }
    RunInParallel(4, 0, [](std::size_t) { ADD_FAILURE(); });
}

TEST(ParallelJobs, RunAtTheSameTime)
{
    // Each job waits until all have begun.
    std::atomic<int> numBegun = 0;
    RunInParallel(3, 3,
                  [&](std::size_t)
                  {
                      ++numBegun;
                      while (numBegun < 3)
                          std::this_thread::yield();
                  });
    EXPECT_EQ(3, numBegun);
}

} // namespace
} // namespace quillmarsh
