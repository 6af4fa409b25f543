#include <quillmarsh/host/videogroup.h>

#include "catching.h"
#include "system.h"

#include <quillmarsh/host/hostkernel.h>

#include <quillmarsh/framework/videosubsystemwindow.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/platform/displaymodes.h>

#include <algorithm>
#include <iterator>

namespace quillmarsh::host
{

using platform::eWindowState;
using platform::Window;

namespace
{

/// Returns the seconds of a frame that did not wait for the display. A display that does not tell its rate may be fast.
double GetHastyFrameTime()
{
    platform::DisplayMode mode;
    bool const isKnown = platform::ReadDesktopMode(mode) && mode.frequency > 0;
    return 0.7 / (isKnown ? mode.frequency : 240);
}

/// Number of such frames in a row after which the display no longer paces the frames.
constexpr unsigned int s_maxHastyFrames = 60;

/// Sets a flag for its own life.
class FlagSentry : NoCopy
{
public:
    explicit FlagSentry(bool &flag) : flag_(flag) { flag_ = true; }
    ~FlagSentry() { flag_ = false; }

private:
    bool &flag_;
};

unsigned int ToSize(int size)
{
    return static_cast<unsigned int>(std::max(size, 1));
}

MainWindowGeometry ReadGeometry(TopLevelWindow const &window)
{
    MainWindowGeometry geometry;
    geometry.Maximized = window.IsMaximized();
    window.GetCurrentPosition(geometry.PositionX, geometry.PositionY);
    unsigned int width = 0, height = 0;
    window.GetClientAreaSize(width, height);
    geometry.Width = static_cast<int>(width);
    geometry.Height = static_cast<int>(height);
    return geometry;
}

void SetClientSize(TopLevelWindow &window, int width, int height)
{
    unsigned int wholeWidth = 0, wholeHeight = 0, clientWidth = 0, clientHeight = 0;
    window.GetSize(wholeWidth, wholeHeight);
    window.GetClientAreaSize(clientWidth, clientHeight);
    auto const limit = [](int size)
    { return static_cast<unsigned int>(std::clamp<int>(size, 1, VideoOffers::s_maxWindowSize)); };
    window.SetSize(limit(width) + wholeWidth - clientWidth, limit(height) + wholeHeight - clientHeight);
}

/// Gives a window its place. A full screen has none.
void SetGeometry(VideoSubsystemWindow &window, MainWindowGeometry const &wanted)
{
    MainWindowGeometry const present = ReadGeometry(window);
    if (wanted.Width != present.Width || wanted.Height != present.Height)
        SetClientSize(window, wanted.Width, wanted.Height);
    if (wanted.PositionX != present.PositionX || wanted.PositionY != present.PositionY)
        window.SetPosition(wanted.PositionX, wanted.PositionY);
}

} // namespace

constexpr VideoStep VideoGroup::s_steps[] = {
    {"VideoSubsystem::Open", "The subsystem opens its device and a hidden window.", "VideoSubsystem::Close",
     &VideoGroup::OpenSubsystem, &VideoGroup::CloseSubsystem},
    {"PostCreateMainWindow", "The application chooses title and place of the window.", "PreDestroyMainWindow",
     &VideoGroup::PostCreateMainWindow, &VideoGroup::PreDestroyMainWindow},
    {"ShowMainWindow", "The window gets them and is shown.", nullptr, &VideoGroup::ShowMainWindow},
    {"VideoRenderer::ConnectVideoSubsystem", "The renderer gets its subsystem, and its GUI renderer too.",
     "VideoRenderer::DisconnectVideoSubsystem", &VideoGroup::ConnectSubsystem, &VideoGroup::DisconnectSubsystem},
    {"VideoRenderer::OnWindowResize", "Subsystem, renderer and GUI manager get the size of the window.", nullptr,
     &VideoGroup::TellSize},
    {"gui::Manager::ConnectVideoRenderer", "The GUI manager gets the renderer.",
     "gui::Manager::DisconnectVideoRenderer", &VideoGroup::ConnectGUI, &VideoGroup::DisconnectGUI},
    {"ConnectVideoRenderer", "The application gets the renderer.", "DisconnectVideoRenderer",
     &VideoGroup::ConnectRenderer, &VideoGroup::DisconnectRenderer},
    {"InitVideoRendererStates", "The application sets the states of the renderer.", nullptr,
     &VideoGroup::InitRendererStates, nullptr, true},
    {"VideoRenderer::CreateVideoResources", "The renderer creates what it needs in the device.",
     "VideoRenderer::ReleaseVideoResources", &VideoGroup::CreateRendererResources,
     &VideoGroup::ReleaseRendererResources, true},
    {"gui::Manager::CreateVideoResources", "The GUI manager creates textures and fonts in the device.",
     "gui::Manager::ReleaseVideoResources", &VideoGroup::CreateGUIResources, &VideoGroup::ReleaseGUIResources, true},
    {"CreateVideoResources", "The application creates what it needs in the device.", "ReleaseVideoResources",
     &VideoGroup::CreateResources, &VideoGroup::ReleaseResources, true},
};

std::span<VideoStep const> VideoGroup::GetSteps()
{
    return s_steps;
}

VideoGroup::VideoGroup(HostKernel &kernel) : kernel_(kernel), offers_(kernel), title_(kernel) {}

VideoGroup::~VideoGroup() = default;

template<typename Hook>
void VideoGroup::CallHook(char const *name, Hook &&hook)
{
    try
    {
        kernel_.CallHook(name, hook);
    }
    catch (...)
    {
        hasHookFailed_ = true;
        throw;
    }
}

template<typename Call>
std::optional<string> VideoGroup::CatchUnlessHook(Call &&call)
{
    std::exception_ptr ofHook;
    auto const run = [&]
    {
        hasHookFailed_ = false;
        try
        {
            call();
        }
        catch (...)
        {
            if (hasHookFailed_)
                ofHook = std::current_exception();
            throw;
        }
    };
    std::optional<string> reason = Catch(run);
    if (ofHook != nullptr)
        std::rethrow_exception(ofHook);
    return reason;
}

// Life

void VideoGroup::Open(unsigned int code, unsigned int subcode)
{
    if (!settings_.isEnabled)
        return;
    if (!settings_.isOptional)
        return OpenFirst(code, subcode);
    std::optional<string> const reason = CatchUnlessHook([=, this] { OpenFirst(code, subcode); });
    if (!reason)
        return;
    LowerInRun(0);
    choice_.reset();
    kernel_.GetFailures().Warn("The run goes on without video: " + *reason);
}

void VideoGroup::OpenFirst(unsigned int code, unsigned int subcode)
{
    offers_.Collect(settings_.logDirectory);
    if (offers_.IsEmpty())
        return;
    title_.Export();
    VideoRenderer::EnableDynamicVSyncUpdate(true);
    string const first = settings_.pluginName.empty() ? offers_.Get(0)->GetPluginName() : settings_.pluginName;
    OpenChoice(Query(first, settings_.config, code, subcode));
}

VideoChoice VideoGroup::Query(string pluginName, VideoConfig config, unsigned int code, unsigned int subcode)
{
    CallHook("QueryVideoConfig",
             [&](Application &application) { application.QueryVideoConfig(pluginName, config, code, subcode); });
    kernel_.GetFailures().SetPlace("the choice of a video configuration");
    code_ = code;
    return offers_.Choose(pluginName, config);
}

void VideoGroup::OpenChoice(VideoChoice const &choice)
{
    choice_ = choice;
    numHastyFrames_ = 0;
    hastyFrameTime_ = GetHastyFrameTime();
    Raise();
    lastGood_ = choice_;
    isBroken_ = false;
}

void VideoGroup::Reconfigure(VideoRequest const &request)
{
    if (offers_.IsEmpty())
        return;
    std::optional<VideoChoice> next;
    std::optional<string> reason =
        CatchUnlessHook([&] { next = Query(request.pluginName, request.config, request.code, 0); });
    if (reason)
        return kernel_.GetFailures().Warn("The video stays as it is: " + *reason);
    if (lastGood_ && height_ == std::size(s_steps))
        lastGood_->config = Subsystem().GetVideoConfig();
    LowerInRun(0);
    reason = CatchUnlessHook([&] { OpenChoice(*next); });
    if (!reason)
        return;
    LowerInRun(0);
    choice_.reset();
    if (!lastGood_)
        return kernel_.GetFailures().Warn("The run goes on without video: " + *reason);
    kernel_.GetFailures().Warn("The last video configuration comes back, because the new one failed: " + *reason);
    OpenChoice(VideoChoice(*lastGood_));
}

void VideoGroup::Close()
{
    Failures &failures = kernel_.GetFailures();
    Lower(0, [&failures](VideoStep const &, auto const &undo) { failures.Guard(undo); });
    choice_.reset();
    lastGood_.reset();
}

void VideoGroup::Release()
{
    title_.Withdraw();
    offers_.Release();
}

void VideoGroup::Raise()
{
    while (height_ < std::size(s_steps))
    {
        kernel_.GetFailures().SetPlace(s_steps[height_].name);
        (this->*s_steps[height_].run)();
        ++height_;
    }
}

template<typename Guard>
void VideoGroup::Lower(std::size_t height, Guard &&guard)
{
    while (height_ > height)
    {
        VideoStep const &step = s_steps[--height_];
        if (step.undo == nullptr)
            continue;
        kernel_.GetFailures().SetPlace(step.undoName);
        guard(step, [&] { (this->*step.undo)(); });
    }
}

void VideoGroup::LowerInRun(std::size_t height)
{
    Failures &failures = kernel_.GetFailures();
    std::exception_ptr ofHook;
    auto const undoStep = [&](VideoStep const &step, auto const &undo)
    {
        try
        {
            if (std::optional<string> const reason = CatchUnlessHook(undo))
                failures.Warn(string(step.undoName) + " has failed: " + *reason);
        }
        catch (...)
        {
            if (ofHook == nullptr)
                ofHook = std::current_exception();
        }
    };
    Lower(height, undoStep);
    if (ofHook == nullptr)
        return;
    hasHookFailed_ = true;
    std::rethrow_exception(ofHook);
}

// The steps

void VideoGroup::OpenSubsystem()
{
    Subsystem().Open(choice_->config, settings_.title);
}

void VideoGroup::CloseSubsystem()
{
    Subsystem().Close();
}

void VideoGroup::PostCreateMainWindow()
{
    VideoSubsystemWindow const *const window = Subsystem().GetWindow();
    if (window == nullptr)
        return;
    properties_ = {0, window->GetText()};
    geometry_ = ReadGeometry(*window);
    if (lastGeometry_)
    {
        geometry_.PositionX = lastGeometry_->PositionX;
        geometry_.PositionY = lastGeometry_->PositionY;
    }
    CallHook("PostCreateMainWindow",
             [this](Application &application)
             {
                 application.PostCreateMainWindow(properties_, geometry_, choice_->offer->GetPluginName(),
                                                  Subsystem().GetVideoConfig(), code_);
             });
    isWindowTold_ = true;
}

void VideoGroup::PreDestroyMainWindow()
{
    if (!std::exchange(isWindowTold_, false))
        return;
    VideoSubsystemWindow const *const window = Subsystem().GetWindow();
    if (window != nullptr && window->GetPlatformWindow() != nullptr)
        geometry_ = ReadGeometry(*window);
    if (!Subsystem().GetVideoConfig().FrameBuffer.Fullscreen && !geometry_.Maximized)
        lastGeometry_ = geometry_;
    CallHook("PreDestroyMainWindow",
             [this](Application &application) {
                 application.PreDestroyMainWindow(geometry_, choice_->offer->GetPluginName(),
                                                  Subsystem().GetVideoConfig());
             });
}

void VideoGroup::ShowMainWindow()
{
    VideoSubsystemWindow *const window = Subsystem().GetWindow();
    if (window == nullptr)
        return;
    bool const isFullscreen = Subsystem().GetVideoConfig().FrameBuffer.Fullscreen;
    window->SetText(properties_.Title);
    if (HICON const icon = properties_.IconID != 0 ? system::LoadProgramIcon(properties_.IconID) : nullptr)
        window->SetIcon(icon);
    if (!isFullscreen)
        SetGeometry(*window, geometry_);
    if (geometry_.Maximized && !isFullscreen)
        window->ShowMaximized();
    else
        window->Show();
}

void VideoGroup::ConnectSubsystem()
{
    HostKernel::VideoRenderer_ConnectVideoSubsystem(Renderer(), Subsystem());
    isConnected_ = true;
}

void VideoGroup::DisconnectSubsystem()
{
    isConnected_ = false;
    HostKernel::VideoRenderer_DisconnectVideoSubsystem(Renderer());
}

void VideoGroup::TellSize()
{
    DisplayModeConfig const &mode = Subsystem().GetVideoConfig().DisplayMode;
    windowSize_ = {static_cast<int>(mode.Width), static_cast<int>(mode.Height)};
    if (Window const *const window = FindWindow())
        SetWindowSize(*window);
    Subsystem().OnWindowResize(ToSize(windowSize_.width), ToSize(windowSize_.height));
    HostKernel::VideoRenderer_OnWindowResize(Renderer(), ToSize(windowSize_.width), ToSize(windowSize_.height));
    if (HostKernel::HasGUI())
        HostKernel::GUIManager_OnWindowResize(ToSize(windowSize_.width), ToSize(windowSize_.height));
}

void VideoGroup::ConnectRenderer()
{
    CallHook("ConnectVideoRenderer",
             [this](Application &application) { application.ConnectVideoRenderer(Renderer()); });
}

void VideoGroup::DisconnectRenderer()
{
    CallHook("DisconnectVideoRenderer", [](Application &application) { application.DisconnectVideoRenderer(); });
}

void VideoGroup::InitRendererStates()
{
    CallHook("InitVideoRendererStates",
             [this](Application &application) { application.InitVideoRendererStates(deviceWasLost_); });
}

void VideoGroup::CreateRendererResources()
{
    HostKernel::VideoRenderer_CreateVideoResources(Renderer(), deviceWasLost_);
}

void VideoGroup::ReleaseRendererResources()
{
    // After a failure, or a loss in the middle of a frame, the frame is still open. The resources go also when it fails
    // to end.
    std::exception_ptr failure;
    try
    {
        if (IsDrawing())
            Renderer().GetGUIRenderer().End();
    }
    catch (...)
    {
        failure = std::current_exception();
    }
    HostKernel::VideoRenderer_ReleaseVideoResources(Renderer(), deviceWasLost_);
    if (failure != nullptr)
        std::rethrow_exception(failure);
}

void VideoGroup::CreateResources()
{
    CallHook("CreateVideoResources",
             [this](Application &application) { application.CreateVideoResources(deviceWasLost_); });
}

void VideoGroup::ReleaseResources()
{
    CallHook("ReleaseVideoResources",
             [this](Application &application) { application.ReleaseVideoResources(deviceWasLost_); });
}

// State

VideoOffer *VideoGroup::GetActive() const
{
    return isConnected_ ? choice_->offer : nullptr;
}

bool VideoGroup::IsDrawable() const
{
    return height_ == std::size(s_steps) && !isBroken_ && !NeedsRepair();
}

bool VideoGroup::IsDrawing() const
{
    return isConnected_ && choice_->offer->renderer->GetGUIRenderer().IsDrawing();
}

bool VideoGroup::IsPacedByDisplay() const
{
    if (!IsDrawable() || !choice_->offer->subsystem->GetVideoConfig().Hints.VSync ||
        numHastyFrames_ >= s_maxHastyFrames)
        return false;
    Window const *const window = FindWindow();
    eWindowState const state = window != nullptr ? window->GetState() : eWindowState::e_hidden;
    return state != eWindowState::e_hidden && state != eWindowState::e_minimized;
}

Window *VideoGroup::FindWindow() const
{
    VideoSubsystemWindow const *const window = choice_ ? choice_->offer->subsystem->GetWindow() : nullptr;
    return window != nullptr ? window->GetPlatformWindow() : nullptr;
}

// Frames

bool VideoGroup::NeedsRepair() const
{
    if (!choice_ || height_ == 0 || isBroken_)
        return false;
    eOperationalState const state = choice_->offer->subsystem->GetOperationalState();
    return state == e_video_device_lost || state == e_video_failed || height_ < std::size(s_steps);
}

void VideoGroup::Repair()
{
    if (Subsystem().GetOperationalState() == e_video_failed)
    {
        if (isReopened_)
            QUILLMARSH_THROW(VideoSubsystemException, "The video device has failed again.");
        return RequestReopening("it cannot be restored.");
    }
    FlagSentry const lost(deviceWasLost_);
    constexpr auto s_isInDevice = [](VideoStep const &step) { return step.isInDevice; };
    constexpr auto s_firstInDevice =
        std::find_if(std::begin(s_steps), std::end(s_steps), s_isInDevice) - std::begin(s_steps);
    LowerInRun(std::min<std::size_t>(height_, s_firstInDevice));
    auto const restore = [this]
    {
        if (Subsystem().RestoreDevice())
            Raise();
    };
    UseDevice("VideoSubsystem::RestoreDevice", restore);
}

template<typename Call>
void VideoGroup::UseDevice(char const *place, Call &&call)
{
    kernel_.GetFailures().SetPlace(place);
    hasHookFailed_ = false;
    try
    {
        call();
    }
    catch (VideoSubsystemRecoverableException const &thrown)
    {
        if (hasHookFailed_ || isReopened_)
            throw;
        RequestReopening(thrown.GetMessage());
    }
}

void VideoGroup::RequestReopening(string const &reason)
{
    kernel_.GetFailures().Warn("The video device has failed and is opened anew: " + reason);
    isBroken_ = isReopened_ = true;
    kernel_.RequestVideoReconfig(0);
}

void VideoGroup::DrawGUI()
{
    UseDevice("gui::Manager::Draw", [] { gui::Manager::Instance().Draw(); });
}

void VideoGroup::EndGUIRenderer()
{
    UseDevice("gui::Renderer::End", [this] { Renderer().GetGUIRenderer().End(); });
}

void VideoGroup::Present()
{
    auto const present = [this]
    {
        Renderer().PresentBackBuffer();
        isReopened_ = false;
    };
    UseDevice("VideoRenderer::PresentBackBuffer", present);
    if (numHastyFrames_ < s_maxHastyFrames)
        numHastyFrames_ = kernel_.GetFrameTimeDelta() < hastyFrameTime_ ? numHastyFrames_ + 1 : 0;
    title_.Update(FindWindow());
}

/// Returns true for a new size. A minimized window keeps the size that it had.
bool VideoGroup::SetWindowSize(Window const &window)
{
    Window::Size const size = window.GetSize();
    bool const isSize = size.width > 0 && size.height > 0 && window.GetState() != eWindowState::e_minimized;
    bool const isNew = size.width != windowSize_.width || size.height != windowSize_.height;
    if (isSize && isNew)
        windowSize_ = size;
    return isSize && isNew;
}

void VideoGroup::OnWindowGeometry(Window const &window)
{
    if (GetActive() == nullptr || &window != FindWindow() || !SetWindowSize(window))
        return;
    UseDevice("VideoSubsystem::OnWindowResize", [this] { TellSize(); });
}

} // namespace quillmarsh::host
