// Recorded input of one device, with the contents of its file: the controllers, and their changes over time.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDING_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDING_H

#include <quillmarsh/basetools/exception.h>

#include <span>
#include <vector>

namespace input_recording
{

using quillmarsh::string;

/// Thrown for a text that is not a valid recording. The message names file, line and field.
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

/// Type of a field, which decides how its values are written.
enum class eFieldType
{
    /// Finite numbers, which stay until the next change.
    e_numbers,
    /// Whole numbers, which stay until the next change.
    e_integers,
    /// 0 or 1, which stays until the next change.
    e_flag,
    /// Whole numbers: the distance moved since the last sample.
    e_movement,
    /// The names of the pressed keys or buttons.
    e_set
};

/// A field of a sample. Its values are consecutive in the controller's state.
struct Field
{
    string name;
    eFieldType type;
    unsigned int first;
    unsigned int count;
};

/// The fields that a kind of controller can have.
struct KindDesc
{
    /// Name of the kind in a file.
    char const *name;
    /// Name of the interface class.
    char const *interfaceName;
    std::vector<Field> fields;
    /// State of a controller at rest. The movements come first.
    std::vector<float> rest;
    unsigned int numMovements;
    /// Returns the name of an element of a set.
    string (*getItemName)(unsigned int index);

    /// Returns the index of a field, or the number of fields when none has that name.
    unsigned int FindField(string const &fieldName) const;
};

/// Description of a kind. Any thread.
KindDesc const &GetKindDesc(eKind kind);

/// Range of flexures that a sensor of a glove had covered when its recording began. Empty if `min` is above `max`.
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
    /// For each field of the kind: the number of its values that the controller has, 0 for none.
    std::vector<unsigned int> counts;
    /// For each field of a glove.
    std::vector<Range> ranges;

    /// Creates a controller with all fields of its kind, or without any.
    RecordedController(eKind newKind, bool withFields);
    KindDesc const &GetDesc() const { return GetKindDesc(kind); }
};

/// One value of a state that a sample changes.
struct Change
{
    unsigned int index;
    float value;
};

/// The changes of one controller at one time.
struct Sample
{
    /// In seconds from the start of the recording.
    double time;
    unsigned int controller;
    /// First of the sample's changes in Recording::changes.
    unsigned int firstChange;
    unsigned int numChanges;
};

/// A whole recording. The samples are in the order of time, and none is later than the length.
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

/// First word of every file, and the version of the format.
constexpr char s_szSignature[] = "quillmarsh-recording";
constexpr char s_szVersion[] = "1";
/// Largest whole number that is recorded, and the negative of the smallest. No hand moves farther in a sample.
constexpr float s_maxInteger = 1e6f;

} // namespace input_recording

#endif
