#include <quillmarsh/basetools/timers.h>

#include "source/platform/messagequeue.h"
#include "source/platform/threads.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>

namespace quillmarsh
{
namespace
{

class FunctionHandler : public AlarmHandler
{
public:
    explicit FunctionHandler(std::function<bool()> call, bool takesLong = false)
        : call_(std::move(call)),
          takesLong_(takesLong)
    {
    }
    bool OnAlarm() override { return call_(); }
    bool QueryHintLongExecution() override { return takesLong_; }

private:
    std::function<bool()> call_;
    bool takesLong_;
};

/// Counts its calls, and ends a periodic timer at one of them.
class CountingHandler : public FunctionHandler
{
public:
    explicit CountingHandler(int stopAt = 0) : FunctionHandler([this, stopAt] { return ++count_ == stopAt; }) {}
    int GetCount() const { return count_; }
    bool HasReached(int count) const { return count_ >= count; }

private:
    std::atomic<int> count_{0};
};

TEST(AlarmTimer, FiresOnceAfterItsDelay)
{
    CountingHandler handler;
    AlarmTimer timer;
    EXPECT_FALSE(timer.IsRunning());
    auto const start = std::chrono::steady_clock::now();
    EXPECT_TRUE(timer.FireOnce(handler, 20));
    EXPECT_TRUE(tests::WaitUntil([&] { return handler.HasReached(1); }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(19));
    EXPECT_TRUE(tests::WaitUntil([&] { return !timer.IsRunning(); }));

    EXPECT_TRUE(timer.FireOnce(handler, 0));
    EXPECT_TRUE(tests::WaitUntil([&] { return !timer.IsRunning(); }));
    EXPECT_EQ(handler.GetCount(), 2);
}

TEST(AlarmTimer, RunsUntilStoppedOrItsHandlerEndsIt)
{
    CountingHandler endless, other;
    AlarmTimer timer;
    EXPECT_TRUE(timer.StartPeriodic(endless, 0, 0));
    EXPECT_FALSE(timer.StartPeriodic(other, 0, 1) || timer.FireOnce(other, 0));
    EXPECT_TRUE(tests::WaitUntil([&] { return endless.HasReached(5); }));
    EXPECT_TRUE(timer.IsRunning());
    timer.StopPeriodic();
    int const count = endless.GetCount();
    EXPECT_FALSE(timer.IsRunning());

    CountingHandler limited(3);
    EXPECT_TRUE(timer.StartPeriodic(limited, 1, 1));
    EXPECT_TRUE(tests::WaitUntil([&] { return !timer.IsRunning(); }));
    EXPECT_EQ(limited.GetCount(), 3);
    EXPECT_EQ(endless.GetCount(), count);
    EXPECT_EQ(other.GetCount(), 0);
}

TEST(AlarmTimer, StopWaitsForTheCallInProgress)
{
    std::atomic<bool> begun{false}, ended{false};
    FunctionHandler handler(
        [&]
        {
            begun = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            ended = true;
            return true;
        });
    AlarmTimer timer;
    EXPECT_TRUE(timer.FireOnce(handler, 0) && tests::WaitUntil([&] { return begun.load(); }));
    timer.StopPeriodic();
    EXPECT_TRUE(ended);
}

TEST(AlarmTimer, HandlerMayStopWhileStopIsCalled)
{
    for (int i = 0; i < 300; ++i)
    {
        CountingHandler handler(1);
        AlarmTimer timer;
        ASSERT_TRUE(i % 2 == 0 ? timer.FireOnce(handler, 0) : timer.StartPeriodic(handler, 0, 1));
        if (i % 3 == 0)
            std::this_thread::yield();
        timer.StopPeriodic();
        ASSERT_FALSE(timer.IsRunning());
    }
}

TEST(AlarmTimer, LongCallsDoNotWaitForEachOther)
{
    constexpr int numHandlers = 12;
    std::atomic<int> numPresent{0};
    auto const areAllPresent = [&] { return numPresent == numHandlers; };
    FunctionHandler handler(
        [&]
        {
            ++numPresent;
            return tests::WaitUntil(areAllPresent);
        },
        true);
    AlarmTimer timers[numHandlers];
    for (AlarmTimer &timer : timers)
        ASSERT_TRUE(timer.FireOnce(handler, 0));
    EXPECT_TRUE(tests::WaitUntil(areAllPresent));
}

class WindowHandler : public WindowAlarmHandler
{
public:
    explicit WindowHandler(std::function<void(WindowAlarmTimer &)> call) : call_(std::move(call)) {}
    void OnWindowAlarm(WindowAlarmTimer &timer) override { call_(timer); }

private:
    std::function<void(WindowAlarmTimer &)> call_;
};

TEST(WindowAlarmTimer, NeedsAWindow)
{
    WindowHandler handler([](WindowAlarmTimer &) {});
    WindowAlarmTimer timer;
    EXPECT_FALSE(timer.StartPeriodic(handler, 10));
}

#if !defined(_WIN32)

// Any address can stand for a window.
int s_windowPlace = 0;
HWND const s_window = reinterpret_cast<HWND>(&s_windowPlace);

TEST(WindowAlarmTimer, MissedPeriodsBecomeOneMessageAfterAllOthers)
{
    int count = 0;
    // Stops in its second call.
    WindowHandler handler([&](WindowAlarmTimer &caller) { ++count == 2 ? caller.StopPeriodic() : void(); });
    WindowAlarmTimer timer;
    timer.SetHWND(s_window);
    ASSERT_TRUE(timer.StartPeriodic(handler, 60000));
    ASSERT_TRUE(timer.StartPeriodic(handler, 100));
    std::this_thread::sleep_for(std::chrono::milliseconds(250));
    ASSERT_TRUE(platform::PostMessageToThread(platform::GetCurrentThreadNumber(), {nullptr, 0x400, 1, 2}));
    platform::ThreadMessage message;
    ASSERT_TRUE(platform::PeekThreadMessage(message, true));
    EXPECT_EQ(message.message, 0x400u);
    ASSERT_TRUE(platform::PeekThreadMessage(message, false));
    for (int call = 1; call <= 2; ++call)
    {
        platform::WaitThreadMessage();
        ASSERT_TRUE(platform::PeekThreadMessage(message, true));
        EXPECT_EQ(message.message, platform::s_messageTimer);
        EXPECT_EQ(message.window, s_window);
        platform::DispatchThreadMessage(message);
        EXPECT_EQ(count, call);
        EXPECT_FALSE(platform::PeekThreadMessage(message, true));
    }
    // The timer is stopped after its message was taken.
    ASSERT_TRUE(timer.StartPeriodic(handler, 1));
    platform::WaitThreadMessage();
    ASSERT_TRUE(platform::PeekThreadMessage(message, true));
    timer.SetHWND(nullptr);
    timer.StopPeriodic();
    platform::DispatchThreadMessage(message);
    EXPECT_FALSE(platform::PeekThreadMessage(message, true));
    EXPECT_EQ(count, 2);
}

#endif

} // namespace
} // namespace quillmarsh
