// Kernels that work in place on whole blocks of samples, a vector at a time.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_INPLACEKERNELS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_INPLACEKERNELS_H

#include <cstddef>
#include <span>

namespace quillmarsh
{

/// A pattern of bytes over a block of samples of one size. Three vectors of any machine contain a whole number of
/// samples if 48 is a multiple of the samples' size; this holds for every plain sample.
class BytePattern
{
public:
    /// Creates a pattern of zeros.
    explicit BytePattern(unsigned int sampleSize) : sampleSize_(sampleSize) {}

    /// Sets these bytes in every sample. Does nothing if 48 is not a multiple of the samples' size.
    void Set(unsigned int offset, std::span<unsigned char const> bytes);

    bool IsUsable() const { return sampleSize_ != 0 && 48 % sampleSize_ == 0; }
    /// True when a single vector contains a whole number of samples.
    bool IsUniform() const { return 16 % sampleSize_ == 0; }
    unsigned int GetSampleSize() const { return sampleSize_; }
    unsigned char const *GetBytes() const { return bytes_; }

private:
    alignas(64) unsigned char bytes_[3 * 64] = {};
    unsigned int sampleSize_;
};

/// Results of a threshold for a byte below it, equal to it, and above it.
struct ThresholdRule
{
    unsigned char threshold, onBelow, onEqual, onAbove;
    bool keepsBelow, keepsAbove; ///< the byte stays instead
};

/// New places of the bytes of a sample: byte i comes from byte `order[i]` of the source, or stays where `keeps[i]`.
struct ByteOrder
{
    unsigned int sampleSize;
    unsigned char order[16];
    bool keeps[16];
};

/// @name Kernels on samples
/// Each gives the same bits as the one-element processors for the first samples, and returns their number: all except a
/// rest of less than three vectors. Blocks need no alignment. Any thread.
/// @{

/// Sets the bits of the mask to those of the values, which must have no other bits.
std::size_t FillMasked(unsigned char *samples, std::size_t count, BytePattern const &mask, BytePattern const &values);
/// Works on the bytes where the mask is 255.
std::size_t ApplyThreshold(unsigned char *samples, std::size_t count, BytePattern const &mask,
                           ThresholdRule const &rule);
/// Copies the bytes of the mask from the source.
std::size_t MergeSamples(unsigned char *dst, unsigned char const *src, std::size_t count, BytePattern const &mask);
/// Reorders the bytes of each sample. The blocks must be the same, or must not overlap.
std::size_t ReorderBytes(unsigned char *dst, unsigned char const *src, std::size_t count, ByteOrder const &order);
/// Sets alpha of four-byte colours to `matchAlpha` where they equal the key, and to the other value elsewhere.
std::size_t SetAlphaByKey(unsigned char *colours, std::size_t count, unsigned int key, unsigned char matchAlpha,
                          unsigned char otherAlpha);
/// Sets alpha of four-byte colours to their luminance, and each other byte to 255 above the threshold and else to 0.
std::size_t SetAlphaByLuminance(unsigned char *colours, std::size_t count, unsigned char threshold);
/// @}

/// @name Exchanges of whole blocks
/// @{

/// Exchanges two blocks, which must not overlap.
void SwapBlocks(unsigned char *a, unsigned char *b, std::size_t byteSize);
/// Reverses the order of rows.
void FlipRowsOfBlock(unsigned char *rows, std::size_t numRows, std::size_t rowByteSize);
/// Reverses the order of the samples of each row.
void FlipColumnsOfBlock(unsigned char *rows, std::size_t numRows, std::size_t numColumns, unsigned int sampleSize);
/// @}

} // namespace quillmarsh

#endif
