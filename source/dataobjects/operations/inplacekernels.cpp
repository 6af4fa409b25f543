#include "source/dataobjects/operations/inplacekernels.h"

#include "source/dataobjects/transfer/samplekernels.h"

#include <algorithm>
#include <cstring>

// The newest set truncates wrongly in the version that distributions still have.
#define HWY_DISABLED_TARGETS HWY_AVX3_DL

// The code below is compiled once for each set of vector instructions.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "source/dataobjects/operations/inplacekernels.cpp"
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
std::size_t RunFill(unsigned char *, std::size_t, BytePattern const &, BytePattern const &)
{
    return 0;
}
std::size_t RunThreshold(unsigned char *, std::size_t, BytePattern const &, ThresholdRule const &)
{
    return 0;
}
std::size_t RunMerge(unsigned char *, unsigned char const *, std::size_t, BytePattern const &)
{
    return 0;
}
std::size_t RunReorder(unsigned char *, unsigned char const *, std::size_t, ByteOrder const &)
{
    return 0;
}
std::size_t RunKey(unsigned char *, std::size_t, unsigned int, unsigned char, unsigned char)
{
    return 0;
}
std::size_t RunLuminance(unsigned char *, std::size_t, unsigned char)
{
    return 0;
}
std::size_t RunSwap(unsigned char *, unsigned char *, std::size_t)
{
    return 0;
}
std::size_t RunReverse(unsigned char *, std::size_t, std::size_t, unsigned int)
{
    return 0;
}

#else

using V8 = hn::Vec<decltype(s_d8)>;

/// Calls `step` with the offset of each vector of a block and its place in the pattern, 0 to 2. Returns the number of
/// bytes that are done.
template<typename Step>
HWY_ATTR inline std::size_t ForVectors(BytePattern const &pattern, std::size_t byteSize, Step step)
{
    std::size_t const size = hn::Lanes(s_d8);
    std::size_t done = 0;
    for (; byteSize - done >= 3 * size; done += 3 * size)
    {
        step(done, 0);
        step(done + size, 1);
        step(done + 2 * size, 2);
    }
    for (; pattern.IsUniform() && byteSize - done >= size; done += size)
        step(done, 0);
    return done;
}

/// The three vectors of a pattern.
struct Vectors
{
    V8 v0, v1, v2;

    HWY_ATTR explicit Vectors(BytePattern const &pattern)
        : v0(hn::LoadU(s_d8, pattern.GetBytes())),
          v1(hn::LoadU(s_d8, pattern.GetBytes() + hn::Lanes(s_d8))),
          v2(hn::LoadU(s_d8, pattern.GetBytes() + 2 * hn::Lanes(s_d8)))
    {
    }
    HWY_ATTR V8 At(int place) const { return place == 0 ? v0 : place == 1 ? v1 : v2; }
};

/// Writes whole cache lines past the caches, so that they are not read first.
HWY_ATTR std::size_t FillPastCaches(unsigned char *samples, std::size_t byteSize, V8 values)
{
    std::size_t const size = hn::Lanes(s_d8);
    std::size_t done = CountBytesToLine(samples);
    for (std::size_t i = 0; i < 64; i += size)
        hn::StoreU(values, s_d8, samples + i);
    for (; byteSize - done >= size; done += size)
        hn::Stream(values, s_d8, samples + done);
    hwy::FlushStream();
    return done;
}

HWY_ATTR std::size_t RunFill(unsigned char *samples, std::size_t count, BytePattern const &mask,
                             BytePattern const &values)
{
    Vectors const masks(mask), bits(values);
    std::size_t const byteSize = count * mask.GetSampleSize();
    bool const isWhole = std::all_of(mask.GetBytes(), mask.GetBytes() + 48, [](unsigned char m) { return m == 0xFF; });
    bool const isBig = byteSize >= s_bigBlockSize && mask.IsUniform();
    if (isWhole && isBig && CountBytesToLine(samples) % mask.GetSampleSize() == 0)
        return FillPastCaches(samples, byteSize, bits.v0);
    if (isWhole)
        return ForVectors(mask, byteSize,
                          [&](std::size_t at, int place) HWY_ATTR { hn::StoreU(bits.At(place), s_d8, samples + at); });
    return ForVectors(mask, byteSize,
                      [&](std::size_t at, int place) HWY_ATTR
                      {
                          V8 const kept = hn::AndNot(masks.At(place), hn::LoadU(s_d8, samples + at));
                          hn::StoreU(hn::Or(kept, bits.At(place)), s_d8, samples + at);
                      });
}

HWY_ATTR std::size_t RunThreshold(unsigned char *samples, std::size_t count, BytePattern const &mask,
                                  ThresholdRule const &rule)
{
    Vectors const masks(mask);
    V8 const threshold = hn::Set(s_d8, rule.threshold), onEqual = hn::Set(s_d8, rule.onEqual);
    V8 const onBelow = hn::Set(s_d8, rule.onBelow), onAbove = hn::Set(s_d8, rule.onAbove);
    V8 const keepsBelow = hn::Set(s_d8, static_cast<unsigned char>(rule.keepsBelow ? 0xFF : 0));
    V8 const keepsAbove = hn::Set(s_d8, static_cast<unsigned char>(rule.keepsAbove ? 0xFF : 0));
    return ForVectors(mask, count * mask.GetSampleSize(),
                      [&](std::size_t at, int place) HWY_ATTR
                      {
                          V8 const value = hn::LoadU(s_d8, samples + at);
                          V8 const below = Merge(keepsBelow, value, onBelow);
                          V8 const above = Merge(keepsAbove, value, onAbove);
                          V8 const notAbove = hn::IfThenElse(hn::Eq(value, threshold), onEqual, below);
                          V8 const isAbove = hn::VecFromMask(s_d8, hn::Eq(hn::Min(value, threshold), value));
                          V8 const result = Merge(isAbove, notAbove, above);
                          hn::StoreU(Merge(masks.At(place), result, value), s_d8, samples + at);
                      });
}

HWY_ATTR std::size_t RunMerge(unsigned char *dst, unsigned char const *src, std::size_t count, BytePattern const &mask)
{
    Vectors const masks(mask);
    return ForVectors(mask, count * mask.GetSampleSize(),
                      [&](std::size_t at, int place) HWY_ATTR
                      {
                          V8 const merged =
                              Merge(masks.At(place), hn::LoadU(s_d8, src + at), hn::LoadU(s_d8, dst + at));
                          hn::StoreU(merged, s_d8, dst + at);
                      });
}

/// Orders and masks for 16 bytes. If 16 is not a multiple of the samples' size, the last bytes belong to no sample.
struct OrderTables
{
    alignas(16) unsigned char order[16];
    alignas(16) unsigned char keeps[16];

    explicit OrderTables(ByteOrder const &of)
    {
        unsigned int const used = 16 / of.sampleSize * of.sampleSize;
        for (unsigned int i = 0; i < 16; ++i)
        {
            unsigned int const inSample = i % of.sampleSize;
            bool const stays = i >= used || of.keeps[inSample];
            order[i] = static_cast<unsigned char>(stays ? i : i - inSample + of.order[inSample]);
            keeps[i] = stays ? 0xFF : 0;
        }
    }
};

template<bool keepsSome>
HWY_ATTR inline void ReorderVector(unsigned char *dst, unsigned char const *src, V8 order, V8 keeps)
{
    V8 const moved = hn::TableLookupBytes(hn::LoadU(s_d8, src), order);
    hn::StoreU(keepsSome ? Merge(keeps, hn::LoadU(s_d8, dst), moved) : moved, s_d8, dst);
}

template<bool keepsSome>
HWY_ATTR std::size_t ReorderVectors(unsigned char *dst, unsigned char const *src, std::size_t byteSize,
                                    OrderTables const &tables)
{
    V8 const order = hn::LoadDup128(s_d8, tables.order), keeps = hn::LoadDup128(s_d8, tables.keeps);
    std::size_t const size = hn::Lanes(s_d8);
    std::size_t done = 0;
    for (; byteSize - done >= 4 * size; done += 4 * size)
    {
        for (std::size_t i = done; i < done + 4 * size; i += size)
            ReorderVector<keepsSome>(dst + i, src + i, order, keeps);
    }
    for (; byteSize - done >= size; done += size)
        ReorderVector<keepsSome>(dst + done, src + done, order, keeps);
    return done;
}

/// Reorders all bytes of a block and writes them past the caches. The bytes before the first whole line are written
/// twice.
HWY_ATTR std::size_t ReorderPastCaches(unsigned char *dst, unsigned char const *src, std::size_t byteSize,
                                       OrderTables const &tables)
{
    V8 const order = hn::LoadDup128(s_d8, tables.order);
    std::size_t const size = hn::Lanes(s_d8);
    std::size_t done = CountBytesToLine(dst);
    for (std::size_t i = 0; i < done; i += size)
        hn::StoreU(hn::TableLookupBytes(hn::LoadU(s_d8, src + i), order), s_d8, dst + i);
    for (; byteSize - done >= 4 * size; done += 4 * size)
    {
        FetchAhead(src + done, 4 * size);
        for (std::size_t i = done; i < done + 4 * size; i += size)
            hn::Stream(hn::TableLookupBytes(hn::LoadU(s_d8, src + i), order), s_d8, dst + i);
    }
    hwy::FlushStream();
    return done;
}

/// Reorders samples whose size does not divide 16, as many at a time as fit into 16 bytes. The bytes that are loaded
/// after them are stored again unchanged, and then reordered in the next step.
HWY_ATTR std::size_t ReorderParts(unsigned char *dst, unsigned char const *src, std::size_t byteSize, std::size_t step,
                                  OrderTables const &tables)
{
    constexpr hn::FixedTag<std::uint8_t, 16> d;
    auto const order = hn::Load(d, tables.order);
    auto const keeps = hn::Load(d, tables.keeps);
    std::size_t done = 0;
    for (; byteSize - done >= step + 16; done += 2 * step)
    {
        auto const first = hn::LoadU(d, src + done), second = hn::LoadU(d, src + done + step);
        auto const oldFirst = hn::LoadU(d, dst + done), oldSecond = hn::LoadU(d, dst + done + step);
        hn::StoreU(Merge(keeps, oldFirst, hn::TableLookupBytes(first, order)), d, dst + done);
        hn::StoreU(Merge(keeps, oldSecond, hn::TableLookupBytes(second, order)), d, dst + done + step);
    }
    return done;
}

HWY_ATTR std::size_t RunReorder(unsigned char *dst, unsigned char const *src, std::size_t count, ByteOrder const &order)
{
    OrderTables const tables(order);
    std::size_t const byteSize = count * order.sampleSize;
    bool const keepsSome = dst != src && std::any_of(order.keeps, order.keeps + order.sampleSize, std::identity());
    if (16 % order.sampleSize != 0)
        return ReorderParts(dst, src, byteSize, 16 / order.sampleSize * order.sampleSize, tables) / order.sampleSize;
    bool const isBig = dst != src && byteSize >= s_bigBlockSize && CountBytesToLine(dst) % order.sampleSize == 0;
    if (isBig && !keepsSome)
        return ReorderPastCaches(dst, src, byteSize, tables) / order.sampleSize;
    std::size_t const done = keepsSome ? ReorderVectors<true>(dst, src, byteSize, tables)
                                       : ReorderVectors<false>(dst, src, byteSize, tables);
    return done / order.sampleSize;
}

/// Changes colours vector by vector.
template<typename Change>
HWY_ATTR inline std::size_t ChangeColours(unsigned char *colours, std::size_t count, Change change)
{
    std::size_t const step = hn::Lanes(s_d32);
    std::size_t done = 0;
    for (; count - done >= 4 * step; done += 4 * step)
    {
        for (std::size_t i = done; i < done + 4 * step; i += step)
            StoreColours(colours + 4 * i, change(LoadColours(colours + 4 * i)));
    }
    for (; count - done >= step; done += step)
        StoreColours(colours + 4 * done, change(LoadColours(colours + 4 * done)));
    return done;
}

HWY_ATTR std::size_t RunKey(unsigned char *colours, std::size_t count, unsigned int key, unsigned char matchAlpha,
                            unsigned char otherAlpha)
{
    V32 const colourMask = Set32(0x00FFFFFF), wanted = Set32(key & 0x00FFFFFF);
    V32 const match = Set32(static_cast<unsigned int>(matchAlpha) << 24);
    V32 const other = Set32(static_cast<unsigned int>(otherAlpha) << 24);
    return ChangeColours(colours, count,
                         [&](V32 value) HWY_ATTR
                         {
                             V32 const colour = hn::And(value, colourMask);
                             return hn::Or(colour, hn::IfThenElse(hn::Eq(colour, wanted), match, other));
                         });
}

HWY_ATTR std::size_t RunLuminance(unsigned char *colours, std::size_t count, unsigned char threshold)
{
    V8 const thresholds = hn::Set(s_d8, threshold);
    V32 const colourMask = Set32(0x00FFFFFF);
    return ChangeColours(colours, count,
                         [&](V32 value) HWY_ATTR
                         {
                             V8 const bytes = hn::BitCast(s_d8, value);
                             V8 const notAbove = hn::VecFromMask(s_d8, hn::Eq(hn::Min(bytes, thresholds), bytes));
                             V32 const above = hn::AndNot(hn::BitCast(s_d32, notAbove), colourMask);
                             return hn::Or(above, hn::ShiftLeft<24>(Luminance(value)));
                         });
}

HWY_ATTR std::size_t RunSwap(unsigned char *a, unsigned char *b, std::size_t byteSize)
{
    std::size_t const size = hn::Lanes(s_d8);
    std::size_t done = 0;
    for (; byteSize - done >= 2 * size; done += 2 * size)
    {
        V8 const a0 = hn::LoadU(s_d8, a + done), a1 = hn::LoadU(s_d8, a + done + size);
        V8 const b0 = hn::LoadU(s_d8, b + done), b1 = hn::LoadU(s_d8, b + done + size);
        hn::StoreU(b0, s_d8, a + done);
        hn::StoreU(b1, s_d8, a + done + size);
        hn::StoreU(a0, s_d8, b + done);
        hn::StoreU(a1, s_d8, b + done + size);
    }
    return done;
}

/// Exchanges and reverses vectors from both ends while there are two. Returns the number of bytes done at each end.
template<typename D>
HWY_ATTR inline std::size_t ReverseEnds(D d, unsigned char *samples, std::size_t byteSize, std::size_t done,
                                        unsigned char const *orderInBlock)
{
    auto const order = hn::LoadDup128(d, orderInBlock);
    std::size_t const size = hn::Lanes(d);
    for (; byteSize - 2 * done >= 2 * size; done += size)
    {
        unsigned char *const front = samples + done, *const back = samples + byteSize - done - size;
        auto const first = hn::ReverseBlocks(d, hn::LoadU(d, front));
        auto const last = hn::ReverseBlocks(d, hn::LoadU(d, back));
        hn::StoreU(hn::TableLookupBytes(last, order), d, front);
        hn::StoreU(hn::TableLookupBytes(first, order), d, back);
    }
    return done;
}

HWY_ATTR std::size_t RunReverse(unsigned char *rows, std::size_t numRows, std::size_t count, unsigned int sampleSize)
{
    if (16 % sampleSize != 0)
        return 0;
    alignas(16) unsigned char order[16];
    for (unsigned int i = 0; i < 16; ++i)
        order[i] = static_cast<unsigned char>(16 - sampleSize - i / sampleSize * sampleSize + i % sampleSize);
    constexpr hn::FixedTag<std::uint8_t, 16> d;
    std::size_t const byteSize = count * sampleSize;
    std::size_t done = 0;
    for (unsigned char *row = rows; row != rows + numRows * byteSize; row += byteSize)
        done = ReverseEnds(d, row, byteSize, ReverseEnds(s_d8, row, byteSize, 0, order), order);
    return done / sampleSize;
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

HWY_EXPORT(RunFill);
HWY_EXPORT(RunThreshold);
HWY_EXPORT(RunMerge);
HWY_EXPORT(RunReorder);
HWY_EXPORT(RunKey);
HWY_EXPORT(RunLuminance);
HWY_EXPORT(RunSwap);
HWY_EXPORT(RunReverse);

/// Reverses the samples that the vectors leave in the middle, and samples of any size.
template<unsigned int sampleSize>
void ReverseRest(unsigned char *samples, std::size_t count)
{
    struct Sample
    {
        unsigned char bytes[sampleSize];
    };
    auto *const first = reinterpret_cast<Sample *>(samples);
    std::reverse(first, first + count);
}

void ReverseRest(unsigned char *rest, std::size_t count, unsigned int sampleSize)
{
    switch (sampleSize)
    {
    case 1:
        return ReverseRest<1>(rest, count);
    case 2:
        return ReverseRest<2>(rest, count);
    case 3:
        return ReverseRest<3>(rest, count);
    case 4:
        return ReverseRest<4>(rest, count);
    case 6:
        return ReverseRest<6>(rest, count);
    case 8:
        return ReverseRest<8>(rest, count);
    case 12:
        return ReverseRest<12>(rest, count);
    case 16:
        return ReverseRest<16>(rest, count);
    default:
        for (std::size_t i = 0; i < count / 2; ++i)
            std::swap_ranges(rest + i * sampleSize, rest + (i + 1) * sampleSize, rest + (count - 1 - i) * sampleSize);
    }
}

} // namespace

void BytePattern::Set(unsigned int offset, std::span<unsigned char const> bytes)
{
    if (!IsUsable())
        return;
    for (std::size_t at = offset; at < sizeof bytes_; at += sampleSize_)
        std::copy(bytes.begin(), bytes.end(), bytes_ + at);
}

std::size_t FillMasked(unsigned char *samples, std::size_t count, BytePattern const &mask, BytePattern const &values)
{
    return CanRunKernels() && mask.IsUsable()
               ? HWY_DYNAMIC_DISPATCH(RunFill)(samples, count, mask, values) / mask.GetSampleSize()
               : 0;
}

std::size_t ApplyThreshold(unsigned char *samples, std::size_t count, BytePattern const &mask,
                           ThresholdRule const &rule)
{
    return CanRunKernels() && mask.IsUsable()
               ? HWY_DYNAMIC_DISPATCH(RunThreshold)(samples, count, mask, rule) / mask.GetSampleSize()
               : 0;
}

std::size_t MergeSamples(unsigned char *dst, unsigned char const *src, std::size_t count, BytePattern const &mask)
{
    return CanRunKernels() && mask.IsUsable()
               ? HWY_DYNAMIC_DISPATCH(RunMerge)(dst, src, count, mask) / mask.GetSampleSize()
               : 0;
}

std::size_t ReorderBytes(unsigned char *dst, unsigned char const *src, std::size_t count, ByteOrder const &order)
{
    bool const canRun = CanRunKernels() && order.sampleSize != 0 && 48 % order.sampleSize == 0;
    return canRun && order.sampleSize <= 16 ? HWY_DYNAMIC_DISPATCH(RunReorder)(dst, src, count, order) : 0;
}

std::size_t SetAlphaByKey(unsigned char *colours, std::size_t count, unsigned int key, unsigned char matchAlpha,
                          unsigned char otherAlpha)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(RunKey)(colours, count, key, matchAlpha, otherAlpha) : 0;
}

std::size_t SetAlphaByLuminance(unsigned char *colours, std::size_t count, unsigned char threshold)
{
    return CanRunKernels() ? HWY_DYNAMIC_DISPATCH(RunLuminance)(colours, count, threshold) : 0;
}

void SwapBlocks(unsigned char *a, unsigned char *b, std::size_t byteSize)
{
    std::size_t const done = CanRunKernels() ? HWY_DYNAMIC_DISPATCH(RunSwap)(a, b, byteSize) : 0;
    std::swap_ranges(a + done, a + byteSize, b + done);
}

void FlipColumnsOfBlock(unsigned char *rows, std::size_t numRows, std::size_t numColumns, unsigned int sampleSize)
{
    std::size_t const done =
        CanRunKernels() ? HWY_DYNAMIC_DISPATCH(RunReverse)(rows, numRows, numColumns, sampleSize) : 0;
    for (std::size_t i = 0; i < numRows && 2 * done + 1 < numColumns; ++i)
        ReverseRest(rows + (i * numColumns + done) * sampleSize, numColumns - 2 * done, sampleSize);
}

void FlipRowsOfBlock(unsigned char *rows, std::size_t numRows, std::size_t rowByteSize)
{
    for (std::size_t i = 0; i < numRows / 2; ++i)
        SwapBlocks(rows + i * rowByteSize, rows + (numRows - 1 - i) * rowByteSize, rowByteSize);
}

} // namespace quillmarsh
#endif
