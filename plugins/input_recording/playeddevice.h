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
    /// True to wait for slow frames: each one advances the recording by PlayedDevice::s_maxSteadyStep at most.
    bool isSteady = false;
    /// True to end the program at the end of the recording.
    bool endsProgram = false;
};

/// Plays a recording. It starts when the device is connected, and again at each restart.
class PlayedDevice final : public quillmarsh::HumanInterfaceDevice
{
public:
    /// Seconds.
    static constexpr double s_maxSteadyStep = 0.05;

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
    /// Seconds of the timer at the last sampling, and those that count for the recording.
    double lastSeconds_ = 0;
    double playedSeconds_ = 0;
};

} // namespace input_recording

#endif
