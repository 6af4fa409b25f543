// Samples in the lanes of vectors. Included once for each set of vector instructions.
#if defined(QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLELANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLELANES_INL_H
#undef QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLELANES_INL_H
#else
#define QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLELANES_INL_H
#endif

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace quillmarsh
{
namespace HWY_NAMESPACE
{
namespace
{

#if HWY_TARGET != HWY_SCALAR && HWY_TARGET != HWY_EMU128

namespace hn = hwy::HWY_NAMESPACE;

// Samples are processed in lanes of 32 bits, or of 16 bits if no sample is wider; narrower samples use part of a
// vector.
constexpr hn::ScalableTag<std::uint32_t> s_d32;
constexpr hn::Rebind<std::int32_t, decltype(s_d32)> s_dInt;
constexpr hn::Rebind<float, decltype(s_d32)> s_dFloat;
constexpr hn::Rebind<std::uint16_t, decltype(s_d32)> s_d16For32;
constexpr hn::Rebind<std::uint8_t, decltype(s_d32)> s_d8For32;
constexpr hn::Repartition<std::uint8_t, decltype(s_d32)> s_d8;
constexpr hn::ScalableTag<std::uint16_t> s_d16;
constexpr hn::Rebind<std::uint8_t, decltype(s_d16)> s_d8For16;

using V32 = hn::Vec<decltype(s_d32)>;
using V16 = hn::Vec<decltype(s_d16)>;

/// Blocks of this size don't stay in the caches of one processor.
constexpr std::size_t s_bigBlockSize = std::size_t{8} << 20;

/// Distance in bytes at which memory is prefetched: two pages. The processor's own prefetching stops at the end of a
/// page.
constexpr std::size_t s_fetchDistance = 8192;

/// Prefetches the bytes at that distance after `src`. Addresses past the end of a block are harmless.
inline void FetchAhead(unsigned char const *src, std::size_t byteSize)
{
    for (std::size_t at = 0; at < byteSize; at += 64)
        hwy::Prefetch(src + s_fetchDistance + at);
}

/// Returns the number of bytes up to the next cache line.
inline std::size_t CountBytesToLine(unsigned char const *at)
{
    return -reinterpret_cast<std::uintptr_t>(at) % 64;
}

/// @name Loads and stores of samples in lanes; a pointer is to the first sample
/// @{
HWY_ATTR inline V32 LoadColours(unsigned char const *at)
{
    return hn::BitCast(s_d32, hn::LoadU(s_d8, at));
}

HWY_ATTR inline void StoreColours(unsigned char *at, V32 colours)
{
    hn::StoreU(hn::BitCast(s_d8, colours), s_d8, at);
}

HWY_ATTR inline V32 LoadWordsTo32(unsigned char const *at)
{
    constexpr hn::Repartition<std::uint8_t, decltype(s_d16For32)> dBytes;
    return hn::PromoteTo(s_d32, hn::BitCast(s_d16For32, hn::LoadU(dBytes, at)));
}

HWY_ATTR inline auto LoadWordsFor32(unsigned char const *at)
{
    constexpr hn::Repartition<std::uint8_t, decltype(s_d16For32)> dBytes;
    return hn::BitCast(s_d16For32, hn::LoadU(dBytes, at));
}

template<typename V>
HWY_ATTR inline void StoreWordsFor32(unsigned char *at, V words)
{
    constexpr hn::Repartition<std::uint8_t, decltype(s_d16For32)> dBytes;
    hn::StoreU(hn::BitCast(dBytes, words), dBytes, at);
}

HWY_ATTR inline V32 LoadBytesTo32(unsigned char const *at)
{
    return hn::PromoteTo(s_d32, hn::LoadU(s_d8For32, at));
}

HWY_ATTR inline void StoreBytesOf32(unsigned char *at, V32 values)
{
    hn::StoreU(hn::TruncateTo(s_d8For32, values), s_d8For32, at);
}

HWY_ATTR inline V16 LoadWords(unsigned char const *at)
{
    constexpr hn::Repartition<std::uint8_t, decltype(s_d16)> dBytes;
    return hn::BitCast(s_d16, hn::LoadU(dBytes, at));
}

HWY_ATTR inline void StoreWords(unsigned char *at, V16 words)
{
    constexpr hn::Repartition<std::uint8_t, decltype(s_d16)> dBytes;
    hn::StoreU(hn::BitCast(dBytes, words), dBytes, at);
}

HWY_ATTR inline V16 LoadBytesTo16(unsigned char const *at)
{
    return hn::PromoteTo(s_d16, hn::LoadU(s_d8For16, at));
}

HWY_ATTR inline void StoreBytesOf16(unsigned char *at, V16 values)
{
    hn::StoreU(hn::TruncateTo(s_d8For16, values), s_d8For16, at);
}
/// @}

/// Returns the bits of `values` in the mask, and those of `others` elsewhere.
template<typename V>
HWY_ATTR inline V Merge(V mask, V values, V others)
{
    return hn::Or(hn::And(mask, values), hn::AndNot(mask, others));
}

HWY_ATTR inline V32 Set32(std::uint32_t value)
{
    return hn::Set(s_d32, value);
}

/// Puts the bytes of each lane in a new order, given for the first lane; 0x80 gives a zero.
HWY_ATTR inline V32 Shuffle(V32 values, std::uint32_t order)
{
    // The order of a lane counts from the start of its group of four lanes.
    alignas(16) static constexpr std::uint32_t s_groupOffsets[4] = {0, 0x04040404, 0x08080808, 0x0C0C0C0C};
    V32 const offsets = hn::LoadDup128(s_d32, s_groupOffsets);
    V32 const orders = hn::Add(Set32(order), offsets);
    return hn::BitCast(s_d32, hn::TableLookupBytesOr0(hn::BitCast(s_d8, values), hn::BitCast(s_d8, orders)));
}

#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3

/// @name Packing and splitting of lanes
/// The instructions work in each group of four lanes separately. The groups are put in order after packing and before
/// splitting.
/// @{
#if HWY_TARGET == HWY_AVX3
constexpr std::uint32_t s_orderOf4[] = {0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15};
constexpr std::uint32_t s_orderOf2[] = {0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15};
constexpr std::uint32_t s_orderToSplit[] = {0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15};
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
constexpr auto &s_orderToSplit = s_orderOf2;
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

#endif

HWY_ATTR inline auto ToFloat(V32 values)
{
    return hn::ConvertTo(s_dFloat, hn::BitCast(s_dInt, values));
}

/// Truncates toward zero. NaN and numbers beyond 32 bits give low bits of 0.
template<typename V>
HWY_ATTR inline V32 CutOff(V values)
{
#if HWY_TARGET == HWY_SSSE3 || HWY_TARGET == HWY_SSE4
    // The instruction returns 0x80000000 for these, which has low bits of 0. The library's own function corrects the
    // number at twice the cost.
    return V32{_mm_cvttps_epi32(values.raw)};
#elif HWY_TARGET == HWY_AVX2
    return V32{_mm256_cvttps_epi32(values.raw)};
#elif HWY_TARGET == HWY_AVX3
    return V32{_mm512_cvttps_epi32(values.raw)};
#else
    auto const fits = hn::Lt(hn::Abs(values), hn::Set(s_dFloat, 2147483648.0f));
    return hn::BitCast(s_d32, hn::ConvertTo(s_dInt, hn::IfThenElseZero(fits, values)));
#endif
}

/// Rounds as sample_processors::Round does.
template<typename V>
HWY_ATTR inline V32 RoundLanes(V values)
{
    return CutOff(hn::Add(values, hn::Set(s_dFloat, 0.5f)));
}

#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3

/// Returns the product of a byte and a weight, rounded once. The byte is in the mantissa of a float, below 2^23 and
/// multiplied by a power of two. The product with the rest of the float is subtracted again before the rounding.
template<int power>
HWY_ATTR inline auto Weigh(V32 bits, float weight)
{
    float const scaled = weight / static_cast<float>(power);
    return hn::MulAdd(hn::BitCast(s_dFloat, bits), hn::Set(s_dFloat, scaled), hn::Set(s_dFloat, -8388608.0f * scaled));
}

HWY_ATTR inline V32 Luminance(V32 colours)
{
    V32 const behind = Set32(0x4B000000);
#if HWY_TARGET == HWY_AVX3
    auto const blue = Weigh<1>(hn::OrAnd(behind, colours, Set32(0xFF)), 0.114f);
    auto const green = Weigh<256>(hn::OrAnd(behind, colours, Set32(0xFF00)), 0.587f);
    auto const red = Weigh<256>(hn::OrAnd(behind, hn::ShiftRight<8>(colours), Set32(0xFF00)), 0.299f);
#else
    // Each byte needs only one shuffle, because the other bits of its float are in the place of alpha.
    V32 const prepared = hn::OrAnd(behind, colours, Set32(0x00FFFFFF));
    auto const blue = Weigh<1>(Shuffle(prepared, 0x03808000), 0.114f);
    auto const green = Weigh<1>(Shuffle(prepared, 0x03808001), 0.587f);
    auto const red = Weigh<1>(Shuffle(prepared, 0x03808002), 0.299f);
#endif
    return RoundLanes(hn::Add(hn::Add(blue, green), red));
}

#else

HWY_ATTR inline V32 Luminance(V32 colours)
{
    auto const blue = hn::Mul(ToFloat(hn::And(colours, Set32(0xFF))), hn::Set(s_dFloat, 0.114f));
    auto const green = hn::Mul(ToFloat(Shuffle(colours, 0x80808001)), hn::Set(s_dFloat, 0.587f));
    auto const red = hn::Mul(ToFloat(Shuffle(colours, 0x80808002)), hn::Set(s_dFloat, 0.299f));
    return RoundLanes(hn::Add(hn::Add(blue, green), red));
}

#endif

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace quillmarsh
HWY_AFTER_NAMESPACE();

#endif
