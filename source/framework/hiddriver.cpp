#include <quillmarsh/framework/hiddriver.h>

namespace quillmarsh
{

HIDDriver::HIDDriver() = default;

HIDDriver::~HIDDriver() = default;

HIDDriver0::HIDDriver0() = default;

HIDDriver0::~HIDDriver0() = default;

string HIDDriver0::GetHIDDriverInterfaceName()
{
    return "HIDDriver0";
}

HIDDriver8::HIDDriver8() = default;

HIDDriver8::~HIDDriver8() = default;

string HIDDriver8::GetHIDDriverInterfaceName()
{
    return "HIDDriver8";
}

} // namespace quillmarsh
