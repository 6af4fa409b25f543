// Pictures of widgets in the standard look, drawn by the renderer on OpenGL.
#include "tests/support/gui_screen.h"
#include "tests/support/opengl_video.h"
#include "tests/support/pictures.h"

#include "standard_look/look.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/listbox.h>
#include <quillmarsh/widgets/panel.h>
#include <quillmarsh/widgets/progressbar.h>
#include <quillmarsh/widgets/scrollbar.h>
#include <quillmarsh/widgets/slider.h>
#include <quillmarsh/widgets/stack.h>
#include <quillmarsh/widgets/textbutton.h>
#include <quillmarsh/widgets/textfield.h>

#include <gtest/gtest.h>

#include <optional>

namespace quillmarsh
{
namespace
{

using namespace widgets;

/// A panel with widgets in their states.
Panel *MakePanel()
{
    auto *const panel = new Panel("Settings of the picture", {480, 380});
    auto *const columns = new Stack(false, &panel->GetContent(), 20);
    columns->SetAlignment(e_stack_start);
    auto *const left = new Stack(true, columns, 10);
    new Label(left, "Heading", ShaderName_Heading);
    new Label(left, "A label of text, with \xC3\x84\xC3\xB6\xC3\xBC\xC3\x9F and more");
    new Label(left, "A hint that stands below", ShaderName_Hint);
    new Label(left, "This name is taken.", ShaderName_Failure);
    auto *const row = new Stack(false, left, 10);
    (new TextButton(row, "OK"))->SetDefault(true);
    new TextButton(row, "Cancel");
    (new TextButton(row, "Off"))->SetEnabled(false);
    auto *const tools = new Stack(false, left, 10);
    for (unsigned int mark = e_mark_cross; mark < s_numMarks; mark += 3)
    {
        auto *const tool = new TextButton(tools, "");
        tool->SetMark(static_cast<eMark>(mark));
        tool->SetShaderName(ShaderName_ToolButton);
        tool->SetMouseOver(mark == e_mark_arrow_left + 2, mark == e_mark_arrow_left + 2);
    }
    new CheckBox(left, "Show the grid", true);
    (new CheckBox(left, "Snap to it"))->SetFocused(true);
    (new RadioButton(left, "Linear", 1, true))->SetFocused(true);
    new RadioButton(left, "Lanczos", 1);

    auto *const right = new Stack(true, columns, 10);
    auto *const field = new TextField(right, "A text that is selected");
    field->SetFocused(true);
    field->SelectAll();
    (new TextField(right))->SetPlaceholder("Search");
    auto *const wrong = new TextField(right, "not a number, but much too long for this field");
    wrong->SetWrong(true);
    (new Slider(false, right))->SetValue(0.4f);
    auto *const bar = new ProgressBar(right);
    bar->SetValue(0.55f);
    bar->SetText("55 %");
    auto *const list = new ListBox(right, {160, 130});
    list->AddItem({"Pictures", e_mark_folder, "12 files"});
    list->AddItem({"a name that is longer than its list.tif", e_mark_picture, "3 MB"});
    list->AddItem({"brain.qmdp", e_mark_volume, "64 MB"});
    list->AddItem({"beep.qmdp", e_mark_signal});
    list->AddItem({"readme.txt", e_mark_file});
    list->AddItem({"and one more", e_mark_warning});
    list->AddItem({"last", e_mark_file});
    list->Select(1);
    return panel;
}

class LookPictures : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!video_.Open(720, 640))
            GTEST_SKIP() << video_.GetReason();
        manager_.emplace();
        connection_.emplace(*video_.renderer);
        tests::GuiDesk::DeskKernel::GUIManager_OnWindowResize(720, 640);
    }
    void TearDown() override
    {
        look_.reset();
        connection_.reset();
        manager_.reset();
        Measures::SetScale(1);
    }

    void MakeLook(char const *theme, float scale)
    {
        look_.emplace(scale);
        EXPECT_TRUE(look_->SetTheme(theme));
    }

    testing::AssertionResult Matches(string const &name, color4b ground)
    {
        gui::Renderer::ClearParams clear;
        clear.Color = ground;
        manager_->SyncObjectStates();
        manager_->SyncObjectStates();
        video_.GetGUI().ClearBuffers(clear);
        manager_->Draw();
        return tests::MatchesPicture(*video_.Capture(), name);
    }

    tests::OpenGLVideo video_{QUILLMARSH_TEST_video_opengl};
    std::optional<gui::Manager> manager_;
    std::optional<tests::ScreenConnection> connection_;
    std::optional<standard_look::Look> look_;
};

TEST_F(LookPictures, DrawWidgetsInBothThemesAndAtAnyScale)
{
    MakeLook("dark", 1);
    Panel *const panel = MakePanel();
    panel->Open();
    panel->SetPosition(30, 30);
    EXPECT_TRUE(Matches("look_dark", color4b(52, 58, 70, 255)));
    look_->SetTheme("light");
    EXPECT_TRUE(Matches("look_light", color4b(140, 150, 165, 255)));
    look_->SetScale(1.5f);
    look_->SetTheme("dark");
    EXPECT_TRUE(Matches("look_dark_150", color4b(52, 58, 70, 255)));
}

} // namespace
} // namespace quillmarsh
