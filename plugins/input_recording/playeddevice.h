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

/// A recording and the way to play it.
struct Playback
{
    string fileName;
    std::shared_ptr<Recording const> recording;
    /// Seconds of the recording that are played in one second.
    double speed = 1;
    bool isLooped = true;
    /// True to play as mouse and keyboard of the system, which a GUI uses.
    bool isSystem = false;
};

/// Plays a recording. It starts when the device is connected, and again at each restart.
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

    /// Samples the state at a time in seconds since the connection. `seconds` must not decrease.
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
