#include <quillmarsh/host/hostkernel.h>

#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/platform/desktopevents.h>

#include <algorithm>
#include <functional>
#include <ostream>
#include <type_traits>

namespace quillmarsh::host
{

using std::chrono::duration;
using std::chrono::duration_cast;

unsigned int HostKernel::GetFrameNumber()
{
    return frameNumber_;
}

double HostKernel::GetFrameTime()
{
    return duration<double>(frameStart_ - loopStart_).count();
}

double HostKernel::GetFrameTimeDelta()
{
    return frameTimeDelta_;
}

/// Calls one of the frame's hooks, and passes the time since the last frame to those hooks that take it.
template<auto Hook>
void HostKernel::CallFrameHook(HostKernel &kernel, char const *name)
{
    if constexpr (std::is_invocable_v<decltype(Hook), Application &, double>)
        kernel.CallHook(name, [&kernel](Application &application) { (application.*Hook)(kernel.frameTimeDelta_); });
    else
        kernel.CallHook(name, std::mem_fn(Hook));
}

constexpr FrameStep HostKernel::s_frameOrder[] = {
    {"FrameBegin", "The application begins the frame.", &CallFrameHook<&Application::FrameBegin>},
    {"PumpDesktop", "The listeners of the desktop get the events of windows and input.",
     [](HostKernel &kernel, char const *) { kernel.PumpDesktop(); }, nullptr, nullptr},
    {"RepairVideo", "A lost video device is released, and made anew when it is back.",
     [](HostKernel &kernel, char const *) { kernel.video_.Repair(); },
     [](HostKernel &kernel) { return kernel.video_.NeedsRepair(); }, nullptr},
    {"PollDevices", "The drivers report added and removed devices.",
     [](HostKernel &kernel, char const *) { kernel.PollDevices(); }, nullptr, nullptr},
    {"SampleDevices", "The devices without a sampling thread are sampled.",
     [](HostKernel &kernel, char const *) { kernel.SampleDevices(); },
     [](HostKernel &kernel) { return kernel.devices_.GetNumDevices() > 0; }},
    {"FrameSampleInput", "The application reads its input.", &CallFrameHook<&Application::FrameSampleInput>},
    {"DispatchGUIEvents", "The GUI turns input into messages, if the parameters put it ahead of FrameUpdateStates.",
     [](HostKernel &kernel, char const *) { kernel.DispatchGUIEvents(); },
     [](HostKernel &kernel) { return kernel.MustDispatchGUIEvents(true); }},
    {"FrameUpdateStates", "The application updates its state by the elapsed time.",
     &CallFrameHook<&Application::FrameUpdateStates>},
    {"DispatchGUIEvents", "The GUI turns input into messages, unless it did so already.",
     [](HostKernel &kernel, char const *) { kernel.DispatchGUIEvents(); },
     [](HostKernel &kernel) { return kernel.MustDispatchGUIEvents(false); }},
    {"ClearGUIStats", "The statistics of the GUI renderer begin anew.",
     [](HostKernel &kernel, char const *) { kernel.ClearGUIStats(); },
     [](HostKernel &kernel) { return kernel.params_.AutoClearGUIStats && kernel.video_.IsDrawable(); }, nullptr},
    {"FramePreRenderVideo", "The application prepares its picture.", &CallFrameHook<&Application::FramePreRenderVideo>,
     &CanRender},
    {"FrameRenderVideo", "The application draws its picture.", &CallFrameHook<&Application::FrameRenderVideo>,
     &CanRender},
    {"DrawGUI", "The GUI is drawn over the picture.", [](HostKernel &kernel, char const *) { kernel.video_.DrawGUI(); },
     [](HostKernel &kernel) { return HasGUI() && kernel.params_.AutoDrawGUI && kernel.video_.IsDrawable(); }},
    {"FramePostRenderVideo", "The application ends its picture.", &CallFrameHook<&Application::FramePostRenderVideo>,
     &CanRender},
    {"EndGUIRenderer", "The GUI renderer ends its frame, if one is open.",
     [](HostKernel &kernel, char const *) { kernel.video_.EndGUIRenderer(); },
     [](HostKernel &kernel) { return kernel.params_.AutoEndGUIRenderer && kernel.video_.IsDrawing(); }},
    {"PresentBackBuffer", "The finished picture is shown.",
     [](HostKernel &kernel, char const *) { kernel.video_.Present(); },
     [](HostKernel &kernel) { return kernel.params_.AutoPresentBackBuffer && kernel.video_.IsDrawable(); }},
    {"FrameEnd", "The application ends the frame.", &CallFrameHook<&Application::FrameEnd>},
    {"FrameObservers", "Every FrameObserver is notified.",
     [](HostKernel &kernel, char const *) { kernel.CallFrameObservers(); }, nullptr,
     &Application::AutoInitInfo::ProfileObservers},
};

std::span<FrameStep const> HostKernel::GetFrameOrder()
{
    return s_frameOrder;
}

FramePacer::Clock::time_point HostKernel::GetNow()
{
    return FramePacer::Clock::now();
}

void HostKernel::AdvanceTime()
{
    FramePacer::Clock::time_point const now = GetNow();
    if (frameNumber_ == 0)
        loopStart_ = frameStart_ = now;
    frameTimeDelta_ = duration<double>(now - frameStart_).count();
    frameStart_ = now;
    ++frameNumber_;
}

void HostKernel::RunFrame()
{
    AdvanceTime();
    Profiler *const profiler = autoInit_.ProfileFrames ? FrameworkProfiler::GetEnabled() : nullptr;
    // If the observers are not a block of the profiler, they are also outside its iteration.
    auto const isOutside = [this](FrameStep const &step)
    { return step.profiled == &Application::AutoInitInfo::ProfileObservers && !autoInit_.ProfileObservers; };
    std::span<FrameStep const> const steps(s_frameOrder);
    auto const numInside =
        static_cast<std::size_t>(std::find_if(steps.begin(), steps.end(), isOutside) - steps.begin());
    {
        ProfileIterationSentry const iteration(profiler);
        RunSteps(steps.first(numInside), profiler);
    }
    RunSteps(steps.subspan(numInside), nullptr);
    console_.GetStream().flush();
}

void HostKernel::RunSteps(std::span<FrameStep const> steps, Profiler *profiler)
{
    for (FrameStep const &step : steps)
    {
        if (step.isDue != nullptr && !step.isDue(*this))
            continue;
        bool const isBlock = step.profiled != nullptr && autoInit_.*step.profiled;
        ProfileBlockSentry const block(isBlock ? profiler : nullptr, step.name);
        step.run(*this, step.name);
    }
}

void HostKernel::PumpDesktop()
{
    failures_.SetPlace("the events of the desktop");
    platform::PumpDesktop();
}

void HostKernel::PollDevices()
{
    failures_.SetPlace("the polling of device drivers");
    if (devices_.PollDeviceChanges())
        RequestHIDReconfig(0);
}

void HostKernel::SampleDevices()
{
    failures_.SetPlace("the sampling of input devices");
    devices_.Sample(params_);
}

/// A run without video calls the hooks of the picture, too. A device that is lost has nothing to draw on.
bool HostKernel::CanRender(HostKernel &kernel)
{
    return kernel.video_.GetActive() == nullptr || kernel.video_.IsDrawable();
}

bool HostKernel::MustDispatchGUIEvents(bool isAheadOfUpdate) const
{
    return HasGUI() && params_.AutoDispatchGUIEvents && params_.GUIEventsPreFrameUpdateStates == isAheadOfUpdate;
}

void HostKernel::DispatchGUIEvents()
{
    failures_.SetPlace("gui::Manager::DispatchInputEvents");
    gui::Manager::Instance().DispatchInputEvents();
}

void HostKernel::ClearGUIStats()
{
    GetActiveVideoRenderer().GetGUIRenderer().ClearStats();
}

void HostKernel::CallFrameObservers()
{
    failures_.SetPlace("FrameObserver::OnFrame");
    frameObservers_.ForEach(
        [this](FrameObserver &observer)
        {
            bool remove = false;
            observer.OnFrame(remove, frameNumber_, frameTimeDelta_);
            // An observer that deleted itself in its call is no longer in the list; the pointer is only compared.
            if (remove)
                frameObservers_.Remove(&observer);
        });
}

void HostKernel::CarryOutRequests()
{
    if (!hasRequests_)
        return;
    std::vector<KernelRequest> requests;
    {
        std::lock_guard const lock(requestMutex_);
        requests.swap(requests_);
        hasRequests_ = !queuedLines_.empty();
    }
    auto const carryOut = [this](auto const &request)
    {
        if (autoInit_.LogRequests)
            log_ << "Reconfiguration (" << request.s_szName << "), code " << request.code << std::endl;
        CarryOut(request);
    };
    for (KernelRequest const &request : requests)
        std::visit(carryOut, request);
}

void HostKernel::CarryOut(DeviceRequest const &request)
{
    ReconfigureDevices(request);
    reconfigObservers_.ForEach([](ReconfigObserver &observer) { observer.OnHIDReconfig(); });
    CheckSubsystems();
}

void HostKernel::CarryOut(VideoRequest const &request)
{
    ReconfigureVideo(request);
    reconfigObservers_.ForEach([](ReconfigObserver &observer) { observer.OnVideoReconfig(); });
    CheckSubsystems();
}

void HostKernel::CarryOut(GenericRequest const &request)
{
    CallHook("GenericReconfig",
             [&](Application &application) { application.GenericReconfig(request.code, request.subcode); });
    CheckSubsystems();
}

void HostKernel::CarryOut(VSyncRequest const &)
{
    VideoOffer const *const offer = video_.GetActive();
    bool const vsync = offer != nullptr && offer->subsystem->GetVideoConfig().Hints.VSync;
    CallHook("OnVSyncUpdate", [vsync](Application &application) { application.OnVSyncUpdate(vsync); });
    reconfigObservers_.ForEach([vsync](ReconfigObserver &observer) { observer.OnVSyncReconfig(vsync); });
}

void HostKernel::ReconfigureDevices(DeviceRequest const &request)
{
    if (!autoInit_.OpenDevices)
        return;
    devices_.Disconnect();
    devices_.Release();
    devices_.Open(request.config, request.code, 0);
}

void HostKernel::ReconfigureVideo(VideoRequest const &request)
{
    if (!autoInit_.OpenVideo || video_.GetOffers().IsEmpty())
        return;
    subsystems_.DisconnectFromWindow();
    video_.Reconfigure(request);
    if (subsystems_.IsInitialized())
        subsystems_.ConnectToWindow();
}

void HostKernel::CheckSubsystems()
{
    bool fit = true;
    CallHook("CheckSubsystems", [&fit](Application &application) { fit = application.CheckSubsystems(); });
    if (!fit)
        CallHook("FixSubsystems", [](Application &application) { application.FixSubsystems(); });
}

void HostKernel::PauseUntilNextFrame(double idleRate)
{
    double const rate = frameRateLimit_ > 0 && autoInit_.PaceFrames ? frameRateLimit_ : idleRate;
    if (rate <= 0 || exitRequested_)
        return;
    // Counts from the start of the last frame: the next frame follows a longer one at once, and no lost time is made
    // up.
    duration<double> const longest(3600.0);
    duration<double> const period(1.0 / rate);
    pacer_.PauseUntil(frameStart_ + duration_cast<FramePacer::Clock::duration>(std::min(period, longest)));
}

} // namespace quillmarsh::host
