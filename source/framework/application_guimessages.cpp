#include <quillmarsh/framework/application.h>
#include <quillmarsh/gui/gui_messages.h>

namespace quillmarsh
{

namespace
{

template<typename T>
T &As(gui::Message &message)
{
    return static_cast<T &>(message);
}

} // namespace

bool Application::HandleMessage(gui::Message &message)
{
    switch (message.GetID())
    {
    case gui::e_msg_command:
        return GUIOnCommand(As<gui::Message_Command>(message).GetCommandID());
    case gui::e_msg_activate:
        return GUIOnActivate(true, As<gui::Message_Activate>(message).GetActivateByMouse());
    case gui::e_msg_deactivate:
        return GUIOnActivate(false, As<gui::Message_Deactivate>(message).GetDeactivateByMouse());
    case gui::e_msg_mouse_capture:
        return GUIOnMouseCapture(As<gui::Message_MouseCapture>(message).GetCaptureBegin());
    case gui::e_msg_mouse_enter_exit:
    {
        auto &enterExit = As<gui::Message_MouseEnterExit>(message);
        return GUIOnMouseEnterExit(enterExit.GetMouseEnter(), enterExit.position);
    }
    case gui::e_msg_mouse_query_cursor:
    {
        auto &query = As<gui::Message_MouseQueryCursor>(message);
        gui::Cursor const *cursor = query.GetCursor();
        bool const consumed = GUIOnMouseQueryCursor(cursor, query.position);
        query.SetCursor(cursor);
        return consumed;
    }
    case gui::e_msg_mouse_move:
    {
        auto &move = As<gui::Message_MouseMove>(message);
        return GUIOnMouseMove(move.GetHover(), move.GetHoverTimeSeconds(), move.position);
    }
    case gui::e_msg_mouse_wheel:
    {
        auto &wheel = As<gui::Message_MouseWheel>(message);
        return GUIOnMouseWheel(wheel.GetWheelDelta(), wheel.position);
    }
    case gui::e_msg_mouse_button:
    {
        auto &button = As<gui::Message_MouseButton>(message);
        return GUIOnMouseButton(button.GetButtonDown(), button.GetButtonCode(), button.GetDoubleClick(),
                                button.GetRepeatCount(), button.position);
    }
    case gui::e_msg_keyboard_query_focus:
    {
        auto &query = As<gui::Message_KeyboardQueryFocus>(message);
        bool wantFocus = query.GetWantFocus();
        bool needCharacterData = query.GetNeedCharacterData();
        bool const consumed =
            GUIOnKeyboardQueryFocus(query.GetFocusByMouse(), query.GetButtonCode(), wantFocus, needCharacterData);
        query.SetWantFocus(wantFocus);
        query.SetNeedCharacterData(needCharacterData);
        return consumed;
    }
    case gui::e_msg_keyboard_focus:
        return GUIOnKeyboardFocus(As<gui::Message_KeyboardFocus>(message).GetGotFocus());
    case gui::e_msg_keyboard_key:
    {
        auto &key = As<gui::Message_KeyboardKey>(message);
        return GUIOnKeyboardKey(key.GetKeyDown(), key.GetKeyCode(), key.GetRepeatCount(), key.GetCharData());
    }
    default:
        return false;
    }
}

} // namespace quillmarsh
