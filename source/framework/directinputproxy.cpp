#include <quillmarsh/framework/directinputproxy.h>

namespace quillmarsh
{

DirectInputProxy::DirectInputProxy() = default;

DirectInputProxy::~DirectInputProxy() = default;

} // namespace quillmarsh
