#include <quillmarsh/host/hostkernel.h>

#include <quillmarsh/platform/desktopevents.h>

#include <ostream>

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

void HostKernel::AdvanceTime()
{
    FramePacer::Clock::time_point const now = FramePacer::Clock::now();
    if (frameNumber_ == 0)
        loopStart_ = frameStart_ = now;
    frameTimeDelta_ = duration<double>(now - frameStart_).count();
    frameStart_ = now;
    ++frameNumber_;
}

void HostKernel::RunFrame()
{
    AdvanceTime();
    {
        Profiler *const profiler = autoInit_.ProfileFrames ? FrameworkProfiler::GetEnabled() : nullptr;
        ProfileIterationSentry const iteration(profiler);
        CallFrameHooks(autoInit_.ProfileHooks ? profiler : nullptr);
        if (autoInit_.ProfileObservers)
        {
            ProfileBlockSentry const block(profiler, "FrameObservers");
            CallFrameObservers();
        }
    }
    if (!autoInit_.ProfileObservers)
        CallFrameObservers();
    console_.GetStream().flush();
}

void HostKernel::CallFrameHooks(Profiler *profiler)
{
    double const delta = frameTimeDelta_;
    auto const call = [this, profiler](char const *name, auto &&hook)
    {
        ProfileBlockSentry const block(profiler, name);
        CallHook(name, hook);
    };
    // GUI events and drawing join this order with their subsystems.
    call("FrameBegin", [delta](Application &application) { application.FrameBegin(delta); });
    SampleDevices(profiler);
    call("FrameSampleInput", [](Application &application) { application.FrameSampleInput(); });
    call("FrameUpdateStates", [delta](Application &application) { application.FrameUpdateStates(delta); });
    call("FramePreRenderVideo", [](Application &application) { application.FramePreRenderVideo(); });
    call("FrameRenderVideo", [](Application &application) { application.FrameRenderVideo(); });
    call("FramePostRenderVideo", [](Application &application) { application.FramePostRenderVideo(); });
    call("FrameEnd", [](Application &application) { application.FrameEnd(); });
}

void HostKernel::SampleDevices(Profiler *profiler)
{
    platform::PumpDesktop();
    if (devices_.PollDeviceChanges())
        RequestHIDReconfig(0);
    if (devices_.GetNumDevices() == 0)
        return;
    failures_.SetPlace("the sampling of input devices");
    ProfileBlockSentry const block(profiler, "SampleDevices");
    devices_.Sample(params_);
}

void HostKernel::CallFrameObservers()
{
    failures_.SetPlace("FrameObserver::OnFrame");
    frameObservers_.ForEach(
        [this](FrameObserver &observer)
        {
            bool remove = false;
            observer.OnFrame(remove, frameNumber_, frameTimeDelta_);
            // An observer that destroyed itself in its call has left the list by that; the pointer is only compared.
            if (remove)
                frameObservers_.Remove(&observer);
        });
}

void HostKernel::CarryOutRequests()
{
    if (!hasRequests_)
        return;
    std::vector<Request> requests;
    {
        std::lock_guard const lock(requestMutex_);
        requests.swap(requests_);
        hasRequests_ = !queuedLines_.empty();
    }
    for (Request const &request : requests)
        CarryOut(request);
}

void HostKernel::CarryOut(Request const &request)
{
    static constexpr char const *s_names[] = {"devices", "video", "generic", "vertical synchronisation"};
    if (autoInit_.LogRequests)
    {
        log_ << "Reconfiguration (" << s_names[static_cast<unsigned int>(request.kind)] << "), code " << request.code
             << std::endl;
    }
    switch (request.kind)
    {
    case Request::eKind::e_hid:
        ReconfigureDevices(request);
        reconfigObservers_.ForEach([](ReconfigObserver &observer) { observer.OnHIDReconfig(); });
        CheckSubsystems();
        break;
    case Request::eKind::e_video:
        reconfigObservers_.ForEach([](ReconfigObserver &observer) { observer.OnVideoReconfig(); });
        CheckSubsystems();
        break;
    case Request::eKind::e_generic:
        CallHook("GenericReconfig",
                 [&](Application &application) { application.GenericReconfig(request.code, request.subcode); });
        CheckSubsystems();
        break;
    case Request::eKind::e_vsync:
        CallHook("OnVSyncUpdate", [](Application &application) { application.OnVSyncUpdate(false); });
        reconfigObservers_.ForEach([](ReconfigObserver &observer) { observer.OnVSyncReconfig(false); });
        break;
    }
}

void HostKernel::ReconfigureDevices(Request const &request)
{
    if (!autoInit_.OpenDevices)
        return;
    devices_.Disconnect();
    devices_.Release();
    devices_.Open(request.config, request.code, request.subcode);
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
    // From the begin of the last frame on: a frame that took longer is followed at once, and none is caught up with.
    duration<double> const longest(3600.0);
    duration<double> const period(1.0 / rate);
    pacer_.PauseUntil(frameStart_ + duration_cast<FramePacer::Clock::duration>(std::min(period, longest)));
}

} // namespace quillmarsh::host
