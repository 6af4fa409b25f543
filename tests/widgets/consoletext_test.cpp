#include <quillmarsh/widgets/consoletext.h>

#include "tests/support/headless_desktop.h"
#include "tests/support/plain_look.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/platform/clipboard.h>
#include <quillmarsh/platform/window.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <limits>
#include <thread>

namespace quillmarsh::widgets
{
namespace
{

/// Text at (100, 100) with 20 columns and 5 rows, whose cells are 10 by 20 pixels, beginning at (104, 104).
struct TextDesk : tests::WidgetDesk
{
    TextDesk()
    {
        text->SetPosition(100, 100);
        Frame();
        text->RequestKeyboardFocus();
    }
    ~TextDesk() { text->SetTextSource(nullptr); }

    void Write(string const &written, unsigned int type = OutputStream::e_typeInfo)
    {
        ConsoleOutputBufferSentry const lock(buffer);
        buffer.Append(written, type);
    }
    /// Writes lines that are numbers.
    void WriteNumbers(unsigned int first, unsigned int last)
    {
        for (unsigned int i = first; i <= last; ++i)
            Write("\n" + MakeString(i));
    }
    /// Returns the rows of the next frame, with a bar behind each.
    string Show()
    {
        Frame();
        string shown;
        for (ConsoleText::Run const &run : text->GetRuns())
            shown += run.glyphs + '|';
        return shown;
    }
    /// Moves the mouse to a cell, and a part of it.
    void MoveToCell(float column, float row)
    {
        MoveTo(104 + static_cast<int>(column * 10), 104 + static_cast<int>(row * 20));
    }
    void Drag(float fromColumn, float fromRow, float toColumn, float toRow)
    {
        MoveToCell(fromColumn, fromRow);
        Press();
        MoveToCell(toColumn, toRow);
        Release();
        Frame(1);
    }

    ConsoleOutputBuffer buffer{12};
    ConsoleText *text = new ConsoleText(nullptr, &buffer, {220, 108});
};

TEST(ConsoleText, FollowsUntilTheUserScrollsBack)
{
    TextDesk desk;
    desk.Write("first");
    EXPECT_EQ(desk.Show(), "first|");
    desk.Write("failed", OutputStream::e_typeError);
    EXPECT_EQ(desk.Show(), "first|failed|");
    EXPECT_EQ(desk.text->GetRuns()[0].type, OutputStream::e_typeInfo);
    EXPECT_EQ(desk.text->GetRuns()[1].type, OutputStream::e_typeError);
    desk.WriteNumbers(1, 6);
    EXPECT_EQ(desk.Show(), "2|3|4|5|6|");
    desk.TypeKey(e_key_arrow_up);
    EXPECT_FALSE(desk.text->IsAtEnd());
    desk.WriteNumbers(7, 8);
    EXPECT_EQ(desk.Show(), "1|2|3|4|5|");
    desk.TypeKeys({e_key_page_up, e_key_page_down, e_key_page_down});
    EXPECT_TRUE(desk.text->IsAtEnd());
    desk.Write("9");
    EXPECT_EQ(desk.Show(), "4|5|6|7|89|");
    desk.MoveToCell(1, 1);
    desk.Turn(120);
    EXPECT_EQ(desk.Show(), "1|2|3|4|5|") << "the wheel scrolls three lines";
    desk.TypeKey(e_key_home);
    EXPECT_EQ(desk.Show(), "first|failed||1|2|");
    desk.text->ScrollToEnd();
    EXPECT_EQ(desk.Show(), "4|5|6|7|89|");
}

TEST(ConsoleText, StaysAtItsLinesWhileOthersAreDropped)
{
    TextDesk desk;
    desk.WriteNumbers(1, 11);
    EXPECT_EQ(desk.Show(), "7|8|9|10|11|");
    desk.TypeKey(e_key_arrow_up);
    desk.Drag(0, 1, 1, 2);
    EXPECT_EQ(desk.text->GetSelectedText(), "7\n8");
    desk.WriteNumbers(12, 16);
    EXPECT_EQ(desk.Show(), "6|7|8|9|10|") << "the same lines, with other indices";
    EXPECT_EQ(desk.text->GetSelectedText(), "7\n8");
    desk.WriteNumbers(17, 18);
    EXPECT_EQ(desk.Show(), "7|8|9|10|11|") << "the oldest that are left";
    desk.WriteNumbers(19, 19);
    EXPECT_EQ(desk.text->GetSelectedText(), "8") << "what is left of the selection";
    desk.WriteNumbers(20, 25);
    desk.Frame();
    EXPECT_FALSE(desk.text->HasSelection());
    EXPECT_FALSE(desk.text->IsAtEnd());
    desk.buffer.Clear();
    EXPECT_EQ(desk.Show(), "|");
    EXPECT_TRUE(desk.text->IsAtEnd());
    desk.WriteNumbers(1, 6);
    EXPECT_EQ(desk.Show(), "2|3|4|5|6|") << "it follows again";
    desk.TypeKey(e_key_home);
    desk.buffer.SetLineLimit(2);
    EXPECT_EQ(desk.Show(), "5|6|");
    desk.text->SetTextSource(nullptr);
    EXPECT_EQ(desk.Show(), "");
    desk.TypeKeys({e_key_home, e_key_end, e_key_arrow_right});
    desk.TypeWith({e_key_l_control}, e_key_a);
    EXPECT_EQ(desk.text->GetSelectedText(), "");
}

TEST(ConsoleText, SelectsByMouseAndKeys)
{
    TextDesk desk;
    desk.Write("one two\n\nthree");
    desk.Show();
    desk.Drag(4.4F, 0, 2.6F, 2.5F);
    EXPECT_EQ(desk.text->GetSelectedText(), "two\n\nthr");
    constexpr unsigned int columns[][2] = {{4, 8}, {0, 1}, {0, 3}, {0, 0}};
    for (unsigned int row = 0; row < 4; ++row)
    {
        unsigned int begin = 9;
        unsigned int end = 9;
        desk.text->GetSelectedColumns(row, begin, end);
        EXPECT_EQ(begin, columns[row][0]) << row;
        EXPECT_EQ(end, columns[row][1]) << row << ": a selected end of line takes a column";
    }
    desk.MoveToCell(1.9F, 0);
    desk.Click();
    desk.Click();
    EXPECT_EQ(desk.text->GetSelectedText(), "one");
    desk.Click();
    EXPECT_EQ(desk.text->GetSelectedText(), "one two");
    desk.TypeKey(e_key_escape);
    EXPECT_FALSE(desk.text->HasSelection());
    desk.TypeWith({e_key_l_control}, e_key_a);
    EXPECT_EQ(desk.text->GetSelectedText(), "one two\n\nthree");
    desk.Frame(1);
    desk.Drag(1, 0, 19, 4.5F);
    EXPECT_EQ(desk.text->GetSelectedText(), "ne two\n\nthree") << "below the text, to its end";

    desk.WriteNumbers(1, 8);
    desk.Show();
    desk.MoveToCell(0, 4.5F);
    desk.Press();
    desk.MoveTo(110, 50);
    for (unsigned int i = 0; i < 20; ++i)
        desk.Frame(0.05);
    desk.Release();
    EXPECT_EQ(desk.text->GetSelectedText(), "ne two\n\nthree\n1\n2\n3\n4\n5\n6\n7\n") << "scrolls beside the text";
}

TEST(ConsoleText, ScrollsLongLinesSideways)
{
    TextDesk desk;
    string const digits = "0123456789";
    string line;
    for (unsigned int i = 0; i < 100000; ++i)
        line += digits;
    desk.Write("short\n" + line);
    desk.Frame();
    EXPECT_EQ(desk.Show(), "short|01234567890123456789|");
    EXPECT_EQ(desk.text->GetNumRows(), 4U) << "one less for the scroll bar";
    desk.TypeKeys({e_key_arrow_right, e_key_arrow_right, e_key_arrow_right});
    EXPECT_EQ(desk.Show(), "rt|34567890123456789012|");
    desk.Drag(1, 1, 4, 1);
    EXPECT_EQ(desk.text->GetSelectedText(), "456");
    desk.TypeKey(e_key_arrow_left);
    unsigned int begin = 0;
    unsigned int end = 0;
    desk.text->GetSelectedColumns(1, begin, end);
    EXPECT_EQ(begin, 2U);
    EXPECT_EQ(end, 5U);
    desk.text->SelectAll();
    EXPECT_EQ(desk.text->GetSelectedText().size(), 6 + line.size());
    desk.buffer.Clear();
    desk.Frame();
    desk.Write("short");
    EXPECT_EQ(desk.Show(), "short|");
    EXPECT_EQ(desk.text->GetNumRows(), 5U);
}

struct OddLine
{
    char const *line;
    char const *glyphs;
    char const *copied;
};

TEST(ConsoleText, ShowsAndCopiesAnyBytes)
{
    constexpr OddLine lines[] = {
        {"caf\xC3\xA9", "caf\xE9", "caf\xC3\xA9"},
        {"\xE4\xB8\xAD\xE2\x82\xAC!", "\x7f\x7f!", "\xE4\xB8\xAD\xE2\x82\xAC!"},
        {"cut \xE2\x82", "cut \x7f\x7f", "cut \xEF\xBF\xBD\xEF\xBF\xBD"},
        {"\xFF\xC0\xAFx", "\x7f\x7f\x7fx", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDx"},
        {"\x1b[1m\x7f\xC2\x85", "\x7f[1m\x7f\x7f", "\xEF\xBF\xBD[1m\xEF\xBF\xBD\xEF\xBF\xBD"},
        {"10%\r20%\r", "10%20%", "10%20%"},
    };
    for (OddLine const &odd : lines)
    {
        TextDesk desk;
        desk.Write(odd.line);
        EXPECT_EQ(desk.Show(), string(odd.glyphs) + '|');
        desk.text->SelectAll();
        EXPECT_EQ(desk.text->GetSelectedText(), odd.copied);
    }
    TextDesk desk;
    desk.Write("wait\xE2\x80");
    desk.Show();
    desk.Write("\xA6 \xC3\xA9!");
    EXPECT_EQ(desk.Show(), "wait... \xE9!|") << "the rest of a character came later";
    desk.Drag(8, 0, 10, 0);
    EXPECT_EQ(desk.text->GetSelectedText(), "\xC3\xA9!") << "columns are not bytes";
    desk.Drag(3, 0, 6, 0);
    EXPECT_EQ(desk.text->GetSelectedText(), "t") << "a character of three columns is selected as a whole";
}

TEST(ConsoleText, NeedsNoRoom)
{
    TextDesk desk;
    desk.WriteNumbers(1, 20);
    for (vec2 const &size : {vec2(0, 0), vec2(1, 1), vec2(21, 9), vec2(1, 500)})
    {
        auto *const text = new ConsoleText(nullptr, &desk.buffer, size);
        text->SetPosition(300, 300);
        desk.Frame();
        desk.MoveTo(300, 300);
        desk.Click();
        text->RequestKeyboardFocus();
        desk.TypeKeys({e_key_page_up, e_key_arrow_left, e_key_home, e_key_end, e_key_arrow_up, e_key_arrow_right});
        desk.TypeWith({e_key_l_control}, e_key_a);
        EXPECT_EQ(text->GetRuns().size(), size.x > 20 ? 1U : 0U);
        EXPECT_EQ(text->GetSelectedText(), "9\n10\n11\n12\n13\n14\n15\n16\n17\n18\n19\n20");
        delete text;
    }
}

TEST(ConsoleText, CopiesNothingWhileNobodySeesIt)
{
    TextDesk desk;
    desk.text->SetVisible(false);
    desk.Write("hidden");
    EXPECT_EQ(desk.Show(), "|");
    desk.text->SetVisible(true);
    desk.Frame();
    EXPECT_EQ(desk.Show(), "hidden|");
}

/// Writers at full speed neither break what is shown nor keep frames from passing.
TEST(ConsoleText, ReadsWhileOtherThreadsWrite)
{
    TextDesk desk;
    desk.buffer.SetLineLimit(1000);
    std::atomic<bool> stops{false};
    auto const write = [&](char letter)
    {
        string const line = string(18, letter) + '\n';
        while (!stops)
            desk.Write(line, OutputStream::e_typeEcho);
    };
    std::thread first(write, 'a');
    std::thread second(write, 'b');
    for (unsigned int frame = 0; frame < 300; ++frame)
    {
        if (frame % 50 == 10)
            desk.TypeKey(frame % 100 == 10 ? e_key_page_up : e_key_end);
        if (frame % 40 == 0)
            desk.text->SelectAll();
        string const shown = desk.Show();
        for (ConsoleText::Run const &run : desk.text->GetRuns())
        {
            bool const isWhole = run.glyphs.empty() || run.glyphs == string(18, run.glyphs.front());
            ASSERT_TRUE(isWhole) << run.glyphs;
        }
        for (char const letter : desk.text->GetSelectedText())
            ASSERT_TRUE(letter == 'a' || letter == 'b' || letter == '\n');
    }
    delete desk.text;
    stops = true;
    first.join();
    second.join();
    desk.text = new ConsoleText(nullptr, nullptr);
}

struct ConsoleTextClipboard : tests::OnAHeadlessDesktop
{
};

TEST_F(ConsoleTextClipboard, TakesAHundredThousandLines)
{
    TextDesk desk;
    constexpr unsigned int numLines = 100000;
    desk.buffer.SetLineLimit(numLines);
    string const line = string(79, 'x') + '\n';
    string written;
    for (unsigned int i = 0; i < numLines - 1; ++i)
        written += line;
    desk.Write(written);
    desk.Frame();
    string reason;
    AutoPtr<platform::Window> const window = platform::Window::Open({}, reason);
    ASSERT_TRUE(window) << reason;
    auto const start = std::chrono::steady_clock::now();
    desk.TypeWith({e_key_l_control}, e_key_a);
    string const selected = desk.text->GetSelectedText();
    std::chrono::duration<double> const time = std::chrono::steady_clock::now() - start;
    RecordProperty("seconds", std::to_string(time.count()));
    EXPECT_TRUE(selected == written);
    EXPECT_LT(time.count(), 5) << "far more than any machine needs, unless the time is not linear";
    desk.TypeWith({e_key_l_control}, e_key_c);
    EXPECT_TRUE(platform::ReadClipboardText() == written);
}

} // namespace
} // namespace quillmarsh::widgets
