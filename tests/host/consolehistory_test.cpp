#include "tests/support/scratch_directory.h"

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/host/consolehistory.h>

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

class ConsoleHistoryFile : public testing::Test
{
protected:
    /// Loads a new history; returns its lines, each with a "/".
    string Load()
    {
        history = std::make_unique<host::ConsoleHistory>(name, [this](string const &text) { messages += text + "/"; });
        history->Load(buffers);
        string lines;
        for (unsigned int i = 0; i < buffers.GetNumCommandsInHistory(); ++i)
            lines += buffers.GetCommandFromHistory(i) + "/";
        return lines;
    }

    ScratchDirectory directory;
    string name = Preferred(directory.GetPath() / "state" / "history");
    ConsoleBuffers buffers;
    AutoPtr<host::ConsoleHistory> history;
    string messages;
};

TEST_F(ConsoleHistoryFile, KeepsLinesForLaterSessions)
{
    EXPECT_EQ("", Load());
    for (char const *const line : {"var a 1", "var a 1", " secret", "", "J\xC3\xBCrgen", "tab\there"})
        history->Add(line);
    // Another session at the same time.
    host::ConsoleHistory other(name, [](string const &) {});
    other.Add("other");
    history->Add("last");
    EXPECT_EQ("var a 1/J\xC3\xBCrgen/tab\there/other/last/", Load());
    history->Add("last");
    EXPECT_EQ("var a 1\nJ\xC3\xBCrgen\ntab\there\nother\nlast\n", ReadFile(name));
    buffers.SetMaxCommandsInHistory(2);
    EXPECT_EQ("other/last/", Load());
    EXPECT_EQ("", messages);
#if !defined(_WIN32)
    EXPECT_EQ(std::filesystem::perms::owner_read | std::filesystem::perms::owner_write,
              std::filesystem::status(name).permissions());
    EXPECT_EQ(std::filesystem::perms::owner_all,
              std::filesystem::status(std::filesystem::path(name).parent_path()).permissions());
#endif
}

TEST_F(ConsoleHistoryFile, SurvivesDamage)
{
    std::filesystem::create_directory(directory.GetPath() / "state");
    string const damaged = string("good\r\n\0zero\n\xFF\xFE\n\033[2J\n", 19) + string(5000, 'x') + "\n\ncut off";
    std::ofstream(name, std::ios::binary) << damaged;
    EXPECT_EQ("good/cut off/", Load());
    history->Add("next");
    EXPECT_EQ(damaged + "\nnext\n", ReadFile(name));
    EXPECT_EQ("good/cut off/next/", Load());
}

TEST_F(ConsoleHistoryFile, ShortensAHugeFileToItsNewestLines)
{
    std::filesystem::create_directory(directory.GetPath() / "state");
    {
        std::ofstream file(name, std::ios::binary);
        for (unsigned int i = 0; i < 300000; ++i)
            file << "line " << i << '\n';
    }
    buffers.SetMaxCommandsInHistory(3);
    EXPECT_EQ("line 299997/line 299998/line 299999/", Load());
    EXPECT_EQ("line 299997\nline 299998\nline 299999\n", ReadFile(name));
    // One line without an end.
    std::ofstream(name, std::ios::binary) << string(2 << 20, 'x');
    EXPECT_EQ("", Load());
    history->Add("a");
    EXPECT_EQ("a/", Load());
}

TEST_F(ConsoleHistoryFile, ReportsOnceWhatCannotBeWritten)
{
    std::filesystem::create_directories(name);
    EXPECT_EQ("", Load());
    history->Add("a");
    history->Add("b");
    EXPECT_EQ("the history is not kept: cannot write '" + name + "': it is not a file/", messages);
    messages.clear();

    directory.Write("file", "");
    name = Preferred(directory.GetPath() / "file" / "history");
    EXPECT_EQ("", Load());
    history->Add("a");
    history->Add("b");
    EXPECT_TRUE(messages.starts_with("the history is not kept: cannot write '" + name + "': ")) << messages;
    EXPECT_EQ(messages.size() - 1, messages.find('/', messages.rfind(": "))) << messages;

    name.clear();
    messages.clear();
    EXPECT_EQ("", Load());
    history->Add("a");
    EXPECT_EQ("", messages);
}

} // namespace
} // namespace quillmarsh::tests
