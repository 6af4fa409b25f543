#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/signalio.h>

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/filesystem.h>

#include "tests/support/files_win32.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

class DataFiles : public testing::Test
{
protected:
    DataFiles() : signal_(e_format_L8, 1), image_(e_format_X8R8G8B8, 1, 1)
    {
        signal_.GetSamplesB()[0] = 'a';
        image_.GetSamplesB()[0] = 'b';
        package_.SetPayload(&signal_);
        RegisterDefaultDataCodecs();
        overwrite_.Insert(NamedParameter(data_codec_parameters::Param_FileOverwrite, true), true);
    }

    /// Returns the failure of saving a package; empty on success.
    string GetFailure(string const &name)
    {
        try
        {
            package_.SaveToFile(name, true);
            return "";
        }
        catch (SerializationException const &failure)
        {
            return failure.GetMessage();
        }
        catch (std::ios_base::failure const &failure)
        {
            return string(failure.what()).substr(0, name.size() + string("Cannot write file: ").size());
        }
    }

    /// Tries to save in every way, with permission to replace.
    void ExpectNotSaved(string const &name)
    {
        EXPECT_FALSE(SaveSignal(signal_, name, "QMDP", &overwrite_)) << name;
        for (char const *format : {"QMDP", "PNG", "BMP", "JPEG", "TIFF"})
            EXPECT_FALSE(SaveImage(image_, name, format, &overwrite_)) << name << format;
    }

    void ExpectFiles(std::ptrdiff_t count) const { EXPECT_EQ(directory_.CountEntries(), count); }

    tests::ScratchDirectory directory_;
    DataCodecManager manager_;
    NamedParameterList overwrite_;
    Signal<Sample8> signal_;
    Image<Sample32> image_;
    DataPackageSignal package_;
};

TEST_F(DataFiles, FileThatAnotherProgramHasOpenStaysComplete)
{
    string const name = directory_.Write("file", "old");
    for (unsigned long const sharing : {0, FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE})
    {
        tests::FileHolder const holder(name, sharing);
        bool const canBeWritten = (sharing & FILE_SHARE_WRITE) != 0;
        EXPECT_EQ(GetFailure(name), (canBeWritten ? "Cannot write file: " : "Cannot open file: ") + name);
        ExpectNotSaved(name);
        EXPECT_EQ(LoadSignal(name), nullptr);
        EXPECT_EQ(LoadImageA(name), nullptr);
        ExpectFiles(1);
    }
    EXPECT_EQ(tests::ReadFile(name), "old");
    EXPECT_EQ(GetFailure(name), "");
}

TEST_F(DataFiles, CannotBeDevicesOrOnMissingDrives)
{
    for (string const &name : {directory_ / "nul.png", string("CON"), directory_ / "com1", string("\\\\.\\nul"),
                               string("\\\\?\\nul"), tests::FindMissingDrive() + "file"})
    {
        EXPECT_EQ(GetFailure(name), "Cannot open file: " + name);
        ExpectNotSaved(name);
        CodecFailureSentry const reason;
        EXPECT_EQ(LoadSignal(name), nullptr);
        EXPECT_NE(reason.GetText(), "");
        EXPECT_EQ(LoadImageA(name), nullptr);
    }
    ExpectFiles(0);
}

TEST_F(DataFiles, NamesMayBeLongAndHaveThePrefix)
{
    tests::DeepDirectory const directory(directory_);
    for (string const &name :
         {directory / "caf\u00e9", "\\\\?\\" + (directory / "file"), "\\\\?\\" + (directory_ / "file")})
    {
        EXPECT_TRUE(SaveImage(image_, name, "PNG")) << name;
        EXPECT_FALSE(SaveImage(image_, name, "QMDP")) << name;
        AutoPtr<ImageBase> const image(LoadImageA(name));
        EXPECT_TRUE(image && image->GetSamplesB()[0] == 'b') << name;
        EXPECT_FALSE(SaveSignal(signal_, name, "QMDP")) << name;
        EXPECT_TRUE(SaveSignal(signal_, name, "QMDP", &overwrite_)) << name;
        AutoPtr<SignalBase> const signal(LoadSignal(name));
        EXPECT_TRUE(signal && signal->GetSamplesB()[0] == 'a') << name;
        EXPECT_TRUE(file_system::DeleteFileA(name)) << name;
    }
    ExpectFiles(1);
}

TEST_F(DataFiles, OtherFormatsOfTheDrawingLibraryAreNoImageFiles)
{
    string const picture("GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 35);
    EXPECT_EQ(LoadImageA(directory_.Write("file", picture)), nullptr);
}

} // namespace
} // namespace quillmarsh
