#include <quillmarsh/basetools/thread.h>

#include <quillmarsh/basetools/time.h>
#include <quillmarsh/basetools/windows/messageloop.h>

#include "tests/support/scripted_dialogs.h"
#include "tests/support/waiting.h"
#include "tests/support/wine.h"

#include <gtest/gtest.h>

#include <functional>

namespace quillmarsh
{
namespace
{

class WorkThread : public Thread
{
public:
    explicit WorkThread(std::function<unsigned int(WorkThread &)> work) : work_(std::move(work)) {}

    ~WorkThread() override
    {
        SignalExit();
        WaitExit();
    }

    using Thread::IsExitSignaled;
    using Thread::QueryContinue;
    using Thread::SignalReady;
    using Thread::WaitExitSignal;

private:
    unsigned int DoWork() override { return work_(*this); }

    std::function<unsigned int(WorkThread &)> work_;
};

unsigned int WaitForExit(WorkThread &thread)
{
    thread.SignalReady();
    thread.WaitExitSignal();
    return 7;
}

unsigned int LoopMessages(WorkThread &)
{
    win_utils::RunStandardMessageLoop();
    return 0;
}

TEST(Thread, RunsUntilToldAndCanRunAgain)
{
    std::atomic<bool> isSelfConsistent{true};
    std::atomic<bool> mayContinue{true};
    WorkThread thread(
        [&](WorkThread &self)
        {
            isSelfConsistent = self.IsRunning() && self.GetThreadID() != 0 && !self.IsExitSignaled();
            unsigned int const result = WaitForExit(self);
            mayContinue = self.QueryContinue();
            return result;
        });
    thread.WaitExit();
    for (int run = 0; run < 2; ++run)
    {
        // Leaves no signal for the next run.
        thread.SignalExit();
        thread.Run();
        thread.WaitReady();
        EXPECT_TRUE(thread.IsRunning());
        EXPECT_NE(thread.GetThreadHandle(), nullptr);
        thread.SignalExit();
        thread.WaitExit(false);
        thread.WaitExit(false);
        EXPECT_FALSE(thread.IsRunning());
        EXPECT_EQ(thread.GetThreadID(), 0u);
        EXPECT_EQ(thread.GetLastExitCode(), 7u);
        EXPECT_TRUE(isSelfConsistent);
        EXPECT_FALSE(mayContinue);
    }
}

TEST(Thread, EndsCleanlyAfterShortWork)
{
    for (int i = 0; i < 200; ++i)
    {
        WorkThread thread([](WorkThread &) { return 3u; });
        thread.Run();
        if (i % 2 == 0)
            EXPECT_TRUE(tests::WaitUntil([&] { return !thread.IsRunning(); }));
        else
            thread.WaitExit();
        EXPECT_FALSE(thread.IsRunning());
        EXPECT_EQ(thread.GetLastExitCode(), 3u);
    }
}

TEST(Thread, VerifiesItsUse)
{
    tests::ScriptedDialogs dialogs;
    WorkThread thread(&WaitForExit);
    EXPECT_FALSE(thread.Suspend() || thread.Resume());
    std::vector<string> const notRunning(2, "Thread is not running.");
    EXPECT_EQ(dialogs.TakeTexts(), notRunning);

    thread.Run();
    thread.WaitReady();
    unsigned int const threadID = thread.GetThreadID();
    thread.Run();
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Thread is already running."});
    EXPECT_EQ(thread.GetThreadID(), threadID);
}

TEST(Thread, VerifiesThatItIsDestroyedAfterItsEnd)
{
    struct Careless : Thread
    {
        explicit Careless(Event &event) : release(event) {}
        unsigned int DoWork() override
        {
            Event &event = release;
            SignalReady();
            event.WaitInfinite();
            return 0;
        }
        Event &release;
    };

    Event release;
    auto thread = std::make_unique<Careless>(release);
    thread->Run();
    thread->WaitReady();
    string const threadID = std::to_string(thread->GetThreadID());
    string shown;
    // The thread ends while the dialog about its destruction is open.
    tests::HandledDialogs const dialogs(
        [&, dying = thread.get()](string const &text)
        {
            shown = text;
            release.Set();
            EXPECT_TRUE(tests::WaitUntil([dying] { return !dying->IsRunning(); }));
        });
    thread.reset();
    string const wanted = "Destroying thread-object while thread is still executing: ThreadID = " + threadID;
    EXPECT_NE(shown.find("\n! " + wanted), string::npos) << shown;
}

TEST(Thread, StandsStillWhileSuspended)
{
    std::atomic<unsigned int> count{0};
    WorkThread thread(
        [&](WorkThread &self)
        {
            while (self.QueryContinue())
                ++count;
            return 0u;
        });
    thread.Run();
    for (int round = 0; round < 20; ++round)
    {
        ASSERT_TRUE(thread.Suspend());
        unsigned int const standing = count;
        ASSERT_TRUE(thread.Suspend());
        ASSERT_TRUE(thread.Resume());
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        ASSERT_EQ(count, standing);
        ASSERT_TRUE(thread.Resume());
        ASSERT_TRUE(tests::WaitUntil([&] { return count != standing; }));
    }
    ASSERT_TRUE(thread.Resume());
}

TEST(Thread, CanBeSuspendedInAWaitAndInItsQueue)
{
    WorkThread waiting(&WaitForExit);
    waiting.Run();
    waiting.WaitReady();
    EXPECT_TRUE(waiting.Suspend());
    waiting.SignalExit();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_TRUE(waiting.IsRunning() && waiting.Resume());
    waiting.WaitExit();

    WorkThread looping(&LoopMessages);
    looping.Run();
    EXPECT_TRUE(looping.WaitMessageQueueReady(0, 1));
    for (int i = 0; i < 200; ++i)
    {
        EXPECT_TRUE(looping.PostStandardNullMessage() && looping.Suspend());
        EXPECT_TRUE(looping.PostStandardNullMessage() && looping.Resume());
    }
    EXPECT_TRUE(looping.PostStandardQuitMessage());
}

TEST(Thread, StoresThePriorityThatTheSystemSets)
{
    WorkThread thread(&WaitForExit);
    thread.SetPriority(-1);
    thread.EnablePriorityBoost(false);
    EXPECT_EQ(thread.GetPriority(), -1);
    thread.Run();
    EXPECT_EQ(thread.GetPriority(), -1);
    EXPECT_EQ(thread.IsEnabledPriorityBoost(), tests::IsWine());
    thread.EnablePriorityBoost(true);
    EXPECT_TRUE(thread.IsEnabledPriorityBoost());
    thread.SetPriority(7);
    EXPECT_EQ(thread.GetPriority(), -1);
    for (int const lower : {-2, -15})
    {
        thread.SetPriority(lower);
        EXPECT_EQ(thread.GetPriority(), lower);
    }
}

TEST(Thread, PostsToAQueueThatTheThreadHasLookedAt)
{
    WorkThread deaf(&WaitForExit);
    EXPECT_FALSE(deaf.PostStandardNullMessage() || deaf.WaitMessageQueueReady(0, 1));
    deaf.Run();
    EXPECT_FALSE(deaf.PostStandardMessage(0x400, 1, 2));
#if !defined(_WIN32)
    EXPECT_FALSE(deaf.WaitMessageQueueReady(3, 0));
#endif

    double busySeconds = 0;
    WorkThread looping(
        [&busySeconds](WorkThread &self)
        {
            ThreadTimer const timer;
            LoopMessages(self);
            busySeconds = timer.GetElapsedSeconds();
            return 0u;
        });
    looping.Run();
    EXPECT_TRUE(looping.WaitMessageQueueReady(0, 1));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_TRUE(looping.PostStandardMessage(0x400, 1, 2) && looping.PostStandardQuitMessage());
    looping.WaitExit();
    EXPECT_FALSE(looping.PostStandardNullMessage());
    EXPECT_LT(busySeconds, 0.1);
}

} // namespace
} // namespace quillmarsh
