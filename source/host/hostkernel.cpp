#include <quillmarsh/host/hostkernel.h>

#include <quillmarsh/framework/kernelthreadinfo.h>
#include <quillmarsh/framework/videorendererinfo.h>
#include <quillmarsh/platform/program.h>

#include <algorithm>
#include <ostream>

namespace quillmarsh::host
{

HostKernel::HostKernel(ostream &log, std::function<void(string const &)> report, bool developerMode)
    : log_(log),
      console_(log),
      failures_(std::move(report)),
      params_(false),
      variables_("quillmarsh-host")
{
    params_.DeveloperMode = developerMode;
    SetOutputStreams(console_.GetStream(), log);
    RegisterDefaultDataCodecs();
    RegisterDefaultSignalFileExtensions();
    RegisterDefaultImageFileExtensions();
    RegisterDefaultVolumeFileExtensions();
    interpreter_ = std::make_unique<std_command_interpreter::Interpreter>();
}

HostKernel::~HostKernel() = default;

void HostKernel::SetLevel(eKernelLevel level)
{
    level_ = level;
    failures_.SetLevel(level);
    if (autoInit_.LogKernelLevels)
        log_ << "Kernel level: " << GetLevelName(level) << std::endl;
    if (application_ != nullptr)
        CallHook("OnKernelLevelChanged",
                 [level](Application &application) { application.OnKernelLevelChanged(level); });
}

void HostKernel::ReleasePluginLeftovers()
{
    interpreter_->DeleteAllExternalCommands();
    variables_.UnregisterAllVariables();
    codecs_.UnregisterAllEncoders();
    codecs_.UnregisterAllDecoders();
    frameObservers_.Clear();
    reconfigObservers_.Clear();
}

void HostKernel::MakeGUI()
{
    if (!HasGUI())
        gui_ = std::make_unique<gui::Manager>();
    // Programs without a desktop have neither keyboard nor mouse.
    GUIManager_SetTolerateMissingInputDevice(true);
    if (GetAppWindow() != nullptr)
        GUIManager_NotifyApplicationWindowCreated();
}

// Execution

void HostKernel::SetExecutionParams(KernelExecutionParams const &params)
{
    params_ = params;
}

void HostKernel::GetExecutionParams(KernelExecutionParams &params)
{
    params = params_;
}

void HostKernel::SetThreadInfo(KernelThreadInfo const &info)
{
    if (platform::SetCurrentThreadPriority(info.Priority))
        threadPriority_ = info.Priority;
    threadPriorityBoost_ = info.EnablePriorityBoost;
}

void HostKernel::GetThreadInfo(KernelThreadInfo &info)
{
    info = KernelThreadInfo();
    info.ThreadID = platform::GetCurrentThreadNumber();
    info.Priority = threadPriority_;
    info.EnablePriorityBoost = threadPriorityBoost_;
}

eKernelLevel HostKernel::GetKernelLevel()
{
    return level_;
}

void HostKernel::SetFrameRateLimit(double framesPerSecond)
{
    // In this order of arguments, NaN becomes 0.
    frameRateLimit_ = std::max(0.0, framesPerSecond);
}

double HostKernel::GetFrameRateLimit()
{
    return frameRateLimit_;
}

bool HostKernel::IsExitRequested()
{
    return exitRequested_;
}

void HostKernel::RequestExit()
{
    exitRequested_ = true;
    pacer_.WakeUp();
}

// Requests

void HostKernel::ApplyHIDReconfig(DirectInputConfig const &config, unsigned int code)
{
    Request(DeviceRequest{code, config});
}

void HostKernel::ApplyVideoReconfig(string const &pluginName, VideoConfig const &config, unsigned int code)
{
    Request(VideoRequest{code, pluginName, config});
}

void HostKernel::RequestGenericReconfig(unsigned int code, unsigned int subcode)
{
    Request(GenericRequest{code, subcode});
}

void HostKernel::NotifyVSyncUpdate()
{
    Request(VSyncRequest{});
}

void HostKernel::Request(KernelRequest request)
{
    {
        std::lock_guard const lock(requestMutex_);
        requests_.push_back(std::move(request));
        hasRequests_ = true;
    }
    pacer_.WakeUp();
}

void HostKernel::QueueCommandLine(string const &line)
{
    {
        std::lock_guard const lock(requestMutex_);
        queuedLines_.push_back(line);
        hasRequests_ = true;
    }
    pacer_.WakeUp();
}

void HostKernel::TakeQueuedLines(std::vector<string> &lines)
{
    lines.clear();
    if (!hasRequests_ || !autoInit_.InterpretQueuedLines)
        return;
    std::lock_guard const lock(requestMutex_);
    lines.swap(queuedLines_);
    hasRequests_ = !requests_.empty();
}

void HostKernel::WakeUp()
{
    pacer_.WakeUp();
}

// Plug-ins

unsigned int HostKernel::GetNumPlugins()
{
    return static_cast<unsigned int>(plugins_.GetEntries().size());
}

bool HostKernel::GetPluginInfo(unsigned int index, PluginInfo &info)
{
    if (index >= GetNumPlugins())
        return false;
    info = plugins_.GetEntries()[index].descriptor->GetPluginInfo();
    return true;
}

string HostKernel::GetPluginFileName(unsigned int index)
{
    return index < GetNumPlugins() ? plugins_.GetEntries()[index].fileName : string();
}

unsigned int HostKernel::GetNumGenericExtensions()
{
    return static_cast<unsigned int>(genericExtensions_.size());
}

GenericExtension *HostKernel::GetGenericExtension(unsigned int index)
{
    return index < genericExtensions_.size() ? genericExtensions_[index].get() : nullptr;
}

GenericExtension *HostKernel::FindGenericExtension(string const &interfaceName)
{
    for (AutoPtr<GenericExtension> const &extension : genericExtensions_)
    {
        if (extension->GetGenericExtensionInterfaceName() == interfaceName)
            return extension.get();
    }
    return nullptr;
}

Application *HostKernel::GetApplicationPtr()
{
    return application_;
}

// Video

unsigned int HostKernel::GetNumVideoRenderers()
{
    return video_.GetOffers().GetSize();
}

void HostKernel::GetVideoRendererInfo(unsigned int index, VideoRendererInfo &info)
{
    if (VideoOffer const *const offer = video_.GetOffers().Get(index))
        info = offer->info;
}

void HostKernel::GetVideoRendererProfile(unsigned int index, VideoProfile &profile)
{
    if (VideoOffer const *const offer = video_.GetOffers().Get(index))
        profile = offer->accepted;
}

VideoRenderer *HostKernel::GetActiveVideoRendererPtr()
{
    VideoOffer const *const offer = video_.GetActive();
    return offer != nullptr ? offer->renderer.get() : nullptr;
}

void HostKernel::GetActiveVideoRendererInfo(VideoRendererInfo &info)
{
    if (VideoOffer const *const offer = video_.GetActive())
        info = offer->info;
}

void HostKernel::GetActiveVideoProfile(VideoProfile &profile)
{
    if (VideoOffer const *const offer = video_.GetActive())
        profile = offer->accepted;
}

// Devices

unsigned int HostKernel::GetNumHumanInterfaceDevices()
{
    return devices_.GetNumDevices();
}

HumanInterfaceDevice *HostKernel::GetHumanInterfaceDevice(unsigned int index)
{
    return devices_.GetDevice(index);
}

void HostKernel::GetDirectInputConfig(DirectInputConfig &config)
{
    config = devices_.GetConfig();
}

// Services

std_command_interpreter::Interpreter *HostKernel::GetCommandInterpreter()
{
    return interpreter_.get();
}

Profiler *HostKernel::GetProfiler()
{
    return &profiler_;
}

ConsoleBuffers *HostKernel::GetConsoleBuffers()
{
    return &console_.GetBuffers();
}

VariableRegistry *HostKernel::GetVariableRegistry()
{
    return &variables_;
}

// Observers

void HostKernel::AddFrameObserver(FrameObserver *observer)
{
    frameObservers_.Add(observer);
}

void HostKernel::RemoveFrameObserver(FrameObserver *observer)
{
    frameObservers_.Remove(observer);
}

unsigned int HostKernel::GetNumFrameObservers()
{
    return frameObservers_.GetSize();
}

void HostKernel::AddReconfigObserver(ReconfigObserver *observer)
{
    reconfigObservers_.Add(observer);
}

void HostKernel::RemoveReconfigObserver(ReconfigObserver *observer)
{
    reconfigObservers_.Remove(observer);
}

unsigned int HostKernel::GetNumReconfigObservers()
{
    return reconfigObservers_.GetSize();
}

} // namespace quillmarsh::host
