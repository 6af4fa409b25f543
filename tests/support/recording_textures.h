// Textures without a renderer: they keep what is loaded into them.
#ifndef QUILLMARSH_TESTS_SUPPORT_RECORDING_TEXTURES_H
#define QUILLMARSH_TESTS_SUPPORT_RECORDING_TEXTURES_H

#include <quillmarsh/videorendererobjects/vro_textures.h>

#include "tests/support/sample_blocks.h"

#include <memory>
#include <vector>

namespace quillmarsh::tests
{

/// One block that was loaded.
struct LoadedBlock
{
    /// Level, sizes, offsets and orders, as the texture got them.
    std::vector<unsigned int> arguments;
    eSampleFormat format;
    /// All samples of the source.
    Bytes bytes;
};

/// What all the textures record.
struct TextureRecord
{
    std::vector<LoadedBlock> loads;
    /// Number of loads that succeed before one fails.
    std::size_t numGoodLoads = ~std::size_t{0};
    unsigned int numPriorityChanges = 0;
    unsigned int numBaseLevelChanges = 0;
    bool acceptsBaseLevel = true;
    /// Whatever has to live as long as the texture.
    std::shared_ptr<void> companion;

    template<typename... Arguments>
    bool Load(unsigned int level, SignalBase const &source, Arguments... arguments)
    {
        if (loads.size() == numGoodLoads)
            return false;
        loads.push_back({{level, arguments...}, source.GetSampleFormat(), BytesOf(source)});
        return true;
    }
};

/// A texture of one, two or three dimensions with a record. Base is Texture1D, Texture2D or Texture3D.
template<typename Base>
class RecordingTextureBase : public Base, public TextureRecord
{
public:
    using Base::Base;

protected:
    void OnPriorityChanged() override { ++numPriorityChanges; }
    bool OnBaseLevelChanged() override
    {
        ++numBaseLevelChanges;
        return acceptsBaseLevel;
    }
};

class RecordingTexture1D final : public RecordingTextureBase<video_renderer_objects::Texture1D>
{
public:
    RecordingTexture1D(eSampleFormat format, bool mipmapped, unsigned int width)
        : RecordingTextureBase(format, mipmapped, width)
    {
    }

private:
    bool DoLoadLevel(unsigned int level, SignalBase const &source, unsigned int width, unsigned int destX,
                     unsigned int sourceX) override
    {
        return Load(level, source, width, destX, sourceX);
    }
};

class RecordingTexture2D final : public RecordingTextureBase<video_renderer_objects::Texture2D>
{
public:
    RecordingTexture2D(eSampleFormat format, bool mipmapped, unsigned int width, unsigned int height)
        : RecordingTextureBase(format, mipmapped, width, height)
    {
    }

private:
    bool DoLoadLevel(unsigned int level, ImageBase const &source, unsigned int height, unsigned int width,
                     unsigned int destY, unsigned int destX, unsigned int sourceY, unsigned int sourceX,
                     bool bottomToTop) override
    {
        return Load(level, source, height, width, destY, destX, sourceY, sourceX, unsigned{bottomToTop});
    }
};

class RecordingTexture3D final : public RecordingTextureBase<video_renderer_objects::Texture3D>
{
public:
    RecordingTexture3D(eSampleFormat format, bool mipmapped, unsigned int width, unsigned int height,
                       unsigned int depth)
        : RecordingTextureBase(format, mipmapped, width, height, depth)
    {
    }

private:
    bool DoLoadLevel(unsigned int level, VolumeBase const &source, unsigned int depth, unsigned int height,
                     unsigned int width, unsigned int destZ, unsigned int destY, unsigned int destX,
                     unsigned int sourceZ, unsigned int sourceY, unsigned int sourceX, bool bottomToTop,
                     bool backToFront) override
    {
        return Load(level, source, depth, height, width, destZ, destY, destX, sourceZ, sourceY, sourceX,
                    unsigned{bottomToTop}, unsigned{backToFront});
    }
};

} // namespace quillmarsh::tests

#endif
