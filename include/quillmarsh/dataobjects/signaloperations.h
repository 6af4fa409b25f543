// Operations on the samples of any container, as one row: copies, fills, thresholds, a gradient, resampling.
#ifndef QUILLMARSH_DATAOBJECTS_SIGNALOPERATIONS_H
#define QUILLMARSH_DATAOBJECTS_SIGNALOPERATIONS_H

#include <quillmarsh/dataobjects/sampletransfer.h>
#include <quillmarsh/dataobjects/signalbase.h>
#include <quillmarsh/mathtools/color4b.h>
#include <quillmarsh/mathtools/color4f.h>

namespace quillmarsh
{

// Images and volumes are signals, so these functions work on them, too. Offsets are bytes within a sample. An offset,
// an index or a count that is out of range asserts, and then nothing is written. Work in place makes no heap
// allocation. Any thread may call these functions, on containers that no other thread is writing.

/// Way to compute a sample at a position between samples.
enum eResampleFilter : unsigned int
{
    e_resample_nearest = 0, ///< the nearest sample, unchanged
    e_resample_linear = 1   ///< the weighted sum of the adjacent samples
};

/// @name Copies
/// @{

/// Copies samples of one format between two places; a `count` of 0 means all samples of `src`. Asserts "Sample-format
/// mismatch.", "Destination is empty.", "Source is empty.", "Destination-offset/count out of range." and
/// "Source-offset/count out of range.".
QUILLMARSH_API void CopySamples1D(SignalBase &dst, SignalBase const &src, unsigned int count, unsigned int dstOffset,
                                  unsigned int srcOffset);

/// Creates a signal with the format and samples of another container, which must not be empty; null when no plain
/// sample has the format's size. The caller owns it.
QUILLMARSH_API SignalBase *CloneSignal(SignalBase const &src);

/// Reverses the order of the samples.
QUILLMARSH_API void FlipSamples(SignalBase &signal);
/// @}

/// @name Order of bytes
/// @{

/// Reverses the bytes of each sample.
QUILLMARSH_API void ProcessSamples_FlipByteOrder(Signal<Sample16> &signal);
/// Reverses the bytes of each sample.
QUILLMARSH_API void ProcessSamples_FlipByteOrder(Signal<Sample32> &signal);
/// Reverses the bytes of each sample of any size.
QUILLMARSH_API void ProcessSamples_FlipByteOrder(SignalBase &signal);
/// Reverses three bytes of each sample. Asserts "Triplet-offset out of range.".
QUILLMARSH_API void ProcessSamples_3BytesFlipByteOrder(SignalBase &signal, unsigned int tripletOffset);
/// Exchanges the bytes at `offset1` and at `offset1 + offset2`: the second offset counts from the first. Asserts
/// "Byte-offset-1 out of range." and "Byte-offset-2 out of range.".
QUILLMARSH_API void ProcessSamples_SwapBytes(SignalBase &signal, unsigned int offset1, unsigned int offset2);
/// Copies samples with their bytes reversed. Asserts "Sample-count mismatch.".
QUILLMARSH_API void CopySamples_FlippedByteOrder(Signal<Sample16> &dst, Signal<Sample16> const &src);
/// Copies samples with their bytes reversed. Asserts "Sample-count mismatch.".
QUILLMARSH_API void CopySamples_FlippedByteOrder(Signal<Sample32> &dst, Signal<Sample32> const &src);
/// Copies three bytes of each sample in reversed order. Asserts "Sample-count mismatch.", "Destination-triplet-offset
/// out of range." and "Source-triplet-offset out of range.".
QUILLMARSH_API void CopySamples_3BytesFlippedByteOrder(SignalBase &dst, unsigned int dstOffset, SignalBase const &src,
                                                       unsigned int srcOffset);
/// @}

/// @name Fills of bytes and bits, in every sample
/// @{

/// Sets all bytes to 0.
QUILLMARSH_API void ProcessSamples_Clear(SignalBase &signal);
/// Sets one byte. Asserts "Byte-offset out of range.".
QUILLMARSH_API void ProcessSamples_Fill1Byte(SignalBase &signal, unsigned int byteOffset, unsigned char value);
/// Sets all bytes.
QUILLMARSH_API void ProcessSamples_FillNBytes(SignalBase &signal, unsigned char value);
/// Sets three bytes, in this order. Asserts "Triplet-offset out of range.".
QUILLMARSH_API void ProcessSamples_Fill3Bytes(SignalBase &signal, unsigned int tripletOffset, unsigned char value0,
                                              unsigned char value1, unsigned char value2);
/// Sets one half of a byte to the low four bits of a value. Asserts "Byte-offset out of range.".
QUILLMARSH_API void ProcessSamples_Fill1Nibble(SignalBase &signal, unsigned int byteOffset, bool highNibble,
                                               unsigned char value);
/// Sets one half of a byte to the high four bits of a value. Asserts "Byte-offset out of range.".
QUILLMARSH_API void ProcessSamples_Fill1Nibble_MapValueRange(SignalBase &signal, unsigned int byteOffset,
                                                             bool highNibble, unsigned char value);
/// Sets the bits `mask << shift` of samples of one 16-bit word to the masked value. Asserts "Invalid
/// target-sample-size.".
QUILLMARSH_API void ProcessSamples_FillBits_UShort(SignalBase &signal, unsigned short value, unsigned short mask,
                                                   unsigned short shift);
/// @}

/// @name Alpha of colours
/// @{

/// Sets alpha to the luminance of the colour, then each byte of the colour to 255 above the threshold and else to 0.
/// Turns a grey glyph into a white one with coverage. Does nothing to samples with less than four bytes.
QUILLMARSH_API void ProcessSamples_BGRToA_ThresholdBGR(SignalBase &signal, unsigned char threshold = 0);
/// Sets alpha to `matchAlpha` where blue, green and red equal those of the key, and to `otherAlpha` elsewhere. Does
/// nothing to samples with less than four bytes.
QUILLMARSH_API void ProcessSamples_AlphaFromColorKey(SignalBase &signal, color4b key, unsigned char matchAlpha,
                                                     unsigned char otherAlpha);
/// @}

/// @name Thresholds, on one byte of each sample
/// All assert "Byte-offset out of range.".
/// @{

/// Replaces bytes below the threshold, and bytes equal to it.
QUILLMARSH_API void HighPassFilter(SignalBase &signal, unsigned int byteOffset, unsigned char threshold,
                                   unsigned char onEqual, unsigned char onBelow);
/// Replaces bytes above the threshold, and bytes equal to it.
QUILLMARSH_API void LowPassFilter(SignalBase &signal, unsigned int byteOffset, unsigned char threshold,
                                  unsigned char onEqual, unsigned char onAbove);
/// Replaces every byte by one of three values.
QUILLMARSH_API void ThresholdSegmentation(SignalBase &signal, unsigned int byteOffset, unsigned char threshold,
                                          unsigned char onBelow, unsigned char onEqual, unsigned char onAbove);
/// Does the same for `numBytes` bytes of each sample. Asserts also "Num-bytes-per-sample out of range.". Does nothing
/// after an ignored assertion.
QUILLMARSH_API void ThresholdSegmentationNBytes(SignalBase &signal, unsigned int byteOffset, unsigned int numBytes,
                                                unsigned char threshold, unsigned char onBelow, unsigned char onEqual,
                                                unsigned char onAbove);
/// @}

/// @name Fills of channels
/// Set a channel of the format in every sample. Values have 8 bits; narrower channels keep the upper bits. False, with
/// nothing changed, for a format without the channel.
/// @{
QUILLMARSH_API bool Fill_Luminance(SignalBase &signal, unsigned char value);
QUILLMARSH_API bool Fill_Alpha(SignalBase &signal, unsigned char value);
QUILLMARSH_API bool Fill_Red(SignalBase &signal, unsigned char value);
QUILLMARSH_API bool Fill_Green(SignalBase &signal, unsigned char value);
QUILLMARSH_API bool Fill_Blue(SignalBase &signal, unsigned char value);
/// Sets the colour and leaves alpha unchanged.
QUILLMARSH_API bool Fill_RGB(SignalBase &signal, color4b color);
/// Sets colour and alpha. The format must have alpha, so "X8R8G8B8" returns false.
QUILLMARSH_API bool Fill_ARGB(SignalBase &signal, color4b color);
/// @}

/// Fills the samples from `startIndex` to `endIndex`, both included, with colours from `startColor` towards `endColor`.
/// The number of equal steps is the number of samples, so the last sample is one step short of `endColor`. False when
/// colours cannot be transferred into the format of the signal. Asserts "Signal is empty.", "Start-index out of
/// range.", "End-index out of range." and "End-index preceds start-index.".
QUILLMARSH_API bool GradientFill(SignalBase &signal, color4f const &startColor, color4f const &endColor,
                                 unsigned int startIndex, unsigned int endIndex);

/// @name Resampling
/// Compute the samples of `dst` from those of `src`; both keep their counts. For n samples from m, the position `u`
/// starts at half a step and advances by `step = 1 / (n + 1)`; samples are read at `u * m`, all in single precision.
/// This leaves a margin at both ends, and equal counts do not give a plain copy. The nearest filter takes the sample at
/// the rounded position. The linear filter weighs the sample at the truncated position and the next one; at the end,
/// both are the last sample.
/// @{

/// Resamples by the format, which both must share. False for an unknown filter. The linear filter also returns false
/// for a format that is neither named nor one of the float formats, and leaves the unused byte of "X8R8G8B8" unchanged.
/// Asserts "Destination is empty.", "Source is empty." and "Sample-format mismatch.".
QUILLMARSH_API bool Resample1D(SignalBase &dst, SignalBase const &src, eResampleFilter filter);
/// Takes whole nearest samples. Asserts as Resample1D does.
QUILLMARSH_API void Resample1D_Nearest(SignalBase &dst, SignalBase const &src);
/// Resamples `numBytes` bytes of each sample with the linear filter. Asserts as Resample1D does, and
/// "Num-bytes-per-sample out of range." and "Byte-offset out of range.".
QUILLMARSH_API void Resample1D_Linear_NBytes(SignalBase &dst, SignalBase const &src, unsigned int byteOffset,
                                             unsigned int numBytes);
/// Resamples `numComponents` floats of each sample with the linear filter; the offset counts floats. Asserts as
/// Resample1D does, and "Num-components-per-sample out of range." and "Component-offset out of range.".
QUILLMARSH_API void Resample1D_Linear_NFloats(SignalBase &dst, SignalBase const &src, unsigned int componentOffset,
                                              unsigned int numComponents);
/// Resamples each field of "A4R4G4B4" with the linear filter. Asserts "Destination is empty.", "Source is empty.",
/// "Invalid sample-format size." and "Sample-format mismatch.".
QUILLMARSH_API void Resample1D_Linear_PackedSample_UShort4444(SignalBase &dst, SignalBase const &src);
/// Resamples each field of "A1R5G5B5" with the linear filter. Asserts as the function for "A4R4G4B4" does.
QUILLMARSH_API void Resample1D_Linear_PackedSample_UShort1555(SignalBase &dst, SignalBase const &src);
/// @}

} // namespace quillmarsh

#endif
