// Records live devices.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDER_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDER_H

#include "recordingwriter.h"

#include <quillmarsh/framework/frameobserver.h>

#include <fstream>
#include <optional>

namespace quillmarsh
{
class HIDController;
class HumanInterfaceDevice;
} // namespace quillmarsh

namespace input_recording
{

/// Returns the description of a controller for a recording; nothing for an unknown interface class.
std::optional<RecordedController> DescribeController(quillmarsh::HIDController const &controller);

/// Writes the controller's current state to `state`, which has the length of its kind's state.
void CaptureState(quillmarsh::HIDController const &controller, RecordedController const &recorded,
                  std::span<float> state);

/// Writes the input of devices to a file while it lives: their state at time 0, then the changes at the end of each
/// frame.
///
/// It records the first controller of each kind. In each frame it reads a device with a sampling thread once more, and
/// so takes edges and movements that came after the application's read. Frame thread only. It borrows the devices; the
/// destructor does not use them.
class Recorder : public quillmarsh::FrameObserver
{
public:
    /// The moment of time 0.
    enum class eStart
    {
        /// Now: the devices have been sampled.
        e_now,
        /// The end of the next frame, which samples the devices for the first time.
        e_nextFrame
    };

    /// Starts recording. Throws a RecordingException when there is nothing to record, or the file cannot be written.
    Recorder(string const &fileName, std::vector<quillmarsh::HumanInterfaceDevice *> const &devices, eStart start);
    ~Recorder() override;

    void OnFrame(bool &removeObserver, unsigned int frameNumber, double frameTime) override;

    string const &GetFileName() const { return fileName_; }
    double GetTime() const { return time_; }
    unsigned int GetNumControllers() const { return static_cast<unsigned int>(sources_.size()); }

private:
    struct Source
    {
        quillmarsh::HumanInterfaceDevice *device;
        quillmarsh::HIDController *controller;
    };

    void Collect(std::vector<quillmarsh::HumanInterfaceDevice *> const &devices);
    void WriteStates(bool withMovements);

    string const fileName_;
    std::vector<Source> sources_;
    std::vector<RecordedController> recorded_;
    std::vector<float> state_;
    std::ofstream file_;
    std::optional<RecordingWriter> writer_;
    double time_ = 0;
    bool hasBegun_;
};

} // namespace input_recording

#endif
