// Controllers that show the input of a recording.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_PLAYEDCONTROLLERS_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_PLAYEDCONTROLLERS_H

#include "recording.h"

#include <quillmarsh/framework/hidcontroller.h>

namespace input_recording
{

/// A controller of a played device. Only the thread that samples the device uses it.
class PlayedController
{
public:
    virtual ~PlayedController() = default;

    virtual quillmarsh::HIDController &GetController() = 0;
    /// Writes a state as one sample.
    void Sample(std::span<float const> state);

protected:
    /// Writes the readings of `state` to the controller.
    virtual void Apply(std::span<float const> state) = 0;
};

/// Creates a controller of the recorded kind, with the abilities that the recording lists. Borrows the device, which
/// owns the controller. A mouse or a keyboard is one of the system if `isSystem` is true.
quillmarsh::AutoPtr<PlayedController> MakePlayedController(quillmarsh::HumanInterfaceDevice &device,
                                                           RecordedController const &recorded, bool isSystem);

} // namespace input_recording

#endif
