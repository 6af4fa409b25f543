// Writes recordings as text, line by line.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGWRITER_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGWRITER_H

#include "recording.h"

#include <quillmarsh/platform/types.h>

#include <ostream>

namespace input_recording
{

/// Writes the changes of controllers. Frame thread only. Allocates nothing after the first samples.
class RecordingWriter
{
public:
    /// Writes the head. Borrows `out`, which must outlive the writer.
    RecordingWriter(quillmarsh::ostream &out, string const &description,
                    std::vector<RecordedController> const &controllers);

    /// Writes a sample with the fields that differ from the last sample, if there are any. The first sample of a
    /// controller has all fields except movements of 0. `state` is the whole state of the controller. `time` is in
    /// seconds and must not decrease.
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
    /// For each controller, the state that was written last.
    std::vector<std::vector<float>> states_;
    std::vector<bool> hasWritten_;
    string line_;
};

} // namespace input_recording

#endif
