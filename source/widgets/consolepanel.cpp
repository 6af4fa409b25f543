#include <quillmarsh/widgets/consolepanel.h>

#include "source/widgets/consoleline.h"
#include "source/widgets/dragthumb.h"

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/commands/screenshotcmd.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/consoletext.h>
#include <quillmarsh/widgets/measures.h>

#include <algorithm>
#include <cmath>

namespace quillmarsh::widgets
{

namespace
{

/// Part of the window's height that the console takes.
constexpr float s_heightShare = 0.45f;

ConsoleOutputBuffer *GetOutputBuffer()
{
    ConsoleBuffers *const buffers = Kernel::Instance().GetConsoleBuffers();
    return buffers != nullptr ? &buffers->GetOutputBuffer() : nullptr;
}

} // namespace

ConsolePanel::ConsolePanel()
    : Panel("Console"),
      text_(new ConsoleText(&GetContent(), GetOutputBuffer())),
      line_(new Line(*this, GetContent()))
{
    SetMovable(false);
    SetResizable(false);
    HideFromScreenshots();
    gui::Manager::Instance().TimeNotifyRegister(*this, true);
}

ConsolePanel::~ConsolePanel() = default;

void ConsolePanel::Enter(string const &line)
{
    text_->ScrollToEnd();
    string trimmed;
    TrimWhitespace(line, trimmed);
    if (!trimmed.empty() && trimmed.front() != '#')
        Kernel::Instance().QueueCommandLine(line);
}

// Geometry.

void ConsolePanel::RecalcSize()
{
    vec2 const window = gui::Manager::Instance().GetWindowSize();
    SetSize(window.x, std::ceil(window.y * s_heightShare));
}

void ConsolePanel::RecalcLayout()
{
    Panel::RecalcLayout();
    SetPosition(0, 0);
    vec2 const size = GetContent().GetSize();
    float const lineHeight = std::min(line_->GetSize().y, size.y);
    float const textHeight = std::max(size.y - lineHeight - Measures::Pixels(Measures::Gap), 0.0f);
    PlaceComponent(*text_, {0, 0}, {size.x, textHeight});
    PlaceComponent(*line_, {0, size.y - lineHeight}, {size.x, lineHeight});
}

void ConsolePanel::OnWindowResize(unsigned int, unsigned int)
{
    ReportDirtyGeometry();
}

// Opening and closing.

void ConsolePanel::Toggle()
{
    gui::Watch<ConsolePanel> const self(*this);
    if (IsVisible())
        Close();
    else
    {
        RememberFocus();
        Open();
        if (self.Get() != nullptr && gui::Manager::Instance().IsRunningModal())
            RunModal();
    }
    if (self.Get() != nullptr)
        FollowVisibility();
}

void ConsolePanel::OnChangedActive()
{
    Panel::OnChangedActive();
    // A closed console waits for its key.
    gui::Manager::Instance().TimeNotifyRegister(*this, true);
}

void ConsolePanel::OnTimeDelta(double seconds)
{
    gui::Watch<ConsolePanel> const self(*this);
    Panel::OnTimeDelta(seconds);
    if (self.Get() == nullptr)
        return;
    if (gui::Manager::Instance().IsKeyDown(toggleKey_))
        Toggle();
    if (self.Get() != nullptr)
        FollowVisibility();
}

/// Moves the focus after the panel was shown or hidden: by a key, by the program, or around a screenshot.
void ConsolePanel::FollowVisibility()
{
    if (IsVisible() == wasVisible_)
        return;
    wasVisible_ = IsVisible();
    if (!wasVisible_)
        return RestoreFocus();
    RememberFocus();
    HideFromScreenshots();
    gui::Watch<ConsolePanel> const self(*this);
    if (!IsActive())
        ActivateTopLevel(true);
    if (self.Get() != nullptr)
        line_->RequestKeyboardFocus();
}

void ConsolePanel::RememberFocus()
{
    gui::Manager const &manager = gui::Manager::Instance();
    gui::Component *const target = manager.GetKeyboardFocusTarget();
    if (target == this || IsAncestorOf(*target))
        return;
    bool const isComponent = target->IsFocused() && !manager.IsKeyboardFocusTargetApplication();
    previousFocus_ = isComponent ? target : nullptr;
}

void ConsolePanel::RestoreFocus()
{
    gui::Manager &manager = gui::Manager::Instance();
    gui::Component const *const target = manager.GetKeyboardFocusTarget();
    bool const isOurs = target == this || IsAncestorOf(*target);
    bool const isTaken = !isOurs && target->IsFocused() && !manager.IsKeyboardFocusTargetApplication();
    if (isTaken)
        return;
    gui::Watch<gui::Component> const previous = previousFocus_;
    if (previous.Get() != nullptr && previous->IsBranchVisible())
    {
        previous->GetTopLevelAncestor().ActivateTopLevel(false);
        if (previous.Get() != nullptr)
            previous->RequestKeyboardFocus();
    }
    else if (!manager.IsRunningModal())
        manager.ActivateApplication();
}

/// Gives the panel to the command that takes screenshots, as soon as there is one.
void ConsolePanel::HideFromScreenshots()
{
    using framework_commands::ScreenShotCmd;
    std_command_interpreter::Interpreter const *const interpreter = Kernel::Instance().GetCommandInterpreter();
    unsigned int const numCommands = interpreter != nullptr ? interpreter->GetNumExternalCommands() : 0;
    for (unsigned int i = 0; i < numCommands; ++i)
    {
        auto *const command = dynamic_cast<ScreenShotCmd *>(interpreter->GetExternalCommand(i));
        if (command == nullptr)
            continue;
        // A program's own callback stays.
        ScreenShotCmd::ScreenShotCallback *const callback = command->GetCallback();
        if (callback == nullptr)
            command->SetCallback(new ScreenShotCmd::ScreenShotCallback_AutoHideComponent(this));
        else if (auto *const hider = dynamic_cast<ScreenShotCmd::ScreenShotCallback_AutoHideComponent *>(callback))
            hider->SetAutoHideTarget(this);
    }
}

} // namespace quillmarsh::widgets
