#include "device.h"

#include "openglwindow.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/framework/kernel.h>

#include <algorithm>
#include <ostream>
#include <utility>

namespace video_opengl
{
namespace
{

/// Names by which drivers say that they have no graphics card.
constexpr char const *s_softwareRenderers[] = {"llvmpipe",    "softpipe",    "swrast",      "Software Rasterizer",
                                               "GDI Generic", "SwiftShader", "Basic Render"};

string ReadText(OpenGLFunctions const &gl, GLenum name)
{
    auto const *const text = reinterpret_cast<char const *>(gl.GetString(name));
    return text != nullptr ? text : "";
}

unsigned int ReadNumber(OpenGLFunctions const &gl, GLenum name)
{
    GLint number = 0;
    gl.GetIntegerv(name, &number);
    return static_cast<unsigned int>(std::max(number, 0));
}

bool HasExtension(OpenGLFunctions const &gl, std::initializer_list<string> wanted)
{
    unsigned int const count = ReadNumber(gl, GL_NUM_EXTENSIONS);
    for (GLuint i = 0; i < count; ++i)
    {
        auto const *const name = reinterpret_cast<char const *>(gl.GetStringi(GL_EXTENSIONS, i));
        if (name != nullptr && std::find(wanted.begin(), wanted.end(), name) != wanted.end())
            return true;
    }
    return false;
}

void QUILLMARSH_OPENGL_CALL LogMessage(GLenum, GLenum, GLuint, GLenum severity, GLsizei, GLchar const *message,
                                       void const *)
{
    if (severity != GL_DEBUG_SEVERITY_NOTIFICATION)
        GetLogOut() << "OpenGL: " << message << std::endl;
}

} // namespace

std::shared_ptr<Device> Device::Open(platform::Window &window, bool isDebug)
{
    string reason;
    platform::OpenGLContextDesc desc;
    desc.isDebug = isDebug;
    desc.pixels = GetWindowPixels();
    AutoPtr<platform::OpenGLContext> context = platform::OpenGLContext::Create(window, desc, reason);
    if (context == nullptr)
        QUILLMARSH_THROW(VideoSubsystemException, reason);
    auto device = std::make_shared<Device>([&](char const *name) { return context->FindFunction(name); });
    device->context_ = std::move(context);
    device->ReadDriverInfo();
    if (isDebug)
        device->ReportMessages();
    return device;
}

Device::~Device()
{
    Close();
}

void Device::Close()
{
    if (!std::exchange(isOpen_, false))
        return;
    QUILLMARSH_ASSERT(numObjects_ == 0, "OpenGL objects outlive their device.");
    context_.reset();
}

void Device::ReadDriverInfo()
{
    driverInfo_.vendor = ReadText(gl, GL_VENDOR);
    driverInfo_.renderer = ReadText(gl, GL_RENDERER);
    driverInfo_.version = ReadText(gl, GL_VERSION);
    driverInfo_.isSoftware =
        std::any_of(std::begin(s_softwareRenderers), std::end(s_softwareRenderers),
                    [&](char const *name) { return driverInfo_.renderer.find(name) != string::npos; });
    driverInfo_.maxTextureSize = ReadNumber(gl, GL_MAX_TEXTURE_SIZE);
    driverInfo_.maxVolumeSize = ReadNumber(gl, GL_MAX_3D_TEXTURE_SIZE);
    driverInfo_.maxTargetSize = ReadNumber(gl, GL_MAX_RENDERBUFFER_SIZE);
    driverInfo_.maxSamples = ReadNumber(gl, GL_MAX_SAMPLES);
    // A driver may have an address for a function that it does not have.
    if (!HasExtension(gl, {"GL_KHR_robustness", "GL_ARB_robustness"}))
        gl.GetGraphicsResetStatus = nullptr;
    if (!HasExtension(gl, {"GL_KHR_debug", "GL_ARB_debug_output"}))
        gl.DebugMessageCallback = nullptr;
}

void Device::ReportMessages()
{
    if (gl.DebugMessageCallback == nullptr)
        return;
    // Each message comes during the call that it is about.
    gl.Enable(GL_DEBUG_OUTPUT_SYNCHRONOUS);
    gl.DebugMessageCallback(&LogMessage, nullptr);
}

bool Device::IsLost() const
{
    return isOpen_ && gl.GetGraphicsResetStatus != nullptr && gl.GetGraphicsResetStatus() != GL_NO_ERROR;
}

GLuint Device::CreateObject(eObject kind)
{
    GLuint name = 0;
    switch (kind)
    {
    case eObject::e_buffer:
        gl.GenBuffers(1, &name);
        break;
    case eObject::e_framebuffer:
        gl.GenFramebuffers(1, &name);
        break;
    case eObject::e_program:
        name = gl.CreateProgram();
        break;
    case eObject::e_renderbuffer:
        gl.GenRenderbuffers(1, &name);
        break;
    case eObject::e_texture:
        gl.GenTextures(1, &name);
        break;
    case eObject::e_vertexArray:
        gl.GenVertexArrays(1, &name);
        break;
    }
    ++numObjects_;
    return name;
}

void Device::DeleteObject(eObject kind, GLuint name)
{
    if (!isOpen_)
        return;
    switch (kind)
    {
    case eObject::e_buffer:
        gl.DeleteBuffers(1, &name);
        break;
    case eObject::e_framebuffer:
        gl.DeleteFramebuffers(1, &name);
        break;
    case eObject::e_program:
        gl.DeleteProgram(name);
        break;
    case eObject::e_renderbuffer:
        gl.DeleteRenderbuffers(1, &name);
        break;
    case eObject::e_texture:
        gl.DeleteTextures(1, &name);
        break;
    case eObject::e_vertexArray:
        gl.DeleteVertexArrays(1, &name);
        break;
    }
    --numObjects_;
}

unsigned char *Device::GetScratch(std::size_t size)
{
    if (scratch_.size() < size)
        scratch_.resize(size);
    return scratch_.data();
}

void Device::ClearErrors() const
{
    // A lost context may report its loss without end.
    for (int i = 0; i < 16 && gl.GetError() != GL_NO_ERROR; ++i)
        ;
}

bool Device::HasError() const
{
    bool const hasError = gl.GetError() != GL_NO_ERROR;
    ClearErrors();
    return hasError;
}

DeviceObject::DeviceObject(std::shared_ptr<Device> device, eObject kind)
    : device_(std::move(device)),
      kind_(kind),
      name_(device_->CreateObject(kind))
{
}

DeviceObject::~DeviceObject()
{
    if (device_ != nullptr)
        device_->DeleteObject(kind_, name_);
}

void DeviceObject::Swap(DeviceObject &other) noexcept
{
    std::swap(device_, other.device_);
    std::swap(kind_, other.kind_);
    std::swap(name_, other.name_);
}

} // namespace video_opengl
