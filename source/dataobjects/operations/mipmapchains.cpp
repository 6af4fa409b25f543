#include <quillmarsh/dataobjects/mipmapchains.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/dataobjects/volumeoperations.h>
#include <quillmarsh/mathtools/powersof2.h>

#include <algorithm>
#include <bit>
#include <utility>

namespace quillmarsh
{
namespace
{

/// @name Differences between the kinds of containers
/// @{
unsigned int GetMaxDimension(SignalBase const &source)
{
    return source.GetNumSamples();
}

unsigned int GetMaxDimension(ImageBase const &source)
{
    return std::max(source.GetNumRows(), source.GetNumColumns());
}

unsigned int GetMaxDimension(VolumeBase const &source)
{
    return std::max({source.GetNumLayers(), source.GetNumRows(), source.GetNumColumns()});
}

void CheckDimensions([[maybe_unused]] SignalBase const &source)
{
    QUILLMARSH_ASSERT(IsPowerOf2(source.GetNumSamples()), "Dimension is not power-of-2.");
}

void CheckDimensions([[maybe_unused]] ImageBase const &source)
{
    QUILLMARSH_ASSERT(IsPowerOf2(source.GetNumRows()), "Dimension is not power-of-2.");
    QUILLMARSH_ASSERT(IsPowerOf2(source.GetNumColumns()), "Dimension is not power-of-2.");
}

void CheckDimensions([[maybe_unused]] VolumeBase const &source)
{
    QUILLMARSH_ASSERT(IsPowerOf2(source.GetNumLayers()), "Dimension is not power-of-2.");
    QUILLMARSH_ASSERT(IsPowerOf2(source.GetNumRows()), "Dimension is not power-of-2.");
    QUILLMARSH_ASSERT(IsPowerOf2(source.GetNumColumns()), "Dimension is not power-of-2.");
}

SignalBase *MakeLevel(eSampleFormat format, SignalBase const &source, unsigned int level)
{
    return ManufactureSignal(format, MipmapChain::ComputeDimensionAtLevel(level, source.GetNumSamples()));
}

ImageBase *MakeLevel(eSampleFormat format, ImageBase const &source, unsigned int level)
{
    return ManufactureImage(format, MipmapChain::ComputeDimensionAtLevel(level, source.GetNumRows()),
                            MipmapChain::ComputeDimensionAtLevel(level, source.GetNumColumns()));
}

VolumeBase *MakeLevel(eSampleFormat format, VolumeBase const &source, unsigned int level)
{
    return ManufactureVolume(format, MipmapChain::ComputeDimensionAtLevel(level, source.GetNumLayers()),
                             MipmapChain::ComputeDimensionAtLevel(level, source.GetNumRows()),
                             MipmapChain::ComputeDimensionAtLevel(level, source.GetNumColumns()));
}

void CopyAll(SignalBase &dst, SignalBase const &src)
{
    CopySamples1D(dst, src, 0, 0, 0);
}

void CopyAll(ImageBase &dst, ImageBase const &src)
{
    CopySamples2D(dst, src, 0, 0, 0, 0, 0, 0, false);
}

void CopyAll(VolumeBase &dst, VolumeBase const &src)
{
    CopySamples3D(dst, src, 0, 0, 0, 0, 0, 0, 0, 0, 0, false, false);
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

bool Halve(SignalBase &dst, SignalBase const &src)
{
    return Resample1D(dst, src, e_resample_linear);
}

bool Halve(ImageBase &dst, ImageBase const &src)
{
    return Resample2D(dst, src, e_resample_linear);
}

bool Halve(VolumeBase &dst, VolumeBase const &src)
{
    return Resample3D(dst, src, e_resample_linear);
}

/// Returns an empty container for a level that does not exist.
SignalBase const &NoLevel(SignalBase const *)
{
    static SignalBaseFromExternalStorageAdapter const s_none(e_format_L8);
    return s_none;
}

ImageBase const &NoLevel(ImageBase const *)
{
    static ImageBaseFromExternalStorageAdapter const s_none(e_format_L8);
    return s_none;
}

VolumeBase const &NoLevel(VolumeBase const *)
{
    static VolumeBaseFromExternalStorageAdapter const s_none(e_format_L8);
    return s_none;
}
/// @}

/// Creates a container for one level of a source, with bytes of 0. Null for a format that no container supports.
template<typename Container>
AutoPtr<Container> MakeClearLevel(eSampleFormat format, Container const &source, unsigned int level)
{
    AutoPtr<Container> made(MakeLevel(format, source, level));
    bool const hasUnwrittenBytes = format == e_format_X8R8G8B8 || format != source.GetSampleFormat();
    if (made && hasUnwrittenBytes)
        ProcessSamples_Clear(*made);
    return made;
}

/// Clears a chain at the end of the scope if it is not complete.
template<typename Chain>
class UnfinishedChainSentry : NoCopy
{
public:
    explicit UnfinishedChainSentry(Chain &chain) : chain_(&chain) {}
    ~UnfinishedChainSentry()
    {
        if (chain_)
            chain_->Clear();
    }
    void Dismiss() { chain_ = nullptr; }

private:
    Chain *chain_;
};

} // namespace

unsigned int MipmapChain::ComputeDimensionAtLevel(unsigned int level, unsigned int dimensionAtLevel0)
{
    return level < 32 ? std::max(dimensionAtLevel0 >> level, 1u) : 1u;
}

void MipmapChain::SetMaxDimension(unsigned int maxDimension)
{
    // Computed in whole numbers, because a quotient of logarithms can lose the last level by rounding.
    numLevels_ = static_cast<unsigned int>(std::bit_width(maxDimension));
}

template<typename Container>
TypedMipmapChain<Container>::TypedMipmapChain(eSampleFormat sampleFormat) : MipmapChain(sampleFormat)
{
}

template<typename Container>
TypedMipmapChain<Container>::~TypedMipmapChain()
{
    Clear();
}

template<typename Container>
bool TypedMipmapChain<Container>::Build(Container const &source, bool copySource)
{
    Clear();
    UnfinishedChainSentry<TypedMipmapChain> sentry(*this);
    CheckDimensions(source);
    SetMaxDimension(GetMaxDimension(source));
    levels_.reserve(std::max(GetNumLevels(), 1u));
    if (!BuildLevel0(source, copySource) || !BuildSmallerLevels(source))
        return false;
    sentry.Dismiss();
    return true;
}

template<typename Container>
bool TypedMipmapChain<Container>::BuildLevel0(Container const &source, bool copySource)
{
    bool const sharesFormat = GetSampleFormat() == source.GetSampleFormat();
    if (sharesFormat && !copySource)
    {
        levels_.push_back({&source, false});
        return true;
    }
    AutoPtr<Container> level = MakeClearLevel(GetSampleFormat(), source, 0);
    if (!level)
        return false;
    if (sharesFormat)
        CopyAll(*level, source);
    else if (!Transfer(*level, source))
        return false;
    Own(std::move(level));
    return true;
}

template<typename Container>
bool TypedMipmapChain<Container>::BuildSmallerLevels(Container const &source)
{
    bool const sharesFormat = GetSampleFormat() == source.GetSampleFormat();
    // The previous level in the format of the source, if the chain has another format.
    AutoPtr<Container> kept;
    Container const *previous = &source;
    for (unsigned int i = 1; i < GetNumLevels(); ++i)
    {
        AutoPtr<Container> work = MakeClearLevel(source.GetSampleFormat(), source, i);
        if (!work || !Halve(*work, *previous))
            return false;
        previous = work.get();
        if (sharesFormat)
        {
            Own(std::move(work));
            continue;
        }
        AutoPtr<Container> level = MakeClearLevel(GetSampleFormat(), source, i);
        Transfer(*level, *work);
        Own(std::move(level));
        kept = std::move(work);
    }
    return true;
}

template<typename Container>
void TypedMipmapChain<Container>::Own(AutoPtr<Container> container)
{
    levels_.push_back({container.get(), true});
    static_cast<void>(container.release());
}

template<typename Container>
Container const &TypedMipmapChain<Container>::GetLevel(unsigned int level) const
{
    bool const isThere = level < levels_.size();
    QUILLMARSH_ASSERT(isThere, "Level-index out of range.");
    return isThere ? *levels_[level].container : NoLevel(static_cast<Container const *>(nullptr));
}

template<typename Container>
void TypedMipmapChain<Container>::Clear()
{
    for (Level const &level : levels_)
    {
        if (level.isOwned)
            delete level.container;
    }
    levels_.clear();
    SetMaxDimension(0);
}

template class TypedMipmapChain<SignalBase>;
template class TypedMipmapChain<ImageBase>;
template class TypedMipmapChain<VolumeBase>;

} // namespace quillmarsh
