#include <quillmarsh/dataobjects/sampleprocessors.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quillmarsh
{
namespace
{

using namespace sample_processors;

using Byte = unsigned char;

unsigned int ByteOfFloat(float value)
{
    Byte byte = 0;
    CopyConverter_FP32Norm_To_UInt8().Process(&byte, reinterpret_cast<Byte const *>(&value));
    return byte;
}

float FloatOfByte(Byte byte)
{
    float value = 0;
    CopyConverter_UInt8_To_FP32Norm().Process(reinterpret_cast<Byte *>(&value), &byte);
    return value;
}

template<typename Converter, typename D, typename S>
D Convert(S word)
{
    D result{};
    Converter().Process(&result, &word);
    return result;
}

constexpr auto Pack4444 = Convert<CopyConverter_UInt8888_To_UShort4444, unsigned short, unsigned int>;
constexpr auto Pack1555 = Convert<CopyConverter_UInt8888_To_UShort1555, unsigned short, unsigned int>;
constexpr auto Unpack4444 = Convert<CopyConverter_UShort4444_To_UInt8888, unsigned int, unsigned short>;
constexpr auto Unpack1555 = Convert<CopyConverter_UShort1555_To_UInt8888, unsigned int, unsigned short>;

TEST(SampleConverters, FloatsRoundAndWrap)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr std::pair<float, unsigned int> cases[] = {
        {0.0f, 0},   {1.0f, 255},   {0.5f, 128},    {1.002f, 0},
        {1.5f, 127}, {-0.1f, 231},  {-1e-9f, 0},    {1e12f, 0},
        {-1e12f, 0}, {infinity, 0}, {-infinity, 0}, {std::numeric_limits<float>::quiet_NaN(), 0},
    };
    for (auto const &[value, wanted] : cases)
        EXPECT_EQ(ByteOfFloat(value), wanted) << value;
    for (unsigned int byte = 0; byte < 256; ++byte)
    {
        EXPECT_FLOAT_EQ(FloatOfByte(static_cast<Byte>(byte)), static_cast<float>(byte) / 255);
        EXPECT_EQ(ByteOfFloat(FloatOfByte(static_cast<Byte>(byte))), byte);
    }
    // The definition multiplies by the float just below 1/255; a division would give other results.
    EXPECT_EQ(FloatOfByte(3), 3 * 0x1.010102p-8f);
}

TEST(SampleConverters, LuminanceIsNearestExceptInTies)
{
    auto const luminance = [](Byte blue, Byte green, Byte red)
    {
        Byte const colour[] = {blue, green, red};
        Byte result = 0;
        CopyConverter_B8G8R8_To_L8().Process(&result, colour);
        return static_cast<int>(result);
    };
    for (int colour = 0; colour < 1 << 24; colour += 101)
    {
        auto const blue = static_cast<Byte>(colour), green = static_cast<Byte>(colour >> 8);
        auto const red = static_cast<Byte>(colour >> 16);
        int const thousandths = 114 * blue + 587 * green + 299 * red;
        int const expected = thousandths % 1000 == 500 ? luminance(blue, green, red) : (thousandths + 500) / 1000;
        ASSERT_EQ(luminance(blue, green, red), expected) << colour;
    }

    Byte spread[4] = {1, 2, 3, 4};
    Byte const value = 9;
    CopyConverter_L8_To_B8G8R8().Process(spread, &value);
    EXPECT_EQ(spread[0] + spread[1] + spread[2], 27);
    EXPECT_EQ(spread[3], 4);
}

TEST(SampleConverters, PackedWordsCutOffAndSpread)
{
    EXPECT_EQ(Pack4444(0xFF8F401Fu), 0xF841);
    EXPECT_EQ(Pack1555(0x80FF0708u), 0xFC01);
    EXPECT_EQ(Pack1555(0x7F000000u), 0);
    EXPECT_EQ(Unpack1555(0x8000 | 1 << 10 | 16 << 5 | 31), 0xFF0884FFu);
    for (unsigned int word = 0; word < 0x10000; ++word)
    {
        auto const packed = static_cast<unsigned short>(word);
        unsigned int const spread = Unpack4444(packed);
        for (unsigned int field = 0; field < 4; ++field)
            ASSERT_EQ(spread >> 8 * field & 255, (word >> 4 * field & 15) * 17);
        ASSERT_EQ(Pack4444(spread), packed);
        ASSERT_EQ(Pack1555(Unpack1555(packed)), packed);
        ASSERT_EQ(Unpack1555(packed) & 255, std::lround((word & 31) * 255 / 31.0));
    }
}

} // namespace
} // namespace quillmarsh
