#include "source/gui/manager/services.h"

#include "source/gui/manager/parts.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/gui/gui_cursors.h>
#include <quillmarsh/gui/gui_shaders.h>

namespace quillmarsh::gui::manager_parts
{

namespace
{

/// Calls for each provider by ascending numbers, also for those that come in meanwhile.
template<typename Providers, typename Call>
void ForEachProvider(Providers const &providers, Call &&call)
{
    for (auto provider = providers.begin(); provider != providers.end();)
    {
        unsigned int const id = provider->first;
        call(*provider->second);
        provider = providers.upper_bound(id);
    }
}

/// Tolerates that a device is missing, or throws.
void ReportMissing(bool tolerate, string const &device)
{
    if (!tolerate)
        QUILLMARSH_THROW(GUIException, "gui-manager cannot continue without " + device + ".");
    GetLogOut() << e_warning << "gui-manager: missing " + device + ".\n" << e_info;
}

template<typename Controller>
Controller *FindController(HumanInterfaceDevice &device, char const *name)
{
    return dynamic_cast<Controller *>(device.FindController(name));
}

} // namespace

bool ServiceProviders::Register(unsigned int id, MessageHandler &handler)
{
    if (id == 0)
        return false;
    MessageHandler *const former = Get(id);
    if (former == &handler)
        return true;
    Watch<MessageHandler> const watch(handler);
    if (former != nullptr)
        former->OnUnregisteredAsServiceProvider(id);
    Store(id, watch.Get());
    if (watch.Get() != nullptr)
        watch->OnRegisteredAsServiceProvider(id);
    BroadcastChange(id);
    return true;
}

bool ServiceProviders::Unregister(unsigned int id, MessageHandler const *handler)
{
    MessageHandler *const provider = Get(id);
    if (provider == nullptr || (handler != nullptr && handler != provider))
        return false;
    Store(id, nullptr);
    provider->OnUnregisteredAsServiceProvider(id);
    BroadcastChange(id);
    return true;
}

void ServiceProviders::UnregisterAll()
{
    for (auto const &provider : providers_)
        --provider.second->numServices_;
    providers_.clear();
}

MessageHandler *ServiceProviders::Get(unsigned int id) const
{
    auto const found = providers_.find(id);
    return found != providers_.end() ? found->second : nullptr;
}

bool ServiceProviders::Send(unsigned int id, Message &message)
{
    MessageHandler *const provider = Get(id);
    return provider != nullptr && provider->DispatchMessage(message);
}

bool ServiceProviders::Broadcast(Message &message)
{
    bool isConsumed = false;
    parts_.queues.all.ForEach([&](Component &component)
                              { isConsumed = component.DispatchMessage(message) || isConsumed; });
    return isConsumed;
}

void ServiceProviders::OnDeleted(MessageHandler &handler)
{
    auto const isProvided = [&](auto const &provider) { return provider.second == &handler; };
    while (true)
    {
        auto const found = std::find_if(providers_.begin(), providers_.end(), isProvided);
        if (found == providers_.end())
            return;
        unsigned int const id = found->first;
        Store(id, nullptr);
        BroadcastChange(id);
    }
}

void ServiceProviders::PreEventDispatch(double timeDelta)
{
    ForEachProvider(providers_, [=](MessageHandler &provider) { provider.ServiceProviderPreEventDispatch(timeDelta); });
}

void ServiceProviders::PostEventDispatch(double timeDelta)
{
    ForEachProvider(providers_,
                    [=](MessageHandler &provider) { provider.ServiceProviderPostEventDispatch(timeDelta); });
}

void ServiceProviders::Store(unsigned int id, MessageHandler *handler)
{
    if (MessageHandler *const former = Get(id))
    {
        --former->numServices_;
        providers_.erase(id);
    }
    if (handler == nullptr)
        return;
    providers_[id] = handler;
    ++handler->numServices_;
}

void ServiceProviders::BroadcastChange(unsigned int id)
{
    Message_ServiceProviderChanged message(id);
    Broadcast(message);
}

void TimeNotices::Notify(double timeDelta)
{
    auto const notify = [=](auto &object) { object.OnTimeDelta(timeDelta); };
    shaders.ForEach(notify);
    cursors.ForEach(notify);
    components.ForEach(notify);
}

void InputDevices::Connect(HumanInterfaceDevice &device)
{
    if (keyboard == nullptr)
    {
        Keyboard *const found = FindController<Keyboard>(device, "Keyboard");
        if (found != nullptr && found->IsSystemKeyboard())
            keyboard = found;
    }
    if (mouse == nullptr)
    {
        Mouse *const found = FindController<Mouse>(device, "Mouse");
        if (found != nullptr && found->IsSystemMouse())
            mouse = found;
    }
}

void InputDevices::EndConnect()
{
    if (keyboard == nullptr)
        ReportMissing(tolerateMissing_, "keyboard-device");
    if (mouse == nullptr)
        ReportMissing(tolerateMissing_, "mouse-device");
    parts_.mouseButtons.ResetRepeat();
    parts_.mouseButtons.ResetDoubleClick();
    parts_.focus.SetupKeyboard();
}

void InputDevices::Disconnect()
{
    parts_.keyboard.ResetRepeat();
    parts_.mouseButtons.ResetRepeat();
    parts_.mouseButtons.ResetDoubleClick();
    keyboard = nullptr;
    mouse = nullptr;
}

void InputDevices::SetTolerateMissing(bool tolerate)
{
    tolerateMissing_ = tolerate;
    GetLogOut() << "Changed gui-manager variable: TolerateMissingInputDevice = " << MakeString(tolerate) << std::endl;
}

} // namespace quillmarsh::gui::manager_parts
