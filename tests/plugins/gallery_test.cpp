// The gallery as its users see it: a robot goes through all sections, with mouse and keys.
#include "tests/support/host_process.h"
#include "tests/support/leaks.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

/// Buttons, check boxes, sliders.
constexpr char s_szValues[] = R"(
wait 'Label "Buttons"'
click 'Page/Stack/TextButton[1]'
wait 'Label "1"'
key Space
wait 'Label "2"'
key Shift+Tab
key Enter
wait 'Label "1"'
click ListBox -y=36
wait 'Label "Check boxes"'
click 'RadioButton "Lanczos"'
key ArrowUp
click 'Grid / CheckBox "Show the grid"[0]'
key Space
click TextField
type 'progress THUMB'
key Enter
wait 'Label "Sliders"'
drag 'Grid / Stack / Slider / SliderThumb' -dx=46
wait 'Label "2"'
key ArrowRight
wait 'Label "2.25"'
key Home
wait 'Label "-4"'
wheel 'Grid / Stack / Slider' -delta=120
wait 'Label "-3.75"'
drag SampleBar/ScrollThumb -dx=100
list ScrollThumb
)";

/// Text fields and lists, found by a search.
constexpr char s_szTexts[] = R"(
click TextField
type entry
key Enter
wait 'Label "Text fields"'
click 'TextField "12x"'
key Control+A
type 'Höhe'
wait 'TextField "Höhe"'
key Control+Z
key Control+Z
wait 'TextField "12x"'
click 'TextField "1024 by 768"'
type '9'
wait 'TextField "1024 by 768"'
key Tab
type 'short'
wait 'TextField "short"'
double-click 'TextField "All of it is selected"' -x=20
type 'None'
wait 'TextField "None of it is selected"'
click '/Desk/Component/Stack/Stack/TextField'
key Control+A
type 'rows shift'
key Enter
wait 'Label "Lists"'
click 'ListBox "Earth"' -y=12
key End
wait 'ListBox "Neptune"'
type 'ma'
wait 'ListBox "Mars"'
click 'Page/Stack/Stack[1]/ListBox' -y=12
hold Shift
click 'Page/Stack/Stack[1]/ListBox' -y=60
release Shift
key Control+Space
click 'Page/Stack/Stack[2]/ListBox' -y=30
key End
wait 'ListBox "99999"'
drag 'Page/Stack/Stack[2]/ListBox // ScrollThumb' -dy=-300
click 'Page/Stack/Stack[2]/ListBox' -y=12
wait 'ListBox "0"'
wheel 'Page/Stack/Stack[2]/ListBox' -delta=-120
key Home
)";

/// Tabs, panels and dialogs.
constexpr char s_szDialogs[] = R"(
click '/Desk/Component/Stack/Stack/ListBox' -y=132
wait 'Label "Tabs"'
click 'Tab "Volume"'
wait 'Label "The page of the tab Volume."'
key ArrowRight
wait 'Label "The page of the tab Signal."'
drag 'Page/Splitter/SplitterThumb' -dx=-60
list SplitterThumb
key ArrowRight
list SplitterThumb
click ListBox -y=156
wait 'Label "Panels"'
click 'TextButton "Form…"'
wait 'Panel "New picture"'
type 'Sky'
wait 'TextField "Sky"'
key Tab
type '640'
wait 'TextField "640"'
drag 'Panel "New picture"' -x=60 -y=12 -dx=40 -dy=-30
key Tab
key Tab
key Space
key Tab
key Enter
wait 'Panel "New picture"' -gone
key Space
wait 'Panel "New picture"'
key Escape
wait 'Panel "New picture"' -gone
click 'TextButton "Information…"'
key Enter
wait 'Label "Answer: OK"'
click 'TextButton "Question…"'
click 'MessageDialog // TextButton "Discard"'
wait 'Label "Answer: Discard"'
click 'TextButton "Warning…"'
key Tab
key Space
wait 'Label "Answer: Cancel"'
click 'TextButton "Question…"'
key Escape
wait 'Label "Answer: Cancel"'
click 'TextButton "Error…"'
click 'MessageDialog // TextButton "Close"'
wait 'Label "Answer: Close"'
click 'TextButton "Open a file…"'
wait FileDialog
double-click 'FileDialog // ListBox' -y=12
wait 'FileDialog // TextField "*pictures?"'
key Tab
type 'none.txt'
key Enter
wait 'FileDialog // Label "Cannot open*none.txt*"'
key Control+A
type 'note.txt'
key Enter
wait 'Label "*pictures*note.txt"'
click 'TextButton "Save a file…"'
key Enter
wait 'MessageDialog // Label "*exists. Replace it?"'
key Escape
wait MessageDialog -gone
key Control+A
type 'new'
key Enter
wait FileDialog -gone
wait 'Label "*new.png"'
)";

/// Tool tips, menus, themes, the console.
constexpr char s_szRest[] = R"(
click ListBox -y=156
move 'TextButton "Rest*"'
wait '"Tool tips come*"'
click '/Desk/Component/Stack/Stack/ListBox' -y=180
wait 'Label "Menus"'
click 'TextButton "Menu"'
key ArrowDown
key ArrowDown
key ArrowRight
key Enter
wait 'Label "Nebula.tif"'
click 'TextButton "Menu"'
click Menu -y=16
wait 'Label "Open"'
click 'TextButton "Menu"'
key Escape
wait Menu -gone
click 'TextButton "Light"'
click 'TextButton "2"'
wait 'TextButton "2"'
key ArrowLeft
key Shift+Tab
key Space
key F9
type 'var gallery.section Texts'
key Enter
wait 'Label "Texts"'
key F9
wait ConsolePanel -gone
)";

/// True if a text has a part.
testing::AssertionResult Contains(string const &text, string const &part)
{
    if (text.find(part) != string::npos)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << '"' << part << "\" is not in: " << text;
}

/// Runs the script in a directory with a file and a directory of its own.
class Gallery : public testing::Test
{
protected:
    Gallery()
    {
        std::filesystem::create_directory(directory_.GetPath() / "pictures");
        directory_.Write("pictures/note.txt", "");
        directory_.Write("Untitled.png", "");
        std::filesystem::current_path(directory_.GetPath());
    }
    ~Gallery() override { std::filesystem::current_path(before_); }

    static string Drive(string const &script)
    {
        NoLeakCheckInChildren const noLeakCheck;
        HostResult const result = RunHost({"--headless", "1100x760", "--frame-rate", "240", "--video", "video_null",
                                           "--plugin", "gallery", "--strict", "--robot", "-"},
                                          script);
        EXPECT_EQ(0, result.status) << result.out << result.err;
        EXPECT_EQ("", result.err);
        return result.out;
    }

    std::filesystem::path before_ = std::filesystem::current_path();
    ScratchDirectory directory_;
};

TEST_F(Gallery, ValuesFollowMouseAndKeys)
{
    EXPECT_TRUE(Contains(Drive(s_szValues), "SampleBar/ScrollThumb at 324,"));
}

TEST_F(Gallery, TextsAndListsFollowMouseAndKeys)
{
    Drive(s_szTexts);
}

TEST_F(Gallery, DialogsAreAnswered)
{
    string const out = Drive(s_szDialogs);
    EXPECT_TRUE(Contains(out, "Page/Splitter/SplitterThumb at 441,")) << "dragged";
    EXPECT_TRUE(Contains(out, "Page/Splitter/SplitterThumb at 449,")) << "moved by a key";
}

TEST_F(Gallery, MenusThemesAndConsoleWork)
{
    string const out = Drive(s_szRest);
    EXPECT_TRUE(Contains(out, "look.theme = light"));
    EXPECT_TRUE(Contains(out, "look.scale = 2\n"));
    EXPECT_TRUE(Contains(out, "gallery.section = Texts"));
}

} // namespace
} // namespace quillmarsh::tests
