#include <quillmarsh/framework/hidcontroller.h>

#include <quillmarsh/basetools/diagnostics.h>

namespace quillmarsh
{

HIDController::HIDController() = default;

HIDController::~HIDController() = default;

void HIDController::DumpControllerInfo(ostream &, unsigned int) const {}

HumanInterfaceDevice &HIDController::GetParentHID()
{
    QUILLMARSH_ASSERT(parentHID_ != nullptr,
                      "Parent-HID not set for HIDController: " + FormatClassName(GetTypeName(typeid(*this))));
    return *parentHID_;
}

} // namespace quillmarsh
