// Signals, images and volumes at successively halved sizes.
#ifndef QUILLMARSH_DATAOBJECTS_MIPMAPCHAINS_H
#define QUILLMARSH_DATAOBJECTS_MIPMAPCHAINS_H

#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/volumebase.h>

#include <vector>

namespace quillmarsh
{

/// What the chains have in common: the format of their samples and the number of their levels.
///
/// A chain is used by one thread at a time.
class QUILLMARSH_API MipmapChain : NoCopy
{
public:
    /// Format of the samples of every level.
    eSampleFormat GetSampleFormat() const { return sampleFormat_; }
    /// 0 as long as nothing was built.
    unsigned int GetNumLevels() const { return numLevels_; }

    /// A dimension, halved as often as the level says; at least 1.
    static unsigned int ComputeDimensionAtLevel(unsigned int level, unsigned int dimensionAtLevel0);

protected:
    /// For levels of this format.
    explicit MipmapChain(eSampleFormat sampleFormat) : sampleFormat_(sampleFormat) {}
    ~MipmapChain() = default;

    /// Sets the number of levels that a largest dimension gives: down to 1, and none for 0.
    void SetMaxDimension(unsigned int maxDimension);

private:
    eSampleFormat sampleFormat_;
    unsigned int numLevels_ = 0;
};

/// Chain over one kind of container: SignalBase, ImageBase or VolumeBase.
///
/// All filtering takes place in the format of the source, each level out of the one before it, and the format of the
/// chain is made of each level by itself; bytes that neither filter nor transfer writes are 0. A dimension that has come
/// to 1 stays there while the others go on.
///
///     ImageMipmapChain chain(e_format_A8R8G8B8);
///     if (chain.Build(picture, false))
///         Upload(chain.GetLevel(0));
template<typename Container>
class TypedMipmapChain : public MipmapChain
{
public:
    /// Empty, for levels of this format.
    explicit TypedMipmapChain(eSampleFormat sampleFormat);
    ~TypedMipmapChain();

    /// Replaces the levels by those of a source, whose dimensions are powers of two. A source of the chain's own format
    /// that is not to be copied is level 0 itself and has to outlive the levels. False, with an empty chain, for a
    /// format that can't be transferred into that of the chain or has no linear resampling. Asserts "Dimension is not
    /// power-of-2."; behind that, sizes are cut off.
    bool Build(Container const &source, bool copySource);

    /// Level by index, 0 the largest; good until the next build. Asserts "Level-index out of range."; behind that, an
    /// empty container.
    Container const &GetLevel(unsigned int level) const;

    /// Lets go of all levels.
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
