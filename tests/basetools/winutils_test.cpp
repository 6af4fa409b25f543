#include <quillmarsh/basetools/windows/winutils.h>

#include <quillmarsh/basetools/serializer_parameters.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace quillmarsh::win_utils
{
namespace
{

TEST(UID, PrintsFourWordsInUpperCaseHexadecimal)
{
    EXPECT_EQ(UID(0xdeadbeef, 1, ~0u, 0x12345678).ToString(), "[DEADBEEF-00000001-FFFFFFFF-12345678]");
}

TEST(UID, ComparesEveryWord)
{
    unsigned int const words[] = {1, 2, 3, 4};
    EXPECT_TRUE(UID(words) == UID(1, 2, 3, 4));
    for (UID const &other : {UID(9, 2, 3, 4), UID(1, 9, 3, 4), UID(1, 2, 9, 4), UID(1, 2, 3, 9)})
        EXPECT_TRUE(UID(words) != other) << other;
}

TEST(UID, StreamsItsWordsInTheByteOrderOfTheStream)
{
    serializer_parameters::OutputStreamByteOrderSentry const outOrder(true);
    serializer_parameters::InputStreamByteOrderSentry const inOrder(true);
    // The same identifier in both forms: its big-endian bytes follow its digits.
    UID const uid(0x01020304, 0x05060708, 0x090a0b0c, 0x0d0e0f10);
    std::stringstream uidBytes, guidBytes;
    uidBytes <= uid;
    guidBytes <= Guid(uid);
    EXPECT_EQ(uidBytes.str(), "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c\x0d\x0e\x0f\x10");
    EXPECT_EQ(guidBytes.str(), uidBytes.str());

    UID readUid(0, 0, 0, 0);
    Guid readGuid;
    uidBytes >= readUid;
    guidBytes >= readGuid;
    EXPECT_TRUE(readUid == uid && readGuid == Guid(uid));
}

TEST(UID, GuidKeepsItsBlockOfBytesInEitherOrder)
{
    serializer_parameters::OutputStreamByteOrderSentry const outOrder(false);
    std::ostringstream bytes;
    bytes <= Guid(UID(0x01020304, 0x05060708, 0x090a0b0c, 0x0d0e0f10));
    EXPECT_EQ(bytes.str(), "\x04\x03\x02\x01\x06\x05\x08\x07\x09\x0a\x0b\x0c\x0d\x0e\x0f\x10");
}

TEST(Guid, PrintsTheDigitsOfItsUid)
{
    // 01234567-89AB-CDEF-FEDC-BA9876543210 in the usual form of a GUID.
    Guid const guid(_GUID{0x01234567, 0x89ab, 0xcdef, {0xfe, 0xdc, 0xba, 0x98, 0x76, 0x54, 0x32, 0x10}});
    std::ostringstream out;
    out << guid;
    EXPECT_EQ(out.str(), "[01234567-89ABCDEF-FEDCBA98-76543210]");

    UID uid;
    guid.CopyTo(uid);
    EXPECT_TRUE(uid == UID(0x01234567, 0x89abcdef, 0xfedcba98, 0x76543210) && Guid(uid) == guid && Guid(uid) != Guid());
    Guid().CopyTo(uid);
    EXPECT_TRUE(uid == UID(0, 0, 0, 0));
}

TEST(Point, RectangleHoldsItsLeftAndTopEdgesOnly)
{
    EXPECT_TRUE(Point(-2, 3).HitTestRectangle(-2, 3, 0, 4));
    EXPECT_FALSE(Point(0, 3).HitTestRectangle(-2, 3, 0, 4) || Point(-2, 4).HitTestRectangle(-2, 3, 0, 4));
    EXPECT_FALSE(Point(1, 1).HitTestRectangle(1, 1, 1, 1));
    Point point(1, 2);
    point += Point(10, 20);
    EXPECT_EQ(point - Point(1, 1), Point(10, 21));
    EXPECT_EQ(-point, Point(-11, -22));
}

TEST(Color4b, IsStoredFromBlueToAlpha)
{
    color4b const color(1, 2, 3, 4);
    unsigned char const *const bytes = color.ToPtr();
    EXPECT_EQ((std::vector<unsigned char>(bytes, bytes + 4)), (std::vector<unsigned char>{3, 2, 1, 4}));
    EXPECT_EQ(static_cast<unsigned int>(color), 0x04010203u);
    EXPECT_TRUE(color.FlippedRGBOrder() == color4b(3, 2, 1, 4));
    color4b flipped = color;
    flipped.FlipRGBOrder();
    EXPECT_TRUE(flipped == color.FlippedRGBOrder());
    color4b word;
    word = 0x04010203u;
    EXPECT_TRUE(word == color && word != color4b(1, 2, 3, 5));
}

TEST(WinUtils, SystemColoursAreOpaqueAndTextCanBeRead)
{
    for (int i = 0; i <= static_cast<int>(eSystemColor::e_infoText); ++i)
        EXPECT_EQ(GetSystemColor(static_cast<eSystemColor>(i)).a, 255);
    EXPECT_TRUE(GetSystemColor(eSystemColor::e_window) != GetSystemColor(eSystemColor::e_windowText));
    EXPECT_TRUE(GetSystemColor(static_cast<eSystemColor>(-1)) == color4b(0, 0, 0, 255));
}

TEST(WinUtils, FontFamiliesAreSortedAndUnique)
{
    GdiplusGuard const drawing;
    std::vector<string> names = {"old"};
    ASSERT_TRUE(GdiplusGetFontFamilyNames(names));
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_EQ(std::set<string>(names.begin(), names.end()).size(), names.size());
    EXPECT_EQ(std::count(names.begin(), names.end(), "old"), 0);
}

} // namespace
} // namespace quillmarsh::win_utils
