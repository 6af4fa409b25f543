// A headset or one of its controllers.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENHMD_OPENHMDDEVICE_H
#define QUILLMARSH_PLUGINS_INPUT_OPENHMD_OPENHMDDEVICE_H

#include "openhmdcontext.h"
#include "tracker_support/resettabletrackers.h"

#include <quillmarsh/framework/humaninterfacedevice.h>

#include <optional>

namespace input_openhmd
{

/// A device that OpenHMD lists, with a tracker for its orientation and one for its position, if it reports them.
///
/// OpenHMD's axes are X to the right, Y up, and Z backwards. The device turns them by 180 degrees about Y (see
/// MakeOrientation()). Positions are in metres on both sides.
class OpenHMDDevice final : public quillmarsh::HumanInterfaceDevice
{
public:
    /// Parameter for a device without sensors of its own: a pointer to ten floats on OpenHMD's axes. They are the
    /// seconds since the last call, three rates of turn, three accelerations, and three components of the magnetic
    /// field.
    static constexpr char s_szParameterSensors[] = "sensors";

    /// `index` is the device's place in the context's list. Borrows the context, which must outlive the device.
    OpenHMDDevice(OpenHMDContext &context, int index);
    ~OpenHMDDevice() override;

    /// Accepts "sensors" while the device is connected.
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
