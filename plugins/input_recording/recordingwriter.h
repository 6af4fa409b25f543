// Writing of recordings as text, line by line as things happen.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGWRITER_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGWRITER_H

#include "recording.h"

#include <quillmarsh/platform/types.h>

#include <ostream>

namespace input_recording
{

/// Writes what changes in some controllers. Frame thread only; writing in a settled state allocates nothing.
class RecordingWriter
{
public:
    /// Writes the head. The stream is borrowed.
    RecordingWriter(quillmarsh::ostream &out, string const &description,
                    std::vector<RecordedController> const &controllers);

    /// Writes a sample with the fields that differ from the sample before, if there are any; the first sample of a
    /// controller has all fields but those of movements that rest. `state` is the controller's whole state. Times in seconds do not go backwards.
    void Write(double time, unsigned int controller, std::span<float const> state);
    /// Writes the last line.
    void WriteEnd(double time);

private:
    void WriteHead(RecordedController const &controller);
    void AppendHead(RecordedController const &controller, std::size_t field);
    void AppendNumber(double value, int precision);
    void AppendField(Field const &field, RecordedController const &controller, std::span<float const> state);

    quillmarsh::ostream &out_;
    std::vector<RecordedController> controllers_;
    /// By controller, as it was written last.
    std::vector<std::vector<float>> states_;
    std::vector<bool> hasWritten_;
    string line_;
};

} // namespace input_recording

#endif
