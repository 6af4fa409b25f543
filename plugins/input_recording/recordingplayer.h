// Playing of a recording: the state of its controllers at a time.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGPLAYER_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGPLAYER_H

#include "recording.h"

namespace input_recording
{

/// Goes through a recording, once or over and over. One thread at a time; advancing allocates nothing.
class RecordingPlayer
{
public:
    /// The recording is borrowed.
    RecordingPlayer(Recording const &recording, bool isLooped);

    /// Back to the begin, with everything at rest.
    void Restart();
    /// Goes on to a time in seconds from the begin of the first round; times do not go backwards. What is behind the end
    /// of a recording that is played once stays as it was at the end.
    void AdvanceTo(double time);
    /// State of a controller, with the movements since they were cleared.
    std::span<float const> GetState(unsigned int controller) const { return states_[controller]; }
    void ClearMovements();

private:
    static constexpr double s_minLoopLength = 0.001;

    void Rest();
    /// Plays what is left of this round up to a time within it.
    void PlayTo(double time);

    Recording const &recording_;
    bool const isLooped_;
    double roundStart_ = 0;
    std::size_t nextSample_ = 0;
    std::vector<std::vector<float>> states_;
};

} // namespace input_recording

#endif
