// Recording of live devices.
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

/// What the controller can show, as it is recorded; nothing for a controller of an unknown interface class.
std::optional<RecordedController> DescribeController(quillmarsh::HIDController const &controller);

/// The controller's present state. `state` has the length of one.
void CaptureState(quillmarsh::HIDController const &controller, RecordedController const &recorded,
                  std::span<float> state);

/// Writes to a file what devices show, from its construction to its end: at time 0 their state, and what changes by the
/// end of each frame.
///
/// Of each kind the first controller counts. A device that a thread samples is read once more in each frame, so that
/// edges and movements between the application's read and the end of the frame are the recorder's. Frame thread only;
/// the devices are borrowed, but for the destructor.
class Recorder : public quillmarsh::FrameObserver
{
public:
    /// When time 0 is.
    enum class eStart
    {
        /// At once: the devices have been sampled.
        e_now,
        /// At the end of the next frame, which samples the devices for the first time.
        e_nextFrame
    };

    /// Throws RecordingException when there is nothing to record, or the file cannot be written.
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
