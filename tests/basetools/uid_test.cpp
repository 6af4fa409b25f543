#include <quillmarsh/basetools/uid.h>

#include <quillmarsh/basetools/serializer_parameters.h>
#include <quillmarsh/basetools/winutils.h>

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{
namespace
{

TEST(UID, PrintsFourWordsInUpperCaseHexadecimal)
{
    std::ostringstream out;
    out << UID(0xdeadbeef, 1, ~0u, 0x12345678);
    EXPECT_EQ(out.str(), "[DEADBEEF-00000001-FFFFFFFF-12345678]");
}

TEST(UID, ComparesEveryWord)
{
    unsigned int const words[] = {1, 2, 3, 4};
    UID const uid(words);
    EXPECT_TRUE(uid == UID(1, 2, 3, 4));
    for (unsigned int i = 0; i < 4; ++i)
    {
        UID other = uid;
        other[i] += 1;
        EXPECT_TRUE(uid != other);
    }
}

TEST(UID, StreamsItsWordsInTheByteOrderOfTheStream)
{
    serializer_parameters::OutputStreamByteOrderSentry const outOrder(true);
    serializer_parameters::InputStreamByteOrderSentry const inOrder(true);
    // The same identifier in both forms: its big-endian bytes follow its digits.
    UID const uid(0x01020304, 0x05060708, 0x090a0b0c, 0x0d0e0f10);
    std::stringstream uidBytes, guidBytes;
    uidBytes <= uid;
    guidBytes <= win_utils::Guid(uid);
    EXPECT_EQ(uidBytes.str(), "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c\x0d\x0e\x0f\x10");
    EXPECT_EQ(guidBytes.str(), uidBytes.str());

    UID readUid(0, 0, 0, 0);
    win_utils::Guid readGuid;
    uidBytes >= readUid;
    guidBytes >= readGuid;
    EXPECT_TRUE(readUid == uid);
    EXPECT_TRUE(readGuid == win_utils::Guid(uid));
}

TEST(UID, GuidKeepsItsBlockOfBytesInEitherOrder)
{
    serializer_parameters::OutputStreamByteOrderSentry const outOrder(false);
    std::ostringstream bytes;
    bytes <= win_utils::Guid(UID(0x01020304, 0x05060708, 0x090a0b0c, 0x0d0e0f10));
    EXPECT_EQ(bytes.str(), "\x04\x03\x02\x01\x06\x05\x08\x07\x09\x0a\x0b\x0c\x0d\x0e\x0f\x10");
}

} // namespace
} // namespace quillmarsh
