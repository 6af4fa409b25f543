#include <quillmarsh/basetools/syncprimitives.h>

#include "tests/support/failures.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

namespace quillmarsh
{
namespace
{

bool IsSignaled(Event &event)
{
    bool timedOut = false;
    EXPECT_TRUE(event.Wait(0, timedOut));
    return !timedOut;
}

/// Makes a name that no other run of the tests uses at the same time.
string MakeName(string const &stem)
{
    return stem + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count());
}

TEST(KernelName, LosesForbiddenCharacters)
{
    std::pair<string, string> const cases[] = {
        {"source\\a.cpp(7)", "source/a.cpp(7)"},
        {"Global\\a\\b", "Global\\a/b"},
        {"Local\\\\", "Local\\/"},
        {"Session\\1\\a", "Session\\1/a"},
        {"global\\a", "global/a"},
        {"aGlobal\\", "aGlobal/"},
        {string(300, '\\'), string(260, '/')},
        {"Global\\" + string(300, 'x'), "Global\\" + string(253, 'x')},
    };
    for (auto const &[given, wanted] : cases)
    {
        string name = given;
        ForceWinKernelName(name);
        EXPECT_EQ(name, wanted);
    }
}

TEST(CriticalSection, IsLockedUntilItsOwnerHasLeftAsOftenAsEntered)
{
    CriticalSection section;
    auto const canOtherEnter = [&section]
    {
        return std::async(std::launch::async,
                          [&]
                          {
                              bool const entered = section.TryEnter();
                              if (entered)
                                  section.Leave();
                              return entered;
                          })
            .get();
    };
    section.Enter();
    EXPECT_TRUE(section.TryEnter());
    EXPECT_FALSE(canOtherEnter());
    section.Leave();
    EXPECT_FALSE(canOtherEnter());
    section.Leave();
    EXPECT_TRUE(canOtherEnter());
}

TEST(Event, ResetsAutomaticallyOrManually)
{
    Event automatic(true, false);
    EXPECT_TRUE(IsSignaled(automatic));
    EXPECT_FALSE(IsSignaled(automatic));
    EXPECT_TRUE(automatic.Set() && automatic.Set() && automatic.WaitInfinite());
    EXPECT_FALSE(IsSignaled(automatic));

    Event manual(false, true);
    EXPECT_FALSE(IsSignaled(manual));
    manual.Set();
    EXPECT_TRUE(IsSignaled(manual) && IsSignaled(manual) && manual.Reset());
    EXPECT_FALSE(IsSignaled(manual));
}

TEST(Event, DoesNotTimeOutEarly)
{
    Event event;
    bool timedOut = false;
    auto const start = std::chrono::steady_clock::now();
    EXPECT_TRUE(event.Wait(30, timedOut) && timedOut);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(29));

    event.Set();
    EXPECT_TRUE(event.Wait(60000, timedOut));
    EXPECT_FALSE(timedOut);
}

TEST(Event, LetsOneThreadThroughForEachSignal)
{
    constexpr int numThreads = 4;
    Event event;
    std::atomic<int> numThrough{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < numThreads; ++i)
        threads.emplace_back(
            [&]
            {
                event.WaitInfinite();
                ++numThrough;
            });
    for (int i = 1; i <= numThreads; ++i)
    {
        event.Set();
        EXPECT_TRUE(tests::WaitUntil([&] { return numThrough >= i; }));
        EXPECT_EQ(numThrough, i);
    }
    for (std::thread &thread : threads)
        thread.join();
}

TEST(Event, SharesItsStateByNameUntilTheLastIsDestroyed)
{
    string const name = MakeName("quillmarsh\\event");
    {
        Event first(true, true, name);
        EXPECT_EQ(first.GetName().find('\\'), string::npos);
        {
            // Asks for other properties, and gets those of the first event.
            Event second(false, false, "Local\\" + name);
            EXPECT_TRUE(IsSignaled(second) && IsSignaled(second));
            second.Reset();
        }
        EXPECT_FALSE(IsSignaled(first));
        first.Set();
        Event other(false, true, "Global\\" + name);
        EXPECT_FALSE(IsSignaled(other));
    }
    Event again(false, true, name);
    EXPECT_FALSE(IsSignaled(again));
}

TEST(Event, ThrowsForANameThatCannotBeUsed)
{
    EXPECT_EQ(tests::MessageOf<SystemResourceException>([] { Event(false, false, "a\\b", false); },
                                                        "source/basetools/syncprimitives.cpp"),
              "CreateEvent() failed.");
}

TEST(SingleInstanceFlagSentry, HoldsANameOnce)
{
    string const name = MakeName("quillmarsh\\flag");
    {
        SingleInstanceFlagSentry const first(name);
        SingleInstanceFlagSentry const second(name);
        SingleInstanceFlagSentry const other(name + "x");
        EXPECT_TRUE(first.IsAcquired());
        EXPECT_FALSE(second.IsAcquired());
        EXPECT_TRUE(other.IsAcquired());
        EXPECT_THROW(Event(false, false, name), SystemResourceException);
    }
    {
        Event const event(false, false, name);
        EXPECT_FALSE(SingleInstanceFlagSentry(name).IsAcquired());
    }
    EXPECT_TRUE(SingleInstanceFlagSentry(name).IsAcquired());
    EXPECT_FALSE(SingleInstanceFlagSentry("").IsAcquired() || SingleInstanceFlagSentry(name, false).IsAcquired());
}

} // namespace
} // namespace quillmarsh
