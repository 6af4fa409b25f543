#include "sections.h"

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/widgets/consoletext.h>
#include <quillmarsh/widgets/filedialog.h>
#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/menu.h>
#include <quillmarsh/widgets/messagedialog.h>
#include <quillmarsh/widgets/textbutton.h>
#include <quillmarsh/widgets/textencoding.h>
#include <quillmarsh/widgets/textfield.h>

namespace gallery
{

using namespace quillmarsh;
using namespace quillmarsh::widgets;

namespace
{

struct MessageKind
{
    char const *title;
    char const *text;
    eMark sign;
    std::vector<string> buttons;
};

std::vector<MessageKind> GetMessageKinds()
{
    return {{"Information", "The picture was saved.", e_mark_information, {"OK"}},
            {"Question", "Save the changes of Nebula.tif?", e_mark_question, {"Save", "Discard", "Cancel"}},
            {"Warning", "The device was removed while it was read.", e_mark_warning, {"Retry", "Cancel"}},
            {"Error", "Nebula.tif cannot be opened: permission denied.", e_mark_error, {"Close"}}};
}

/// A form as programs have it.
void OpenForm()
{
    auto *const panel = new Panel("New picture");
    auto *const column = new Stack(true, &panel->GetContent(), Measures::Margin);
    auto *const grid = new Grid(2, column);
    new Label(grid, "Name");
    new TextField(grid, "Untitled", 200);
    new Label(grid, "Width");
    new TextField(grid, "1024", 80);
    new Label(grid, "Height");
    new TextField(grid, "768", 80);
    new CheckBox(column, "Fill with the background");
    auto *const buttons = new Stack(false, column);
    auto *const create = new TextButton(buttons, "Create");
    auto *const cancel = new TextButton(buttons, "Cancel");
    panel->SetDefaultButton(create);
    panel->SetCancelButton(cancel);
    create->SetAction([panel] { panel->Close(); });
    cancel->SetAction([panel] { panel->Close(); });
    panel->SetCloseAction([panel] { delete panel; });
    panel->FitToContent();
    panel->Open();
}

std::vector<MenuItem> MakeMenu(Label *answer)
{
    auto const say = [answer](string const &text) { return [answer, text] { answer->SetText(text); }; };
    return {
        {.text = "Open…", .action = say("Open"), .mark = e_mark_folder, .keys = "Ctrl+O"},
        {.text = "Recent",
         .items = {{.text = "Nebula.tif", .action = say("Nebula.tif"), .mark = e_mark_picture},
                   {.text = "Head.qmvol", .action = say("Head.qmvol"), .mark = e_mark_volume}}},
        {.text = ""},
        {.text = "Show the grid", .action = say("Show the grid"), .mark = e_mark_check},
        {.text = "Show the ruler", .action = say("Show the ruler")},
        {.text = "Paste", .action = say("Paste"), .isEnabled = false, .keys = "Ctrl+V"},
        {.text = ""},
        {.text = "Quit", .action = say("Quit"), .keys = "Ctrl+Q"},
    };
}

struct TypeSample
{
    char const *title;
    char const *shaderName;
};
constexpr TypeSample s_typeSamples[] = {{"Heading", ShaderName_Heading},
                                        {"Section", ShaderName_Section},
                                        {"Label", ShaderName_Label},
                                        {"Hint", ShaderName_Hint},
                                        {"Failure", ShaderName_Failure}};

constexpr char const *s_markNames[s_numMarks] = {"none",     "check",       "dot",      "cross",   "plus",   "minus",
                                                 "left",     "right",       "up",       "down",    "folder", "parent",
                                                 "file",     "picture",     "volume",   "signal",  "drive",  "search",
                                                 "settings", "information", "question", "warning", "error"};

} // namespace

void BuildPanels(Stack &page)
{
    auto *const row = new Stack(false, &page);
    (new TextButton(row, "Form…"))->SetAction(OpenForm);
    auto *const chosen = new Label(&page, "No file was chosen.", ShaderName_Hint);
    gui::Watch<Label> const answer(chosen);
    auto const show = [answer](string const &file)
    {
        if (Label *const label = answer)
            label->SetText(file);
    };
    (new TextButton(row, "Open a file…"))
        ->SetAction([show] { FileDialog::Show({.title = "Open a file", .action = show}); });
    (new TextButton(row, "Save a file…"))
        ->SetAction(
            [show]
            {
                FileDialog::Show({.title = "Save a file",
                                  .isSaving = true,
                                  .fileName = "Untitled.png",
                                  .extensions = {"png", "tif"},
                                  .action = show});
            });

    auto *const messages = new Stack(false, &page);
    for (MessageKind const &kind : GetMessageKinds())
    {
        (new TextButton(messages, kind.title + string("…")))
            ->SetAction(
                [kind, show]
                {
                    MessageDialog::Show(
                        {.title = kind.title,
                         .text = kind.text,
                         .sign = kind.sign,
                         .buttons = kind.buttons,
                         .action = [kind, show](unsigned int button) { show("Answer: " + kind.buttons[button]); }});
                });
    }
    auto *const tip = new TextButton(&page, "Rest the mouse here");
    tip->SetToolTipText("Tool tips come when the mouse rests,\nand go when it moves on.");
}

void BuildMenus(Stack &page)
{
    auto *const button = new TextButton(&page, "Menu");
    button->SetMark(e_mark_arrow_down);
    auto *const answer = new Label(&page, "Nothing was chosen.", ShaderName_Hint);
    button->SetAction([button, answer] { Menu::OpenBelow(MakeMenu(answer), *button); });
}

void BuildTexts(Stack &page)
{
    auto *const grid = new Grid(2, &page, {20, 12});
    for (TypeSample const &sample : s_typeSamples)
    {
        new Label(grid, sample.title, ShaderName_Hint);
        new Label(grid, "Sphinx of black quartz, judge my vow. 0123456789", sample.shaderName);
    }
    for (unsigned int row = 2; row < 16; ++row)
    {
        string line;
        for (unsigned int column = 0; column < 16 && row != 8 && row != 9; ++column)
        {
            line += static_cast<char>(row * 16 + column);
            line += ' ';
        }
        if (!line.empty())
            new Label(&page, FromGlyphs(line));
    }
}

void BuildMarks(Stack &page)
{
    auto *const grid = new Grid(6, &page, {24, 12});
    for (unsigned int mark = 1; mark < s_numMarks; ++mark)
    {
        auto *const row = new Stack(false, grid);
        auto *const button = new TextButton(row, string());
        button->SetShaderName(ShaderName_ToolButton);
        button->SetMark(static_cast<eMark>(mark));
        new Label(row, s_markNames[mark]);
    }
}

void BuildConsole(Stack &page)
{
    new ConsoleText(&page, &Kernel::Instance().GetConsoleBuffers()->GetOutputBuffer(), {640, 320});
}

} // namespace gallery
