// Textures of a video renderer: their sizes and levels, and the checks of what is loaded into them.
#ifndef QUILLMARSH_VIDEORENDEREROBJECTS_VRO_TEXTURES_H
#define QUILLMARSH_VIDEORENDEREROBJECTS_VRO_TEXTURES_H

#include <quillmarsh/dataobjects/mipmapchains.h>

namespace quillmarsh::video_renderer_objects
{

/// Kinds of resources.
enum eResourceType : unsigned int
{
    e_resource_texture1D,
    e_resource_texture2D,
    e_resource_texture3D
};

/// Object that a video renderer creates and its users own. It must end before its renderer does.
///
/// Thread: the frame thread only, as for the whole renderer. This goes for all classes of this namespace.
class QUILLMARSH_API Resource : NoCopy
{
public:
    virtual ~Resource();

    /// Returns the kind of resource.
    eResourceType GetResourceType() const { return type_; }

    /// Sets how important it is that the resource stays in the video memory; a higher value is more important. Calls
    /// OnPriorityChanged() if the value differs.
    void SetPriority(unsigned int priority);
    /// Returns the priority; 0x7fffffff at first.
    unsigned int GetPriority() const { return priority_; }

    /// @name A number for the user of the resource
    /// The library does not read it. It is 0 at first.
    /// @{
    void SetUserData(unsigned int data) { userData_ = data; }
    unsigned int GetUserData() const { return userData_; }
    /// @}

protected:
    /// Sets the kind of resource.
    explicit Resource(eResourceType type) : type_(type) {}

    /// Passes the new priority on. GetPriority() returns it already.
    virtual void OnPriorityChanged() = 0;

private:
    eResourceType type_;
    unsigned int priority_ = 0x7fffffff;
    unsigned int userData_ = 0;
};

/// What textures of all dimensions share: the format of their samples, and their levels.
class QUILLMARSH_API TextureBase : public Resource
{
public:
    ~TextureBase() override;

    /// Returns the format of the samples on all levels.
    eSampleFormat GetSampleFormat() const { return sampleFormat_; }
    /// Returns the number of levels: 1, or with mipmaps as many as lead to a level of one sample.
    unsigned int GetNumLevels() const { return numLevels_; }

    /// Sets the largest level that is drawn, at most the number of levels, and returns the result of
    /// OnBaseLevelChanged(). True, without a call, if the value is unchanged.
    bool SetBaseLevel(unsigned int level);
    /// Returns the largest level that is drawn; 0 at first.
    unsigned int GetBaseLevel() const { return baseLevel_; }

    /// True for a dimension above 0, or with `powerOf2` only for a power of 2.
    static bool CheckDimension(unsigned int dimension, bool powerOf2);
    /// Returns a dimension of level 0 at another level: halved `level` times, but at least 1.
    static unsigned int ComputeDimensionAtLevel(unsigned int level, unsigned int dimension);

protected:
    /// Sets kind and format. The largest dimension of level 0 gives the number of levels with `mipmapped`.
    TextureBase(eResourceType type, eSampleFormat sampleFormat, bool mipmapped, unsigned int largestDimension);

    /// Passes the new base level on. GetBaseLevel() returns it already. False if the renderer failed.
    virtual bool OnBaseLevelChanged() = 0;

private:
    eSampleFormat sampleFormat_;
    unsigned int numLevels_;
    unsigned int baseLevel_ = 0;
};

/// @name Textures
/// Their operations for loading check and convert; the renderer's class only writes verified samples to the hardware.
///
/// LoadLevel() loads a block of a source into a block of one level. Sizes and offsets are in samples, in the order
/// depth, height, width. A size of 0 means the whole size of the source. It asserts, in this order,
/// - "Level-index out of range.",
/// - "Sample-format mismatch.",
/// - "Source empty.",
/// - "Data-range empty.",
/// - "Destination-offset-z / data-depth out of range.", and the same for y with height and x with width,
/// - "Source-offset-z / data-depth out of range.", likewise.
///
/// LoadLevels() loads all levels: from a chain of the same format, from level 0 alone, whose smaller levels are
/// computed and whose format may be any that can be transferred, or with all bytes equal to one value. It asserts, each
/// if it applies, "Sample-format mismatch.", "Level-count mismatch." and "Level-0 dimension mismatch.".
///
/// Both return true when everything is loaded. False after an ignored assertion, with nothing loaded; false if there is
/// no conversion of the samples; and false if DoLoadLevel() returned it.
/// @{

/// Texture of one row of samples.
class QUILLMARSH_API Texture1D : public TextureBase
{
public:
    ~Texture1D() override;

    /// Returns the number of samples on a level.
    unsigned int GetWidth(unsigned int level = 0) const;

    /// Loads a block of one level.
    bool LoadLevel(unsigned int level, SignalBase const &source, unsigned int dataWidth = 0,
                   unsigned int destOffsetX = 0, unsigned int sourceOffsetX = 0);
    /// @name Loading of all levels
    /// @{
    bool LoadLevels(SignalMipmapChain const &chain);
    bool LoadLevels(SignalBase const &signal);
    bool LoadLevels(unsigned char value);
    /// @}

protected:
    /// Creates a texture of this width at level 0, in samples.
    Texture1D(eSampleFormat sampleFormat, bool mipmapped, unsigned int width);

    /// Writes a block to the hardware. The source holds samples of the texture's format; the level exists, and the
    /// block is not empty and lies in the level and in the source. False if the renderer failed.
    virtual bool DoLoadLevel(unsigned int level, SignalBase const &source, unsigned int dataWidth,
                             unsigned int destOffsetX, unsigned int sourceOffsetX) = 0;

private:
    unsigned int width_;
};

/// Texture of rows of samples.
class QUILLMARSH_API Texture2D : public TextureBase
{
public:
    ~Texture2D() override;

    /// @name Size of a level, in samples
    /// @{
    unsigned int GetWidth(unsigned int level = 0) const;
    unsigned int GetHeight(unsigned int level = 0) const;
    /// @}

    /// @name Layout of the sources, for all textures of this class
    /// True if the first row of a source is the bottom of the picture; false at first.
    /// @{
    static void SetSourceRowOrderBottomToTop(bool bottomToTop) { s_bSourceRowOrderBottomToTop = bottomToTop; }
    static bool IsSourceRowOrderBottomToTop() { return s_bSourceRowOrderBottomToTop; }
    /// @}

    /// Loads a block of one level.
    bool LoadLevel(unsigned int level, ImageBase const &source, unsigned int dataHeight = 0, unsigned int dataWidth = 0,
                   unsigned int destOffsetY = 0, unsigned int destOffsetX = 0, unsigned int sourceOffsetY = 0,
                   unsigned int sourceOffsetX = 0);
    /// @name Loading of all levels
    /// @{
    bool LoadLevels(ImageMipmapChain const &chain);
    bool LoadLevels(ImageBase const &image);
    bool LoadLevels(unsigned char value);
    /// @}

protected:
    /// Creates a texture of this size at level 0, in samples.
    Texture2D(eSampleFormat sampleFormat, bool mipmapped, unsigned int width, unsigned int height);

    /// Writes a block to the hardware; what is checked, and the result, are as in Texture1D. `rowOrderBottomToTop` is
    /// the layout of the source, and the offsets count its rows as they lie in memory.
    virtual bool DoLoadLevel(unsigned int level, ImageBase const &source, unsigned int dataHeight,
                             unsigned int dataWidth, unsigned int destOffsetY, unsigned int destOffsetX,
                             unsigned int sourceOffsetY, unsigned int sourceOffsetX, bool rowOrderBottomToTop) = 0;

private:
    unsigned int width_;
    unsigned int height_;

    static bool s_bSourceRowOrderBottomToTop;
};

/// Texture of layers of rows of samples.
class QUILLMARSH_API Texture3D : public TextureBase
{
public:
    ~Texture3D() override;

    /// @name Size of a level, in samples
    /// @{
    unsigned int GetWidth(unsigned int level = 0) const;
    unsigned int GetHeight(unsigned int level = 0) const;
    unsigned int GetDepth(unsigned int level = 0) const;
    /// @}

    /// @name Layout of the sources, for all textures of this class
    /// True if the first row of a source is its bottom, and if its first layer is its back; false at first.
    /// @{
    static void SetSourceRowOrderBottomToTop(bool bottomToTop) { s_bSourceRowOrderBottomToTop = bottomToTop; }
    static bool IsSourceRowOrderBottomToTop() { return s_bSourceRowOrderBottomToTop; }
    static void SetSourceLayerOrderBackToFront(bool backToFront) { s_bSourceLayerOrderBackToFront = backToFront; }
    static bool IsSourceLayerOrderBackToFront() { return s_bSourceLayerOrderBackToFront; }
    /// @}

    /// Loads a block of one level.
    bool LoadLevel(unsigned int level, VolumeBase const &source, unsigned int dataDepth = 0,
                   unsigned int dataHeight = 0, unsigned int dataWidth = 0, unsigned int destOffsetZ = 0,
                   unsigned int destOffsetY = 0, unsigned int destOffsetX = 0, unsigned int sourceOffsetZ = 0,
                   unsigned int sourceOffsetY = 0, unsigned int sourceOffsetX = 0);
    /// @name Loading of all levels
    /// @{
    bool LoadLevels(VolumeMipmapChain const &chain);
    bool LoadLevels(VolumeBase const &volume);
    bool LoadLevels(unsigned char value);
    /// @}

protected:
    /// Creates a texture of this size at level 0, in samples.
    Texture3D(eSampleFormat sampleFormat, bool mipmapped, unsigned int width, unsigned int height, unsigned int depth);

    /// Writes a block to the hardware; what is checked, and the result, are as in Texture1D. The last two arguments are
    /// the layout of the source, and the offsets count its rows and layers as they lie in memory.
    virtual bool DoLoadLevel(unsigned int level, VolumeBase const &source, unsigned int dataDepth,
                             unsigned int dataHeight, unsigned int dataWidth, unsigned int destOffsetZ,
                             unsigned int destOffsetY, unsigned int destOffsetX, unsigned int sourceOffsetZ,
                             unsigned int sourceOffsetY, unsigned int sourceOffsetX, bool rowOrderBottomToTop,
                             bool layerOrderBackToFront) = 0;

private:
    unsigned int width_;
    unsigned int height_;
    unsigned int depth_;

    static bool s_bSourceRowOrderBottomToTop;
    static bool s_bSourceLayerOrderBackToFront;
};

/// @}

} // namespace quillmarsh::video_renderer_objects

#endif
