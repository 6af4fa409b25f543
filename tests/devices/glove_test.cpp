// Glove and its static gestures.
#include <quillmarsh/devices/staticgestures.h>

#include "tests/support/controller_device.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillmarsh::tests
{
namespace
{

using namespace static_gestures;

constexpr float s_notANumber = std::numeric_limits<float>::quiet_NaN();

class TestGlove : public AttachedController<Glove>
{
public:
    using Glove::DeriveAnglesFromFlexures;
    using Glove::ReportHardwareCaps_Measurement;
    using Glove::ReportHardwareCaps_Sensor;
    using Glove::SetFlexure;
    using Glove::SetRawValue;

    /// Returns the normalized flexure after a sample with this flexure.
    float Show(eGloveSensor sensor, float flexure)
    {
        SetFlexure(sensor, flexure);
        PreSampleUpdate();
        PostSampleUpdate();
        return GetNormalizedFlexure(sensor);
    }
    /// Makes normalized flexures equal to flexures.
    std::pair<float, float> Range(eGloveSensor sensor) const { return {GetMinFlexure(sensor), GetMaxFlexure(sensor)}; }
    void LearnFullRange()
    {
        for (unsigned int i = 0; i < s_numSensors; ++i)
        {
            Show(static_cast<eGloveSensor>(i), 1.0f);
            Show(static_cast<eGloveSensor>(i), 0.0f);
        }
    }
};

TEST(Glove, LearnsTheRangeOfEachSensor)
{
    TestGlove glove;
    EXPECT_EQ(glove.Show(RingJointInner, 0.25f), 0.5f) << "no range yet";
    EXPECT_EQ(glove.Range(RingJointInner), std::pair(0.25f, 0.25f));
    EXPECT_EQ(glove.Show(RingJointInner, 0.75f), 1.0f);
    EXPECT_EQ(glove.Show(RingJointInner, 0.5f), 0.5f);
    EXPECT_EQ(glove.Show(RingJointInner, -0.25f), 0.0f);
    EXPECT_EQ(glove.Show(PinkyJointInner, 0.0f), 0.5f) << "a sensor of its own";
    glove.SetEqualValueFlexureNormalization(PinkyJointInner, 0.125f);
    EXPECT_EQ(glove.Show(PinkyJointInner, 0.0f), 0.125f);

    glove.ResetInputReadings();
    EXPECT_EQ(glove.GetNormalizedFlexure(RingJointInner), 0.0f);
    EXPECT_EQ(glove.GetMaxFlexure(RingJointInner), 0.75f) << "the calibration is kept";
}

TEST(Glove, KeepsASetRangeWithoutAutoCalibration)
{
    TestGlove glove;
    glove.ActivateFlexureAutoCalibration(false, true);
    EXPECT_EQ(glove.Show(ThumbRoll, 0.25f), -0.75f) << "the range that nothing has opened";

    glove.SetMaxFlexure(ThumbRoll, 0.75f);
    EXPECT_EQ(glove.GetMinFlexure(ThumbRoll), 0.25f) << "widened to the present flexure";
    EXPECT_EQ(glove.Show(ThumbRoll, 1.0f), 1.5f);
    EXPECT_EQ(glove.GetMaxFlexure(ThumbRoll), 0.75f);
    glove.SetFlexure(ThumbRoll, 0.1f);
    glove.SetMinFlexure(ThumbRoll, 0.3f);
    EXPECT_EQ(glove.GetMinFlexure(ThumbRoll), 0.1f);

    glove.ActivateFlexureAutoCalibration(true, false);
    EXPECT_EQ(glove.GetMaxFlexure(ThumbRoll), 0.75f);
    glove.ActivateFlexureAutoCalibration(true, true);
    EXPECT_EQ(glove.Range(ThumbRoll), std::pair(1.0f, 0.0f));

    glove.SetFlexure(ThumbRoll, 0.25f);
    glove.SetMinFlexure(ThumbRoll, s_notANumber);
    glove.SetMaxFlexure(ThumbRoll, s_notANumber);
    glove.SetEqualValueFlexureNormalization(ThumbRoll, s_notANumber);
    EXPECT_EQ(glove.Range(ThumbRoll), std::pair(0.25f, 0.25f));
    EXPECT_EQ(glove.Show(ThumbRoll, 0.25f), 0.5f);
}

TEST(Glove, MapsFlexuresToAngles)
{
    TestGlove glove;
    std::pair<eGloveSensor, float> const cases[] = {
        {WristRoll, 45}, {AbductionThumbIndex, 30}, {AbductionRingPinky, 30}, {ThumbRoll, 60}, {PinkyJointOuter, 61}};
    for (auto const &[sensor, angle] : cases)
        glove.SetFlexure(sensor, 0.75f);
    glove.SetFlexureToAngleBias(PinkyJointOuter, 1.0f);
    EXPECT_EQ(glove.GetAngle(ThumbRoll), 0.0f);
    glove.DeriveAnglesFromFlexures();
    for (auto const &[sensor, angle] : cases)
        EXPECT_EQ(glove.GetAngle(sensor), angle) << sensor;
}

TEST(Glove, DumpsItsCapabilities)
{
    TestGlove glove;
    glove.ReportHardwareCaps_Measurement(true);
    glove.ReportHardwareCaps_Sensor(PinkyJointOuter, true);
    string const text = DumpText(glove);
    EXPECT_TRUE(text.starts_with("\tAngleMeasurement....: true\n\tWristYaw............: false\n")) << text;
    EXPECT_TRUE(text.ends_with("\n\tPinkyJointMiddle....: false\n\tPinkyJointOuter.....: true\n")) << text;
    EXPECT_EQ(Glove::GetSensorName(static_cast<eGloveSensor>(22)), "Unknown");
}

string ListActive(GestureAnalyzer const &analyzer, TestGlove const &glove)
{
    string names;
    for (Gesture const *gesture = analyzer.GetFirstActiveGesture(glove); gesture;
         gesture = analyzer.GetNextActiveGesture(glove))
        names += gesture->GetName() + " ";
    return names;
}

TEST(StandardGestures, AreRecognisedInTheirOrder)
{
    TestGlove glove;
    GestureAnalyzer const analyzer;
    EXPECT_EQ(ListActive(analyzer, glove), "Stop FlatHand RollLeft PitchUp ") << "at rest";
    glove.LearnFullRange();

    // Digits for thumb to pinky: 0 is stretched, 9 is flexed.
    std::pair<char const *, char const *> const hands[] = {
        {"99999", "Grab Fist "},   {"00000", "Stop FlatHand "}, {"09999", "ThumbUp Fist "}, {"59999", "Fist "},
        {"50000", "FlatHand "},    {"90999", "IndexPoint "},    {"09000", "NotIndex "},     {"50099", "DoublePoint "},
        {"00009", "TriplePoint "}, {"59990", "PinkyPoint "},    {"59099", "UpYours "},      {"00900", "NotUpYours "},
        {"50990", "Howzit "},      {"09009", "NotHowzit "},     {"50090", "NotRing "},      {"00500", ""},
        {"99099", "UpYours "},     {"00990", "Howzit "},        {"99009", "NotHowzit "},    {"09900", ""},
    };
    constexpr eGloveSensor joints[] = {ThumbJointInner, IndexJointInner, MiddleJointInner, RingJointInner,
                                       PinkyJointInner};
    for (auto const &[fingers, names] : hands)
    {
        for (unsigned int i = 0; i < 5; ++i)
            glove.Show(joints[i], static_cast<float>(fingers[i] - '0') / 9.0f);
        EXPECT_EQ(ListActive(analyzer, glove), string(names) + "RollLeft PitchUp ") << fingers;
    }
    glove.Show(RingJointInner, 0.5f);
    char const *const rolls[] = {"RollLeft ", "RollNeutral ", "RollRight "};
    char const *const pitches[] = {"PitchUp ", "PitchNeutral ", "PitchDown "};
    for (unsigned int i = 0; i < 9; ++i)
    {
        glove.Show(WristRoll, static_cast<float>(i / 3) / 2.0f);
        glove.Show(WristPitch, static_cast<float>(i % 3) / 2.0f);
        EXPECT_EQ(ListActive(analyzer, glove), string(rolls[i / 3]) + pitches[i % 3]);
    }
}

TEST(GestureAnalyzer, DividesFlexuresIntoBands)
{
    TestGlove glove;
    glove.LearnFullRange();
    GestureAnalyzer analyzer;
    Thresholds thresholds;
    auto const expectThresholds = [&thresholds](float unflexed, float flexed, float center)
    {
        EXPECT_EQ(std::tuple(thresholds.GetUnflexed(MiddleJointOuter), thresholds.GetFlexed(MiddleJointOuter),
                             thresholds.GetCenter(MiddleJointOuter)),
                  std::tuple(unflexed, flexed, center));
    };
    // Active bands for each flexure: unflexed, partly flexed, flexed, below and above centre, and an unknown band.
    auto const holds = [&](float flexure)
    {
        analyzer.SetThresholds(thresholds);
        glove.Show(MiddleJointOuter, flexure);
        string bands;
        for (unsigned int band = 0; band < 6; ++band)
        {
            Gesture gesture(100, "one");
            gesture.AddCondition(MiddleJointOuter, static_cast<eFlexure>(band));
            bands += analyzer.IsGestureActive(glove, gesture) ? '1' : '0';
        }
        return bands;
    };
    thresholds.SetValues(MiddleJointOuter, 0.25f, 0.75f, 0.5f);
    EXPECT_EQ(holds(0.25f), "100100");
    EXPECT_EQ(holds(0.3f), "010100");
    EXPECT_EQ(holds(0.5f), "010010");
    EXPECT_EQ(holds(0.7f), "010010");
    EXPECT_EQ(holds(0.75f), "001010");
    thresholds.SetValues(MiddleJointOuter, 0.7f, 0.2f, 2.0f);
    expectThresholds(0.7f, 0.7f, 1);
    EXPECT_EQ(holds(0.7f), "101100");
    thresholds.SetValues(MiddleJointOuter, s_notANumber, s_notANumber, s_notANumber);
    expectThresholds(0.4f, 0.6f, 0.5f);
}

TEST(Gesture, HoldsOneConditionForEachSensor)
{
    Gesture gesture(7, "seven");
    gesture.AddCondition(WristRoll, Flexed);
    gesture.AddCondition(WristYaw, Unflexed);
    gesture.AddCondition(gesture.GetCondition(0));
    gesture.AddCondition(WristYaw, AboveCenter);
    ASSERT_EQ(gesture.GetNumConditions(), 2u);
    EXPECT_TRUE(gesture.GetCondition(0).sensor == WristRoll && gesture.GetCondition(0).flexure == Flexed);
    EXPECT_EQ(gesture.GetCondition(1).flexure, AboveCenter);
    gesture.RemoveCondition(ThumbRoll);
    gesture.RemoveCondition(WristRoll);
    EXPECT_EQ(gesture.GetNumConditions(), 1u);
    EXPECT_TRUE(Condition().sensor == WristYaw && Condition().flexure == PartlyFlexed);
}

TEST(GestureAnalyzer, KeepsIdsUniqueAndRestartsAfterEachChange)
{
    TestGlove const glove;
    GestureAnalyzer analyzer;
    analyzer.Register(Gesture(1, "Always"));
    analyzer.Register(Gesture(50, "Always"));
    EXPECT_EQ(ListActive(analyzer, glove), "FlatHand RollLeft PitchUp Always Always ");
    EXPECT_EQ(analyzer.FindRegisteredGesture("Always")->GetID(), 1u);
    EXPECT_EQ(analyzer.FindRegisteredGesture("always"), nullptr);
    EXPECT_EQ(analyzer.FindRegisteredGesture(21), nullptr);
    EXPECT_TRUE(analyzer.IsGestureActive(glove, 50) && analyzer.IsGestureActive(glove, "PitchUp"));
    EXPECT_FALSE(analyzer.IsGestureActive(glove, 51) || analyzer.IsGestureActive(glove, "Stop"));

    EXPECT_EQ(analyzer.GetFirstActiveGesture(glove)->GetName(), "FlatHand");
    analyzer.SetThresholds(Thresholds());
    EXPECT_EQ(analyzer.GetNextActiveGesture(glove)->GetName(), "RollLeft");
    // A gesture that is in the list already moves to the end.
    analyzer.Register(*analyzer.FindRegisteredGesture(4));
    EXPECT_EQ(ListActive(analyzer, glove), "RollLeft PitchUp Always Always FlatHand ");
    analyzer.Unregister("Always");
    EXPECT_EQ(analyzer.GetNextActiveGesture(glove)->GetName(), "RollLeft");
    analyzer.Unregister(16);
    EXPECT_EQ(analyzer.GetNextActiveGesture(glove)->GetName(), "PitchUp");
    analyzer.RegisterDefaultGestures();
    EXPECT_EQ(ListActive(analyzer, glove), "Always Stop FlatHand RollLeft PitchUp ");
    analyzer.UnregisterAll();
    EXPECT_EQ(analyzer.GetFirstActiveGesture(glove), nullptr);
}

} // namespace
} // namespace quillmarsh::tests
