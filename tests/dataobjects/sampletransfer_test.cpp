#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/sample_blocks.h"
#include "tests/support/scripted_dialogs.h"
#include <quillmarsh/basetools/exception.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using sample_formats::UnknownSampleFormat;
using tests::Bytes;
using tests::BytesOf;
using tests::CountUp;
using tests::ScriptedDialogs;
using Texts = std::vector<string>;

class SampleTransfer : public testing::Test
{
protected:
    SignalOperationsManager manager_;
};

TEST_F(SampleTransfer, UnsupportedPairChangesNothing)
{
    Signal<Sample16> const src(e_format_A1R5G5B5, 4);
    Signal<Sample16> dst(e_format_A1R5G5B5, 2);
    Bytes const before = BytesOf(CountUp(dst));
    EXPECT_FALSE(TransferSamples1D(dst, src, true) || ConvertSamples(dst, e_format_A4R4G4B4));
    EXPECT_FALSE(ConvertSamples(dst, e_format_L8));
    EXPECT_EQ(dst.GetSampleFormat(), e_format_A1R5G5B5);
    EXPECT_EQ(BytesOf(dst), before);
}

TEST_F(SampleTransfer, ResizesInTheShapeOfTheSource)
{
    Image<Sample32> const picture(e_format_A8R8G8B8, 3, 5);
    Image<Sample8> image(e_format_A8, 0, 0);
    EXPECT_TRUE(TransferSamples2D(image, picture, true) && image.CheckDimensionMatch(picture));
    // Converted to a signal, a picture becomes one row.
    EXPECT_TRUE(TransferSamples1D(image, Signal<Sample8>(e_format_L8, 4), true));
    EXPECT_TRUE(image.GetNumRows() == 1 && image.GetNumColumns() == 4);

    Volume<Sample8> const block(e_format_L8, 2, 3, 4);
    Volume<Sample32> volume(e_format_X8R8G8B8, 0, 0, 0);
    EXPECT_TRUE(TransferSamples3D(volume, block, true) && volume.CheckDimensionMatch(block));

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

    CopySamples_FP32Norm_To_UInt8(*bytes(2), *bytes(2));
    EXPECT_EQ(texts(), (Texts{"Invalid destination-sample-size.", "Invalid source-sample-size."}));
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
