// Packages of 64 MiB, compared with bare writes and reads of as many bytes in the same folder.
#include <quillmarsh/dataobjects/imageio.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

namespace quillmarsh::benchmarks
{
namespace
{

constexpr unsigned int s_numRows = 4096;
constexpr std::size_t s_byteSize = std::size_t{s_numRows} * s_numRows * 4;

/// Name of a file that is removed with the case.
class ScratchFile : NoCopy
{
public:
    ~ScratchFile() { std::filesystem::remove(name_); }
    string const &GetName() const { return name_; }

private:
    string name_ = (std::filesystem::temp_directory_path() / "quillmarsh-benchmark.qmdp.image").string();
};

/// Image of 64 MiB.
class LargeImage : public Image<Sample32>
{
public:
    LargeImage() : SignalBase(sizeof(Sample32)), Image(e_format_A8R8G8B8, s_numRows, s_numRows)
    {
        std::fill_n(GetSamplesB(), s_byteSize, static_cast<unsigned char>(7));
    }
};

std::FILE *OpenUnbuffered(string const &name, char const *mode)
{
    std::FILE *const file = std::fopen(name.c_str(), mode);
    std::setvbuf(file, nullptr, _IONBF, 0);
    return file;
}

void Save(benchmark::State &state, bool lastRowFirst)
{
    ScratchFile const file;
    LargeImage const image;
    DataPackageImage package;
    package.SetPayload(&image);
    package.SetRowOrderOnWrite(lastRowFirst);
    for (auto _ : state)
    {
        if (!package.SaveToFile(file.GetName(), false))
            state.SkipWithError("The package cannot be saved.");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * s_byteSize));
}

void Load(benchmark::State &state, bool lastRowFirst)
{
    ScratchFile const file;
    {
        LargeImage const image;
        DataPackageImage package;
        package.SetPayload(&image);
        package.SaveToFile(file.GetName(), false);
    }
    for (auto _ : state)
    {
        DataPackageImage package;
        package.SetRowOrderOnRead(lastRowFirst);
        if (!package.LoadFromFile(file.GetName(), false))
            state.SkipWithError("The package cannot be loaded.");
        benchmark::DoNotOptimize(package.GetPayload(false));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * s_byteSize));
}

/// Writes a new file and puts it in the place of the old one, as saving does.
void BareWrite(benchmark::State &state)
{
    ScratchFile const file;
    string const newName = file.GetName() + ".new";
    std::vector<unsigned char> const bytes(s_byteSize, 7);
    for (auto _ : state)
    {
        std::FILE *const out = OpenUnbuffered(newName, "wb");
        if (std::fwrite(bytes.data(), 1, s_byteSize, out) != s_byteSize)
            state.SkipWithError("The file cannot be written.");
        std::fclose(out);
        std::filesystem::rename(newName, file.GetName());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * s_byteSize));
}

/// Reads into new memory each time, as a container does.
void BareRead(benchmark::State &state)
{
    ScratchFile const file;
    {
        std::vector<unsigned char> const bytes(s_byteSize, 7);
        std::FILE *const out = OpenUnbuffered(file.GetName(), "wb");
        std::fwrite(bytes.data(), 1, s_byteSize, out);
        std::fclose(out);
    }
    for (auto _ : state)
    {
        auto const bytes = std::make_unique_for_overwrite<unsigned char[]>(s_byteSize);
        std::FILE *const in = OpenUnbuffered(file.GetName(), "rb");
        if (std::fread(bytes.get(), 1, s_byteSize, in) != s_byteSize)
            state.SkipWithError("The file cannot be read.");
        std::fclose(in);
        benchmark::DoNotOptimize(bytes.get());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * s_byteSize));
}

BENCHMARK_CAPTURE(Save, , false)->Name("datapackage/save/64MiB")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Save, , true)->Name("datapackage/save_last_row_first/64MiB")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Load, , false)->Name("datapackage/load/64MiB")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Load, , true)->Name("datapackage/load_last_row_first/64MiB")->Unit(benchmark::kMillisecond);
BENCHMARK(BareWrite)->Name("limit/write/64MiB")->Unit(benchmark::kMillisecond);
BENCHMARK(BareRead)->Name("limit/read/64MiB")->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillmarsh::benchmarks
