#include "checkerboard.h"

#include <algorithm>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace viewer
{

namespace
{

constexpr unsigned int s_period = 16;
/// Pixels of the board that are worked on at once.
constexpr unsigned int s_group = 4;

/// The board along a row, a few pixels longer than its period.
using BoardRow = std::array<Pixel, s_period + s_group>;

BoardRow MakeBoardRow(int y)
{
    BoardRow row;
    for (std::size_t x = 0; x < row.size(); ++x)
        row[x] = s_checkerboard[(x >> 3 ^ static_cast<unsigned int>(y) >> 3) & 1];
    return row;
}

Pixel LayOver(Pixel colour, Pixel below)
{
    constexpr Pixel mask = 0x00FF00FF;
    Pixel const alpha = colour >> 24;
    auto const blend = [&](unsigned int shift)
    {
        Pixel const sum = (colour >> shift & mask) * alpha + (below >> shift & mask) * (255 - alpha) + 0x00800080;
        return (sum + (sum >> 8 & mask)) >> 8 & mask;
    };
    return 0xFF000000 | blend(0) | (blend(8) & 0xFF) << 8;
}

#if defined(__SSE2__)

/// The same for two pixels in components of 16 bits.
__m128i LayOver(__m128i colours, __m128i below)
{
    __m128i const alphas = _mm_shufflehi_epi16(_mm_shufflelo_epi16(colours, 0xFF), 0xFF);
    __m128i const rest = _mm_sub_epi16(_mm_set1_epi16(255), alphas);
    __m128i const sum = _mm_add_epi16(_mm_add_epi16(_mm_mullo_epi16(colours, alphas), _mm_mullo_epi16(below, rest)),
                                      _mm_set1_epi16(128));
    return _mm_srli_epi16(_mm_add_epi16(sum, _mm_srli_epi16(sum, 8)), 8);
}

/// Returns the number of pixels that are done.
unsigned int LayOverGroups(Pixel *pixels, unsigned int count, unsigned int x, BoardRow const &board)
{
    __m128i const zero = _mm_setzero_si128(), opaque = _mm_set1_epi32(-0x01000000);
    unsigned int i = 0;
    for (; i + s_group <= count; i += s_group)
    {
        auto *const place = reinterpret_cast<__m128i *>(pixels + i);
        __m128i const colours = _mm_loadu_si128(place);
        if (_mm_movemask_epi8(_mm_cmpeq_epi32(_mm_and_si128(colours, opaque), opaque)) == 0xFFFF)
            continue;
        __m128i const below = _mm_loadu_si128(reinterpret_cast<__m128i const *>(board.data() + (x + i) % s_period));
        __m128i const low = LayOver(_mm_unpacklo_epi8(colours, zero), _mm_unpacklo_epi8(below, zero));
        __m128i const high = LayOver(_mm_unpackhi_epi8(colours, zero), _mm_unpackhi_epi8(below, zero));
        _mm_storeu_si128(place, _mm_or_si128(_mm_packus_epi16(low, high), opaque));
    }
    return i;
}

#else

unsigned int LayOverGroups(Pixel *, unsigned int, unsigned int, BoardRow const &)
{
    return 0;
}

#endif

} // namespace

void LayOverCheckerboard(Pixel *pixels, unsigned int count, int x, int y)
{
    BoardRow const board = MakeBoardRow(y);
    auto const start = static_cast<unsigned int>(x);
    for (unsigned int i = LayOverGroups(pixels, count, start, board); i < count; ++i)
        pixels[i] = LayOver(pixels[i], board[(start + i) % s_period]);
}

} // namespace viewer
