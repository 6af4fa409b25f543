// Receivers of GUI messages, their hooks, and senders of commands.
#ifndef QUILLMARSH_GUI_GUI_MESSAGEHANDLER_H
#define QUILLMARSH_GUI_GUI_MESSAGEHANDLER_H

#include <quillmarsh/gui/gui_watch.h>
#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh::gui
{

class Message;
namespace manager_parts
{
class ServiceProviders;
} // namespace manager_parts

/// Base of everything that receives GUI messages: components and the application. Frame thread only.
///
/// Other handlers can watch and filter its messages as hooks, and it can provide services to others. A handler that
/// returns true has consumed the message. Any handler may be deleted while a message is dispatched, also the one that
/// handles it: a destroyed handler is no longer the hook of any other, and no longer provides a service.
class QUILLMARSH_API MessageHandler
{
public:
    virtual ~MessageHandler();

    /// @name Sending
    /// @{

    /// Sends a message to this handler: sets its target, then asks the hooks in their order, then HandleMessage().
    /// Returns true if one of them consumed it; the later ones do not get it then. Hooks of a hook are not asked. The
    /// number of hooks is read anew at each step, as a hook may change the list.
    bool DispatchMessage(Message &message);
    bool SendMessageTo(MessageHandler &to, Message &message) { return to.DispatchMessage(message); }
    bool SendMessageToSelf(Message &message) { return DispatchMessage(message); }
    /// Sends a message to all components; see Manager::BroadcastMessage().
    bool BroadcastMessage(Message &message);
    /// Sends a message to the provider of a service. Returns false if there is none.
    bool SendMessageToServiceProvider(unsigned int id, Message &message);
    /// @}

    /// @name Services
    /// As those of Manager, for this handler.
    /// @{
    bool RegisterAsServiceProvider(unsigned int id);
    bool UnregisterAsServiceProvider(unsigned int id);
    bool IsRegisteredAsServiceProvider(unsigned int id) const;
    /// @}

    /// @name Hooks
    /// They are borrowed. A hook stands in the list at most once.
    /// @{

    /// Installs a hook: at the front of the list, or ahead of `before` if that is in the list, else at the end. A hook
    /// that is installed already moves. This handler itself is ignored.
    void InstallMessageHook(MessageHandler &hook, bool atFront, MessageHandler const *before);
    /// Uninstalls a hook; harmless if it is not installed.
    void UninstallMessageHook(MessageHandler &hook);
    void UninstallAllMessageHooks();
    unsigned int GetNumMessageHooks() const { return static_cast<unsigned int>(hooks_.size()); }
    /// Returns a hook by index; null past the end.
    MessageHandler *GetMessageHook(unsigned int index);
    MessageHandler const *GetMessageHook(unsigned int index) const;
    /// @}

protected:
    MessageHandler() = default;
    /// Copies the list of hooks.
    MessageHandler(MessageHandler const &other);
    MessageHandler &operator=(MessageHandler const &other);

    /// Handles a message. Returns true if it is consumed, which the base class never does. Called for a message to
    /// another handler when this one is its hook; Message::GetTarget() tells.
    virtual bool HandleMessage(Message &message);

    /// @name Life as a service provider
    /// The base class does nothing.
    /// @{

    /// This handler provides the service now.
    virtual void OnRegisteredAsServiceProvider(unsigned int id);
    /// This handler does not provide the service any more. Not called for a handler that is destroyed.
    virtual void OnUnregisteredAsServiceProvider(unsigned int id);
    /// Called once for each service and frame, before input is dispatched. `timeDelta` is in seconds.
    virtual void ServiceProviderPreEventDispatch(double timeDelta);
    /// Likewise, after input was dispatched.
    virtual void ServiceProviderPostEventDispatch(double timeDelta);
    /// @}

    /// Makes all watches of this handler null. Destructors of derived classes that call handlers begin with it.
    void ReleaseWatches();

private:
    friend class WatchLink;
    friend class manager_parts::ServiceProviders;

    /// Adds this handler to the hook's list of the handlers that it watches, or removes it.
    void EnterInHook(MessageHandler &hook);
    void LeaveHook(MessageHandler &hook);

    std::vector<MessageHandler *> hooks_;
    /// Handlers that have this one as hook, so that it can leave them when it is destroyed.
    std::vector<MessageHandler *> hookedHandlers_;
    WatchLink *firstWatch_ = nullptr;
    /// Number of services that this handler provides; 0 spares the destructor the search.
    unsigned int numServices_ = 0;
};

/// Second base of widgets that send a command, which is a number, to a handler. Frame thread only.
class QUILLMARSH_API CommandSender
{
public:
    virtual ~CommandSender();

    /// Returns the handler that gets the command; null for none.
    MessageHandler *GetCommandTarget() const { return commandTarget_; }
    /// Sets the target, which is borrowed: whoever deletes the target first sets null here.
    void SetCommandTarget(MessageHandler *target) { commandTarget_ = target; }
    unsigned int GetCommandID() const { return commandID_; }
    void SetCommandID(unsigned int id) { commandID_ = id; }

    /// Sends any message to the target. Returns whether it was consumed; false without a target.
    bool SendMessageToTarget(Message &message);
    /// Sends a Message_Command to the target, likewise.
    bool SendCommandMessageToTarget();

protected:
    explicit CommandSender(MessageHandler *target = nullptr, unsigned int id = 0)
        : commandTarget_(target),
          commandID_(id)
    {
    }

private:
    MessageHandler *commandTarget_;
    unsigned int commandID_;
};

} // namespace quillmarsh::gui

#endif
