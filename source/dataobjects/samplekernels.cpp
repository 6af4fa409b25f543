#include "source/dataobjects/samplekernels.h"

// The newest set has a wrong truncation in the version that distributions still carry.
#define HWY_DISABLED_TARGETS HWY_AVX3_DL

// The code below is compiled once for each set of vector instructions.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "source/dataobjects/samplekernels.cpp"
#include <hwy/foreach_target.h>

#include "source/dataobjects/samplelanes-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace quillmarsh
{
namespace HWY_NAMESPACE
{
namespace
{

#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128

// Without vectors the one-element processors do it all.
std::size_t Run(eSampleKernel, unsigned char *, unsigned char const *, std::size_t)
{
    return 0;
}

#else

HWY_ATTR V32 Pack4444(V32 colours)
{
    V32 const nibbles = hn::And(hn::ShiftRight<4>(colours), Set32(0x0F0F0F0F));
    V32 const pairs = hn::Or(nibbles, hn::ShiftRight<4>(nibbles));
    return Shuffle(pairs, 0x80800200);
}

HWY_ATTR V32 Unpack4444(V32 words)
{
    V32 const pairs = hn::And(hn::Or(words, hn::ShiftLeft<8>(words)), Set32(0x00FF00FF));
    V32 const nibbles = hn::And(hn::Or(pairs, hn::ShiftLeft<4>(pairs)), Set32(0x0F0F0F0F));
    return hn::Or(nibbles, hn::ShiftLeft<4>(nibbles));
}

HWY_ATTR V32 Pack1555(V32 colours)
{
    V32 const blue = hn::And(hn::ShiftRight<3>(colours), Set32(0x001F));
    V32 const blueGreen = hn::OrAnd(blue, hn::ShiftRight<6>(colours), Set32(0x03E0));
    V32 const colour = hn::OrAnd(blueGreen, hn::ShiftRight<9>(colours), Set32(0x7C00));
    return hn::OrAnd(colour, hn::ShiftRight<16>(colours), Set32(0x8000));
}

/// Two fields of five bits in the halves of each lane, times 255 / 31 and rounded: (527 n + 23) / 64 is the same for
/// every n below 32. A factor for the upper half gives another scale.
HWY_ATTR V32 SpreadFields(V32 fields, std::uint32_t upperFactor)
{
    V16 const products = hn::Mul(hn::BitCast(s_d16, fields), hn::BitCast(s_d16, Set32(upperFactor << 16 | 527)));
    return hn::BitCast(s_d32, hn::ShiftRight<6>(hn::Add(products, hn::Set(s_d16, std::uint16_t{23}))));
}

HWY_ATTR V32 Unpack1555(V32 words)
{
    V32 const blue = hn::And(words, Set32(31));
    V32 const green = hn::And(hn::ShiftRight<5>(words), Set32(31));
    V32 const blueRed = hn::OrAnd(blue, hn::ShiftLeft<6>(words), Set32(31 << 16));
    V32 const greenAlpha = hn::OrAnd(green, hn::ShiftLeft<1>(words), Set32(1 << 16));
    // The one bit of alpha becomes 255.
    return hn::Or(SpreadFields(blueRed, 527), hn::ShiftLeft<8>(SpreadFields(greenAlpha, 255 * 64)));
}

/// @name Kernels: one vector of samples each
/// @{
struct ByteFromWordLow
{
    static HWY_ATTR void Run(unsigned char *dst, unsigned char const *src) { StoreBytesOf16(dst, LoadWords(src)); }
};

struct ByteFromWordHigh
{
    static HWY_ATTR void Run(unsigned char *dst, unsigned char const *src)
    {
        StoreBytesOf16(dst, hn::ShiftRight<8>(LoadWords(src)));
    }
};

struct ByteFromColourAlpha
{
    static HWY_ATTR V32 Values(unsigned char const *src) { return hn::ShiftRight<24>(LoadColours(src)); }
};

struct ByteFromColourLuminance
{
    static HWY_ATTR V32 Values(unsigned char const *src) { return Luminance(LoadColours(src)); }
};

struct ByteFromFloat
{
    static HWY_ATTR V32 Values(unsigned char const *src)
    {
        auto const values = hn::BitCast(s_dFloat, LoadColours(src));
        return hn::And(RoundLanes(hn::Mul(values, hn::Set(s_dFloat, 255.0f))), Set32(0xFF));
    }
};

struct WordSetLowFromByte
{
    static HWY_ATTR void Run(unsigned char *dst, unsigned char const *src)
    {
        V16 const kept = hn::And(LoadWords(dst), hn::Set(s_d16, std::uint16_t{0xFF00}));
        StoreWords(dst, hn::Or(kept, LoadBytesTo16(src)));
    }
};

struct WordSetHighFromByte
{
    static HWY_ATTR void Run(unsigned char *dst, unsigned char const *src)
    {
        V16 const kept = hn::And(LoadWords(dst), hn::Set(s_d16, std::uint16_t{0x00FF}));
        StoreWords(dst, hn::Or(kept, hn::ShiftLeft<8>(LoadBytesTo16(src))));
    }
};

struct WordSetLowFromColourLuminance
{
    static HWY_ATTR void Run(unsigned char *dst, unsigned char const *src)
    {
        auto const luminance = hn::TruncateTo(s_d16For32, Luminance(LoadColours(src)));
        auto const kept = hn::And(LoadWordsFor32(dst), hn::Set(s_d16For32, std::uint16_t{0xFF00}));
        StoreWordsFor32(dst, hn::Or(kept, luminance));
    }
};

struct WordFromColourLuminanceAlpha
{
    static HWY_ATTR V32 Values(unsigned char const *src)
    {
        V32 const colours = LoadColours(src);
        return hn::OrAnd(Luminance(colours), hn::ShiftRight<16>(colours), Set32(0xFF00));
    }
};

struct Word4444FromColour
{
    static HWY_ATTR V32 Values(unsigned char const *src) { return Pack4444(LoadColours(src)); }
};

struct Word1555FromColour
{
    static HWY_ATTR V32 Values(unsigned char const *src) { return Pack1555(LoadColours(src)); }
};

struct ColourSetAlphaFromByte
{
    static HWY_ATTR void Run(unsigned char *dst, unsigned char const *src)
    {
        V32 const alpha = hn::ShiftLeft<24>(LoadBytesTo32(src));
        StoreColours(dst, hn::Or(hn::And(LoadColours(dst), Set32(0x00FFFFFF)), alpha));
    }
};

struct ColourSetBGRFromByte
{
    static HWY_ATTR void Run(unsigned char *dst, unsigned char const *src)
    {
        V32 const colours = Shuffle(LoadBytesTo32(src), 0x80000000);
        StoreColours(dst, hn::Or(hn::And(LoadColours(dst), Set32(0xFF000000)), colours));
    }
};

struct ColourSetBGRFromWordLow
{
    static HWY_ATTR void Run(unsigned char *dst, unsigned char const *src)
    {
        V32 const colours = Shuffle(LoadWordsTo32(src), 0x80000000);
        StoreColours(dst, hn::Or(hn::And(LoadColours(dst), Set32(0xFF000000)), colours));
    }
};

struct ColourFromWordLuminanceAlpha
{
    static HWY_ATTR V32 Values(unsigned char const *src) { return Shuffle(LoadWordsTo32(src), 0x01000000); }
};

struct ColourFromWord4444
{
    static HWY_ATTR V32 Values(unsigned char const *src) { return Unpack4444(LoadWordsTo32(src)); }
};

struct ColourFromWord1555
{
    static HWY_ATTR V32 Values(unsigned char const *src) { return Unpack1555(LoadWordsTo32(src)); }
};

struct FloatFromByte
{
    static HWY_ATTR V32 Values(unsigned char const *src)
    {
        return hn::BitCast(s_d32, hn::Mul(ToFloat(LoadBytesTo32(src)), hn::Set(s_dFloat, 0.003921569f)));
    }
};
/// @}

/// Stores the low bytes or words of a vector of lanes, which have no others, or all of it.
template<std::size_t dstSize>
HWY_ATTR inline void StoreLanes(unsigned char *at, V32 values)
{
    if constexpr (dstSize == 1)
        StoreBytesOf32(at, values);
    else if constexpr (dstSize == 2)
        StoreWordsFor32(at, hn::TruncateTo(s_d16For32, values));
    else
        StoreColours(at, values);
}

#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3

/// @name Packing of lanes
/// The instructions work in each group of four lanes by itself; the groups are put in order afterwards.
/// @{
#if HWY_TARGET == HWY_AVX3
constexpr std::uint32_t s_orderOf4[] = {0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15};
constexpr std::uint32_t s_orderOf2[] = {0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15};
HWY_ATTR inline V32 PackToWords(V32 a, V32 b)
{
    return V32{_mm512_packus_epi32(a.raw, b.raw)};
}
HWY_ATTR inline V32 PackToBytes(V32 a, V32 b)
{
    return V32{_mm512_packus_epi16(a.raw, b.raw)};
}
#else
constexpr std::uint32_t s_orderOf4[] = {0, 4, 1, 5, 2, 6, 3, 7};
constexpr std::uint32_t s_orderOf2[] = {0, 1, 4, 5, 2, 3, 6, 7};
HWY_ATTR inline V32 PackToWords(V32 a, V32 b)
{
    return V32{_mm256_packus_epi32(a.raw, b.raw)};
}
HWY_ATTR inline V32 PackToBytes(V32 a, V32 b)
{
    return V32{_mm256_packus_epi16(a.raw, b.raw)};
}
#endif

HWY_ATTR inline V32 InOrder(V32 packed, std::uint32_t const *order)
{
    return hn::TableLookupLanes(packed, hn::SetTableIndices(s_d32, order));
}
/// @}

/// One vector full of what a kernel gives.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR inline V32 FullVector(unsigned char const *src)
{
    std::size_t const step = hn::Lanes(s_d32) * srcSize;
    if constexpr (dstSize == 4)
        return Kernel::Values(src);
    else if constexpr (dstSize == 2)
        return InOrder(PackToWords(Kernel::Values(src), Kernel::Values(src + step)), s_orderOf2);
    else
    {
        V32 const first = PackToWords(Kernel::Values(src), Kernel::Values(src + step));
        V32 const second = PackToWords(Kernel::Values(src + 2 * step), Kernel::Values(src + 3 * step));
        return InOrder(PackToBytes(first, second), s_orderOf4);
    }
}

/// Writes past the caches: lines that are written whole need not be read. Returns the samples that were done.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR std::size_t RunPastCaches(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    std::size_t const step = hn::Lanes(s_d8) / dstSize;
    // The samples up to the first line are written twice.
    std::size_t done = CountBytesToLine(dst) / dstSize;
    for (std::size_t i = 0; i < done; i += step)
        StoreColours(dst + i * dstSize, FullVector<Kernel, dstSize, srcSize>(src + i * srcSize));
    for (; count - done >= step; done += step)
        hn::Stream(hn::BitCast(s_d8, FullVector<Kernel, dstSize, srcSize>(src + done * srcSize)), s_d8,
                   dst + done * dstSize);
    hwy::FlushStream();
    return done;
}

template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR std::size_t RunFullVectors(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    if (count * dstSize >= s_bigBlockSize && dstSize >= s_pastCachesFrom && CountBytesToLine(dst) % dstSize == 0)
        return RunPastCaches<Kernel, dstSize, srcSize>(dst, src, count);
    std::size_t const step = hn::Lanes(s_d8) / dstSize;
    std::size_t done = 0;
    for (; count - done >= 2 * step; done += 2 * step)
    {
        V32 const first = FullVector<Kernel, dstSize, srcSize>(src + done * srcSize);
        V32 const second = FullVector<Kernel, dstSize, srcSize>(src + (done + step) * srcSize);
        StoreColours(dst + done * dstSize, first);
        StoreColours(dst + (done + step) * dstSize, second);
    }
    return done;
}

#else

// Four vectors for each turn of the loop.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR std::size_t RunFullVectors(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    std::size_t const step = hn::Lanes(s_d32);
    std::size_t done = 0;
    for (; count - done >= 4 * step; done += 4 * step)
    {
        for (std::size_t i = done; i < done + 4 * step; i += step)
            StoreLanes<dstSize>(dst + i * dstSize, Kernel::Values(src + i * srcSize));
    }
    return done;
}

#endif

/// Runs a kernel that gives values in lanes of 32 bits, over as many whole vectors as there are.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR std::size_t RunValues(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    std::size_t const step = hn::Lanes(s_d32);
    std::size_t done = RunFullVectors<Kernel, dstSize, srcSize>(dst, src, count);
    for (; count - done >= step; done += step)
        StoreLanes<dstSize>(dst + done * dstSize, Kernel::Values(src + done * srcSize));
    return done;
}

/// Runs a kernel over as many whole vectors as there are.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR std::size_t RunAll(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    std::size_t const step = dstSize < 4 && srcSize < 4 ? hn::Lanes(s_d16) : hn::Lanes(s_d32);
    std::size_t done = 0;
    for (; count - done >= 4 * step; done += 4 * step)
    {
        for (std::size_t i = done; i < done + 4 * step; i += step)
            Kernel::Run(dst + i * dstSize, src + i * srcSize);
    }
    for (; count - done >= step; done += step)
        Kernel::Run(dst + done * dstSize, src + done * srcSize);
    return done;
}

std::size_t Run(eSampleKernel kernel, unsigned char *dst, unsigned char const *src, std::size_t count)
{
    switch (kernel)
    {
    case eSampleKernel::e_none:
        return 0;
    case eSampleKernel::e_byteFromWordLow:
        return RunAll<ByteFromWordLow, 1, 2>(dst, src, count);
    case eSampleKernel::e_byteFromWordHigh:
        return RunAll<ByteFromWordHigh, 1, 2>(dst, src, count);
    case eSampleKernel::e_byteFromColourAlpha:
        return RunValues<ByteFromColourAlpha, 1, 4>(dst, src, count);
    case eSampleKernel::e_byteFromColourLuminance:
        return RunValues<ByteFromColourLuminance, 1, 4>(dst, src, count);
    case eSampleKernel::e_byteFromFloat:
        return RunValues<ByteFromFloat, 1, 4>(dst, src, count);
    case eSampleKernel::e_wordSetLowFromByte:
        return RunAll<WordSetLowFromByte, 2, 1>(dst, src, count);
    case eSampleKernel::e_wordSetHighFromByte:
        return RunAll<WordSetHighFromByte, 2, 1>(dst, src, count);
    case eSampleKernel::e_wordSetLowFromColourLuminance:
        return RunAll<WordSetLowFromColourLuminance, 2, 4>(dst, src, count);
    case eSampleKernel::e_wordFromColourLuminanceAlpha:
        return RunValues<WordFromColourLuminanceAlpha, 2, 4>(dst, src, count);
    case eSampleKernel::e_word4444FromColour:
        return RunValues<Word4444FromColour, 2, 4>(dst, src, count);
    case eSampleKernel::e_word1555FromColour:
        return RunValues<Word1555FromColour, 2, 4>(dst, src, count);
    case eSampleKernel::e_colourSetAlphaFromByte:
        return RunAll<ColourSetAlphaFromByte, 4, 1>(dst, src, count);
    case eSampleKernel::e_colourSetBGRFromByte:
        return RunAll<ColourSetBGRFromByte, 4, 1>(dst, src, count);
    case eSampleKernel::e_colourSetBGRFromWordLow:
        return RunAll<ColourSetBGRFromWordLow, 4, 2>(dst, src, count);
    case eSampleKernel::e_colourFromWordLuminanceAlpha:
        return RunValues<ColourFromWordLuminanceAlpha, 4, 2>(dst, src, count);
    case eSampleKernel::e_colourFromWord4444:
        return RunValues<ColourFromWord4444, 4, 2>(dst, src, count);
    case eSampleKernel::e_colourFromWord1555:
        return RunValues<ColourFromWord1555, 4, 2>(dst, src, count);
    case eSampleKernel::e_floatFromByte:
        return RunValues<FloatFromByte, 4, 1>(dst, src, count);
    }
    return 0;
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace quillmarsh
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quillmarsh
{
namespace
{

HWY_EXPORT(Run);

} // namespace

#ifdef HWY_COMPILE_ONLY_STATIC
// One set of instructions, which the build took for granted and the machine may lack.
bool CanRunKernels()
{
    static bool const can = __builtin_cpu_supports("ssse3");
    return can;
}
#else
bool CanRunKernels()
{
    return true;
}
#endif

std::size_t RunSampleKernel(eSampleKernel kernel, unsigned char *dst, unsigned char const *src, std::size_t count)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(Run)(kernel, dst, src, count) : 0;
}

#ifdef HWY_COMPILE_ONLY_STATIC

std::vector<long long> GetKernelTargets()
{
    return {HWY_STATIC_TARGET};
}

void SetKernelTarget(long long) {}

#else

std::vector<long long> GetKernelTargets()
{
    std::vector<long long> targets;
    for (std::int64_t const target : hwy::SupportedAndGeneratedTargets())
        targets.push_back(target);
    return targets;
}

void SetKernelTarget(long long target)
{
    hwy::SetSupportedTargetsForTest(target);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

#endif

} // namespace quillmarsh
#endif
