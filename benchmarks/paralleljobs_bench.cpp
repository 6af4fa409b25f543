// Pictures converted one by one, and on two threads.
#include <quillmarsh/basetools/paralleljobs.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/imageoperations.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include <benchmark/benchmark.h>

#include <filesystem>

namespace quillmarsh::benchmarks
{
namespace
{

using namespace sampled_data;

constexpr std::size_t s_numFiles = 8;

/// Pictures in a folder that is removed with the case.
class PictureFolder : NoCopy
{
public:
    PictureFolder()
    {
        std::filesystem::create_directories(folder_);
        Image<Sample32> image(e_format_X8R8G8B8, 512, 512);
        for (unsigned int i = 0; i < image.GetTotalByteSize(); ++i)
            image.GetSamplesB()[i] = static_cast<unsigned char>(i / 97 + (i * 2654435761u >> 30));
        AutoPtr<ImageBase> copy(CloneImage(image));
        SampledData const data(std::move(copy));
        for (std::size_t i = 0; i < s_numFiles; ++i)
            SaveFile(data, GetName(i, ".png"), *FindFileType(".png"), settings_);
    }
    ~PictureFolder() { std::filesystem::remove_all(folder_); }

    void Convert(std::size_t i) const
    {
        SampledData const data = LoadFile(GetName(i, ".png"), *FindFileType(".png"));
        SaveFile(data, GetName(i, ".tiff"), *FindFileType(".tiff"), settings_);
    }

private:
    string GetName(std::size_t i, char const *extension) const
    {
        return (folder_ / (std::to_string(i) + extension)).string();
    }

    std::filesystem::path folder_ = std::filesystem::temp_directory_path() / "quillmarsh-benchmark-pictures";
    SaveSettings settings_ = {.compressionLevel = 50, .overwrite = true};
};

void RunConversions(benchmark::State &state, unsigned int numThreads)
{
    SignalOperationsManager const operations;
    DataCodecManager const codecs;
    RegisterDefaultDataCodecs();
    PictureFolder const folder;
    for (auto _ : state)
        RunInParallel(numThreads, s_numFiles, [&](std::size_t i) { folder.Convert(i); });
}
BENCHMARK_CAPTURE(RunConversions, one, 1)->Name("convert_files/1_thread")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RunConversions, two, 2)
    ->Name("convert_files/2_threads")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillmarsh::benchmarks
