#include <quillmarsh/framework/plugindescriptors.h>

#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/directinputproxy.h>
#include <quillmarsh/framework/genericextension.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/framework/videosubsystem.h>

namespace quillmarsh
{

GenericExtensionPluginDescriptor::GenericExtensionPluginDescriptor(PluginInfo const &info)
    : PluginDescriptor(PluginInfo(info, e_plugin_generic_extension))
{
}

GenericExtensionPluginDescriptor::~GenericExtensionPluginDescriptor() = default;

Plugin *GenericExtensionPluginDescriptor::CreatePlugin()
{
    return CreateGenericExtension();
}

ApplicationPluginDescriptor::ApplicationPluginDescriptor(PluginInfo const &info)
    : PluginDescriptor(PluginInfo(info, e_plugin_application))
{
}

ApplicationPluginDescriptor::~ApplicationPluginDescriptor() = default;

Plugin *ApplicationPluginDescriptor::CreatePlugin()
{
    return CreateApplication();
}

DirectInputProxyPluginDescriptor::DirectInputProxyPluginDescriptor(PluginInfo const &info)
    : PluginDescriptor(PluginInfo(info, e_plugin_direct_input_proxy))
{
}

DirectInputProxyPluginDescriptor::~DirectInputProxyPluginDescriptor() = default;

Plugin *DirectInputProxyPluginDescriptor::CreatePlugin()
{
    return CreateDirectInputProxy();
}

HIDDriverPluginDescriptor::HIDDriverPluginDescriptor(PluginInfo const &info)
    : PluginDescriptor(PluginInfo(info, e_plugin_hid_driver))
{
}

HIDDriverPluginDescriptor::~HIDDriverPluginDescriptor() = default;

Plugin *HIDDriverPluginDescriptor::CreatePlugin()
{
    return CreateHIDDriver();
}

VideoSubsystemPluginDescriptor::VideoSubsystemPluginDescriptor(PluginInfo const &info)
    : PluginDescriptor(PluginInfo(info, e_plugin_video_subsystem))
{
}

VideoSubsystemPluginDescriptor::~VideoSubsystemPluginDescriptor() = default;

Plugin *VideoSubsystemPluginDescriptor::CreatePlugin()
{
    return CreateVideoSubsystem();
}

VideoRendererPluginDescriptor::VideoRendererPluginDescriptor(PluginInfo const &info)
    : PluginDescriptor(PluginInfo(info, e_plugin_video_renderer))
{
}

VideoRendererPluginDescriptor::~VideoRendererPluginDescriptor() = default;

Plugin *VideoRendererPluginDescriptor::CreatePlugin()
{
    return CreateVideoRenderer();
}

} // namespace quillmarsh
