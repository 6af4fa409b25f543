#include <quillmarsh/dataobjects/imagebase.h>

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

using Shape = std::array<unsigned int, 4>;

Shape ShapeOf(ImageBase const &image)
{
    return {image.GetNumRows(), image.GetNumColumns(), image.GetRowByteSize(), image.GetNumSamples()};
}

TEST(Image, ReshapingToAnEqualProductKeepsTheBytes)
{
    Image<Sample16> image(e_format_A8L8, 4, 6);
    unsigned char *const block = image.GetSamplesB();
    *image.SampleB(3, 5) = 42;
    image.ReserveSampleStorage(6, 4);
    EXPECT_EQ(ShapeOf(image), (Shape{6, 4, 8, 24}));
    image.ReserveSampleStorage(3, 8);
    EXPECT_EQ(image.GetSamplesB(), block);
    EXPECT_EQ(image.Sample(2, 7).bytes[0], 42);
    EXPECT_EQ(image.SampleB(1, 2), block + (8 + 2) * 2);
    EXPECT_EQ(image.SignalBase::SampleB(9), block + 18);
}

TEST(Image, HasBothDimensionsOrNone)
{
    Image<Sample32> image(e_format_A8R8G8B8, 0, 7);
    EXPECT_EQ(ShapeOf(image), Shape{});
    image.ReserveSampleStorage(2, 3);
    image.ReserveSampleStorage(0, 0xFFFFFFFF);
    EXPECT_EQ(ShapeOf(image), Shape{});

    SignalBase &signal = image;
    signal.ReserveSampleStorage(5);
    EXPECT_EQ(ShapeOf(image), (Shape{1, 5, 20, 5}));
    signal.ReleaseSampleStorage();
    EXPECT_EQ(ShapeOf(image), Shape{});
    EXPECT_EQ(image.GetSamplesB(), nullptr);
}

TEST(Image, DimensionsThatWrapAreRefusedAndLeaveItEmpty)
{
    struct Refused
    {
        unsigned int rows, columns;
        char const *message;
    };
    constexpr Refused refused[] = {
        {0x10000, 0x10000, "Failed to allocate 17179869184 bytes"}, // product 0 in 32 bits
        {0x8000, 0x8000, "Failed to allocate 4294967296 bytes"},    // byte size 0 in 32 bits
        {0xFFFFFFFF, 0xFFFFFFFF, "Failed to allocate 18446744073709551615 bytes"},
    };
    for (Refused const &dimensions : refused)
    {
        Image<Sample32> image(e_format_A8R8G8B8, 2, 2);
        try
        {
            image.ReserveSampleStorage(dimensions.rows, dimensions.columns);
            ADD_FAILURE() << dimensions.message;
        }
        catch (NoMemoryException const &exception)
        {
            EXPECT_EQ(exception.GetMessage(), dimensions.message);
        }
        EXPECT_EQ(ShapeOf(image), Shape{});
        EXPECT_EQ(image.GetSamplesB(), nullptr);
    }
}

TEST(Image, MisuseAsserts)
{
    ScriptedDialogs dialogs;
    Image<Sample8> image(e_format_L8, 2, 3);
    image.SampleB(1, 2);
    image.SampleB(2, 0);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Row-index out of range."});
    image.SampleB(0, 3);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Column-index out of range."});
    image.ReleaseSampleStorage();
    image.SampleB(0, 0);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Accessing 0x0 image."});
}

TEST(ImageAdapter, BorrowsAndNeverFreesOrGrows)
{
    Sample32 block[6] = {};
    unsigned char *const bytes = block[0].bytes;
    ImageBaseFromExternalStorageAdapter adapter(e_format_X8R8G8B8);
    EXPECT_EQ(adapter.GetSampleByteSize(), 4u);
    adapter.SetExternalStorage(bytes, 2, 3);
    adapter.ReleaseSampleStorage();
    EXPECT_EQ(ShapeOf(adapter), (Shape{2, 3, 12, 6}));
    EXPECT_EQ(adapter.SampleB(1, 2), bytes + 20);
    for (bool const asSignal : {false, true})
    {
        try
        {
            if (asSignal)
                static_cast<SignalBase &>(adapter).ReserveSampleStorage(6);
            else
                adapter.ReserveSampleStorage(2, 3);
            ADD_FAILURE();
        }
        catch (InvalidUsageException const &exception)
        {
            EXPECT_EQ(exception.GetMessage(), "Cannot manage external storage through ImageBase adapter.");
        }
    }
    EXPECT_THROW(adapter.SetExternalStorage(bytes, 0x10000, 0x10000), NoMemoryException);
    EXPECT_EQ(ShapeOf(adapter), Shape{});

    adapter.SetExternalStorage(bytes, 3, 2);
    adapter.SetExternalStorage(nullptr, 5, 5);
    EXPECT_EQ(ShapeOf(adapter), Shape{});
    EXPECT_EQ(adapter.GetSamplesB(), nullptr);

    ScriptedDialogs dialogs;
    adapter.SetExternalStorage(bytes, 3, 0);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Invalid argument combination passed to ImageBase adapter."});
    EXPECT_EQ(ShapeOf(adapter), Shape{});
}

TEST(ManufactureImage, GivesAnImageThatIsDeletedThroughEitherBase)
{
    EXPECT_EQ(ManufactureImage(sample_formats::UnknownSampleFormat(5), 2, 2), nullptr);
    AutoPtr<SignalBase> const signal(ManufactureImage(sample_formats::UnknownSampleFormat(12), 2, 3));
    ASSERT_NE(dynamic_cast<Image<Sample96> *>(signal.get()), nullptr);
    EXPECT_EQ(ShapeOf(dynamic_cast<ImageBase &>(*signal)), (Shape{2, 3, 36, 6}));
}

} // namespace
} // namespace quillmarsh
