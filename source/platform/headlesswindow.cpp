#include "source/platform/headlesswindow.h"

#include "source/platform/desktop.h"
#include "source/platform/desktopevents.h"

#include <utility>

namespace quillmarsh::platform
{
namespace
{

/// The window with the focus. The desktop's thread only.
Window *s_active = nullptr;

void Tell(eDesktopEvent kind, Window &window, bool isOn = false)
{
    DesktopEvent event = {kind};
    event.window = &window;
    event.isOn = isOn;
    TellDesktop(event);
}

bool IsShown(eWindowState state)
{
    return state != eWindowState::e_hidden && state != eWindowState::e_minimized;
}

bool CoversDesktop(eWindowState state)
{
    return state == eWindowState::e_maximized || state == eWindowState::e_fullscreen;
}

} // namespace

Window::Headless::~Headless()
{
    if (s_active == &window_)
        s_active = nullptr;
}

bool Window::Headless::IsActive() const
{
    return s_active == &window_;
}

void Window::Headless::Deactivate()
{
    if (Window *const window = std::exchange(s_active, nullptr))
        Tell(eDesktopEvent::e_windowActive, *window, false);
}

void Window::Headless::Activate()
{
    if (IsActive() || !IsShown(state_))
        return;
    std::weak_ptr<char> const life = life_;
    Deactivate();
    if (life.expired() || IsActive() || !IsShown(state_))
        return;
    s_active = &window_;
    Tell(eDesktopEvent::e_windowActive, window_, true);
}

void Window::Headless::Place(Area const &area)
{
    std::weak_ptr<char> const life = life_;
    window_.SetPosition(area.position);
    if (!life.expired())
        window_.SetSize(area.size);
}

void Window::Headless::Become(eWindowState state)
{
    std::weak_ptr<char> const life = life_;
    bool const wasShown = IsShown(std::exchange(state_, state));
    if (!IsShown(state) && IsActive())
        Deactivate();
    if (!life.expired())
        Tell(eDesktopEvent::e_windowGeometry, window_);
    if (life.expired() || !IsShown(state_))
        return;
    if (!wasShown)
        Activate();
    if (!life.expired())
        window_.Invalidate();
}

void Window::Headless::Enter(eWindowState state, std::optional<Size> size)
{
    if (state == state_ && !size)
        return;
    if (state == eWindowState::e_minimized)
        stateBefore_ = state_ == eWindowState::e_hidden ? eWindowState::e_normal : state_;
    if (CoversDesktop(state) && !placeBefore_)
        placeBefore_ = Area{window_.GetPosition(), window_.GetSize()};
    std::weak_ptr<char> const life = life_;
    if (CoversDesktop(state))
        Place({{}, size.value_or(window_.GetWorkArea().size)});
    else if (state == eWindowState::e_normal && placeBefore_)
        Place(*std::exchange(placeBefore_, std::nullopt));
    if (!life.expired())
        Become(state);
}

void Window::Headless::Restore()
{
    if (state_ == eWindowState::e_minimized)
        Become(stateBefore_);
    else if (state_ != eWindowState::e_hidden)
        Enter(eWindowState::e_normal);
}

void Window::HeadlessDeleter::operator()(Headless *headless) const
{
    delete headless;
}

eWindowState Window::GetState() const
{
    return headless_ ? headless_->GetState() : GetStateOnDesktop();
}

void Window::Show()
{
    if (!headless_)
        ShowOnDesktop();
    else if (headless_->GetState() == eWindowState::e_hidden)
        headless_->Enter(eWindowState::e_normal);
}

void Window::Hide()
{
    headless_ ? headless_->Enter(eWindowState::e_hidden) : HideOnDesktop();
}

void Window::Minimize()
{
    headless_ ? headless_->Enter(eWindowState::e_minimized) : MinimizeOnDesktop();
}

void Window::Maximize()
{
    headless_ ? headless_->Enter(eWindowState::e_maximized) : MaximizeOnDesktop();
}

void Window::Restore()
{
    headless_ ? headless_->Restore() : RestoreOnDesktop();
}

void Window::SetFullscreen()
{
    string reason;
    if (headless_)
        headless_->Enter(eWindowState::e_fullscreen);
    else
        SetFullscreenOnDesktop(nullptr, reason);
}

bool Window::SetFullscreen(DisplayMode const &mode, string &reason)
{
    if (!headless_)
        return SetFullscreenOnDesktop(&mode, reason);
    headless_->Enter(eWindowState::e_fullscreen, Size{static_cast<int>(mode.width), static_cast<int>(mode.height)});
    return true;
}

void Window::Activate()
{
    headless_ ? headless_->Activate() : ActivateOnDesktop();
}

bool Window::IsActive() const
{
    return headless_ ? headless_->IsActive() : IsActiveOnDesktop();
}

Window::Area Window::GetWorkArea() const
{
    platform::Area area;
    if (!headless_)
        return GetWorkAreaOnDesktop();
    ReadWorkArea(area);
    return {{area.left, area.top}, {area.right - area.left, area.bottom - area.top}};
}

} // namespace quillmarsh::platform
