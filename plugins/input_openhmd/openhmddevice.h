// A headset or one of its controllers.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENHMD_OPENHMDDEVICE_H
#define QUILLMARSH_PLUGINS_INPUT_OPENHMD_OPENHMDDEVICE_H

#include "openhmdcontext.h"
#include "tracker_support/resettabletrackers.h"

#include <quillmarsh/framework/humaninterfacedevice.h>

#include <optional>

namespace input_openhmd
{

/// A device that OpenHMD lists, with a tracker for each thing that it can track.
///
/// OpenHMD's axes are X to the right, Y up, and Z backwards; they are turned half round about Y (see
/// MakeOrientation()). Positions are in metres in both.
class OpenHMDDevice final : public quillmarsh::HumanInterfaceDevice
{
public:
    /// Parameter of the device: a pointer to ten floats, which are seconds since the last time, three rates of turn, three
    /// accelerations and three magnetic forces on OpenHMD's axes. For a device without sensors of its own.
    static constexpr char s_szParameterSensors[] = "sensors";

    /// `index` is that of the context's list. The context is borrowed.
    OpenHMDDevice(OpenHMDContext &context, int index);
    ~OpenHMDDevice() override;

    /// "sensors" while the device is connected.
    bool SetHIDParameter(quillmarsh::NamedParameter const &parameter) override;
    unsigned int GetNumControllers() override;
    quillmarsh::HIDController *GetController(unsigned int index) override;
    void ConnectDevice(HWND appWindow) override;
    void DisconnectDevice() override;
    void SampleDevice() override;

protected:
    void ApplyUseDirectInput(bool) override {}

private:
    void Describe(int deviceClass, int flags);
    void SampleOrientation(quillmarsh::quat const &orientation);

    OpenHMDContext &context_;
    int const index_;
    ohmd_device *device_ = nullptr;
    std::optional<tracker_support::ResettableOrientationTracker> orientation_;
    std::optional<tracker_support::ResettablePositionTracker> position_;
};

} // namespace input_openhmd

#endif
