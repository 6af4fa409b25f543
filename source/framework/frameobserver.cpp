#include <quillmarsh/framework/frameobserver.h>

#include <quillmarsh/framework/kernel.h>

namespace quillmarsh
{

FrameObserver::~FrameObserver()
{
    if (Kernel *const kernel = Kernel::InstancePtr())
        kernel->RemoveFrameObserver(this);
}

} // namespace quillmarsh
