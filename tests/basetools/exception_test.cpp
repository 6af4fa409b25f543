#include <quillmarsh/basetools/exception.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

Exception MakeFull()
{
    Exception exception;
    exception.SetMessage("It broke");
    exception.SetFileLine("source/a.cpp", 7);
    return exception;
}

TEST(Exception, DescriptionHasOnlyTheRequestedParts)
{
    Exception const full = MakeFull();
    EXPECT_EQ(full.MakeDescription(), "Exception\n@ source/a.cpp(7)\n! It broke");
    EXPECT_EQ(full.MakeDescription(true, false, true), "Exception\n! It broke");
    EXPECT_EQ(full.MakeDescription(false, true, true), "source/a.cpp(7)\n! It broke");
    EXPECT_EQ(full.MakeDescription(false, true, false), "source/a.cpp(7)");
    EXPECT_EQ(full.MakeDescription(true, true, false), "Exception\n@ source/a.cpp(7)");

    Exception const empty;
    EXPECT_EQ(empty.MakeDescription(false), "");
    EXPECT_EQ(empty.MakeDescription(true), "Exception");
}

TEST(Exception, EmptyMessageCountsAsPresent)
{
    VideoRendererException exception;
    exception.SetMessage("");
    EXPECT_TRUE(exception.ContainsMessage());
    EXPECT_EQ(exception.MakeDescription(), "VideoRendererException\n! ");
}

TEST(Exception, ThrowCarriesMessageAndPlaceThroughTheRootClass)
{
    unsigned int const line = __LINE__ + 3;
    try
    {
        QUILLMARSH_THROW(HIDException, string("No ") + "device");
        FAIL();
    }
    catch (Exception const &exception)
    {
        EXPECT_EQ(exception.GetClassName(), "HIDException");
        EXPECT_EQ(exception.GetMessage(), "No device");
        EXPECT_EQ(exception.GetFile(), "tests/basetools/exception_test.cpp");
        EXPECT_EQ(exception.GetLine(), line);
    }
}

} // namespace
} // namespace quillmarsh
