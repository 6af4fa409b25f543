#include <quillmarsh/framework/videosubsystemwindow.h>

#include <gtest/gtest.h>

#include <utility>

namespace quillmarsh
{
namespace
{

using namespace win_utils;

class NotingObserver final : public VideoSubsystemWindowObserver
{
public:
    void OnDisplaySettingsChanged() override { notes += "d"; }
    void OnActivated(bool active) override { notes += active ? "A" : "a"; }
    void OnMoved() override { notes += "m"; }
    void OnResized(TopLevelWindow::eResizeAction action) override { notes += "r" + std::to_string(action); }
    void OnPaint() override { notes += "p"; }
    void OnMenuLoop(bool entered) override { notes += entered ? "U" : "u"; }
    void OnSizeMoveLoop(bool entered) override { notes += entered ? "S" : "s"; }

    string notes;
};

/// Plays a message to a window; the result, or -1 when the message is not handled.
long Play(VideoSubsystemWindow &window, unsigned int message, unsigned int wParam = 0)
{
    long result = 0;
    return window.MessageHandler(result, nullptr, message, wParam, 0) ? result : -1;
}

TEST(VideoSubsystemWindow, ObserverHearsWhatTheHandlersLetThrough)
{
    constexpr unsigned int messages[] = {e_message_displayChange, e_message_move,          e_message_size,
                                         e_message_paint,         e_message_enterMenuLoop, e_message_exitMenuLoop,
                                         e_message_enterSizeMove, e_message_exitSizeMove};
    VideoSubsystemWindow window(true);
    EXPECT_TRUE(window.IsFullscreen());
    NotingObserver observer;
    for (unsigned int message : messages)
        EXPECT_NE(-1, Play(window, message));
    window.SetObserver(&observer);
    Play(window, e_message_activate, 1);
    Play(window, e_message_activate, 0);
    for (unsigned int message : messages)
        Play(window, message);
    EXPECT_EQ("AadpUuSs", std::exchange(observer.notes, {}));
    window.ActivateMoveHandler();
    window.ActivateResizeHandler();
    for (unsigned int message : messages)
        Play(window, message);
    EXPECT_EQ("dmr3pUuSs", observer.notes);
}

TEST(VideoSubsystemWindow, StopsTheScreenSaverAndNoOtherCommand)
{
    VideoSubsystemWindow window(false);
    EXPECT_EQ(1, Play(window, e_message_sysCommand, e_command_screenSave));
    EXPECT_EQ(1, Play(window, e_message_sysCommand, e_command_monitorPower));
    // The lower four bits count: another value is another command.
    EXPECT_EQ(-1, Play(window, e_message_sysCommand, e_command_screenSave + 1));
    EXPECT_EQ(1, Play(window, e_message_enterMenuLoop));
    EXPECT_EQ(1, Play(window, e_message_exitSizeMove));
}

} // namespace
} // namespace quillmarsh
