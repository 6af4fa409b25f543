#include "recorder.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/devices/gamecontroller.h>
#include <quillmarsh/devices/glove.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/positiontracker.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/samplereadsentry.h>
#include <quillmarsh/mathtools/transforms.h>

#include <algorithm>

namespace input_recording
{

using namespace quillmarsh;

namespace
{

// A pair of functions for each kind: the values that a controller has, and their readings, in the order of the fields.

void Describe(Keyboard const &, RecordedController &) {}

void Capture(Keyboard const &keyboard, RecordedController const &, float *state)
{
    for (unsigned int key = 0; key < e_key_none; ++key)
        *state++ = keyboard.KeyPressed(static_cast<eKey>(key)) ? 1.0f : 0.0f;
}

void Describe(Mouse const &, RecordedController &) {}

void Capture(Mouse const &mouse, RecordedController const &, float *state)
{
    for (int const number : {mouse.GetDeltaX(), mouse.GetDeltaY(), mouse.GetDeltaWheel(), mouse.GetPositionX(),
                             mouse.GetPositionY(), mouse.IsPositionInsideAppWindowClientArea() ? 1 : 0})
        *state++ = std::clamp(static_cast<float>(number), -s_maxInteger, s_maxInteger);
    for (unsigned int button = 0; button <= e_mouse_button_extra3; ++button)
        *state++ = mouse.ButtonPressed(static_cast<eMouseButton>(button)) ? 1.0f : 0.0f;
}

void Describe(OrientationTracker const &tracker, RecordedController &recorded)
{
    bool const reportsQuaternion = tracker.GetSamplingMode() == OrientationTracker::QuaternionSamplingMode;
    recorded.counts[reportsQuaternion ? 0 : 1] = 0;
}

void Capture(OrientationTracker const &tracker, RecordedController const &recorded, float *state)
{
    quat quaternion;
    tracker.GetOrientationRaw(quaternion);
    vec3 angles = vec3::ZERO;
    if (tracker.GetSamplingMode() == OrientationTracker::EulerSamplingMode)
    {
        tracker.GetOrientationRaw(angles.x, angles.y, angles.z);
    }
    else if (recorded.counts[0] != 0)
    {
        // The hardware reports three axes instead.
        vec3 axes[3];
        tracker.GetOrientationRaw(axes[0], axes[1], axes[2]);
        mat3 rotation;
        GenerateRotateMV(rotation, axes[0], axes[1], axes[2]);
        FactorEulerHPR_MV(rotation, angles.x, angles.y, angles.z);
    }
    state = std::copy_n(angles.ToPtr(), 3, state);
    std::copy_n(quaternion.ToPtr(), 4, state);
}

void Describe(PositionTracker const &, RecordedController &) {}

void Capture(PositionTracker const &tracker, RecordedController const &, float *state)
{
    std::copy_n(tracker.GetPositionRaw().ToPtr(), 3, state);
}

void Describe(Glove const &glove, RecordedController &recorded)
{
    recorded.isLeftHanded = glove.IsLeftHanded();
    std::vector<unsigned int> counts(Glove::s_numSensors);
    for (unsigned int sensor = 0; sensor < Glove::s_numSensors; ++sensor)
    {
        auto const id = static_cast<eGloveSensor>(sensor);
        counts[sensor] = glove.IsSupportedSensor(id) ? 1 : 0;
        recorded.ranges[sensor] = {glove.GetMinFlexure(id), glove.GetMaxFlexure(id)};
    }
    recorded.counts = counts;
}

void Capture(Glove const &glove, RecordedController const &, float *state)
{
    for (unsigned int sensor = 0; sensor < Glove::s_numSensors; ++sensor)
        *state++ = glove.GetFlexure(static_cast<eGloveSensor>(sensor));
}

void Describe(GameController const &controller, RecordedController &recorded)
{
    auto count = recorded.counts.begin();
    for (unsigned int axis = 0; axis < GameController::s_numAxes; ++axis)
        *count++ = controller.HasAxis(static_cast<GameController::eAxis>(axis)) ? 1 : 0;
    for (unsigned int slider = 0; slider < GameController::s_maxSliders; ++slider)
        *count++ = slider < controller.GetNumSliders() ? 1 : 0;
    for (unsigned int hat = 0; hat < GameController::s_maxPOVHats; ++hat)
        *count++ = hat < controller.GetNumPOVHats() ? 1 : 0;
    *count = controller.GetNumButtons();
}

void Capture(GameController const &controller, RecordedController const &, float *state)
{
    for (unsigned int axis = 0; axis < GameController::s_numAxes; ++axis)
        *state++ = controller.GetAxisPosition(static_cast<GameController::eAxis>(axis));
    for (unsigned int slider = 0; slider < GameController::s_maxSliders; ++slider)
        *state++ = controller.GetSliderPosition(slider);
    for (unsigned int hat = 0; hat < GameController::s_maxPOVHats; ++hat)
        *state++ = controller.GetPOVHatPosition(hat);
    for (unsigned int button = 0; button < GameController::s_maxButtons; ++button)
        *state++ = controller.ButtonPressed(button) ? 1.0f : 0.0f;
}

/// The pair of functions for a kind.
struct KindHands
{
    bool (*isOf)(HIDController const &);
    void (*describe)(HIDController const &, RecordedController &);
    void (*capture)(HIDController const &, RecordedController const &, float *);
};

template<typename Controller>
constexpr KindHands MakeHands()
{
    return {[](HIDController const &controller) { return dynamic_cast<Controller const *>(&controller) != nullptr; },
            [](HIDController const &controller, RecordedController &recorded)
            { Describe(static_cast<Controller const &>(controller), recorded); },
            [](HIDController const &controller, RecordedController const &recorded, float *state)
            { Capture(static_cast<Controller const &>(controller), recorded, state); }};
}

constexpr KindHands s_hands[s_numKinds] = {
    MakeHands<Keyboard>(),        MakeHands<Mouse>(), MakeHands<OrientationTracker>(),
    MakeHands<PositionTracker>(), MakeHands<Glove>(), MakeHands<GameController>()};

[[noreturn]] void Fail(string const &message)
{
    RecordingException exception;
    exception.SetMessage(message);
    throw exception;
}

} // namespace

std::optional<RecordedController> DescribeController(HIDController const &controller)
{
    for (unsigned int kind = 0; kind < s_numKinds; ++kind)
    {
        if (!s_hands[kind].isOf(controller))
            continue;
        RecordedController recorded(static_cast<eKind>(kind), true);
        s_hands[kind].describe(controller, recorded);
        return recorded;
    }
    return std::nullopt;
}

void CaptureState(HIDController const &controller, RecordedController const &recorded, std::span<float> state)
{
    s_hands[recorded.kind].capture(controller, recorded, state.data());
}

Recorder::Recorder(string const &fileName, std::vector<HumanInterfaceDevice *> const &devices, eStart start)
    : fileName_(fileName),
      hasBegun_(start == eStart::e_now)
{
    Collect(devices);
    if (sources_.empty())
        Fail("No device can be recorded.");
    std::filesystem::path const path = file_system::GetStreamPath(fileName_);
    if (!path.empty())
        file_.open(path, std::ios::binary | std::ios::trunc);
    if (!file_.is_open())
        Fail(fileName_ + ": the file cannot be written: " + file_system::GetLastFailureReason());
    string description = "Recorded";
    for (Source const &source : sources_)
        description +=
            (&source == &sources_.front() ? " from " : ", ") + source.controller->GetControllerInterfaceName();
    writer_.emplace(file_, description, recorded_);
    if (hasBegun_)
        WriteStates(false);
    if (!file_)
        Fail(fileName_ + ": the file cannot be written");
    Kernel::Instance().AddFrameObserver(this);
}

Recorder::~Recorder()
{
    writer_->WriteEnd(time_);
}

void Recorder::Collect(std::vector<HumanInterfaceDevice *> const &devices)
{
    std::vector<bool> isTaken(s_numKinds);
    std::size_t stateSize = 0;
    for (HumanInterfaceDevice *const device : devices)
    {
        unsigned int const numControllers = device->GetNumControllers();
        for (unsigned int i = 0; i < numControllers; ++i)
        {
            HIDController *const controller = device->GetController(i);
            std::optional<RecordedController> const recorded = DescribeController(*controller);
            bool const showsAnything = recorded && std::any_of(recorded->counts.begin(), recorded->counts.end(),
                                                               [](unsigned int count) { return count != 0; });
            if (!showsAnything || isTaken[recorded->kind])
                continue;
            isTaken[recorded->kind] = true;
            sources_.push_back({device, controller});
            recorded_.push_back(*recorded);
            stateSize = std::max(stateSize, recorded->GetDesc().rest.size());
        }
    }
    state_.resize(stateSize);
}

void Recorder::OnFrame(bool &removeObserver, unsigned int, double frameTime)
{
    if (hasBegun_)
        time_ += frameTime;
    hasBegun_ = true;
    WriteStates(true);
    if (!file_)
    {
        GetLogOut() << "The recording ended, because the file cannot be written: " << fileName_ << std::endl;
        removeObserver = true;
    }
}

/// Writes the states of all controllers. Movements before time 0 are not part of the recording.
void Recorder::WriteStates(bool withMovements)
{
    for (unsigned int i = 0; i < sources_.size(); ++i)
    {
        HumanInterfaceDevice &device = *sources_[i].device;
        KindDesc const &desc = recorded_[i].GetDesc();
        std::span<float> const state = std::span(state_).first(desc.rest.size());
        {
            // Takes no second lock while the application still holds its own.
            AsyncSampleReadSentry const sentry(device, !device.IsSampledDataLocked());
            CaptureState(*sources_[i].controller, recorded_[i], state);
        }
        if (!withMovements)
            std::fill_n(state.begin(), desc.numMovements, 0.0f);
        writer_->Write(time_, i, state);
    }
}

} // namespace input_recording
