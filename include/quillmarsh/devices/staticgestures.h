// Static gestures: postures of a hand, recognised from one reading of a glove.
#ifndef QUILLMARSH_DEVICES_STATICGESTURES_H
#define QUILLMARSH_DEVICES_STATICGESTURES_H

#include <quillmarsh/devices/glove.h>

#include <vector>

namespace quillmarsh::static_gestures
{

/// Band of a sensor's normalized flexure. The thresholds belong to the bands outside of them, the centre to the upper
/// half.
enum eFlexure : unsigned int
{
    Unflexed = 0,
    PartlyFlexed,
    Flexed,
    BelowCenter,
    AboveCenter
};

/// Borders of the bands of each sensor. A value type.
class QUILLMARSH_API Thresholds
{
public:
    /// With the default values.
    Thresholds();

    /// 0.4, 0.6 and 0.5 for every sensor.
    void ResetDefaultValues();
    /// Each value is kept between 0 and 1, and `flexed` at `unflexed` or above. NaN counts as the default.
    void SetValues(eGloveSensor sensor, float unflexed, float flexed, float center);

    /// @name Values of a sensor
    /// @{
    float GetUnflexed(eGloveSensor sensor) const { return unflexed_[sensor]; }
    float GetFlexed(eGloveSensor sensor) const { return flexed_[sensor]; }
    float GetCenter(eGloveSensor sensor) const { return center_[sensor]; }
    /// @}

private:
    float unflexed_[Glove::s_numSensors];
    float flexed_[Glove::s_numSensors];
    float center_[Glove::s_numSensors];
};

/// What a gesture wants of one sensor. A value type.
struct Condition
{
    /// Partly flexed wrist, which is no more than a value to begin with.
    Condition() = default;
    Condition(eGloveSensor newSensor, eFlexure newFlexure) : sensor(newSensor), flexure(newFlexure) {}

    eGloveSensor sensor = WristYaw;
    /// A value outside of the enumeration never holds.
    eFlexure flexure = PartlyFlexed;
};

/// Named set of conditions, at most one for each sensor, all of which hold while the hand makes the gesture. Without
/// conditions it is always made. A value type.
class QUILLMARSH_API Gesture
{
public:
    Gesture(unsigned int id, string const &name);

    /// @name Identity
    /// @{
    unsigned int GetID() const { return id_; }
    void SetID(unsigned int id) { id_ = id; }
    string const &GetName() const { return name_; }
    void SetName(string const &name) { name_ = name; }
    /// @}

    /// @name Conditions
    /// @{
    unsigned int GetNumConditions() const { return static_cast<unsigned int>(conditions_.size()); }
    /// Condition by index. Asserts "Index out of range." past the end, and gives a default one then.
    Condition const &GetCondition(unsigned int index) const;
    void ClearConditions() { conditions_.clear(); }
    void AddCondition(eGloveSensor sensor, eFlexure flexure);
    /// Appends the condition, and drops an earlier one on the same sensor.
    void AddCondition(Condition const &condition);
    /// Does nothing when there is none on that sensor.
    void RemoveCondition(eGloveSensor sensor);
    /// @}

private:
    std::vector<Condition> conditions_;
    unsigned int id_;
    string name_;
};

/// Tells which gestures a hand makes.
///
/// Several gestures can be active at once; who wants one takes the first in the order of registration:
///
///     for (Gesture const *gesture = analyzer.GetFirstActiveGesture(glove); gesture;
///          gesture = analyzer.GetNextActiveGesture(glove))
///         GetConOut() << gesture->GetName() << nl;
///
/// Ids are unique, names need not be. A pointer to a gesture is good until the list changes, and every change starts a
/// scan anew. One thread at a time, for reading too, under a sentry of the glove's device.
class QUILLMARSH_API GestureAnalyzer
{
public:
    /// With the standard gestures.
    GestureAnalyzer();

    /// The thresholds of all gestures.
    void SetThresholds(Thresholds const &thresholds) { thresholds_ = thresholds; }

    /// @name Registered gestures
    /// @{

    /// Registers the standard gestures behind all others, each in place of the one that has its id.
    void RegisterDefaultGestures();
    /// Appends a copy, in place of a gesture with the same id.
    void Register(Gesture const &gesture);
    /// Removes the first match, if there is one.
    void Unregister(unsigned int id);
    /// Removes the first match, if there is one.
    void Unregister(string const &name);
    void UnregisterAll();
    /// The first match, or null.
    Gesture const *FindRegisteredGesture(unsigned int id) const;
    /// The first match, or null; case matters.
    Gesture const *FindRegisteredGesture(string const &name) const;

    /// @}
    /// @name Recognition
    /// @{

    /// Whether all conditions hold. The gesture need not be registered. A sensor that the glove does not have counts
    /// with the reading that it shows.
    bool IsGestureActive(Glove const &glove, Gesture const &gesture) const;
    /// False also when there is no such gesture.
    bool IsGestureActive(Glove const &glove, unsigned int id) const;
    /// False also when there is no such gesture.
    bool IsGestureActive(Glove const &glove, string const &name) const;
    /// Starts a scan. Null when no gesture is active.
    Gesture const *GetFirstActiveGesture(Glove const &glove) const;
    /// Goes on with the scan. Null at its end.
    Gesture const *GetNextActiveGesture(Glove const &glove) const;

    /// @}

private:
    bool DoesConditionHold(Glove const &glove, Condition const &condition) const;

    std::vector<Gesture> gestures_;
    Thresholds thresholds_;
    mutable unsigned int scanCursor_ = 0;
};

/// Gestures that every analyzer begins with. They differ from a Gesture in what their constructors fill in only.
namespace standard_gestures
{

/// All fingers flexed.
class QUILLMARSH_API Grab : public Gesture
{
public:
    /// Takes the id 0.
    explicit Grab(string const &name);
};

/// All fingers stretched.
class QUILLMARSH_API Stop : public Gesture
{
public:
    /// Takes the id 1.
    explicit Stop(string const &name);
};

/// Only the thumb stretched.
class QUILLMARSH_API ThumbUp : public Gesture
{
public:
    /// Takes the id 2.
    explicit ThumbUp(string const &name);
};

/// The four fingers flexed, the thumb anyhow, as in the gestures below.
class QUILLMARSH_API Fist : public Gesture
{
public:
    /// Takes the id 3.
    explicit Fist(string const &name);
};

/// The four fingers stretched.
class QUILLMARSH_API FlatHand : public Gesture
{
public:
    /// Takes the id 4.
    explicit FlatHand(string const &name);
};

/// Only the index finger stretched.
class QUILLMARSH_API IndexPoint : public Gesture
{
public:
    /// Takes the id 5.
    explicit IndexPoint(string const &name);
};

/// Only the index finger flexed.
class QUILLMARSH_API NotIndex : public Gesture
{
public:
    /// Takes the id 6.
    explicit NotIndex(string const &name);
};

/// Index and middle finger stretched.
class QUILLMARSH_API DoublePoint : public Gesture
{
public:
    /// Takes the id 7.
    explicit DoublePoint(string const &name);
};

/// Only the pinky flexed.
class QUILLMARSH_API TriplePoint : public Gesture
{
public:
    /// Takes the id 8.
    explicit TriplePoint(string const &name);
};

/// Only the pinky stretched.
class QUILLMARSH_API PinkyPoint : public Gesture
{
public:
    /// Takes the id 9.
    explicit PinkyPoint(string const &name);
};

/// Only the middle finger stretched.
class QUILLMARSH_API UpYours : public Gesture
{
public:
    /// Takes the id 10.
    explicit UpYours(string const &name);
};

/// Only the middle finger flexed.
class QUILLMARSH_API NotUpYours : public Gesture
{
public:
    /// Takes the id 11.
    explicit NotUpYours(string const &name);
};

/// Index finger and pinky stretched.
class QUILLMARSH_API Howzit : public Gesture
{
public:
    /// Takes the id 12.
    explicit Howzit(string const &name);
};

/// Index finger and pinky flexed.
class QUILLMARSH_API NotHowzit : public Gesture
{
public:
    /// Takes the id 13.
    explicit NotHowzit(string const &name);
};

/// Only the ring finger flexed.
class QUILLMARSH_API NotRing : public Gesture
{
public:
    /// Takes the id 14.
    explicit NotRing(string const &name);
};

/// Wrist not rolled.
class QUILLMARSH_API RollNeutral : public Gesture
{
public:
    /// Takes the id 15.
    explicit RollNeutral(string const &name);
};

/// Wrist rolled to the left.
class QUILLMARSH_API RollLeft : public Gesture
{
public:
    /// Takes the id 16.
    explicit RollLeft(string const &name);
};

/// Wrist rolled to the right.
class QUILLMARSH_API RollRight : public Gesture
{
public:
    /// Takes the id 17.
    explicit RollRight(string const &name);
};

/// Wrist not pitched.
class QUILLMARSH_API PitchNeutral : public Gesture
{
public:
    /// Takes the id 18.
    explicit PitchNeutral(string const &name);
};

/// Wrist pitched up.
class QUILLMARSH_API PitchUp : public Gesture
{
public:
    /// Takes the id 19.
    explicit PitchUp(string const &name);
};

/// Wrist pitched down.
class QUILLMARSH_API PitchDown : public Gesture
{
public:
    /// Takes the id 20.
    explicit PitchDown(string const &name);
};

} // namespace standard_gestures

} // namespace quillmarsh::static_gestures

#endif
