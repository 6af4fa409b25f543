// Static gestures: postures of a hand, recognised from one reading of a glove.
#ifndef QUILLMARSH_DEVICES_STATICGESTURES_H
#define QUILLMARSH_DEVICES_STATICGESTURES_H

#include <quillmarsh/devices/glove.h>

#include <vector>

namespace quillmarsh::static_gestures
{

/// Band of a sensor's normalized flexure. A flexure equal to a threshold is unflexed or flexed, one equal to the centre
/// is above the centre.
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
    /// Sets the default values.
    Thresholds();

    /// Sets 0.4, 0.6 and 0.5 for every sensor.
    void ResetDefaultValues();
    /// Sets the values of a sensor. Each is clamped to 0 to 1, and `flexed` is at least `unflexed`. NaN counts as the
    /// default.
    void SetValues(eGloveSensor sensor, float unflexed, float flexed, float center);

    /// @name Values of a sensor
    /// As SetValues() has stored them.
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

/// What a gesture requires of one sensor. A value type.
struct Condition
{
    /// Sets a partly flexed wrist, which has no special meaning.
    Condition() = default;
    /// Takes sensor and flexure.
    Condition(eGloveSensor newSensor, eFlexure newFlexure) : sensor(newSensor), flexure(newFlexure) {}

    eGloveSensor sensor = WristYaw;
    /// With a value that is no enumerator the condition never holds.
    eFlexure flexure = PartlyFlexed;
};

/// Named set of conditions, at most one for each sensor. The hand makes the gesture while all conditions hold. A
/// gesture without conditions is always made. A value type.
class QUILLMARSH_API Gesture
{
public:
    /// Makes a gesture without conditions.
    Gesture(unsigned int id, string const &name);

    /// @name Identity
    /// The id is unique in an analyzer; the name is for users.
    /// @{
    unsigned int GetID() const { return id_; }
    void SetID(unsigned int id) { id_ = id; }
    string const &GetName() const { return name_; }
    void SetName(string const &name) { name_ = name; }
    /// @}

    /// @name Conditions
    /// @{

    /// Number of conditions.
    unsigned int GetNumConditions() const { return static_cast<unsigned int>(conditions_.size()); }
    /// Condition by index. Asserts "Index out of range." past the end, and gives a default one then.
    Condition const &GetCondition(unsigned int index) const;
    /// Removes all conditions.
    void ClearConditions() { conditions_.clear(); }
    /// Adds a condition, like the form below.
    void AddCondition(eGloveSensor sensor, eFlexure flexure);
    /// Appends the condition, and removes an earlier one on the same sensor.
    void AddCondition(Condition const &condition);
    /// Removes the condition on that sensor if there is one.
    void RemoveCondition(eGloveSensor sensor);

    /// @}

private:
    std::vector<Condition> conditions_;
    unsigned int id_;
    string name_;
};

/// Finds the gestures that a hand makes.
///
/// Several gestures can be active at once. They are found in the order of registration:
///
///     for (Gesture const *gesture = analyzer.GetFirstActiveGesture(glove); gesture;
///          gesture = analyzer.GetNextActiveGesture(glove))
///         GetConOut() << gesture->GetName() << nl;
///
/// Ids are unique, names need not be. A pointer to a gesture is good until the list changes, and every change restarts
/// a scan. One thread at a time, also for reading, under a sentry of the glove's device.
class QUILLMARSH_API GestureAnalyzer
{
public:
    /// Registers the standard gestures.
    GestureAnalyzer();

    /// Sets the thresholds of all gestures.
    void SetThresholds(Thresholds const &thresholds) { thresholds_ = thresholds; }

    /// @name Registered gestures
    /// @{

    /// Registers the standard gestures behind all others. Each replaces a gesture with the same id.
    void RegisterDefaultGestures();
    /// Appends a copy of the gesture. It replaces a gesture with the same id.
    void Register(Gesture const &gesture);
    /// Removes the first match, if there is one.
    void Unregister(unsigned int id);
    /// Removes the first match, if there is one.
    void Unregister(string const &name);
    /// Removes all gestures.
    void UnregisterAll();
    /// The first match; null without one.
    Gesture const *FindRegisteredGesture(unsigned int id) const;
    /// The first match, with the same upper and lower case; null without one.
    Gesture const *FindRegisteredGesture(string const &name) const;

    /// @}
    /// @name Recognition
    /// @{

    /// True when all conditions hold. The gesture need not be registered. A sensor that the glove does not support
    /// counts with the reading that it shows.
    bool IsGestureActive(Glove const &glove, Gesture const &gesture) const;
    /// True when the registered gesture is active; false also when there is no such gesture.
    bool IsGestureActive(Glove const &glove, unsigned int id) const;
    /// True when the registered gesture is active; false also when there is no such gesture.
    bool IsGestureActive(Glove const &glove, string const &name) const;
    /// Starts a scan. Returns the first active gesture, null without one.
    Gesture const *GetFirstActiveGesture(Glove const &glove) const;
    /// Continues the scan. Returns the next active gesture, null at the end.
    Gesture const *GetNextActiveGesture(Glove const &glove) const;

    /// @}

private:
    bool DoesConditionHold(Glove const &glove, Condition const &condition) const;

    std::vector<Gesture> gestures_;
    Thresholds thresholds_;
    mutable unsigned int scanCursor_ = 0;
};

/// Gestures that every analyzer has at first. They differ from a Gesture only in what their constructors set.
namespace standard_gestures
{

/// All fingers flexed.
class QUILLMARSH_API Grab : public Gesture
{
public:
    /// Sets the id 0 and the conditions.
    explicit Grab(string const &name);
};

/// All fingers stretched.
class QUILLMARSH_API Stop : public Gesture
{
public:
    /// Sets the id 1 and the conditions.
    explicit Stop(string const &name);
};

/// Only the thumb stretched.
class QUILLMARSH_API ThumbUp : public Gesture
{
public:
    /// Sets the id 2 and the conditions.
    explicit ThumbUp(string const &name);
};

/// The four fingers flexed, the thumb anyhow, as in the gestures below.
class QUILLMARSH_API Fist : public Gesture
{
public:
    /// Sets the id 3 and the conditions.
    explicit Fist(string const &name);
};

/// The four fingers stretched.
class QUILLMARSH_API FlatHand : public Gesture
{
public:
    /// Sets the id 4 and the conditions.
    explicit FlatHand(string const &name);
};

/// Only the index finger stretched.
class QUILLMARSH_API IndexPoint : public Gesture
{
public:
    /// Sets the id 5 and the conditions.
    explicit IndexPoint(string const &name);
};

/// Only the index finger flexed.
class QUILLMARSH_API NotIndex : public Gesture
{
public:
    /// Sets the id 6 and the conditions.
    explicit NotIndex(string const &name);
};

/// Index and middle finger stretched.
class QUILLMARSH_API DoublePoint : public Gesture
{
public:
    /// Sets the id 7 and the conditions.
    explicit DoublePoint(string const &name);
};

/// Only the pinky flexed.
class QUILLMARSH_API TriplePoint : public Gesture
{
public:
    /// Sets the id 8 and the conditions.
    explicit TriplePoint(string const &name);
};

/// Only the pinky stretched.
class QUILLMARSH_API PinkyPoint : public Gesture
{
public:
    /// Sets the id 9 and the conditions.
    explicit PinkyPoint(string const &name);
};

/// Only the middle finger stretched.
class QUILLMARSH_API UpYours : public Gesture
{
public:
    /// Sets the id 10 and the conditions.
    explicit UpYours(string const &name);
};

/// Only the middle finger flexed.
class QUILLMARSH_API NotUpYours : public Gesture
{
public:
    /// Sets the id 11 and the conditions.
    explicit NotUpYours(string const &name);
};

/// Index finger and pinky stretched.
class QUILLMARSH_API Howzit : public Gesture
{
public:
    /// Sets the id 12 and the conditions.
    explicit Howzit(string const &name);
};

/// Index finger and pinky flexed.
class QUILLMARSH_API NotHowzit : public Gesture
{
public:
    /// Sets the id 13 and the conditions.
    explicit NotHowzit(string const &name);
};

/// Only the ring finger flexed.
class QUILLMARSH_API NotRing : public Gesture
{
public:
    /// Sets the id 14 and the conditions.
    explicit NotRing(string const &name);
};

/// Wrist not rolled.
class QUILLMARSH_API RollNeutral : public Gesture
{
public:
    /// Sets the id 15 and the conditions.
    explicit RollNeutral(string const &name);
};

/// Wrist rolled to the left.
class QUILLMARSH_API RollLeft : public Gesture
{
public:
    /// Sets the id 16 and the conditions.
    explicit RollLeft(string const &name);
};

/// Wrist rolled to the right.
class QUILLMARSH_API RollRight : public Gesture
{
public:
    /// Sets the id 17 and the conditions.
    explicit RollRight(string const &name);
};

/// Wrist not pitched.
class QUILLMARSH_API PitchNeutral : public Gesture
{
public:
    /// Sets the id 18 and the conditions.
    explicit PitchNeutral(string const &name);
};

/// Wrist pitched up.
class QUILLMARSH_API PitchUp : public Gesture
{
public:
    /// Sets the id 19 and the conditions.
    explicit PitchUp(string const &name);
};

/// Wrist pitched down.
class QUILLMARSH_API PitchDown : public Gesture
{
public:
    /// Sets the id 20 and the conditions.
    explicit PitchDown(string const &name);
};

} // namespace standard_gestures

} // namespace quillmarsh::static_gestures

#endif
