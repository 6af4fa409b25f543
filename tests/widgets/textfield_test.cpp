#include <quillmarsh/widgets/textfield.h>

#include "tests/support/headless_desktop.h"
#include "tests/support/plain_look.h"

#include <quillmarsh/platform/clipboard.h>
#include <quillmarsh/platform/window.h>
#include <quillmarsh/widgets/measures.h>

#include <gtest/gtest.h>

namespace quillmarsh::widgets
{
namespace
{

/// A field at (100, 100) with the focus. Its text begins at x = 108, and its glyphs are 10 pixels wide.
struct FieldDesk : tests::WidgetDesk
{
    FieldDesk()
    {
        field->SetPosition(100, 100);
        Frame();
        field->RequestKeyboardFocus();
        Frame();
    }

    TextField *field = new TextField(nullptr, "", 116);
};

TEST(TextField, TakesKeys)
{
    FieldDesk desk;
    TextField &field = *desk.field;
    desk.TypeKeys({e_key_a, e_key_b, e_key_c, e_key_f5, e_key_arrow_left, e_key_d});
    EXPECT_EQ(field.GetText(), "ABDC");
    desk.TypeKeys({e_key_backspace, e_key_delete});
    EXPECT_EQ(field.GetText(), "AB");
    desk.TypeWith({e_key_l_control}, e_key_z);
    EXPECT_EQ(field.GetText(), "ABC");
    desk.TypeWith({e_key_l_control, e_key_l_shift}, e_key_z);
    EXPECT_EQ(field.GetText(), "AB");
    desk.TypeWith({e_key_l_control}, e_key_q);
    desk.TypeWith({e_key_l_alt}, e_key_q);
    EXPECT_EQ(field.GetText(), "AB") << "keys with control and alt are no letters";
    desk.TypeWith({e_key_r_alt}, e_key_q);
    desk.TypeWith({e_key_l_control, e_key_r_alt}, e_key_e);
    EXPECT_EQ(field.GetText(), "ABQE") << "the right alt key gives letters, whether or not control is reported with it";
    desk.TypeWith({e_key_l_shift}, e_key_home);
    EXPECT_EQ(field.GetEdit().GetSelectedText(), "ABQE");
}

TEST(TextField, LetsKeysGoOnThatItDoesNotUse)
{
    tests::WidgetDesk desk;
    gui::Component &panel = desk.Add("panel", {0, 0}, {200, 100});
    auto *const field = new TextField(&panel, "");
    desk.Frame();
    field->RequestKeyboardFocus();
    desk.log.Take();
    auto const isUsed = [&](eKey key)
    {
        desk.PressKey(key);
        bool const used = desk.log.Take().empty();
        desk.ReleaseKey(key);
        desk.log.Take();
        return used;
    };
    for (eKey const key : {e_key_tab, e_key_enter, e_key_escape, e_key_arrow_up, e_key_page_down, e_key_f3})
        EXPECT_FALSE(isUsed(key)) << GetKeyName(key);
    for (eKey const key : {e_key_arrow_left, e_key_backspace, e_key_a, e_key_home})
        EXPECT_TRUE(isUsed(key)) << GetKeyName(key);
    string entered;
    field->SetEnterAction([&](string const &text) { entered = text; });
    EXPECT_TRUE(isUsed(e_key_num_enter));
    EXPECT_EQ(entered, "A");
    field->SetReadOnly(true);
    EXPECT_TRUE(isUsed(e_key_b));
    EXPECT_TRUE(isUsed(e_key_delete));
    EXPECT_EQ(field->GetText(), "A");
}

TEST(TextField, ReportsChangesByTheUserOnly)
{
    FieldDesk desk;
    TextField &field = *desk.field;
    std::vector<string> told;
    field.SetAction([&](string const &text) { told.push_back(text); });
    field.SetText("caf\xC3\xA9 \xE2\x82\xAC");
    EXPECT_EQ(field.GetGlyphs(), "caf\xE9 \x7f") << "what Latin-1 has, and a box";
    EXPECT_TRUE(told.empty());
    field.SetWrong(true);
    desk.TypeKeys({e_key_backspace, e_key_end, e_key_backspace});
    EXPECT_EQ(told, (std::vector<string>{"caf\xC3\xA9 ", "caf\xC3\xA9"}));
    EXPECT_FALSE(field.IsWrong());
    field.SelectAll();
    field.Insert("x");
    EXPECT_EQ(told.back(), "x");
    field.SetAction([&](string const &) { delete &field; });
    desk.TypeKey(e_key_a);
    desk.TypeKeys({e_key_a, e_key_backspace});
}

TEST(TextField, ScrollsToTheCaret)
{
    FieldDesk desk;
    TextField &field = *desk.field;
    EXPECT_EQ(field.GetTextArea().width, 100);
    field.SetText(string(30, 'x'));
    desk.Frame();
    float const caretRoom = Measures::Pixels(1);
    EXPECT_EQ(field.GetGlyphX(30), field.GetTextArea().x + 100 - caretRoom);
    desk.TypeKey(e_key_home);
    EXPECT_EQ(field.GetTextX(), field.GetTextArea().x);
    desk.TypeKey(e_key_end);
    field.SetText("xx");
    EXPECT_EQ(field.GetTextX(), field.GetTextArea().x) << "a short text does not stay scrolled";
    for (float const width : {0.0F, 1.0F})
    {
        field.SetSize(width, width);
        desk.TypeKeys({e_key_a, e_key_end, e_key_home});
        EXPECT_EQ(field.GetTextArea().width, 0);
    }
    EXPECT_EQ(field.GetText().size(), 4U);
}

TEST(TextField, SelectsByTheMouse)
{
    FieldDesk desk;
    TextField &field = *desk.field;
    field.SetText("one two three four");
    desk.TypeKey(e_key_home);
    desk.MoveTo(108 + 44, 110);
    desk.Click();
    EXPECT_EQ(field.GetEdit().GetCaret(), 4U);
    desk.Click();
    EXPECT_EQ(field.GetEdit().GetSelectedText(), "two");
    desk.Click();
    EXPECT_EQ(field.GetEdit().GetSelectedText(), "one two three four") << "the third click";

    desk.TypeKey(e_key_home);
    desk.Frame(1);
    desk.MoveTo(108 + 26, 110);
    desk.Press();
    EXPECT_EQ(field.GetEdit().GetCaret(), 3U) << "the nearest boundary";
    desk.MoveTo(108 + 62, 300);
    EXPECT_EQ(field.GetEdit().GetSelectedText(), " tw") << "a drag goes on beside the field";
    desk.MoveTo(600, 110);
    for (unsigned int i = 0; i < 50; ++i)
        desk.Frame(0.05);
    EXPECT_EQ(field.GetEdit().GetSelectionEnd(), 18U) << "the text scrolls while the mouse is beside it";
    desk.Release();
    desk.MoveTo(108, 110);
    EXPECT_EQ(field.GetEdit().GetSelectionEnd(), 18U);
}

TEST(TextField, ShowsTheCaretWhileItHasTheFocus)
{
    FieldDesk desk;
    TextField &field = *desk.field;
    unsigned int numShown = 0;
    for (unsigned int i = 0; i < 100; ++i)
    {
        desk.Frame(0.1);
        numShown += field.IsCaretShown() ? 1 : 0;
    }
    EXPECT_NEAR(numShown, 50, 5);
    desk.Frame(0.6);
    desk.TypeKey(e_key_arrow_left);
    EXPECT_TRUE(field.IsCaretShown()) << "at once after a key";
    field.ReleaseKeyboardFocus();
    desk.Frame();
    EXPECT_FALSE(field.IsCaretShown());
}

struct TextFieldClipboard : tests::OnAHeadlessDesktop
{
};

TEST_F(TextFieldClipboard, CutsCopiesAndPastes)
{
    FieldDesk desk;
    TextField &field = *desk.field;
    field.SetText("one two");
    field.SelectAll();
    desk.TypeWith({e_key_l_control}, e_key_x);
    EXPECT_EQ(field.GetText(), "one two") << "without a window there is no clipboard, and nothing is lost";
    string reason;
    AutoPtr<platform::Window> const window = platform::Window::Open({}, reason);
    ASSERT_TRUE(window) << reason;
    desk.TypeWith({e_key_l_shift}, e_key_delete);
    EXPECT_EQ(field.GetText(), "");
    EXPECT_EQ(platform::ReadClipboardText(), "one two");
    platform::WriteClipboardText("gr\xC3\xBC\xC3\x9F\n\xE4\xB8\xAD");
    desk.TypeWith({e_key_l_control}, e_key_v);
    EXPECT_EQ(field.GetGlyphs(), "gr\xFC\xDF \x7f");
    field.SetReadOnly(true);
    field.SelectAll();
    desk.TypeWith({e_key_l_control}, e_key_x);
    desk.TypeWith({e_key_l_shift}, e_key_insert);
    EXPECT_EQ(field.GetGlyphs(), "gr\xFC\xDF \x7f");
    desk.TypeWith({e_key_l_control}, e_key_insert);
    EXPECT_EQ(platform::ReadClipboardText(), "gr\xC3\xBC\xC3\x9F \x7f");
}

} // namespace
} // namespace quillmarsh::widgets
