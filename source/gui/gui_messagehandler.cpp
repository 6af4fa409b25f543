#include <quillmarsh/gui/gui_messagehandler.h>

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_messages.h>

#include <algorithm>

namespace quillmarsh::gui
{

MessageHandler::MessageHandler(MessageHandler const &other) : hooks_(other.hooks_)
{
    for (MessageHandler *hook : hooks_)
        EnterInHook(*hook);
}

MessageHandler &MessageHandler::operator=(MessageHandler const &other)
{
    if (this == &other)
        return *this;
    UninstallAllMessageHooks();
    for (MessageHandler *hook : other.hooks_)
    {
        if (hook != this)
            InstallMessageHook(*hook, false, nullptr);
    }
    return *this;
}

MessageHandler::~MessageHandler()
{
    ReleaseWatches();
    UninstallAllMessageHooks();
    while (!hookedHandlers_.empty())
        hookedHandlers_.back()->UninstallMessageHook(*this);
    if (numServices_ != 0 && Manager::s_pInstanceManager != nullptr)
        Manager::s_pInstanceManager->NotifyServiceProviderDeleted(*this);
}

void MessageHandler::ReleaseWatches()
{
    while (firstWatch_ != nullptr)
        firstWatch_->Unlink();
}

bool MessageHandler::DispatchMessage(Message &message)
{
    message.target_ = this;
    Watch<MessageHandler> const self(*this);
    for (std::size_t i = 0; self.Get() != nullptr && i < hooks_.size(); ++i)
    {
        if (hooks_[i]->HandleMessage(message))
            return true;
    }
    return self.Get() != nullptr && HandleMessage(message);
}

bool MessageHandler::BroadcastMessage(Message &message)
{
    return Manager::Instance().BroadcastMessage(message);
}

bool MessageHandler::SendMessageToServiceProvider(unsigned int id, Message &message)
{
    return Manager::Instance().SendMessageToServiceProvider(id, message);
}

bool MessageHandler::RegisterAsServiceProvider(unsigned int id)
{
    return Manager::Instance().RegisterServiceProvider(id, *this);
}

bool MessageHandler::UnregisterAsServiceProvider(unsigned int id)
{
    return Manager::Instance().UnregisterServiceProvider(id, *this);
}

bool MessageHandler::IsRegisteredAsServiceProvider(unsigned int id) const
{
    return Manager::Instance().GetServiceProvider(id) == this;
}

void MessageHandler::InstallMessageHook(MessageHandler &hook, bool atFront, MessageHandler const *before)
{
    if (&hook == this)
        return;
    UninstallMessageHook(hook);
    auto place = hooks_.end();
    if (atFront)
        place = hooks_.begin();
    else if (before != nullptr)
        place = std::find(hooks_.begin(), hooks_.end(), before);
    hooks_.insert(place, &hook);
    EnterInHook(hook);
}

void MessageHandler::UninstallMessageHook(MessageHandler &hook)
{
    auto const found = std::find(hooks_.begin(), hooks_.end(), &hook);
    if (found == hooks_.end())
        return;
    hooks_.erase(found);
    LeaveHook(hook);
}

void MessageHandler::UninstallAllMessageHooks()
{
    for (MessageHandler *hook : hooks_)
        LeaveHook(*hook);
    hooks_.clear();
}

MessageHandler *MessageHandler::GetMessageHook(unsigned int index)
{
    return index < hooks_.size() ? hooks_[index] : nullptr;
}

MessageHandler const *MessageHandler::GetMessageHook(unsigned int index) const
{
    return index < hooks_.size() ? hooks_[index] : nullptr;
}

void MessageHandler::EnterInHook(MessageHandler &hook)
{
    hook.hookedHandlers_.push_back(this);
}

void MessageHandler::LeaveHook(MessageHandler &hook)
{
    auto const found = std::find(hook.hookedHandlers_.begin(), hook.hookedHandlers_.end(), this);
    if (found != hook.hookedHandlers_.end())
        hook.hookedHandlers_.erase(found);
}

bool MessageHandler::HandleMessage(Message &)
{
    return false;
}

void MessageHandler::OnRegisteredAsServiceProvider(unsigned int) {}

void MessageHandler::OnUnregisteredAsServiceProvider(unsigned int) {}

void MessageHandler::ServiceProviderPreEventDispatch(double) {}

void MessageHandler::ServiceProviderPostEventDispatch(double) {}

CommandSender::~CommandSender() = default;

bool CommandSender::SendMessageToTarget(Message &message)
{
    return commandTarget_ != nullptr && commandTarget_->DispatchMessage(message);
}

bool CommandSender::SendCommandMessageToTarget()
{
    if (commandTarget_ == nullptr)
        return false;
    Message_Command command(commandID_);
    return commandTarget_->DispatchMessage(command);
}

} // namespace quillmarsh::gui
