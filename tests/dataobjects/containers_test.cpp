#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/volumebase.h>

#include "tests/support/failures.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <functional>

namespace quillmarsh
{
namespace
{

using sample_formats::UnknownSampleFormat;
using tests::MessageOf;
using tests::ScriptedDialogs;
using Texts = std::vector<string>;
using Shape = std::vector<unsigned int>;

Shape ShapeOf(ImageBase const &image)
{
    return {image.GetNumRows(), image.GetNumColumns(), image.GetRowByteSize(), image.GetNumSamples()};
}

Shape ShapeOf(VolumeBase const &volume)
{
    return {volume.GetNumLayers(),   volume.GetNumRows(),       volume.GetNumColumns(), volume.GetNumSamplesPerLayer(),
            volume.GetRowByteSize(), volume.GetLayerByteSize(), volume.GetNumSamples()};
}

void ExpectEmpty(SignalBase const &container)
{
    EXPECT_EQ(container.GetSamplesB(), nullptr);
    EXPECT_EQ(container.GetTotalByteSize(), 0u);
    if (auto const *const image = dynamic_cast<ImageBase const *>(&container))
    {
        EXPECT_EQ(ShapeOf(*image), Shape(4));
    }
    if (auto const *const volume = dynamic_cast<VolumeBase const *>(&container))
    {
        EXPECT_EQ(ShapeOf(*volume), Shape(7));
    }
}

TEST(Containers, ReservingAnEqualCountKeepsTheBytes)
{
    Signal<Sample16> signal(e_format_A8L8, 0);
    ExpectEmpty(signal);
    signal.ReserveSampleStorage(3);
    unsigned char *block = signal.GetSamplesB();
    *signal.SampleB(2) = 42;
    signal.ReserveSampleStorage(3);
    EXPECT_EQ(signal.GetSamplesB(), block);
    EXPECT_EQ(block[4], 42);
    EXPECT_EQ(&signal.Sample(2), static_cast<void *>(block + 4));
    signal.ReserveSampleStorage(0);
    ExpectEmpty(signal);

    Image<Sample16> image(e_format_A8L8, 4, 6);
    block = image.GetSamplesB();
    *image.SampleB(3, 5) = 42;
    image.ReserveSampleStorage(6, 4);
    EXPECT_EQ(ShapeOf(image), (Shape{6, 4, 8, 24}));
    image.ReserveSampleStorage(3, 8);
    EXPECT_EQ(image.GetSamplesB(), block);
    EXPECT_EQ(image.Sample(2, 7).bytes[0], 42);
    EXPECT_EQ(image.SampleB(1, 2), block + (8 + 2) * 2);

    Volume<Sample16> volume(e_format_A8L8, 2, 3, 4);
    EXPECT_EQ(ShapeOf(volume), (Shape{2, 3, 4, 12, 8, 24, 24}));
    block = volume.GetSamplesB();
    EXPECT_EQ(volume.SampleB(1, 2, 3), block + (12 + 8 + 3) * 2);
    EXPECT_EQ(volume.Sample(1, 0, 1).bytes, block + 26);
    volume.ReserveSampleStorage(4, 3, 2);
    EXPECT_EQ(volume.GetSamplesB(), block);
}

TEST(Containers, HaveAllDimensionsOrNone)
{
    Image<Sample32> image(e_format_A8R8G8B8, 0, 7);
    Volume<Sample32> volume(e_format_A8R8G8B8, 2, 0, 7);
    ExpectEmpty(image);
    ExpectEmpty(volume);
    SignalBase *const signals[] = {&image, &volume};
    for (SignalBase *const signal : signals)
        signal->ReserveSampleStorage(5);
    EXPECT_EQ(ShapeOf(image), (Shape{1, 5, 20, 5}));
    EXPECT_EQ(ShapeOf(volume), (Shape{1, 1, 5, 5, 20, 20, 5}));
    image.ReserveSampleStorage(0, 0xFFFFFFFF);
    volume.ReserveSampleStorage(0xFFFFFFFF, 0xFFFFFFFF, 0);
    ExpectEmpty(image);
    ExpectEmpty(volume);
    for (SignalBase *const signal : signals)
    {
        signal->ReserveSampleStorage(5);
        signal->ReleaseSampleStorage();
        ExpectEmpty(*signal);
    }
}

TEST(Containers, SizesThatWrapAreRefusedAndLeaveThemEmpty)
{
    constexpr std::tuple<unsigned int, unsigned int, char const *> refused[] = {
        {0x10000, 0x10000, "Failed to allocate 17179869184 bytes"}, // product 0 in 32 bits
        {0x8000, 0x8000, "Failed to allocate 4294967296 bytes"},    // byte size 0 in 32 bits
        {0xFFFFFFFF, 0xFFFFFFFF, "Failed to allocate 18446744073709551615 bytes"},
    };
    for (auto const &[rows, columns, message] : refused)
    {
        Image<Sample32> image(e_format_A8R8G8B8, 2, 2);
        auto const reserve = [&, r = rows, c = columns] { image.ReserveSampleStorage(r, c); };
        EXPECT_EQ(MessageOf<NoMemoryException>(reserve), message);
        ExpectEmpty(image);
    }
    Signal<Sample128> signal(UnknownSampleFormat(16), 2);
    EXPECT_EQ(MessageOf<NoMemoryException>([&] { signal.ReserveSampleStorage(0x10000000); }),
              "Failed to allocate 4294967296 bytes");
    ExpectEmpty(signal);
    signal.ReserveSampleStorage(1);
    EXPECT_EQ(signal.GetTotalByteSize(), 16u);
    Volume<Sample32> volume(e_format_A8R8G8B8, 1, 2, 3);
    EXPECT_THROW(volume.ReserveSampleStorage(0x1000, 0x1000, 0x100), NoMemoryException);
    ExpectEmpty(volume);
    EXPECT_THROW(volume.ReserveSampleStorage(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF), NoMemoryException);
}

TEST(Containers, CompareSizesAndFormats)
{
    Signal<Sample16> words(e_format_A8L8, 4);
    Signal<Sample32> colours(e_format_A8R8G8B8, 2);
    EXPECT_FALSE(words.CheckDimensionMatch(colours) || words.CheckSampleByteSizeMatch(colours));
    EXPECT_TRUE(words.CheckTotalByteSizeMatch(colours));
    Signal<Sample16> packed(e_format_A4R4G4B4, 4);
    EXPECT_TRUE(words.CheckSampleByteSizeMatch(packed));
    EXPECT_FALSE(words.CheckSampleFormatMatch(packed));
    Volume<Sample16> const volume(e_format_A8L8, 4, 3, 2), turned(e_format_A8L8, 3, 4, 2);
    EXPECT_FALSE(volume.CheckDimensionMatch(turned));
    EXPECT_TRUE(volume.CheckDimensionMatch(static_cast<SignalBase const &>(turned)));
}

TEST(Containers, InvalidFormatsAssert)
{
    ScriptedDialogs dialogs;
    Signal<Sample32> signal(e_format_X8R8G8B8, 0);
    signal.SetSampleFormat(e_format_A8R8G8B8);
    signal.SetSampleFormat(e_format_A8L8);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Setting invalid sample-format."});
    EXPECT_EQ(signal.GetSampleFormat(), e_format_A8L8);
    SignalBaseFromExternalStorageAdapter sizeless(UnknownSampleFormat(0));
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Invalid sample-byte-size."});
}

/// Checks that an adapter of 24 bytes neither frees nor grows them, through its own class and through SignalBase.
template<typename... Dimensions>
void ExpectBorrowing(auto &adapter, string const &name, Dimensions... dimensions)
{
    unsigned char bytes[24] = {};
    adapter.SetExternalStorage(bytes, dimensions...);
    adapter.ReleaseSampleStorage();
    EXPECT_EQ(adapter.GetSamplesB(), bytes);
    EXPECT_EQ(adapter.GetTotalByteSize(), 24u);
    string const refusal = "Cannot manage external storage through " + name + " adapter.";
    EXPECT_EQ(MessageOf<InvalidUsageException>([&] { adapter.ReserveSampleStorage(dimensions...); }), refusal);
    SignalBase &signal = adapter;
    auto const reserve = [&] { signal.ReserveSampleStorage(signal.GetNumSamples()); };
    EXPECT_EQ(MessageOf<InvalidUsageException>(reserve), refusal);
    EXPECT_EQ(adapter.GetSamplesB(), bytes);

    adapter.SetExternalStorage(nullptr, dimensions...);
    ExpectEmpty(adapter);
    ScriptedDialogs dialogs;
    adapter.SetExternalStorage(bytes, (dimensions * 0)...);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Invalid argument combination passed to " + name + " adapter."});
    EXPECT_EQ(adapter.GetNumSamples(), 0u);
}

TEST(Adapters, BorrowAndNeverFreeOrGrow)
{
    SignalBaseFromExternalStorageAdapter signal(e_format_X8R8G8B8);
    ExpectBorrowing(signal, "SignalBase", 6u);
    ImageBaseFromExternalStorageAdapter image(e_format_X8R8G8B8);
    ExpectBorrowing(image, "ImageBase", 2u, 3u);
    unsigned char bytes[24] = {};
    EXPECT_THROW(image.SetExternalStorage(bytes, 0x10000, 0x10000), NoMemoryException);
    ExpectEmpty(image);
    VolumeBaseFromExternalStorageAdapter volume(e_format_L8);
    ExpectBorrowing(volume, "VolumeBase", 2u, 3u, 4u);
    volume.SetExternalStorage(bytes, 2, 3, 4);
    EXPECT_EQ(volume.SampleB(1, 1, 1), bytes + 17);
}

TEST(Containers, AssertPastTheirEndAndReturnNothing)
{
    ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    Signal<Sample24> signal(UnknownSampleFormat(3), 4), noSignal(UnknownSampleFormat(3), 0);
    Image<Sample24> image(UnknownSampleFormat(3), 2, 3), noImage(UnknownSampleFormat(3), 0, 3);
    Volume<Sample24> volume(UnknownSampleFormat(3), 2, 3, 4), noVolume(UnknownSampleFormat(3), 2, 0, 4);
    constexpr unsigned int far = 0xFFFFFFFF;
    string const sample = "Sample-index out of range.", layer = "Layer-index out of range.";
    string const row = "Row-index out of range.", column = "Column-index out of range.";
    std::pair<std::function<unsigned char const *()>, Texts> const misuses[] = {
        {[&] { return signal.SampleB(4); }, {sample}},
        {[&] { return signal.SampleB(far); }, {sample}},
        {[&] { return noSignal.SampleB(0); }, {"Accessing 0-size signal.", sample}},
        {[&] { return image.SampleB(2, 0); }, {row}},
        {[&] { return image.SampleB(0, 3); }, {column}},
        {[&] { return image.SampleB(far, far); }, {row, column}},
        {[&] { return noImage.SampleB(0, 0); }, {"Accessing 0x0 image.", row, column}},
        {[&] { return volume.SampleB(2, 0, 0); }, {layer}},
        {[&] { return volume.SampleB(0, 3, far); }, {row, column}},
        {[&] { return noVolume.SampleB(0, 0, 0); }, {"Accessing 0x0x0 volume.", layer, row, column}},
    };
    for (auto const &misuse : misuses)
    {
        EXPECT_EQ(misuse.first(), nullptr) << &misuse - misuses;
        EXPECT_EQ(dialogs.TakeTexts(), misuse.second) << &misuse - misuses;
    }
    for (Sample24 *const spare : {&signal.Sample(far), &image.Sample(0, 3), &volume.Sample(2, 0, 0)})
    {
        EXPECT_EQ(spare->bytes[2], 0);
        spare->bytes[2] = 1;
        EXPECT_EQ(signal.Sample(4).bytes[2], 0);
    }
    dialogs.TakeTexts();
}

TEST(Manufacture, KnowsTheEightSizesOnly)
{
    for (unsigned int size = 0; size < 256; ++size)
    {
        bool const isKnown = (size >= 1 && size <= 4) || size == 6 || size == 8 || size == 12 || size == 16;
        auto const format = static_cast<eSampleFormat>(size << 24 | 7);
        AutoPtr<SignalBase> const containers[] = {AutoPtr<SignalBase>(ManufactureSignal(format, 24)),
                                                  AutoPtr<SignalBase>(ManufactureImage(format, 4, 6)),
                                                  AutoPtr<SignalBase>(ManufactureVolume(format, 2, 3, 4))};
        for (AutoPtr<SignalBase> const &container : containers)
        {
            ASSERT_EQ(container != nullptr, isKnown) << size;
            EXPECT_TRUE(!container || container->GetTotalByteSize() == 24 * size);
            EXPECT_TRUE(!container || container->GetSampleFormat() == format);
        }
    }
}

} // namespace
} // namespace quillmarsh
