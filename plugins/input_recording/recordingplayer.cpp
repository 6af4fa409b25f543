#include "recordingplayer.h"

#include <algorithm>
#include <cmath>

namespace input_recording
{

RecordingPlayer::RecordingPlayer(Recording const &recording, bool isLooped)
    : recording_(recording),
      // A recording without a length cannot be looped.
      isLooped_(isLooped && recording.length >= s_minLoopLength)
{
    for (RecordedController const &controller : recording.controllers)
        states_.push_back(controller.GetDesc().rest);
}

void RecordingPlayer::Restart()
{
    roundStart_ = 0;
    Rest();
    ClearMovements();
}

void RecordingPlayer::AdvanceTo(double time)
{
    if (isLooped_ && time - roundStart_ >= recording_.length)
    {
        PlayTo(recording_.length);
        // Whole rounds are skipped: they change only the start of the current round.
        roundStart_ = std::floor(time / recording_.length) * recording_.length;
        Rest();
    }
    PlayTo(time - roundStart_);
}

void RecordingPlayer::ClearMovements()
{
    for (std::size_t i = 0; i < states_.size(); ++i)
        std::fill_n(states_[i].begin(), recording_.controllers[i].GetDesc().numMovements, 0.0f);
}

void RecordingPlayer::Rest()
{
    nextSample_ = 0;
    for (std::size_t i = 0; i < states_.size(); ++i)
    {
        KindDesc const &desc = recording_.controllers[i].GetDesc();
        std::copy(desc.rest.begin() + desc.numMovements, desc.rest.end(), states_[i].begin() + desc.numMovements);
    }
}

void RecordingPlayer::PlayTo(double time)
{
    while (nextSample_ < recording_.samples.size() && recording_.samples[nextSample_].time <= time)
    {
        Sample const &sample = recording_.samples[nextSample_++];
        KindDesc const &desc = recording_.controllers[sample.controller].GetDesc();
        std::vector<float> &state = states_[sample.controller];
        for (Change const &change : recording_.GetChanges(sample))
        {
            bool const isMovement = change.index < desc.numMovements;
            state[change.index] = change.value + (isMovement ? state[change.index] : 0.0f);
        }
    }
}

} // namespace input_recording
