#include <quillmarsh/dataobjects/volumebase.h>

#include "tests/support/scripted_dialogs.h"
#include <quillmarsh/basetools/exception.h>

#include <gtest/gtest.h>

#include <array>

namespace quillmarsh
{
namespace
{

using tests::ScriptedDialogs;
using Texts = std::vector<string>;

using Shape = std::array<unsigned int, 7>;

Shape ShapeOf(VolumeBase const &volume)
{
    return {volume.GetNumLayers(),   volume.GetNumRows(),       volume.GetNumColumns(), volume.GetNumSamplesPerLayer(),
            volume.GetRowByteSize(), volume.GetLayerByteSize(), volume.GetNumSamples()};
}

TEST(Volume, LiesLayerByLayerAndKeepsItsBytesWhenReshaped)
{
    Volume<Sample16> volume(e_format_A8L8, 2, 3, 4);
    EXPECT_EQ(ShapeOf(volume), (Shape{2, 3, 4, 12, 8, 24, 24}));
    unsigned char *const block = volume.GetSamplesB();
    EXPECT_EQ(volume.SampleB(1, 2, 3), block + (12 + 8 + 3) * 2);
    EXPECT_EQ(volume.Sample(1, 0, 1).bytes, block + 26);
    volume.ReserveSampleStorage(4, 3, 2);
    EXPECT_EQ(volume.GetSamplesB(), block);
    Volume<Sample16> const turned(e_format_A8L8, 3, 4, 2);
    EXPECT_FALSE(volume.CheckDimensionMatch(turned));
    EXPECT_TRUE(volume.CheckDimensionMatch(static_cast<SignalBase const &>(turned)));
}

TEST(Volume, HasAllDimensionsOrNone)
{
    Volume<Sample32> volume(e_format_A8R8G8B8, 2, 0, 7);
    EXPECT_EQ(ShapeOf(volume), Shape{});
    SignalBase &signal = volume;
    signal.ReserveSampleStorage(5);
    EXPECT_EQ(ShapeOf(volume), (Shape{1, 1, 5, 5, 20, 20, 5}));
    volume.ReserveSampleStorage(0xFFFFFFFF, 0xFFFFFFFF, 0);
    EXPECT_EQ(ShapeOf(volume), Shape{});
    volume.ReserveSampleStorage(1, 2, 3);
    signal.ReleaseSampleStorage();
    EXPECT_EQ(ShapeOf(volume), Shape{});

    volume.ReserveSampleStorage(1, 2, 3);
    EXPECT_THROW(volume.ReserveSampleStorage(0x1000, 0x1000, 0x100), NoMemoryException);
    EXPECT_EQ(ShapeOf(volume), Shape{});
    EXPECT_EQ(volume.GetSamplesB(), nullptr);
    EXPECT_THROW(volume.ReserveSampleStorage(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF), NoMemoryException);
}

TEST(Volume, MisuseAsserts)
{
    ScriptedDialogs dialogs;
    Volume<Sample8> volume(e_format_L8, 2, 3, 4);
    volume.SampleB(2, 0, 0);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Layer-index out of range."});
    volume.SampleB(0, 3, 4);
    EXPECT_EQ(dialogs.TakeTexts(), (Texts{"Row-index out of range.", "Column-index out of range."}));
    volume.ReleaseSampleStorage();
    volume.SampleB(0, 0, 0);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Accessing 0x0x0 volume."});
}

TEST(VolumeAdapter, BorrowsAndNeverFreesOrGrows)
{
    unsigned char bytes[24] = {};
    VolumeBaseFromExternalStorageAdapter adapter(e_format_L8);
    adapter.SetExternalStorage(bytes, 2, 3, 4);
    adapter.ReleaseSampleStorage();
    EXPECT_EQ(adapter.SampleB(1, 1, 1), bytes + 17);
    for (bool const asSignal : {false, true})
    {
        try
        {
            if (asSignal)
                static_cast<SignalBase &>(adapter).ReserveSampleStorage(24);
            else
                adapter.ReserveSampleStorage(2, 3, 4);
            ADD_FAILURE();
        }
        catch (InvalidUsageException const &exception)
        {
            EXPECT_EQ(exception.GetMessage(), "Cannot manage external storage through VolumeBase adapter.");
        }
    }
    adapter.SetExternalStorage(nullptr, 1, 1, 1);
    EXPECT_EQ(ShapeOf(adapter), Shape{});
    EXPECT_EQ(adapter.GetSamplesB(), nullptr);

    ScriptedDialogs dialogs;
    adapter.SetExternalStorage(bytes, 0, 3, 4);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Invalid argument combination passed to VolumeBase adapter."});
}

TEST(ManufactureVolume, GivesAVolumeOrNull)
{
    EXPECT_EQ(ManufactureVolume(sample_formats::UnknownSampleFormat(10), 2, 2, 2), nullptr);
    AutoPtr<VolumeBase> const volume(ManufactureVolume(e_format_A8R8G8B8, 2, 3, 4));
    EXPECT_EQ(ShapeOf(*volume), (Shape{2, 3, 4, 12, 16, 48, 24}));
}

} // namespace
} // namespace quillmarsh
