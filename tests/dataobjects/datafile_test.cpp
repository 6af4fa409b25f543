#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/imagelimits.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/dot_codec.h"
#include "tests/support/failures.h"
#include "tests/support/package_bytes.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quillmarsh::sampled_data
{
namespace
{

using tests::MessageOf;
using tests::PackageBytes;

class DataFileTest : public testing::Test
{
protected:
    DataFileTest()
    {
        RegisterDefaultDataCodecs();
        RegisterDefaultImageFileExtensions();
    }

    string SaveAndLoad(SampledData const &data, string const &name)
    {
        string const file = directory_ / name;
        SaveSettings settings;
        settings.overwrite = true;
        return MessageOf<DataException>(
            [&]
            {
                SaveFile(data, file, *FindFileType(file), settings);
                SampledData const loaded = LoadFile(file, *FindFileType(file));
                EXPECT_EQ(loaded.GetDimensions(), data.GetDimensions());
            });
    }

    tests::ScratchDirectory directory_;
    SignalOperationsManager operations_;
    DataCodecManager manager_;
};

TEST_F(DataFileTest, CodecsThatAreRegisteredAreUsedAsTheLibrarysOwn)
{
    EXPECT_FALSE(FindFileType("a.dot"));
    string const file = directory_.Write("a.DOT", "DOT\1\3abc");
    EXPECT_EQ(MessageOf<DataException>([&] { DataFile const opened(file); }),
              file + ": byte 0: opening magic-sequence: neither that of a package nor of a picture");

    tests::RegisterDotCodec();
    EXPECT_TRUE(GetExtensions().ends_with(".bmp .dot")) << GetExtensions();
    DataFile opened(file);
    EXPECT_EQ(opened.GetDesc().container, "DOT");
    EXPECT_EQ(opened.GetDesc().dimensions, (Dimensions{1, 3}));
    EXPECT_EQ(opened.Load().GetSamples().GetSamplesB()[2], 'c');
    EXPECT_EQ(opened.Load().GetSamples().GetSamplesB()[1], 'b');
    EXPECT_EQ(SaveAndLoad(SampledData(e_format_L8, {1, 5}), "b.dot"), "");

    EXPECT_EQ(SaveAndLoad(SampledData(e_format_A8, {1, 5}), "b.dot"), directory_ / "b.dot" + ": dots are luminance");
    string const empty = directory_.Write("empty", "DOT");
    EXPECT_EQ(MessageOf<DataException>([&] { DataFile const damaged(empty); }), empty + ": the dots are missing");
}

TEST_F(DataFileTest, WhatWasInspectedIsWhatIsLoaded)
{
    SaveSettings settings;
    for (string const name : {"a.qmdp", "a.png", "a.bmp"})
    {
        string const file = directory_ / name;
        SampledData const first(e_format_X8R8G8B8, {2, 3}), second(e_format_X8R8G8B8, {5, 7});
        SaveFile(first, file, *FindFileType(file), settings);
        DataFile opened(file);
        settings.overwrite = true;
        // Windows does not let an open file go.
        bool const isReplaced =
            MessageOf<DataException>([&] { SaveFile(second, file, *FindFileType(file), settings); }).empty();
        settings.overwrite = false;
        EXPECT_EQ(opened.Load().GetDimensions(), (Dimensions{2, 3})) << name;
        EXPECT_NO_THROW(opened.Verify([](std::uint64_t) {}));
        EXPECT_EQ(LoadFile(file, *FindFileType(file)).GetDimensions(), (isReplaced ? second : first).GetDimensions());
    }
}

TEST_F(DataFileTest, FailuresNameFileAndReason)
{
    string const image = directory_.Write("i.qmdp", PackageBytes({2}, {1, 2, e_format_L8, 0, 0}, "ab"));
    string const cut = directory_.Write("cut.qmdp.signal", "<QuillMarsh");
    SaveSettings settings;
    auto const load = [](string const &file) { return [file] { LoadFile(file, *FindFileType(file)); }; };
    auto const save = [&](Dimensions const &dimensions, string const &file)
    {
        return [&, file, dimensions]
        { SaveFile(SampledData(e_format_L8, dimensions), file, *FindFileType(file), settings); };
    };
    std::tuple<std::function<void()>, string, eCodecFailure> const cases[] = {
        {load(directory_ / "no.png"), directory_ / "no.png: cannot be opened: ", eCodecFailure::e_notFound},
        {load(directory_ / "no.qmdp"), directory_ / "no.qmdp: cannot be opened: ", eCodecFailure::e_notFound},
        {load(cut), cut + ": byte 0: opening magic-sequence: the file ends", eCodecFailure::e_damaged},
        {save({1, 2}, image), image + ": already exists, and overwriting", eCodecFailure::e_exists},
        {save({1, 2}, directory_ / "no/where.png"),
         directory_ / "no/where.png: cannot be written as PNG: ", eCodecFailure::e_notFound},
        {save({2}, directory_ / "s.png"), directory_ / "s.png: takes an image, and no signal",
         eCodecFailure::e_unsupported},
    };
    image_limits::SetMaxPixels(1);
    EXPECT_EQ(MessageOf<DataException>(load(image)),
              image + ": 1 rows of 2 pixels are more than the limit of 1 pixels");
    image_limits::SetMaxPixels(image_limits::s_defaultMaxPixels);
    for (auto const &[work, message, kind] : cases)
    {
        try
        {
            work();
            ADD_FAILURE() << message;
        }
        catch (DataException const &thrown)
        {
            EXPECT_EQ(thrown.GetMessage().find(message), 0u) << thrown.GetMessage();
            EXPECT_EQ(thrown.GetFailure().kind, kind) << message;
        }
    }
}

TEST_F(DataFileTest, ReasonsStayWithTheirCall)
{
    string const image = directory_.Write("i.qmdp", PackageBytes({2}, {1, 2, e_format_L8, 0, 0}, "ab"));
    CodecFailureSentry const outer;
    EXPECT_EQ(LoadSignal(image), nullptr);
    string const reason = "the package holds an image, not a signal";
    EXPECT_EQ(outer.GetText(), reason);
    string const cut = directory_.Write("cut", PackageBytes({1}, {2, e_format_L8, 0, 0}, "ab").substr(0, 50));
    {
        CodecFailureSentry const inner;
        EXPECT_EQ(LoadSignal(cut), nullptr);
        EXPECT_EQ(inner.GetText(), "is cut short, or cannot be read: DataPackageSignal: Cannot read sample format.");
        EXPECT_EQ(LoadVolume(directory_ / "none"), nullptr);
        EXPECT_EQ(inner.GetFailure().kind, eCodecFailure::e_notFound);
    }
    EXPECT_EQ(outer.GetText(), reason);
}

} // namespace
} // namespace quillmarsh::sampled_data
