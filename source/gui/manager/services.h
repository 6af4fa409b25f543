// Service providers, notices of the time, and input devices.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_SERVICES_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_SERVICES_H

#include "source/gui/manager/safelists.h"

#include <map>

namespace quillmarsh
{
class HumanInterfaceDevice;
class Keyboard;
class Mouse;
} // namespace quillmarsh

namespace quillmarsh::gui
{
class BaseShader;
class Cursor;
} // namespace quillmarsh::gui

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// Registry of service providers, and broadcasts, which walk the all-components queue. The walks over providers go by
/// ascending numbers, and read the registry anew after each call.
class ServiceProviders : NoCopy
{
public:
    explicit ServiceProviders(Parts &parts) : parts_(parts) {}

    bool Register(unsigned int id, MessageHandler &handler);
    /// `handler` may be null for any.
    bool Unregister(unsigned int id, MessageHandler const *handler);
    void UnregisterAll();
    MessageHandler *Get(unsigned int id) const;
    bool Send(unsigned int id, Message &message);
    bool Broadcast(Message &message);
    /// The handler is being destroyed: its entries go, and each change is broadcast.
    void OnDeleted(MessageHandler &handler);

    void PreEventDispatch(double timeDelta);
    void PostEventDispatch(double timeDelta);

private:
    /// Replaces the provider; null removes it. Tells nobody.
    void Store(unsigned int id, MessageHandler *handler);
    void BroadcastChange(unsigned int id);

    Parts &parts_;
    std::map<unsigned int, MessageHandler *> providers_;
};

/// Calls OnTimeDelta() of what has registered: shaders, then cursors, then components.
class TimeNotices : NoCopy
{
public:
    void Notify(double timeDelta);

    SafeList<BaseShader> shaders{e_list_time};
    SafeList<Cursor> cursors{e_list_time};
    SafeList<Component> components{e_list_time};
};

/// Keyboard and mouse of the system.
class InputDevices : NoCopy
{
public:
    explicit InputDevices(Parts &parts) : parts_(parts) {}

    void Connect(HumanInterfaceDevice &device);
    void EndConnect();
    void Disconnect();
    void SetTolerateMissing(bool tolerate);

    /// Null while there is none.
    Keyboard *keyboard = nullptr;
    Mouse *mouse = nullptr;

private:
    Parts &parts_;
    bool tolerateMissing_ = false;
};

} // namespace quillmarsh::gui::manager_parts

#endif
