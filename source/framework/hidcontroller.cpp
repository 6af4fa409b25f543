#include <quillmarsh/framework/hidcontroller.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

namespace quillmarsh
{

HIDController::HIDController() = default;

HIDController::~HIDController() = default;

void HIDController::DumpControllerInfo(ostream &, unsigned int) const {}

HumanInterfaceDevice *HIDController::GetParentHIDPtr()
{
    QUILLMARSH_ASSERT(parentHID_ != nullptr,
                      "Parent-HID not set for HIDController: " + FormatClassName(GetTypeName(typeid(*this))));
    return parentHID_;
}

bool HIDController::IsSampledAsync()
{
    HumanInterfaceDevice const *const device = GetParentHIDPtr();
    return device != nullptr && device->IsAsyncSamplingActive();
}

} // namespace quillmarsh
