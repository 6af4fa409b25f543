#include "tests/support/host_process.h"
#include "tests/support/scratch_directory.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/host/session.h>

#include <gtest/gtest.h>

#include <regex>

namespace quillmarsh::tests
{
namespace
{

/// The user's directories, for hosts that are started meanwhile.
struct UserDirectories
{
    UserDirectories()
    {
        for (char const *const name : {"config", "state"})
            std::filesystem::create_directory(scratch.GetPath() / name);
        std::filesystem::create_directory(scratch.GetPath() / "config" / "quillmarsh");
    }

    string WriteStartScript(string const &text) const
    {
        std::filesystem::path const name = scratch.GetPath() / "config" / "quillmarsh" / "start.txt";
        std::ofstream(name, std::ios::binary) << text;
        return Preferred(name);
    }

    ScratchDirectory scratch;
    string const config = scratch / "config";
    string const state = scratch / "state";
    EnvironmentVariable const configHome{"XDG_CONFIG_HOME", config.c_str()};
    EnvironmentVariable const stateHome{"XDG_STATE_HOME", state.c_str()};
    EnvironmentVariable const appData{"APPDATA", config.c_str()};
    EnvironmentVariable const localAppData{"LOCALAPPDATA", state.c_str()};
};

TEST(Console, GuideShowsWhatTheHostPrints)
{
    std::istringstream page(ReadFile(QUILLMARSH_TEST_SOURCES "docs/console.md"));
    string script;
    string expected;
    bool isInside = false;
    unsigned int count = 0;
    for (string line; std::getline(page, line);)
    {
        if (line == "```console")
            isInside = true;
        else if (isInside && line == "```")
        {
            HostResult const result = RunHost({"--no-start-script"}, script);
            EXPECT_EQ(expected, result.out) << result.err;
            EXPECT_LE(result.status, 1);
            isInside = false;
            script = expected = "";
            ++count;
        }
        else if (isInside)
        {
            bool const isTyped = line.starts_with("> ");
            string const text = isTyped ? line.substr(2) : line;
            script += isTyped ? text + "\n" : "";
            // Remarks are not echoed.
            expected += text.starts_with("#") ? "" : text + "\n";
        }
    }
    EXPECT_EQ(9u, count);
}

TEST(Console, StartScriptRunsFirstAndItsFailuresAreOnlyReported)
{
    UserDirectories const user;
    string const name = user.WriteStartScript("# mine\nalias -hello=greet\nfrobnicate\nvar bench.balls 7\nwait 2\n");
    HostResult result = RunHost({"--stop-on-error"}, "hello\nvar bench.balls\nhistory\n");
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("Registered alias: hello\nCommand not recognized.\nType 'list-commands' to list valid commands.\n"
              "bench.balls = 7\nhello\nHello from the workbench!\nvar bench.balls\nbench.balls = 7\n"
              "history\nCommand-history:\n0) hello\n1) var bench.balls\n",
              result.out);
    EXPECT_EQ("quillmarsh-host: " + name + "(3): the line failed\n", result.err);

    result = RunHost({"--no-start-script"}, "hello\n");
    EXPECT_EQ(1, result.status);

    std::filesystem::remove(name);
    std::filesystem::create_directory(name);
    result = RunHost({}, "greet\n");
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("greet\nHello from the workbench!\n", result.out);
    EXPECT_TRUE(result.err.starts_with("quillmarsh-host: cannot read the script '" + name + "': ")) << result.err;
}

TEST(Console, SavedVariablesComeBack)
{
    UserDirectories const user;
    string const script = user.scratch / "saved it's.txt";
    string const quoted = std::regex_replace(script, std::regex("['$]"), "$$$&");
    string const save = "save-variables '" + quoted + "'";
    HostResult result = RunHost({}, "var bench.balls 9\nvar bench.bounce 0.1234567\nvar bench.greeting 'it$'s  -o'\n" +
                                        save + "\n" + save + "\n");
    EXPECT_EQ(1, result.status);
    EXPECT_NE(string::npos, result.out.find("3 variables saved to " + script + "\n")) << result.out;
    EXPECT_NE(string::npos, result.out.find(": the file already exists, replace it with -overwrite\n")) << result.out;
    EXPECT_EQ("# Variables that differ from the start.\nvar bench.balls 9\nvar bench.bounce 0.1234567\n"
              "var bench.greeting 'it$'s  -o'\n",
              ReadFile(script));

    user.WriteStartScript(ReadFile(script));
    result = RunHost({}, "var bench.balls 100\n" + save + " -overwrite\n");
    EXPECT_EQ(0, result.status) << result.out;
    EXPECT_NE(string::npos, ReadFile(script).find("var bench.bounce 0.1234567\n"));
    result = RunHost({}, "save-variables " + Preferred(user.scratch.GetPath() / "none" / "file") + "\n");
    EXPECT_EQ(1, result.status);
    EXPECT_NE(string::npos, result.out.find(s_szNotFoundReason)) << result.out;
}

TEST(Console, FindsWordsAndListsPlugins)
{
    HostResult result = RunHost({}, "alias -salute=greet\nfind GREET\nfind\nfind xyzzy\n");
    EXPECT_EQ(1, result.status);
    EXPECT_NE(string::npos, result.out.find("find GREET\nCommands:\n  greet  Print the greeting\nVariables:\n"
                                            "  bench.greeting = Hello from the workbench  "))
        << result.out;
    EXPECT_NE(string::npos, result.out.find("Aliases:\n  salute  'greet'\nfind\nThe word to search for is missing.\n"
                                            "find xyzzy\nNothing has 'xyzzy' in its name or description.\n"))
        << result.out;

    result =
        RunHost({"--plugin", TestPlugin("testdriver")}, "list-plugins\nlist-plugins workbench\nlist-plugins none\n");
    EXPECT_EQ(1, result.status);
    EXPECT_TRUE(std::regex_search(result.out, std::regex("testdriver +device driver +[0-9.]+ +[^ ]*testdriver")))
        << result.out;
    EXPECT_TRUE(std::regex_search(result.out, std::regex("workbench +application +[0-9.]+ +[^ ]*workbench")))
        << result.out;
    EXPECT_NE(string::npos, result.out.find("list-plugins: 'none' is not the name of a plug-in")) << result.out;
}

TEST(Console, TellsWhyALibraryWasRefused)
{
    host::Session session({.report = [](string const &) {}});
    EXPECT_THROW(session.GetKernel().GetPlugins().Load(TestPlugin("empty")), KernelException);
    std::ostringstream out;
    EXPECT_TRUE(session.GetKernel().GetCommandInterpreter()->InterpretCommandLine("list-plugins", out));
    EXPECT_EQ("Refused: The plug-in '" + TestPlugin("empty") +
                  "' cannot be used: it offers no plug-in.\n"
                  "There are no plug-ins.\n",
              out.str());
}

TEST(Console, WatchesDevices)
{
    HostResult const result =
        RunHost({}, "play " QUILLMARSH_TEST_SOURCES "examples/recordings/mouse_and_keys.txt\nwait 2\nhid-watch\n"
                    "hid-watch 77\nhid-watch -seconds=0.3\ngreet\n");
    EXPECT_EQ(1, result.status);
    EXPECT_TRUE(std::regex_search(result.out, std::regex("hid-watch\n[0-9]+ .*, Keyboard: .*\n[0-9]+ .*, Mouse: at ")))
        << result.out;
    EXPECT_NE(string::npos, result.out.find("'77' is not the creation-id of a device")) << result.out;
    // The next line waits for the end of the watch.
    EXPECT_TRUE(std::regex_search(result.out, std::regex("0[.]0 s  [0-9]+ .*Mouse: at [^]*greet\nHello from")))
        << result.out;
}

} // namespace
} // namespace quillmarsh::tests
