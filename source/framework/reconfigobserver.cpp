#include <quillmarsh/framework/reconfigobserver.h>

#include <quillmarsh/framework/kernel.h>

namespace quillmarsh
{

ReconfigObserver::~ReconfigObserver()
{
    if (Kernel *const kernel = Kernel::InstancePtr())
        kernel->RemoveReconfigObserver(this);
}

void ReconfigObserver::OnVideoReconfig() {}

void ReconfigObserver::OnVSyncReconfig(bool) {}

void ReconfigObserver::OnHIDReconfig() {}

} // namespace quillmarsh
