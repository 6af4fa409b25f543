#include "framerest.h"

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/humaninterfacedeviceinfo.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/kernelexecutionparams.h>
#include <quillmarsh/gui/gui_manager.h>

namespace viewer
{

using namespace quillmarsh;

namespace
{

/// Seconds after an input for which all is drawn: longer than a tool tip waits, so that tips and the like need no notice.
constexpr double s_stirTime = 1;
/// Frames a second at rest, where carets blink and devices are looked at.
constexpr double s_restRate = 8;

/// Creators of devices that act by frames, and so need them.
constexpr char const *s_actors[] = {"robot", "input_recording"};

ConsoleOutputBuffer &GetOutput()
{
    return Kernel::Instance().GetConsoleBuffers()->GetOutputBuffer();
}

} // namespace

FrameRest::FrameRest(Workspace &workspace) : workspace_(workspace), subscription_(*this), stir_(s_stirTime)
{
    GetOutput().AddObserver(*this);
    KernelExecutionParams params(true);
    // What input changes is drawn in the same frame.
    params.GUIEventsPreFrameUpdateStates = true;
    params.SetKernelCurrent();
}

FrameRest::~FrameRest()
{
    GetOutput().RemoveObserver(*this);
    SetResting(false);
    SetDrawing(true);
}

void FrameRest::Update(double seconds)
{
    stir_ -= seconds;
    bool const isAsked = workspace_.TakeInvalid();
    if (hasOutput_.exchange(false) || HasInput())
        stir_ = s_stirTime;
    bool const hasBlinked = HasCaretBlinked();
    SetDrawing(isAsked || hasBlinked || stir_ > 0);
    // What asks again and again, such as the progress of a job, goes on without pauses.
    SetResting(!isAsked && stir_ <= 0 && CanSleep());
}

bool FrameRest::HasInput()
{
    gui::Manager const &manager = gui::Manager::Instance();
    bool const hasMoved = manager.GetMousePosition() != lastMouse_;
    lastMouse_ = manager.GetMousePosition();
    return hasMoved || manager.GetMouseWheelDelta() != 0 || manager.IsButtonPressed() || manager.IsButtonUp() ||
           manager.IsKeyPressed() || manager.IsKeyUp();
}

bool FrameRest::HasCaretBlinked()
{
    gui::Component *const focus = gui::Manager::Instance().GetKeyboardFocusTarget();
    auto const *const field = dynamic_cast<widgets::TextField const *>(focus);
    bool const isShown = field != nullptr && field->IsFocused() && field->IsCaretShown();
    bool const hasChanged = focus != lastFocus_.Get() || isShown != wasCaretShown_;
    lastFocus_ = focus;
    wasCaretShown_ = isShown;
    return hasChanged;
}

/// A program without a window on a display has nobody to wait for: it runs scripts, robots and tests.
bool FrameRest::CanSleep() const
{
    if (!platform::CanWaitForDesktop())
        return false;
    Kernel &kernel = Kernel::Instance();
    for (unsigned int i = 0; i < kernel.GetNumHumanInterfaceDevices(); ++i)
    {
        string const creator = kernel.GetHumanInterfaceDevice(i)->GetDeviceInfo().GetCreatorPluginName();
        for (char const *const actor : s_actors)
        {
            if (creator == actor)
                return false;
        }
    }
    return true;
}

void FrameRest::SetDrawing(bool draws)
{
    numDrawn_ += draws ? 1 : 0;
    if (draws == isDrawing_)
        return;
    isDrawing_ = draws;
    KernelExecutionParams params(true);
    params.AutoClearGUIStats = draws;
    params.AutoDrawGUI = draws;
    params.AutoEndGUIRenderer = draws;
    params.AutoPresentBackBuffer = draws;
    params.SetKernelCurrent();
}

void FrameRest::SetResting(bool rests)
{
    if (rests == isResting_)
        return;
    isResting_ = rests;
    Kernel &kernel = Kernel::Instance();
    if (rests)
        fullRate_ = kernel.GetFrameRateLimit();
    kernel.SetFrameRateLimit(rests ? s_restRate : fullRate_);
}

void FrameRest::OnDesktopEvent(platform::DesktopEvent const &)
{
    stir_ = s_stirTime;
}

void FrameRest::OnChanged(ConsoleOutputBuffer const &)
{
    if (!hasOutput_.exchange(true))
        Kernel::Instance().WakeUp();
}

} // namespace viewer
