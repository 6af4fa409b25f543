#include <quillmarsh/devices/staticgestures.h>

namespace quillmarsh::static_gestures::standard_gestures
{

namespace
{

/// Adds the conditions for the inner joints from the thumb to the pinky: "U" unflexed, "F" flexed, "-" no condition.
void AddFingers(Gesture &gesture, char const (&fingers)[6])
{
    constexpr eGloveSensor innerJoints[] = {ThumbJointInner, IndexJointInner, MiddleJointInner, RingJointInner,
                                            PinkyJointInner};
    for (unsigned int i = 0; i < 5; ++i)
    {
        if (fingers[i] != '-')
            gesture.AddCondition(innerJoints[i], fingers[i] == 'U' ? Unflexed : Flexed);
    }
}

} // namespace

Grab::Grab(string const &name) : Gesture(0, name)
{
    AddFingers(*this, "FFFFF");
}

Stop::Stop(string const &name) : Gesture(1, name)
{
    AddFingers(*this, "UUUUU");
}

ThumbUp::ThumbUp(string const &name) : Gesture(2, name)
{
    AddFingers(*this, "UFFFF");
}

Fist::Fist(string const &name) : Gesture(3, name)
{
    AddFingers(*this, "-FFFF");
}

FlatHand::FlatHand(string const &name) : Gesture(4, name)
{
    AddFingers(*this, "-UUUU");
}

IndexPoint::IndexPoint(string const &name) : Gesture(5, name)
{
    AddFingers(*this, "-UFFF");
}

NotIndex::NotIndex(string const &name) : Gesture(6, name)
{
    AddFingers(*this, "-FUUU");
}

DoublePoint::DoublePoint(string const &name) : Gesture(7, name)
{
    AddFingers(*this, "-UUFF");
}

TriplePoint::TriplePoint(string const &name) : Gesture(8, name)
{
    AddFingers(*this, "-UUUF");
}

PinkyPoint::PinkyPoint(string const &name) : Gesture(9, name)
{
    AddFingers(*this, "-FFFU");
}

UpYours::UpYours(string const &name) : Gesture(10, name)
{
    AddFingers(*this, "-FUFF");
}

NotUpYours::NotUpYours(string const &name) : Gesture(11, name)
{
    AddFingers(*this, "-UFUU");
}

Howzit::Howzit(string const &name) : Gesture(12, name)
{
    AddFingers(*this, "-UFFU");
}

NotHowzit::NotHowzit(string const &name) : Gesture(13, name)
{
    AddFingers(*this, "-FUUF");
}

NotRing::NotRing(string const &name) : Gesture(14, name)
{
    AddFingers(*this, "-UUFU");
}

RollNeutral::RollNeutral(string const &name) : Gesture(15, name)
{
    AddCondition(WristRoll, PartlyFlexed);
}

RollLeft::RollLeft(string const &name) : Gesture(16, name)
{
    AddCondition(WristRoll, Unflexed);
}

RollRight::RollRight(string const &name) : Gesture(17, name)
{
    AddCondition(WristRoll, Flexed);
}

PitchNeutral::PitchNeutral(string const &name) : Gesture(18, name)
{
    AddCondition(WristPitch, PartlyFlexed);
}

PitchUp::PitchUp(string const &name) : Gesture(19, name)
{
    AddCondition(WristPitch, Unflexed);
}

PitchDown::PitchDown(string const &name) : Gesture(20, name)
{
    AddCondition(WristPitch, Flexed);
}

} // namespace quillmarsh::static_gestures::standard_gestures
