// The two components that stand in no list of top-level components.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_TARGETS_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_TARGETS_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_manager.h>

namespace quillmarsh::gui
{

/// Stands for any target that is missing or was deleted, and handles nothing. Its area is e_area_void.
class Manager::NullTarget : public Component
{
public:
    NullTarget();

protected:
    bool HandleMessage(Message &message) override;
};

/// Stands for the application in all dispatch. Its area is e_area_void; it fills the window.
class Manager::ComponentToApplicationAdapter : public Component
{
public:
    ComponentToApplicationAdapter();

    /// Takes the kernel's application, or none.
    void ConnectApplication(bool connect);
    /// Without it, every message is refused.
    void EnableApplicationMessageDispatch(bool enable) { dispatch_ = enable; }

protected:
    /// Dispatches the message to the application.
    bool HandleMessage(Message &message) override;

private:
    Watch<Application> application_;
    bool dispatch_ = true;
};

} // namespace quillmarsh::gui

#endif
