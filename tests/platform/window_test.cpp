// Windows and the events of the desktop, on any display, without simulated input.
#include <quillmarsh/basetools/timers.h>
#include <quillmarsh/platform/clipboard.h>
#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

#include "source/platform/messagequeue.h"
#include "source/platform/threads.h"
#include "tests/support/environment_variable.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace quillmarsh::platform
{
namespace
{

class FunctionListener : public DesktopListener
{
public:
    explicit FunctionListener(std::function<void(DesktopEvent const &)> call) : call_(std::move(call)) {}
    void OnDesktopEvent(DesktopEvent const &event) override { call_(event); }

private:
    std::function<void(DesktopEvent const &)> call_;
};

class Windows : public testing::Test
{
protected:
    AutoPtr<Window> Open(WindowDesc const &desc = {})
    {
        string reason;
        AutoPtr<Window> window = Window::Open(desc, reason);
        EXPECT_NE(nullptr, window) << reason;
        return window;
    }

private:
    // On other systems there is always a display.
    tests::EnvironmentVariable const driver_{"SDL_VIDEODRIVER", "dummy"};
};

TEST_F(Windows, ReachAllListenersWhenSomeLeaveOrCloseAWindowInTheirCall)
{
    string told;
    std::optional<DesktopSubscription> first;
    FunctionListener leaves(
        [&](DesktopEvent const &)
        {
            told += 'a';
            first.reset();
        });
    FunctionListener stays(
        [&](DesktopEvent const &event)
        {
            bool const isClosing = event.kind == eDesktopEvent::e_windowClosing;
            told += isClosing ? 'c' : event.kind == eDesktopEvent::e_windowOpened ? 'o' : ' ';
        });
    first.emplace(leaves);
    DesktopSubscription const second(stays);
    AutoPtr<Window> window = Open();
    EXPECT_EQ("ao", told);

    // A window closes while listeners handle another event.
    FunctionListener closes([&](DesktopEvent const &event)
                            { event.kind == eDesktopEvent::e_windowExposed ? window.reset() : void(); });
    DesktopSubscription const third(closes);
    window->Show();
    ASSERT_TRUE(tests::WaitUntil(
        [&]
        {
            if (window != nullptr)
                window->Invalidate();
            PumpDesktop();
            return window == nullptr;
        }));
    EXPECT_NE(string::npos, told.find('c'));
    EXPECT_EQ(0u, Window::GetNumOpen());
}

TEST_F(Windows, KeepTheirPlaceAmongTheOthersTheirTitleAndTheirSize)
{
    AutoPtr<Window> const main = Open({.title = "Gr\u00fc\u00dfe", .width = 300, .height = 200});
    AutoPtr<Window> const tool = Open({.role = eWindowRole::e_tool, .hasFrame = false});
    EXPECT_EQ(2u, Window::GetNumOpen());
    EXPECT_EQ(main.get(), Window::GetMain());
    EXPECT_EQ(tool.get(), Window::Find(tool->GetHandle()));
    EXPECT_EQ("Gr\u00fc\u00dfe", main->GetTitle());
    EXPECT_EQ(eWindowState::e_hidden, main->GetState());
    main->Show();
    EXPECT_EQ(eWindowState::e_normal, main->GetState());
    bool isTold = false;
    FunctionListener listener(
        [&](DesktopEvent const &event)
        { isTold |= event.kind == eDesktopEvent::e_windowGeometry && event.window == main.get(); });
    DesktopSubscription const subscription(listener);
    main->SetSize({320, 240});
    PumpDesktop();
    EXPECT_TRUE(isTold);
    EXPECT_EQ(std::pair(320, 240), std::pair(main->GetSize().width, main->GetSize().height));
    main->SetFullscreen();
    PumpDesktop();
    EXPECT_EQ(eWindowState::e_fullscreen, main->GetState());
    main->Restore();
    PumpDesktop();
    EXPECT_EQ(eWindowState::e_normal, main->GetState());
    EXPECT_EQ(std::pair(320, 240), std::pair(main->GetSize().width, main->GetSize().height));

    std::thread(
        []
        {
            string reason;
            EXPECT_EQ(nullptr, Window::Open({}, reason));
            EXPECT_NE("", reason);
        })
        .join();
}

TEST_F(Windows, WaitingEndsForMessagesOfOtherThreadsTimersAndEvents)
{
    ThreadMessage message;
    PeekThreadMessage(message, false);
    AutoPtr<Window> const window = Open();
    window->Show();
    PumpDesktop();

    // The difficult case is a message that arrives just when the wait begins.
    constexpr unsigned int numRounds = 200;
    std::atomic<unsigned int> round{0};
    std::thread poster(
        [&round, thread = GetCurrentThreadNumber()]
        {
            for (unsigned int i = 1; i <= numRounds; ++i)
            {
                while (round < i)
                    std::this_thread::yield();
                EXPECT_TRUE(PostMessageToThread(thread, {nullptr, 0x400 + i}));
            }
        });
    for (unsigned int i = 1; i <= numRounds; ++i)
    {
        round = i;
        while (!PeekThreadMessage(message, true) || message.message != 0x400 + i)
            WaitThreadMessage();
    }
    poster.join();

    bool isCalled = false;
    SetWindowTimer(window->GetHandle(), &isCalled, 10, [](void *object) { *static_cast<bool *>(object) = true; });
    while (!isCalled)
    {
        WaitThreadMessage();
        PumpDesktop();
    }
    KillWindowTimer(window->GetHandle(), &isCalled);

    bool isExposed = false;
    FunctionListener listener([&](DesktopEvent const &event)
                              { isExposed |= event.kind == eDesktopEvent::e_windowExposed; });
    DesktopSubscription const subscription(listener);
    window->Invalidate();
    while (!isExposed)
    {
        WaitThreadMessage();
        if (PeekThreadMessage(message, true))
            DispatchThreadMessage(message);
    }
}

TEST_F(Windows, TheClipboardTakesTextOfAnyLettersAndLines)
{
    EXPECT_FALSE(WriteClipboardText("nobody's"));
    AutoPtr<Window> const window = Open();
    string const text = "Gr\u00fc\u00dfe\n\U0001d11e\n";
    EXPECT_TRUE(WriteClipboardText(text));
    EXPECT_EQ(text, ReadClipboardText());
}

TEST_F(Windows, ExceptionsOfListenersReachTheCallerOfThePump)
{
    AutoPtr<Window> const window = Open();
    window->Show();
    PumpDesktop();
    FunctionListener listener(
        [](DesktopEvent const &event)
        {
            if (event.kind == eDesktopEvent::e_windowExposed)
                throw std::string("thrown");
        });
    DesktopSubscription const subscription(listener);
    window->Invalidate();
    EXPECT_THROW(PumpDesktop(), std::string);
}

} // namespace
} // namespace quillmarsh::platform
