#include <quillmarsh/basetools/dynamiclinklibrary.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>

#include "source/platform/modules.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{
namespace
{

using tests::ScratchDirectory;
using tests::ScriptedDialogs;

constexpr char const *s_numbersFile = QUILLMARSH_TEST_MODULE_numbers;
constexpr char const *s_dependentFile = QUILLMARSH_TEST_MODULE_dependent;

/// Binds the module with the number, and records the calls of the hooks.
class Numbers : public DynamicLinkLibrary
{
public:
    explicit Numbers(bool wantsMissing = false) : DynamicLinkLibrary(s_numbersFile), wantsMissing_(wantsMissing) {}
    ~Numbers() override { Unload(); }

    int (*Get)() = nullptr;
    void (*Missing)() = nullptr;
    void (*Set)(int) = nullptr;
    std::vector<string> calls;

protected:
    void PostLoad() override { calls.push_back("PostLoad"); }
    void PreUnload() override { calls.push_back(Get ? "PreUnload, bound" : "PreUnload"); }
    void FillImportTable(DLLImportTable &table) override
    {
        calls.push_back("FillImportTable");
        table.Add("TestGetNumber", &Get);
        if (wantsMissing_)
            table.Add("TestMissing", &Missing);
        table.Add(DLLImportEntry("TestSetNumber", &Set));
    }
    void PostImport(bool allImported, unsigned int numImported) override
    {
        calls.push_back((allImported ? "PostImport all " : "PostImport some ") + std::to_string(numImported));
    }

private:
    bool wantsMissing_;
};

int ReadNumber(DynamicLinkLibrary const &library)
{
    auto const get = reinterpret_cast<int (*)()>(library.GetSymbolAddress("TestGetNumber"));
    return get ? get() : -1;
}

TEST(DynamicLinkLibrary, NameIsSplit)
{
    DynamicLinkLibrary const library(tests::Preferred("some/folder/lib.one.so"));
    EXPECT_EQ(library.GetPathName(), tests::Preferred("some/folder/"));
    EXPECT_EQ(library.GetFormattedName(true) + library.GetFormattedName(false), "[lib.one.so][lib.one]");
}

TEST(DynamicLinkLibrary, HooksRunInOrderAndOnlyWhenSomethingHappens)
{
    Numbers library;
    EXPECT_TRUE(library.Unload());
    EXPECT_EQ(library.GetSymbolAddress("TestGetNumber"), nullptr);
    ASSERT_TRUE(library.Load()) << library.GetLoadError();
    EXPECT_TRUE(library.Load());
    unsigned int numImported = 0;
    EXPECT_TRUE(library.ImportSymbols(&numImported));
    EXPECT_EQ(numImported, 2u);
    EXPECT_TRUE(library.ImportSymbols(nullptr));
    library.Set(5);
    EXPECT_EQ(library.Get(), 5);
    EXPECT_TRUE(library.Unload() && !library.IsLoaded() && library.Get == nullptr && library.Set == nullptr);
    EXPECT_EQ(library.calls, (std::vector<string>{"PostLoad", "FillImportTable", "PostImport all 2", "PostImport all 2",
                                                  "PreUnload, bound"}));
}

TEST(DynamicLinkLibrary, MissingSymbolDoesNotStopTheOthers)
{
    Numbers library(true);
    ASSERT_TRUE(library.Load());
    library.Missing = [] {};
    unsigned int numImported = 0;
    EXPECT_FALSE(library.ImportSymbols(&numImported));
    EXPECT_EQ(numImported, 2u);
    EXPECT_EQ(library.Missing, nullptr);
    EXPECT_EQ(library.calls.back(), "PostImport some 2");

    std::ostringstream out;
    library.DumpImportTable(out);
    EXPECT_EQ(out.str(), MakeString(reinterpret_cast<void *>(library.Get)) + "  |  TestGetNumber\n" +
                             "            |  TestMissing\n" + MakeString(reinterpret_cast<void *>(library.Set)) +
                             "  |  TestSetNumber\nImported 2 of 3 symbols.\n");
    library.ClearImportTable();
    EXPECT_TRUE(library.ImportSymbols(&numImported));
    EXPECT_EQ(numImported, 0u);
}

TEST(DynamicLinkLibrary, CopyHoldsAReferenceOfItsOwn)
{
    DynamicLinkLibrary original(s_numbersFile);
    ASSERT_TRUE(original.Load());
    reinterpret_cast<void (*)(int)>(original.GetSymbolAddress("TestSetNumber"))(7);
    {
        DynamicLinkLibrary const copy(original);
        EXPECT_EQ(copy.GetHandle(), original.GetHandle());
        EXPECT_EQ(copy.GetFileName(), original.GetFileName());
        DynamicLinkLibrary assigned;
        assigned = copy;
        EXPECT_TRUE(assigned.Unload());
    }
    EXPECT_EQ(ReadNumber(original), 7);

    DynamicLinkLibrary survivor(original);
    survivor = *&survivor;
    EXPECT_TRUE(original.Unload());
    EXPECT_EQ(ReadNumber(survivor), 7);
    EXPECT_TRUE(survivor.Unload());

    // The last reference has been released, so the module starts again from the beginning.
    ASSERT_TRUE(original.Load());
    EXPECT_EQ(ReadNumber(original), 0);
}

TEST(DynamicLinkLibrary, WithoutAutoUnloadTheModuleStays)
{
    HINSTANCE handle = nullptr;
    {
        DynamicLinkLibrary library(s_numbersFile);
        ASSERT_TRUE(library.Load());
        handle = library.GetHandle();
        reinterpret_cast<void (*)(int)>(library.GetSymbolAddress("TestSetNumber"))(9);
        library.SetAutoUnload(false);
    }
    DynamicLinkLibrary again(s_numbersFile);
    ASSERT_TRUE(again.Load());
    EXPECT_EQ(ReadNumber(again), 9);
    EXPECT_TRUE(platform::CloseModule(handle));
}

TEST(DynamicLinkLibrary, FailedLoadGivesTheReason)
{
    ScratchDirectory const scratch;
    string const noModule = scratch.Write("text.so", "This is a text, and no module at all.\n");
    for (string const &fileName : {scratch / "nowhere.so", noModule, string(s_dependentFile)})
    {
        DynamicLinkLibrary library(fileName);
        EXPECT_FALSE(library.Load() || library.IsLoaded());
        EXPECT_TRUE(MatchPrefix(library.GetLoadError(), fileName + ": ")) << library.GetLoadError();
        bool const namesMissing = library.GetLoadError().find("quillmarsh-test-absent") != string::npos;
        EXPECT_EQ(namesMissing, fileName == s_dependentFile) << library.GetLoadError();
    }
    EXPECT_FALSE(DynamicLinkLibrary().Load() || DynamicLinkLibrary(s_numbersFile + string("\0.so", 4)).Load());
}

TEST(DynamicLinkLibrary, BareNameIsNotLookedForInTheCurrentDirectory)
{
    DynamicLinkLibrary const full(tests::Preferred(s_numbersFile));
    string before;
    ASSERT_TRUE(file_system::GetProcessDirectory(before, false));
    ASSERT_TRUE(file_system::SetProcessDirectory(full.GetPathName()));
    DynamicLinkLibrary bare(full.GetBaseName() + "." + full.GetExtension());
    EXPECT_FALSE(bare.Load());
    EXPECT_TRUE(file_system::SetProcessDirectory(before));
}

#if QUILLMARSH_ASSERTIONS
TEST(DynamicLinkLibrary, MisuseAssertsAndGoesOn)
{
    ScriptedDialogs dialogs;
    Numbers library;
    unsigned int numImported = 9;
    EXPECT_FALSE(library.ImportSymbols(&numImported));
    EXPECT_EQ(numImported, 0u);
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"DLL is not loaded."});

    EXPECT_FALSE(DLLImportEntry("", nullptr).ImportFrom(library));
    EXPECT_EQ(dialogs.TakeTexts(), (std::vector<string>{"Invalid argument.", "Invalid argument."}));
}
#endif

} // namespace
} // namespace quillmarsh
