// The OpenGL device: a context, its functions and limits, and the objects that live in it.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_DEVICE_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_DEVICE_H

#include "openglfunctions.h"

#include <vector>

namespace video_opengl
{

/// What the driver is and can do.
struct DriverInfo
{
    string vendor;
    string renderer;
    string version;
    /// Draws by the processor.
    bool isSoftware = false;
    unsigned int maxTextureSize = 0;
    unsigned int maxVolumeSize = 0;
    unsigned int maxTargetSize = 0;
    unsigned int maxSamples = 0;
};

/// Kinds of OpenGL objects.
enum class eObject
{
    e_buffer,
    e_framebuffer,
    e_program,
    e_renderbuffer,
    e_texture,
    e_vertexArray
};

/// Draws what was gathered. Whoever gathers registers with the device, since an object that changes must not change
/// what was drawn with it before.
class Gatherer
{
public:
    virtual void DrawGathered() = 0;

protected:
    ~Gatherer() = default;
};

/// A context with its functions. Objects that outlive it hold a reference, and find it closed.
class Device : NoCopy
{
public:
    /// Opens a context for a window. With `isDebug`, the driver's messages go to the log. Throws
    /// VideoSubsystemException with a reason for the user.
    static std::shared_ptr<Device> Open(platform::Window &window, bool isDebug);
    /// Takes functions from elsewhere.
    explicit Device(OpenGLFunctions::Door const &door) : gl(door) {}
    ~Device();

    /// Deletes the context. Asserts that no object is left in it.
    void Close();
    bool IsOpen() const { return isOpen_; }

    DriverInfo const &GetDriverInfo() const { return driverInfo_; }
    platform::OpenGLContext &GetContext() { return *context_; }

    /// True when the driver has lost the context with everything in it.
    bool IsLost() const;

    /// @name Objects, by their names in OpenGL
    /// Nothing is deleted after the device is closed.
    /// @{
    GLuint CreateObject(eObject kind);
    void DeleteObject(eObject kind, GLuint name);
    unsigned int GetNumObjects() const { return numObjects_; }
    /// @}

    /// @name Gathered drawing
    /// @{
    void SetGatherer(Gatherer *gatherer) { gatherer_ = gatherer; }
    void DrawGathered()
    {
        if (gatherer_ != nullptr)
            gatherer_->DrawGathered();
    }
    /// @}

    /// Returns memory for a conversion, at least this large. Valid until the next call.
    unsigned char *GetScratch(std::size_t size);
    /// Forgets the errors of OpenGL up to now.
    void ClearErrors() const;
    /// True if OpenGL has reported an error since the last call of ClearErrors(); forgets it.
    bool HasError() const;

    OpenGLFunctions gl;

private:
    void ReadDriverInfo();
    void ReportMessages();

    AutoPtr<platform::OpenGLContext> context_;
    DriverInfo driverInfo_;
    bool isOpen_ = true;
    unsigned int numObjects_ = 0;
    Gatherer *gatherer_ = nullptr;
    std::vector<unsigned char> scratch_;
};

/// Owns an OpenGL object.
class DeviceObject
{
public:
    /// Owns nothing.
    DeviceObject() = default;
    DeviceObject(std::shared_ptr<Device> device, eObject kind);
    DeviceObject(DeviceObject &&other) noexcept { Swap(other); }
    DeviceObject &operator=(DeviceObject &&other) noexcept
    {
        Swap(other);
        return *this;
    }
    ~DeviceObject();

    GLuint Get() const { return name_; }
    Device &GetDevice() const { return *device_; }

private:
    void Swap(DeviceObject &other) noexcept;

    std::shared_ptr<Device> device_;
    eObject kind_ = eObject::e_buffer;
    GLuint name_ = 0;
};

} // namespace video_opengl

#endif
