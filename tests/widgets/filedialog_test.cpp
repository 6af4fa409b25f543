#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/widgets/filedialog.h>
#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/listbox.h>
#include <quillmarsh/widgets/messagedialog.h>
#include <quillmarsh/widgets/textfield.h>

#include "tests/support/plain_look.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quillmarsh::widgets
{
namespace
{

using Names = std::vector<string>;

/// Finds the n-th component of a class in a branch, in the order of the tree.
template<typename T>
T *Find(gui::Component &branch, unsigned int &index)
{
    if (auto *const found = dynamic_cast<T *>(&branch); found != nullptr && index-- == 0)
        return found;
    for (gui::Component *const child : branch.GetChildren())
    {
        if (T *const found = Find<T>(*child, index))
            return found;
    }
    return nullptr;
}

/// A directory with files and directories, and dialogs that list it.
class FileDialogTest : public testing::Test
{
protected:
    FileDialogTest()
    {
        for (char const *const name : {"beta.TXT", "Alpha.txt", "picture.png", ".hidden", "gamma"})
            directory.Write(name, "text");
        for (char const *const name : {"sub", "Other", ".config"})
            file_system::CreateDirectoryA(directory / name);
        directory.Write("sub/inner.txt", "text");
        params.directory = directory / "";
        params.action = [this](string const &name) { answers.push_back(name); };
        params.cancelAction = [this] { answers.emplace_back("cancelled"); };
    }

    FileDialog &Show()
    {
        FileDialog &shown = FileDialog::Show(params);
        dialog = &shown;
        desk.Frame();
        return shown;
    }

    template<typename T>
    T &Part(unsigned int index = 0)
    {
        return *Find<T>(*dialog, index);
    }
    ListBox &List() { return Part<ListBox>(); }
    TextField &NameField() { return Part<TextField>(1); }
    string Reason() { return Part<Label>().GetText(); }

    Names Listed()
    {
        Names names;
        for (unsigned int i = 0; i < List().GetNumItems(); ++i)
            names.push_back(List().GetItem(i).text);
        return names;
    }

    void Type(std::initializer_list<eKey> keys)
    {
        for (eKey const key : keys)
            desk.TypeKey(key);
    }

    /// Question whether to replace a file; null if there is none.
    MessageDialog *Question()
    {
        desk.Frame();
        return dynamic_cast<MessageDialog *>(desk.manager.GetModalTarget());
    }

    tests::WidgetDesk desk;
    tests::ScratchDirectory directory;
    FileDialog::Params params;
    gui::Watch<FileDialog> dialog;
    Names answers;
};

TEST_F(FileDialogTest, ListsDirectoriesFirstAndOnlyWhatIsWanted)
{
    Show();
    EXPECT_EQ(Listed(), (Names{"Other", "sub", "Alpha.txt", "beta.TXT", "gamma", "picture.png"}));
    EXPECT_TRUE(NameField().IsFocused());
    desk.TypeKey(e_key_period);
    NameField().Insert(".");
    EXPECT_EQ(Listed().size(), 8U) << "a dot asks for hidden names";
    EXPECT_EQ(Listed().front(), ".config");
    NameField().SetText("");
    NameField().Insert("x");
    EXPECT_EQ(Listed().size(), 6U);
    dialog->Cancel();
    EXPECT_EQ(dialog.Get(), nullptr);
    EXPECT_EQ(answers, Names{"cancelled"});

    params.extensions = {"txt", "qmdp.image"};
    Show();
    EXPECT_EQ(Listed(), (Names{"Other", "sub", "Alpha.txt", "beta.TXT"}));
    dialog->Cancel();
    params.isDirectory = true;
    params.directory = directory / "no such directory";
    Show();
    string processDirectory;
    file_system::GetProcessDirectory(processDirectory, true);
    EXPECT_EQ(dialog->GetDirectory(), processDirectory);
}

TEST_F(FileDialogTest, KeysWalkThroughDirectories)
{
    Show();
    Type({e_key_arrow_down, e_key_s, e_key_enter});
    EXPECT_EQ(dialog->GetDirectory(), tests::Preferred(directory / "sub/"));
    EXPECT_EQ(Listed(), Names{"inner.txt"});
    desk.TypeKey(e_key_backspace);
    EXPECT_EQ(dialog->GetDirectory(), directory / "");
    EXPECT_EQ(List().GetCaption(), "sub") << "where it came from";
    dialog->GoTo("sub");
    dialog->GoTo("../Other/..");
    EXPECT_EQ(dialog->GetDirectory(), directory / "");
    Type({e_key_b});
    EXPECT_EQ(NameField().GetText(), "beta.TXT");
    desk.TypeKey(e_key_enter);
    EXPECT_EQ(dialog.Get(), nullptr);
    EXPECT_FALSE(desk.manager.IsRunningModal());
    EXPECT_EQ(answers, Names{directory / "beta.TXT"});

    Show();
    desk.TypeKey(e_key_escape);
    EXPECT_EQ(answers.back(), "cancelled");
    EXPECT_EQ(dialog.Get(), nullptr);
}

TEST_F(FileDialogTest, GoesUpToTheRootsAndNoFurther)
{
    std::vector<string> volumes;
    file_system::GetVolumes(volumes);
    ASSERT_FALSE(volumes.empty());
    Show();
    for (int i = 0; i < 100; ++i)
        dialog->GoToParent();
    // With one root there is no list of roots.
    bool const isOne = volumes.size() == 1;
    EXPECT_EQ(dialog->GetDirectory(), isOne ? volumes.front() : string());
    EXPECT_EQ(Listed() == volumes, !isOne);
    EXPECT_EQ(Reason(), "");
}

TEST_F(FileDialogTest, TellsWhatCannotBeOpened)
{
    Show();
    string const missing = directory / "missing";
    dialog->Accept("missing");
    EXPECT_EQ(Reason().find("Cannot open \"" + missing + "\": "), 0U) << Reason();
    EXPECT_GT(Reason().size(), missing.size() + 16) << "with the system's reason";
    dialog->Accept("");
    EXPECT_EQ(Reason(), "Enter a name.");
    dialog->GoTo("missing");
    EXPECT_EQ(Reason().find("Cannot list \"" + missing + "\": "), 0U) << Reason();
    EXPECT_EQ(dialog->GetDirectory(), directory / "");
    NameField().Insert("x");
    EXPECT_EQ(Reason(), "") << "until something is typed";

    // A directory that is removed while it is listed.
    dialog->GoTo("Other");
    file_system::DeleteDirectory(directory / "Other");
    dialog->GoTo(dialog->GetDirectory());
    EXPECT_NE(Reason(), "");
    dialog->GoToParent();
    EXPECT_EQ(dialog->GetDirectory(), directory / "");
    dialog->Accept("sub");
    EXPECT_EQ(dialog->GetDirectory(), tests::Preferred(directory / "sub/"));
    EXPECT_TRUE(answers.empty());
}

TEST_F(FileDialogTest, AsksBeforeItReplacesAFile)
{
    params.isSaving = true;
    params.fileName = "Alpha.txt";
    Show();
    desk.TypeKey(e_key_enter);
    MessageDialog *const question = Question();
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(question->GetText(), '"' + (directory / "Alpha.txt") + "\" exists. Replace it?");
    desk.TypeKey(e_key_enter);
    EXPECT_EQ(Question(), nullptr);
    EXPECT_TRUE(answers.empty()) << "Enter is the careful answer";
    ASSERT_NE(dialog.Get(), nullptr);
    dialog->Accept("Alpha.txt");
    ASSERT_NE(Question(), nullptr);
    Question()->Answer(0);
    EXPECT_EQ(answers, Names{directory / "Alpha.txt"});
    EXPECT_EQ(dialog.Get(), nullptr);
    EXPECT_FALSE(desk.manager.IsRunningModal());

    // The dialog may be gone before the answer.
    Show();
    dialog->Accept("Alpha.txt");
    delete dialog.Get();
    ASSERT_NE(Question(), nullptr);
    Question()->Answer(0);
    EXPECT_EQ(answers.size(), 1U);
}

TEST_F(FileDialogTest, AddsTheExtensionToANameWithoutOne)
{
    params.isSaving = true;
    params.extensions = {"png", "tif"};
    struct NameCase
    {
        string entered;
        string expected;
    };
    for (NameCase const &each : {NameCase{"new", "new.png"},
                                 {"new.", "new.png"},
                                 {"new.tif", "new.tif"},
                                 {"new.other", "new.other"},
                                 {".new", ".new.png"},
                                 {"sub/new", "sub/new.png"}})
    {
        Show();
        dialog->Accept(each.entered);
        ASSERT_FALSE(answers.empty()) << each.entered;
        EXPECT_EQ(answers.back(), directory / each.expected);
        EXPECT_EQ(dialog.Get(), nullptr);
    }
    Show();
    dialog->Accept("picture");
    ASSERT_NE(Question(), nullptr) << "the name with its extension exists";
    Question()->Answer(1);
    dialog->Accept("missing/new");
    EXPECT_EQ(Reason().find("Cannot write "), 0U) << Reason();
    dialog->GoTo("sub");
    EXPECT_EQ(answers.size(), 6U);
}

TEST_F(FileDialogTest, ChoosesDirectories)
{
    params.isDirectory = true;
    Show();
    EXPECT_EQ(Listed(), (Names{"Other", "sub"}));
    dialog->Accept("gamma");
    EXPECT_EQ(Reason(), "Cannot open \"" + (directory / "gamma") + "\": it is no directory");
    Type({e_key_arrow_down, e_key_s});
    EXPECT_EQ(NameField().GetText(), "sub");
    NameField().RequestKeyboardFocus();
    desk.TypeKey(e_key_enter);
    EXPECT_EQ(answers, Names{tests::Preferred(directory / "sub/")});
    Show();
    dialog->Accept("");
    EXPECT_EQ(answers.back(), directory / "") << "the one that is listed";
}

TEST_F(FileDialogTest, NamesThatTheFieldCannotShowAreKept)
{
    // Greek has no glyphs here; on Linux a name need not even be UTF-8.
    string const name = file_system::GetVolumeSeparator() == 0 ? "zz \xce\xb1\xff" : "zz \xce\xb1";
    std::ofstream(file_system::GetStreamPath(directory / "" + name)) << "text";
    Show();
    EXPECT_EQ(Listed().back(), name);
    Type({e_key_arrow_down, e_key_end});
    EXPECT_NE(NameField().GetText(), name);
    NameField().RequestKeyboardFocus();
    desk.TypeKey(e_key_enter);
    EXPECT_EQ(answers, Names{directory / "" + name});
}

TEST_F(FileDialogTest, ActionsMayShowTheNextDialog)
{
    params.action = [this](string const &name)
    {
        answers.push_back(name);
        EXPECT_EQ(dialog.Get(), nullptr);
        params.action = nullptr;
        Show();
    };
    Show();
    dialog->Accept("gamma");
    ASSERT_NE(dialog.Get(), nullptr);
    EXPECT_EQ(desk.manager.GetModalTarget(), dialog.Get());
    EXPECT_TRUE(NameField().IsFocused());
    dialog->Accept("gamma");
    EXPECT_EQ(dialog.Get(), nullptr);
    EXPECT_EQ(answers.size(), 1U);
}

} // namespace
} // namespace quillmarsh::widgets
