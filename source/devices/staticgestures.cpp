#include <quillmarsh/devices/staticgestures.h>

#include <quillmarsh/basetools/diagnostics.h>

#include "source/basetools/clamping.h"

#include <algorithm>

namespace quillmarsh::static_gestures
{

namespace
{

constexpr float s_defaultUnflexed = 0.4f;
constexpr float s_defaultFlexed = 0.6f;
constexpr float s_defaultCenter = 0.5f;

template<typename Predicate>
Gesture const *FindIf(std::vector<Gesture> const &gestures, Predicate const &predicate)
{
    auto const found = std::find_if(gestures.begin(), gestures.end(), predicate);
    return found == gestures.end() ? nullptr : &*found;
}

template<typename Predicate>
void EraseFirst(std::vector<Gesture> &gestures, Predicate const &predicate)
{
    auto const found = std::find_if(gestures.begin(), gestures.end(), predicate);
    if (found != gestures.end())
        gestures.erase(found);
}

auto HasID(unsigned int id)
{
    return [id](Gesture const &gesture) { return gesture.GetID() == id; };
}

auto HasName(string const &name)
{
    return [&name](Gesture const &gesture) { return gesture.GetName() == name; };
}

} // namespace

Thresholds::Thresholds()
{
    ResetDefaultValues();
}

void Thresholds::ResetDefaultValues()
{
    for (unsigned int sensor = 0; sensor < Glove::s_numSensors; ++sensor)
        SetValues(static_cast<eGloveSensor>(sensor), s_defaultUnflexed, s_defaultFlexed, s_defaultCenter);
}

void Thresholds::SetValues(eGloveSensor sensor, float unflexed, float flexed, float center)
{
    unflexed_[sensor] = ClampSetting(unflexed, 0.0f, 1.0f, s_defaultUnflexed);
    flexed_[sensor] = ClampSetting(flexed, unflexed_[sensor], 1.0f, s_defaultFlexed);
    center_[sensor] = ClampSetting(center, 0.0f, 1.0f, s_defaultCenter);
}

Gesture::Gesture(unsigned int id, string const &name) : id_(id), name_(name) {}

Condition const &Gesture::GetCondition(unsigned int index) const
{
    static Condition const s_none;
    bool const isThere = index < conditions_.size();
    QUILLMARSH_ASSERT(isThere, "Index out of range.");
    return isThere ? conditions_[index] : s_none;
}

void Gesture::AddCondition(eGloveSensor sensor, eFlexure flexure)
{
    AddCondition(Condition(sensor, flexure));
}

void Gesture::AddCondition(Condition const &condition)
{
    // Copied first: the condition may belong to this gesture.
    Condition const added = condition;
    RemoveCondition(added.sensor);
    conditions_.push_back(added);
}

void Gesture::RemoveCondition(eGloveSensor sensor)
{
    auto const found = std::find_if(conditions_.begin(), conditions_.end(),
                                    [sensor](Condition const &condition) { return condition.sensor == sensor; });
    if (found != conditions_.end())
        conditions_.erase(found);
}

GestureAnalyzer::GestureAnalyzer()
{
    RegisterDefaultGestures();
}

void GestureAnalyzer::RegisterDefaultGestures()
{
    using namespace standard_gestures;
    scanCursor_ = 0;
    Register(Grab("Grab"));
    Register(Stop("Stop"));
    Register(ThumbUp("ThumbUp"));
    Register(Fist("Fist"));
    Register(FlatHand("FlatHand"));
    Register(IndexPoint("IndexPoint"));
    Register(NotIndex("NotIndex"));
    Register(DoublePoint("DoublePoint"));
    Register(TriplePoint("TriplePoint"));
    Register(PinkyPoint("PinkyPoint"));
    Register(UpYours("UpYours"));
    Register(NotUpYours("NotUpYours"));
    Register(Howzit("Howzit"));
    Register(NotHowzit("NotHowzit"));
    Register(NotRing("NotRing"));
    Register(RollNeutral("RollNeutral"));
    Register(RollLeft("RollLeft"));
    Register(RollRight("RollRight"));
    Register(PitchNeutral("PitchNeutral"));
    Register(PitchUp("PitchUp"));
    Register(PitchDown("PitchDown"));
}

void GestureAnalyzer::Register(Gesture const &gesture)
{
    scanCursor_ = 0;
    // Copied before anything is removed: the gesture may belong to the list.
    Gesture added = gesture;
    Unregister(added.GetID());
    gestures_.push_back(std::move(added));
}

void GestureAnalyzer::Unregister(unsigned int id)
{
    scanCursor_ = 0;
    EraseFirst(gestures_, HasID(id));
}

void GestureAnalyzer::Unregister(string const &name)
{
    scanCursor_ = 0;
    EraseFirst(gestures_, HasName(name));
}

void GestureAnalyzer::UnregisterAll()
{
    scanCursor_ = 0;
    gestures_.clear();
}

Gesture const *GestureAnalyzer::FindRegisteredGesture(unsigned int id) const
{
    return FindIf(gestures_, HasID(id));
}

Gesture const *GestureAnalyzer::FindRegisteredGesture(string const &name) const
{
    return FindIf(gestures_, HasName(name));
}

bool GestureAnalyzer::IsGestureActive(Glove const &glove, Gesture const &gesture) const
{
    for (unsigned int i = 0; i < gesture.GetNumConditions(); ++i)
    {
        if (!DoesConditionHold(glove, gesture.GetCondition(i)))
            return false;
    }
    return true;
}

bool GestureAnalyzer::IsGestureActive(Glove const &glove, unsigned int id) const
{
    Gesture const *const gesture = FindRegisteredGesture(id);
    return gesture && IsGestureActive(glove, *gesture);
}

bool GestureAnalyzer::IsGestureActive(Glove const &glove, string const &name) const
{
    Gesture const *const gesture = FindRegisteredGesture(name);
    return gesture && IsGestureActive(glove, *gesture);
}

Gesture const *GestureAnalyzer::GetFirstActiveGesture(Glove const &glove) const
{
    scanCursor_ = 0;
    return GetNextActiveGesture(glove);
}

Gesture const *GestureAnalyzer::GetNextActiveGesture(Glove const &glove) const
{
    while (scanCursor_ < gestures_.size())
    {
        Gesture const &gesture = gestures_[scanCursor_++];
        if (IsGestureActive(glove, gesture))
            return &gesture;
    }
    return nullptr;
}

bool GestureAnalyzer::DoesConditionHold(Glove const &glove, Condition const &condition) const
{
    float const flexure = glove.GetNormalizedFlexure(condition.sensor);
    switch (condition.flexure)
    {
    case Unflexed:
        return flexure <= thresholds_.GetUnflexed(condition.sensor);
    case PartlyFlexed:
        return flexure > thresholds_.GetUnflexed(condition.sensor) && flexure < thresholds_.GetFlexed(condition.sensor);
    case Flexed:
        return flexure >= thresholds_.GetFlexed(condition.sensor);
    case BelowCenter:
        return flexure < thresholds_.GetCenter(condition.sensor);
    case AboveCenter:
        return flexure >= thresholds_.GetCenter(condition.sensor);
    }
    return false;
}

} // namespace quillmarsh::static_gestures
