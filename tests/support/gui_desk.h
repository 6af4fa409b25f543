// A GUI manager with fed mouse and keyboard, and components that record what they are told.
#ifndef QUILLMARSH_TESTS_SUPPORT_GUI_DESK_H
#define QUILLMARSH_TESTS_SUPPORT_GUI_DESK_H

#include "tests/support/controller_device.h"
#include "tests/support/test_kernel.h"

#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_messages.h>

#include <array>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

namespace quillmarsh::tests
{

/// Mouse of the system whose state the test sets.
class FedMouse : public AttachedController<Mouse>
{
public:
    FedMouse() : AttachedController(true) {}
    void OnRelativeModeChanged() override {}
    void OnSyncWithSystemCursorChanged() override {}
    using Mouse::SetCanDisplaySystemCursor;

    /// Writes the state into the sample; the wheel turns once.
    void Write()
    {
        SetPosition(x, y, isInside);
        for (unsigned int i = 0; i < pressed.size(); ++i)
        {
            if (pressed[i])
                SetButtonPressed(static_cast<eMouseButton>(i));
        }
        ResetWheelDelta(std::exchange(wheel, 0));
    }

    int x = 0;
    int y = 0;
    bool isInside = true;
    int wheel = 0;
    std::array<bool, 5> pressed{};
};

/// Keyboard of the system whose keys the test presses. A letter key gives its letter.
class FedKeyboard : public AttachedController<Keyboard>
{
public:
    FedKeyboard() : AttachedController(true) {}
    void OnCharacterMappingChanged() override {}
    bool MapKeyToCharacter(eKey key, char &character) override
    {
        string const name = GetKeyName(key);
        character = name[0];
        return name.size() == 1;
    }

    void Write()
    {
        for (eKey const key : pressed)
            SetKeyPressed(key);
    }

    std::set<eKey> pressed;
};

/// What components were told, one line a message: "name text". Moves and questions for the cursor are left out at
/// first.
class MessageLog
{
public:
    /// Returns the lines since the last call.
    std::vector<string> Take() { return std::exchange(lines_, {}); }

    void Add(string const &name, gui::Message &message)
    {
        if (!muted.contains(message.GetID()))
            lines_.push_back(name + " " + Describe(message));
    }

    std::set<unsigned int> muted = {gui::e_msg_mouse_query_cursor, gui::e_msg_mouse_move};

private:
    static string Describe(gui::Message &message);

    std::vector<string> lines_;
};

/// Component that records its messages. It answers as the base class does, unless the test gives it reactions, which
/// run first and may do anything, also delete the component.
class RecordingComponent : public gui::Component
{
public:
    RecordingComponent(MessageLog &log, string name, vec2 const &position, vec2 const &size,
                       gui::Component *parent = nullptr)
        : log_(log),
          name_(std::move(name))
    {
        SetPosition(position);
        SetSize(size);
        SetCanDisable(true);
        SetCanFocus(true);
        if (parent != nullptr)
            AttachTo(*parent);
    }

    bool OnKeyboardQueryFocus(bool, eMouseButton, bool &want, bool &needCharacters) override
    {
        want = wantsFocus;
        needCharacters = needsCharacters;
        return true;
    }
    using Component::OnKeyboardQueryFocus;

    bool wantsFocus = false;
    bool needsCharacters = false;
    /// By identifier.
    std::map<unsigned int, std::function<void(gui::Message &)>> reactions;
    /// Identifiers of the messages that it consumes.
    std::set<unsigned int> consumed;

protected:
    bool HandleMessage(gui::Message &message) override
    {
        log_.Add(name_, message);
        gui::Watch<gui::Component> const self(*this);
        bool const isConsumed = consumed.contains(message.GetID());
        if (auto const found = reactions.find(message.GetID()); found != reactions.end())
        {
            auto const reaction = found->second;
            reaction(message);
        }
        if (self.Get() == nullptr || isConsumed)
            return isConsumed;
        return Component::HandleMessage(message);
    }

private:
    MessageLog &log_;
    string name_;
};

/// The manager, in a window of 640 by 480 pixels, with mouse and keyboard. Top-level components that a test makes are
/// the manager's.
class GuiDesk : NoCopy
{
public:
    /// Kernel with a time of the test's, and its doors to the manager.
    class DeskKernel : public TestKernel
    {
    public:
        using Kernel::GUIManager_BeginConnectHumanInterfaceDevices;
        using Kernel::GUIManager_ConnectApplication;
        using Kernel::GUIManager_ConnectHumanInterfaceDevice;
        using Kernel::GUIManager_ConnectVideoRenderer;
        using Kernel::GUIManager_CreateVideoResources;
        using Kernel::GUIManager_DisconnectHumanInterfaceDevices;
        using Kernel::GUIManager_DisconnectVideoRenderer;
        using Kernel::GUIManager_EndConnectHumanInterfaceDevices;
        using Kernel::GUIManager_NotifyApplicationWindowActive;
        using Kernel::GUIManager_NotifyApplicationWindowCreated;
        using Kernel::GUIManager_OnWindowResize;
        using Kernel::GUIManager_ReleaseVideoResources;
        using Kernel::GUIManager_SetTolerateMissingInputDevice;
        double GetFrameTimeDelta() override { return timeDelta; }
        Application *GetApplicationPtr() override { return application; }

        double timeDelta = 0;
        Application *application = nullptr;
    };

    GuiDesk()
    {
        DeskKernel::GUIManager_OnWindowResize(640, 480);
        DeskKernel::GUIManager_BeginConnectHumanInterfaceDevices();
        DeskKernel::GUIManager_ConnectHumanInterfaceDevice(mouseDevice);
        DeskKernel::GUIManager_ConnectHumanInterfaceDevice(keyboardDevice);
        DeskKernel::GUIManager_EndConnectHumanInterfaceDevices();
    }
    ~GuiDesk() { DeskKernel::GUIManager_DisconnectHumanInterfaceDevices(); }

    /// Samples both devices, and dispatches a frame of `delta` seconds.
    void Frame(double delta = 0.01)
    {
        mouseDevice.Sample([this] { mouse.Write(); });
        keyboardDevice.Sample([this] { keyboard.Write(); });
        kernel.timeDelta = delta;
        manager.DispatchInputEvents();
    }

    /// @name Hands
    /// Each runs one frame for each change.
    /// @{
    void MoveTo(int x, int y)
    {
        mouse.x = x;
        mouse.y = y;
        Frame();
    }
    void Press(eMouseButton button = e_mouse_button_left)
    {
        mouse.pressed[button] = true;
        Frame();
    }
    void Release(eMouseButton button = e_mouse_button_left)
    {
        mouse.pressed[button] = false;
        Frame();
    }
    void Click(eMouseButton button = e_mouse_button_left)
    {
        Press(button);
        Release(button);
    }
    void Turn(int wheel)
    {
        mouse.wheel = wheel;
        Frame();
    }
    void PressKey(eKey key)
    {
        keyboard.pressed.insert(key);
        Frame();
    }
    void ReleaseKey(eKey key)
    {
        keyboard.pressed.erase(key);
        Frame();
    }
    void TypeKey(eKey key)
    {
        PressKey(key);
        ReleaseKey(key);
    }
    /// @}

    /// Makes a component that records into `log`; a top-level one without a parent.
    RecordingComponent &Add(string const &name, vec2 const &position, vec2 const &size,
                            gui::Component *parent = nullptr)
    {
        return *new RecordingComponent(log, name, position, size, parent);
    }

    DeskKernel kernel;
    MessageLog log;
    ControllerDevice<FedMouse> mouseDevice;
    ControllerDevice<FedKeyboard> keyboardDevice;
    FedMouse &mouse = mouseDevice.controller;
    FedKeyboard &keyboard = keyboardDevice.controller;
    gui::Manager manager;
};

namespace message_texts
{

inline string Join(auto const &...parts)
{
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}
inline string At(vec2 const &at)
{
    return Join(" @", at.x, ',', at.y);
}
template<typename T>
T &As(gui::Message &message)
{
    return static_cast<T &>(message);
}

inline string OfActivate(gui::Message_Activate &activate)
{
    return (activate.GetActivateByMouse() ? Join("activate by mouse button ", activate.GetButtonCode())
                                          : "activate by call") +
           At(activate.position);
}
inline string OfButton(gui::Message_MouseButton &button)
{
    return Join(button.GetButtonDown() ? "down " : "up ", button.GetButtonCode(),
                button.GetDoubleClick() ? " double" : "",
                button.GetRepeatCount() != 0 ? Join(" repeat ", button.GetRepeatCount()) : "", At(button.position));
}
inline string OfKey(gui::Message_KeyboardKey &key)
{
    return Join(key.GetKeyDown() ? "key down " : "key up ", GetKeyName(key.GetKeyCode()),
                key.GetRepeatCount() != 0 ? Join(" repeat ", key.GetRepeatCount()) : "",
                key.GetCharData() != 0 ? Join(" '", key.GetCharData(), '\'') : "");
}
inline string OfGeometry(gui::Message_GeometryUpdateByManager &update)
{
    return Join("geometry ", update.GetUpdateEvent(), " area ", update.GetCommandArea(), " button ",
                update.GetButtonCode(), At(update.GetNewPosition()), " size ", update.GetNewSize().x, ',',
                update.GetNewSize().y);
}

} // namespace message_texts

inline string MessageLog::Describe(gui::Message &message)
{
    using namespace gui;
    using namespace message_texts;
    switch (message.GetID())
    {
    case e_msg_geometry_update_by_manager:
        return OfGeometry(As<Message_GeometryUpdateByManager>(message));
    case e_msg_activate:
        return OfActivate(As<Message_Activate>(message));
    case e_msg_deactivate:
        return As<Message_Deactivate>(message).GetDeactivateByMouse() ? "deactivate by mouse" : "deactivate by call";
    case e_msg_mouse_capture:
        return As<Message_MouseCapture>(message).GetCaptureBegin() ? "capture begin" : "capture end";
    case e_msg_mouse_enter_exit:
        return Join(As<Message_MouseEnterExit>(message).GetMouseEnter() ? "enter" : "exit",
                    As<Message_MouseEnterExit>(message).GetMouseOverDirect() ? " direct" : "");
    case e_msg_mouse_query_cursor:
        return Join("cursor of area ", As<Message_MouseQueryCursor>(message).GetCommandArea());
    case e_msg_mouse_move:
        return (As<Message_MouseMove>(message).GetHover() ? "hover" : "move") +
               At(As<Message_MouseMove>(message).position);
    case e_msg_mouse_wheel:
        return Join("wheel ", As<Message_MouseWheel>(message).GetWheelDelta(),
                    At(As<Message_MouseWheel>(message).position));
    case e_msg_mouse_button:
        return OfButton(As<Message_MouseButton>(message));
    case e_msg_keyboard_query_focus:
        return As<Message_KeyboardQueryFocus>(message).GetFocusByMouse() ? "want focus by mouse" : "want focus by call";
    case e_msg_keyboard_focus:
        return As<Message_KeyboardFocus>(message).GetGotFocus() ? "got focus" : "lost focus";
    case e_msg_keyboard_key:
        return OfKey(As<Message_KeyboardKey>(message));
    default:
        return Join("message ", message.GetID());
    }
}

} // namespace quillmarsh::tests

#endif
