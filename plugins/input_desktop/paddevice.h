// A game controller as a device.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_PADDEVICE_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_PADDEVICE_H

#include "padsystem.h"

#include <quillmarsh/framework/humaninterfacedevice.h>

namespace input_desktop
{

/// Applies dead zones and saturations itself, because no system does.
class PadController final : public quillmarsh::GameController
{
public:
    PadController(quillmarsh::HumanInterfaceDevice &device, PadDesc const &desc);

    void OnOperationModifiersChanged() override;
    void Sample(PadReading const &reading);

private:
    /// Dead zone and saturation of an axis or slider.
    struct Shape
    {
        float deadZone = 0;
        float saturation = 1;

        float Apply(float position) const { return ApplyModifiers(position, deadZone, saturation); }
    };

    quillmarsh::CriticalSection lock_;
    Shape axisShapes_[s_numAxes];
    Shape sliderShapes_[s_maxSliders];
};

/// A game controller as a device. Once it is unplugged, it reads as at rest.
class PadDevice final : public quillmarsh::HumanInterfaceDevice
{
public:
    explicit PadDevice(quillmarsh::AutoPtr<Pad> pad);

    unsigned int GetNumControllers() override { return 1; }
    quillmarsh::HIDController *GetController(unsigned int index) override
    {
        return index == 0 ? &controller_ : nullptr;
    }
    void ConnectDevice(HWND appWindow) override;
    void DisconnectDevice() override {}
    void SampleDevice() override;

protected:
    void ApplyUseDirectInput(bool) override {}

private:
    quillmarsh::AutoPtr<Pad> const pad_;
    PadController controller_;
};

} // namespace input_desktop

#endif
