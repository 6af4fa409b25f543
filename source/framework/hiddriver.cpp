#include <quillmarsh/framework/hiddriver.h>

namespace quillmarsh
{

HIDDriver::HIDDriver() = default;

HIDDriver::~HIDDriver() = default;

} // namespace quillmarsh
