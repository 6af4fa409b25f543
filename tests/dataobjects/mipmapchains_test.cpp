#include <quillmarsh/dataobjects/mipmapchains.h>
#include <quillmarsh/dataobjects/volumeoperations.h>

#include "tests/support/sample_blocks.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillmarsh
{
namespace
{

using tests::BytesOf;

template<typename Container, typename... Dimensions>
AutoPtr<Container const> Make(eSampleFormat format, Dimensions... dimensions)
{
    auto container = std::make_unique<Container>(format, dimensions...);
    for (unsigned int i = 0; i < container->GetTotalByteSize(); ++i)
        container->GetSamplesB()[i] = static_cast<unsigned char>(i * i * 31 + i * 7);
    return container;
}

class MipmapChains : public testing::Test
{
    SignalOperationsManager manager_;
};

TEST_F(MipmapChains, CountLevelsInWholeNumbers)
{
    struct Probe : MipmapChain
    {
        Probe() : MipmapChain(e_format_L8) {}
        using MipmapChain::SetMaxDimension;
    } probe;
    EXPECT_EQ(probe.GetNumLevels(), 0u);
    for (unsigned int k = 0; k < 32; ++k)
    {
        probe.SetMaxDimension(1u << k);
        EXPECT_EQ(probe.GetNumLevels(), k + 1);
        probe.SetMaxDimension((1u << k) - 1);
        EXPECT_EQ(probe.GetNumLevels(), k);
        EXPECT_EQ(MipmapChain::ComputeDimensionAtLevel(k, 1u << 31), 1u << (31 - k));
    }
    EXPECT_EQ(MipmapChain::ComputeDimensionAtLevel(3, 5), 1u);
    EXPECT_EQ(MipmapChain::ComputeDimensionAtLevel(2, 13), 3u);
    EXPECT_EQ(MipmapChain::ComputeDimensionAtLevel(32, 0xFFFFFFFF), 1u);
}

TEST_F(MipmapChains, DropTheirOldLevels)
{
    ImageMipmapChain images(e_format_A8R8G8B8);
    for (unsigned int const numColumns : {8u, 2u})
        ASSERT_TRUE(images.Build(*Make<Image<Sample32>>(e_format_A8R8G8B8, 2, numColumns), true));
    EXPECT_EQ(images.GetNumLevels(), 2u);
    EXPECT_EQ(images.GetLevel(1).GetNumColumns(), 1u);
}

TEST_F(MipmapChains, BorrowOrCopyTheSource)
{
    // These two formats have no transfer, and need none.
    auto const source = Make<Image<Sample16>>(e_format_A1R5G5B5, 4, 4);
    ImageMipmapChain borrowing(e_format_A1R5G5B5), copying(e_format_A1R5G5B5);
    ASSERT_TRUE(borrowing.Build(*source, false));
    ASSERT_TRUE(copying.Build(*source, true));
    EXPECT_EQ(&borrowing.GetLevel(0), source.get());
    EXPECT_NE(&copying.GetLevel(0), source.get());
    for (unsigned int i = 0; i < 3; ++i)
        EXPECT_EQ(BytesOf(copying.GetLevel(i)), BytesOf(borrowing.GetLevel(i)));
    borrowing.Clear();
    EXPECT_EQ(borrowing.GetNumLevels(), 0u);

    SignalMipmapChain single(e_format_L8);
    auto const sample = Make<Signal<Sample8>>(e_format_L8, 1);
    ASSERT_TRUE(single.Build(*sample, false));
    EXPECT_EQ(single.GetNumLevels(), 1u);
    EXPECT_EQ(&single.GetLevel(0), sample.get());
    EXPECT_EQ(single.GetSampleFormat(), e_format_L8);
}

TEST_F(MipmapChains, AreEmptyAfterAFailure)
{
    tests::ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    SignalMipmapChain noTransfer(e_format_A1R5G5B5), noContainer(sample_formats::UnknownSampleFormat(5)),
        noFilter(sample_formats::UnknownSampleFormat(1));
    auto const unknown = Make<Signal<Sample8>>(sample_formats::UnknownSampleFormat(1), 2);
    ASSERT_TRUE(noTransfer.Build(*Make<Signal<Sample16>>(e_format_A1R5G5B5, 4), true));
    for (SignalMipmapChain *const chain : {&noTransfer, &noContainer, &noFilter})
    {
        EXPECT_FALSE(chain->Build(*unknown, true));
        EXPECT_EQ(chain->GetNumLevels(), 0u);
        EXPECT_EQ(chain->GetLevel(0).GetNumSamples(), 0u);
        EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Level-index out of range."});
    }
}

TEST_F(MipmapChains, CutOffSizesThatAreNoPowersOfTwo)
{
    tests::ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    VolumeMipmapChain chain(e_format_L8);
    EXPECT_TRUE(chain.Build(*Make<Volume<Sample8>>(e_format_L8, 3, 4, 5), true));
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>(2, "Dimension is not power-of-2."));
    ASSERT_EQ(chain.GetNumLevels(), 3u);
    EXPECT_EQ(chain.GetLevel(1).GetNumColumns(), 2u);
    EXPECT_EQ(chain.GetLevel(2).GetNumSamples(), 1u);
}

} // namespace
} // namespace quillmarsh
