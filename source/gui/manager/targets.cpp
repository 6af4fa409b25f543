#include "source/gui/manager/targets.h"

#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/kernel.h>

namespace quillmarsh::gui
{

Manager::NullTarget::NullTarget()
{
    SetDefaultCommandArea(e_area_void);
}

bool Manager::NullTarget::HandleMessage(Message &)
{
    return false;
}

Manager::ComponentToApplicationAdapter::ComponentToApplicationAdapter()
{
    SetDefaultCommandArea(e_area_void);
}

void Manager::ComponentToApplicationAdapter::ConnectApplication(bool connect)
{
    application_ = connect ? Kernel::Instance().GetApplicationPtr() : nullptr;
}

bool Manager::ComponentToApplicationAdapter::HandleMessage(Message &message)
{
    return dispatch_ && application_.Get() != nullptr && application_->DispatchMessage(message);
}

} // namespace quillmarsh::gui
