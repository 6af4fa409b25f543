#include <quillmarsh/dataobjects/sampleformats.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using namespace sample_formats;

TEST(SampleFormats, NamesGoBothWaysAndFoldCase)
{
    constexpr std::pair<unsigned int, char const *> named[] = {
        {0x01000001, "L8"},       {0x01000002, "A8"},       {0x02000001, "A8L8"},    {0x02000010, "A4R4G4B4"},
        {0x02000020, "A1R5G5B5"}, {0x04000001, "X8R8G8B8"}, {0x04000002, "A8R8G8B8"}};
    for (auto const &[code, name] : named)
    {
        EXPECT_EQ(MapSampleFormatToName(code), name);
        EXPECT_EQ(MapNameToSampleFormat(name), code);
    }
    EXPECT_EQ(MapNameToSampleFormat("x8r8G8b8"), 0x04000001u);
    for (char const *const stranger : {"", "R8G8B8", "A8 ", "unknown", "FP32NormL"})
        EXPECT_EQ(MapNameToSampleFormat(stranger), 0u) << stranger;
    for (unsigned int const nameless : {0u, 0x04001001u, 0x04001002u, 0x04000003u, unsigned{UnknownSampleFormat(4)}})
        EXPECT_EQ(MapSampleFormatToName(nameless), "unknown") << nameless;
}

TEST(SampleFormats, PackedFieldsKeepToTheirBits)
{
    PackedSample_UShort4444 nibbles{0x1234};
    EXPECT_EQ(nibbles.GetA(), 1u);
    EXPECT_EQ(nibbles.GetD(), 4u);
    nibbles.SetB(0xFA);
    EXPECT_EQ(nibbles.word, 0x1A34);

    PackedSample_UShort1555 word{0xFFFF};
    word.SetC(0);
    EXPECT_EQ(word.word, 0xFC1F);
    word.SetA(2);
    EXPECT_EQ(word.word, 0x7C1F);
}

} // namespace
} // namespace quillmarsh
