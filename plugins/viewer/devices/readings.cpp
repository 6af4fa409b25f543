#include "readings.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/devices/gamecontroller.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/positiontracker.h>
#include <quillmarsh/framework/samplereadsentry.h>
#include <quillmarsh/mathtools/transforms.h>

namespace viewer
{

using namespace quillmarsh;

namespace
{

double Widen(float value)
{
    return static_cast<double>(value);
}

void Read(Keyboard const &keyboard, Readings &readings)
{
    for (unsigned int key = 0; key < e_key_none; ++key)
    {
        if (keyboard.KeyPressed(static_cast<eKey>(key)) != 0)
            readings.keys.push_back(GetKeyName(static_cast<eKey>(key)));
    }
}

void Read(Mouse const &mouse, Readings &readings)
{
    constexpr unsigned int numButtons = 6;
    readings.axes.push_back({"X", static_cast<double>(mouse.GetPositionX()), 0, 0, 0});
    readings.axes.push_back({"Y", static_cast<double>(mouse.GetPositionY()), 0, 0, 0});
    readings.axes.push_back({"Wheel", static_cast<double>(mouse.GetDeltaWheel()), -120, 120, 0});
    for (unsigned int button = 0; button < numButtons; ++button)
        readings.buttons.push_back(mouse.ButtonPressed(static_cast<eMouseButton>(button)) != 0);
}

void Read(OrientationTracker const &tracker, Readings &readings)
{
    readings.pose.resize(3);
    tracker.GetOrientation(readings.pose[0], readings.pose[1], readings.pose[2]);
    mat3 rotation;
    GenerateRotateMV(rotation, readings.pose[0], readings.pose[1], readings.pose[2]);
    float heading = 0;
    float pitch = 0;
    float roll = 0;
    FactorEulerHPR_MV(rotation, heading, pitch, roll);
    readings.axes.push_back({"Heading", Widen(heading), -180, 180, 1});
    readings.axes.push_back({"Pitch", Widen(pitch), -180, 180, 1});
    readings.axes.push_back({"Roll", Widen(roll), -180, 180, 1});
}

void Read(PositionTracker const &tracker, Readings &readings)
{
    vec3 const &position = tracker.GetPosition();
    readings.axes.push_back({"X", Widen(position.x), 0, 0, 3});
    readings.axes.push_back({"Y", Widen(position.y), 0, 0, 3});
    readings.axes.push_back({"Z", Widen(position.z), 0, 0, 3});
}

void Read(Glove const &glove, Readings &readings)
{
    for (unsigned int i = 0; i < Glove::s_numSensors; ++i)
    {
        auto const sensor = static_cast<eGloveSensor>(i);
        if (glove.IsSupportedSensor(sensor))
            readings.axes.push_back(
                {FormatSensorName(Glove::GetSensorName(sensor)), Widen(glove.GetNormalizedFlexure(sensor)), 0, 1, 2});
    }
}

void Read(GameController const &controller, Readings &readings)
{
    constexpr char const *names[] = {"X", "Y", "Z", "RX", "RY", "RZ"};
    for (unsigned int axis = 0; axis < GameController::s_numAxes; ++axis)
    {
        if (controller.HasAxis(static_cast<GameController::eAxis>(axis)))
            readings.axes.push_back(
                {names[axis], Widen(controller.GetAxisPosition(static_cast<GameController::eAxis>(axis))), -1, 1, 2});
    }
    for (unsigned int slider = 0; slider < controller.GetNumSliders(); ++slider)
        readings.axes.push_back(
            {"Slider " + MakeString(slider + 1), Widen(controller.GetSliderPosition(slider)), -1, 1, 2});
    for (unsigned int hat = 0; hat < controller.GetNumPOVHats(); ++hat)
        readings.hats.push_back(Widen(controller.GetPOVHatPosition(hat)));
    for (unsigned int button = 0; button < controller.GetNumButtons(); ++button)
        readings.buttons.push_back(controller.ButtonPressed(button) != 0);
}

template<typename Controller>
bool ReadAs(HIDController const &controller, Readings &readings)
{
    auto const *const typed = dynamic_cast<Controller const *>(&controller);
    if (typed != nullptr)
        Read(*typed, readings);
    return typed != nullptr;
}

void ReadGestures(HIDController const &controller, static_gestures::GestureAnalyzer const &analyzer, Readings &readings)
{
    auto const *const glove = dynamic_cast<Glove const *>(&controller);
    if (glove == nullptr)
        return;
    for (static_gestures::Gesture const *gesture = analyzer.GetFirstActiveGesture(*glove); gesture != nullptr;
         gesture = analyzer.GetNextActiveGesture(*glove))
        readings.gestures.push_back(gesture->GetName());
}

/// True if reading takes away what others have not read yet: movements, and what was pressed for a moment.
bool IsConsumedByReading(HIDController &controller)
{
    HumanInterfaceDevice const *const device = controller.GetParentHIDPtr();
    bool const hasMovements =
        dynamic_cast<Mouse *>(&controller) != nullptr || dynamic_cast<Keyboard *>(&controller) != nullptr;
    return hasMovements && device != nullptr && device->IsAsyncSamplingActive();
}

} // namespace

Readings ReadController(HIDController &controller, static_gestures::GestureAnalyzer const &analyzer)
{
    Readings readings;
    if (IsConsumedByReading(controller))
    {
        readings.note = "A thread samples it, for one reader.";
        return readings;
    }
    HumanInterfaceDevice &device = controller.GetParentHID();
    // Takes no second lock while another reader still holds its own.
    AsyncSampleReadSentry const sentry(device, !device.IsSampledDataLocked());
    bool const isKnown = ReadAs<Keyboard>(controller, readings) || ReadAs<Mouse>(controller, readings) ||
                         ReadAs<OrientationTracker>(controller, readings) ||
                         ReadAs<PositionTracker>(controller, readings) || ReadAs<Glove>(controller, readings) ||
                         ReadAs<GameController>(controller, readings);
    ReadGestures(controller, analyzer, readings);
    if (!isKnown)
        readings.note = "The viewer does not know this kind of controller.";
    return readings;
}

string FormatSensorName(string const &name)
{
    string text;
    for (char const c : name)
    {
        if (c >= 'A' && c <= 'Z' && !text.empty())
            text += ' ';
        text += c;
    }
    string const joint = " Joint";
    std::size_t const place = text.find(joint);
    return place == string::npos ? text : text.erase(place, joint.size());
}

} // namespace viewer
