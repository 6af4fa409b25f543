#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/signalio.h>

#include "source/dataobjects/codecs/filereplacement.h"
#include "source/platform/plainfiles.h"
#include "tests/support/package_bytes.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

namespace quillmarsh
{
namespace
{

string const s_package = tests::PackageBytes({e_payload_signal}, {1, e_format_L8, 0, 0}, "a");

/// Limits the size of files, to simulate a full disk.
class FileSizeLimit : NoCopy
{
public:
    explicit FileSizeLimit(rlim_t byteSize) : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &limit_);
        rlimit const small = {byteSize, limit_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &limit_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit limit_;
    void (*handler_)(int);
};

class DataFiles : public testing::Test
{
protected:
    DataFiles() : signal_(e_format_L8, 1)
    {
        signal_.GetSamplesB()[0] = 'a';
        RegisterDefaultDataCodecs();
        overwrite_.Insert(NamedParameter(data_codec_parameters::Param_FileOverwrite, true), true);
    }

    bool Overwrite(string const &name) { return SaveSignal(signal_, name, "QMDP", &overwrite_); }

    tests::ScratchDirectory directory_;
    DataCodecManager manager_;
    NamedParameterList overwrite_;
    Signal<Sample8> signal_;
};

TEST_F(DataFiles, OldFileStaysWhenTheDiskIsFull)
{
    string const name = directory_.Write("file", "old");
    chmod(name.c_str(), 0640);
    {
        // One byte short: only closing the file writes everything, and fails.
        FileSizeLimit const limit(s_package.size() - 1);
        EXPECT_FALSE(Overwrite(name) || SaveSignal(signal_, directory_ / "new", "QMDP"));
    }
    EXPECT_EQ(tests::ReadFile(name), "old");
    EXPECT_EQ(directory_.CountEntries(), 1);

    EXPECT_TRUE(Overwrite(name));
    EXPECT_EQ(tests::ReadFile(name), s_package);
    EXPECT_EQ(std::filesystem::status(name).permissions(), std::filesystem::perms(0640));
    EXPECT_FALSE(Overwrite("/dev/full"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(DataFiles, NamesLikePatternsAreNotReplacedWithoutPermission)
{
    string const name = directory_.Write("a*b", "old");
    EXPECT_FALSE(SaveSignal(signal_, name, "QMDP"));
    EXPECT_EQ(tests::ReadFile(name), "old");
}

TEST_F(DataFiles, PipesAreNoDataFiles)
{
    string const name = directory_ / "pipe";
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
    EXPECT_EQ(LoadSignal(name), nullptr);
    EXPECT_EQ(LoadImageA(name), nullptr);
    DataPackageSignal package;
    package.SetPayload(&signal_);
    EXPECT_FALSE(package.SaveToFile(name, false));
    EXPECT_TRUE(Overwrite(name));
    EXPECT_EQ(tests::ReadFile(name), s_package);
}

TEST_F(DataFiles, FollowLinksAndStayComplete)
{
    string const name = directory_.Write("file", "old");
    string const link = directory_ / "link", dangling = directory_ / "dangling";
    std::filesystem::create_symlink("file", link);
    std::filesystem::create_symlink("nowhere", directory_ / "between");
    std::filesystem::create_symlink("between", dangling);
    Image<Sample32> const image(e_format_X8R8G8B8, 1, 1);
    auto const save = [&](string const &file, string const &format)
    { return format == "QMDP" ? Overwrite(file) : SaveImage(image, file, format, &overwrite_); };
    for (string const format : {"QMDP", "PNG", "BMP", "JPEG", "TIFF"})
    {
        {
            FileSizeLimit const limit(10);
            EXPECT_FALSE(save(link, format) || save(dangling, format));
        }
        EXPECT_EQ(tests::ReadFile(name), "old");
        EXPECT_FALSE(std::filesystem::exists(dangling));
        EXPECT_TRUE(save(link, format) && save(dangling, format));
        EXPECT_TRUE(std::filesystem::is_symlink(link) && std::filesystem::is_symlink(dangling));
        EXPECT_EQ(tests::ReadFile(name), tests::ReadFile(directory_ / "nowhere"));
        EXPECT_NE(tests::ReadFile(name), "old");
        EXPECT_FALSE(SaveSignal(signal_, link, "QMDP") || SaveImage(image, dangling, "PNG"));
        std::filesystem::remove(directory_ / "nowhere");
        EXPECT_FALSE(SaveSignal(signal_, dangling, "QMDP"));
        directory_.Write("file", "old");
    }
    EXPECT_EQ(directory_.CountEntries(), 4);
}

TEST_F(DataFiles, TemporaryFilesAreNobodyElsesAndGoWhenTheProgramDoes)
{
    string const name = directory_.Write("file", "old");
    FileReplacement replacement(name, true);
    ASSERT_EQ(directory_.CountEntries(), 2);
    EXPECT_FALSE(platform::CreateNewFile(replacement.GetPath()));
    std::filesystem::create_symlink("nowhere", directory_ / "link");
    EXPECT_FALSE(platform::CreateNewFile(directory_ / "link"));
    sampled_data::RemoveUnfinishedFiles();
    EXPECT_EQ(directory_.CountEntries(), 2);
    EXPECT_FALSE(replacement.Commit());
    EXPECT_EQ(tests::ReadFile(name), "old");
}

TEST_F(DataFiles, NewFilesTakeNoNameThatIsTakenMeanwhile)
{
    CodecFailureSentry const reason;
    FileReplacement replacement(directory_ / "file", false);
    directory_.Write("file", "other");
    EXPECT_FALSE(replacement.Commit());
    EXPECT_EQ(reason.GetFailure().kind, eCodecFailure::e_exists);
    EXPECT_EQ(tests::ReadFile(directory_ / "file"), "other");
}

} // namespace
} // namespace quillmarsh
