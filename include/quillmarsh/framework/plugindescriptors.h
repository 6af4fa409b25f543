// Typed factories, one for each kind of plug-in.
#ifndef QUILLMARSH_FRAMEWORK_PLUGINDESCRIPTORS_H
#define QUILLMARSH_FRAMEWORK_PLUGINDESCRIPTORS_H

#include <quillmarsh/framework/plugin.h>

namespace quillmarsh
{

class Application;
class DirectInputProxy;
class GenericExtension;
class HIDDriver;
class VideoRenderer;
class VideoSubsystem;

/// Factory of a generic extension. The factory sets the type in its identity, whatever type the record has that it was
/// made from. This holds for all typed factories. Frame thread only.
class QUILLMARSH_API GenericExtensionPluginDescriptor : public PluginDescriptor
{
public:
    ~GenericExtensionPluginDescriptor() override;
    /// Calls the operation below.
    Plugin *CreatePlugin() override;
    /// Makes the extension, which the caller owns. May return null.
    virtual GenericExtension *CreateGenericExtension() = 0;

protected:
    /// Copies the identity.
    explicit GenericExtensionPluginDescriptor(PluginInfo const &info);
};

/// Factory of an application.
class QUILLMARSH_API ApplicationPluginDescriptor : public PluginDescriptor
{
public:
    ~ApplicationPluginDescriptor() override;
    /// Calls the operation below.
    Plugin *CreatePlugin() override;
    /// Makes the application, which the caller owns. May return null.
    virtual Application *CreateApplication() = 0;

protected:
    /// Copies the identity.
    explicit ApplicationPluginDescriptor(PluginInfo const &info);
};

/// Factory of a DirectInput proxy.
class QUILLMARSH_API DirectInputProxyPluginDescriptor : public PluginDescriptor
{
public:
    ~DirectInputProxyPluginDescriptor() override;
    /// Calls the operation below.
    Plugin *CreatePlugin() override;
    /// Makes the proxy, which the caller owns. May return null.
    virtual DirectInputProxy *CreateDirectInputProxy() = 0;

protected:
    /// Copies the identity.
    explicit DirectInputProxyPluginDescriptor(PluginInfo const &info);
};

/// Factory of a device driver.
class QUILLMARSH_API HIDDriverPluginDescriptor : public PluginDescriptor
{
public:
    ~HIDDriverPluginDescriptor() override;
    /// Calls the operation below.
    Plugin *CreatePlugin() override;
    /// Makes the driver, which the caller owns. May return null.
    virtual HIDDriver *CreateHIDDriver() = 0;

protected:
    /// Copies the identity.
    explicit HIDDriverPluginDescriptor(PluginInfo const &info);
};

/// Factory of a video subsystem.
class QUILLMARSH_API VideoSubsystemPluginDescriptor : public PluginDescriptor
{
public:
    ~VideoSubsystemPluginDescriptor() override;
    /// Calls the operation below.
    Plugin *CreatePlugin() override;
    /// Makes the subsystem, which the caller owns. May return null.
    virtual VideoSubsystem *CreateVideoSubsystem() = 0;

protected:
    /// Copies the identity.
    explicit VideoSubsystemPluginDescriptor(PluginInfo const &info);
};

/// Factory of a video renderer.
class QUILLMARSH_API VideoRendererPluginDescriptor : public PluginDescriptor
{
public:
    ~VideoRendererPluginDescriptor() override;
    /// Calls the operation below.
    Plugin *CreatePlugin() override;
    /// Makes the renderer, which the caller owns. May return null.
    virtual VideoRenderer *CreateVideoRenderer() = 0;

protected:
    /// Copies the identity.
    explicit VideoRendererPluginDescriptor(PluginInfo const &info);
};

} // namespace quillmarsh

#endif
