// The viewer from its start to the first picture of a large file, compared with the decoding alone.
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>

#include "benchmarks/support/picture_files.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <fstream>

namespace quillmarsh::benchmarks
{
namespace
{

/// 24 million samples.
constexpr unsigned int s_side = 4899;
/// How many times as long as the decoding the viewer may take, beside its own start.
constexpr double s_decodings = 1.15;

template<typename Work>
double MeasureSeconds(Work work)
{
    auto const begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// A folder with a picture, a script that ends the viewer once the picture shows, and no settings of a user.
class Scene : NoCopy
{
public:
    explicit Scene(string const &format) : picture_((folder_ / "picture").string())
    {
        std::filesystem::create_directories(folder_);
        ImageEncoderGdiplus().SaveImage(Photograph(s_side), picture_, format, NamedParameterList());
        std::ofstream(folder_ / "robot.txt") << "wait 'StatusLine / Label \"*8R8G8B8\"' -limit=1800\n";
    }
    ~Scene() { std::filesystem::remove_all(folder_); }

    string const &GetPicture() const { return picture_; }
    /// Returns false when the viewer failed.
    bool Show() const
    {
        string const folder = folder_.string();
        string const command = "XDG_CONFIG_HOME=" + folder + " XDG_STATE_HOME=" + folder +
                               " exec " QUILLMARSH_BENCHMARK_VIEWER " --headless 1280x800 --frame-rate 60 --robot " +
                               folder + "/robot.txt " + picture_ + " </dev/null >/dev/null 2>&1";
        return std::system(command.c_str()) == 0;
    }

private:
    std::filesystem::path folder_ = std::filesystem::temp_directory_path() / "quillmarsh-benchmark-viewer";
    string picture_;
};

/// The counter has the milliseconds until the end of the viewer beyond those of the decoding.
void RunFirstPicture(benchmark::State &state, char const *format, DecodedPixels (*decode)(string const &))
{
    Scene const scene(format);
    double beyond = 0;
    for (auto _ : state)
    {
        bool isShown = false;
        double const seconds = MeasureSeconds([&] { isShown = scene.Show(); });
        if (!isShown)
            state.SkipWithError("The viewer does not show the picture.");
        double const decoding = MeasureSeconds([&] { benchmark::DoNotOptimize(decode(scene.GetPicture())); });
        state.SetIterationTime(seconds);
        beyond += 1000 * (seconds - s_decodings * decoding);
    }
    state.counters["milliseconds_beyond"] = beyond / static_cast<double>(state.iterations());
}

BENCHMARK_CAPTURE(RunFirstPicture, jpg, "JPEG", &DecodeJpeg)->Name("viewer/first_picture/jpeg")->UseManualTime();
BENCHMARK_CAPTURE(RunFirstPicture, png, "PNG", &DecodePng)->Name("viewer/first_picture/png")->UseManualTime();

} // namespace
} // namespace quillmarsh::benchmarks
