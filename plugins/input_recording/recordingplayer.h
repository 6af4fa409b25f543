// Plays a recording: the state of its controllers at a time.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGPLAYER_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGPLAYER_H

#include "recording.h"

namespace input_recording
{

/// Plays a recording once or in a loop. One thread at a time; advancing allocates nothing.
class RecordingPlayer
{
public:
    /// Borrows `recording`, which must outlive the player.
    RecordingPlayer(Recording const &recording, bool isLooped);

    /// Goes back to the start, with everything at rest.
    void Restart();
    /// Advances to a time in seconds from the start of the first round; `time` must not decrease. After the end of a
    /// recording that is played once, the state stays as it was at the end.
    void AdvanceTo(double time);
    /// Returns the state of a controller, with its movements since they were last cleared.
    std::span<float const> GetState(unsigned int controller) const { return states_[controller]; }
    void ClearMovements();

private:
    static constexpr double s_minLoopLength = 0.001;

    void Rest();
    /// Plays from the current time to `time`, which is in the same round.
    void PlayTo(double time);

    Recording const &recording_;
    bool const isLooped_;
    double roundStart_ = 0;
    std::size_t nextSample_ = 0;
    std::vector<std::vector<float>> states_;
};

} // namespace input_recording

#endif
