#include "source/widgets/menubackdrop.h"

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/measures.h>

#include <algorithm>
#include <cmath>

namespace quillmarsh::widgets
{

namespace
{

/// In front of everything but what a program puts there on purpose.
constexpr unsigned int s_menuLayer = 0x40000000;

/// Keeps a length of the window's extent inside it; what is too long begins at its edge.
float KeepInside(float place, float length, float extent)
{
    return std::max(0.0F, std::min(place, extent - length));
}

} // namespace

Menu::Backdrop::Backdrop(gui::Rectangle const &anchor) : anchor_(anchor)
{
    SetLayer(s_menuLayer);
    gui::Manager::Instance().CycleQueueRemove(*this);
}

void Menu::Backdrop::Run(Menu &menu)
{
    gui::Manager &manager = gui::Manager::Instance();
    gui::Watch<Menu> const watch(menu);
    hadFocus_ = manager.GetKeyboardFocusTarget();
    wasActive_ = manager.GetActiveTopLevel();
    wasApplicationActive_ = manager.IsApplicationActive();
    openedAt_ = mouseAt_ = manager.GetMousePosition();
    UpdateGeometry(false);
    RunModal();
    if (watch.Get() != nullptr)
        watch->RequestKeyboardFocus();
}

void Menu::Backdrop::Close()
{
    if (isClosing_)
        return;
    isClosing_ = true;
    gui::Manager &manager = gui::Manager::Instance();
    gui::Watch<Backdrop> const self(*this);
    gui::Watch<gui::Component> const hadFocus = hadFocus_;
    gui::Watch<gui::Component> const wasActive = wasActive_;
    bool const wasApplicationActive = wasApplicationActive_;
    if (manager.GetModalTarget() == this)
    {
        // The modal component below, if there is one, becomes active by that.
        EndModal();
        bool const isFree = !manager.IsRunningModal();
        if (isFree && wasApplicationActive)
            manager.ActivateApplication();
        else if (isFree && wasActive.Get() != nullptr && wasActive->IsVisible())
            manager.ActivateTopLevel(*wasActive, false);
        if (hadFocus.Get() != nullptr && hadFocus->IsEnabled() && hadFocus->IsBranchVisible())
            hadFocus->RequestKeyboardFocus();
    }
    delete self.Get();
}

bool Menu::Backdrop::HasMouseMoved()
{
    vec2 const position = gui::Manager::Instance().GetMousePosition();
    if (position == mouseAt_)
        return false;
    mouseAt_ = position;
    vec2 const distance = position - openedAt_;
    if (std::max(std::abs(distance.x), std::abs(distance.y)) >= Measures::Pixels(Measures::Grid))
        takesRelease_ = true;
    return true;
}

void Menu::Backdrop::RecalcSize()
{
    SetPosition(0, 0);
    SetSize(gui::Manager::Instance().GetWindowSize());
}

void Menu::Backdrop::RecalcLayout()
{
    gui::Component *const menu = GetChild(0);
    if (menu == nullptr)
        return;
    vec2 const window = GetSize();
    vec2 const size = menu->GetSize();
    vec2 const far(anchor_.x + anchor_.width, anchor_.y + anchor_.height);
    // To the left of a place without room to the right; above one without room below.
    float const x = anchor_.x + size.x > window.x ? far.x - size.x : anchor_.x;
    bool const isAbove = far.y + size.y > window.y && anchor_.y - size.y >= 0;
    float const y = isAbove ? anchor_.y - size.y : far.y;
    menu->SetPosition(std::round(KeepInside(x, size.x, window.x)), std::round(KeepInside(y, size.y, window.y)));
}

void Menu::Backdrop::OnWindowResize(unsigned int, unsigned int)
{
    ReportDirtyGeometry();
}

bool Menu::Backdrop::OnDeactivate(bool)
{
    // Something else goes on: another modal component, or another one that was activated.
    Close();
    return true;
}

bool Menu::Backdrop::OnMouseButton(bool down, eMouseButton, bool, unsigned int repeatCount, vec2 const &)
{
    if (down && repeatCount == 0)
        Close();
    return true;
}

} // namespace quillmarsh::widgets
