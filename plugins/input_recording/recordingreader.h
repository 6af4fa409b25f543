// Reads recordings from text.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGREADER_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGREADER_H

#include "recording.h"

namespace input_recording
{

/// Reads a recording from a text. `name` stands for the text in messages. Throws a RecordingException at the first
/// fault: a text is accepted whole or not at all.
Recording ParseRecording(string const &text, string const &name);

/// Reads a recording from a file. Throws a RecordingException when it cannot be read, or is at fault.
Recording LoadRecording(string const &fileName);

} // namespace input_recording

#endif
