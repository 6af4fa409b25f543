#include <quillmarsh/gui/gui_manager.h>

#include "source/gui/manager/parts.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_cursors.h>

namespace quillmarsh::gui
{

namespace
{

string MakeManagerName()
{
    return FormatClassName(GetTypeName(typeid(Manager)));
}

} // namespace

Manager *Manager::s_pInstanceManager = nullptr;

Manager::Manager()
{
    QUILLMARSH_ASSERT(s_pInstanceManager == nullptr, MakeManagerName() + " singleton already created.");
    s_pInstanceManager = this;
    parts_ = std::make_unique<manager_parts::Parts>(*this);
    parts_->Start();
}

Manager::~Manager()
{
    QUILLMARSH_ASSERT(s_pInstanceManager != nullptr, "Destructing non-existent " + MakeManagerName() + " singleton.");
    // Its components look for it while they are deleted, also after an ignored assertion.
    s_pInstanceManager = this;
    parts_->Stop();
    s_pInstanceManager = nullptr;
}

Manager &Manager::Instance()
{
    QUILLMARSH_ASSERT(s_pInstanceManager != nullptr, MakeManagerName() + " singleton is not created.");
    return *s_pInstanceManager;
}

Manager *Manager::InstancePtr()
{
    QUILLMARSH_ASSERT(s_pInstanceManager != nullptr, MakeManagerName() + " singleton is not created.");
    return s_pInstanceManager;
}

void Manager::DispatchInputEvents()
{
    parts_->DispatchInputEvents();
}

void Manager::Draw()
{
    SyncObjectStates();
    parts_->video.Draw();
}

void Manager::SyncObjectStates()
{
    parts_->Synchronise();
}

double Manager::GetTimeDelta() const
{
    return parts_->timeDelta;
}

unsigned int Manager::GetNumTopLevelComponents() const
{
    return parts_->queues.topLevel.GetSize();
}

Component *Manager::GetTopLevelComponent(unsigned int index) const
{
    return parts_->queues.topLevel.Get(index);
}

void Manager::DeleteAllComponents()
{
    parts_->queues.DeleteAll();
}

void Manager::BringToFront(Component &component)
{
    parts_->queues.BringToFront(component);
}

void Manager::SendToBack(Component &component)
{
    parts_->queues.SendToBack(component);
}

void Manager::SetZOrder(Component &front, Component &back)
{
    parts_->queues.SetZOrder(front, back);
}

void Manager::ForceHitTestAtNextFrame()
{
    parts_->pending.forceHitTest = true;
}

void Manager::ReportDirtyGeometry(Component &component)
{
    parts_->queues.ReportDirtyGeometry(component);
}

void Manager::UpdateDirtyGeometry()
{
    parts_->queues.UpdateDirtyGeometry();
}

void Manager::UpdateAllGeometry()
{
    parts_->queues.UpdateComponentHierarchyChanges();
    parts_->queues.ReportAllDirty();
    parts_->queues.UpdateDirtyGeometry();
}

bool Manager::IntersectsWindow(Component &component) const
{
    return parts_->video.IntersectsWindow(component);
}

unsigned int Manager::GetWindowWidth() const
{
    return parts_->video.GetWidth();
}

unsigned int Manager::GetWindowHeight() const
{
    return parts_->video.GetHeight();
}

vec2 Manager::GetWindowSize() const
{
    return {static_cast<float>(GetWindowWidth()), static_cast<float>(GetWindowHeight())};
}

bool Manager::BroadcastMessage(Message &message)
{
    return parts_->services.Broadcast(message);
}

bool Manager::RegisterServiceProvider(unsigned int id, MessageHandler &handler)
{
    return parts_->services.Register(id, handler);
}

bool Manager::UnregisterServiceProvider(unsigned int id, MessageHandler &handler)
{
    return parts_->services.Unregister(id, &handler);
}

bool Manager::UnregisterServiceProvider(unsigned int id)
{
    return parts_->services.Unregister(id, nullptr);
}

void Manager::UnregisterAllServiceProviders()
{
    parts_->services.UnregisterAll();
}

MessageHandler *Manager::GetServiceProvider(unsigned int id) const
{
    return parts_->services.Get(id);
}

bool Manager::SendMessageToServiceProvider(unsigned int id, Message &message)
{
    return parts_->services.Send(id, message);
}

void Manager::EnableApplicationMessageDispatch(bool enable)
{
    parts_->adapter->EnableApplicationMessageDispatch(enable);
}

namespace
{

template<typename T>
void SetMember(manager_parts::SafeList<T> &list, T &object, bool on)
{
    if (on)
        list.Append(object);
    else
        list.Erase(object);
}

} // namespace

void Manager::TimeNotifyRegister(Component &component, bool on)
{
    SetMember(parts_->timeNotices.components, component, on);
}

void Manager::TimeNotifyRegister(BaseShader &shader, bool on)
{
    SetMember(parts_->timeNotices.shaders, shader, on);
}

void Manager::TimeNotifyRegister(Cursor &cursor, bool on)
{
    SetMember(parts_->timeNotices.cursors, cursor, on);
}

void Manager::PrepareVideoRendererResources(bool tileTextures, bool fonts)
{
    parts_->video.PrepareResources(tileTextures, fonts);
}

void Manager::DumpComponentHierarchy(ostream &out, unsigned int tabs, bool limitToTopLevel, bool showDepth,
                                     bool showDetails) const
{
    parts_->queues.topLevel.ForEach(
        [&](Component const &component)
        { component.DumpHierarchy(out, tabs, showDepth, showDetails, 0, limitToTopLevel, 0); });
}

void Manager::DumpCycleQueue(ostream &out, unsigned int tabs) const
{
    parts_->cycleQueue.Dump(out, tabs);
}

void Manager::NotifyObjectCreateDelete(Component &component, bool created)
{
    if (!created)
    {
        parts_->OnDeleted(component);
        return;
    }
    if (parts_->cycleQueue.insertOnCreate)
        parts_->cycleQueue.members.Append(component);
    parts_->resources.tileTextureRequests.Append(component);
    parts_->resources.fontRequests.Append(component);
    parts_->queues.OnCreated(component);
}

void Manager::NotifyObjectCreateDelete(BaseShader &shader, bool created)
{
    if (created)
        parts_->resources.OnCreated(shader);
    else
        parts_->resources.OnDeleted(shader);
}

void Manager::NotifyObjectCreateDelete(Cursor &cursor, bool created)
{
    if (created)
        parts_->resources.OnCreated(cursor);
    else
        parts_->resources.OnDeleted(cursor);
}

void Manager::NotifyServiceProviderDeleted(MessageHandler &handler)
{
    parts_->services.OnDeleted(handler);
}

void Manager::NotifyUserDeleted(VideoResourceUser &user)
{
    if (s_pInstanceManager != nullptr)
        s_pInstanceManager->parts_->resources.OnDeleted(user);
}

void Manager::NotifyComponentHierarchyChanged(Component &component)
{
    if (!component.IsTopLevel())
        parts_->cycleQueue.members.Erase(component);
    else if (parts_->cycleQueue.insertOnTopLevel)
        parts_->cycleQueue.members.Append(component);
    parts_->queues.OnHierarchyChanged(component);
}

void Manager::NotifyComponentLayerChanged(Component &)
{
    parts_->queues.OnLayerChanged();
}

void Manager::NotifyComponentOverlayChanged(Component &component)
{
    parts_->queues.OnOverlayChanged(component);
}

void Manager::NotifyComponentVisibilityChanged(Component &component)
{
    parts_->queues.OnVisibilityChanged(component);
    bool const hidesActive = component.IsTopLevel() && component.IsActive() && !component.IsVisible();
    if (hidesActive && parts_->activation.IsAllowed())
        parts_->cycleQueue.Activate(true);
}

void Manager::NotifyNameChanged(BaseShader &shader)
{
    parts_->resources.OnRenamed(shader);
}

void Manager::NotifyNameChanged(Cursor &cursor)
{
    parts_->resources.OnRenamed(cursor);
}

void Manager::NotifyGlobalCursorParamsChanged()
{
    parts_->pending.globalCursorParamsChanged = true;
}

void Manager::ConnectApplication(bool connect)
{
    parts_->adapter->ConnectApplication(connect);
}

void Manager::NotifyApplicationWindowActive(bool active)
{
    parts_->activation.OnWindowActive(active);
}

void Manager::NotifyApplicationWindowCreated()
{
    parts_->activation.OnWindowCreated();
}

void Manager::BeginConnectHumanInterfaceDevices() {}

void Manager::ConnectHumanInterfaceDevice(HumanInterfaceDevice &device)
{
    parts_->devices.Connect(device);
}

void Manager::EndConnectHumanInterfaceDevices()
{
    parts_->devices.EndConnect();
}

void Manager::DisconnectHumanInterfaceDevices()
{
    parts_->devices.Disconnect();
}

void Manager::SetTolerateMissingInputDevice(bool tolerate)
{
    parts_->devices.SetTolerateMissing(tolerate);
}

void Manager::ConnectVideoRenderer(VideoRenderer &renderer)
{
    parts_->video.Connect(renderer);
}

void Manager::DisconnectVideoRenderer()
{
    parts_->video.Disconnect();
}

void Manager::CreateVideoResources(bool onlyIfUnmanaged)
{
    parts_->video.CreateResources(onlyIfUnmanaged);
}

void Manager::ReleaseVideoResources(bool onlyIfUnmanaged)
{
    parts_->video.ReleaseResources(onlyIfUnmanaged);
}

void Manager::OnWindowResize(unsigned int width, unsigned int height)
{
    parts_->video.OnWindowResize(width, height);
}

} // namespace quillmarsh::gui
