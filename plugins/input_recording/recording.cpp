#include "recording.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/devices/gamecontroller.h>
#include <quillmarsh/devices/glove.h>
#include <quillmarsh/devices/keyboard.h>

#include <algorithm>

namespace input_recording
{

using namespace quillmarsh;

namespace
{

string GetKeyItemName(unsigned int index)
{
    return GetKeyName(static_cast<eKey>(index));
}

string GetNumberItemName(unsigned int index)
{
    return MakeString(index);
}

/// Appends a field with its values at rest.
void Add(KindDesc &desc, string const &name, eFieldType type, std::vector<float> const &rest)
{
    desc.fields.push_back(
        {name, type, static_cast<unsigned int>(desc.rest.size()), static_cast<unsigned int>(rest.size())});
    desc.rest.insert(desc.rest.end(), rest.begin(), rest.end());
}

KindDesc MakeKeyboard()
{
    KindDesc desc{"keyboard", "Keyboard", {}, {}, 0, &GetKeyItemName};
    Add(desc, "keys", eFieldType::e_set, std::vector<float>(e_key_none));
    return desc;
}

KindDesc MakeMouse()
{
    KindDesc desc{"mouse", "Mouse", {}, {}, 3, &GetNumberItemName};
    Add(desc, "move", eFieldType::e_movement, {0, 0});
    Add(desc, "wheel", eFieldType::e_movement, {0});
    Add(desc, "position", eFieldType::e_integers, {0, 0});
    Add(desc, "inside", eFieldType::e_flag, {0});
    Add(desc, "buttons", eFieldType::e_set, std::vector<float>(6));
    return desc;
}

KindDesc MakeOrientationTracker()
{
    KindDesc desc{"orientation-tracker", "OrientationTracker", {}, {}, 0, &GetNumberItemName};
    Add(desc, "angles", eFieldType::e_numbers, {0, 0, 0});
    Add(desc, "quaternion", eFieldType::e_numbers, {0, 0, 0, 1});
    return desc;
}

KindDesc MakePositionTracker()
{
    KindDesc desc{"position-tracker", "PositionTracker", {}, {}, 0, &GetNumberItemName};
    Add(desc, "position", eFieldType::e_numbers, {0, 0, 0});
    return desc;
}

KindDesc MakeGlove()
{
    KindDesc desc{"glove", "Glove", {}, {}, 0, &GetNumberItemName};
    for (unsigned int sensor = 0; sensor < Glove::s_numSensors; ++sensor)
        Add(desc, Glove::GetSensorName(static_cast<eGloveSensor>(sensor)), eFieldType::e_numbers, {0});
    return desc;
}

KindDesc MakeGameController()
{
    KindDesc desc{"game-controller", "GameController", {}, {}, 0, &GetNumberItemName};
    for (char const *const axis : {"X", "Y", "Z", "RX", "RY", "RZ"})
        Add(desc, axis, eFieldType::e_numbers, {0});
    for (unsigned int slider = 0; slider < GameController::s_maxSliders; ++slider)
        Add(desc, "slider" + MakeString(slider), eFieldType::e_numbers, {0});
    for (unsigned int hat = 0; hat < GameController::s_maxPOVHats; ++hat)
        Add(desc, "hat" + MakeString(hat), eFieldType::e_numbers, {-1});
    Add(desc, "buttons", eFieldType::e_set, std::vector<float>(GameController::s_maxButtons));
    return desc;
}

} // namespace

KindDesc const &GetKindDesc(eKind kind)
{
    static KindDesc const s_descs[s_numKinds] = {MakeKeyboard(),        MakeMouse(), MakeOrientationTracker(),
                                                 MakePositionTracker(), MakeGlove(), MakeGameController()};
    return s_descs[kind];
}

unsigned int KindDesc::FindField(string const &fieldName) const
{
    auto const found = std::find_if(fields.begin(), fields.end(),
                                    [&fieldName](Field const &field) { return field.name == fieldName; });
    return static_cast<unsigned int>(found - fields.begin());
}

RecordedController::RecordedController(eKind newKind, bool withFields) : kind(newKind)
{
    for (Field const &field : GetDesc().fields)
        counts.push_back(withFields ? field.count : 0);
    ranges.resize(kind == e_kind_glove ? counts.size() : 0);
}

} // namespace input_recording
