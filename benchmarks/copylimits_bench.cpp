// Plain copies and fills: the limits of everything that reads and writes samples. There are two kinds of stores, and a
// case is compared with the limit that has its own kind.
#include "benchmarks/support/image_blocks.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <emmintrin.h>
#include <iterator>
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

/// @name Stores past the caches: cache lines that are written whole are not read first
/// @{
constexpr std::size_t s_line = 64;
/// Distance in bytes at which memory is fetched ahead.
constexpr std::size_t s_ahead = 8192;

struct Line
{
    __m128i parts[4];

    static Line Load(unsigned char const *at)
    {
        auto const *const from = reinterpret_cast<__m128i const *>(at);
        return {{_mm_load_si128(from), _mm_load_si128(from + 1), _mm_load_si128(from + 2), _mm_load_si128(from + 3)}};
    }
    void StorePastCaches(unsigned char *at) const
    {
        for (std::size_t i = 0; i < std::size(parts); ++i)
            _mm_stream_si128(reinterpret_cast<__m128i *>(at) + i, parts[i]);
    }
    void Mix(Line const &other)
    {
        for (std::size_t i = 0; i < std::size(parts); ++i)
            parts[i] = _mm_xor_si128(parts[i], other.parts[i]);
    }
};

/// Reads `srcSize` bytes and writes `dstSize` bytes for each sample, a cache line at a time: the memory traffic of a
/// transfer without its work.
template<unsigned int dstSize, unsigned int srcSize>
void MovePastCaches(unsigned char *dst, unsigned char const *src, std::size_t numSamples)
{
    constexpr std::size_t numLines = std::min(dstSize, srcSize);
    for (std::size_t i = 0; i < numSamples; i += s_line)
    {
        Line lines[numLines] = {};
        for (std::size_t k = 0; k < srcSize; ++k)
        {
            unsigned char const *const from = src + i * srcSize + k * s_line;
            _mm_prefetch(reinterpret_cast<char const *>(from) + s_ahead, _MM_HINT_T0);
            lines[k % numLines].Mix(Line::Load(from));
        }
        for (std::size_t k = 0; k < dstSize; ++k)
            lines[k % numLines].StorePastCaches(dst + i * dstSize + k * s_line);
    }
    _mm_sfence();
}

void FillPastCaches(unsigned char *dst, int value, std::size_t size)
{
    __m128i const bytes = _mm_set1_epi8(static_cast<char>(value));
    for (std::size_t at = 0; at < size; at += s_line)
        Line{{bytes, bytes, bytes, bytes}}.StorePastCaches(dst + at);
    _mm_sfence();
}
/// @}

/// A copy moves each byte twice: it reads it and writes it.
void RunCopy(benchmark::State &state, unsigned int movedBytes, unsigned int side)
{
    std::size_t const size = std::size_t{movedBytes} * side * side / 2;
    for (auto _ : state)
    {
        std::memcpy(GetImageBlock(0), GetImageBlock(1), size);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * movedBytes * side * side);
}

template<unsigned int dstSize, unsigned int srcSize>
void RunMovePastCaches(benchmark::State &state, unsigned int side)
{
    for (auto _ : state)
    {
        MovePastCaches<dstSize, srcSize>(GetImageBlock(0), GetImageBlock(1), std::size_t{side} * side);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * (dstSize + srcSize) * side * side);
}

void RunFillPastCaches(benchmark::State &state, unsigned int side)
{
    std::size_t const size = std::size_t{4} * side * side;
    for (auto _ : state)
    {
        FillPastCaches(GetImageBlock(0), 7, size);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * size));
}

template<unsigned int dstSize, unsigned int srcSize>
void RegisterMove(unsigned int side)
{
    std::string const work = "past_caches_" + std::to_string(dstSize) + "_from_" + std::to_string(srcSize);
    benchmark::RegisterBenchmark(NameOfCase("limit", work.c_str(), side).c_str(), RunMovePastCaches<dstSize, srcSize>,
                                 side);
}

bool RegisterAll()
{
    for (unsigned int const side : s_imageSides)
    {
        for (unsigned int const moved : {2, 3, 4, 5, 6, 8, 9, 10, 12})
        {
            std::string const work = "copy_of_" + std::to_string(moved) + "_bytes_a_sample";
            benchmark::RegisterBenchmark(NameOfCase("limit", work.c_str(), side).c_str(), RunCopy, moved, side);
        }
        RegisterMove<1, 2>(side);
        RegisterMove<1, 4>(side);
        RegisterMove<2, 2>(side);
        RegisterMove<2, 4>(side);
        RegisterMove<4, 1>(side);
        RegisterMove<4, 2>(side);
        RegisterMove<4, 4>(side);
        benchmark::RegisterBenchmark(NameOfCase("limit", "past_caches_fill", side).c_str(), RunFillPastCaches, side);
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
