#include "tests/support/host_process.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/terminal_linux.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

/// The host, from its first prompt on.
struct HostTerminal : Terminal
{
    explicit HostTerminal(std::vector<string> arguments = {}, string const &prompt = "workbench> ")
        : Terminal(QUILLMARSH_TEST_HOST, (arguments.insert(arguments.end(), {"--video", "none"}), arguments))
    {
        EXPECT_TRUE(Expect(prompt)) << GetShown();
    }
    /// Sends the last keys, and returns the status of the program.
    int EndBy(string const &keys)
    {
        Send(keys);
        return Wait();
    }
};

constexpr char s_up[] = "\033[A";

TEST(Terminal, EditsCompletesAndRemembersLines)
{
    HostTerminal host;
    // An incomplete character does not take the next key with it.
    EXPECT_TRUE(host.Enter("greet\xe2\x82\r", {"Hello from the workbench!", "workbench> "}));
    EXPECT_TRUE(host.Enter("gree\t\r", {"Hello from the workbench!", "workbench> "}));
    EXPECT_TRUE(host.Enter("h\t", {"help         ", "Print help for any command", "history ", "workbench> h"}));
    EXPECT_TRUE(host.Enter("\bbench\r", {"Balls", "workbench> "}));
    EXPECT_TRUE(host.Enter(string(s_up) + s_up + "\r", {"Hello from the workbench!"}));
    EXPECT_EQ(0, host.EndBy("frobnicate\rexit\r")) << host.GetShown();
}

TEST(Terminal, CompletesEachWordOfALine)
{
    HostTerminal host({}, "Type 'help NAME'");
    ASSERT_TRUE(host.Expect("workbench> "));
    // Options and values; then a word in the middle, with quotes.
    EXPECT_TRUE(host.Enter("var bench.bal\t7\r", {"bench.balls = 7", "workbench> "}));
    EXPECT_TRUE(host.Enter("var data.overwrite \t", {"true", "false", "workbench> var data.overwrite "}));
    EXPECT_TRUE(host.Enter("t\t\r", {"data.overwrite = true", "workbench> "}));
    EXPECT_TRUE(host.Enter("hel 'gre\033[D\033[D\033[D\033[D\033[D\t\005\t\r", {"Print the greeting", "workbench> "}));
    EXPECT_TRUE(host.Enter("load " QUILLMARSH_TEST_SOURCES "examples/pic\t\r", {"ture.png", "workbench> "}));
    EXPECT_TRUE(host.Enter("greet\033[D\033[D\t\r", {"Hello from the workbench!", "workbench> "}));
    EXPECT_TRUE(host.Enter("xyz\t", {"\a"}));
    EXPECT_TRUE(host.Enter("\003", {"^C\r\nworkbench> "}));
    EXPECT_EQ(0, host.EndBy("\004")) << host.GetShown();
}

TEST(Terminal, KeepsTheHistoryAndSearchesIt)
{
    ScratchDirectory const directory;
    EnvironmentVariable const state("XDG_STATE_HOME", directory.GetPath().c_str());
    for (bool first : {true, false})
    {
        HostTerminal host;
        if (first)
            EXPECT_TRUE(host.Enter("greet -to=first\rbench\r", {"Hello from the workbench, first!", "Balls"}));
        else
            EXPECT_TRUE(host.Enter("\022to=\r", {"Hello from the workbench, first!", "workbench> "}))
                << host.GetShown();
        EXPECT_EQ(0, host.EndBy("exit\r")) << host.GetShown();
    }
    EXPECT_EQ("greet -to=first\nbench\nexit\ngreet -to=first\nexit\n",
              ReadFile(directory.GetPath() / "quillmarsh" / "history"));

    // A folder that cannot be written.
    directory.Write("file", "");
    EnvironmentVariable const broken("XDG_STATE_HOME", (directory.GetPath() / "file").c_str());
    HostTerminal host;
    EXPECT_TRUE(host.Enter("greet\r", {"the history is not kept: cannot write '", "workbench> "})) << host.GetShown();
    EXPECT_TRUE(host.Enter("greet\r", {"Hello from the workbench!", "workbench> "}));
    EXPECT_EQ(0, host.EndBy("exit\r")) << host.GetShown();
}

TEST(Terminal, ShowsThePromptAgainAfterAStopAndLeavesNoneBehind)
{
    HostTerminal host;
    EXPECT_TRUE(host.Enter("gre", {"gre"}));
    host.Signal(SIGSTOP);
    host.Signal(SIGCONT);
    EXPECT_TRUE(host.Expect("workbench> gre")) << host.GetShown();
    EXPECT_TRUE(host.Enter("et\r", {"Hello from the workbench!", "workbench> "}));
    host.Signal(SIGTERM);
    EXPECT_EQ(-SIGTERM, host.Wait());
    // The last thing that happens to the prompt is that it is erased.
    EXPECT_NE(string::npos, host.GetShown().find("\033[J", host.GetShown().rfind("workbench> "))) << host.GetShown();
}

TEST(Terminal, InterruptClearsTheLineAndTheSecondOneEnds)
{
    HostTerminal host;
    EXPECT_TRUE(host.Enter("greet", {"greet"}));
    EXPECT_TRUE(host.Enter("\003", {"^C\r\nworkbench> "}));
    EXPECT_TRUE(host.Enter("bench\r", {"Balls", "workbench> "}));
    EXPECT_TRUE(host.Enter("\003", {"Interrupt again to exit.", "workbench> "}));
    EXPECT_EQ(0, host.EndBy("\003")) << host.GetShown();
}

TEST(Terminal, EndOfInputAndTerminationEndInGoodOrder)
{
    for (bool endOfInput : {true, false})
    {
        ScratchFile const trace;
        EnvironmentVariable const environment("TRACER_FILE", trace.GetName().c_str());
        HostTerminal host({"--plugin", QUILLMARSH_TEST_PLUGINS "tracer.so"}, "quillmarsh> ");
        if (endOfInput)
            host.Send("\004");
        else
            host.Signal(SIGTERM);
        EXPECT_EQ(endOfInput ? 0 : -SIGTERM, host.Wait()) << host.GetShown();
        EXPECT_NE(string::npos, trace.Read().find("Cleanup well"));
    }
}

TEST(Terminal, InterruptEndsAWaitAndAScript)
{
    ScratchFile const log;
    HostTerminal host({"--log", log.GetName()});
    host.Send("wait 100000000\r");
    ASSERT_TRUE(WaitUntil([&] { return log.Read().find("wait 100000000") != string::npos; }));
    EXPECT_TRUE(host.Enter("\003", {"workbench> "})) << host.GetShown();
    EXPECT_EQ(0, host.EndBy("exit\r")) << host.GetShown();

    ScratchFile const script("greet\nwait 100000000\n");
    HostTerminal running({"--script", script.GetName()}, "");
    ASSERT_TRUE(running.Expect("Hello from the workbench!"));
    EXPECT_EQ(-SIGINT, running.EndBy("\003")) << running.GetShown();
}

TEST(Terminal, KeepsPromptAndTextOfOtherThreadsApart)
{
    for (char const *way : {"stream", "buffer"})
    {
        ScratchFile const trace;
        EnvironmentVariable const environment("TRACER_FILE", trace.GetName().c_str());
        HostTerminal host({"--plugin", QUILLMARSH_TEST_PLUGINS "tracer.so", "--frame-rate", "500"}, "quillmarsh> ");
        host.Send(string("talk ") + way + " 300\r");
        host.Send("some text of the user");
        for (unsigned int i = 0; i < 300; ++i)
            ASSERT_TRUE(host.Expect("<spoken line " + std::to_string(i) + ">\r\n")) << host.GetShown();
        EXPECT_TRUE(host.Expect("quillmarsh> some text of the user")) << host.GetShown();
        EXPECT_TRUE(host.Enter("\003", {"^C\r\nquillmarsh> "}));
        EXPECT_EQ(0, host.EndBy("\003")) << host.GetShown();
        // After each line of the other thread comes another line, the prompt, or the escape sequence that removes the
        // prompt. Until the editor has started again, the terminal itself echoes the keys.
        string const shown = host.GetShown();
        std::size_t const editor = shown.find("quillmarsh> ", shown.find("talk"));
        EXPECT_EQ(string::npos, shown.find("quillmarsh> <", editor));
        EXPECT_EQ(string::npos, shown.find("user<", editor));
    }
}

TEST(Terminal, ShowsDialogsWhileTheEditorIsOpen)
{
    HostTerminal host({"--developer-mode"});
    EXPECT_TRUE(host.Enter("crash -assert\r",
                           {"! Forced assert by crash-command.", "[A]bort, [R]etry, [I]gnore, or Enter for Abort? "}));
    EXPECT_TRUE(host.Enter("i", {"Ignore\r\n", "workbench> "}));
    EXPECT_TRUE(host.Enter("crash -verify\r", {"or Enter for Abort? "}));
    // The end of input stands for the default answer.
    EXPECT_EQ(-SIGTRAP, host.EndBy("\004")) << host.GetShown();
}

TEST(Terminal, NeverGetsEscapeSequencesOfOthers)
{
    ScratchFile const script("greet -to='\033[2J\007'\nfrobnicate\n");
    HostTerminal host({"--script", script.GetName(), "--set", "\033[31m"}, "");
    EXPECT_EQ(2, host.Wait());
    HostTerminal runs({"--script", script.GetName()}, "");
    EXPECT_TRUE(runs.Expect("Hello from the workbench, \\x1b[2J\\x07!\r\n")) << runs.GetShown();
    EXPECT_EQ(1, runs.Wait());
    for (string const &shown : {host.GetShown(), runs.GetShown()})
    {
        EXPECT_EQ(string::npos, shown.find("\033[2J")) << shown;
        EXPECT_EQ(string::npos, shown.find("\033[31m\'")) << shown;
    }
}

TEST(Terminal, ColoursByTypeUnlessToldNotTo)
{
    for (bool coloured : {true, false})
    {
        EnvironmentVariable const environment("NO_COLOR", coloured ? nullptr : "1");
        HostTerminal host;
        EXPECT_TRUE(host.Enter("'unclosed\r", {"Command-line error:", "workbench> "}));
        EXPECT_TRUE(host.Enter("frobnicate\r", {"Command not recognized.", "workbench> "}));
        EXPECT_EQ(0, host.EndBy("\004"));
        EXPECT_EQ(coloured, host.GetShown().find("\033[31mCommand-line error:") != string::npos) << host.GetShown();
        EXPECT_EQ(coloured, host.GetShown().find("\033[31mCommand not recognized.") != string::npos) << host.GetShown();

        ScratchFile const script("greet\nfrobnicate\n");
        HostTerminal runs({"--script", script.GetName()}, "");
        EXPECT_EQ(1, runs.Wait());
        EXPECT_EQ(coloured, runs.GetShown().find("\033[2mgreet\033[0m\r\nHello") != string::npos) << runs.GetShown();
        EXPECT_EQ(coloured, runs.GetShown().find("\033[31mquillmarsh-host: ") != string::npos) << runs.GetShown();
    }
}

} // namespace
} // namespace quillmarsh::tests
