#include "source/dataobjects/operations/resamplekernels.h"

#include "source/dataobjects/transfer/samplekernels.h"

#include <algorithm>
#include <cstring>

// The newest set truncates wrongly in the version that distributions still have.
#define HWY_DISABLED_TARGETS HWY_AVX3_DL

// The code below is compiled once for each set of vector instructions.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "source/dataobjects/operations/resamplekernels.cpp"
#include <hwy/foreach_target.h>

#include "source/dataobjects/transfer/samplelanes-inl.h"

#include <hwy/cache_control.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace quillmarsh
{
namespace HWY_NAMESPACE
{
namespace
{

#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128

// Without vectors, the plain loops do all the work.
GatherKernel FindGather(unsigned int, bool)
{
    return {};
}

BlendKernel FindBlend(eSampleElement, unsigned int, bool)
{
    return {};
}

void Widen(unsigned char *, unsigned char const *, std::size_t) {}

#else

constexpr hn::Half<decltype(s_d8)> s_d8Half;
constexpr hn::FixedTag<std::uint8_t, 16> s_d8Of128;
constexpr hn::Half<decltype(s_d8Of128)> s_d8Of64;

using VFloat = hn::Vec<decltype(s_dFloat)>;

/// @name Picking
/// @{
/// Windows of 16 bytes.
struct GatherBytes
{
    static HWY_INLINE std::size_t ControlSize() { return 16; }

    template<bool both>
    static HWY_INLINE void Run(unsigned char const *window, unsigned char const *control, unsigned char *tap0,
                               [[maybe_unused]] unsigned char *tap1)
    {
        auto const picked = hn::TableLookupBytes(hn::LoadU(s_d8Of128, window), hn::Load(s_d8Of128, control));
        hn::StoreU(hn::LowerHalf(s_d8Of64, picked), s_d8Of64, tap0);
        if constexpr (both)
            hn::StoreU(hn::UpperHalf(s_d8Of64, picked), s_d8Of64, tap1);
    }
};

/// Windows of one vector.
struct GatherWords
{
    static HWY_INLINE std::size_t ControlSize() { return hn::Lanes(s_d8); }

    template<bool both>
    static HWY_INLINE void Run(unsigned char const *window, unsigned char const *control, unsigned char *tap0,
                               [[maybe_unused]] unsigned char *tap1)
    {
        auto const indices = hn::IndicesFromVec(s_d32, hn::BitCast(s_d32, hn::Load(s_d8, control)));
        V32 const words = hn::TableLookupLanes(hn::BitCast(s_d32, hn::LoadU(s_d8, window)), indices);
        auto const picked = hn::BitCast(s_d8, words);
        hn::StoreU(hn::LowerHalf(s_d8Half, picked), s_d8Half, tap0);
        if constexpr (both)
            hn::StoreU(hn::UpperHalf(s_d8Half, picked), s_d8Half, tap1);
    }
};

template<typename Kernel, std::size_t sampleSize, bool both>
HWY_ATTR void GatherBlocks(GatherJob const &job)
{
    std::size_t const controlSize = Kernel::ControlSize();
    std::size_t const blockColumns = controlSize / sampleSize / 2;
    unsigned char const *control = job.controls;
    std::uint32_t const *window = job.windows;
    for (std::size_t column = 0; column + blockColumns < job.numColumns; column += blockColumns)
    {
        std::size_t const at = column * sampleSize;
        Kernel::template Run<both>(job.src + *window++ * sampleSize, control, job.tap0 + at,
                                   both ? job.tap1 + at : nullptr);
        control += controlSize;
    }
    // The last block may repeat a part of the block before it.
    std::size_t const at = (job.numColumns - blockColumns) * sampleSize;
    Kernel::template Run<both>(job.src + *window * sampleSize, control, job.tap0 + at, both ? job.tap1 + at : nullptr);
}

template<typename Kernel, std::size_t sampleSize>
GatherKernel FindGatherOf(bool wantsBoth)
{
    auto const window = static_cast<unsigned int>(Kernel::ControlSize() / sampleSize);
    return {window / 2, window,
            wantsBoth ? GatherBlocks<Kernel, sampleSize, true> : GatherBlocks<Kernel, sampleSize, false>};
}

GatherKernel FindGather(unsigned int sampleSize, bool wantsBoth)
{
    switch (sampleSize)
    {
    case 1:
        return FindGatherOf<GatherBytes, 1>(wantsBoth);
    case 2:
        return FindGatherOf<GatherBytes, 2>(wantsBoth);
    case 4:
        return FindGatherOf<GatherWords, 4>(wantsBoth);
    default:
        return {};
    }
}
/// @}

/// @name Weighted sums
/// @{

/// Elements with a single value, and so a single sum.
template<typename Element>
struct SingleSum
{
    using Sums = VFloat;

    static HWY_INLINE Sums First(unsigned char const *tap, VFloat weights)
    {
        return hn::Mul(Element::Load(tap), weights);
    }
    static HWY_INLINE Sums Add(Sums sums, unsigned char const *tap, VFloat weights)
    {
        return hn::Add(sums, hn::Mul(Element::Load(tap), weights));
    }
};

/// Returns the bits of `values` in the mask, and the destination's bits elsewhere.
template<typename D, typename V>
HWY_INLINE void StoreBits(V values, D d, unsigned char *at, unsigned char const *mask)
{
    V const bits = hn::LoadU(d, mask);
    hn::StoreU(hn::Or(hn::And(bits, values), hn::AndNot(bits, hn::LoadU(d, at))), d, at);
}

struct ByteElement : SingleSum<ByteElement>
{
    static constexpr std::size_t s_size = 1, s_tapSize = 1;

    static HWY_INLINE VFloat Load(unsigned char const *at) { return ToFloat(LoadBytesTo32(at)); }
    static HWY_INLINE void Store(unsigned char *at, Sums sums) { StoreBytesOf32(at, RoundLanes(sums)); }
    static HWY_INLINE void StoreMasked(unsigned char *at, Sums sums, unsigned char const *mask)
    {
        StoreBits(hn::TruncateTo(s_d8For32, RoundLanes(sums)), s_d8For32, at, mask);
    }
};

struct FloatElement : SingleSum<FloatElement>
{
    static constexpr std::size_t s_size = 4, s_tapSize = 4;

    static HWY_INLINE VFloat Load(unsigned char const *at) { return hn::BitCast(s_dFloat, hn::LoadU(s_d8, at)); }
    static HWY_INLINE void Store(unsigned char *at, Sums sums) { hn::StoreU(hn::BitCast(s_d8, sums), s_d8, at); }
    static HWY_INLINE void StoreMasked(unsigned char *at, Sums sums, unsigned char const *mask)
    {
        StoreBits(hn::BitCast(s_d8, sums), s_d8, at, mask);
    }
};

/// Words of four fields: each field has its sum. The template takes mask and shift of each.
template<std::uint32_t maskA, int shiftA, std::uint32_t maskB, int shiftB, std::uint32_t maskC, int shiftC,
         std::uint32_t maskD, int shiftD>
struct PackedElement
{
    static constexpr std::size_t s_size = 2, s_tapSize = 2;

    struct Sums
    {
        VFloat a, b, c, d;
    };

    static HWY_INLINE Sums First(unsigned char const *tap, VFloat weights)
    {
        V32 const words = LoadWordsTo32(tap);
        return {hn::Mul(Field<maskA, shiftA>(words), weights), hn::Mul(Field<maskB, shiftB>(words), weights),
                hn::Mul(Field<maskC, shiftC>(words), weights), hn::Mul(Field<maskD, shiftD>(words), weights)};
    }
    static HWY_INLINE Sums Add(Sums const &sums, unsigned char const *tap, VFloat weights)
    {
        Sums const more = First(tap, weights);
        return {hn::Add(sums.a, more.a), hn::Add(sums.b, more.b), hn::Add(sums.c, more.c), hn::Add(sums.d, more.d)};
    }
    static HWY_INLINE void Store(unsigned char *at, Sums const &sums)
    {
        V32 const ab = hn::Or(Packed<maskA, shiftA>(sums.a), Packed<maskB, shiftB>(sums.b));
        V32 const cd = hn::Or(Packed<maskC, shiftC>(sums.c), Packed<maskD, shiftD>(sums.d));
        StoreWordsFor32(at, hn::TruncateTo(s_d16For32, hn::Or(ab, cd)));
    }
    static HWY_INLINE void StoreMasked(unsigned char *at, Sums const &sums, unsigned char const *) { Store(at, sums); }

private:
    template<std::uint32_t mask, int shift>
    static HWY_INLINE VFloat Field(V32 words)
    {
        return ToFloat(hn::And(hn::ShiftRight<shift>(words), hn::Set(s_d32, mask)));
    }
    template<std::uint32_t mask, int shift>
    static HWY_INLINE V32 Packed(VFloat sums)
    {
        return hn::ShiftLeft<shift>(hn::And(RoundLanes(sums), hn::Set(s_d32, mask)));
    }
};

/// Colours of four bytes. Each byte has its own sum, and all four use the same vector of weights.
struct ColourElement
{
    static constexpr std::size_t s_size = 4, s_tapSize = 4;

    struct Sums
    {
        VFloat blue, green, red, alpha;
    };

    static HWY_INLINE Sums First(unsigned char const *tap, VFloat weights)
    {
        V32 const colours = LoadColours(tap);
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
        // As for the luminance, each byte is in the mantissa of a float, below 2^23.
        V32 const behind = Set32(0x4B000000);
        V32 const prepared = hn::OrAnd(behind, colours, Set32(0x00FFFFFF));
        VFloat const taken = hn::Mul(weights, hn::Set(s_dFloat, -8388608.0f));
        auto const weigh = [&](V32 bits) HWY_ATTR { return hn::MulAdd(hn::BitCast(s_dFloat, bits), weights, taken); };
        return {weigh(Shuffle(prepared, 0x03808000)), weigh(Shuffle(prepared, 0x03808001)),
                weigh(Shuffle(prepared, 0x03808002)), weigh(hn::Or(behind, hn::ShiftRight<24>(colours)))};
#else
        auto const weigh = [&](V32 bytes) HWY_ATTR { return hn::Mul(ToFloat(bytes), weights); };
        return {weigh(hn::And(colours, Set32(0xFF))), weigh(Shuffle(colours, 0x80808001)),
                weigh(Shuffle(colours, 0x80808002)), weigh(hn::ShiftRight<24>(colours))};
#endif
    }
    static HWY_INLINE Sums Add(Sums const &sums, unsigned char const *tap, VFloat weights)
    {
        return Sum(sums, First(tap, weights));
    }
    static HWY_INLINE Sums Sum(Sums const &a, Sums const &b)
    {
        return {hn::Add(a.blue, b.blue), hn::Add(a.green, b.green), hn::Add(a.red, b.red), hn::Add(a.alpha, b.alpha)};
    }
    static HWY_INLINE void Store(unsigned char *at, Sums const &sums)
    {
        StoreColours(at, Packed(sums));
    }
    static HWY_INLINE void StoreMasked(unsigned char *at, Sums const &sums, unsigned char const *mask)
    {
        StoreBits(hn::BitCast(s_d8, Packed(sums)), s_d8, at, mask);
    }

private:
    static HWY_INLINE V32 Packed(Sums const &sums)
    {
        V32 const blueGreen = hn::Or(RoundLanes(sums.blue), hn::ShiftLeft<8>(RoundLanes(sums.green)));
        V32 const redAlpha = hn::Or(RoundLanes(sums.red), hn::ShiftLeft<8>(RoundLanes(sums.alpha)));
        return hn::Or(blueGreen, hn::ShiftLeft<16>(redAlpha));
    }
};

/// Colours whose picked bytes are floats: for each vector of colours, first all blue ones, then green, red and alpha.
struct WideColourElement
{
    static constexpr std::size_t s_size = 4, s_tapSize = 16;

    using Sums = ColourElement::Sums;

    static HWY_INLINE Sums First(unsigned char const *tap, VFloat weights)
    {
        auto const *const floats = reinterpret_cast<float const *>(tap);
        std::size_t const lanes = hn::Lanes(s_dFloat);
        return {hn::Mul(hn::LoadU(s_dFloat, floats), weights), hn::Mul(hn::LoadU(s_dFloat, floats + lanes), weights),
                hn::Mul(hn::LoadU(s_dFloat, floats + 2 * lanes), weights),
                hn::Mul(hn::LoadU(s_dFloat, floats + 3 * lanes), weights)};
    }
    static HWY_INLINE Sums Add(Sums const &sums, unsigned char const *tap, VFloat weights)
    {
        return ColourElement::Sum(sums, First(tap, weights));
    }
    static HWY_INLINE void Store(unsigned char *at, Sums const &sums) { ColourElement::Store(at, sums); }
    static HWY_INLINE void StoreMasked(unsigned char *at, Sums const &sums, unsigned char const *mask)
    {
        ColourElement::StoreMasked(at, sums, mask);
    }
};

using Word4444Element = PackedElement<15, 12, 15, 8, 15, 4, 15, 0>;
using Word1555Element = PackedElement<1, 15, 31, 10, 31, 5, 31, 0>;

template<typename Element, unsigned int row>
HWY_INLINE typename Element::Sums AddRow(typename Element::Sums const &sums, BlendJob const &job, std::size_t i,
                                         VFloat weights0, VFloat weights1)
{
    VFloat const rowWeights = hn::Set(s_dFloat, job.rowWeights[row]);
    std::size_t const at = i * Element::s_tapSize;
    return Element::Add(Element::Add(sums, job.tap0[row] + at, hn::Mul(rowWeights, weights0)), job.tap1[row] + at,
                        hn::Mul(rowWeights, weights1));
}

/// The weighted sums of one vector of elements.
template<typename Element, unsigned int numRows>
HWY_INLINE typename Element::Sums Sum(BlendJob const &job, std::size_t i)
{
    VFloat const weights0 = hn::LoadU(s_dFloat, job.weights0 + i);
    VFloat const weights1 = hn::LoadU(s_dFloat, job.weights1 + i);
    VFloat const rowWeights = hn::Set(s_dFloat, job.rowWeights[0]);
    std::size_t const at = i * Element::s_tapSize;
    auto sums = Element::Add(Element::First(job.tap0[0] + at, hn::Mul(rowWeights, weights0)), job.tap1[0] + at,
                             hn::Mul(rowWeights, weights1));
    if constexpr (numRows > 1)
        sums = AddRow<Element, 1>(sums, job, i, weights0, weights1);
    if constexpr (numRows > 2)
    {
        sums = AddRow<Element, 2>(sums, job, i, weights0, weights1);
        sums = AddRow<Element, 3>(sums, job, i, weights0, weights1);
    }
    return sums;
}

template<typename Element, unsigned int numRows, bool masked>
HWY_INLINE void BlendVector(BlendJob const &job, std::size_t i)
{
    auto const sums = Sum<Element, numRows>(job, i);
    if constexpr (masked)
        Element::StoreMasked(job.dst + i * Element::s_size, sums, job.mask + i * Element::s_size);
    else
        Element::Store(job.dst + i * Element::s_size, sums);
}

/// Prefetches the memory that is read next, for a number of vectors.
HWY_INLINE void Prefetch(BlendJob const &job, std::size_t &ahead, std::size_t numVectors)
{
    std::size_t const end = ahead + numVectors * job.aheadStep;
    for (; ahead < end; ahead += std::min<std::size_t>(end - ahead, 64))
    {
        hwy::Prefetch(job.ahead0 + ahead);
        hwy::Prefetch(job.ahead1 + ahead);
    }
}

#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3

/// Sums four vectors at a time, which give one full vector of bytes. Returns the number of elements that are done.
template<typename Element, unsigned int numRows, bool masked>
HWY_INLINE std::size_t BlendFours(BlendJob const &job, std::size_t &ahead)
{
    std::size_t const step = hn::Lanes(s_dFloat);
    std::size_t i = 0;
    for (; i + 4 * step <= job.count; i += 4 * step)
    {
        Prefetch(job, ahead, 4);
        V32 const first = RoundLanes(Sum<Element, numRows>(job, i));
        V32 const second = RoundLanes(Sum<Element, numRows>(job, i + step));
        V32 const third = RoundLanes(Sum<Element, numRows>(job, i + 2 * step));
        V32 const fourth = RoundLanes(Sum<Element, numRows>(job, i + 3 * step));
        V32 const packed = PackToBytes(PackToWords(first, second), PackToWords(third, fourth));
        auto const bytes = hn::BitCast(s_d8, InOrder(packed, s_orderOf4));
        if constexpr (masked)
            StoreBits(bytes, s_d8, job.dst + i, job.mask + i);
        else
            hn::StoreU(bytes, s_d8, job.dst + i);
    }
    return i;
}

#else

template<typename Element, unsigned int numRows, bool masked>
HWY_INLINE std::size_t BlendFours(BlendJob const &, std::size_t &)
{
    return 0;
}

#endif

/// Handles the last vector of a kernel that reads picked samples in whole vectors. It may use only a part of the
/// vector.
template<typename Element, unsigned int numRows, bool masked>
HWY_INLINE void BlendPart(BlendJob const &job, std::size_t i)
{
    alignas(64) unsigned char part[64] = {};
    unsigned char *const dst = job.dst + i * Element::s_size;
    std::size_t const byteSize = (job.count - i) * Element::s_size;
    auto const sums = Sum<Element, numRows>(job, i);
    std::memcpy(part, dst, byteSize);
    if constexpr (masked)
        Element::StoreMasked(part, sums, job.mask + i * Element::s_size);
    else
        Element::Store(part, sums);
    std::memcpy(dst, part, byteSize);
}

template<typename Element, unsigned int numRows, bool masked>
HWY_ATTR void BlendAll(BlendJob const &given)
{
    // A local copy, which the stores cannot change.
    BlendJob const job = given;
    std::size_t const step = hn::Lanes(s_dFloat);
    std::size_t ahead = 0;
    std::size_t i = 0;
    if constexpr (Element::s_size == 1)
        i = BlendFours<Element, numRows, masked>(job, ahead);
    for (; i + step < job.count; i += step)
    {
        Prefetch(job, ahead, 1);
        BlendVector<Element, numRows, masked>(job, i);
    }
    // The last vector may repeat a part of the vector before it.
    if constexpr (Element::s_tapSize == Element::s_size)
        BlendVector<Element, numRows, masked>(job, job.count - step);
    else
        BlendPart<Element, numRows, masked>(job, i);
}

template<typename Element, unsigned int numRows>
BlendKernel FindBlendOf(bool isMasked)
{
    return {hn::Lanes(s_dFloat), isMasked ? BlendAll<Element, numRows, true> : BlendAll<Element, numRows, false>};
}

template<typename Element>
BlendKernel FindBlendOf(unsigned int numRows, bool isMasked)
{
    return numRows == 1   ? FindBlendOf<Element, 1>(isMasked)
           : numRows == 2 ? FindBlendOf<Element, 2>(isMasked)
                          : FindBlendOf<Element, 4>(isMasked);
}

BlendKernel FindBlend(eSampleElement element, unsigned int numRows, bool isMasked)
{
    switch (element)
    {
    case eSampleElement::e_byte:
        return FindBlendOf<ByteElement>(numRows, isMasked);
    case eSampleElement::e_colour:
        return FindBlendOf<ColourElement>(numRows, isMasked);
    case eSampleElement::e_wideColour:
        // With the widest vectors, converting the bytes again is faster than loading them as floats.
        return HWY_TARGET == HWY_AVX3 ? BlendKernel{} : FindBlendOf<WideColourElement>(numRows, isMasked);
    case eSampleElement::e_float:
        return FindBlendOf<FloatElement>(numRows, isMasked);
    case eSampleElement::e_word4444:
        return FindBlendOf<Word4444Element>(numRows, isMasked);
    case eSampleElement::e_word1555:
        return FindBlendOf<Word1555Element>(numRows, isMasked);
    }
    return {};
}
/// @}

HWY_ATTR void Widen(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    std::size_t const lanes = hn::Lanes(s_dFloat);
    auto *to = reinterpret_cast<float *>(dst);
    for (std::size_t i = 0; i < count; i += lanes, to += 4 * lanes)
    {
        V32 const colours = LoadColours(src + 4 * i);
        hn::StoreU(ToFloat(hn::And(colours, Set32(0xFF))), s_dFloat, to);
        hn::StoreU(ToFloat(Shuffle(colours, 0x80808001)), s_dFloat, to + lanes);
        hn::StoreU(ToFloat(Shuffle(colours, 0x80808002)), s_dFloat, to + 2 * lanes);
        hn::StoreU(ToFloat(hn::ShiftRight<24>(colours)), s_dFloat, to + 3 * lanes);
    }
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

HWY_EXPORT(FindGather);
HWY_EXPORT(FindBlend);
HWY_EXPORT(Widen);

} // namespace

GatherKernel GetGatherKernel(unsigned int sampleSize, bool wantsBoth)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(FindGather)(sampleSize, wantsBoth) : GatherKernel{};
}

BlendKernel GetBlendKernel(eSampleElement element, unsigned int numRows, bool isMasked)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(FindBlend)(element, numRows, isMasked) : BlendKernel{};
}

void WidenColours(unsigned char *dst, unsigned char const *src, std::size_t count)
{
    HWY_DYNAMIC_DISPATCH(Widen)(dst, src, count);
}

} // namespace quillmarsh
#endif
