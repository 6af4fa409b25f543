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

/// Factory of a generic extension. Its identity has this type, whatever the record that it was made from said; so it is
/// with all typed factories. Frame thread only.
class QUILLMARSH_API GenericExtensionPluginDescriptor : public PluginDescriptor
{
public:
    ~GenericExtensionPluginDescriptor() override;
    Plugin *CreatePlugin() override;
    /// A new extension, owned by the caller, or null.
    virtual GenericExtension *CreateGenericExtension() = 0;

protected:
    explicit GenericExtensionPluginDescriptor(PluginInfo const &info);
};

/// Factory of an application.
class QUILLMARSH_API ApplicationPluginDescriptor : public PluginDescriptor
{
public:
    ~ApplicationPluginDescriptor() override;
    Plugin *CreatePlugin() override;
    /// A new application, owned by the caller, or null.
    virtual Application *CreateApplication() = 0;

protected:
    explicit ApplicationPluginDescriptor(PluginInfo const &info);
};

/// Factory of a DirectInput proxy.
class QUILLMARSH_API DirectInputProxyPluginDescriptor : public PluginDescriptor
{
public:
    ~DirectInputProxyPluginDescriptor() override;
    Plugin *CreatePlugin() override;
    /// A new proxy, owned by the caller, or null.
    virtual DirectInputProxy *CreateDirectInputProxy() = 0;

protected:
    explicit DirectInputProxyPluginDescriptor(PluginInfo const &info);
};

/// Factory of a device driver.
class QUILLMARSH_API HIDDriverPluginDescriptor : public PluginDescriptor
{
public:
    ~HIDDriverPluginDescriptor() override;
    Plugin *CreatePlugin() override;
    /// A new driver, owned by the caller, or null.
    virtual HIDDriver *CreateHIDDriver() = 0;

protected:
    explicit HIDDriverPluginDescriptor(PluginInfo const &info);
};

/// Factory of a video subsystem.
class QUILLMARSH_API VideoSubsystemPluginDescriptor : public PluginDescriptor
{
public:
    ~VideoSubsystemPluginDescriptor() override;
    Plugin *CreatePlugin() override;
    /// A new subsystem, owned by the caller, or null.
    virtual VideoSubsystem *CreateVideoSubsystem() = 0;

protected:
    explicit VideoSubsystemPluginDescriptor(PluginInfo const &info);
};

/// Factory of a video renderer.
class QUILLMARSH_API VideoRendererPluginDescriptor : public PluginDescriptor
{
public:
    ~VideoRendererPluginDescriptor() override;
    Plugin *CreatePlugin() override;
    /// A new renderer, owned by the caller, or null.
    virtual VideoRenderer *CreateVideoRenderer() = 0;

protected:
    explicit VideoRendererPluginDescriptor(PluginInfo const &info);
};

} // namespace quillmarsh

#endif
