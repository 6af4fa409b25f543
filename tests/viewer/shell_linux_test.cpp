// The viewer in a window on a display: it sleeps while nothing happens, and wakes at once.
#include "tests/support/host_process.h"
#include "tests/support/leaks.h"
#include "tests/support/virtual_display.h"

#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/host/session.h>
#include <quillmarsh/platform/window.h>

#include <sys/resource.h>

#include <chrono>
#include <sstream>
#include <thread>

namespace quillmarsh::tests
{
namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

double GetProcessorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    auto const toSeconds = [](timeval const &time)
    { return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6; };
    return toSeconds(usage.ru_utime) + toSeconds(usage.ru_stime);
}

class ViewerOnADisplay : public OnADisplay
{
protected:
    /// Runs frames with their pauses for a time.
    void RunFor(milliseconds time)
    {
        for (auto const end = Clock::now() + time; Clock::now() < end && session_.RunFrame(); ++numFrames_)
            session_.Pause();
    }

    /// Waits through the pause of a frame at rest while `wake` is called. Returns the time of both together.
    milliseconds MeasurePause(std::function<void()> const &wake)
    {
        // The wait of a frame that has just begun is the longest.
        session_.RunFrame();
        auto const begin = Clock::now();
        std::thread other(
            [&wake]
            {
                std::this_thread::sleep_for(milliseconds(20));
                wake();
            });
        session_.Pause();
        auto const time = Clock::now() - begin;
        other.join();
        return std::chrono::duration_cast<milliseconds>(time);
    }

    /// The driver of the graphics card is unloaded at the end.
    NoLeakCheck noLeakCheck_;
    std::ostringstream out_;
    host::Session session_{{.programName = "test", .out = &out_}};
    unsigned int numFrames_ = 0;
};

TEST_F(ViewerOnADisplay, SleepsUntilSomethingHappens)
{
    string const plugins = Preferred(QUILLMARSH_TEST_PLUGINS);
    for (char const *const name : {"standard_look", "input_desktop", "video_opengl"})
        session_.GetKernel().GetPlugins().Load(plugins + name + s_szPluginExtension);
    session_.GetKernel().GetVideo().GetSettings().isEnabled = true;
    ASSERT_TRUE(session_.Open(plugins + "viewer" + s_szPluginExtension)) << out_.str();
    Kernel::Instance().GetVariableRegistry()->GetVariable("viewer.state")->SetValueFromString("");
    RunFor(milliseconds(2500));
    double const limit = Kernel::Instance().GetFrameRateLimit();
    EXPECT_GT(limit, 0) << "at rest";
    EXPECT_LE(limit, 10);

    string const numDrawn =
        Kernel::Instance().GetVariableRegistry()->GetVariable("viewer.frames_drawn")->GetValueString();
    double const before = GetProcessorSeconds();
    numFrames_ = 0;
    RunFor(milliseconds(2000));
    EXPECT_LT(GetProcessorSeconds() - before, 0.1);
    EXPECT_LE(numFrames_, 25U);
    EXPECT_EQ(numDrawn, Kernel::Instance().GetVariableRegistry()->GetVariable("viewer.frames_drawn")->GetValueString());

    milliseconds const whole(static_cast<int>(1000 / limit));
    EXPECT_GE(MeasurePause([] {}), whole - milliseconds(60)) << "nothing wakes it";
    EXPECT_LT(MeasurePause([] { Kernel::Instance().WakeUp(); }), whole - milliseconds(40));
    EXPECT_LT(MeasurePause([this] { EXPECT_TRUE(display_.Do("key F2")); }), whole - milliseconds(20));
    RunFor(milliseconds(300));
    EXPECT_EQ(0, Kernel::Instance().GetFrameRateLimit()) << "awake";
    EXPECT_NE(string::npos, out_.str().find("files\n"));
    session_.Close();
    EXPECT_FALSE(session_.HasFailed()) << out_.str();
}

} // namespace
} // namespace quillmarsh::tests
