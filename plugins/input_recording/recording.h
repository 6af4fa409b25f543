// Recorded input of one device, as it stands in a file: controllers, and what changed in them when.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDING_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDING_H

#include <quillmarsh/basetools/exception.h>

#include <span>
#include <vector>

namespace input_recording
{

using quillmarsh::string;

/// A text that is no recording. The message names file, line and field.
class RecordingException : public quillmarsh::Exception
{
};

/// Interface class of a controller.
enum eKind : unsigned int
{
    e_kind_keyboard = 0,
    e_kind_mouse,
    e_kind_orientation_tracker,
    e_kind_position_tracker,
    e_kind_glove,
    e_kind_game_controller
};
constexpr unsigned int s_numKinds = 6;

/// What a field says, and so how its values are written.
enum class eFieldType
{
    /// Finite numbers, which hold until they are given anew.
    e_numbers,
    /// Whole numbers, which hold likewise.
    e_integers,
    /// 0 or 1, which holds likewise.
    e_flag,
    /// Whole numbers that tell how far something moved since the sample before.
    e_movement,
    /// The names of those things that are pressed.
    e_set
};

/// A field of a sample. Its values stand in a row of the controller's state.
struct Field
{
    string name;
    eFieldType type;
    unsigned int first;
    unsigned int count;
};

/// What a kind of controller can show.
struct KindDesc
{
    /// In a file.
    char const *name;
    /// Of the interface class.
    char const *interfaceName;
    std::vector<Field> fields;
    /// State of a controller at rest. The movements come first.
    std::vector<float> rest;
    unsigned int numMovements;
    /// Names what a set holds.
    string (*getItemName)(unsigned int index);

    /// Index of a field; the number of fields when there is none of that name.
    unsigned int FindField(string const &fieldName) const;
};

/// Description of a kind. Any thread.
KindDesc const &GetKindDesc(eKind kind);

/// Flexures between which a sensor of a glove had moved when its recording began; none while `min` is above `max`.
struct Range
{
    float min = 1.0f;
    float max = 0.0f;

    bool IsKnown() const { return min <= max; }
};

/// A controller that was recorded.
struct RecordedController
{
    eKind kind = e_kind_keyboard;
    bool isLeftHanded = false;
    /// By field of the kind: how many of its values the controller has, 0 for none.
    std::vector<unsigned int> counts;
    /// By field, for gloves.
    std::vector<Range> ranges;

    /// With all fields, or without any.
    RecordedController(eKind newKind, bool withFields);
    KindDesc const &GetDesc() const { return GetKindDesc(kind); }
};

/// One value of a state that a sample changes.
struct Change
{
    unsigned int index;
    float value;
};

/// What happened to one controller at one time.
struct Sample
{
    /// In seconds from the begin.
    double time;
    unsigned int controller;
    /// Part of Recording::changes.
    unsigned int firstChange;
    unsigned int numChanges;
};

/// A whole recording. Samples stand in the order of time, and none is behind the length.
struct Recording
{
    string description;
    std::vector<RecordedController> controllers;
    std::vector<Sample> samples;
    std::vector<Change> changes;
    /// In seconds.
    double length = 0;

    std::span<Change const> GetChanges(Sample const &sample) const
    {
        return std::span(changes).subspan(sample.firstChange, sample.numChanges);
    }
};

/// First word of every file, and the version of what follows.
constexpr char s_szSignature[] = "quillmarsh-recording";
constexpr char s_szVersion[] = "1";
/// Movements beyond it either way are no input of a hand.
constexpr float s_maxInteger = 1e6f;

} // namespace input_recording

#endif
