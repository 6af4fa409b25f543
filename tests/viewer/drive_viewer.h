// Runs the viewer on a hidden desktop, with lines of its console.
#ifndef QUILLMARSH_TESTS_VIEWER_DRIVE_VIEWER_H
#define QUILLMARSH_TESTS_VIEWER_DRIVE_VIEWER_H

#include "tests/support/host_process.h"
#include "tests/support/leaks.h"
#include "tests/support/scratch_directory.h"

namespace quillmarsh::tests
{

/// Runs the viewer with lines of its console, among them those of the robot, and returns what it prints. `directory` is
/// its place for settings; no other run's settings are used. Unless `fails`, each line must succeed.
inline string DriveViewer(ScratchDirectory const &directory, string const &script, bool fails = false)
{
    NoLeakCheckInChildren const noLeakCheck;
    EnvironmentVariable const config("XDG_CONFIG_HOME", (directory / "config").c_str());
    EnvironmentVariable const profile("APPDATA", (directory / "config").c_str());
    std::vector<string> arguments = {"--headless", "1280x800",        "--frame-rate", "120",
                                     "--video",    "video_null",      "--plugin",     "viewer",
                                     "--plugin",   "input_recording", "--script",     "-"};
    if (!fails)
        arguments.insert(arguments.end(), {"--strict", "--stop-on-error"});
    ProcessResult const result = RunHost(arguments, script);
    if (!fails)
    {
        EXPECT_EQ(0, result.status) << result.out << result.err;
    }
    return result.out + result.err;
}

/// True if a text has a part.
inline testing::AssertionResult HasPart(string const &text, string const &part)
{
    if (text.find(part) != string::npos)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << '"' << part << "\" is not in: " << text;
}

} // namespace quillmarsh::tests

#endif
