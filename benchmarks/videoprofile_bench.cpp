#include "benchmarks/support/allocation_counter.h"

#include <quillmarsh/framework/videoconfig.h>
#include <quillmarsh/framework/videoprofile.h>

#include <benchmark/benchmark.h>

namespace quillmarsh::benchmarks
{
namespace
{

/// Offers as many display modes as frame buffers, all of them different.
VideoProfile MakeProfile(unsigned int count)
{
    VideoProfile profile;
    for (unsigned int i = 0; i < count; ++i)
    {
        for (unsigned int const frequency : {60u, 75u, 100u})
            profile.Add(DisplayModeConfig(320 + 8 * (i % 100), 200 + 10 * (i / 100), i % 2 == 0 ? 16 : 32, frequency));
        FrameBufferConfig config(i % 2 == 0, i % 4 < 2, 1 + i % 3, 16 + i % 17, 8, i % 5 == 0 ? 16 : 0);
        config.StencilBits = i / 17;
        profile.Add(config);
    }
    profile.BuildPostProcess();
    return profile;
}

/// Both selections, and the configuration that is made of them.
void ChooseClosest(benchmark::State &state)
{
    auto const count = static_cast<unsigned int>(state.range(0));
    VideoProfile const profile = MakeProfile(count);
    if (profile.GetNumDisplayModeProperties() != count || profile.GetNumFrameBufferConfigs() != count)
        state.SkipWithError("The profile is not as large as it should be.");
    VideoConfig wish(false);
    wish.DisplayMode = DisplayModeConfig(701, 233, 32, 70);
    VideoConfig config(wish);
    RunCounted(state,
               [&]
               {
                   benchmark::DoNotOptimize(profile.SelectClosestLowerDisplayModeProperties(wish.DisplayMode));
                   benchmark::DoNotOptimize(profile.SelectClosestFrameBufferConfig(wish.FrameBuffer));
                   benchmark::DoNotOptimize(profile.ConstructClosestValidVideoConfig(wish, config));
               });
}
BENCHMARK(ChooseClosest)->Name("videoprofile/closest")->Arg(1000);

} // namespace
} // namespace quillmarsh::benchmarks
