#include <quillmarsh/framework/commands/guistatscmd.h>

#include "tests/support/null_video.h"

#include <quillmarsh/framework/commands/frameworkcommands.h>
#include <quillmarsh/framework/completion.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>
#include <quillmarsh/gui/gui_cursors.h>
#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_manager.h>

#include <gtest/gtest.h>

#include <regex>

namespace quillmarsh::framework_commands
{
namespace
{

class GUICommands : public testing::Test
{
protected:
    GUICommands()
    {
        kernel.active = &video.renderer;
        interpreter.SetDeveloperModeActive(true);
        CreateAndRegisterAllCommands(interpreter, nullptr, 0, 0);
    }

    string Run(string const &line) { return tests::RunLine(interpreter, line); }

    /// Draws a frame with so many rectangles.
    void RunFrame(unsigned int numRectangles)
    {
        video.gui.ClearStats();
        video.gui.Begin();
        for (unsigned int i = 0; i < numRectangles; ++i)
            video.gui.DrawRectangle(gui::RectangleC({1, 1, 2, 2}, color4b(255, 255, 255, 255)));
        video.gui.End();
        kernel.RunFrame(0.01);
    }

    tests::VideoKernel kernel;
    tests::NullVideo video;
    std_command_interpreter::Interpreter interpreter;
};

TEST_F(GUICommands, StatsGatherFrames)
{
    auto const &command = dynamic_cast<GUIStatsCmd &>(*interpreter.FindExternalCommand("gui-stats"));
    GUIRendererStatsCollector const &collector = command.GetCollector();
    EXPECT_EQ(Run("gui-stats -stop"), "true");
    EXPECT_EQ(Run("gui-stats -run"), "GUI-statistics-collector running.\ntrue");
    EXPECT_EQ(Run("gui-stats -run"), "true");
    EXPECT_EQ(kernel.GetNumFrameObservers(), 1u);
    for (unsigned int const number : {4u, 1u, 2u})
        RunFrame(number);
    EXPECT_EQ(collector.GetFrameCount(), 3u);
    string const dump = Run("gui-stats -dump");
    EXPECT_EQ(dump.find("GUI-statistics:\nMin:\n\tNum"), 0u) << dump;
    EXPECT_TRUE(dump.ends_with("\nFrameCount: 3\ntrue")) << dump;
    EXPECT_EQ(collector.GetStatsMin().NumDrawRectangleColored, 1u);
    EXPECT_EQ(collector.GetStatsMax().NumDrawRectangleColored, 4u);
    EXPECT_EQ(collector.GetStatsAccum().NumDrawRectangleColored, 7u);
    EXPECT_EQ(collector.GetStatsAverage().NumDrawRectangleColored, 2u);

    EXPECT_EQ(Run("gui-stats -stop"), "GUI-statistics-collector stopped.\ntrue");
    RunFrame(9);
    EXPECT_EQ(collector.GetFrameCount(), 3u);
    string const last = Run("gui-stats");
    EXPECT_EQ(last.find("GUI-statistics collector running: false\nLast-frame:\n\tNum"), 0u) << last;
    EXPECT_NE(last.find("NumDrawRectangleColored.....: 9\n"), string::npos) << last;
    EXPECT_EQ(Run("gui-stats -reset -run"), "GUI-statistics-collector reset.\nGUI-statistics-collector running.\ntrue");
    EXPECT_EQ(collector.GetFrameCount(), 0u);
    EXPECT_EQ(collector.GetStatsMin().NumBegin, 0xFFFFFFFFu);

    Run("gui-stats -stop");
    kernel.active = nullptr;
    EXPECT_EQ(Run("gui-stats -run"), "GUI-statistics-collector running.\ntrue");
    EXPECT_EQ(Run("gui-stats -stop"), "GUI-statistics-collector stopped.\ntrue");
}

TEST_F(GUICommands, AliasesAreListedAndChanged)
{
    EXPECT_EQ(Run("gui-alias"), "Cannot find gui-manager.\nfalse");
    EXPECT_EQ(interpreter.FindCompletions("gui-alias -alias=").candidates.size(), 0u);
    gui::Manager manager;
    new gui::Cursor("pen", vec2(0, 0), vec2(8, 8), color4b(255, 255, 255, 255));
    string const empty = "Tile-texture aliases:\nFont aliases:\nShader aliases:\nCursor aliases:\n";
    EXPECT_EQ(Run("gui-alias"), empty + "true");
    EXPECT_EQ(Run("gui-alias -font -cursor -alias=a -ref=b"), "Font aliases:\na ==> b\ntrue");
    EXPECT_EQ(Run("gui-alias -cursor -alias=hand -ref=pen -objects"),
              "Cursor aliases:\nhand ==> pen\nCursor objects:\npen\ntrue");
    EXPECT_EQ(manager.GetCursor("hand"), manager.GetCursor("pen"));
    EXPECT_EQ(interpreter.FindCompletions("gui-alias -cursor -alias=").candidates.size(), 1u);
    // Without a type or an alias there is nothing to change.
    string const all = "Tile-texture aliases:\nFont aliases:\na ==> b\nShader aliases:\nCursor aliases:\nhand ==> pen\n"
                       "true";
    for (char const *const line : {"gui-alias", "gui-alias -clear-all", "gui-alias -alias=a -ref=c"})
        EXPECT_EQ(Run(line), all) << line;
    for (char const *const line : {"gui-alias -font -clear", "gui-alias -font -ref=c"})
        EXPECT_EQ(Run(line), "Font aliases:\na ==> b\ntrue") << line;
    EXPECT_EQ(Run("gui-alias -font -clear -alias=a"), "Font aliases:\ntrue");
    EXPECT_EQ(Run("gui-alias -cursor -clear-all"), "Cursor aliases:\ntrue");
    EXPECT_EQ(manager.GetCursor("hand"), nullptr);
}

TEST_F(GUICommands, FontsAreMadeAnew)
{
    EXPECT_EQ(Run("gui-font"), "Cannot find gui-manager.\nfalse");
    gui::Manager manager;
    for (char const *const name : {"big", "small"})
    {
        gui::FontTexture::CreationParams params;
        params.Bold = name == string("big");
        params.TextureWidth = 256;
        AutoPtr<gui::FontTexture> font = gui::FontTexture::CreateFontTexture(params);
        manager.RegisterFont(name, font);
    }
    manager.AddFontAlias("text", "small");
    // The system names what it has in place of a family that it lacks, which may have no bold face.
    string const list = Run("gui-font");
    EXPECT_TRUE(std::regex_match(list, std::regex("GUI font-resources:\n0: big, [^\n]+\n1: small, [^\n]+\ntrue")))
        << list;
    EXPECT_EQ(Run("gui-font -fn=2"), list);
    EXPECT_EQ(Run("gui-font -fr=huge -u"), list);
    EXPECT_TRUE(Run("gui-font -sysfonts -fn=0").starts_with("Installed system fonts:\n"));

    auto const getParams = [&manager]
    {
        gui::FontTexture::CreationParams params;
        dynamic_cast<gui::FontTexture &>(*manager.GetFont("small")).GetCreationParameters(params);
        return params;
    };
    string const before = tests::DumpText(getParams(), 1);
    string const line = "gui-font -fr=text -texwidth=512 -multilevel=no -spacing=0.25 -ac-add-r=3 -ascii-only=x";
    string const printed = Run(line);
    EXPECT_TRUE(printed.starts_with("Font-resource info: small\n")) << printed;
    EXPECT_EQ(tests::DumpText(getParams(), 1), before);
    EXPECT_EQ(Run(line + " -u"), "Creating updated font-resource.\n" + printed);
    EXPECT_EQ("Font-resource info: small\n" + tests::DumpText(getParams(), 1) + "true", printed);
    gui::FontTexture::CreationParams const params = getParams();
    EXPECT_TRUE(!params.TextureMultiLevel && params.AsciiSubsetOnly);
    EXPECT_EQ(params.TextureWidth, 512u);
    EXPECT_EQ(params.DefaultSpacing, 0.25f);
    EXPECT_EQ(params.ACAddPixelsRight, 3);
    // The alias still stands for the new font.
    EXPECT_EQ(manager.GetFont("text"), manager.GetFont("small"));
}

} // namespace
} // namespace quillmarsh::framework_commands
