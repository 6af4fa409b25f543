#include <quillmarsh/widgets/consolepanel.h>

#include "tests/support/plain_look.h"

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/framework/commands/screenshotcmd.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>
#include <quillmarsh/widgets/consoletext.h>
#include <quillmarsh/widgets/textfield.h>

#include <gtest/gtest.h>

namespace quillmarsh::widgets
{
namespace
{

using framework_commands::ScreenShotCmd;

struct ConsoleDesk : tests::WidgetDesk
{
    ConsoleDesk() { Frame(); }

    std::vector<string> TakeEntered()
    {
        std::vector<string> lines;
        kernel.TakeQueuedLines(lines);
        return lines;
    }
    /// Runs a line as the host does.
    void Run(string const &line) { tests::RunLine(*kernel.GetCommandInterpreter(), line); }
    /// Puts a text into the line, presses a key, and returns the new text.
    string Type(string const &text, eKey key)
    {
        console->GetLine().SetText(text);
        TypeKey(key);
        return console->GetLine().GetText();
    }
    bool HasLineFocus() const { return console->GetLine().IsFocused(); }

    ConsolePanel *console = new ConsolePanel;
};

TEST(ConsolePanel, OpensOverWhatHasTheFocus)
{
    ConsoleDesk desk;
    gui::Component &other = desk.Add("other", {0, 0}, {50, 50});
    auto *const field = new TextField(&other, "");
    desk.Frame();
    other.ActivateTopLevel(true);
    field->RequestKeyboardFocus();
    desk.TypeKey(e_key_a);
    for (unsigned int i = 0; i < 2; ++i)
    {
        desk.TypeKey(e_key_f9);
        EXPECT_TRUE(desk.console->IsVisible());
        EXPECT_TRUE(desk.HasLineFocus());
        EXPECT_EQ(desk.console->GetPosition(), vec2(0, 0));
        EXPECT_EQ(desk.console->GetSize().x, 640);
        desk.TypeKeys({e_key_b, i == 0 ? e_key_f9 : e_key_escape});
        if (i == 1)
            desk.TypeKey(e_key_escape);
        desk.Frame();
        EXPECT_FALSE(desk.console->IsVisible());
        EXPECT_TRUE(field->IsFocused());
        EXPECT_TRUE(other.IsActive());
    }
    desk.TypeKey(e_key_c);
    EXPECT_EQ(field->GetText(), "AC");

    desk.console->SetToggleKey(e_key_b);
    desk.TypeKey(e_key_b);
    desk.TypeKey(e_key_a);
    desk.TypeKey(e_key_b);
    desk.Frame();
    EXPECT_FALSE(desk.console->IsVisible());
    EXPECT_EQ(desk.console->GetLine().GetText(), "A") << "the key of the console is no text";
    desk.console->SetToggleKey(e_key_none);
    desk.TypeKey(e_key_f9);
    EXPECT_FALSE(desk.console->IsVisible());
    desk.console->Toggle();
    delete &other;
    desk.console->Toggle();
    desk.Frame();
    EXPECT_FALSE(desk.HasLineFocus());
}

TEST(ConsolePanel, WorksWhileAnotherPanelIsModal)
{
    ConsoleDesk desk;
    gui::Component &modal = desk.Add("modal", {0, 0}, {50, 50});
    auto *const field = new TextField(&modal, "");
    desk.Frame();
    modal.RunModal();
    field->RequestKeyboardFocus();
    desk.TypeKey(e_key_f9);
    EXPECT_TRUE(desk.HasLineFocus());
    desk.TypeKey(e_key_f9);
    desk.Frame();
    EXPECT_TRUE(modal.IsRunningModal());
    EXPECT_TRUE(field->IsFocused());
}

TEST(ConsolePanel, EntersLinesAndRecallsThem)
{
    ConsoleDesk desk;
    desk.console->Toggle();
    EXPECT_EQ(desk.Type("help", e_key_enter), "");
    desk.Type("  ", e_key_enter);
    desk.Type(" # a remark", e_key_num_enter);
    desk.Type("caf\xC3\xA9", e_key_enter);
    EXPECT_EQ(desk.TakeEntered(), (std::vector<string>{"help", "caf\xC3\xA9"}));

    desk.Run("help");
    desk.Run("alias \xE4\xB8\xAD = \"help\"");
    desk.console->GetLine().SetText("half typed");
    desk.TypeKey(e_key_arrow_up);
    EXPECT_EQ(desk.console->GetLine().GetGlyphs(), "alias \x7f = \"help\"");
    desk.TypeKeys({e_key_arrow_up, e_key_arrow_up, e_key_arrow_up});
    EXPECT_EQ(desk.console->GetLine().GetText(), "help") << "the oldest";
    desk.TypeKey(e_key_arrow_down);
    desk.TypeKey(e_key_enter);
    EXPECT_EQ(desk.TakeEntered(), (std::vector<string>{"alias \xE4\xB8\xAD = \"help\""}))
        << "as it was, though the line cannot show it";
    EXPECT_EQ(desk.Type("x", e_key_arrow_down), "x");
    desk.TypeKeys({e_key_arrow_up, e_key_arrow_down});
    EXPECT_EQ(desk.console->GetLine().GetText(), "x");
    desk.kernel.GetConsoleBuffers()->ClearCommandHistory();
    desk.TypeKeys({e_key_arrow_up, e_key_arrow_up, e_key_arrow_down});
    EXPECT_EQ(desk.console->GetLine().GetText(), "x");
}

TEST(ConsolePanel, Completes)
{
    ConsoleDesk desk;
    desk.console->Toggle();
    desk.Frame();
    EXPECT_EQ(desk.Type("his", e_key_tab), "history ");
    EXPECT_EQ(desk.Type("zzz", e_key_tab), "zzz");
    auto const getShown = [&]
    {
        desk.Frame();
        string shown;
        for (ConsoleText::Run const &run : desk.console->GetText().GetRuns())
            shown += run.glyphs;
        return shown;
    };
    EXPECT_EQ(getShown(), "");
    EXPECT_EQ(desk.Type("h", e_key_tab), "h");
    string const shown = getShown();
    EXPECT_NE(shown.find("help"), string::npos) << shown;
    EXPECT_NE(shown.find("history"), string::npos) << shown;

    // Completion in the middle of the line does not type again what is there.
    desk.console->GetLine().SetText("history");
    desk.TypeKeys({e_key_home, e_key_arrow_right, e_key_arrow_right});
    desk.TypeKey(e_key_tab);
    EXPECT_EQ(desk.console->GetLine().GetText(), "history");
    EXPECT_EQ(desk.console->GetLine().GetEdit().GetCaret(), 7U);
    desk.kernel.GetCommandInterpreter()->RegisterAlias("q\xE4\xB8\xAD", "help");
    EXPECT_EQ(desk.Type("q", e_key_tab), "q") << "a text that the line cannot show is only listed";
    EXPECT_NE(getShown().find("q\x7f"), string::npos);
    desk.TypeWith({e_key_l_shift}, e_key_tab);
    EXPECT_FALSE(desk.HasLineFocus());
    EXPECT_TRUE(desk.console->IsAncestorOf(*desk.manager.GetKeyboardFocusTarget()));

    desk.console->GetLine().RequestKeyboardFocus();
    desk.console->GetLine().SetAction([&](string const &) { delete desk.console; });
    desk.console->GetLine().SetText("hi");
    desk.TypeKey(e_key_tab);
}

TEST(ConsolePanel, HidesFromScreenshots)
{
    ConsoleDesk desk;
    auto *const callback = new ScreenShotCmd::ScreenShotCallback_AutoHideComponent;
    desk.kernel.GetCommandInterpreter()->RegisterExternalCommand(new ScreenShotCmd(callback));
    desk.TypeKey(e_key_f9);
    callback->PreScreenShot();
    desk.Frame();
    EXPECT_FALSE(desk.console->IsVisible());
    EXPECT_FALSE(desk.HasLineFocus());
    callback->PostScreenShot();
    desk.Frame();
    EXPECT_TRUE(desk.console->IsVisible());
    EXPECT_TRUE(desk.HasLineFocus()) << "the user goes on typing";
    desk.TypeKey(e_key_a);
    EXPECT_EQ(desk.console->GetLine().GetText(), "A");
    delete desk.console;
    callback->PreScreenShot();
    callback->PostScreenShot();
}

TEST(ConsolePanel, FillsTheWindowsWidthAtAnySize)
{
    ConsoleDesk desk;
    desk.console->Toggle();
    for (auto const &[width, height] : {std::pair{1U, 1U}, {40U, 30U}, {1000U, 700U}})
    {
        tests::GuiDesk::DeskKernel::GUIManager_OnWindowResize(width, height);
        desk.Frame();
        EXPECT_EQ(desk.console->GetSize().x, static_cast<float>(width));
        desk.TypeKeys({e_key_a, e_key_page_up, e_key_tab, e_key_arrow_left});
        EXPECT_GE(desk.console->GetText().GetSize().y, 0);
    }
    EXPECT_EQ(desk.console->GetLine().GetText(), "AAA");
    gui::Component const &content = desk.console->GetContent();
    EXPECT_EQ(desk.console->GetLine().CalcEndPosition(), content.GetSize()) << "the line is at the lower edge";
    EXPECT_GT(desk.console->GetText().GetNumRows(), 3U);
}

} // namespace
} // namespace quillmarsh::widgets
