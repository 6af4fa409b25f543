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
    {
        KindDesc const &desc = controller.GetDesc();
        states_.push_back(desc.rest);
        Buttons &buttons = buttons_.emplace_back();
        for (Field const &field : desc.fields)
        {
            if (field.type == eFieldType::e_set)
                buttons = {field.first, std::vector<bool>(field.count)};
        }
    }
}

void RecordingPlayer::Restart()
{
    roundStart_ = 0;
    Rest();
    EndFrame();
}

void RecordingPlayer::AdvanceTo(double time)
{
    if (isLooped_ && time - roundStart_ >= recording_.length)
    {
        if (!PlayTo(recording_.length) || !CanRest())
            return;
        // Whole rounds are skipped: they change only the start of the current round.
        roundStart_ = std::floor(time / recording_.length) * recording_.length;
        Rest();
    }
    PlayTo(time - roundStart_);
}

bool RecordingPlayer::IsAtEnd(double time) const
{
    return !isLooped_ && nextSample_ == recording_.samples.size() && time >= recording_.length;
}

void RecordingPlayer::EndFrame()
{
    for (std::size_t i = 0; i < states_.size(); ++i)
    {
        std::fill_n(states_[i].begin(), recording_.controllers[i].GetDesc().numMovements, 0.0f);
        buttons_[i].hasChanged.assign(buttons_[i].hasChanged.size(), false);
    }
}

void RecordingPlayer::Rest()
{
    nextSample_ = 0;
    for (unsigned int i = 0; i < states_.size(); ++i)
    {
        KindDesc const &desc = recording_.controllers[i].GetDesc();
        for (unsigned int index = desc.numMovements; index < desc.rest.size(); ++index)
            SetValue(i, index, desc.rest[index]);
    }
}

bool RecordingPlayer::CanRest() const
{
    for (std::size_t i = 0; i < states_.size(); ++i)
    {
        Buttons const &buttons = buttons_[i];
        for (std::size_t button = 0; button < buttons.hasChanged.size(); ++button)
        {
            if (buttons.hasChanged[button] && states_[i][buttons.first + button] != 0.0f)
                return false;
        }
    }
    return true;
}

bool RecordingPlayer::Undoes(Sample const &sample) const
{
    Buttons const &buttons = buttons_[sample.controller];
    std::vector<float> const &state = states_[sample.controller];
    std::span<Change const> const changes = recording_.GetChanges(sample);
    return std::any_of(changes.begin(), changes.end(),
                       [&](Change const &change)
                       {
                           return buttons.Contains(change.index) && buttons.hasChanged[change.index - buttons.first] &&
                                  state[change.index] != change.value;
                       });
}

bool RecordingPlayer::PlayTo(double time)
{
    while (nextSample_ < recording_.samples.size() && recording_.samples[nextSample_].time <= time)
    {
        Sample const &sample = recording_.samples[nextSample_];
        if (Undoes(sample))
            return false;
        ++nextSample_;
        KindDesc const &desc = recording_.controllers[sample.controller].GetDesc();
        for (Change const &change : recording_.GetChanges(sample))
        {
            bool const isMovement = change.index < desc.numMovements;
            float const before = isMovement ? states_[sample.controller][change.index] : 0.0f;
            SetValue(sample.controller, change.index, before + change.value);
        }
    }
    return true;
}

void RecordingPlayer::SetValue(unsigned int controller, unsigned int index, float value)
{
    Buttons &buttons = buttons_[controller];
    float &current = states_[controller][index];
    if (buttons.Contains(index) && current != value)
        buttons.hasChanged[index - buttons.first] = true;
    current = value;
}

} // namespace input_recording
