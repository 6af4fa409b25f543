#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/dataobjects/volumeoperations.h>

#include "source/dataobjects/operations/resampling.h"

namespace quillmarsh
{
namespace
{

template<typename Byte, typename Signal>
SampleBlock<Byte> BlockOf(Signal &signal)
{
    if constexpr (std::is_base_of_v<VolumeBase, Signal>)
        return {signal.GetSamplesB(), signal.GetNumLayers(), signal.GetNumRows(), signal.GetNumColumns()};
    else if constexpr (std::is_base_of_v<ImageBase, Signal>)
        return {signal.GetSamplesB(), 1, signal.GetNumRows(), signal.GetNumColumns()};
    else
        return {signal.GetSamplesB(), 1, 1, signal.GetNumSamples()};
}

template<typename Signal>
constexpr unsigned int s_numDimensions = std::is_base_of_v<VolumeBase, Signal>  ? 3
                                         : std::is_base_of_v<ImageBase, Signal> ? 2
                                                                                : 1;

/// True when both sides have samples of the same size. After ignored assertions, nothing is written otherwise.
bool CanResample(SignalBase const &dst, SignalBase const &src)
{
    return dst.GetNumSamples() != 0 && src.GetNumSamples() != 0 && dst.CheckSampleByteSizeMatch(src);
}

/// The public functions, by the part of their names after the dimension. Each has its own assertions, so that ignoring
/// one for ever does not silence those of the other functions.
enum class eFunction
{
    e_byFormat,
    e_nearest,
    e_linearNBytes,
    e_linearNFloats,
    e_linear4444,
    e_linear1555
};

template<typename Signal, eFunction function>
void CheckSamples([[maybe_unused]] Signal const &dst, [[maybe_unused]] Signal const &src)
{
    QUILLMARSH_ASSERT(dst.GetNumSamples() != 0, "Destination is empty.");
    QUILLMARSH_ASSERT(src.GetNumSamples() != 0, "Source is empty.");
}

template<typename Signal, eFunction function>
void CheckFormats([[maybe_unused]] Signal const &dst, [[maybe_unused]] Signal const &src)
{
    QUILLMARSH_ASSERT(dst.CheckSampleFormatMatch(src), "Sample-format mismatch.");
}

template<typename Signal>
void Nearest(Signal &dst, Signal const &src)
{
    CheckSamples<Signal, eFunction::e_nearest>(dst, src);
    CheckFormats<Signal, eFunction::e_nearest>(dst, src);
    if (CanResample(dst, src))
        ResampleNearest(BlockOf<unsigned char>(dst), BlockOf<unsigned char const>(src), dst.GetSampleByteSize());
}

template<typename Signal>
void Linear(Signal &dst, Signal const &src, eSampleElement element, unsigned int offset, unsigned int numElements)
{
    if (CanResample(dst, src) && numElements != 0)
    {
        ResampleLinear(BlockOf<unsigned char>(dst), BlockOf<unsigned char const>(src),
                       {dst.GetSampleByteSize(), element, offset, numElements}, s_numDimensions<Signal>);
    }
}

template<typename Signal>
void LinearNBytes(Signal &dst, Signal const &src, unsigned int byteOffset, unsigned int numBytes)
{
    unsigned int const size = dst.GetSampleByteSize();
    bool const isSizeInRange = numBytes <= size;
    bool const isOffsetInRange = !isSizeInRange || byteOffset <= size - numBytes;
    CheckSamples<Signal, eFunction::e_linearNBytes>(dst, src);
    CheckFormats<Signal, eFunction::e_linearNBytes>(dst, src);
    QUILLMARSH_ASSERT(isSizeInRange, "Num-bytes-per-sample out of range.");
    QUILLMARSH_ASSERT(isOffsetInRange, "Byte-offset out of range.");
    if (isSizeInRange && isOffsetInRange)
        Linear(dst, src, eSampleElement::e_byte, byteOffset, numBytes);
}

template<typename Signal>
void LinearNFloats(Signal &dst, Signal const &src, unsigned int componentOffset, unsigned int numComponents)
{
    auto const componentSize = static_cast<unsigned int>(sizeof(float));
    unsigned int const size = dst.GetSampleByteSize() / componentSize;
    bool const isSizeInRange = numComponents <= size;
    bool const isOffsetInRange = !isSizeInRange || componentOffset <= size - numComponents;
    CheckSamples<Signal, eFunction::e_linearNFloats>(dst, src);
    CheckFormats<Signal, eFunction::e_linearNFloats>(dst, src);
    QUILLMARSH_ASSERT(isSizeInRange, "Num-components-per-sample out of range.");
    QUILLMARSH_ASSERT(isOffsetInRange, "Component-offset out of range.");
    if (isSizeInRange && isOffsetInRange)
        Linear(dst, src, eSampleElement::e_float, componentOffset * componentSize, numComponents);
}

template<typename Signal, eFunction function>
void LinearPacked(Signal &dst, Signal const &src)
{
    bool const hasWords = dst.GetSampleByteSize() == sizeof(unsigned short);
    CheckSamples<Signal, function>(dst, src);
    QUILLMARSH_ASSERT(hasWords, "Invalid sample-format size.");
    CheckFormats<Signal, function>(dst, src);
    constexpr bool is4444 = function == eFunction::e_linear4444;
    if (hasWords)
        Linear(dst, src, is4444 ? eSampleElement::e_word4444 : eSampleElement::e_word1555, 0, 1);
}

/// Resamples by the linear filter for the format; false for an unknown format.
template<typename Signal>
bool LinearByFormat(Signal &dst, Signal const &src)
{
    unsigned int const size = dst.GetSampleByteSize();
    switch (dst.GetSampleFormat())
    {
    case e_format_L8:
    case e_format_A8:
    case e_format_A8L8:
    case e_format_A8R8G8B8:
        LinearNBytes(dst, src, 0, size);
        return true;
    case e_format_X8R8G8B8:
        LinearNBytes(dst, src, 0, 3);
        return true;
    case e_format_A4R4G4B4:
        LinearPacked<Signal, eFunction::e_linear4444>(dst, src);
        return true;
    case e_format_A1R5G5B5:
        LinearPacked<Signal, eFunction::e_linear1555>(dst, src);
        return true;
    case e_format_FP32NormL:
    case e_format_FP32NormA:
        LinearNFloats(dst, src, 0, size / static_cast<unsigned int>(sizeof(float)));
        return true;
    default:
        return false;
    }
}

template<typename Signal>
bool Resample(Signal &dst, Signal const &src, eResampleFilter filter)
{
    CheckSamples<Signal, eFunction::e_byFormat>(dst, src);
    CheckFormats<Signal, eFunction::e_byFormat>(dst, src);
    switch (filter)
    {
    case e_resample_nearest:
        Nearest(dst, src);
        return true;
    case e_resample_linear:
        return LinearByFormat(dst, src);
    default:
        return false;
    }
}

} // namespace

bool Resample1D(SignalBase &dst, SignalBase const &src, eResampleFilter filter)
{
    return Resample(dst, src, filter);
}

void Resample1D_Nearest(SignalBase &dst, SignalBase const &src)
{
    Nearest(dst, src);
}

void Resample1D_Linear_NBytes(SignalBase &dst, SignalBase const &src, unsigned int byteOffset, unsigned int numBytes)
{
    LinearNBytes(dst, src, byteOffset, numBytes);
}

void Resample1D_Linear_NFloats(SignalBase &dst, SignalBase const &src, unsigned int componentOffset,
                               unsigned int numComponents)
{
    LinearNFloats(dst, src, componentOffset, numComponents);
}

void Resample1D_Linear_PackedSample_UShort4444(SignalBase &dst, SignalBase const &src)
{
    LinearPacked<SignalBase, eFunction::e_linear4444>(dst, src);
}

void Resample1D_Linear_PackedSample_UShort1555(SignalBase &dst, SignalBase const &src)
{
    LinearPacked<SignalBase, eFunction::e_linear1555>(dst, src);
}

bool Resample2D(ImageBase &dst, ImageBase const &src, eResampleFilter filter)
{
    return Resample(dst, src, filter);
}

void Resample2D_Nearest(ImageBase &dst, ImageBase const &src)
{
    Nearest(dst, src);
}

void Resample2D_Linear_NBytes(ImageBase &dst, ImageBase const &src, unsigned int byteOffset, unsigned int numBytes)
{
    LinearNBytes(dst, src, byteOffset, numBytes);
}

void Resample2D_Linear_NFloats(ImageBase &dst, ImageBase const &src, unsigned int componentOffset,
                               unsigned int numComponents)
{
    LinearNFloats(dst, src, componentOffset, numComponents);
}

void Resample2D_Linear_PackedSample_UShort4444(ImageBase &dst, ImageBase const &src)
{
    LinearPacked<ImageBase, eFunction::e_linear4444>(dst, src);
}

void Resample2D_Linear_PackedSample_UShort1555(ImageBase &dst, ImageBase const &src)
{
    LinearPacked<ImageBase, eFunction::e_linear1555>(dst, src);
}

bool Resample3D(VolumeBase &dst, VolumeBase const &src, eResampleFilter filter)
{
    return Resample(dst, src, filter);
}

void Resample3D_Nearest(VolumeBase &dst, VolumeBase const &src)
{
    Nearest(dst, src);
}

void Resample3D_Linear_NBytes(VolumeBase &dst, VolumeBase const &src, unsigned int byteOffset, unsigned int numBytes)
{
    LinearNBytes(dst, src, byteOffset, numBytes);
}

void Resample3D_Linear_NFloats(VolumeBase &dst, VolumeBase const &src, unsigned int componentOffset,
                               unsigned int numComponents)
{
    LinearNFloats(dst, src, componentOffset, numComponents);
}

void Resample3D_Linear_PackedSample_UShort4444(VolumeBase &dst, VolumeBase const &src)
{
    LinearPacked<VolumeBase, eFunction::e_linear4444>(dst, src);
}

void Resample3D_Linear_PackedSample_UShort1555(VolumeBase &dst, VolumeBase const &src)
{
    LinearPacked<VolumeBase, eFunction::e_linear1555>(dst, src);
}

} // namespace quillmarsh
