// Large mapped files, files that shrink under the loader, full disks, and deep pictures, which the codecs of Windows do
// not give.
#include "viewer_model/files/documentwork.h"
#include "viewer_model/files/loading.h"
#include "viewer_model/samples/channels.h"

#include "datafolder.h"

#include "tests/support/package_bytes.h"
#include "tests/support/tiff_bytes.h"

#include <chrono>
#include <csignal>
#include <fstream>

#include <sys/resource.h>
#include <unistd.h>

namespace viewer
{
namespace
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;
using ViewerLoaderOnLinux = tests::DataFolder;

/// Writes a package of zeros that takes no room on the disk. Its first and last samples are 1 and 2.
string WriteSparseVolume(quillmarsh::tests::ScratchDirectory const &directory, unsigned int layers, unsigned int rows,
                         unsigned int columns)
{
    string const empty = quillmarsh::tests::PackageBytes({3}, {layers, rows, columns, e_format_L8, 0, 0}, "");
    constexpr std::size_t trailerSize = 32;
    constexpr std::size_t sizeOffset = 32;
    std::uint64_t const numSamples = std::uint64_t(layers) * rows * columns;
    string header = empty.substr(0, empty.size() - trailerSize);
    header.replace(sizeOffset, 4, quillmarsh::tests::NumberBytes(static_cast<unsigned int>(numSamples + 24)));
    string const file = directory.Write("large.qmdp.volume", header + '\1');
    std::ofstream out(file, std::ios::binary | std::ios::in);
    out.seekp(static_cast<std::streamoff>(header.size() + numSamples - 1));
    out << '\2' << empty.substr(empty.size() - trailerSize);
    return file;
}

/// Returns the bytes of memory that belong to this process alone.
std::uint64_t CountOwnBytes()
{
    std::uint64_t total = 0;
    std::uint64_t resident = 0;
    std::uint64_t shared = 0;
    std::ifstream("/proc/self/statm") >> total >> resident >> shared;
    return (resident - shared) * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

TEST_F(ViewerLoaderOnLinux, KeepsAllBitsOfGreyPictures)
{
    string const samples("\x01\x00\xFE\xFF", 4);
    string const grey = quillmarsh::tests::TiffBytes({{1, 2, 16, samples}});
    LoadedPtr const deep = LoadContent(directory_.Write("grey.tif", grey));
    ASSERT_EQ(deep->desc.format, e_format_FP32NormL);
    EXPECT_TRUE(deep->losses.empty());
    auto const read = GetChannels(e_format_FP32NormL)[0].read;
    EXPECT_NEAR(read(deep->content->Get<ImageBase>()->SampleB(0)), 1.0 / 65535, 1e-9);
    EXPECT_NEAR(read(deep->content->Get<ImageBase>()->SampleB(1)), 65534.0 / 65535, 1e-7);

    quillmarsh::tests::TiffPage const colours = {1, 1, 16, string(6, '\1'), 3, false, 1, 2};
    LoadedPtr const flat = LoadContent(directory_.Write("colours.tif", quillmarsh::tests::TiffBytes({colours})));
    EXPECT_NE(flat->desc.format, e_format_FP32NormL);
    EXPECT_EQ(flat->losses, (std::vector<string>{"16 bits become 8"}));
}

TEST_F(ViewerLoaderOnLinux, OpensFourGibibytesWithoutReadingThem)
{
    string const file = WriteSparseVolume(directory_, 4095, 1024, 1024);
    std::uint64_t const before = CountOwnBytes();
    loader_.Load(file);
    LoadResult const result = Take(loader_);
    ASSERT_EQ(result.part, LoadResult::ePart::e_levels) << result.failure;
    EXPECT_TRUE(result.loaded->content->IsMapped());
    VolumeBase const &volume = *result.loaded->content->Get<VolumeBase>();
    EXPECT_EQ(*volume.SampleB(0, 0, 0), 1);
    EXPECT_EQ(*volume.SampleB(4094, 1023, 1023), 2);
    AutoPtr<ImageBase> const preview = MakePreviewPicture(*result.loaded->content);
    EXPECT_EQ(preview->GetNumRows(), Preview::s_size);
    EXPECT_LT(CountOwnBytes(), before + (64 << 20));
}

TEST_F(ViewerLoaderOnLinux, GoesOnWhenAMappedFileShrinks)
{
    string const file = Save("a.qmdp.image", {2000, 1000}, 9);
    loader_.Load(file);
    LoadResult const content = Take(loader_);
    ASSERT_TRUE(content.loaded && content.loaded->content->IsMapped()) << content.failure;
    std::filesystem::resize_file(file, 100000);
    ImageBase const &image = *content.loaded->content->Get<ImageBase>();
    EXPECT_EQ(*image.SampleB(0, 0), 9);
    EXPECT_EQ(*image.SampleB(1999, 999), 0);
    AutoPtr<ImageBase> const preview = MakePreviewPicture(*content.loaded->content);
    EXPECT_NE(preview, nullptr);
    loader_.Load(file);
    LoadResult failed = Take(loader_);
    while (failed.part != LoadResult::ePart::e_failed)
        failed = Take(loader_);
    EXPECT_TRUE(quillmarsh::tests::Contains(failed.failure, "the file ends after")) << failed.failure;
}

/// Limits the size of files, as a full disk does.
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
    rlimit limit_ = {};
    void (*handler_)(int);
};

TEST_F(ViewerLoaderOnLinux, LosesNothingWhenTheDiskIsFull)
{
    string const file = Save("a.qmdp.image", {300, 300}, 9);
    string const old = quillmarsh::tests::ReadFile(file);
    Documents documents(loader_);
    Jobs jobs([] {});
    std::vector<string> said;
    DocumentWork work(jobs,
                      [&](string const &line, bool isFailure) { said.push_back((isFailure ? "! " : "") + line); });
    documents.Open(file);
    DocumentPtr const document = documents.GetCurrent();
    auto const await = [&]
    {
        return quillmarsh::tests::WaitUntil(
            [&] { return documents.Poll(), work.Update(), jobs.Poll(), !work.IsBusy(document); });
    };
    work.Change(document, {.kind = Edit::eKind::e_flip, .axis = eSampleAxis::e_rows}, "flip rows");
    ASSERT_TRUE(await());
    for (char const *const name : {"a.qmdp.image", "b.png", "b.bmp", "b.tif"})
    {
        FileSizeLimit const limit(100);
        string const target = directory_ / name;
        work.Save(document, target, *FindFileType(name), {.useCompression = false, .overwrite = true});
        ASSERT_TRUE(await());
        EXPECT_TRUE(said.back().starts_with("! " + target + ": ")) << said.back();
        EXPECT_TRUE(document->IsChanged());
    }
    EXPECT_EQ(quillmarsh::tests::ReadFile(file), old);
    EXPECT_EQ(directory_.CountEntries(), 1) << "nothing half is left";
    work.Save(document, file, *FindFileType(file), {.overwrite = true});
    ASSERT_TRUE(await());
    EXPECT_FALSE(document->IsChanged());
}

} // namespace
} // namespace viewer
