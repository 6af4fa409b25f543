#include <quillmarsh/dataobjects/sampleformats.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using namespace sample_formats;

TEST(SampleFormats, NamesGoBothWaysAndFoldCase)
{
    for (unsigned int const code : {0x01000001, 0x01000002, 0x02000001, 0x02000010, 0x02000020, 0x04000002})
        EXPECT_EQ(MapNameToSampleFormat(MapSampleFormatToName(code)), code);
    EXPECT_EQ(MapSampleFormatToName(0x02000020), "A1R5G5B5");
    EXPECT_EQ(MapNameToSampleFormat("x8r8G8b8"), 0x04000001u);
    for (char const *const stranger : {"", "R8G8B8", "A8 ", "unknown", "FP32NormL"})
        EXPECT_EQ(MapNameToSampleFormat(stranger), 0u) << stranger;
    for (unsigned int const nameless : {0u, 0x04001001u, 0x04001002u, 0x04000003u, unsigned{UnknownSampleFormat(4)}})
        EXPECT_EQ(MapSampleFormatToName(nameless), "unknown") << nameless;
}

} // namespace
} // namespace quillmarsh
