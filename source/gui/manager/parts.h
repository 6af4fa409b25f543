// All parts of the manager.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_PARTS_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_PARTS_H

#include "source/gui/manager/activation.h"
#include "source/gui/manager/clickbranches.h"
#include "source/gui/manager/commandmode.h"
#include "source/gui/manager/componentqueues.h"
#include "source/gui/manager/display.h"
#include "source/gui/manager/hittest.h"
#include "source/gui/manager/keyboard.h"
#include "source/gui/manager/mousebuttons.h"
#include "source/gui/manager/mousecapture.h"
#include "source/gui/manager/mousedispatch.h"
#include "source/gui/manager/pending.h"
#include "source/gui/manager/resources.h"
#include "source/gui/manager/services.h"
#include "source/gui/manager/targets.h"

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_shaders.h>

namespace quillmarsh::gui::manager_parts
{

/// State of the manager: its parts by value, which reach one another through this record. The manager forwards each
/// operation to one part. Its constructor stores itself as the instance, makes this record, and then calls Start(): only
/// then may a component or cursor be made. Its destructor calls Stop() first.
struct Parts : NoCopy
{
    explicit Parts(Manager &owner);

    /// Makes the two targets and the null cursor, with the insert switches off; the adapter stays in the cycle queue.
    void Start();
    /// Shows the system's cursor; deletes components, shaders and cursors, then, with the switches off, the null
    /// cursor, the adapter and the null target; unregisters fonts and tile textures.
    void Stop();

    /// Steps of Manager::SyncObjectStates(), in their order.
    void Synchronise();
    /// Steps of Manager::DispatchInputEvents(), in their order.
    void DispatchInputEvents();
    /// Repairs every part after a component was deleted: lists by their places, the rest by its marks.
    void OnDeleted(Component &component);

    /// @name Names of the private classes of the manager
    /// @{
    using NullTarget = Manager::NullTarget;
    using Adapter = Manager::ComponentToApplicationAdapter;
    /// @}

    Manager &manager;
    Pending pending;
    double timeDelta = 0;
    /// Components deleted so far. Who keeps plain pointers across a call of client code compares it.
    unsigned int numDeleted = 0;

    ComponentQueues queues;
    CycleQueue cycleQueue;
    Resources resources;
    TimeNotices timeNotices;
    ServiceProviders services;
    InputDevices devices;

    AutoPtr<NullTarget> nullTarget;
    AutoPtr<Adapter> adapter;

    HitTest hitTest;
    MouseButtons mouseButtons;
    MouseCapture capture;
    CommandMode commandMode;
    ClickBranches clickBranches;
    Activation activation;
    Modality modality;
    KeyboardFocus focus;
    KeyboardDispatch keyboard;
    MouseDispatch mouse;
    CursorDisplay cursorDisplay;
    VideoConnection video;
};

} // namespace quillmarsh::gui::manager_parts

#endif
