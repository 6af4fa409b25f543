#include <quillmarsh/dataobjects/signalbase.h>

#include "tests/support/scripted_dialogs.h"
#include <quillmarsh/basetools/exception.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using sample_formats::UnknownSampleFormat;
using tests::ScriptedDialogs;
using Texts = std::vector<string>;

TEST(Signal, ReservingKeepsAnEqualCountAndDropsAnother)
{
    Signal<Sample16> signal(e_format_A8L8, 0);
    EXPECT_EQ(signal.GetSamplesB(), nullptr);
    signal.ReserveSampleStorage(0);
    EXPECT_EQ(signal.GetSamplesB(), nullptr);

    signal.ReserveSampleStorage(3);
    EXPECT_EQ(signal.GetTotalByteSize(), 6u);
    unsigned char *const block = signal.GetSamplesB();
    *signal.SampleB(2) = 42;
    signal.ReserveSampleStorage(3);
    EXPECT_EQ(signal.GetSamplesB(), block);
    EXPECT_EQ(block[4], 42);
    EXPECT_EQ(&signal.Sample(2), static_cast<void *>(block + 4));

    signal.ReserveSampleStorage(0);
    EXPECT_EQ(signal.GetSamplesB(), nullptr);
    EXPECT_EQ(signal.GetTotalByteSize(), 0u);
    signal.ReserveSampleStorage(2);
    signal.ReleaseSampleStorage();
    EXPECT_EQ(signal.GetNumSamples(), 0u);
    EXPECT_EQ(signal.GetSampleFormat(), e_format_A8L8);
    EXPECT_EQ(signal.GetSampleByteSize(), 2u);
}

TEST(Signal, WhatPasses32BitsIsRefusedAndLeavesItEmpty)
{
    Signal<Sample128> signal(UnknownSampleFormat(16), 2);
    try
    {
        signal.ReserveSampleStorage(0x10000000);
        FAIL();
    }
    catch (NoMemoryException const &exception)
    {
        EXPECT_EQ(exception.GetMessage(), "Failed to allocate 4294967296 bytes");
        EXPECT_TRUE(exception.ContainsFileLine());
    }
    EXPECT_EQ(signal.GetNumSamples(), 0u);
    EXPECT_EQ(signal.GetSamplesB(), nullptr);
    signal.ReserveSampleStorage(1);
    EXPECT_EQ(signal.GetTotalByteSize(), 16u);
}

TEST(Signal, ComparesSizesAndFormats)
{
    Signal<Sample16> words(e_format_A8L8, 4);
    Signal<Sample32> colours(e_format_A8R8G8B8, 2);
    EXPECT_FALSE(words.CheckDimensionMatch(colours));
    EXPECT_FALSE(words.CheckSampleByteSizeMatch(colours));
    EXPECT_FALSE(words.CheckSampleFormatMatch(colours));
    EXPECT_TRUE(words.CheckTotalByteSizeMatch(colours));
    Signal<Sample16> packed(e_format_A4R4G4B4, 4);
    EXPECT_TRUE(words.CheckDimensionMatch(packed));
    EXPECT_TRUE(words.CheckSampleByteSizeMatch(packed));
    EXPECT_FALSE(words.CheckSampleFormatMatch(packed));
}

TEST(Signal, MisuseAsserts)
{
    ScriptedDialogs dialogs;
    Signal<Sample32> signal(e_format_X8R8G8B8, 0);
    signal.SampleB(0);
    EXPECT_EQ(dialogs.TakeTexts(), (Texts{"Accessing 0-size signal.", "Sample-index out of range."}));

    signal.SetSampleFormat(e_format_A8R8G8B8);
    signal.SetSampleFormat(e_format_A8L8);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Setting invalid sample-format."});
    EXPECT_EQ(signal.GetSampleFormat(), e_format_A8L8);

    SignalBaseFromExternalStorageAdapter sizeless(UnknownSampleFormat(0));
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Invalid sample-byte-size."});
}

TEST(SignalAdapter, BorrowsAndNeverFreesOrGrows)
{
    Sample32 block[3] = {};
    unsigned char *const bytes = block[0].bytes;
    {
        SignalBaseFromExternalStorageAdapter adapter(e_format_X8R8G8B8);
        adapter.SetExternalStorage(bytes, 3);
        EXPECT_EQ(adapter.GetTotalByteSize(), 12u);
        adapter.SetSampleFormat(e_format_A8R8G8B8);
        adapter.ReleaseSampleStorage();
        EXPECT_EQ(adapter.SampleB(2), bytes + 8);
        try
        {
            adapter.ReserveSampleStorage(3);
            FAIL();
        }
        catch (InvalidUsageException const &exception)
        {
            EXPECT_EQ(exception.GetMessage(), "Cannot manage external storage through SignalBase adapter.");
        }
        EXPECT_EQ(adapter.GetSamplesB(), bytes);
        adapter.SetExternalStorage(nullptr, 5);
        EXPECT_EQ(adapter.GetNumSamples(), 0u);
        EXPECT_EQ(adapter.GetSamplesB(), nullptr);

        ScriptedDialogs dialogs;
        adapter.SetExternalStorage(bytes, 0);
        EXPECT_EQ(dialogs.TakeTexts(), Texts{"Invalid argument combination passed to SignalBase adapter."});
        EXPECT_EQ(adapter.GetSamplesB(), bytes);
        EXPECT_EQ(adapter.GetNumSamples(), 0u);
        adapter.SetExternalStorage(bytes, 2);
    }
    block[2].bytes[3] = 1;
}

TEST(ManufactureSignal, KnowsTheEightSizesOnly)
{
    for (unsigned int size = 0; size < 256; ++size)
    {
        bool const isKnown = (size >= 1 && size <= 4) || size == 6 || size == 8 || size == 12 || size == 16;
        AutoPtr<SignalBase> const signal(ManufactureSignal(static_cast<eSampleFormat>(size << 24 | 7), 5));
        ASSERT_EQ(signal != nullptr, isKnown) << size;
        if (!signal)
            continue;
        EXPECT_EQ(signal->GetTotalByteSize(), 5 * size);
        EXPECT_EQ(signal->GetSampleFormat(), size << 24 | 7);
    }
}

} // namespace
} // namespace quillmarsh
