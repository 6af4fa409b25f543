#include <quillmarsh/basetools/serializer.h>

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <thread>

namespace quillmarsh
{
namespace
{

using serializer_parameters::InputStreamByteOrderSentry;
using serializer_parameters::OutputStreamByteOrderSentry;

template<typename T>
string Written(T const &value, bool bigEndian)
{
    OutputStreamByteOrderSentry const sentry(bigEndian);
    std::ostringstream out;
    out <= value;
    return out.str();
}

template<typename T>
T ReadFrom(string const &bytes, bool bigEndian, T value = T())
{
    InputStreamByteOrderSentry const sentry(bigEndian);
    std::istringstream in(bytes);
    in >= value;
    EXPECT_EQ(in.peek(), EOF);
    return value;
}

/// Checks writing and reading of a value in both byte orders, against its bytes in big-endian order.
template<typename T>
void CheckForm(T const &value, string const &bigEndian)
{
    string const littleEndian(bigEndian.rbegin(), bigEndian.rend());
    EXPECT_EQ(Written(value, true), bigEndian) << value;
    EXPECT_EQ(Written(value, false), littleEndian) << value;
    EXPECT_EQ(ReadFrom<T>(bigEndian, true), value);
    EXPECT_EQ(ReadFrom<T>(littleEndian, false), value);
}

/// Reads byte by byte, and counts the calls that ask for more than one byte.
class CountingBuffer : public std::stringbuf
{
public:
    using std::stringbuf::stringbuf;
    std::vector<std::streamsize> asked_;

protected:
    std::streamsize xsgetn(char *data, std::streamsize size) override
    {
        asked_.push_back(size);
        return std::stringbuf::xsgetn(data, size);
    }
};

TEST(Serializer, FormsOfNumbers)
{
    CheckForm<unsigned char>(0xfe, "\xfe");
    CheckForm<char>('a', "a");
    CheckForm<bool>(true, "\x01");
    CheckForm<bool>(false, string(1, '\0'));
    CheckForm<unsigned short>(0x1122, "\x11\x22");
    CheckForm<short>(-2, "\xff\xfe");
    CheckForm<unsigned int>(0x11223344, "\x11\x22\x33\x44");
    CheckForm<unsigned long>(0xfffefdfc, "\xff\xfe\xfd\xfc");
    CheckForm<long>(-4, "\xff\xff\xff\xfc");
    CheckForm<long>(0x7fffffff, "\x7f\xff\xff\xff");
    CheckForm<float>(-1.5f, string("\xbf\xc0\0\0", 4));
    CheckForm<double>(0.1, "\x3f\xb9\x99\x99\x99\x99\x99\x9a");
    EXPECT_TRUE(ReadFrom<bool>("\x07", true));
}

TEST(Serializer, IntIsReadInTheOrderOfTheMachine)
{
    EXPECT_EQ(Written<int>(0x11223344, true), "\x11\x22\x33\x44");
    EXPECT_EQ(ReadFrom<int>("\x11\x22\x33\x44", true), 0x44332211);
    EXPECT_EQ(ReadFrom<int>("\x11\x22\x33\x44", false), 0x44332211);
}

TEST(Serializer, LongThatDoesNotFitAssertsAndIsCut)
{
    if (sizeof(long) == 4)
        GTEST_SKIP() << "every long fits";
    tests::ScriptedDialogs dialogs;
    EXPECT_EQ(Written<unsigned long>(std::numeric_limits<unsigned long>::max() - 1, false), "\xfe\xff\xff\xff");
    EXPECT_EQ(Written<long>(std::numeric_limits<long>::min() + 1, false), string("\x01\0\0\0", 4));
    EXPECT_EQ(dialogs.TakeTexts().size(), 2u);
}

TEST(Serializer, FailedReadLeavesTheTarget)
{
    EXPECT_EQ(ReadFrom<unsigned int>("", true, 0x11223344), 0x11223344u);
    EXPECT_EQ(ReadFrom<long>("\x01\x02", true, -5), -5);
    EXPECT_TRUE(ReadFrom<bool>("", false, true));
    unsigned char data[4] = {1, 2, 3, 4};
    std::istringstream in("a");
    InputStreamByteOrderSentry const sentry(true);
    ReadByteBlocks(in, data, 2, 2);
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(data[3], 4);
}

TEST(Serializer, TextIsItsLengthAndItsBytes)
{
    string const bytes("a\0\xff", 3);
    EXPECT_EQ(Written<string>("", true), string(4, '\0'));
    EXPECT_EQ(Written(bytes, true), string("\0\0\0\3", 4) + bytes);
    EXPECT_EQ(ReadFrom<string>(string(4, '\0'), true, "old"), "");

    string const text(300, 'x');
    EXPECT_EQ(ReadFrom<string>(Written(text, true), true), text);
    CountingBuffer buffer(Written(text, false));
    std::istream in(&buffer);
    string read;
    in >= read;
    EXPECT_EQ(read, text);
    EXPECT_EQ(buffer.asked_, (std::vector<std::streamsize>{4, 128, 128, 44}));
}

TEST(Serializer, LengthBeyondTheStreamTakesNoMemory)
{
    for (std::size_t const numArrived : {0u, 100u, 1000u, 100000u})
    {
        std::istringstream in("\xff\xff\xff\xff" + string(numArrived, 'x'));
        string read = "old";
        in >= read;
        EXPECT_TRUE(in.fail());
        EXPECT_EQ(read, string(numArrived, 'x'));
        EXPECT_LE(read.capacity(), numArrived + 128);
    }
    EXPECT_EQ(ReadFrom<string>("\x05", false, "old"), "");
}

TEST(Serializer, BlocksKeepTheirOrder)
{
    char const data[] = "abcdefghijkl";
    OutputStreamByteOrderSentry const output(true);
    InputStreamByteOrderSentry const input(true);
    std::stringstream stream;
    WriteByteBlocks(stream, data, 4, 2);
    WriteByteBlocks(stream, data, 12, 1);
    WriteByteBlock(stream, data, 12);
    EXPECT_EQ(stream.str(), "dcbahgfelkjihgfedcbaabcdefghijkl");

    char read[12];
    ReadByteBlocks(stream, read, 4, 2);
    EXPECT_EQ(string(read, 8), "abcdefgh");
    ReadByteBlocks(stream, read, 12, 1);
    EXPECT_EQ(string(read, 12), data);
    serializer_parameters::SetInputStreamByteOrder(false);
    ReadByteBlocks(stream, read, 4, 3);
    EXPECT_EQ(string(read, 12), data);
}

TEST(SerializerParameters, SentriesRestoreInReverse)
{
    using namespace serializer_parameters;
    {
        OutputStreamByteOrderSentry const outer(true);
        {
            OutputStreamByteOrderSentry const inner;
            EXPECT_FALSE(IsOutputStreamByteOrderBigEndian() || IsFlippingOutput());
        }
        EXPECT_TRUE(IsOutputStreamByteOrderBigEndian() && IsFlippingOutput());
    }
    EXPECT_FALSE(IsOutputStreamByteOrderBigEndian());
}

TEST(SerializerParameters, SentryAppliesToItsThreadOnly)
{
    using namespace serializer_parameters;
    auto const onOtherThread = [](auto &&call) { std::thread(call).join(); };
    {
        OutputStreamByteOrderSentry const output(true);
        InputStreamByteOrderSentry const input(true);
        onOtherThread(
            []
            {
                EXPECT_FALSE(IsFlippingOutput() || IsFlippingInput());
                EXPECT_EQ(Written(1u, false), string("\1\0\0\0", 4));
                SetOutputStreamByteOrder(true);
            });
        // A setting made under a sentry applies to the sentry's thread only, and ends with the sentry.
        SetInputStreamByteOrder(false);
        EXPECT_TRUE(IsFlippingOutput() && !IsFlippingInput());
        SetInputStreamByteOrder(true);
        onOtherThread([] { EXPECT_FALSE(IsFlippingInput()); });
    }
    EXPECT_TRUE(IsFlippingOutput() && !IsFlippingInput());
    SetOutputStreamByteOrder(false);
    onOtherThread([] { EXPECT_FALSE(IsFlippingOutput()); });
}

} // namespace
} // namespace quillmarsh
