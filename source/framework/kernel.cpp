#include <quillmarsh/framework/kernel.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/sharedoutputstream.h>
#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/videoconfig.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/framework/videorendererinfo.h>
#include <quillmarsh/gui/gui_manager.h>

namespace quillmarsh
{

namespace
{

string MakeKernelName()
{
    return FormatClassName(GetTypeName(typeid(Kernel)));
}

/// The streams of the kernel as shared ones; null if they are not. Set together with them.
constinit SharedOutputStream *s_pSharedConOut = nullptr;
constinit SharedOutputStream *s_pSharedLogOut = nullptr;

ostream &GetStreamOfThread(SharedOutputStream *shared, ostream *stream)
{
    return shared != nullptr ? shared->GetThreadStream() : *stream;
}

} // namespace

Kernel *Kernel::s_pInstanceKernel = nullptr;
ostream *Kernel::s_pConOut = nullptr;
ostream *Kernel::s_pLogOut = nullptr;

Kernel::Kernel()
{
    QUILLMARSH_ASSERT(s_pInstanceKernel == nullptr, MakeKernelName() + " singleton already created.");
    s_pInstanceKernel = this;
}

Kernel::~Kernel()
{
    QUILLMARSH_ASSERT(s_pInstanceKernel != nullptr, "Destructing non-existent " + MakeKernelName() + " singleton.");
    s_pInstanceKernel = nullptr;
}

Kernel &Kernel::Instance()
{
    QUILLMARSH_ASSERT(s_pInstanceKernel != nullptr, MakeKernelName() + " singleton is not created.");
    return *s_pInstanceKernel;
}

Kernel *Kernel::InstancePtr()
{
    QUILLMARSH_ASSERT(s_pInstanceKernel != nullptr, MakeKernelName() + " singleton is not created.");
    return s_pInstanceKernel;
}

Application &Kernel::GetApplication()
{
    Application *const application = GetApplicationPtr();
    QUILLMARSH_ASSERT(application != nullptr, "No active application.");
    return *application;
}

VideoRenderer &Kernel::GetActiveVideoRenderer()
{
    VideoRenderer *const renderer = GetActiveVideoRendererPtr();
    QUILLMARSH_ASSERT(renderer != nullptr, "No active video-renderer.");
    return *renderer;
}

void Kernel::RequestVideoReconfig(unsigned int code)
{
    string pluginName;
    VideoConfig config(false);
    if (VideoRenderer const *const renderer = GetActiveVideoRendererPtr())
    {
        pluginName = renderer->GetPluginInfo().GetPluginName();
        config = renderer->GetVideoConfig();
    }
    ApplyVideoReconfig(pluginName, config, code);
}

void Kernel::RequestHIDReconfig(unsigned int code)
{
    DirectInputConfig config;
    GetDirectInputConfig(config);
    ApplyHIDReconfig(config, code);
}

unsigned int Kernel::GetNumHIDControllers(string const &interfaceName)
{
    unsigned int numFound = 0;
    unsigned int const count = GetNumHumanInterfaceDevices();
    for (unsigned int index = 0; index < count; index++)
    {
        HumanInterfaceDevice *const device = GetHumanInterfaceDevice(index);
        if (device && device->FindController(interfaceName))
            numFound++;
    }
    return numFound;
}

HIDController *Kernel::GetHIDController(string const &interfaceName, unsigned int index)
{
    unsigned int const count = GetNumHumanInterfaceDevices();
    for (unsigned int deviceIndex = 0; deviceIndex < count; deviceIndex++)
    {
        HumanInterfaceDevice *const device = GetHumanInterfaceDevice(deviceIndex);
        HIDController *const controller = device ? device->FindController(interfaceName) : nullptr;
        if (controller && index-- == 0)
            return controller;
    }
    return nullptr;
}

bool Kernel::ConstructClosestSafeVideoConfig(string const &rendererName, VideoConfig const &wish,
                                             string &outRendererName, VideoConfig &out)
{
    // The caller may give the same objects for wish and result.
    VideoConfig const wanted = wish;
    unsigned int const count = GetNumVideoRenderers();
    for (unsigned int index = 0; index < count; index++)
    {
        VideoRendererInfo info;
        GetVideoRendererInfo(index, info);
        bool const isAccepted = rendererName.empty() || info.GetVideoRendererInterfaceName() == rendererName;
        if (isAccepted && info.GetVideoProfile().ConstructClosestValidVideoConfig(wanted, out))
        {
            outRendererName = info.GetPluginInfo().GetPluginName();
            return true;
        }
    }
    outRendererName.clear();
    out = wanted;
    return false;
}

void Kernel::SetOutputStreams(ostream &conOut, ostream &logOut)
{
    s_pConOut = &conOut;
    s_pLogOut = &logOut;
    s_pSharedConOut = dynamic_cast<SharedOutputStream *>(&conOut);
    s_pSharedLogOut = dynamic_cast<SharedOutputStream *>(&logOut);
}

HumanInterfaceDeviceInfo &Kernel::HumanInterfaceDevice_DeviceInfo(HumanInterfaceDevice &device)
{
    return device.DeviceInfo();
}

void Kernel::GUIManager_ConnectApplication(bool connect)
{
    gui::Manager::Instance().ConnectApplication(connect);
}

void Kernel::GUIManager_NotifyApplicationWindowActive(bool active)
{
    gui::Manager::Instance().NotifyApplicationWindowActive(active);
}

void Kernel::GUIManager_NotifyApplicationWindowCreated()
{
    gui::Manager::Instance().NotifyApplicationWindowCreated();
}

void Kernel::GUIManager_BeginConnectHumanInterfaceDevices()
{
    gui::Manager::Instance().BeginConnectHumanInterfaceDevices();
}

void Kernel::GUIManager_ConnectHumanInterfaceDevice(HumanInterfaceDevice &device)
{
    gui::Manager::Instance().ConnectHumanInterfaceDevice(device);
}

void Kernel::GUIManager_EndConnectHumanInterfaceDevices()
{
    gui::Manager::Instance().EndConnectHumanInterfaceDevices();
}

void Kernel::GUIManager_DisconnectHumanInterfaceDevices()
{
    gui::Manager::Instance().DisconnectHumanInterfaceDevices();
}

void Kernel::GUIManager_SetTolerateMissingInputDevice(bool tolerate)
{
    gui::Manager::Instance().SetTolerateMissingInputDevice(tolerate);
}

void Kernel::GUIManager_ConnectVideoRenderer(VideoRenderer &renderer)
{
    gui::Manager::Instance().ConnectVideoRenderer(renderer);
}

void Kernel::GUIManager_DisconnectVideoRenderer()
{
    gui::Manager::Instance().DisconnectVideoRenderer();
}

void Kernel::GUIManager_CreateVideoResources(bool onlyIfUnmanaged)
{
    gui::Manager::Instance().CreateVideoResources(onlyIfUnmanaged);
}

void Kernel::GUIManager_ReleaseVideoResources(bool onlyIfUnmanaged)
{
    gui::Manager::Instance().ReleaseVideoResources(onlyIfUnmanaged);
}

void Kernel::GUIManager_OnWindowResize(unsigned int width, unsigned int height)
{
    gui::Manager::Instance().OnWindowResize(width, height);
}

void Kernel::VideoRenderer_ConnectVideoSubsystem(VideoRenderer &renderer, VideoSubsystem &subsystem)
{
    renderer.ConnectVideoSubsystem(subsystem);
}

void Kernel::VideoRenderer_DisconnectVideoSubsystem(VideoRenderer &renderer)
{
    renderer.DisconnectVideoSubsystem();
}

void Kernel::VideoRenderer_CreateVideoResources(VideoRenderer &renderer, bool deviceWasLost)
{
    renderer.CreateVideoResources(deviceWasLost);
}

void Kernel::VideoRenderer_ReleaseVideoResources(VideoRenderer &renderer, bool deviceWasLost)
{
    renderer.ReleaseVideoResources(deviceWasLost);
}

void Kernel::VideoRenderer_OnWindowResize(VideoRenderer &renderer, unsigned int width, unsigned int height)
{
    renderer.OnWindowResize(width, height);
}

ostream &GetConOut()
{
    return GetStreamOfThread(s_pSharedConOut, Kernel::s_pConOut);
}

ostream &GetLogOut()
{
    return GetStreamOfThread(s_pSharedLogOut, Kernel::s_pLogOut);
}

} // namespace quillmarsh
