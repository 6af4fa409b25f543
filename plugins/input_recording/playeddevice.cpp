#include "playeddevice.h"

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/kernel.h>

#include <algorithm>

namespace input_recording
{

using namespace quillmarsh;

PlayedDevice::PlayedDevice(Playback const &playback)
    : playback_(playback),
      player_(*playback_.recording, playback.isLooped)
{
    for (RecordedController const &recorded : playback_.recording->controllers)
        controllers_.push_back(MakePlayedController(*this, recorded, playback_.isSystem));
    string const &description = playback_.recording->description;
    DeviceInfo().SetDeviceDescription(description.empty() ? playback_.fileName : description);
    DeviceInfo().SetModelType("Recording");
    DeviceInfo().SetHardwarePort(playback_.fileName);
}

unsigned int PlayedDevice::GetNumControllers()
{
    return static_cast<unsigned int>(controllers_.size());
}

HIDController *PlayedDevice::GetController(unsigned int index)
{
    return index < controllers_.size() ? &controllers_[index]->GetController() : nullptr;
}

void PlayedDevice::DumpDeviceCaps(ostream &out, unsigned int tabs) const
{
    out << IndentEffector(tabs) << "Length: " << MakeString(playback_.recording->length) << nl;
    out << IndentEffector(tabs) << "Speed.: " << MakeString(playback_.speed) << nl;
    out << IndentEffector(tabs) << "Looped: " << MakeString(playback_.isLooped) << nl;
    out << IndentEffector(tabs) << "System: " << MakeString(playback_.isSystem) << nl;
    out << IndentEffector(tabs) << "Steady: " << MakeString(playback_.isSteady) << nl;
}

void PlayedDevice::ConnectDevice(HWND)
{
    player_.Restart();
    timer_.Start();
    lastSeconds_ = playedSeconds_ = 0;
}

void PlayedDevice::DisconnectDevice() {}

void PlayedDevice::SampleDevice()
{
    double const now = timer_.GetElapsedSeconds();
    double const step = now - lastSeconds_;
    playedSeconds_ += playback_.isSteady ? std::min(step, s_maxSteadyStep) : step;
    lastSeconds_ = now;
    SampleAt(playedSeconds_);
    if (playback_.endsProgram && player_.IsAtEnd(playedSeconds_ * playback_.speed))
        Kernel::Instance().RequestExit();
}

void PlayedDevice::SampleAt(double seconds)
{
    player_.AdvanceTo(seconds * playback_.speed);
    for (unsigned int i = 0; i < controllers_.size(); ++i)
        controllers_[i]->Sample(player_.GetState(i));
    player_.EndFrame();
}

void PlayedDevice::ApplyUseDirectInput(bool) {}

} // namespace input_recording
