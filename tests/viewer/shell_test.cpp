// The window of the viewer as its users see it: files, keys, columns, state, and frames at rest.
#include "tests/support/host_process.h"
#include "tests/support/leaks.h"
#include "tests/support/scratch_directory.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/kernelexecutionparams.h>
#include <quillmarsh/host/session.h>

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh::tests
{
namespace
{

/// Returns a bitmap of one colour, 4 by 2 pixels.
string MakeBitmap(char value)
{
    constexpr unsigned char header[] = {'B', 'M', 78, 0, 0, 0, 0, 0, 0, 0,  54, 0, 0, 0, 40, 0,  0, 0, 4,
                                        0,   0,   0,  2, 0, 0, 0, 1, 0, 24, 0,  0, 0, 0, 0,  24, 0, 0, 0};
    string bitmap(std::begin(header), std::end(header));
    bitmap.resize(54, '\0');
    return bitmap + string(24, value);
}

/// A folder of three pictures, of which one is damaged, and a folder with one more.
class Viewer : public testing::Test
{
protected:
    Viewer()
    {
        std::filesystem::create_directory(directory_.GetPath() / "more");
        directory_.Write("a.bmp", MakeBitmap(1));
        directory_.Write("b.bmp", MakeBitmap(2).substr(0, 60));
        directory_.Write("c.bmp", MakeBitmap(3));
        directory_.Write("more/it's d.bmp", MakeBitmap(4));
        directory_.Write("notes.txt", "no picture");
    }

    string Quote(string const &name) const { return CommandLineParser().FormatWord(directory_ / name, true); }

    HostResult Run(string const &script, string const &state = "") const
    {
        NoLeakCheckInChildren const noLeakCheck;
        return RunHost({"--headless", "1200x800", "--frame-rate", "240", "--video", "video_null", "--plugin", "viewer",
                        "--set", "viewer.state=" + state, "--script", "-"},
                       script);
    }

    /// Runs a script whose lines must all succeed. Returns what the console shows.
    string RunWell(string const &script, string const &state = "") const
    {
        HostResult const result = Run(script, state);
        EXPECT_EQ(0, result.status) << result.out << result.err;
        EXPECT_EQ("", result.err);
        return result.out;
    }

    ScratchDirectory directory_;
};

TEST_F(Viewer, OpensFilesFromItsList)
{
    string const out = RunWell("folder " + Quote("") + R"(
robot double-click 'FileRow "c.bmp"'
robot wait 'FileList "c.bmp"'
robot key Home
robot key ArrowDown
robot key Enter
document
next
robot wait 'FileList "b.bmp"'
previous
robot click 'LeftColumn/TextField'
robot type 'C bm'
robot wait 'FileRow "a.bmp"' -gone
robot click 'FileRow "c.bmp"'
robot key Control+O
robot wait FileDialog
robot key Escape
filter
robot double-click 'FileRow "more"'
robot wait 'FileRow "it?s d.bmp"'
robot double-click 'FileRow "it?s d.bmp"'
robot key Alt+ArrowUp
robot wait 'FileList "more"'
document
)");
    EXPECT_TRUE(Contains(out, "open -instead " + directory_ / "c.bmp")) << "double click";
    EXPECT_TRUE(Contains(out, "open -instead " + directory_ / "a.bmp"))
        << "Enter: the folder stands ahead of the files";
    EXPECT_TRUE(Contains(out, "1: a.bmp (shown)\n")) << "it took the place of c.bmp";
    EXPECT_TRUE(Contains(out, "filter 'C bm'"));
    EXPECT_TRUE(Contains(out, "1: it's d.bmp (shown)\n"));
    EXPECT_FALSE(Contains(out, "2: ")) << "files of the list are shown one at a time";
    EXPECT_FALSE(Contains(out, "notes.txt"));
}

TEST_F(Viewer, TellsWhyAFileCannotBeOpened)
{
    HostResult const result = Run("open " + Quote("b.bmp") + R"(
robot wait 'Label "b.bmp cannot be opened"'
robot wait 'FileRow "b.bmp" // Label "picture,*"' -gone
open missing.png
robot wait 'Label "missing.png cannot be opened"'
close
robot wait 'Label "b.bmp cannot be opened"'
open )" + Quote("a.bmp") + R"(
robot wait 'Stage/Label' -gone
folder nowhere
files-width 2
tab nothing
stop 7
document
convert -format=L8
robot wait 'Tab "a.bmp \*"'
close
quit
close -discard
close
close
close
)");
    EXPECT_FALSE(Contains(result.err, "The robot")) << result.err;
    for (string const &reason :
         {directory_ / "b.bmp" + ": ", string("missing.png: "), string("nowhere"), string("within 0 and 1: 2"),
          string("no tab has the title nothing"), string("no job has the number 7"),
          string("a.bmp has changes: save them, or use 'close -discard'"),
          string("a.bmp has changes: save them, or use 'quit -discard'"), string("nothing is open")})
        EXPECT_TRUE(Contains(result.out, reason)) << reason << "\n" << result.out;
    EXPECT_TRUE(Contains(result.out, "2: a.bmp (shown)\n")) << "the others open";
}

TEST_F(Viewer, DoesEverythingByKeys)
{
    string const out = RunWell("open " + Quote("a.bmp") + R"(
robot wait 'FileList "a.bmp"'
robot key F1
robot wait HelpPanel
robot type 'column files'
robot key Tab
robot wait 'HelpPanel // ListBox'
robot key Escape
robot wait HelpPanel -gone
robot key F1
robot type 'hide the list of files'
robot key Tab
robot key End
robot key Enter
robot key F1
robot wait HelpPanel -gone
robot wait FileList -gone
robot key F3
robot wait Inspector -gone
robot key F2
robot wait FileList
robot key F9
robot wait Console
robot type 'tab work'
robot key Enter
robot wait Inspector
robot key F9
robot wait Console -gone
robot key PageDown
robot wait 'FileList "b.bmp"'
robot drag SplitterThumb -dx=50
files-width
tab
robot key Control+W
robot key Control+Q
wait 100
open unreachable.png
)");
    EXPECT_TRUE(Contains(out, "files\n")) << "a row of the list of keys runs its line";
    EXPECT_TRUE(Contains(out, "\nWork (shown)\n"));
    EXPECT_TRUE(Contains(out, "files-width\n0.26")) << out;
    EXPECT_TRUE(Contains(out, "\nquit\n"));
    EXPECT_FALSE(Contains(out, "unreachable"));
}

TEST_F(Viewer, KeepsItsState)
{
    string const state = directory_ / "new" + Preferred("/state.txt");
    RunWell("folder " + Quote("") + "\nfolder " + Quote("more") +
                "\nvar look.theme light\nvar look.scale 1.5\nfiles-width 0.4\ninspector off\nwait 2\n",
            state);
    string const out = RunWell("folder\nrecent-folder\nfiles-width\nvar look.theme\nvar look.scale\n"
                               "robot wait FileList\nrobot list Inspector\n",
                               state);
    EXPECT_TRUE(Contains(out, "folder\n" + directory_ / "more" + Preferred("/") + "\n")) << out;
    EXPECT_TRUE(Contains(out, directory_ / "" + "\n")) << "a folder from before";
    EXPECT_TRUE(Contains(out, "files-width\n0.4\n"));
    EXPECT_TRUE(Contains(out, "look.theme = light"));
    EXPECT_TRUE(Contains(out, "look.scale = 1.5"));
    EXPECT_TRUE(Contains(out, "0 components"));

    std::ofstream(state, std::ios::app) << "files-width 0.3\nnonsense 1\nfiles-width many\n";
    HostResult const damaged = Run("files-width\nsave-state " + Quote("copy.txt") + "\nload-state " +
                                       Quote("copy.txt") + "\nwait 2\nload-state absent.txt\n",
                                   state);
    EXPECT_TRUE(Contains(damaged.out, "state.txt(")) << damaged.out;
    EXPECT_TRUE(Contains(damaged.out, "not a number: many") || Contains(damaged.out, "'many'"));
    EXPECT_TRUE(Contains(damaged.out, "files-width\n0.3\n")) << "the other lines count";
    EXPECT_TRUE(Contains(damaged.out, "absent.txt: "));
    EXPECT_TRUE(Contains(ReadFile(state + ".damaged"), "nonsense 1"));
    EXPECT_FALSE(Contains(ReadFile(state), "nonsense"));
    EXPECT_TRUE(Contains(ReadFile(directory_ / "copy.txt"), "files-width 0.3\n"));

    std::ofstream(state, std::ios::binary) << string("\0\1\2", 3);
    EXPECT_TRUE(Contains(Run("files-width\n", state).out, "state.txt: is no text"));
}

/// Runs frames until one is or is not drawn; false after too many.
bool RunUntilDrawn(host::Session &session, bool isDrawn)
{
    for (int i = 0; i < 10000; ++i)
    {
        if (!session.RunFrame())
            return false;
        KernelExecutionParams params(true);
        if (params.AutoDrawGUI == isDrawn && params.AutoPresentBackBuffer == isDrawn)
            return true;
        session.Pause(1000);
    }
    return false;
}

TEST(ViewerAtRest, DrawsOnlyWhatIsAskedFor)
{
    string const plugins = Preferred(QUILLMARSH_TEST_PLUGINS);
    std::ostringstream out;
    host::Session session({.programName = "test", .out = &out});
    session.GetKernel().GetPlugins().Load(plugins + "standard_look" + s_szPluginExtension);
    session.GetKernel().GetRobot().Begin();
    ASSERT_TRUE(session.Open(plugins + "viewer" + s_szPluginExtension));
    ASSERT_TRUE(RunUntilDrawn(session, false)) << out.str();
    for (int i = 0; i < 100; ++i)
    {
        ASSERT_TRUE(session.RunFrame());
        ASSERT_FALSE(KernelExecutionParams(true).AutoDrawGUI) << "frame " << i << " at rest";
    }

    Kernel::Instance().QueueCommandLine("inspector");
    EXPECT_TRUE(RunUntilDrawn(session, true));
    ASSERT_TRUE(RunUntilDrawn(session, false));
    session.GetKernel().GetRobot().GetRobot().Key("F2");
    EXPECT_TRUE(RunUntilDrawn(session, true));
    ASSERT_TRUE(RunUntilDrawn(session, false));
    // A caret blinks.
    session.GetKernel().GetRobot().GetRobot().Key("F1");
    ASSERT_TRUE(RunUntilDrawn(session, true));
    ASSERT_TRUE(RunUntilDrawn(session, false));
    EXPECT_TRUE(RunUntilDrawn(session, true));
    session.Close();
    EXPECT_FALSE(session.HasFailed()) << out.str();
}

} // namespace
} // namespace quillmarsh::tests
