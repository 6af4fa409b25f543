#include <quillmarsh/dataobjects/scaling.h>

#include <quillmarsh/basetools/diagnostics.h>

#include "source/dataobjects/scaling/scalingblocks.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

namespace quillmarsh
{
namespace
{

template<typename Byte, typename Container>
SampleBlock<Byte> BlockOf(Container &container)
{
    if constexpr (std::is_base_of_v<VolumeBase, Container>)
        return {container.GetSamplesB(), container.GetNumLayers(), container.GetNumRows(), container.GetNumColumns()};
    else if constexpr (std::is_base_of_v<ImageBase, Container>)
        return {container.GetSamplesB(), 1, container.GetNumRows(), container.GetNumColumns()};
    else
        return {container.GetSamplesB(), 1, 1, container.GetNumSamples()};
}

template<typename Byte>
std::size_t CountSamples(SampleBlock<Byte> const &block)
{
    return std::size_t{block.numLayers} * block.numRows * block.numColumns;
}

void ScaleBytes(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                unsigned int sampleSize, eScaleFilter filter)
{
    bool const isWhole =
        src.numLayers % dst.numLayers == 0 && src.numRows % dst.numRows == 0 && src.numColumns % dst.numColumns == 0;
    if (filter == e_scale_area && isWhole)
        ScaleByWholeFactors(dst, src, sampleSize);
    else
        ScaleByWeights(dst, src, sampleSize, false, filter);
}

/// Scales 16-bit words of four fields, each as a byte of its own.
template<typename Packed>
void ScaleFields(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                 eScaleFilter filter)
{
    constexpr unsigned int numFields = 4;
    std::vector<unsigned char> fields(CountSamples(src) * numFields);
    for (std::size_t i = 0; i < CountSamples(src); ++i)
    {
        Packed packed = {};
        std::memcpy(&packed, src.samples + i * sizeof(Packed), sizeof(Packed));
        fields[i * numFields] = static_cast<unsigned char>(packed.GetA());
        fields[i * numFields + 1] = static_cast<unsigned char>(packed.GetB());
        fields[i * numFields + 2] = static_cast<unsigned char>(packed.GetC());
        fields[i * numFields + 3] = static_cast<unsigned char>(packed.GetD());
    }
    std::vector<unsigned char> scaled(CountSamples(dst) * numFields);
    ScaleBytes({scaled.data(), dst.numLayers, dst.numRows, dst.numColumns},
               {fields.data(), src.numLayers, src.numRows, src.numColumns}, numFields, filter);
    for (std::size_t i = 0; i < CountSamples(dst); ++i)
    {
        unsigned char const *const values = scaled.data() + i * numFields;
        Packed packed = {};
        // A filter with negative weights can exceed a field.
        packed.SetA(std::min<unsigned int>(values[0], Packed::s_maskA));
        packed.SetB(std::min<unsigned int>(values[1], Packed::s_maskB));
        packed.SetC(std::min<unsigned int>(values[2], Packed::s_maskC));
        packed.SetD(std::min<unsigned int>(values[3], Packed::s_maskD));
        std::memcpy(dst.samples + i * sizeof(Packed), &packed, sizeof(Packed));
    }
}

/// Scales floats. Those of external memory may lie at any address, but vectors and loops need them aligned.
void ScaleFloats(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                 eScaleFilter filter)
{
    auto const isAligned = [](unsigned char const *at)
    { return reinterpret_cast<std::uintptr_t>(at) % alignof(float) == 0; };
    if (isAligned(dst.samples) && isAligned(src.samples))
        return ScaleByWeights(dst, src, 1, true, filter);
    std::vector<float> from(CountSamples(src)), to(CountSamples(dst));
    std::memcpy(from.data(), src.samples, from.size() * sizeof(float));
    ScaleByWeights({reinterpret_cast<unsigned char *>(to.data()), dst.numLayers, dst.numRows, dst.numColumns},
                   {reinterpret_cast<unsigned char const *>(from.data()), src.numLayers, src.numRows, src.numColumns},
                   1, true, filter);
    std::memcpy(dst.samples, to.data(), to.size() * sizeof(float));
}

bool ScaleByFormat(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                   unsigned int format, eScaleFilter filter)
{
    switch (format)
    {
    case e_format_L8:
    case e_format_A8:
    case e_format_A8L8:
    case e_format_A8R8G8B8:
    case e_format_X8R8G8B8:
        ScaleBytes(dst, src, sample_formats::ExtractByteSize(format), filter);
        break;
    case e_format_A4R4G4B4:
        ScaleFields<sample_formats::PackedSample_UShort4444>(dst, src, filter);
        break;
    case e_format_A1R5G5B5:
        ScaleFields<sample_formats::PackedSample_UShort1555>(dst, src, filter);
        break;
    case e_format_FP32NormL:
    case e_format_FP32NormA:
        ScaleFloats(dst, src, filter);
        break;
    default:
        return false;
    }
    for (std::size_t i = 0; format == e_format_X8R8G8B8 && i < CountSamples(dst); ++i)
        dst.samples[i * 4 + 3] = 255;
    return true;
}

template<typename Container>
bool Scale(Container &dst, Container const &src, eScaleFilter filter)
{
    QUILLMARSH_ASSERT(dst.GetNumSamples() != 0, "Destination is empty.");
    QUILLMARSH_ASSERT(src.GetNumSamples() != 0, "Source is empty.");
    QUILLMARSH_ASSERT(dst.CheckSampleFormatMatch(src), "Sample-format mismatch.");
    bool const canScale = dst.GetNumSamples() != 0 && src.GetNumSamples() != 0 && dst.CheckSampleFormatMatch(src);
    return canScale &&
           ScaleByFormat(BlockOf<unsigned char>(dst), BlockOf<unsigned char const>(src), dst.GetSampleFormat(), filter);
}

} // namespace

bool ScaleSamples(SignalBase &dst, SignalBase const &src, eScaleFilter filter)
{
    return Scale(dst, src, filter);
}

bool ScaleSamples(ImageBase &dst, ImageBase const &src, eScaleFilter filter)
{
    return Scale(dst, src, filter);
}

bool ScaleSamples(VolumeBase &dst, VolumeBase const &src, eScaleFilter filter)
{
    return Scale(dst, src, filter);
}

} // namespace quillmarsh
