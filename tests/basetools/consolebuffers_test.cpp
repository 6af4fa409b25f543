#include <quillmarsh/basetools/consolebuffers.h>

#include <gtest/gtest.h>

#include <random>
#include <thread>

namespace quillmarsh
{
namespace
{

class CountingObserver : public ConsoleOutputBuffer::Observer
{
public:
    void OnChanged(ConsoleOutputBuffer const &) override { ++count; }

    unsigned int count = 0;
};

/// Returns all lines with their types, as "0:text|1:more".
string GetLines(ConsoleOutputBuffer const &buffer)
{
    string lines;
    for (unsigned int i = 0; i < buffer.GetNumLines(); ++i)
    {
        unsigned int type = 0;
        string const &text = buffer.GetLine(i, type);
        lines += (i == 0 ? "" : "|") + std::to_string(type) + ":" + text;
    }
    return lines;
}

TEST(ConsoleOutputBuffer, BreaksTextIntoTypedLines)
{
    std::tuple<string, unsigned int, char const *, unsigned int, unsigned int> const pieces[] = {
        {"", 0, "0:", 0, 0},
        {"", 1, "1:", 0, 0},
        {"a\n", 0, "0:a|0:", 1, 1},
        {"b", 0, "0:a|0:b", 1, 1},
        {"cd", 2, "0:a|0:b|2:cd", 2, 1},
        {"", 3, "0:a|0:b|2:cd|3:", 2, 1},
        {"\tx\r", 3, "0:a|0:b|2:cd|3:    x\r", 6, 1},
        {"\n\ny", 3, "0:a|0:b|2:cd|3:    x\r|3:|3:y", 6, 1},
    };
    ConsoleOutputBuffer buffer;
    EXPECT_EQ(GetLines(buffer), "0:");
    CountingObserver observer;
    buffer.AddObserver(observer);
    for (auto const &[text, type, lines, maxColumns, numNotified] : pieces)
    {
        observer.count = 0;
        buffer.Append(text, type);
        EXPECT_EQ(GetLines(buffer), lines);
        EXPECT_EQ(buffer.GetMaxColumns(), maxColumns) << lines;
        EXPECT_EQ(observer.count, numNotified) << lines;
    }
    observer.count = 0;
    buffer.RemoveObserver(observer);
    buffer.Clear();
    EXPECT_EQ(observer.count, 0u);
    EXPECT_EQ(GetLines(buffer), "0:");
    EXPECT_EQ(buffer.GetMaxColumns(), 0u);
}

TEST(ConsoleOutputBuffer, KeepsToItsLimits)
{
    ConsoleOutputBuffer buffer(1);
    buffer.Append("long\nb", 0);
    EXPECT_EQ(GetLines(buffer), "0:b");
    EXPECT_EQ(buffer.GetMaxColumns(), 1u);

    buffer.SetLineLimit(3);
    buffer.Append("1\n2\n3\n4", 0);
    EXPECT_EQ(GetLines(buffer), "0:2|0:3|0:4");
    CountingObserver observer;
    buffer.AddObserver(observer);
    buffer.SetLineLimit(0);
    EXPECT_EQ(buffer.GetLineLimit(), 1u);
    EXPECT_EQ(GetLines(buffer), "0:4");
    EXPECT_EQ(buffer.GetNumDroppedLines(), 4u);
    buffer.Clear();
    EXPECT_EQ(buffer.GetNumDroppedLines(), 5u);
    buffer.SetTabWidth(0);
    EXPECT_EQ(buffer.GetTabWidth(), 1u);
    EXPECT_EQ(observer.count, 3u);
}

TEST(ConsoleOutputBuffer, KnowsItsWidestLineAfterLinesAreDropped)
{
    ConsoleOutputBuffer buffer(7);
    std::mt19937 random(5);
    for (int i = 0; i < 2000; ++i)
    {
        string text(random() % 30, 'x');
        text += string(random() % 3, '\n') + string(random() % 4, 'y');
        if (random() % 50 == 0)
            text += string(5000, 'z') + '\n';
        buffer.Append(text, random() % 2);
        std::size_t widest = 0;
        for (unsigned int line = 0; line < buffer.GetNumLines(); ++line)
            widest = std::max(widest, buffer.GetLine(line).size());
        ASSERT_EQ(buffer.GetMaxColumns(), widest);
        ASSERT_LE(buffer.GetNumLines(), 7u);
    }
}

TEST(ConsoleOutputStream, StoresFlushedTextWithItsType)
{
    ConsoleBuffers buffers;
    buffers.SetDefaultOutputType(5);
    {
        AutoPtr<ConsoleOutputStream> const out(buffers.CreateOutputStream());
        buffers.SetDefaultOutputType(1);
        *out << "echo" << e_echo << " on";
        EXPECT_EQ(GetLines(buffers.GetOutputBuffer()), "0:");
        *out << e_error << "bad\nworse" << std::endl << e_info << "rest";
    }
    EXPECT_EQ(GetLines(buffers.GetOutputBuffer()), "5:echo on|2:bad|2:worse|0:rest");
}

TEST(ConsoleOutputStream, WritersOnSeveralThreadsKeepTheirTextsTogether)
{
    constexpr unsigned int numWriters = 4;
    constexpr unsigned int numLines = 200;
    ConsoleBuffers buffers;
    buffers.SetMaxOutputLines(2 * numWriters * numLines + 1);
    ConsoleOutputBuffer &buffer = buffers.GetOutputBuffer();
    CountingObserver observer;
    buffer.AddObserver(observer);
    std::vector<std::thread> writers;
    for (unsigned int writer = 0; writer < numWriters; ++writer)
        writers.emplace_back(
            [&buffers, writer]
            {
                AutoPtr<ConsoleOutputStream> const out(buffers.CreateOutputStream());
                *out << SetOutputTypeEffector(writer);
                for (unsigned int line = 0; line < numLines; ++line)
                {
                    *out << writer << ":begin\n" << writer << ":end" << std::endl;
                    buffers.PushCommandInHistory("line");
                    buffers.SetMaxCommandsInHistory(20 + writer);
                }
            });
    for (unsigned int numRead = 0; numRead <= 2 * numWriters * numLines;)
    {
        ConsoleOutputBufferSentry const lock(buffer);
        EXPECT_LE(buffer.GetMaxColumns(), 7u);
        numRead = buffer.GetNumLines();
    }
    for (std::thread &writer : writers)
        writer.join();
    EXPECT_EQ(observer.count, 1 + numWriters * numLines);
    for (unsigned int i = 0; i + 1 < buffer.GetNumLines(); i += 2)
    {
        unsigned int type = 0;
        string const begin = buffer.GetLine(i, type);
        ASSERT_EQ(begin, std::to_string(type) + ":begin");
        ASSERT_EQ(buffer.GetLine(i + 1), std::to_string(type) + ":end");
    }
}

TEST(ConsoleBuffers, HistoryKeepsTheLatestCommands)
{
    ConsoleBuffers buffers;
    for (char const *const command : {"a", "", "b", "b", "c"})
        buffers.PushCommandInHistory(command);
    EXPECT_EQ(buffers.GetNumCommandsInHistory(), 4u);
    buffers.SetMaxCommandsInHistory(2);
    buffers.PushCommandInHistory("d");
    ASSERT_EQ(buffers.GetNumCommandsInHistory(), 2u);
    EXPECT_EQ(buffers.GetCommandFromHistory(0) + buffers.GetCommandFromHistory(1), "cd");

    buffers.SetMaxCommandsInHistory(0);
    buffers.PushCommandInHistory("e");
    EXPECT_EQ(buffers.GetNumCommandsInHistory(), 0u);
}

} // namespace
} // namespace quillmarsh
