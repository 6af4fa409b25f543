// Plays a recording: the state of its controllers at a time.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGPLAYER_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGPLAYER_H

#include "recording.h"

namespace input_recording
{

/// Plays a recording once or in a loop. Nothing that a key or button does is lost in a slow frame: the player stops ahead
/// of a sample that would undo a press or a release that no frame has seen, and goes on in the next frame.
///
/// One thread at a time; advancing allocates nothing.
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
    /// Returns the state of a controller, with its movements since the last frame.
    std::span<float const> GetState(unsigned int controller) const { return states_[controller]; }
    /// True when all of a recording that is played once has been played, at a time in seconds.
    bool IsAtEnd(double time) const;
    /// Ends a frame, which has seen the state.
    void EndFrame();

private:
    /// Keys or buttons of a controller.
    struct Buttons
    {
        /// Index of the first one in the state.
        unsigned int first = 0;
        /// For each one, whether its state has changed in this frame.
        std::vector<bool> hasChanged;

        bool Contains(unsigned int index) const { return index >= first && index - first < hasChanged.size(); }
    };

    static constexpr double s_minLoopLength = 0.001;

    void Rest();
    /// True when everything can be put to rest without undoing what no frame has seen.
    bool CanRest() const;
    bool Undoes(Sample const &sample) const;
    /// Plays from the current time to `time`, which is in the same round. Returns false if it stopped earlier.
    bool PlayTo(double time);
    void SetValue(unsigned int controller, unsigned int index, float value);

    Recording const &recording_;
    bool const isLooped_;
    double roundStart_ = 0;
    std::size_t nextSample_ = 0;
    std::vector<std::vector<float>> states_;
    /// Of each controller.
    std::vector<Buttons> buttons_;
};

} // namespace input_recording

#endif
