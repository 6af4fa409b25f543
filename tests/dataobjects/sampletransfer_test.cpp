#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/sample_blocks.h"
#include "tests/support/scripted_dialogs.h"
#include <quillmarsh/basetools/exception.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace quillmarsh
{
namespace
{

using sample_formats::ExtractByteSize;
using sample_formats::UnknownSampleFormat;
using tests::BytesOf;
using tests::ScriptedDialogs;
using Texts = std::vector<string>;

constexpr eSampleFormat s_formats[] = {e_format_L8,       e_format_A8,        e_format_A8L8,
                                       e_format_A4R4G4B4, e_format_A1R5G5B5,  e_format_X8R8G8B8,
                                       e_format_A8R8G8B8, e_format_FP32NormL, e_format_FP32NormA};

/// One sample of each format, and the result in a destination sample that had the bytes 0xE0, 0xE1, 0xE2, 0xE3. The
/// colour 10, 20, 30 (blue, green, red) has the luminance 21.85.
struct Transfer
{
    unsigned int dst, src;
    std::array<int, 4> srcBytes;
    std::array<int, 4> dstBytes;
};

constexpr unsigned int L8 = 0x01000001, A8 = 0x01000002, A8L8 = 0x02000001, A4 = 0x02000010, A1 = 0x02000020,
                       X8 = 0x04000001, ARGB = 0x04000002, FL = 0x04001001, FA = 0x04001002;

constexpr Transfer s_transfers[] = {
    {L8, L8, {7}, {7}},
    {L8, A8, {7}, {7}},
    {L8, A8L8, {7, 8}, {7}},
    {L8, X8, {10, 20, 30, 40}, {22}},
    {L8, ARGB, {10, 20, 30, 40}, {22}},
    {L8, FL, {0, 0, 0x80, 0x3F}, {255}},
    {L8, FA, {0, 0, 0, 0x3F}, {128}},
    {A8, L8, {7}, {7}},
    {A8, A8, {7}, {7}},
    {A8, A8L8, {7, 8}, {8}},
    {A8, X8, {10, 20, 30, 40}, {22}},
    {A8, ARGB, {10, 20, 30, 40}, {40}},
    {A8L8, L8, {7}, {7, 0xE1}},
    {A8L8, A8, {7}, {0xE0, 7}},
    {A8L8, A8L8, {7, 8}, {7, 8}},
    {A8L8, X8, {10, 20, 30, 40}, {22, 0xE1}},
    {A8L8, ARGB, {10, 20, 30, 40}, {22, 40}},
    {A4, A4, {0x40, 0xF8}, {0x40, 0xF8}},
    {A4, X8, {0x10, 0x2F, 0x30, 0x4F}, {0x21, 0x43}},
    {A4, ARGB, {0x10, 0x2F, 0x30, 0x4F}, {0x21, 0x43}},
    {A1, X8, {0xFF, 0, 0x08, 0x80}, {0x1F, 0x84}},
    {A1, ARGB, {0xFF, 0, 0x08, 0x7F}, {0x1F, 0x04}},
    {X8, L8, {7}, {7, 7, 7, 0xE3}},
    {X8, A8, {7}, {7, 7, 7, 0xE3}},
    {X8, A8L8, {7, 8}, {7, 7, 7, 0xE3}},
    {X8, A4, {0x40, 0xF8}, {0x00, 0x44, 0x88, 0xFF}},
    {X8, A1, {0x1F, 0x84}, {0xFF, 0, 8, 0xFF}},
    {X8, X8, {1, 2, 3, 4}, {1, 2, 3, 4}},
    {X8, ARGB, {1, 2, 3, 4}, {1, 2, 3, 4}},
    {ARGB, L8, {7}, {7, 7, 7, 0xE3}},
    {ARGB, A8, {7}, {0xE0, 0xE1, 0xE2, 7}},
    {ARGB, A8L8, {7, 8}, {7, 7, 7, 8}},
    {ARGB, A4, {0x40, 0xF8}, {0x00, 0x44, 0x88, 0xFF}},
    {ARGB, A1, {0x1F, 0x04}, {0xFF, 0, 8, 0}},
    {ARGB, X8, {1, 2, 3, 4}, {1, 2, 3, 4}},
    {ARGB, ARGB, {1, 2, 3, 4}, {1, 2, 3, 4}},
    {FL, L8, {255}, {0, 0, 0x80, 0x3F}},
    {FA, L8, {0}, {0, 0, 0, 0}},
};

/// Makes a signal of equal samples.
AutoPtr<SignalBase> MakeSignal(unsigned int format, unsigned int numSamples, std::array<int, 4> bytes)
{
    AutoPtr<SignalBase> signal(ManufactureSignal(static_cast<eSampleFormat>(format), numSamples));
    for (unsigned int i = 0; i < signal->GetTotalByteSize(); ++i)
        signal->GetSamplesB()[i] = static_cast<unsigned char>(bytes[i % signal->GetSampleByteSize()]);
    return signal;
}

class SampleTransfer : public testing::Test
{
protected:
    SignalOperationsManager manager_;
};

TEST_F(SampleTransfer, EveryPairDoesItsWorkAndThereAreNoOthers)
{
    for (Transfer const &pair : s_transfers)
    {
        SCOPED_TRACE(testing::Message() << std::hex << pair.dst << " from " << pair.src);
        AutoPtr<SignalBase> const src = MakeSignal(pair.src, 67, pair.srcBytes);
        AutoPtr<SignalBase> const dst = MakeSignal(pair.dst, 67, {0xE0, 0xE1, 0xE2, 0xE3});
        EXPECT_TRUE(TransferSamples1D(*dst, *src, false));
        EXPECT_EQ(BytesOf(*dst), BytesOf(*MakeSignal(pair.dst, 67, pair.dstBytes)));
    }
    for (eSampleFormat const dst : s_formats)
        for (eSampleFormat const src : s_formats)
        {
            bool const isListed = std::any_of(std::begin(s_transfers), std::end(s_transfers),
                                              [&](Transfer const &pair) { return pair.dst == dst && pair.src == src; });
            EXPECT_EQ(manager_.IsTransferSupported(dst, src), isListed) << std::hex << dst << " from " << src;
        }
    EXPECT_EQ(std::size(s_transfers), 38u);
}

TEST_F(SampleTransfer, UnsupportedPairChangesNothing)
{
    Signal<Sample16> const src(e_format_A1R5G5B5, 4);
    AutoPtr<SignalBase> const dst = MakeSignal(e_format_A1R5G5B5, 2, {1, 2});
    EXPECT_FALSE(TransferSamples1D(*dst, src, true));
    EXPECT_EQ(BytesOf(*dst), BytesOf(*MakeSignal(e_format_A1R5G5B5, 2, {1, 2})));
}

TEST_F(SampleTransfer, ResizesInTheShapeOfTheSource)
{
    Image<Sample32> const picture(e_format_A8R8G8B8, 3, 5);
    Image<Sample8> image(e_format_A8, 0, 0);
    EXPECT_TRUE(TransferSamples2D(image, picture, true));
    EXPECT_TRUE(image.CheckDimensionMatch(picture));
    // Converted to a signal, a picture becomes one row.
    EXPECT_TRUE(TransferSamples1D(image, Signal<Sample8>(e_format_L8, 4), true));
    EXPECT_TRUE(image.GetNumRows() == 1 && image.GetNumColumns() == 4);

    Volume<Sample8> const block(e_format_L8, 2, 3, 4);
    Volume<Sample32> volume(e_format_X8R8G8B8, 0, 0, 0);
    EXPECT_TRUE(TransferSamples3D(volume, block, true));
    EXPECT_TRUE(volume.CheckDimensionMatch(block));

    unsigned char bytes[15];
    ImageBaseFromExternalStorageAdapter adapter(e_format_A8);
    adapter.SetExternalStorage(bytes, 3, 5);
    EXPECT_TRUE(TransferSamples2D(adapter, picture, false));
    EXPECT_THROW(TransferSamples2D(adapter, picture, true), InvalidUsageException);
}

TEST_F(SampleTransfer, MismatchAssertsAndGoesOnToTheHandler)
{
    class Counting : public SignalOperationsManager::TransferSamplesHandler
    {
    public:
        void Handle(SignalBase &, SignalBase const &) override { ++numCalls; }
        int numCalls = 0;
    } handler;
    manager_.RegisterTransferHandler(e_format_L8, e_format_L8, handler);
    EXPECT_EQ(manager_.GetTransferHandler(e_format_L8, e_format_L8), &handler);

    ScriptedDialogs dialogs;
    Image<Sample8> dst(e_format_L8, 2, 3);
    EXPECT_TRUE(TransferSamples2D(dst, Image<Sample8>(e_format_L8, 3, 2), false));
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Dimensions mismatch."});
    EXPECT_TRUE(TransferSamples1D(dst, Signal<Sample8>(e_format_L8, 5), false));
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Sample-count mismatch."});
    EXPECT_EQ(handler.numCalls, 2);

    manager_.UnregisterTransferHandler(e_format_L8, e_format_L8);
    manager_.UnregisterTransferHandler(e_format_L8, e_format_L8);
    EXPECT_FALSE(TransferSamples1D(dst, dst, false));
    manager_.UnregisterAllTransferHandlers();
    EXPECT_EQ(manager_.GetTransferHandler(e_format_A8, e_format_A8), nullptr);
}

TEST_F(SampleTransfer, ConversionChangesTheTagOfFourPairs)
{
    for (eSampleFormat const current : s_formats)
        for (eSampleFormat const target : s_formats)
        {
            AutoPtr<SignalBase> const signal = MakeSignal(current, 2, {1, 2, 3, 4});
            // Formats of bytes are compatible with each other, and so are formats of colours.
            std::pair const pair = std::minmax({unsigned{current}, unsigned{target}});
            bool const isPossible = current == target || pair == std::pair(L8, A8) || pair == std::pair(X8, ARGB);
            EXPECT_EQ(ConvertSamples(*signal, target), isPossible);
            EXPECT_EQ(signal->GetSampleFormat(), isPossible ? target : current);
            EXPECT_EQ(manager_.IsConversionSupported(target, current), isPossible && current != target);
            EXPECT_EQ(BytesOf(*signal), BytesOf(*MakeSignal(current, 2, {1, 2, 3, 4})));
        }
}

TEST_F(SampleTransfer, CopiesOfPartsCheckTheirOffsets)
{
    ScriptedDialogs dialogs;
    auto const bytes = [](unsigned int size, unsigned int count = 0)
    { return AutoPtr<SignalBase>(ManufactureSignal(UnknownSampleFormat(size), count)); };
    // Containers without samples: after the assertions there is nothing to process, so the element loop asserts too.
    auto const texts = [&dialogs]
    {
        Texts shown = dialogs.TakeTexts();
        std::erase(shown, "Invalid argument.");
        return shown;
    };

    CopySamples_NBytes(*bytes(4), 0, *bytes(2), 0, 3);
    EXPECT_EQ(texts(), Texts{"Num-bytes-per-sample out of range."});
    CopySamples_NBytes(*bytes(4), 3, *bytes(2), 1, 2);
    EXPECT_EQ(texts(), (Texts{"Destination-byte-offset out of range.", "Source-byte-offset out of range."}));
    CopySamples_3BytesBGRTo1ByteL(*bytes(1), 1, *bytes(4), 2);
    EXPECT_EQ(texts(), (Texts{"Destination-L-offset out of range.", "Source-BGR-offset out of range."}));
    CopySamples_1ByteLTo3BytesBGR(*bytes(2), 0, *bytes(1), 1);
    EXPECT_EQ(texts(), (Texts{"Source-L-offset out of range.", "Destination-BGR-offset out of range."}));

    using Copy = void (*)(SignalBase &, SignalBase const &);
    constexpr Copy converters[] = {CopySamples_UInt8888_To_UShort4444, CopySamples_UShort4444_To_UInt8888,
                                   CopySamples_UInt8888_To_UShort1555, CopySamples_UShort1555_To_UInt8888,
                                   CopySamples_FP32Norm_To_UInt8,      CopySamples_UInt8_To_FP32Norm};
    constexpr unsigned int sizes[][2] = {{2, 4}, {4, 2}, {2, 4}, {4, 2}, {1, 4}, {4, 1}};
    for (std::size_t i = 0; i < std::size(converters); ++i)
    {
        converters[i](*bytes(sizes[i][0]), *bytes(sizes[i][1]));
        EXPECT_EQ(texts(), Texts{}) << i;
    }
    CopySamples_FP32Norm_To_UInt8(*bytes(2), *bytes(2));
    EXPECT_EQ(texts(), (Texts{"Invalid destination-sample-size.", "Invalid source-sample-size."}));
}

TEST(SignalOperationsManagerSingleton, AssertsWhenItExistsTwiceOrNotAtAll)
{
    ScriptedDialogs dialogs;
    {
        SignalOperationsManager first;
        EXPECT_EQ(&SignalOperationsManager::Instance(), SignalOperationsManager::InstancePtr());
        SignalOperationsManager second;
        EXPECT_EQ(dialogs.TakeTexts(), Texts{"SignalOperationsManager singleton already created."});
    }
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Destructing non-existent SignalOperationsManager singleton."});
    EXPECT_EQ(SignalOperationsManager::InstancePtr(), nullptr);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"SignalOperationsManager singleton is not created."});
}

TEST(SignalOperationsManagerKey, ComparesAsSignedNumbers)
{
    using Key = SignalOperationsManager::HandlerKey;
    auto const large = UnknownSampleFormat(0x80);
    EXPECT_TRUE((Key{large, e_format_L8} < Key{e_format_L8, e_format_L8}));
    EXPECT_TRUE((Key{e_format_L8, large} < Key{e_format_L8, e_format_L8}));
    EXPECT_FALSE((Key{e_format_L8, e_format_L8} < Key{e_format_L8, e_format_L8}));
}

} // namespace
} // namespace quillmarsh
