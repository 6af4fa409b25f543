// Reading of recordings from text.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGREADER_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGREADER_H

#include "recording.h"

namespace input_recording
{

/// The recording that a text holds. `name` stands for it in messages. Throws RecordingException on the first fault, so
/// that a text is taken whole or not at all.
Recording ParseRecording(string const &text, string const &name);

/// The recording in a file, likewise.
Recording LoadRecording(string const &fileName);

} // namespace input_recording

#endif
