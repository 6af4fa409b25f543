#include "target.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/dataobjects/imageoperations.h>

#include <algorithm>
#include <utility>

namespace video_opengl
{
namespace
{

constexpr ColorFormat s_colorFormats[] = {
    {8, 8, 8, 8, GL_RGBA8},
    {8, 8, 8, 0, GL_RGB8},
    {10, 10, 10, 2, GL_RGB10_A2},
    {5, 6, 5, 0, GL_RGB565},
};

constexpr DepthFormat s_depthFormats[] = {
    {24, 8, GL_DEPTH24_STENCIL8, GL_DEPTH_STENCIL_ATTACHMENT},  {24, 0, GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT},
    {16, 0, GL_DEPTH_COMPONENT16, GL_DEPTH_ATTACHMENT},         {32, 0, GL_DEPTH_COMPONENT32F, GL_DEPTH_ATTACHMENT},
    {32, 8, GL_DEPTH32F_STENCIL8, GL_DEPTH_STENCIL_ATTACHMENT}, {0, 0, GL_NONE, GL_NONE},
};

bool IsComplete(Device const &device)
{
    return !device.HasError() && device.gl.CheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

DeviceObject MakeStorageOf(std::shared_ptr<Device> const &device, GLenum storage, unsigned int numSamples,
                           unsigned int width, unsigned int height)
{
    DeviceObject object(device, eObject::e_renderbuffer);
    device->gl.BindRenderbuffer(GL_RENDERBUFFER, object.Get());
    device->gl.RenderbufferStorageMultisample(GL_RENDERBUFFER, static_cast<GLsizei>(numSamples), storage,
                                              static_cast<GLsizei>(width), static_cast<GLsizei>(height));
    return object;
}

} // namespace

void ClearBuffers(OpenGLFunctions const &gl, ClearValues const &values, GLbitfield buffers)
{
    gl.ColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    gl.DepthMask(GL_TRUE);
    gl.StencilMask(~0u);
    gl.ClearColor(values.color[0], values.color[1], values.color[2], values.color[3]);
    gl.ClearDepth(static_cast<double>(values.depth));
    gl.ClearStencil(static_cast<GLint>(values.stencil));
    gl.Clear(buffers);
    gl.ClearColor(0, 0, 0, 0);
    gl.ClearDepth(1);
    gl.ClearStencil(0);
}

std::span<ColorFormat const> GetColorFormats()
{
    return s_colorFormats;
}

std::span<DepthFormat const> GetDepthFormats()
{
    return s_depthFormats;
}

TargetFormat FindTargetFormat(FrameBufferConfig const &config)
{
    TargetFormat format;
    for (ColorFormat const &row : s_colorFormats)
    {
        if (row.red == config.RedBits && row.green == config.GreenBits && row.blue == config.BlueBits &&
            row.alpha == config.AlphaBits)
            format.color = &row;
    }
    for (DepthFormat const &row : s_depthFormats)
    {
        if (row.depth == config.DepthBits && row.stencil == config.StencilBits)
            format.depth = &row;
    }
    return format;
}

bool CanDrawInto(std::shared_ptr<Device> const &device, TargetFormat const &format, unsigned int numSamples)
{
    constexpr unsigned int size = 16;
    OpenGLFunctions const &gl = device->gl;
    GLint before = 0;
    gl.GetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &before);
    device->ClearErrors();
    DeviceObject const framebuffer(device, eObject::e_framebuffer);
    gl.BindFramebuffer(GL_FRAMEBUFFER, framebuffer.Get());
    DeviceObject const color = MakeStorageOf(device, format.color->storage, numSamples, size, size);
    gl.FramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, color.Get());
    DeviceObject depth;
    if (format.depth->storage != GL_NONE)
    {
        depth = MakeStorageOf(device, format.depth->storage, numSamples, size, size);
        gl.FramebufferRenderbuffer(GL_FRAMEBUFFER, format.depth->attachment, GL_RENDERBUFFER, depth.Get());
    }
    bool const isComplete = IsComplete(*device);
    gl.BindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(before));
    return isComplete;
}

Target::Target(std::shared_ptr<Device> device, TargetFormat const &format, unsigned int numSamples, unsigned int width,
               unsigned int height)
    : device_(std::move(device)),
      format_(format),
      numSamples_(std::min(numSamples > 1 ? numSamples : 0, device_->GetDriverInfo().maxSamples)),
      width_(0),
      height_(0)
{
    Resize(width, height);
}

void Target::Resize(unsigned int width, unsigned int height)
{
    unsigned int const limit = device_->GetDriverInfo().maxTargetSize;
    width = std::clamp(width, 1u, limit);
    height = std::clamp(height, 1u, limit);
    if (width == width_ && height == height_)
        return;
    width_ = width;
    height_ = height;
    MakeBuffers();
    Bind();
}

void Target::MakeBuffers()
{
    // The old buffers go first: two pairs of the largest ones may not fit.
    back_ = Buffer();
    front_ = Buffer();
    depth_ = DeviceObject();
    isPresented_ = false;
    device_->ClearErrors();
    depth_ = MakeDepth(numSamples_);
    front_ = MakeBuffer(0, numSamples_ == 0 ? &depth_ : nullptr);
    back_ = MakeBuffer(numSamples_, &depth_);
}

DeviceObject Target::MakeStorage(GLenum storage, unsigned int numSamples) const
{
    return MakeStorageOf(device_, storage, numSamples, width_, height_);
}

DeviceObject Target::MakeDepth(unsigned int numSamples) const
{
    return format_.depth->storage != GL_NONE ? MakeStorage(format_.depth->storage, numSamples) : DeviceObject();
}

Target::Buffer Target::MakeBuffer(unsigned int numSamples, DeviceObject const *depth) const
{
    OpenGLFunctions const &gl = device_->gl;
    Buffer buffer{DeviceObject(device_, eObject::e_framebuffer), MakeStorage(format_.color->storage, numSamples)};
    gl.Disable(GL_SCISSOR_TEST);
    gl.BindFramebuffer(GL_FRAMEBUFFER, buffer.framebuffer.Get());
    gl.FramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, buffer.color.Get());
    if (depth != nullptr && depth->Get() != 0)
        gl.FramebufferRenderbuffer(GL_FRAMEBUFFER, format_.depth->attachment, GL_RENDERBUFFER, depth->Get());
    if (!IsComplete(*device_))
    {
        QUILLMARSH_THROW(VideoSubsystemException, "The driver has no buffers of " + std::to_string(width_) + " x " +
                                                      std::to_string(height_) + " pixels with " +
                                                      std::to_string(numSamples) + " samples.");
    }
    ClearBuffers(gl, {.color = {0, 0, 0, 1}}, GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    return buffer;
}

void Target::Bind() const
{
    device_->gl.BindFramebuffer(GL_FRAMEBUFFER, back_.framebuffer.Get());
}

void Target::BeginDrawing()
{
    // Buffers of samples do not change places: the front buffer has a copy with one value for each pixel.
    if (std::exchange(isPresented_, false) && numSamples_ == 0)
        std::swap(back_, front_);
    Bind();
}

void Target::Copy(GLuint from, GLuint to, GLbitfield buffers) const
{
    OpenGLFunctions const &gl = device_->gl;
    gl.BindFramebuffer(GL_READ_FRAMEBUFFER, from);
    gl.BindFramebuffer(GL_DRAW_FRAMEBUFFER, to);
    gl.Disable(GL_SCISSOR_TEST);
    auto const width = static_cast<GLint>(width_);
    auto const height = static_cast<GLint>(height_);
    gl.BlitFramebuffer(0, 0, width, height, 0, 0, width, height, buffers, GL_NEAREST);
}

void Target::Present(int windowHeight)
{
    if (numSamples_ > 0)
        Copy(back_.framebuffer.Get(), front_.framebuffer.Get(), GL_COLOR_BUFFER_BIT);
    isPresented_ = true;
    OpenGLFunctions const &gl = device_->gl;
    gl.BindFramebuffer(GL_READ_FRAMEBUFFER, GetFront().framebuffer.Get());
    gl.BindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
    gl.Disable(GL_SCISSOR_TEST);
    auto const width = static_cast<GLint>(width_);
    auto const height = static_cast<GLint>(height_);
    // While the window has another size, the top left corner stays where it is.
    gl.BlitFramebuffer(0, 0, width, height, 0, windowHeight - height, width, windowHeight, GL_COLOR_BUFFER_BIT,
                       GL_NEAREST);
}

AutoPtr<ImageBase> Target::ReadColor(bool isFront, bool topRowFirst)
{
    return Read({e_format_X8R8G8B8, GL_BGRA, GL_UNSIGNED_BYTE, GL_COLOR_BUFFER_BIT}, isFront, topRowFirst);
}

AutoPtr<ImageBase> Target::ReadDepth(bool topRowFirst)
{
    if (format_.depth->depth == 0)
        return nullptr;
    return Read({e_format_FP32NormL, GL_DEPTH_COMPONENT, GL_FLOAT, GL_DEPTH_BUFFER_BIT}, false, topRowFirst);
}

AutoPtr<ImageBase> Target::ReadStencil(bool topRowFirst)
{
    if (format_.depth->stencil == 0)
        return nullptr;
    return Read({e_format_L8, GL_STENCIL_INDEX, GL_UNSIGNED_BYTE, GL_STENCIL_BUFFER_BIT}, false, topRowFirst);
}

AutoPtr<ImageBase> Target::Read(Reading const &reading, bool isFront, bool topRowFirst)
{
    OpenGLFunctions const &gl = device_->gl;
    AutoPtr<ImageBase> image(ManufactureImage(reading.sampleFormat, height_, width_));
    device_->ClearErrors();
    GLuint source = (isFront ? GetFront() : back_).framebuffer.Get();
    Buffer copy;
    DeviceObject depthCopy;
    if (numSamples_ > 0 && !isFront)
    {
        // Samples cannot be read; a copy has one value for each pixel.
        depthCopy = MakeDepth(0);
        copy = MakeBuffer(0, &depthCopy);
        Copy(source, copy.framebuffer.Get(), reading.buffer);
        source = copy.framebuffer.Get();
    }
    gl.BindFramebuffer(GL_READ_FRAMEBUFFER, source);
    gl.BindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    gl.PixelStorei(GL_PACK_ALIGNMENT, 1);
    gl.ReadPixels(0, 0, static_cast<GLsizei>(width_), static_cast<GLsizei>(height_), reading.format, reading.type,
                  image->GetSamplesB());
    gl.PixelStorei(GL_PACK_ALIGNMENT, 4);
    Bind();
    if (device_->HasError())
        return nullptr;
    // OpenGL begins with the row at the bottom.
    if (topRowFirst)
        FlipRows(*image);
    return image;
}

} // namespace video_opengl
