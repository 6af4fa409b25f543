// Signals, images and volumes at successively halved sizes.
#ifndef QUILLMARSH_DATAOBJECTS_MIPMAPCHAINS_H
#define QUILLMARSH_DATAOBJECTS_MIPMAPCHAINS_H

#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/volumebase.h>

#include <vector>

namespace quillmarsh
{

/// Common base of the chains: the format of the samples, and the number of levels.
///
/// One thread at a time may use a chain.
class QUILLMARSH_API MipmapChain : NoCopy
{
public:
    /// Returns the format of the samples of every level.
    eSampleFormat GetSampleFormat() const { return sampleFormat_; }
    /// Returns the number of levels; 0 before the chain is built.
    unsigned int GetNumLevels() const { return numLevels_; }

    /// Returns a dimension of level 0 at another level: halved `level` times, but at least 1.
    static unsigned int ComputeDimensionAtLevel(unsigned int level, unsigned int dimensionAtLevel0);

protected:
    /// Sets the format of the levels.
    explicit MipmapChain(eSampleFormat sampleFormat) : sampleFormat_(sampleFormat) {}
    ~MipmapChain() = default;

    /// Sets the number of levels for the largest dimension: down to 1, and no level for 0.
    void SetMaxDimension(unsigned int maxDimension);

private:
    eSampleFormat sampleFormat_;
    unsigned int numLevels_ = 0;
};

/// Chain over one kind of container: SignalBase, ImageBase or VolumeBase.
///
/// Each level is filtered from the previous one in the format of the source, and then transferred into the format of
/// the chain. Bytes that neither filter nor transfer writes are 0. A dimension that has reached 1 stays 1 while the
/// others shrink.
///
///     ImageMipmapChain chain(e_format_A8R8G8B8);
///     if (chain.Build(picture, false))
///         Upload(chain.GetLevel(0));
template<typename Container>
class TypedMipmapChain : public MipmapChain
{
public:
    /// Creates an empty chain for levels of this format.
    explicit TypedMipmapChain(eSampleFormat sampleFormat);
    ~TypedMipmapChain();

    /// Replaces the levels by those of a source, whose dimensions must be powers of two. Without `copySource`, a source
    /// in the chain's format becomes level 0 itself: the chain borrows it, and it must outlive the levels. False, with
    /// an empty chain, for a format without linear resampling or without a transfer into the chain's format. Asserts
    /// "Dimension is not power-of-2."; after an ignored assertion, half sizes are rounded down.
    bool Build(Container const &source, bool copySource);

    /// Returns a level by index, 0 for the largest; valid until the next Build() or Clear(). Asserts "Level-index out
    /// of range."; after an ignored assertion, returns an empty container.
    Container const &GetLevel(unsigned int level) const;

    /// Releases all levels.
    void Clear();

private:
    struct Level
    {
        Container const *container;
        bool isOwned;
    };

    bool BuildLevel0(Container const &source, bool copySource);
    bool BuildSmallerLevels(Container const &source);
    void Own(AutoPtr<Container> container);

    std::vector<Level> levels_;
};

extern template class QUILLMARSH_API TypedMipmapChain<SignalBase>;
extern template class QUILLMARSH_API TypedMipmapChain<ImageBase>;
extern template class QUILLMARSH_API TypedMipmapChain<VolumeBase>;

/// Chain of signals.
class QUILLMARSH_API SignalMipmapChain : public TypedMipmapChain<SignalBase>
{
public:
    using TypedMipmapChain::TypedMipmapChain;
};

/// Chain of images.
class QUILLMARSH_API ImageMipmapChain : public TypedMipmapChain<ImageBase>
{
public:
    using TypedMipmapChain::TypedMipmapChain;
};

/// Chain of volumes.
class QUILLMARSH_API VolumeMipmapChain : public TypedMipmapChain<VolumeBase>
{
public:
    using TypedMipmapChain::TypedMipmapChain;
};

} // namespace quillmarsh

#endif
