// Plain copies: the limit of everything that reads and writes samples.
#include "benchmarks/support/image_blocks.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <random>
#include <string>

namespace quillmarsh::benchmarks
{
namespace
{

constexpr std::size_t s_blockSize = std::size_t{96} << 20;

unsigned char *MakeBlock(unsigned int seed)
{
    auto *const block = static_cast<unsigned char *>(std::aligned_alloc(std::size_t{2} << 20, s_blockSize));
    if (!block)
        throw std::bad_alloc();
    std::minstd_rand random(seed);
    for (std::size_t i = 0; i < s_blockSize; i += sizeof(float))
    {
        float const value = static_cast<float>(random() % 65536) / 65535.0f;
        std::memcpy(block + i, &value, sizeof value);
    }
    return block;
}

/// A copy moves each byte twice: out of one place and into another.
void RunCopy(benchmark::State &state, unsigned int movedBytes, unsigned int side)
{
    std::size_t const size = std::size_t{movedBytes} * side * side / 2;
    unsigned char *const dst = GetImageBlock(0);
    unsigned char const *const src = GetImageBlock(1);
    for (auto _ : state)
    {
        std::memcpy(dst, src, size);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * movedBytes * side * side);
}

bool RegisterAll()
{
    for (unsigned int const moved : {2, 3, 4, 5, 6, 8, 9, 10, 12})
    {
        for (unsigned int const side : s_imageSides)
        {
            std::string const work = "copy_of_" + std::to_string(moved) + "_bytes_a_sample";
            benchmark::RegisterBenchmark(NameOfCase("limit", work.c_str(), side).c_str(), RunCopy, moved, side);
        }
    }
    return true;
}

[[maybe_unused]] bool const s_isRegistered = RegisterAll();

} // namespace

unsigned char *GetImageBlock(unsigned int index)
{
    static unsigned char *const s_blocks[2] = {MakeBlock(1), MakeBlock(2)};
    return s_blocks[index];
}

} // namespace quillmarsh::benchmarks
