// The viewer in the hands of a robot that does anything: keys, clicks, drags, console lines, good and damaged files, and
// files that change while they are shown: "quillmarsh-viewer-soak [--frames N] [--seed N]
// [--show 1]", which prints what the console does. Runs for fifty thousand frames, and begins anew when the robot has ended the program. The exit status says whether nothing has failed; it is
// 77 where the system cannot keep the robot away from other files.
#include "tests/soak/viewer_hand.h"
#include "tests/support/confinement_linux.h"
#include "tests/support/environment_variable.h"
#include "tests/support/scratch_directory.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/platform/dialogs.h>
#include <quillmarsh/platform/displaymodes.h>
#include <quillmarsh/platform/program.h>

#include <chrono>
#include <cstdlib>
#include <deque>
#include <iostream>

namespace quillmarsh::tests
{
namespace
{

constexpr int s_skipped = 77;

using Clock = std::chrono::steady_clock;

double GetSeconds(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// Counts dialogs, each of which is a fault: a failed assertion, or a failure that nobody caught.
class Dialogs : public platform::DialogPresenter, NoCopy
{
public:
    Dialogs() : previous_(platform::SetDialogPresenter(this)) {}
    ~Dialogs() override { platform::SetDialogPresenter(previous_); }

    platform::eDialogAnswer Present(platform::DialogRequest const &request) override
    {
        std::lock_guard const lock(mutex_);
        ++numDialogs_;
        std::cerr << request.title << '\n' << request.text << std::endl;
        return platform::eDialogAnswer::e_ignore;
    }
    unsigned int GetNumDialogs()
    {
        std::lock_guard const lock(mutex_);
        return numDialogs_;
    }

private:
    std::mutex mutex_;
    unsigned int numDialogs_ = 0;
    platform::DialogPresenter *previous_;
};

/// What all sessions have done together.
struct Totals
{
    unsigned int numFrames = 0;
    unsigned int numSessions = 0;
    unsigned int numReports = 0;
    double slowestFrame = 0;
    bool hasFailed = false;
    /// Prints what the console does.
    bool shows = false;
};

/// Runs the viewer until it ends, or until there were enough frames.
void RunSession(Dice &dice, Files &files, std::vector<string> const &plugins, unsigned int maxFrames, Totals &totals)
{
    ++totals.numSessions;
    host::Session session({.programName = "viewer-soak",
                           .out = totals.shows ? &std::cout : nullptr,
                           .report = [&totals](string const &message)
                           {
                               ++totals.numReports;
                               if (totals.shows)
                                   std::cerr << message << std::endl;
                           }});
    host::HostKernel &kernel = session.GetKernel();
    for (string const &plugin : plugins)
        kernel.GetPlugins().Load(plugin);
    kernel.GetVideo().GetSettings().config.DisplayMode = DisplayModeConfig(1280, 800, 32, 0);
    kernel.GetRobot().SetStays(true);
    kernel.GetRobot().Begin();
    bool const isOpen = session.Open();
    ViewerHand hand(dice, files, session);
    for (unsigned int frame = 0; isOpen && frame < maxFrames; ++frame)
    {
        hand.Act();
        Clock::time_point const begin = Clock::now();
        if (!session.RunFrame())
            break;
        totals.slowestFrame = std::max(totals.slowestFrame, GetSeconds(begin));
        ++totals.numFrames;
    }
    session.Close();
    totals.hasFailed = totals.hasFailed || !isOpen || session.HasFailed() || platform::Window::GetNumOpen() != 0;
}

int Run(string const &program, unsigned int numFrames, unsigned int seed, bool shows)
{
    ScratchDirectory const scratch;
    string const samples = file_system::FindDataFile("samples");
    string programFolder, base, extension, reason;
    file_system::SplitFileName(program, programFolder, base, extension);
    if (samples.empty() || !platform::UseHeadlessDesktop(1280, 800, reason))
    {
        std::cerr << "There is no data set, or no headless desktop. " << reason << std::endl;
        return EXIT_FAILURE;
    }
    Dice dice(seed);
    Files files(dice, samples, scratch.GetPath());
    std::vector<string> plugins;
    for (char const *const name : {"video_null", "viewer", "standard_look", "input_recording"})
        plugins.push_back(host::FindPluginFile(name, host::GetPluginDirectories(program, "")));
    std::deque<EnvironmentVariable> environment;
    for (char const *const name : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        environment.emplace_back(name, scratch.GetPath().c_str());
    std::filesystem::current_path(scratch.GetPath());
    // A sanitizer reads its suppressions at the end.
    if (!ConfineFiles(
            {"/usr", "/lib", "/lib64", "/etc", "/proc", "/sys", "/dev", "/var", programFolder, QUILLMARSH_TEST_SUPPORT},
            {scratch.GetPath().string(), "/dev"}))
    {
        std::cerr << "This kernel cannot keep the robot away from other files." << std::endl;
        return s_skipped;
    }
    Clock::time_point const begin = Clock::now();
    Dialogs dialogs;
    Totals totals;
    totals.shows = shows;
    while (totals.numFrames < numFrames && !totals.hasFailed)
        RunSession(dice, files, plugins, numFrames - totals.numFrames, totals);
    bool const isWell = !totals.hasFailed && dialogs.GetNumDialogs() == 0;
    std::cout << totals.numFrames << " frames in " << GetSeconds(begin) << " s, the slowest " << totals.slowestFrame
              << " s; " << totals.numSessions << " sessions, " << totals.numReports << " reports, "
              << (isWell ? "all well" : "with faults, seed " + std::to_string(seed)) << std::endl;
    return isWell ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace quillmarsh::tests

int main(int argc, char **argv)
{
    unsigned int numFrames = 50000, seed = 1;
    bool shows = false;
    for (int i = 1; i + 1 < argc; i += 2)
    {
        if (std::string(argv[i]) == "--frames")
            numFrames = static_cast<unsigned int>(std::atoi(argv[i + 1]));
        else if (std::string(argv[i]) == "--seed")
            seed = static_cast<unsigned int>(std::atoi(argv[i + 1]));
        else if (std::string(argv[i]) == "--show")
            shows = std::atoi(argv[i + 1]) != 0;
    }
    return quillmarsh::tests::Run(quillmarsh::platform::GetProgramFileName(argv[0]), numFrames, seed, shows);
}
