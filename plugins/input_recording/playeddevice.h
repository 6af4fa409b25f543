// A device whose input comes from a recording.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_PLAYEDDEVICE_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_PLAYEDDEVICE_H

#include "playedcontrollers.h"
#include "recordingplayer.h"

#include <quillmarsh/basetools/time.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

#include <memory>

namespace input_recording
{

/// What is played, and how.
struct Playback
{
    string fileName;
    std::shared_ptr<Recording const> recording;
    /// Seconds of the recording in a second.
    double speed = 1;
    bool isLooped = true;
};

/// Plays a recording from its connection on, or from when it is told to restart.
class PlayedDevice final : public quillmarsh::HumanInterfaceDevice
{
public:
    explicit PlayedDevice(Playback const &playback);

    unsigned int GetNumControllers() override;
    quillmarsh::HIDController *GetController(unsigned int index) override;
    void DumpDeviceCaps(quillmarsh::ostream &out, unsigned int tabs) const override;
    void ConnectDevice(HWND appWindow) override;
    void DisconnectDevice() override;
    void SampleDevice() override;

    /// Samples the state at a time in seconds from the connection; times do not go backwards.
    void SampleAt(double seconds);

protected:
    void ApplyUseDirectInput(bool use) override;

private:
    Playback const playback_;
    RecordingPlayer player_;
    std::vector<quillmarsh::AutoPtr<PlayedController>> controllers_;
    quillmarsh::HighResolutionTimer timer_;
};

} // namespace input_recording

#endif
