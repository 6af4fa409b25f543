#include <quillmarsh/videorendererobjects/vro_textures.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/dataobjects/sampletransfer.h>
#include <quillmarsh/dataobjects/signaloperations.h>
#include <quillmarsh/mathtools/powersof2.h>

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace quillmarsh::video_renderer_objects
{
namespace
{

/// Sizes or offsets along the axes z, y and x, of which a texture of fewer dimensions uses the last ones.
template<std::size_t numAxes>
using Extents = std::array<unsigned int, numAxes>;

/// A block of samples, and its places in the level and in the source.
template<std::size_t numAxes>
struct Block
{
    Extents<numAxes> size;
    Extents<numAxes> destOffset;
    Extents<numAxes> sourceOffset;
};

/// What is wrong with a block along one axis: outside the level, or outside the source.
constexpr char const *s_rangeTexts[][2] = {
    {"Destination-offset-z / data-depth out of range.", "Source-offset-z / data-depth out of range."},
    {"Destination-offset-y / data-height out of range.", "Source-offset-y / data-height out of range."},
    {"Destination-offset-x / data-width out of range.", "Source-offset-x / data-width out of range."},
};

/// @name Differences between textures of one, two and three dimensions
/// @{
Extents<1> GetExtents(SignalBase const &source)
{
    return {source.GetNumSamples()};
}

Extents<2> GetExtents(ImageBase const &source)
{
    return {source.GetNumRows(), source.GetNumColumns()};
}

Extents<3> GetExtents(VolumeBase const &source)
{
    return {source.GetNumLayers(), source.GetNumRows(), source.GetNumColumns()};
}

Extents<1> GetExtents(Texture1D const &texture, unsigned int level)
{
    return {texture.GetWidth(level)};
}

Extents<2> GetExtents(Texture2D const &texture, unsigned int level)
{
    return {texture.GetHeight(level), texture.GetWidth(level)};
}

Extents<3> GetExtents(Texture3D const &texture, unsigned int level)
{
    return {texture.GetDepth(level), texture.GetHeight(level), texture.GetWidth(level)};
}

SignalBase *MakeLevel0(Texture1D const &texture)
{
    return ManufactureSignal(texture.GetSampleFormat(), texture.GetWidth());
}

ImageBase *MakeLevel0(Texture2D const &texture)
{
    return ManufactureImage(texture.GetSampleFormat(), texture.GetHeight(), texture.GetWidth());
}

VolumeBase *MakeLevel0(Texture3D const &texture)
{
    return ManufactureVolume(texture.GetSampleFormat(), texture.GetDepth(), texture.GetHeight(), texture.GetWidth());
}

bool Transfer(SignalBase &dst, SignalBase const &src)
{
    return TransferSamples1D(dst, src, false);
}

bool Transfer(ImageBase &dst, ImageBase const &src)
{
    return TransferSamples2D(dst, src, false);
}

bool Transfer(VolumeBase &dst, VolumeBase const &src)
{
    return TransferSamples3D(dst, src, false);
}
/// @}

// The checks are templates, so that each text of each class is a place of its own: a user who ignores one of them still
// sees the others.

/// Checks that a block lies within an extent along one axis.
template<typename Texture, std::size_t axis, bool inSource>
bool CheckRange(unsigned int offset, unsigned int size, unsigned int extent)
{
    bool const fits = size <= extent && offset <= extent - size;
    QUILLMARSH_ASSERT(fits, s_rangeTexts[axis][inSource]);
    return fits;
}

template<typename Texture, bool inSource, std::size_t numAxes>
bool CheckRanges(Extents<numAxes> const &offset, Extents<numAxes> const &size, Extents<numAxes> const &extents)
{
    constexpr std::size_t firstAxis = std::size(s_rangeTexts) - numAxes;
    return [&]<std::size_t... i>(std::index_sequence<i...>)
    {
        return (CheckRange<Texture, firstAxis + i, inSource>(offset[i], size[i], extents[i]) && ...);
    }
    (std::make_index_sequence<numAxes>());
}

template<std::size_t numAxes>
bool IsEmpty(Extents<numAxes> const &size)
{
    return std::find(size.begin(), size.end(), 0u) != size.end();
}

/// Replaces sizes of 0 by those of the source, and checks what DoLoadLevel() relies on.
template<typename Texture, typename Container, std::size_t numAxes>
bool CompleteAndCheck(Block<numAxes> &block, Texture const &texture, unsigned int level, Container const &source)
{
    Extents<numAxes> const sourceExtents = GetExtents(source);
    for (std::size_t i = 0; i < numAxes; ++i)
        block.size[i] = block.size[i] != 0 ? block.size[i] : sourceExtents[i];

    bool const hasLevel = level < texture.GetNumLevels();
    bool const sharesFormat = source.GetSampleFormat() == texture.GetSampleFormat();
    QUILLMARSH_ASSERT(hasLevel, "Level-index out of range.");
    if (!hasLevel)
        return false;
    QUILLMARSH_ASSERT(sharesFormat, "Sample-format mismatch.");
    if (!sharesFormat)
        return false;
    QUILLMARSH_ASSERT(source.GetNumSamples() != 0, "Source empty.");
    if (source.GetNumSamples() == 0)
        return false;
    QUILLMARSH_ASSERT(!IsEmpty(block.size), "Data-range empty.");
    if (IsEmpty(block.size))
        return false;
    return CheckRanges<Texture, false>(block.destOffset, block.size, GetExtents(texture, level)) &&
           CheckRanges<Texture, true>(block.sourceOffset, block.size, sourceExtents);
}

template<typename Texture, typename Container>
bool CheckLevel0(Texture const &texture, Container const &source)
{
    bool const matches = GetExtents(source) == GetExtents(texture, 0);
    QUILLMARSH_ASSERT(matches, "Level-0 dimension mismatch.");
    return matches;
}

/// Loads each level of a chain by `loadLevel`, whose arguments are level and source.
template<typename Texture, typename Chain, typename LoadLevel>
bool LoadChain(Texture const &texture, Chain const &chain, LoadLevel const &loadLevel)
{
    bool const sharesFormat = chain.GetSampleFormat() == texture.GetSampleFormat();
    bool const sharesLevels = chain.GetNumLevels() == texture.GetNumLevels();
    QUILLMARSH_ASSERT(sharesFormat, "Sample-format mismatch.");
    if (!sharesFormat)
        return false;
    QUILLMARSH_ASSERT(sharesLevels, "Level-count mismatch.");
    if (!sharesLevels || !CheckLevel0(texture, chain.GetLevel(0)))
        return false;
    for (unsigned int level = 0; level < texture.GetNumLevels(); ++level)
    {
        if (!loadLevel(level, chain.GetLevel(level)))
            return false;
    }
    return true;
}

/// Loads a source of any format into all levels.
template<typename Chain, typename Texture, typename Container>
bool LoadSource(Texture &texture, Container const &source)
{
    if (!CheckLevel0(texture, source))
        return false;
    if (texture.GetNumLevels() > 1)
    {
        Chain chain(texture.GetSampleFormat());
        return chain.Build(source, false) && texture.LoadLevels(chain);
    }
    if (source.GetSampleFormat() == texture.GetSampleFormat())
        return texture.LoadLevel(0, source);
    AutoPtr<Container> const converted(MakeLevel0(texture));
    if (!converted)
        return false;
    // As in a chain, bytes that the transfer does not write are 0.
    ProcessSamples_Clear(*converted);
    return Transfer(*converted, source) && texture.LoadLevel(0, *converted);
}

/// Loads one value into all bytes of all levels.
template<typename Container, typename Texture>
bool LoadValue(Texture &texture, unsigned char value)
{
    AutoPtr<Container> const filled(MakeLevel0(texture));
    if (!filled)
        return false;
    ProcessSamples_FillNBytes(*filled, value);
    return texture.LoadLevels(*filled);
}

} // namespace

Resource::~Resource() = default;

void Resource::SetPriority(unsigned int priority)
{
    if (priority == priority_)
        return;
    priority_ = priority;
    OnPriorityChanged();
}

TextureBase::TextureBase(eResourceType type, eSampleFormat sampleFormat, bool mipmapped, unsigned int largestDimension)
    : Resource(type),
      sampleFormat_(sampleFormat),
      numLevels_(mipmapped ? static_cast<unsigned int>(std::bit_width(std::max(largestDimension, 1u))) : 1)
{
}

TextureBase::~TextureBase() = default;

bool TextureBase::SetBaseLevel(unsigned int level)
{
    if (level == baseLevel_)
        return true;
    baseLevel_ = std::min(level, numLevels_);
    return OnBaseLevelChanged();
}

bool TextureBase::CheckDimension(unsigned int dimension, bool powerOf2)
{
    return powerOf2 ? IsPowerOf2(dimension) : dimension != 0;
}

unsigned int TextureBase::ComputeDimensionAtLevel(unsigned int level, unsigned int dimension)
{
    return MipmapChain::ComputeDimensionAtLevel(level, dimension);
}

Texture1D::Texture1D(eSampleFormat sampleFormat, bool mipmapped, unsigned int width)
    : TextureBase(e_resource_texture1D, sampleFormat, mipmapped, width),
      width_(width)
{
}

Texture1D::~Texture1D() = default;

unsigned int Texture1D::GetWidth(unsigned int level) const
{
    return ComputeDimensionAtLevel(level, width_);
}

bool Texture1D::LoadLevel(unsigned int level, SignalBase const &source, unsigned int dataWidth,
                          unsigned int destOffsetX, unsigned int sourceOffsetX)
{
    Block<1> block{{dataWidth}, {destOffsetX}, {sourceOffsetX}};
    return CompleteAndCheck(block, *this, level, source) &&
           DoLoadLevel(level, source, block.size[0], destOffsetX, sourceOffsetX);
}

bool Texture1D::LoadLevels(SignalMipmapChain const &chain)
{
    return LoadChain(*this, chain,
                     [this](unsigned int level, SignalBase const &source)
                     { return DoLoadLevel(level, source, source.GetNumSamples(), 0, 0); });
}

bool Texture1D::LoadLevels(SignalBase const &signal)
{
    return LoadSource<SignalMipmapChain>(*this, signal);
}

bool Texture1D::LoadLevels(unsigned char value)
{
    return LoadValue<SignalBase>(*this, value);
}

bool Texture2D::s_bSourceRowOrderBottomToTop = false;

Texture2D::Texture2D(eSampleFormat sampleFormat, bool mipmapped, unsigned int width, unsigned int height)
    : TextureBase(e_resource_texture2D, sampleFormat, mipmapped, std::max(width, height)),
      width_(width),
      height_(height)
{
}

Texture2D::~Texture2D() = default;

unsigned int Texture2D::GetWidth(unsigned int level) const
{
    return ComputeDimensionAtLevel(level, width_);
}

unsigned int Texture2D::GetHeight(unsigned int level) const
{
    return ComputeDimensionAtLevel(level, height_);
}

bool Texture2D::LoadLevel(unsigned int level, ImageBase const &source, unsigned int dataHeight, unsigned int dataWidth,
                          unsigned int destOffsetY, unsigned int destOffsetX, unsigned int sourceOffsetY,
                          unsigned int sourceOffsetX)
{
    Block<2> block{{dataHeight, dataWidth}, {destOffsetY, destOffsetX}, {sourceOffsetY, sourceOffsetX}};
    return CompleteAndCheck(block, *this, level, source) &&
           DoLoadLevel(level, source, block.size[0], block.size[1], destOffsetY, destOffsetX, sourceOffsetY,
                       sourceOffsetX, s_bSourceRowOrderBottomToTop);
}

bool Texture2D::LoadLevels(ImageMipmapChain const &chain)
{
    return LoadChain(*this, chain,
                     [this](unsigned int level, ImageBase const &source)
                     {
                         return DoLoadLevel(level, source, source.GetNumRows(), source.GetNumColumns(), 0, 0, 0, 0,
                                            s_bSourceRowOrderBottomToTop);
                     });
}

bool Texture2D::LoadLevels(ImageBase const &image)
{
    return LoadSource<ImageMipmapChain>(*this, image);
}

bool Texture2D::LoadLevels(unsigned char value)
{
    return LoadValue<ImageBase>(*this, value);
}

bool Texture3D::s_bSourceRowOrderBottomToTop = false;
bool Texture3D::s_bSourceLayerOrderBackToFront = false;

Texture3D::Texture3D(eSampleFormat sampleFormat, bool mipmapped, unsigned int width, unsigned int height,
                     unsigned int depth)
    : TextureBase(e_resource_texture3D, sampleFormat, mipmapped, std::max({width, height, depth})),
      width_(width),
      height_(height),
      depth_(depth)
{
}

Texture3D::~Texture3D() = default;

unsigned int Texture3D::GetWidth(unsigned int level) const
{
    return ComputeDimensionAtLevel(level, width_);
}

unsigned int Texture3D::GetHeight(unsigned int level) const
{
    return ComputeDimensionAtLevel(level, height_);
}

unsigned int Texture3D::GetDepth(unsigned int level) const
{
    return ComputeDimensionAtLevel(level, depth_);
}

bool Texture3D::LoadLevel(unsigned int level, VolumeBase const &source, unsigned int dataDepth, unsigned int dataHeight,
                          unsigned int dataWidth, unsigned int destOffsetZ, unsigned int destOffsetY,
                          unsigned int destOffsetX, unsigned int sourceOffsetZ, unsigned int sourceOffsetY,
                          unsigned int sourceOffsetX)
{
    Block<3> block{{dataDepth, dataHeight, dataWidth},
                   {destOffsetZ, destOffsetY, destOffsetX},
                   {sourceOffsetZ, sourceOffsetY, sourceOffsetX}};
    return CompleteAndCheck(block, *this, level, source) &&
           DoLoadLevel(level, source, block.size[0], block.size[1], block.size[2], destOffsetZ, destOffsetY,
                       destOffsetX, sourceOffsetZ, sourceOffsetY, sourceOffsetX, s_bSourceRowOrderBottomToTop,
                       s_bSourceLayerOrderBackToFront);
}

bool Texture3D::LoadLevels(VolumeMipmapChain const &chain)
{
    return LoadChain(*this, chain,
                     [this](unsigned int level, VolumeBase const &source)
                     {
                         return DoLoadLevel(level, source, source.GetNumLayers(), source.GetNumRows(),
                                            source.GetNumColumns(), 0, 0, 0, 0, 0, 0, s_bSourceRowOrderBottomToTop,
                                            s_bSourceLayerOrderBackToFront);
                     });
}

bool Texture3D::LoadLevels(VolumeBase const &volume)
{
    return LoadSource<VolumeMipmapChain>(*this, volume);
}

bool Texture3D::LoadLevels(unsigned char value)
{
    return LoadValue<VolumeBase>(*this, value);
}

} // namespace quillmarsh::video_renderer_objects
