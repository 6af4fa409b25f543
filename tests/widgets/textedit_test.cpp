#include <quillmarsh/widgets/textedit.h>

#include <gtest/gtest.h>

#include <random>

namespace quillmarsh::widgets
{
namespace
{

TEST(TextEdit, KeepsOneLineWithinItsLength)
{
    TextEdit edit;
    edit.SetMaxLength(8);
    edit.SetText("a\tb\r\nc\x1b\x01 0123");
    EXPECT_EQ(edit.GetText(), "a b c 01");
    EXPECT_FALSE(edit.CanUndo());
    EXPECT_FALSE(edit.Insert("x")) << "full";
    edit.SetSelection(0, 3);
    EXPECT_TRUE(edit.Insert("123456"));
    EXPECT_EQ(edit.GetText(), "123 c 01") << "as much as there is room for";
    edit.SetSelection(1, 4);
    EXPECT_FALSE(edit.Insert("\r\x02")) << "nothing of it can be inserted";
    EXPECT_EQ(edit.GetSelectedText(), "23 ") << "and so nothing is lost";
    edit.SetMaxLength(2);
    EXPECT_EQ(edit.GetText().size(), 8U);
    EXPECT_TRUE(edit.Undo()) << "also what is longer than the present limit";
}

struct Movement
{
    char const *text;
    unsigned int from;
    TextEdit::eMove move;
    unsigned int to;
};

TEST(TextEdit, MovesByWords)
{
    constexpr Movement movements[] = {
        {"one two", 7, TextEdit::e_move_word_left, 4},
        {"one two  ", 9, TextEdit::e_move_word_left, 4},
        {"  one", 2, TextEdit::e_move_word_left, 0},
        {"", 0, TextEdit::e_move_word_left, 0},
        {"a/b.txt", 7, TextEdit::e_move_word_left, 4},
        {"one  two", 1, TextEdit::e_move_word_right, 5},
        {"one", 1, TextEdit::e_move_word_right, 3},
        {"  x", 0, TextEdit::e_move_word_right, 2},
        {"x=-1", 1, TextEdit::e_move_word_right, 3},
        {"", 0, TextEdit::e_move_word_right, 0},
        {"\xfc"
         "ber 1",
         0, TextEdit::e_move_word_right, 5},
        {"snake_case x", 0, TextEdit::e_move_word_right, 11},
    };
    for (Movement const &movement : movements)
    {
        TextEdit edit;
        edit.SetText(movement.text);
        edit.SetCaret(movement.from, false);
        edit.Move(movement.move, false);
        EXPECT_EQ(edit.GetCaret(), movement.to) << movement.text << " from " << movement.from;
    }
}

TEST(TextEdit, SelectsAndLeavesSelections)
{
    TextEdit edit;
    edit.SetText("one  two!");
    edit.SelectWord(6);
    EXPECT_EQ(edit.GetSelectedText(), "two");
    edit.SelectWord(3);
    EXPECT_EQ(edit.GetSelectedText(), "  ");
    edit.SelectWord(1000);
    EXPECT_EQ(edit.GetSelectedText(), "!");
    edit.SetSelection(7, 2);
    edit.Move(TextEdit::e_move_right, false);
    EXPECT_EQ(edit.GetCaret(), 7U) << "the end of the selection on that side";
    edit.SetSelection(7, 2);
    edit.Move(TextEdit::e_move_left, true);
    EXPECT_EQ(edit.GetAnchor(), 7U);
    EXPECT_EQ(edit.GetCaret(), 1U);
    EXPECT_TRUE(edit.Delete(TextEdit::e_move_word_left)) << "the selection, whatever the move";
    EXPECT_EQ(edit.GetText(), "oo!");
}

TEST(TextEdit, UndoesTypedLettersTogether)
{
    TextEdit edit;
    for (char const letter : string("abc"))
        edit.Insert(string(1, letter));
    edit.Move(TextEdit::e_move_left, false);
    edit.Insert("x");
    edit.Insert("y");
    EXPECT_EQ(edit.GetText(), "abxyc");
    EXPECT_TRUE(edit.Undo());
    EXPECT_EQ(edit.GetText(), "abc");
    EXPECT_EQ(edit.GetCaret(), 2U);
    edit.Insert("z");
    EXPECT_FALSE(edit.CanRedo()) << "another change takes its place";
    EXPECT_TRUE(edit.Undo() && edit.Undo());
    EXPECT_EQ(edit.GetText(), "");
    EXPECT_FALSE(edit.Undo());
}

/// Undoing everything and doing it again are inverse, whatever was done.
TEST(TextEdit, UndoIsTheInverseOfChanges)
{
    std::mt19937 engine(7);
    auto const random = [&] { return static_cast<unsigned int>(engine()); };
    for (unsigned int round = 0; round < 50; ++round)
    {
        TextEdit edit;
        edit.SetMaxLength(30);
        edit.SetText("the begin");
        for (unsigned int step = 0; step < 200; ++step)
        {
            edit.SetSelection(random() % 40, random() % 40);
            if (random() % 3 != 0)
                edit.Insert(string(random() % 5, static_cast<char>('a' + random() % 26)));
            else
                edit.Delete(static_cast<TextEdit::eMove>(random() % 6));
            if (random() % 5 == 0)
                edit.Undo();
        }
        string const end = edit.GetText();
        ASSERT_LE(end.size(), 30U);
        while (edit.Undo())
        {
        }
        ASSERT_EQ(edit.GetText(), "the begin");
        while (edit.Redo())
        {
        }
        // A change that was undone last is done, too.
        while (edit.GetText() != end && edit.Undo())
        {
        }
        ASSERT_EQ(edit.GetText(), end);
    }
}

} // namespace
} // namespace quillmarsh::widgets
