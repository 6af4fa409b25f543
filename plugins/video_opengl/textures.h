// Textures of OpenGL.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_TEXTURES_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_TEXTURES_H

#include "device.h"

#include <quillmarsh/videorendererobjects/vro_textures.h>

namespace video_opengl
{

/// How OpenGL stores and reads a sample format.
struct TextureFormat
{
    eSampleFormat sampleFormat;
    GLenum storage;
    GLenum format;
    GLenum type;
    /// What the shader gets as red, green, blue and alpha.
    GLint swizzle[4];
};

/// Returns how a sample format is stored; null for one that the plug-in does not know.
TextureFormat const *FindTextureFormat(unsigned int sampleFormat);

/// The part of a texture that does not depend on its dimensions.
class TextureObject : NoCopy
{
public:
    /// Makes a texture without levels.
    TextureObject(std::shared_ptr<Device> device, GLenum target, TextureFormat const &format, unsigned int numLevels);
    ~TextureObject();

    GLuint GetName() const { return object_.Get(); }
    OpenGLFunctions const &GetGL() const { return object_.GetDevice().gl; }
    Device &GetDevice() const { return object_.GetDevice(); }
    TextureFormat const &GetFormat() const { return *format_; }

    /// Binds the texture to change it. What was gathered with it is drawn before.
    void BeginChange() const;
    /// Prepares OpenGL for samples with a distance of rows and layers, in samples and rows.
    void SetSourceLayout(unsigned int rowLength, unsigned int numRows) const;
    /// True if OpenGL has taken everything since BeginChange().
    bool EndChange() const;

    /// Sets the largest level that is drawn.
    bool SetBaseLevel(unsigned int level) const;
    /// Sets how levels are mixed, on the bound texture.
    void SetMinFilter(GLint filter);

private:
    DeviceObject object_;
    GLenum target_;
    TextureFormat const *format_;
    unsigned int numLevels_;
    GLint minFilter_ = GL_LINEAR;
};

/// @name Textures
/// Coordinates outside of 0 to 1 give the samples at the edge. Priorities have no effect: OpenGL has none since
/// version 3.1, and the driver decides by use.
/// @{

class OpenGLTexture1D final : public video_renderer_objects::Texture1D
{
public:
    OpenGLTexture1D(std::shared_ptr<Device> device, TextureFormat const &format, bool mipmapped, unsigned int width);

    TextureObject &GetObject() { return object_; }
    /// True if OpenGL could make it.
    bool IsValid() const { return isValid_; }

private:
    void OnPriorityChanged() override {}
    bool OnBaseLevelChanged() override { return object_.SetBaseLevel(GetBaseLevel()); }
    bool DoLoadLevel(unsigned int level, SignalBase const &source, unsigned int dataWidth, unsigned int destOffsetX,
                     unsigned int sourceOffsetX) override;

    TextureObject object_;
    bool isValid_;
};

class OpenGLTexture2D final : public video_renderer_objects::Texture2D
{
public:
    OpenGLTexture2D(std::shared_ptr<Device> device, TextureFormat const &format, bool mipmapped, unsigned int height,
                    unsigned int width);

    TextureObject &GetObject() { return object_; }
    bool IsValid() const { return isValid_; }

private:
    void OnPriorityChanged() override {}
    bool OnBaseLevelChanged() override { return object_.SetBaseLevel(GetBaseLevel()); }
    bool DoLoadLevel(unsigned int level, ImageBase const &source, unsigned int dataHeight, unsigned int dataWidth,
                     unsigned int destOffsetY, unsigned int destOffsetX, unsigned int sourceOffsetY,
                     unsigned int sourceOffsetX, bool rowOrderBottomToTop) override;

    TextureObject object_;
    bool isValid_;
};

class OpenGLTexture3D final : public video_renderer_objects::Texture3D
{
public:
    OpenGLTexture3D(std::shared_ptr<Device> device, TextureFormat const &format, bool mipmapped, unsigned int depth,
                    unsigned int height, unsigned int width);

    TextureObject &GetObject() { return object_; }
    bool IsValid() const { return isValid_; }

private:
    void OnPriorityChanged() override {}
    bool OnBaseLevelChanged() override { return object_.SetBaseLevel(GetBaseLevel()); }
    bool DoLoadLevel(unsigned int level, VolumeBase const &source, unsigned int dataDepth, unsigned int dataHeight,
                     unsigned int dataWidth, unsigned int destOffsetZ, unsigned int destOffsetY,
                     unsigned int destOffsetX, unsigned int sourceOffsetZ, unsigned int sourceOffsetY,
                     unsigned int sourceOffsetX, bool rowOrderBottomToTop, bool layerOrderBackToFront) override;

    TextureObject object_;
    bool isValid_;
};

/// @}

/// @name Creation
/// They return null for a sample format or a size that the driver cannot have, and when its memory is full.
/// @{
AutoPtr<OpenGLTexture1D> CreateTexture1D(std::shared_ptr<Device> const &device, unsigned int sampleFormat,
                                         bool mipmapped, unsigned int width);
AutoPtr<OpenGLTexture2D> CreateTexture2D(std::shared_ptr<Device> const &device, unsigned int sampleFormat,
                                         bool mipmapped, unsigned int height, unsigned int width);
AutoPtr<OpenGLTexture3D> CreateTexture3D(std::shared_ptr<Device> const &device, unsigned int sampleFormat,
                                         bool mipmapped, unsigned int depth, unsigned int height, unsigned int width);
/// @}

} // namespace video_opengl

#endif
