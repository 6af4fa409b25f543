#include "paddevice.h"

#include <quillmarsh/basetools/exception.h>

namespace input_desktop
{

using namespace quillmarsh;

PadController::PadController(HumanInterfaceDevice &device, PadDesc const &desc)
{
    SetParentHID(device);
    bool const *const has = desc.hasAxis;
    ReportHardwareCaps_Axes(has[AxisX], has[AxisY], has[AxisZ], has[AxisRX], has[AxisRY], has[AxisRZ]);
    ReportHardwareCaps_Gadgets(desc.numSliders, desc.numHats, desc.numButtons);
}

void PadController::OnOperationModifiersChanged()
{
    CriticalSectionSentry const guard(lock_);
    for (unsigned int i = 0; i < s_numAxes; ++i)
        axisShapes_[i] = {GetAxisDeadZone(static_cast<eAxis>(i)), GetAxisSaturation(static_cast<eAxis>(i))};
    for (unsigned int i = 0; i < s_maxSliders; ++i)
        sliderShapes_[i] = {GetSliderDeadZone(i), GetSliderSaturation(i)};
}

void PadController::Sample(PadReading const &reading)
{
    CriticalSectionSentry const guard(lock_);
    PreSampleUpdate();
    for (unsigned int i = 0; i < s_numAxes; ++i)
        SetAxisPosition(static_cast<eAxis>(i), axisShapes_[i].Apply(reading.axes[i]));
    for (unsigned int i = 0; i < s_maxSliders; ++i)
        SetSliderPosition(i, sliderShapes_[i].Apply(reading.sliders[i]));
    for (unsigned int i = 0; i < s_maxPOVHats; ++i)
        SetPOVHatPosition(i, reading.hats[i]);
    for (unsigned int i = 0; i < s_maxButtons; ++i)
    {
        if ((reading.buttons & 1u << i) != 0)
            SetButtonPressed(i);
    }
    PostSampleUpdate();
}

PadDevice::PadDevice(AutoPtr<Pad> pad) : pad_(std::move(pad)), controller_(*this, pad_->GetDesc())
{
    PadDesc const &desc = pad_->GetDesc();
    HumanInterfaceDeviceInfo &info = DeviceInfo();
    auto const set = [&info](void (HumanInterfaceDeviceInfo::*setter)(string const &), string const &text)
    {
        if (!text.empty())
            (info.*setter)(text);
    };
    set(&HumanInterfaceDeviceInfo::SetDeviceDescription, desc.name);
    set(&HumanInterfaceDeviceInfo::SetVendor, desc.vendor);
    set(&HumanInterfaceDeviceInfo::SetModelType, desc.type);
    set(&HumanInterfaceDeviceInfo::SetModelSubType, desc.product);
    set(&HumanInterfaceDeviceInfo::SetHardwarePort, desc.port);
    set(&HumanInterfaceDeviceInfo::SetAdditionalInfo, desc.mapping);
}

void PadDevice::ConnectDevice(HWND)
{
    PadReading reading;
    if (!pad_->Read(reading))
        QUILLMARSH_THROW(HIDException, "It has been unplugged.");
}

void PadDevice::SampleDevice()
{
    PadReading reading;
    pad_->Read(reading);
    controller_.Sample(reading);
}

} // namespace input_desktop
