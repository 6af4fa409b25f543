#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{

template<typename T>
class Holder
{
};
namespace inner
{
class Nested
{
};
} // namespace inner

namespace
{

using platform::eDialogAnswer;
using tests::ScriptedDialogs;

TEST(Diagnostics, NamesAreReadable)
{
    EXPECT_EQ(GetTypeName(typeid(Holder<inner::Nested>)), "Holder<inner::Nested>");
    EXPECT_EQ(GetTypeName(typeid(string)), "string");
    EXPECT_EQ(GetTypeName(typeid(unsigned int)), "unsigned int");
    for (char const *const name : {"class ", "struct ", "classy X", "class"})
        EXPECT_EQ(FormatClassName(name), name);
    EXPECT_EQ(FormatClassName("struct class X"), "class X");
    EXPECT_EQ(FormatObjectName("class X", reinterpret_cast<void *>(0x1f)), "X@0x1f");
    EXPECT_EQ(FormatSourceCodeLocation("a\\b.cpp", 7, false), "a\\b.cpp(7)");
    EXPECT_EQ(FormatSourceCodeLocation("a\\b.cpp", 7, true), "a/b.cpp(7)");
}

TEST(Diagnostics, AnswersOfTheAssertionDialog)
{
    ScriptedDialogs dialogs({eDialogAnswer::e_retry, eDialogAnswer::e_abort, eDialogAnswer::e_ignore});
    bool ignoreAlways = false;
    EXPECT_FALSE(ShowDialogAbortRetryIgnore(ignoreAlways, 1, "Title", "Broken", "a.cpp", 3));
    EXPECT_TRUE(ShowDialogAbortRetryIgnore(ignoreAlways, 2, "Title", "Broken", "a.cpp", 3));
    EXPECT_FALSE(ignoreAlways || ShowDialogAbortRetryIgnore(ignoreAlways, 3, "Title", "Broken", "a.cpp", 3));
    EXPECT_TRUE(ignoreAlways);
    EXPECT_FALSE(ShowDialogAbortRetryIgnore(ignoreAlways, 1, "Title", "Broken", "a.cpp", 3));

    std::vector<platform::DialogRequest> const requests = dialogs.TakeRequests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0].title + "/" + requests[0].text, "Title/@ a.cpp(3)\n! Broken");
    EXPECT_EQ(requests[0].buttons, platform::eDialogButtons::e_abortRetryIgnore);
    EXPECT_EQ(requests[0].defaultAnswer, eDialogAnswer::e_abort);
    EXPECT_EQ(requests[1].defaultAnswer, eDialogAnswer::e_retry);
    EXPECT_EQ(requests[2].defaultAnswer, eDialogAnswer::e_ignore);
}

TEST(Diagnostics, PlainDialogs)
{
    ScriptedDialogs dialogs({eDialogAnswer::e_cancel, eDialogAnswer::e_ok, eDialogAnswer::e_ok});
    EXPECT_TRUE(ShowDialogCancelOk(1, "T", "text"));
    EXPECT_FALSE(ShowDialogCancelOk(2, "T", "text"));
    ShowDialogOk("T", "text");
    std::vector<platform::DialogRequest> const requests = dialogs.TakeRequests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0].defaultAnswer, eDialogAnswer::e_ok);
    EXPECT_EQ(requests[1].defaultAnswer, eDialogAnswer::e_cancel);
    EXPECT_EQ(requests[2].buttons, platform::eDialogButtons::e_ok);
}

/// Fails an assertion and a verification, each at a different place.
int Fail()
{
    int numActions = 0;
    QUILLMARSH_ASSERT(numActions == 1, "asserted");
    QUILLMARSH_VERIFY(++numActions == 2, "verified");
    return numActions;
}

TEST(Diagnostics, IgnoreSilencesOnePlaceAndRetryNone)
{
    ScriptedDialogs dialogs({eDialogAnswer::e_ignore, eDialogAnswer::e_retry, eDialogAnswer::e_ignore});
    EXPECT_EQ(Fail(), 1);
    std::vector<platform::DialogRequest> const requests = dialogs.TakeRequests();
#if QUILLMARSH_ASSERTIONS
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].title, "Assert Failed");
    EXPECT_EQ(requests[1].title, "Verify Failed");
    EXPECT_EQ(requests[0].text.rfind("@ tests/basetools/diagnostics_test.cpp(", 0), 0u);
    Fail();
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"verified"});
    Fail();
    EXPECT_TRUE(dialogs.TakeTexts().empty());
#else
    EXPECT_TRUE(requests.empty());
#endif
}

TEST(Diagnostics, PrintsTypeSizes)
{
    std::ostringstream out;
    bool const allFit = CheckBuiltInTypeSizes(out);
    EXPECT_EQ(allFit, sizeof(long) == 4);
    EXPECT_EQ(out.str(), allFit ? ""
                                : "long has size 8 byte(s). Expected 4 byte(s).\n"
                                  "unsigned long has size 8 byte(s). Expected 4 byte(s).\n");
}

TEST(Exception, DescriptionHasOnlyTheRequestedParts)
{
    Exception full;
    full.SetMessage("It broke");
    full.SetFileLine("source/a.cpp", 7);
    EXPECT_EQ(full.MakeDescription(), "Exception\n@ source/a.cpp(7)\n! It broke");
    EXPECT_EQ(full.MakeDescription(true, false, true), "Exception\n! It broke");
    EXPECT_EQ(full.MakeDescription(false, true, true), "source/a.cpp(7)\n! It broke");
    EXPECT_EQ(full.MakeDescription(false, true, false), "source/a.cpp(7)");
    EXPECT_EQ(full.MakeDescription(true, true, false), "Exception\n@ source/a.cpp(7)");
    VideoRendererException empty;
    EXPECT_EQ(empty.MakeDescription(true) + empty.MakeDescription(false), "VideoRendererException");
    // An empty message counts as present.
    empty.SetMessage("");
    EXPECT_EQ(empty.MakeDescription(), "VideoRendererException\n! ");
}

TEST(Exception, ThrowCarriesMessageAndPlaceThroughTheRootClass)
{
    unsigned int const line = __LINE__ + 3;
    try
    {
        QUILLMARSH_THROW(HIDException, string("No ") + "device");
    }
    catch (Exception const &exception)
    {
        EXPECT_EQ(exception.MakeDescription(),
                  "HIDException\n@ tests/basetools/diagnostics_test.cpp(" + std::to_string(line) + ")\n! No device");
        return;
    }
    FAIL();
}

} // namespace
} // namespace quillmarsh
