// What is drawn into, in place of the window's own buffers.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_TARGET_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_TARGET_H

#include "device.h"

#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/framework/framebufferconfig.h>

#include <span>

namespace video_opengl
{

/// Colours of a target.
struct ColorFormat
{
    unsigned int red;
    unsigned int green;
    unsigned int blue;
    unsigned int alpha;
    GLenum storage;
};

/// Depth and stencil of a target.
struct DepthFormat
{
    unsigned int depth;
    unsigned int stencil;
    /// GL_NONE for no buffer.
    GLenum storage;
    GLenum attachment;
};

struct TargetFormat
{
    ColorFormat const *color = nullptr;
    DepthFormat const *depth = nullptr;
};

/// @name Formats of which a target may consist
/// @{
std::span<ColorFormat const> GetColorFormats();
std::span<DepthFormat const> GetDepthFormats();
/// Returns the format with exactly these bits. Pointers are null for what does not exist.
TargetFormat FindTargetFormat(FrameBufferConfig const &config);
/// Asks the driver whether it can draw into a format.
bool CanDrawInto(std::shared_ptr<Device> const &device, TargetFormat const &format, unsigned int numSamples);
/// @}

/// Values that buffers get.
struct ClearValues
{
    float color[4] = {};
    float depth = 1;
    unsigned int stencil = 0;
};

/// Clears buffers of the target, and leaves OpenGL's own values behind. The scissor test limits it.
void ClearBuffers(OpenGLFunctions const &gl, ClearValues const &values, GLbitfield buffers);

/// Back and front buffer in memory of their own. Presenting copies the back buffer to the window; the two buffers change
/// places when the next frame begins, so that until then both hold the picture that is shown. A picture therefore can be
/// read whether a window is covered, minimised, or not there at all, and a new size of the window is a new target,
/// without a new context.
class Target : NoCopy
{
public:
    /// Makes the buffers, black, and binds the back buffer. Throws VideoSubsystemException when the driver cannot.
    Target(std::shared_ptr<Device> device, TargetFormat const &format, unsigned int numSamples, unsigned int width,
           unsigned int height);

    unsigned int GetWidth() const { return width_; }
    unsigned int GetHeight() const { return height_; }
    /// Returns the number of samples of each pixel; 1 without multisampling.
    unsigned int GetNumSamples() const { return numSamples_ > 0 ? numSamples_ : 1; }

    /// Makes new buffers of another size, limited to what the driver can have.
    void Resize(unsigned int width, unsigned int height);

    /// Makes the back buffer the target of what OpenGL draws. After Present(), it is the former front buffer, whose
    /// contents are undefined.
    void BeginDrawing();

    /// Copies the back buffer to the back buffer of the window.
    void Present(int windowHeight);

    /// @name Reading
    /// The row of an image that comes first is the top with `topRowFirst`. Null when there is no such buffer.
    /// @{
    AutoPtr<ImageBase> ReadColor(bool isFront, bool topRowFirst);
    AutoPtr<ImageBase> ReadDepth(bool topRowFirst);
    AutoPtr<ImageBase> ReadStencil(bool topRowFirst);
    /// @}

private:
    /// A framebuffer, and what it alone draws into.
    struct Buffer
    {
        DeviceObject framebuffer;
        DeviceObject color;
    };
    struct Reading
    {
        eSampleFormat sampleFormat;
        GLenum format;
        GLenum type;
        GLbitfield buffer;
    };

    void Bind() const;
    /// Returns the buffer with the picture that is shown.
    Buffer const &GetFront() const { return isPresented_ && numSamples_ == 0 ? back_ : front_; }
    Buffer MakeBuffer(unsigned int numSamples, DeviceObject const *depth) const;
    DeviceObject MakeDepth(unsigned int numSamples) const;
    DeviceObject MakeStorage(GLenum storage, unsigned int numSamples) const;
    void MakeBuffers();
    AutoPtr<ImageBase> Read(Reading const &reading, bool isFront, bool topRowFirst);
    void Copy(GLuint from, GLuint to, GLbitfield buffers) const;

    std::shared_ptr<Device> device_;
    TargetFormat format_;
    unsigned int numSamples_;
    unsigned int width_;
    unsigned int height_;
    Buffer back_;
    Buffer front_;
    /// The back buffer was shown, and nothing was drawn since.
    bool isPresented_ = false;
    /// Both buffers share it, unless the back buffer is multisampled.
    DeviceObject depth_;
};

} // namespace video_opengl

#endif
