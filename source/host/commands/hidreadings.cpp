#include "hidreadings.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/devices/gamecontroller.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/positiontracker.h>
#include <quillmarsh/devices/staticgestures.h>
#include <quillmarsh/framework/samplereadsentry.h>
#include <quillmarsh/mathtools/transforms.h>

namespace quillmarsh::host
{

namespace
{

/// Joins pieces by ", ".
class Pieces
{
public:
    void Add(string const &piece) { text_ += (text_.empty() ? "" : ", ") + piece; }
    string const &Get() const { return text_; }

private:
    string text_;
};

string Round(double value, unsigned int precision)
{
    string text;
    ToStringFix(text, value, 0, precision);
    // No minus in front of what is rounded to zero.
    bool const isZero = text.find_first_not_of("-0.") == string::npos;
    return isZero && MatchNext(text, '-') ? text.substr(1) : text;
}

constexpr unsigned int s_numKeys = e_key_none;

string Describe(Keyboard const &keyboard)
{
    Pieces keys;
    for (unsigned int key = 0; key < s_numKeys; ++key)
    {
        if (keyboard.KeyPressed(static_cast<eKey>(key)) != 0)
            keys.Add(GetKeyName(static_cast<eKey>(key)));
    }
    return keys.Get().empty() ? "no key pressed" : keys.Get();
}

string Describe(Mouse const &mouse)
{
    Pieces pieces;
    pieces.Add("at " + MakeString(mouse.GetPositionX()) + " " + MakeString(mouse.GetPositionY()));
    if (mouse.GetDeltaWheel() != 0)
        pieces.Add("wheel " + MakeString(mouse.GetDeltaWheel()));
    static constexpr char const *s_buttons[] = {"left", "right", "middle", "extra 1", "extra 2", "extra 3"};
    for (unsigned int button = 0; button < std::size(s_buttons); ++button)
    {
        if (mouse.ButtonPressed(static_cast<eMouseButton>(button)) != 0)
            pieces.Add(string(s_buttons[button]) + " button");
    }
    return pieces.Get();
}

string Describe(OrientationTracker const &tracker)
{
    vec3 axes[3];
    tracker.GetOrientation(axes[0], axes[1], axes[2]);
    mat3 rotation;
    GenerateRotateMV(rotation, axes[0], axes[1], axes[2]);
    vec3 angles;
    FactorEulerHPR_MV(rotation, angles.x, angles.y, angles.z);
    return "head " + Round(angles.x, 1) + ", pitch " + Round(angles.y, 1) + ", roll " + Round(angles.z, 1);
}

string Describe(PositionTracker const &tracker)
{
    vec3 const &position = tracker.GetPosition();
    return "at " + Round(position.x, 3) + " " + Round(position.y, 3) + " " + Round(position.z, 3);
}

/// Flexures from the thumb to the little finger, each the one at the first joint that the glove measures.
string Describe(Glove const &glove)
{
    struct Finger
    {
        char const *name;
        eGloveSensor first;
        eGloveSensor last;
    };
    static constexpr Finger s_fingers[] = {{"thumb", ThumbJointInner, ThumbJointOuter},
                                           {"index", IndexJointInner, IndexJointOuter},
                                           {"middle", MiddleJointInner, MiddleJointOuter},
                                           {"ring", RingJointInner, RingJointOuter},
                                           {"little", PinkyJointInner, PinkyJointOuter}};
    Pieces pieces;
    for (Finger const &finger : s_fingers)
    {
        for (unsigned int sensor = finger.first; sensor <= finger.last; ++sensor)
        {
            if (!glove.IsSupportedSensor(static_cast<eGloveSensor>(sensor)))
                continue;
            pieces.Add(string(finger.name) + ' ' +
                       Round(glove.GetNormalizedFlexure(static_cast<eGloveSensor>(sensor)), 2));
            break;
        }
    }
    static_gestures::GestureAnalyzer analyzer;
    for (static_gestures::Gesture const *gesture = analyzer.GetFirstActiveGesture(glove); gesture != nullptr;
         gesture = analyzer.GetNextActiveGesture(glove))
        pieces.Add("gesture " + gesture->GetName());
    return pieces.Get();
}

string Describe(GameController const &controller)
{
    static constexpr char const *s_axes[] = {"x", "y", "z", "rx", "ry", "rz"};
    Pieces pieces;
    for (unsigned int axis = 0; axis < std::size(s_axes); ++axis)
    {
        if (controller.HasAxis(static_cast<GameController::eAxis>(axis)))
            pieces.Add(string(s_axes[axis]) + ' ' +
                       Round(controller.GetAxisPosition(static_cast<GameController::eAxis>(axis)), 2));
    }
    for (unsigned int slider = 0; slider < controller.GetNumSliders(); ++slider)
        pieces.Add("slider " + MakeString(slider + 1) + ' ' + Round(controller.GetSliderPosition(slider), 2));
    for (unsigned int hat = 0; hat < controller.GetNumPOVHats(); ++hat)
    {
        if (!controller.IsPOVHatCentered(hat))
            pieces.Add("hat " + MakeString(hat + 1) + ' ' + Round(controller.GetPOVHatPosition(hat), 0));
    }
    for (unsigned int button = 0; button < controller.GetNumButtons(); ++button)
    {
        if (controller.ButtonPressed(button) != 0)
            pieces.Add("button " + MakeString(button + 1));
    }
    return pieces.Get();
}

template<typename Controller>
bool DescribeAs(HIDController const &controller, string &text)
{
    auto const *const typed = dynamic_cast<Controller const *>(&controller);
    if (typed != nullptr)
        text = Describe(*typed);
    return typed != nullptr;
}

} // namespace

string DescribeReadings(HIDController &controller)
{
    AsyncSampleReadSentry const sentry(controller, true);
    string text;
    bool const isKnown = DescribeAs<Keyboard>(controller, text) || DescribeAs<Mouse>(controller, text) ||
                         DescribeAs<OrientationTracker>(controller, text) ||
                         DescribeAs<PositionTracker>(controller, text) || DescribeAs<Glove>(controller, text) ||
                         DescribeAs<GameController>(controller, text);
    return isKnown && !text.empty() ? text : "no readings";
}

} // namespace quillmarsh::host
