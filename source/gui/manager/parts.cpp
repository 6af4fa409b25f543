#include "source/gui/manager/parts.h"

#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/samplereadsentry.h>

#include <utility>

namespace quillmarsh::gui::manager_parts
{

namespace
{

/// Keeps what is made or deleted meanwhile out of the lists.
class InsertsOff : NoCopy
{
public:
    explicit InsertsOff(Pending &pending) : pending_(pending) { SetAll(false); }
    ~InsertsOff() { SetAll(true); }

private:
    void SetAll(bool on) { pending_.componentInsert = pending_.shaderInsert = pending_.cursorInsert = on; }

    Pending &pending_;
};

} // namespace

Parts::Parts(Manager &owner)
    : manager(owner),
      queues(*this),
      cycleQueue(*this),
      resources(*this),
      services(*this),
      devices(*this),
      hitTest(*this),
      capture(*this),
      commandMode(*this),
      activation(*this),
      modality(*this),
      focus(*this),
      keyboard(*this),
      mouse(*this),
      cursorDisplay(*this),
      video(*this)
{
}

void Parts::Start()
{
    InsertsOff const insertsOff(pending);
    nullTarget = std::make_unique<NullTarget>();
    adapter = std::make_unique<Adapter>();
    cursorDisplay.Start();
    cursorDisplay.InvalidateHandles();
    cycleQueue.members.Erase(*nullTarget);
    focus.Start(*nullTarget);
    mouse.buttonTarget = nullTarget.get();
}

void Parts::Stop()
{
    cursorDisplay.DisplaySystemCursor(true);
    manager.DeleteAllComponents();
    manager.DeleteAllShaders();
    manager.DeleteAllCursors();
    InsertsOff const insertsOff(pending);
    cursorDisplay.Stop();
    adapter.reset();
    nullTarget.reset();
    manager.UnregisterAllFonts();
    manager.UnregisterAllTileTextures();
    // Providers outlive the manager, and are not to look for it when they are destroyed.
    services.UnregisterAll();
}

void Parts::Synchronise()
{
    video.PrepareResources(false, false);
    queues.UpdateComponentHierarchyChanges();
    queues.NotifyWindowResize();
    resources.NotifyListsChanged();
    resources.CacheTileTexturesAndFonts();
    resources.CacheShaders();
    resources.CacheCursors();
    if (std::exchange(pending.internalCursorsDirty, false))
        cursorDisplay.CacheHandles();
    if (std::exchange(pending.globalCursorParamsChanged, false))
    {
        pending.allGeometryDirty = true;
        cursorDisplay.DispatchGlobalParams();
    }
    if (std::exchange(pending.allGeometryDirty, false))
        queues.ReportAllDirty();
    queues.UpdateDirtyGeometry();
}

void Parts::DispatchInputEvents()
{
    manager.SyncObjectStates();
    timeDelta = Kernel::Instance().GetFrameTimeDelta();
    timeNotices.Notify(timeDelta);
    modality.EndIfHidden();
    services.PreEventDispatch(timeDelta);
    if (Mouse *const device = devices.mouse)
    {
        AsyncSampleReadSentry const sentry(*device, true);
        mouse.Dispatch(*device);
    }
    if (Keyboard *const device = devices.keyboard)
    {
        AsyncSampleReadSentry const sentry(*device, true);
        keyboard.Dispatch(*device);
    }
    services.PostEventDispatch(timeDelta);
}

void Parts::OnDeleted(Component &component)
{
    ++numDeleted;
    queues.OnDeleted(component);
    cycleQueue.members.Erase(component);
    timeNotices.components.Erase(component);
    resources.tileTextureRequests.Erase(component);
    resources.fontRequests.Erase(component);
    resources.shaderRequests.Erase(component);
    resources.cursorRequests.Erase(component);
    if (Membership::IsMarked(component, e_mark_hit_records))
        hitTest.OnDeleted(component);
    if (Membership::IsMarked(component, e_mark_clicked_branches))
        clickBranches.OnDeleted(component);
    if (Membership::IsMarked(component, e_mark_modal_stack))
        modality.OnDeleted(component);
    if (Membership::IsMarked(component, e_mark_target))
    {
        focus.OnDeleted(component);
        mouse.OnDeleted(component);
    }
}

} // namespace quillmarsh::gui::manager_parts
