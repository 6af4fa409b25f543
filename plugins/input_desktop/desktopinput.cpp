#include "desktopinput.h"

#include <quillmarsh/framework/kernel.h>

#include <ostream>

namespace input_desktop
{

using namespace quillmarsh;
using platform::DesktopEvent;
using platform::eDesktopEvent;

DesktopInput::~DesktopInput()
{
    if (isCursorHeld_)
        platform::HoldCursor(false);
}

void DesktopInput::SetWantsWindow(bool wants)
{
    wantsWindow_ = wants && !hasFailed_;
    if (!wants)
        window_.reset();
}

bool DesktopInput::HasOrWantsWindow() const
{
    return Window::GetNumOpen() > 0 || (wantsWindow_ && platform::HasDisplay());
}

void DesktopInput::Update()
{
    if (wantsWindow_ && window_ == nullptr && Window::GetMain() == nullptr)
        OpenWindow();
    CursorWish const wish = desktop_.TakeWish();
    if (wish.isHeld != isCursorHeld_)
        platform::HoldCursor(wish.isHeld);
    isCursorHeld_ = wish.isHeld;
    Window *const window = GetCurrentWindow();
    if (wish.mustMove && window != nullptr)
        window->MoveCursor(wish.x, wish.y);
}

void DesktopInput::OpenWindow()
{
    platform::WindowDesc desc;
    desc.role = platform::eWindowRole::e_tool;
    desc.title = "Quillmarsh input";
    desc.width = 320;
    desc.height = 240;
    desc.isFilled = true;
    string reason;
    if (platform::HasDisplay())
        window_ = Window::Open(desc, reason);
    if (window_ != nullptr)
        return window_->Show();
    // No further attempt is made: keyboard and mouse go, for which the devices are configured anew.
    hasFailed_ = true;
    wantsWindow_ = false;
    if (!reason.empty())
        GetConOut() << "Keyboard and mouse are not available, because no window can be opened: " << reason << std::endl;
}

DesktopInput::Window *DesktopInput::GetCurrentWindow() const
{
    Window *const active = Window::GetActive();
    Window *const main = Window::GetMain();
    return active != nullptr ? active : main != nullptr ? main : window_.get();
}

void DesktopInput::OnDesktopEvent(DesktopEvent const &event)
{
    switch (event.kind)
    {
    case eDesktopEvent::e_key:
        desktop_.OnLocks(event.modifiers.isCapsLockOn, event.modifiers.isNumLockOn);
        if (!event.isRepeat)
            desktop_.OnKey(event.key, event.isOn);
        break;
    case eDesktopEvent::e_mouseMove:
        desktop_.OnMove(event.moveX, event.moveY);
        desktop_.OnPosition(event.x, event.y);
        break;
    case eDesktopEvent::e_mouseButton:
        desktop_.OnButton(event.button, event.isOn);
        break;
    case eDesktopEvent::e_mouseWheel:
        desktop_.OnWheel(event.wheel);
        break;
    case eDesktopEvent::e_mouseInside:
        desktop_.OnInside(event.isOn);
        break;
    default:
        if (event.window != nullptr)
            OnWindowEvent(event);
        break;
    }
}

void DesktopInput::OnWindowEvent(DesktopEvent const &event)
{
    bool const isOurs = event.window == window_.get();
    bool const isCurrent = event.window == GetCurrentWindow();
    bool const loses = event.kind == eDesktopEvent::e_windowActive && !event.isOn;
    if (loses || (event.kind == eDesktopEvent::e_windowClosing && isCurrent))
        desktop_.OnFocusLost();
    else if (isCurrent)
        desktop_.OnSize(event.window->GetSize().width, event.window->GetSize().height);
    if (event.kind == eDesktopEvent::e_windowCloseWish && isOurs)
        Kernel::Instance().RequestExit();
    if (event.kind != eDesktopEvent::e_windowOpened)
        return;
    // A new window needs the wish to be carried out again.
    isCursorHeld_ = false;
    if (event.window->GetRole() == platform::eWindowRole::e_main)
        window_.reset();
}

} // namespace input_desktop
