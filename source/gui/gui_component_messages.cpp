// Components: the way from a message to the operation that answers it, the default answers, and messages to relatives.
#include "source/gui/childwalk.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace quillmarsh::gui
{
namespace
{

// Calls of the operations. They pass copies, as the sender may change a message for the next receiver, and write the
// answers back into the message, which outlives the component.

using Call = bool (*)(Component &component, Message &message);

template<typename T>
T &As(Message &message)
{
    return static_cast<T &>(message);
}

bool CallServiceCommand(Component &component, Message &message)
{
    auto const &command = As<Message_ServiceCommand_ToolTip>(message);
    bool const isQuery =
        command.GetServiceID() == ToolTipServiceID && command.GetServiceCommandID() == ToolTipCommand_QueryParams;
    ToolTipParams *const params = command.GetToolTipParams();
    return isQuery && params != nullptr && component.OnQueryToolTipParams(*params);
}

bool CallGeometryUpdateByManager(Component &component, Message &message)
{
    auto &update = As<Message_GeometryUpdateByManager>(message);
    vec2 const newPosition = update.GetNewPosition();
    vec2 const newSize = update.GetNewSize();
    bool confirm = update.GetConfirmEvent();
    bool const isConsumed = component.OnGeometryUpdateByManager(
        confirm, update.GetUpdateEvent(), update.GetCommandArea(), update.GetButtonCode(), newPosition, newSize);
    update.SetConfirmEvent(confirm);
    return isConsumed;
}

bool CallActivate(Component &component, Message &message)
{
    auto &activate = As<Message_Activate>(message);
    vec2 const position = activate.position;
    bool autoBringToFront = activate.GetAutoBringToFront();
    bool autoActivate = activate.GetAutoActivate();
    bool const isConsumed = component.OnActivate(activate.GetActivateByMouse(), activate.GetButtonCode(), position,
                                                 activate.GetClickedDescendant(), autoBringToFront, autoActivate);
    activate.SetAutoBringToFront(autoBringToFront);
    activate.SetAutoActivate(autoActivate);
    return isConsumed;
}

bool CallMouseEnterExit(Component &component, Message &message)
{
    auto const &enterExit = As<Message_MouseEnterExit>(message);
    vec2 const position = enterExit.position;
    return component.OnMouseEnterExit(enterExit.GetMouseEnter(), enterExit.GetMouseOverDirect(), position);
}

bool CallMouseQueryCursor(Component &component, Message &message)
{
    auto &query = As<Message_MouseQueryCursor>(message);
    vec2 const position = query.position;
    Cursor const *cursor = query.GetCursor();
    bool const isConsumed = component.OnMouseQueryCursor(cursor, query.GetCommandArea(), position);
    query.SetCursor(cursor);
    return isConsumed;
}

bool CallMouseMove(Component &component, Message &message)
{
    auto const &move = As<Message_MouseMove>(message);
    vec2 const position = move.position;
    return component.OnMouseMove(move.GetHover(), move.GetHoverTimeSeconds(), position);
}

// Calls in both forms. The parameter pack is the target for the form of a hook, and empty for the other.

template<typename... Target>
bool CallMouseWheel(Component &component, Message &message, Target... target)
{
    auto const &wheel = As<Message_MouseWheel>(message);
    vec2 const position = wheel.position;
    return component.OnMouseWheel(target..., wheel.GetWheelDelta(), position);
}

template<typename... Target>
bool CallMouseButton(Component &component, Message &message, Target... target)
{
    auto const &button = As<Message_MouseButton>(message);
    vec2 const position = button.position;
    return component.OnMouseButton(target..., button.GetButtonDown(), button.GetButtonCode(), button.GetDoubleClick(),
                                   button.GetRepeatCount(), position);
}

template<typename... Target>
bool CallKeyboardQueryFocus(Component &component, Message &message, Target... target)
{
    auto &query = As<Message_KeyboardQueryFocus>(message);
    bool wantFocus = query.GetWantFocus();
    bool needCharacterData = query.GetNeedCharacterData();
    bool const isConsumed = component.OnKeyboardQueryFocus(target..., query.GetFocusByMouse(), query.GetButtonCode(),
                                                           wantFocus, needCharacterData);
    query.SetWantFocus(wantFocus);
    query.SetNeedCharacterData(needCharacterData);
    return isConsumed;
}

template<typename... Target>
bool CallKeyboardFocus(Component &component, Message &message, Target... target)
{
    return component.OnKeyboardFocus(target..., As<Message_KeyboardFocus>(message).GetGotFocus());
}

template<typename... Target>
bool CallKeyboardKey(Component &component, Message &message, Target... target)
{
    auto const &key = As<Message_KeyboardKey>(message);
    return component.OnKeyboardKey(target..., key.GetKeyDown(), key.GetKeyCode(), key.GetRepeatCount(),
                                   key.GetCharData());
}

/// Call for the hook of another handler, made from a function of the form above.
template<bool (*call)(Component &, Message &, MessageHandler *)>
bool CallAsHook(Component &component, Message &message)
{
    return call(component, message, message.GetTarget());
}

/// Operations of one message. Null stands for the answer false.
struct Route
{
    eMessageID id;
    Call call;
    Call callAsHook;
};

// clang-format off
constexpr Route s_routes[] = {
    {e_msg_service_command, CallServiceCommand, nullptr},
    {e_msg_command,
     [](Component &c, Message &m) { return c.OnCommand(As<Message_Command>(m).GetCommandID()); }, nullptr},
    {e_msg_geometry_update_by_manager, CallGeometryUpdateByManager, nullptr},
    {e_msg_activate, CallActivate, nullptr},
    {e_msg_deactivate,
     [](Component &c, Message &m) { return c.OnDeactivate(As<Message_Deactivate>(m).GetDeactivateByMouse()); }, nullptr},
    {e_msg_mouse_capture,
     [](Component &c, Message &m) { return c.OnMouseCapture(As<Message_MouseCapture>(m).GetCaptureBegin()); }, nullptr},
    {e_msg_mouse_enter_exit, CallMouseEnterExit, nullptr},
    {e_msg_mouse_query_cursor, CallMouseQueryCursor, nullptr},
    {e_msg_mouse_move, CallMouseMove, nullptr},
    {e_msg_mouse_wheel, CallMouseWheel<>, CallAsHook<CallMouseWheel>},
    {e_msg_mouse_button, CallMouseButton<>, CallAsHook<CallMouseButton>},
    {e_msg_keyboard_query_focus, CallKeyboardQueryFocus<>, CallAsHook<CallKeyboardQueryFocus>},
    {e_msg_keyboard_focus, CallKeyboardFocus<>, CallAsHook<CallKeyboardFocus>},
    {e_msg_keyboard_key, CallKeyboardKey<>, CallAsHook<CallKeyboardKey>},
    {e_msg_show,
     [](Component &c, Message &m) { return c.OnMsgShow(As<Message_Show>(m).GetShow()); }, nullptr},
    {e_msg_show_children,
     [](Component &c, Message &m) { return c.OnMsgShowChildren(As<Message_ShowChildren>(m).GetShow()); }, nullptr},
    {e_msg_show_descendants,
     [](Component &c, Message &m) { return c.OnMsgShowDescendants(As<Message_ShowDescendants>(m).GetShow()); }, nullptr},
    {e_msg_enable,
     [](Component &c, Message &m) { return c.OnMsgEnable(As<Message_Enable>(m).GetEnable()); }, nullptr},
    {e_msg_flags,
     [](Component &c, Message &m) { return c.OnMsgFlags(As<Message_Flags>(m).GetFlags()); }, nullptr},
    {e_msg_flags_on_off,
     [](Component &c, Message &m) {
         auto const &flags = As<Message_FlagsOnOff>(m);
         return c.OnMsgFlagsOnOff(flags.GetFlags(), flags.GetOn());
     }, nullptr},
    {e_msg_on_off,
     [](Component &c, Message &m) { return c.OnMsgOnOff(As<Message_OnOff>(m).GetOn()); }, nullptr},
    {e_msg_select,
     [](Component &c, Message &m) {
         auto const &select = As<Message_Select>(m);
         return c.OnMsgSelect(select.GetSelect(), select.GetGroupID());
     }, nullptr},
    {e_msg_scroll,
     [](Component &c, Message &m) {
         auto const &scroll = As<Message_Scroll>(m);
         return c.OnMsgScroll(scroll.GetForward(), scroll.GetDistance(), scroll.GetOffset());
     }, nullptr},
    {e_msg_pre_command_execute,
     [](Component &c, Message &m) {
         return c.OnMsgPreCommandExecute(As<Message_PreCommandExecute>(m).GetCommandID());
     }, nullptr},
    {e_msg_send_command,
     [](Component &c, Message &) { return c.OnMsgSendCommand(); }, nullptr},
};
// clang-format on

/// The routes by their identifiers.
constexpr auto s_routesByID = []
{
    std::array<Route, e_msg_send_command + 1> routes = {};
    for (Route const &route : s_routes)
        routes[route.id] = route;
    return routes;
}();

Route FindRoute(Message const &message)
{
    return message.GetID() < s_routesByID.size() ? s_routesByID[message.GetID()] : Route{};
}

/// Command that asks each parent in turn.
constexpr unsigned int s_commandToParents = 1;

bool IsLeft(eMouseButton button)
{
    return button == e_mouse_button_left;
}

/// Returns the sibling that stands `steps` behind the component, in a circle; null if there is none.
Component *FindSibling(Component &component, std::size_t steps)
{
    if (component.IsTopLevel())
        return nullptr;
    std::vector<Component *> const &row = component.GetParent()->GetChildren();
    auto const index = static_cast<std::size_t>(std::find(row.begin(), row.end(), &component) - row.begin());
    return row.size() > 1 ? row[(index + steps) % row.size()] : nullptr;
}

/// Sends a message to all children but one, which may be null. Returns true if any consumed it.
bool SendToChildren(Component &parent, Watch<Component> const &except, Message &message)
{
    bool isConsumed = false;
    for (ChildWalk walk(parent); Component *child = walk.Next();)
    {
        if (child != except.Get() && child->DispatchMessage(message))
            isConsumed = true;
    }
    return isConsumed;
}

} // namespace

bool Component::HandleMessage(Message &message)
{
    if (message.GetTarget() != this)
        return HandleMessageAsHook(message);
    Call const call = FindRoute(message).call;
    return call != nullptr && call(*this, message);
}

bool Component::HandleMessageAsHook(Message &message)
{
    Call const call = FindRoute(message).callAsHook;
    return call != nullptr && call(*this, message);
}

// Default answers.

bool Component::OnCommand(unsigned int commandID)
{
    if (commandID != s_commandToParents)
        return false;
    Message_Command message(commandID);
    return SendMessageToParent(message);
}

bool Component::OnGeometryUpdateByManager(bool &confirm, eGeometryUpdateEvent event, eCommandArea, eMouseButton button,
                                          vec2 const &, vec2 const &)
{
    if (event != e_geom_query)
        return false;
    confirm = IsLeft(button);
    return true;
}

bool Component::OnActivate(bool byMouse, eMouseButton button, vec2 const &, Component *, bool &autoBringToFront,
                           bool &autoActivate)
{
    if (byMouse)
    {
        autoActivate = IsLeft(button);
        autoBringToFront = IsLeft(button);
    }
    return true;
}

bool Component::OnDeactivate(bool)
{
    return false;
}

bool Component::OnMouseCapture(bool)
{
    return false;
}

bool Component::OnMouseEnterExit(bool, bool, vec2 const &)
{
    return false;
}

bool Component::OnMouseQueryCursor(Cursor const *&cursor, eCommandArea area, vec2 const &)
{
    if (area == e_area_client)
        cursor = clientAreaCursor_;
    return true;
}

bool Component::OnMouseMove(bool, double, vec2 const &)
{
    return false;
}

bool Component::OnMouseWheel(MessageHandler *, int, vec2 const &)
{
    return false;
}

bool Component::OnMouseWheel(int, vec2 const &)
{
    return false;
}

bool Component::OnMouseButton(MessageHandler *, bool, eMouseButton, bool, unsigned int, vec2 const &)
{
    return false;
}

bool Component::OnMouseButton(bool, eMouseButton, bool, unsigned int, vec2 const &)
{
    return false;
}

bool Component::OnKeyboardQueryFocus(MessageHandler *, bool, eMouseButton, bool &, bool &)
{
    return false;
}

bool Component::OnKeyboardQueryFocus(bool, eMouseButton, bool &, bool &)
{
    return false;
}

bool Component::OnKeyboardFocus(MessageHandler *, bool)
{
    return false;
}

bool Component::OnKeyboardFocus(bool)
{
    return false;
}

bool Component::OnKeyboardKey(MessageHandler *, bool, eKey, unsigned int, char)
{
    return false;
}

bool Component::OnKeyboardKey(bool, eKey, unsigned int, char)
{
    return false;
}

void Component::DefaultProcessQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData)
{
    wantFocus = !byMouse || IsLeft(button);
    needCharacterData = false;
}

bool Component::OnQueryToolTipParams(ToolTipParams &params)
{
    if (toolTipText_.empty())
        return false;
    params.Show = true;
    params.Text = toolTipText_;
    params.ComponentPosition = absolutePosition_;
    params.ComponentSize = size_;
    return true;
}

bool Component::OnMsgShow(bool show)
{
    SetVisible(show);
    return true;
}

bool Component::OnMsgShowChildren(bool show)
{
    PropagateVisibleToChildren(show);
    return true;
}

bool Component::OnMsgShowDescendants(bool show)
{
    PropagateVisibleToDescendants(show);
    return true;
}

bool Component::OnMsgEnable(bool enable)
{
    SetEnabled(enable);
    return true;
}

bool Component::OnMsgFlags(unsigned int flags)
{
    SetFlags(flags);
    return true;
}

bool Component::OnMsgFlagsOnOff(unsigned int flags, bool on)
{
    SetFlagsOnOff(flags, on);
    return true;
}

bool Component::OnMsgOnOff(bool)
{
    return false;
}

bool Component::OnMsgSelect(bool, unsigned int)
{
    return false;
}

bool Component::OnMsgScroll(bool, eScrollDistance, int)
{
    return false;
}

bool Component::OnMsgPreCommandExecute(unsigned int commandID)
{
    Message_PreCommandExecute message(commandID);
    return SendMessageToParent(message);
}

bool Component::OnMsgSendCommand()
{
    return false;
}

// Messages to relatives.

bool Component::SendMessageToParent(Message &message)
{
    return parent_ != nullptr && parent_->DispatchMessage(message);
}

bool Component::SendMessageToSiblings(Message &message)
{
    return parent_ != nullptr && SendToChildren(*parent_, Watch<Component>(*this), message);
}

bool Component::SendMessageToSelfAndSiblings(Message &message)
{
    // The siblings are still there when this component leaves them.
    Watch<Component> const self(*this);
    Watch<Component> const parent(parent_);
    bool const isConsumedBySelf = DispatchMessage(message);
    bool const isConsumedBySiblings = parent.Get() != nullptr && SendToChildren(*parent.Get(), self, message);
    return isConsumedBySelf || isConsumedBySiblings;
}

bool Component::SendMessageToPreviousSibling(bool selfIfAlone, Message &message)
{
    Component *const sibling = IsTopLevel() ? nullptr : FindSibling(*this, parent_->children_.GetSize() - 1);
    Component *const receiver = sibling == nullptr && selfIfAlone ? this : sibling;
    return receiver != nullptr && receiver->DispatchMessage(message);
}

bool Component::SendMessageToNextSibling(bool selfIfAlone, Message &message)
{
    Component *const sibling = FindSibling(*this, 1);
    Component *const receiver = sibling == nullptr && selfIfAlone ? this : sibling;
    return receiver != nullptr && receiver->DispatchMessage(message);
}

bool Component::SendMessageToChildren(Message &message)
{
    return SendToChildren(*this, Watch<Component>(), message);
}

bool Component::SendMessageToFirstChild(Message &message)
{
    return !IsLeaf() && children_[0]->DispatchMessage(message);
}

bool Component::SendMessageToLastChild(Message &message)
{
    return !IsLeaf() && children_.GetLast()->DispatchMessage(message);
}

} // namespace quillmarsh::gui
