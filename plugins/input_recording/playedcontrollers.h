// Controllers that show what a recording says.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_PLAYEDCONTROLLERS_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_PLAYEDCONTROLLERS_H

#include "recording.h"

#include <quillmarsh/framework/hidcontroller.h>

namespace input_recording
{

/// A controller of a played device. The thread that samples the device.
class PlayedController
{
public:
    virtual ~PlayedController() = default;

    virtual quillmarsh::HIDController &GetController() = 0;
    /// Writes a state as one sample.
    void Sample(std::span<float const> state);

protected:
    /// Writes the readings.
    virtual void Apply(std::span<float const> state) = 0;
};

/// A controller of the kind that was recorded, with the abilities that the recording lists. The device, which owns it, is
/// borrowed.
quillmarsh::AutoPtr<PlayedController> MakePlayedController(quillmarsh::HumanInterfaceDevice &device,
                                                           RecordedController const &recorded);

} // namespace input_recording

#endif
