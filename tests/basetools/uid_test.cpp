#include <quillmarsh/basetools/uid.h>

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{
namespace
{

TEST(UID, PrintsFourWordsInUpperCaseHexadecimal)
{
    EXPECT_EQ(UID(0, 10, 0, 0).ToString(), "[00000000-0000000A-00000000-00000000]");
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

#if QUILLMARSH_ASSERTIONS
TEST(UID, IndexPastTheWordsAsserts)
{
    tests::ScriptedDialogs dialogs;
    UID const uid(7, 0, 0, 0);
    EXPECT_EQ(uid[4], 7u);
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Index out of range."});
}
#endif

} // namespace
} // namespace quillmarsh
