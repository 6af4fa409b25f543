#include "source/dataobjects/transfer/samplekernels.h"

// The newest set truncates wrongly in the version that distributions still have.
#define HWY_DISABLED_TARGETS HWY_AVX3_DL

// The code below is compiled once for each set of vector instructions.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "source/dataobjects/transfer/samplekernels.cpp"
#include <hwy/foreach_target.h>

#include "source/dataobjects/transfer/samplelanes-inl.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace quillmarsh
{
namespace HWY_NAMESPACE
{
namespace
{

#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128

// Without vectors, the one-element processors do all the work.
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

#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3

/// Sums of products combine the fields: first blue with green and red with alpha, in 16 bits, then both pairs. The
/// fields are in the upper bits of their bytes, so the sum is three bits too high.
HWY_ATTR V32 Pack1555(V32 colours)
{
    V32 const fields = hn::And(colours, Set32(0x80F8F8F8));
    V32 const inPairs = Set32(0x02012001), inColours = Set32(0x04000001);
#if HWY_TARGET == HWY_AVX3
    V32 const sums{_mm512_madd_epi16(_mm512_maddubs_epi16(fields.raw, inPairs.raw), inColours.raw)};
#else
    V32 const sums{_mm256_madd_epi16(_mm256_maddubs_epi16(fields.raw, inPairs.raw), inColours.raw)};
#endif
    return hn::ShiftRight<3>(sums);
}

#else

HWY_ATTR V32 Pack1555(V32 colours)
{
    V32 const blue = hn::And(hn::ShiftRight<3>(colours), Set32(0x001F));
    V32 const blueGreen = hn::OrAnd(blue, hn::ShiftRight<6>(colours), Set32(0x03E0));
    V32 const colour = hn::OrAnd(blueGreen, hn::ShiftRight<9>(colours), Set32(0x7C00));
    return hn::OrAnd(colour, hn::ShiftRight<16>(colours), Set32(0x8000));
}

#endif

/// Returns five bits, which start at bit `place` of their lane, times 255 / 31 and rounded. The products are exact
/// enough for every value if the place is 4 or 5.
template<int place>
HWY_ATTR inline V16 SpreadField(V16 fields)
{
    constexpr auto factor = static_cast<std::int16_t>(255.0 / 31.0 * (0x8000 >> place) + 0.5);
    constexpr hn::Rebind<std::int16_t, decltype(s_d16)> dInt;
    return hn::BitCast(s_d16, hn::MulFixedPoint15(hn::BitCast(dInt, fields), hn::Set(dInt, factor)));
}

/// Returns the lower two bytes of the colours of words in lanes of 16 bits; a lane of zero gives zero.
HWY_ATTR inline V16 BlueGreenOf1555(V16 words)
{
    V16 const blue = SpreadField<4>(hn::And(hn::ShiftLeft<4>(words), hn::Set(s_d16, std::uint16_t{31 << 4})));
    V16 const green = SpreadField<5>(hn::And(words, hn::Set(s_d16, std::uint16_t{31 << 5})));
    return hn::Or(blue, hn::ShiftLeft<8>(green));
}

/// Returns the upper two bytes; an alpha bit of 1 becomes 255.
HWY_ATTR inline V16 RedAlphaOf1555(V16 words)
{
    constexpr hn::Rebind<std::int16_t, decltype(s_d16)> dInt;
    V16 const red = SpreadField<4>(hn::And(hn::ShiftRight<6>(words), hn::Set(s_d16, std::uint16_t{31 << 4})));
    V16 const alpha = hn::BitCast(s_d16, hn::ShiftRight<15>(hn::BitCast(dInt, words)));
    return hn::OrAnd(red, alpha, hn::Set(s_d16, std::uint16_t{0xFF00}));
}

HWY_ATTR V32 Unpack1555(V32 words)
{
    V16 const lanes = hn::BitCast(s_d16, words);
    V32 const redAlpha = hn::BitCast(s_d32, RedAlphaOf1555(lanes));
    return hn::Or(hn::BitCast(s_d32, BlueGreenOf1555(lanes)), hn::ShiftLeft<16>(redAlpha));
}

/// Two consecutive vectors.
struct TwoVectors
{
    V32 first, second;
};

/// @name Kernels: one vector of samples each
/// @{
struct ByteFromWordLow
{
    static HWY_ATTR V16 Words(unsigned char const *src)
    {
        return hn::And(LoadWords(src), hn::Set(s_d16, std::uint16_t{0xFF}));
    }
    static HWY_ATTR void Run(unsigned char *dst, unsigned char const *src) { StoreBytesOf16(dst, LoadWords(src)); }
};

struct ByteFromWordHigh
{
    static HWY_ATTR V16 Words(unsigned char const *src) { return hn::ShiftRight<8>(LoadWords(src)); }
    static HWY_ATTR void Run(unsigned char *dst, unsigned char const *src) { StoreBytesOf16(dst, Words(src)); }
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
    /// Converts a whole vector of words, whose groups are in the order for splitting.
    static HWY_ATTR TwoVectors TwoValues(V16 words)
    {
        V16 const blueGreen = BlueGreenOf1555(words), redAlpha = RedAlphaOf1555(words);
        return {hn::BitCast(s_d32, hn::InterleaveLower(s_d16, blueGreen, redAlpha)),
                hn::BitCast(s_d32, hn::InterleaveUpper(s_d16, blueGreen, redAlpha))};
    }
};

struct FloatFromByte
{
    static HWY_ATTR V32 Values(unsigned char const *src)
    {
        return hn::BitCast(s_d32, hn::Mul(ToFloat(LoadBytesTo32(src)), hn::Set(s_dFloat, 0.003921569f)));
    }
};
/// @}

/// Stores the low bytes or words of the lanes of a vector, whose upper bits must be 0, or whole lanes.
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

/// Returns one full vector of a kernel's results.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR inline V32 FullVector(unsigned char const *src)
{
    std::size_t const step = hn::Lanes(s_d32) * srcSize;
    if constexpr (requires { Kernel::Words(src); })
    {
        V32 const first = hn::BitCast(s_d32, Kernel::Words(src));
        return InOrder(PackToBytes(first, hn::BitCast(s_d32, Kernel::Words(src + hn::Lanes(s_d8)))), s_orderOf2);
    }
    else if constexpr (dstSize == 4)
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

/// Returns the next two vectors of a kernel's results.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR inline TwoVectors NextVectors(unsigned char const *src)
{
    if constexpr (requires(V16 words) { Kernel::TwoValues(words); })
        return Kernel::TwoValues(hn::BitCast(s_d16, InOrder(LoadColours(src), s_orderToSplit)));
    else
        return {FullVector<Kernel, dstSize, srcSize>(src),
                FullVector<Kernel, dstSize, srcSize>(src + hn::Lanes(s_d8) / dstSize * srcSize)};
}

/// For blocks below this size, a start at a cache line costs more than it saves.
constexpr std::size_t s_shortBlockSize = std::size_t{16} << 10;

/// Distance in bytes at which the source is prefetched within the caches.
constexpr std::size_t s_nearFetchDistance = 256;

/// Writes the samples up to the next cache line, and returns their number. Whole vectors are written, so the samples
/// after them may be written too. The start must be a whole number of samples away from the line.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR HWY_NOINLINE std::size_t RunToLine(unsigned char *dst, unsigned char const *src)
{
    std::size_t const count = CountBytesToLine(dst) / dstSize;
    for (std::size_t i = 0; i < count; i += hn::Lanes(s_d8) / dstSize)
        StoreColours(dst + i * dstSize, FullVector<Kernel, dstSize, srcSize>(src + i * srcSize));
    return count;
}

/// Writes past the caches, so that cache lines which are written whole are not read first. Begins at a cache line, and
/// returns the number of samples that are done.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR std::size_t RunPastCaches(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    std::size_t const size = hn::Lanes(s_d8);
    std::size_t const step = 2 * (size / dstSize);
    std::size_t done = 0;
    for (; count - done >= step; done += step)
    {
        FetchAhead(src + done * srcSize, step * srcSize);
        TwoVectors const next = NextVectors<Kernel, dstSize, srcSize>(src + done * srcSize);
        hn::Stream(hn::BitCast(s_d8, next.first), s_d8, dst + done * dstSize);
        hn::Stream(hn::BitCast(s_d8, next.second), s_d8, dst + done * dstSize + size);
    }
    hwy::FlushStream();
    return done;
}

/// Stores are fast where no vector spans two cache lines, so that all but short blocks are written from a line on.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR std::size_t RunFullVectors(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    std::size_t const step = hn::Lanes(s_d8) / dstSize;
    std::size_t done = 0;
    if (count * dstSize >= s_shortBlockSize && CountBytesToLine(dst) % dstSize == 0)
    {
        done = RunToLine<Kernel, dstSize, srcSize>(dst, src);
        if (count * dstSize >= s_bigBlockSize)
            return done +
                   RunPastCaches<Kernel, dstSize, srcSize>(dst + done * dstSize, src + done * srcSize, count - done);
    }
    for (; count - done >= 2 * step; done += 2 * step)
    {
        // Many stores to lines that are not in the nearest caches hold up the few loads between them.
        if constexpr (dstSize > srcSize)
            hwy::Prefetch(src + done * srcSize + s_nearFetchDistance);
        TwoVectors const next = NextVectors<Kernel, dstSize, srcSize>(src + done * srcSize);
        StoreColours(dst + done * dstSize, next.first);
        StoreColours(dst + (done + step) * dstSize, next.second);
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

/// Runs a kernel with results in lanes of 32 bits over all whole vectors.
template<typename Kernel, std::size_t dstSize, std::size_t srcSize>
HWY_ATTR std::size_t RunValues(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    std::size_t const step = hn::Lanes(s_d32);
    std::size_t done = RunFullVectors<Kernel, dstSize, srcSize>(dst, src, count);
    for (; count - done >= step; done += step)
        StoreLanes<dstSize>(dst + done * dstSize, Kernel::Values(src + done * srcSize));
    return done;
}

/// Runs a kernel over all whole vectors.
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

#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3

/// Runs a kernel that takes bytes out of words: full vectors first, then the rest.
template<typename Kernel>
HWY_ATTR std::size_t RunWords(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    std::size_t const done = RunFullVectors<Kernel, 1, 2>(dst, src, count);
    return done + RunAll<Kernel, 1, 2>(dst + done, src + 2 * done, count - done);
}

#else

template<typename Kernel>
HWY_ATTR std::size_t RunWords(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    return RunAll<Kernel, 1, 2>(dst, src, count);
}

#endif

std::size_t Run(eSampleKernel kernel, unsigned char *dst, unsigned char const *src, std::size_t count)
{
    switch (kernel)
    {
    case eSampleKernel::e_none:
        return 0;
    case eSampleKernel::e_byteFromWordLow:
        return RunWords<ByteFromWordLow>(dst, src, count);
    case eSampleKernel::e_byteFromWordHigh:
        return RunWords<ByteFromWordHigh>(dst, src, count);
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
// The build has only one set of instructions, which the machine may lack.
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
    // After a choice, Highway lists only the chosen set, so the list is made before.
    static std::vector<long long> const s_targets = []
    {
        std::vector<std::int64_t> const targets = hwy::SupportedAndGeneratedTargets();
        return std::vector<long long>(targets.begin(), targets.end());
    }();
    return s_targets;
}

void SetKernelTarget(long long target)
{
    GetKernelTargets();
    hwy::SetSupportedTargetsForTest(target);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

#endif

} // namespace quillmarsh
#endif
