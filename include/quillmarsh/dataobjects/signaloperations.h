// Work on the samples of any container taken as one row of them: copies, fills, thresholds, a gradient, resampling.
#ifndef QUILLMARSH_DATAOBJECTS_SIGNALOPERATIONS_H
#define QUILLMARSH_DATAOBJECTS_SIGNALOPERATIONS_H

#include <quillmarsh/dataobjects/sampletransfer.h>
#include <quillmarsh/dataobjects/signalbase.h>
#include <quillmarsh/mathtools/color4b.h>
#include <quillmarsh/mathtools/color4f.h>

namespace quillmarsh
{

// Images and volumes are signals too, so all of this works on them. Offsets are bytes within a sample. An offset, an
// index or a count that leads out of the samples is asserted, and then nothing is written. Work in place makes no heap
// allocation. Any thread may call these functions, on containers that no other thread is writing.

/// How a sample between the samples of a source is found.
enum eResampleFilter : unsigned int
{
    e_resample_nearest = 0, ///< the nearest sample as it is
    e_resample_linear = 1   ///< the weighted sum of the samples around
};

/// @name Copies
/// @{

/// Copies samples of one format between two places; a `count` of 0 means all samples of `src`. Asserts "Sample-format
/// mismatch.", "Destination is empty.", "Source is empty.", "Destination-offset/count out of range." and
/// "Source-offset/count out of range.".
QUILLMARSH_API void CopySamples1D(SignalBase &dst, SignalBase const &src, unsigned int count, unsigned int dstOffset,
                                  unsigned int srcOffset);

/// New signal with format and samples of another container, which is not empty; null when no record has the size of the
/// format. The caller owns it.
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
/// Reverses the bytes of each sample, whatever its size.
QUILLMARSH_API void ProcessSamples_FlipByteOrder(SignalBase &signal);
/// Reverses three bytes of each sample. Asserts "Triplet-offset out of range.".
QUILLMARSH_API void ProcessSamples_3BytesFlipByteOrder(SignalBase &signal, unsigned int tripletOffset);
/// Exchanges the byte at the first offset with the one so many bytes behind it: the second offset counts from the
/// first. Asserts "Byte-offset-1 out of range." and "Byte-offset-2 out of range.".
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

/// Alpha becomes the luminance of the colour; then each byte of the colour becomes 255 above the threshold and else 0.
/// Makes coverage and a white glyph out of a grey one. Nothing happens to samples under four bytes.
QUILLMARSH_API void ProcessSamples_BGRToA_ThresholdBGR(SignalBase &signal, unsigned char threshold = 0);
/// Alpha becomes the one value where blue, green and red equal those of the key, and the other elsewhere. Nothing
/// happens to samples under four bytes.
QUILLMARSH_API void ProcessSamples_AlphaFromColorKey(SignalBase &signal, color4b key, unsigned char matchAlpha,
                                                     unsigned char otherAlpha);
/// @}

/// @name Thresholds, on one byte of each sample
/// All assert "Byte-offset out of range.".
/// @{

/// Replaces what is below the threshold, and what equals it.
QUILLMARSH_API void HighPassFilter(SignalBase &signal, unsigned int byteOffset, unsigned char threshold,
                                   unsigned char onEqual, unsigned char onBelow);
/// Replaces what is above the threshold, and what equals it.
QUILLMARSH_API void LowPassFilter(SignalBase &signal, unsigned int byteOffset, unsigned char threshold,
                                  unsigned char onEqual, unsigned char onAbove);
/// Replaces everything by one of three values.
QUILLMARSH_API void ThresholdSegmentation(SignalBase &signal, unsigned int byteOffset, unsigned char threshold,
                                          unsigned char onBelow, unsigned char onEqual, unsigned char onAbove);
/// The same for so many bytes of each sample. Asserts "Num-bytes-per-sample out of range." too, and does nothing after
/// either.
QUILLMARSH_API void ThresholdSegmentationNBytes(SignalBase &signal, unsigned int byteOffset, unsigned int numBytes,
                                                unsigned char threshold, unsigned char onBelow, unsigned char onEqual,
                                                unsigned char onAbove);
/// @}

/// @name Fills of channels
/// The channel is where the format has it; values have 8 bits, of which narrower channels keep the upper ones. False,
/// with nothing changed, for a format that has no such channel.
/// @{
QUILLMARSH_API bool Fill_Luminance(SignalBase &signal, unsigned char value);
QUILLMARSH_API bool Fill_Alpha(SignalBase &signal, unsigned char value);
QUILLMARSH_API bool Fill_Red(SignalBase &signal, unsigned char value);
QUILLMARSH_API bool Fill_Green(SignalBase &signal, unsigned char value);
QUILLMARSH_API bool Fill_Blue(SignalBase &signal, unsigned char value);
/// Leaves alpha as it is.
QUILLMARSH_API bool Fill_RGB(SignalBase &signal, color4b color);
/// Needs a format that has an alpha: not "X8R8G8B8".
QUILLMARSH_API bool Fill_ARGB(SignalBase &signal, color4b color);
/// @}

/// Fills samples from `startIndex` up to and with `endIndex` with colours that go from one to the other, in equal steps
/// of which there are as many as samples: the last sample is one step short of `endColor`. False when colours cannot be
/// transferred into the format of the signal. Asserts "Signal is empty.", "Start-index out of range.", "End-index out of
/// range." and "End-index preceds start-index.".
QUILLMARSH_API bool GradientFill(SignalBase &signal, color4f const &startColor, color4f const &endColor,
                                 unsigned int startIndex, unsigned int endIndex);

/// @name Resampling
/// Spreads the samples of `src` over those of `dst`; both keep their counts. For n samples out of m, the walk goes by
/// `step = 1 / (n + 1)` from half a step on and reads at position `u * m`, all in single precision: it leaves a margin at
/// both ends, and the same count is not the identity. The nearest filter takes the sample at the position rounded. The
/// linear one weighs the sample at the position cut off and the one behind it, which at the end is the same again.
/// @{

/// By the format of the two, which is the same. False for a filter that is none, and with the linear one for a format
/// without a name that is no float either. The unused byte of "X8R8G8B8" stays as it is with the linear filter. Asserts
/// "Destination is empty.", "Source is empty." and "Sample-format mismatch.".
QUILLMARSH_API bool Resample1D(SignalBase &dst, SignalBase const &src, eResampleFilter filter);
/// Nearest samples, whole. Asserts as Resample1D.
QUILLMARSH_API void Resample1D_Nearest(SignalBase &dst, SignalBase const &src);
/// Linear, so many bytes of each sample. Asserts as Resample1D, "Num-bytes-per-sample out of range." and "Byte-offset
/// out of range.".
QUILLMARSH_API void Resample1D_Linear_NBytes(SignalBase &dst, SignalBase const &src, unsigned int byteOffset,
                                             unsigned int numBytes);
/// Linear, so many floats of each sample; the offset counts floats. Asserts as Resample1D, "Num-components-per-sample
/// out of range." and "Component-offset out of range.".
QUILLMARSH_API void Resample1D_Linear_NFloats(SignalBase &dst, SignalBase const &src, unsigned int componentOffset,
                                              unsigned int numComponents);
/// Linear, each field of "A4R4G4B4". Asserts "Destination is empty.", "Source is empty.", "Invalid sample-format size."
/// and "Sample-format mismatch.".
QUILLMARSH_API void Resample1D_Linear_PackedSample_UShort4444(SignalBase &dst, SignalBase const &src);
/// Linear, each field of "A1R5G5B5". Asserts as for "A4R4G4B4".
QUILLMARSH_API void Resample1D_Linear_PackedSample_UShort1555(SignalBase &dst, SignalBase const &src);
/// @}

} // namespace quillmarsh

#endif
