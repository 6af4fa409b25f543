#include "source/dataobjects/scaling/scalingkernels.h"

#include "source/dataobjects/transfer/samplekernels.h"

// The newest set truncates wrongly in the version that distributions still have.
#define HWY_DISABLED_TARGETS HWY_AVX3_DL

// The code below is compiled once for each set of vector instructions.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "source/dataobjects/scaling/scalingkernels.cpp"
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

// Without vectors, the plain loops do all the work.
std::size_t BlendByteRows(RowBlend<unsigned char> const &)
{
    return 0;
}
std::size_t BlendFloatRows(RowBlend<float> const &)
{
    return 0;
}
std::size_t TotalRows(RowTotal const &)
{
    return 0;
}
std::size_t HalveRows(RowHalving const &)
{
    return 0;
}
std::size_t Interleave(RowInterleaving const &)
{
    return 0;
}
std::size_t BlendByteColumns(ColumnBlend<unsigned char> const &)
{
    return 0;
}
std::size_t BlendFloatColumns(ColumnBlend<float> const &)
{
    return 0;
}
std::size_t BlendFactor(FactorBlend const &)
{
    return 0;
}
std::size_t HalveFloats(FloatHalving const &)
{
    return 0;
}

#else

HWY_INLINE auto LoadElements(unsigned char const *at)
{
    return ToFloat(LoadBytesTo32(at));
}

HWY_INLINE auto LoadElements(float const *at)
{
    return hn::LoadU(s_dFloat, at);
}

/// @name Rows
/// @{

template<typename Element>
HWY_ATTR HWY_INLINE std::size_t BlendRows(RowBlend<Element> const &job)
{
    std::size_t const lanes = hn::Lanes(s_dFloat);
    std::size_t i = 0;
    for (; i + 4 * lanes <= job.count; i += 4 * lanes)
    {
        auto weight = hn::Set(s_dFloat, job.weights[0]);
        Element const *at = job.rows[0] + i;
        auto a = hn::Mul(LoadElements(at), weight);
        auto b = hn::Mul(LoadElements(at + lanes), weight);
        auto c = hn::Mul(LoadElements(at + 2 * lanes), weight);
        auto d = hn::Mul(LoadElements(at + 3 * lanes), weight);
        for (std::size_t row = 1; row < job.numRows; ++row)
        {
            weight = hn::Set(s_dFloat, job.weights[row]);
            at = job.rows[row] + i;
            a = hn::Add(a, hn::Mul(LoadElements(at), weight));
            b = hn::Add(b, hn::Mul(LoadElements(at + lanes), weight));
            c = hn::Add(c, hn::Mul(LoadElements(at + 2 * lanes), weight));
            d = hn::Add(d, hn::Mul(LoadElements(at + 3 * lanes), weight));
        }
        hn::StoreU(a, s_dFloat, job.sums + i);
        hn::StoreU(b, s_dFloat, job.sums + i + lanes);
        hn::StoreU(c, s_dFloat, job.sums + i + 2 * lanes);
        hn::StoreU(d, s_dFloat, job.sums + i + 3 * lanes);
    }
    return i;
}

HWY_ATTR std::size_t BlendByteRows(RowBlend<unsigned char> const &job)
{
    return BlendRows(job);
}

HWY_ATTR std::size_t BlendFloatRows(RowBlend<float> const &job)
{
    return BlendRows(job);
}

HWY_ATTR std::size_t TotalRows(RowTotal const &job)
{
    std::size_t const lanes = hn::Lanes(s_d16);
    std::size_t i = 0;
    for (; i + 2 * lanes <= job.count; i += 2 * lanes)
    {
        V16 a = LoadBytesTo16(job.rows[0] + i);
        V16 b = LoadBytesTo16(job.rows[0] + i + lanes);
        for (std::size_t row = 1; row < job.numRows; ++row)
        {
            a = hn::Add(a, LoadBytesTo16(job.rows[row] + i));
            b = hn::Add(b, LoadBytesTo16(job.rows[row] + i + lanes));
        }
        hn::StoreU(a, s_d16, job.totals + i);
        hn::StoreU(b, s_d16, job.totals + i + lanes);
    }
    return i;
}
/// @}

/// @name Halving
/// @{

HWY_INLINE V16 LowBytes(V16 words)
{
    return hn::And(words, hn::Set(s_d16, std::uint16_t{0xFF}));
}

HWY_INLINE V16 HighBytes(V16 words)
{
    return hn::ShiftRight<8>(words);
}

HWY_INLINE V16 RoundedQuarter(V16 total)
{
    return hn::ShiftRight<2>(hn::Add(total, hn::Set(s_d16, std::uint16_t{2})));
}

/// Returns the means of the bytes of four vectors.
HWY_INLINE V16 MeanOfFour(V16 a, V16 b, V16 c, V16 d)
{
    V16 const low = hn::Add(hn::Add(LowBytes(a), LowBytes(b)), hn::Add(LowBytes(c), LowBytes(d)));
    V16 const high = hn::Add(hn::Add(HighBytes(a), HighBytes(b)), hn::Add(HighBytes(c), HighBytes(d)));
    return hn::Or(RoundedQuarter(low), hn::ShiftLeft<8>(RoundedQuarter(high)));
}

/// Halves rows of samples that are lanes of `d`.
template<typename D>
HWY_INLINE std::size_t HalveLanes(D d, RowHalving const &job)
{
    constexpr std::size_t size = sizeof(hn::TFromD<D>);
    std::size_t const lanes = hn::Lanes(d), vector = lanes * size;
    auto const load = [d](unsigned char const *at) HWY_ATTR { return hn::BitCast(d, hn::LoadU(s_d8, at)); };
    auto const words = [](auto v) HWY_ATTR { return hn::BitCast(s_d16, v); };
    std::size_t i = 0;
    for (; i + lanes <= job.count; i += lanes)
    {
        std::size_t const at = 2 * i * size;
        auto const a0 = load(job.row0 + at), a1 = load(job.row0 + at + vector);
        auto const b0 = load(job.row1 + at), b1 = load(job.row1 + at + vector);
        V16 const mean = MeanOfFour(words(hn::ConcatEven(d, a1, a0)), words(hn::ConcatOdd(d, a1, a0)),
                                    words(hn::ConcatEven(d, b1, b0)), words(hn::ConcatOdd(d, b1, b0)));
        hn::StoreU(hn::BitCast(s_d8, mean), s_d8, job.dst + i * size);
    }
    return i;
}

HWY_INLINE std::size_t HalveBytes(RowHalving const &job)
{
    std::size_t const lanes = hn::Lanes(s_d16);
    std::size_t i = 0;
    for (; i + lanes <= job.count; i += lanes)
    {
        V16 const a = LoadWords(job.row0 + 2 * i), b = LoadWords(job.row1 + 2 * i);
        V16 const total = hn::Add(hn::Add(LowBytes(a), HighBytes(a)), hn::Add(LowBytes(b), HighBytes(b)));
        StoreBytesOf16(job.dst + i, RoundedQuarter(total));
    }
    return i;
}

HWY_ATTR std::size_t HalveRows(RowHalving const &job)
{
    switch (job.sampleSize)
    {
    case 1:
        return HalveBytes(job);
    case 2:
        return HalveLanes(s_d16, job);
    default:
        return HalveLanes(s_d32, job);
    }
}
/// @}

/// @name Columns
/// @{

HWY_ATTR std::size_t Interleave(RowInterleaving const &job)
{
    std::size_t const lanes = hn::Lanes(s_dFloat);
    std::size_t i = 0;
    for (; i + lanes <= job.count; i += lanes)
    {
        auto const load = [&](int row) HWY_ATTR { return hn::LoadU(s_dFloat, job.rows[row] + i); };
        hn::StoreInterleaved4(load(0), load(1), load(2), load(3), s_dFloat, job.groups + 4 * i);
    }
    return i;
}

constexpr hn::FixedTag<float, 4> s_dGroup;

template<typename V>
HWY_INLINE void StoreGroup(V group, unsigned char *at)
{
    constexpr hn::RebindToSigned<decltype(s_dGroup)> dInt;
    constexpr hn::Rebind<std::uint8_t, decltype(s_dGroup)> dBytes;
    auto const rounded = hn::ConvertTo(dInt, hn::Add(group, hn::Set(s_dGroup, 0.5f)));
    hn::StoreU(hn::DemoteTo(dBytes, rounded), dBytes, at);
}

template<typename V>
HWY_INLINE void StoreGroup(V group, float *at)
{
    hn::StoreU(group, s_dGroup, at);
}

template<typename Element>
HWY_INLINE std::size_t BlendColumns(ColumnBlend<Element> const &job)
{
    auto const zero = hn::Zero(s_dGroup), largest = hn::Set(s_dGroup, job.largest);
    for (std::size_t i = 0; i < job.count; ++i)
    {
        float const *at = job.groups + std::size_t{job.first[i]} * 4;
        float const *weight = job.weights + job.start[i];
        float const *const end = job.weights + job.start[i + 1];
        auto sum = hn::Mul(hn::LoadU(s_dGroup, at), hn::Set(s_dGroup, *weight));
        for (at += 4, ++weight; weight != end; at += 4, ++weight)
            sum = hn::Add(sum, hn::Mul(hn::LoadU(s_dGroup, at), hn::Set(s_dGroup, *weight)));
        StoreGroup(hn::Min(hn::Max(sum, zero), largest), job.dst + i * 4);
    }
    return job.count;
}

HWY_ATTR std::size_t BlendByteColumns(ColumnBlend<unsigned char> const &job)
{
    return BlendColumns(job);
}

HWY_ATTR std::size_t BlendFloatColumns(ColumnBlend<float> const &job)
{
    return BlendColumns(job);
}

HWY_ATTR std::size_t BlendFactor(FactorBlend const &job)
{
    using V = hn::Vec<decltype(s_dFloat)>;
    std::size_t const lanes = hn::Lanes(s_dFloat);
    auto const zero = hn::Zero(s_dFloat), largest = hn::Set(s_dFloat, job.largest);
    auto const weigh = [&](V values, std::size_t tap) HWY_ATTR
    { return hn::Mul(values, hn::Set(s_dFloat, job.weights[tap])); };
    std::size_t i = 0;
    for (; i + lanes <= job.count; i += lanes)
    {
        float const *const at = job.row + i * job.factor;
        V a = zero, b = zero, c = zero, d = zero;
        if (job.factor == 2)
            hn::LoadInterleaved2(s_dFloat, at, a, b);
        else if (job.factor == 3)
            hn::LoadInterleaved3(s_dFloat, at, a, b, c);
        else
            hn::LoadInterleaved4(s_dFloat, at, a, b, c, d);
        V sum = hn::Add(weigh(a, 0), weigh(b, 1));
        if (job.factor > 2)
            sum = hn::Add(sum, weigh(c, 2));
        if (job.factor > 3)
            sum = hn::Add(sum, weigh(d, 3));
        hn::StoreU(hn::Min(hn::Max(sum, zero), largest), s_dFloat, job.dst + i);
    }
    return i;
}

HWY_ATTR std::size_t HalveFloats(FloatHalving const &job)
{
    std::size_t const lanes = hn::Lanes(s_dFloat);
    auto const zero = hn::Zero(s_dFloat), largest = hn::Set(s_dFloat, job.largest);
    auto const row0 = hn::Set(s_dFloat, job.rowWeights[0]), row1 = hn::Set(s_dFloat, job.rowWeights[1]);
    auto const even = hn::Set(s_dFloat, job.weights[0]), odd = hn::Set(s_dFloat, job.weights[1]);
    std::size_t i = 0;
    for (; i + lanes <= job.count; i += lanes)
    {
        auto const sumAt = [&](std::size_t at) HWY_ATTR
        {
            return hn::Add(hn::Mul(hn::LoadU(s_dFloat, job.row0 + at), row0),
                           hn::Mul(hn::LoadU(s_dFloat, job.row1 + at), row1));
        };
        auto const first = sumAt(2 * i), second = sumAt(2 * i + lanes);
        auto const sum = hn::Add(hn::Mul(hn::ConcatEven(s_dFloat, second, first), even),
                                 hn::Mul(hn::ConcatOdd(s_dFloat, second, first), odd));
        hn::StoreU(hn::Min(hn::Max(sum, zero), largest), s_dFloat, job.dst + i);
    }
    return i;
}
/// @}

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

HWY_EXPORT(BlendByteRows);
HWY_EXPORT(BlendFloatRows);
HWY_EXPORT(TotalRows);
HWY_EXPORT(HalveRows);
HWY_EXPORT(Interleave);
HWY_EXPORT(BlendByteColumns);
HWY_EXPORT(BlendFloatColumns);
HWY_EXPORT(BlendFactor);
HWY_EXPORT(HalveFloats);

} // namespace

std::size_t RunKernel(RowBlend<unsigned char> const &job)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(BlendByteRows)(job) : 0;
}

std::size_t RunKernel(RowBlend<float> const &job)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(BlendFloatRows)(job) : 0;
}

std::size_t RunKernel(RowTotal const &job)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(TotalRows)(job) : 0;
}

std::size_t RunKernel(RowHalving const &job)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(HalveRows)(job) : 0;
}

std::size_t RunKernel(RowInterleaving const &job)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(Interleave)(job) : 0;
}

std::size_t RunKernel(ColumnBlend<unsigned char> const &job)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(BlendByteColumns)(job) : 0;
}

std::size_t RunKernel(ColumnBlend<float> const &job)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(BlendFloatColumns)(job) : 0;
}

std::size_t RunKernel(FactorBlend const &job)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(BlendFactor)(job) : 0;
}

std::size_t RunKernel(FloatHalving const &job)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(HalveFloats)(job) : 0;
}

} // namespace quillmarsh
#endif
