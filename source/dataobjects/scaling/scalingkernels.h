// The inner loops of scaling, a vector at a time.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_SCALING_SCALINGKERNELS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_SCALING_SCALINGKERNELS_H

#include <cstddef>
#include <cstdint>

namespace quillmarsh
{

/// Weighted sums of the elements of some rows: the products are added in the order of the rows.
template<typename Element>
struct RowBlend
{
    Element const *const *rows;
    float const *weights;
    std::size_t numRows; ///< not 0
    float *sums;
    std::size_t count; ///< of elements in a row
};

/// Sums of the bytes of up to s_maxRows rows.
struct RowTotal
{
    static constexpr std::size_t s_maxRows = 257;

    unsigned char const *const *rows;
    std::size_t numRows; ///< not 0
    std::uint16_t *totals;
    std::size_t count; ///< of bytes in a row
};

/// Means of two by two samples of 1, 2 or 4 bytes, halves rounded up.
struct RowHalving
{
    unsigned char const *row0, *row1;
    unsigned int sampleSize;
    unsigned char *dst;
    std::size_t count; ///< of samples of the destination
};

/// Four rows of floats, side by side: element i of all rows, then element i + 1.
struct RowInterleaving
{
    float const *rows[4];
    float *groups;
    std::size_t count; ///< of elements in a row
};

/// Weighted sums along a row of groups of four floats, clamped to 0..largest.
template<typename Element>
struct ColumnBlend
{
    float const *groups;
    unsigned int const *first;
    std::size_t const *start; ///< of the weights, and the end of the last ones
    float const *weights;
    float largest;
    Element *dst;      ///< bytes are rounded
    std::size_t count; ///< of groups of the destination
};

/// Weighted sums of 2, 3 or 4 consecutive floats at a time, clamped to 0..largest.
struct FactorBlend
{
    float const *row;
    std::size_t factor;
    float const *weights; ///< as many as the factor
    float largest;
    float *dst;
    std::size_t count; ///< of sums
};

/// Weighted sums of two by two floats, clamped to 0..largest: first of the rows, then of the columns.
struct FloatHalving
{
    float const *row0, *row1;
    float const *rowWeights, *weights; ///< two each
    float largest;
    float *dst;
    std::size_t count; ///< of sums
};

/// @name Kernels
/// Each gives the same bits as the plain loop in scaling.cpp for the first elements, and returns their number, which is
/// 0 on machines without vectors. The blocks must not overlap. Any thread.
/// @{
std::size_t RunKernel(RowBlend<unsigned char> const &job);
std::size_t RunKernel(RowBlend<float> const &job);
std::size_t RunKernel(RowTotal const &job);
std::size_t RunKernel(RowHalving const &job);
std::size_t RunKernel(RowInterleaving const &job);
std::size_t RunKernel(ColumnBlend<unsigned char> const &job);
std::size_t RunKernel(ColumnBlend<float> const &job);
std::size_t RunKernel(FactorBlend const &job);
std::size_t RunKernel(FloatHalving const &job);
/// @}

} // namespace quillmarsh

#endif
