// Messages of the GUI: one record of fixed size, whose classes name its slots.
#ifndef QUILLMARSH_GUI_GUI_MESSAGES_H
#define QUILLMARSH_GUI_GUI_MESSAGES_H

#include <quillmarsh/mathtools/vector2.h>
#include <quillmarsh/platform/inputcodes.h>
#include <quillmarsh/platform/types.h>

#include <cstdint>

namespace quillmarsh::gui
{

class Component;
class Cursor;
class MessageHandler;

/// Part of a component under the mouse. Dragging a component by any part but void and client moves or resizes its
/// top-level component.
enum eCommandArea : unsigned int
{
    e_area_void = 0,
    e_area_client,
    e_area_move,
    e_area_resize_n, ///< top edge
    e_area_resize_s, ///< bottom edge
    e_area_resize_w, ///< left edge
    e_area_resize_e, ///< right edge
    e_area_resize_nw,
    e_area_resize_ne,
    e_area_resize_sw,
    e_area_resize_se
};

/// Number of values of eCommandArea.
constexpr unsigned int s_numCommandAreas = e_area_resize_se + 1;

/// Step of a move or resize that the manager drives.
enum eGeometryUpdateEvent : unsigned int
{
    /// None runs. A state of a component, which is never sent.
    e_geom_none = 0,
    /// A button went down on an area that is not the client area: the receiver confirms, or the command does not start.
    e_geom_query,
    e_geom_move_begin,
    /// Proposes a position, which the receiver may change or refuse.
    e_geom_moving,
    e_geom_move_end,
    e_geom_resize_begin,
    /// Proposes position and size, likewise.
    e_geom_resizing,
    e_geom_resize_end
};

/// Distance of Message_Scroll. The receiver decides what a line and a page are.
enum eScrollDistance : unsigned int
{
    e_scroll_line = 0,
    e_scroll_page,
    /// To the beginning, or to the end.
    e_scroll_whole
};

/// Identifiers of messages; 16 is reserved.
enum eMessageID : unsigned int
{
    e_msg_service_provider_changed = 1,
    e_msg_service_command = 2,
    e_msg_command = 3,
    e_msg_geometry_update_by_manager = 4,
    e_msg_activate = 5,
    e_msg_deactivate = 6,
    e_msg_mouse_capture = 7,
    e_msg_mouse_enter_exit = 8,
    e_msg_mouse_query_cursor = 9,
    e_msg_mouse_move = 10,
    e_msg_mouse_wheel = 11,
    e_msg_mouse_button = 12,
    e_msg_keyboard_query_focus = 13,
    e_msg_keyboard_focus = 14,
    e_msg_keyboard_key = 15,
    e_msg_show = 17,
    e_msg_show_children = 18,
    e_msg_show_descendants = 19,
    e_msg_enable = 20,
    e_msg_flags = 21,
    e_msg_flags_on_off = 22,
    e_msg_on_off = 23,
    e_msg_select = 24,
    e_msg_scroll = 25,
    e_msg_pre_command_execute = 26,
    e_msg_send_command = 27
};

/// Identifier of the service provider that shows tool tips.
constexpr unsigned int ToolTipServiceID = 1;
/// Command of the tool tip service: asks a component for its tip. See Message_ServiceCommand_ToolTip.
constexpr unsigned int ToolTipCommand_QueryParams = 5;

/// Tool tip of a component, which the component gives to the provider of the service. A plain record.
struct ToolTipParams
{
    /// A tip is to be shown. Unset at first.
    bool Show;
    /// The tip is to be shown without a delay. Unset at first; not set by a component's default answer.
    bool ShowAtOnce;
    string Text;
    /// Position of the mouse in the window, in pixels. Left to provider and component; unset at first, like the others.
    vec2 MousePosition;
    /// Top left corner of the component in the window, in pixels.
    vec2 ComponentPosition;
    /// Size of the component, in pixels.
    vec2 ComponentSize;
    /// Distance of the tip from the place that the provider chooses. Left to provider and component.
    vec2 Offset;

    /// Leaves all but the text unset.
    ToolTipParams() = default;
};

/// Position in a mouse message: in pixels, relative to the absolute position of the component that receives it. It is the
/// slot of the message itself, so that a sender can change it while a message goes from component to component.
class MessagePosition
{
public:
    MessagePosition(vec2 const &position) : value_(position) {}
    MessagePosition &operator=(vec2 const &position)
    {
        value_ = position;
        return *this;
    }
    /// @name Value
    /// @{
    operator vec2 const &() const { return value_; }
    vec2 const &Get() const { return value_; }
    /// @}

private:
    vec2 value_;
};

/// Record that tells a MessageHandler what has happened, or asks it something. Some messages are answered through their
/// fields. The receiver casts a message to the class of its identifier; all classes have the same size and layout, so
/// any message may be copied, changed and sent again as a whole. A plain record.
class Message
{
public:
    /// Returns an eMessageID.
    unsigned int GetID() const { return id_; }
    /// Returns the handler whose DispatchMessage() was called; null before that. Good during the dispatch.
    MessageHandler *GetTarget() const { return target_; }

protected:
    explicit Message(unsigned int id) : id_(id) {}

    /// @name Slots
    /// A bool and a char take the low byte of their word.
    /// @{
    template<unsigned int index, typename T>
    T GetWord() const
    {
        static_assert(index < 4);
        return static_cast<T>(words_[index]);
    }
    template<unsigned int index, typename T>
    void SetWord(T value)
    {
        static_assert(index < 4);
        words_[index] = static_cast<std::uint32_t>(value);
    }
    template<typename T>
    T *GetObject() const
    {
        return static_cast<T *>(object_);
    }
    template<typename T>
    void SetObject(T *object)
    {
        object_ = const_cast<void *>(static_cast<void const *>(object));
    }
    vec2 const &GetSecondVector() const { return secondVector_; }
    void SetSecondVector(vec2 const &value) { secondVector_ = value; }
    double GetDouble() const { return double_; }
    void SetDouble(double value) { double_ = value; }
    /// @}

private:
    friend class MessageHandler;

    unsigned int id_;
    MessageHandler *target_ = nullptr;
    void *object_ = nullptr;
    std::uint32_t words_[4] = {0, 0, 0, 0};

protected:
    /// First of the two vectors. Mouse messages make it public.
    MessagePosition position = vec2(0, 0);

private:
    vec2 secondVector_ = {0, 0};
    double double_ = 0;
};

/// Base of the messages of service providers.
class Message_ServiceBase : public Message
{
public:
    /// Number of the service.
    unsigned int GetServiceID() const { return GetWord<0, unsigned int>(); }
    void SetServiceID(unsigned int serviceID) { SetWord<0>(serviceID); }

protected:
    Message_ServiceBase(unsigned int id, unsigned int serviceID) : Message(id) { SetServiceID(serviceID); }
};

/// A service has another provider, or none any more. The manager broadcasts it.
class Message_ServiceProviderChanged : public Message_ServiceBase
{
public:
    Message_ServiceProviderChanged() : Message_ServiceProviderChanged(0) {}
    explicit Message_ServiceProviderChanged(unsigned int serviceID)
        : Message_ServiceBase(e_msg_service_provider_changed, serviceID)
    {
    }
};

/// A service provider, or one of its clients, sends a command of the service.
class Message_ServiceCommand : public Message_ServiceBase
{
public:
    Message_ServiceCommand() : Message_ServiceCommand(0, 0) {}
    Message_ServiceCommand(unsigned int serviceID, unsigned int serviceCommandID)
        : Message_ServiceBase(e_msg_service_command, serviceID)
    {
        SetServiceCommandID(serviceCommandID);
    }

    /// The service gives it a meaning.
    unsigned int GetServiceCommandID() const { return GetWord<1, unsigned int>(); }
    void SetServiceCommandID(unsigned int serviceCommandID) { SetWord<1>(serviceCommandID); }
};

/// Command of the tool tip service.
class Message_ServiceCommand_ToolTip : public Message_ServiceCommand
{
public:
    Message_ServiceCommand_ToolTip() : Message_ServiceCommand_ToolTip(0, nullptr) {}
    Message_ServiceCommand_ToolTip(unsigned int serviceCommandID, ToolTipParams *toolTipParams)
        : Message_ServiceCommand(ToolTipServiceID, serviceCommandID)
    {
        SetToolTipParams(toolTipParams);
    }

    /// Record for the answer, borrowed; may be null.
    ToolTipParams *GetToolTipParams() const { return GetObject<ToolTipParams>(); }
    void SetToolTipParams(ToolTipParams *toolTipParams) { SetObject(toolTipParams); }
};

/// A widget sends its command to its target; see CommandSender.
class Message_Command : public Message
{
public:
    explicit Message_Command(unsigned int commandID) : Message(e_msg_command) { SetCommandID(commandID); }

    /// The target gives it a meaning.
    unsigned int GetCommandID() const { return GetWord<0, unsigned int>(); }
    void SetCommandID(unsigned int commandID) { SetWord<0>(commandID); }
};

/// The manager moves or resizes the top-level component that receives it.
class Message_GeometryUpdateByManager : public Message
{
public:
    Message_GeometryUpdateByManager()
        : Message_GeometryUpdateByManager(e_geom_query, e_area_move, e_mouse_button_left, vec2::ZERO, vec2::ONE, true)
    {
    }
    Message_GeometryUpdateByManager(eGeometryUpdateEvent updateEvent, eCommandArea commandArea, eMouseButton buttonCode,
                                    vec2 const &newPosition, vec2 const &newSize, bool confirmEvent)
        : Message(e_msg_geometry_update_by_manager)
    {
        SetUpdateEvent(updateEvent);
        SetCommandArea(commandArea);
        SetButtonCode(buttonCode);
        SetConfirmEvent(confirmEvent);
        SetNewPosition(newPosition);
        SetNewSize(newSize);
    }

    eGeometryUpdateEvent GetUpdateEvent() const { return GetWord<0, eGeometryUpdateEvent>(); }
    void SetUpdateEvent(eGeometryUpdateEvent updateEvent) { SetWord<0>(updateEvent); }
    eCommandArea GetCommandArea() const { return GetWord<1, eCommandArea>(); }
    void SetCommandArea(eCommandArea commandArea) { SetWord<1>(commandArea); }
    eMouseButton GetButtonCode() const { return GetWord<2, eMouseButton>(); }
    void SetButtonCode(eMouseButton buttonCode) { SetWord<2>(buttonCode); }
    /// False on arrival of e_geom_query: the receiver sets it to allow the command. True on arrival of a step: the
    /// receiver clears it to refuse the step.
    bool GetConfirmEvent() const { return GetWord<3, unsigned char>() != 0; }
    void SetConfirmEvent(bool confirmEvent) { SetWord<3>(confirmEvent); }
    /// Proposed position of a step, relative to the parent, in pixels.
    vec2 const &GetNewPosition() const { return position.Get(); }
    void SetNewPosition(vec2 const &newPosition) { position = newPosition; }
    /// Proposed size of a step, in pixels.
    vec2 const &GetNewSize() const { return GetSecondVector(); }
    void SetNewSize(vec2 const &newSize) { SetSecondVector(newSize); }
};

/// The receiver is about to become active.
class Message_Activate : public Message
{
public:
    Message_Activate() : Message_Activate(false, e_mouse_button_left, vec2::ZERO, nullptr, true, true) {}
    Message_Activate(bool activateByMouse, eMouseButton buttonCode, vec2 const &newPosition,
                     Component *clickedDescendant, bool autoBringToFront, bool autoActivate)
        : Message(e_msg_activate)
    {
        SetActivateByMouse(activateByMouse);
        SetButtonCode(buttonCode);
        SetAutoBringToFront(autoBringToFront);
        SetAutoActivate(autoActivate);
        SetClickedDescendant(clickedDescendant);
        position = newPosition;
    }

    using Message::position;

    bool GetActivateByMouse() const { return GetWord<0, unsigned char>() != 0; }
    void SetActivateByMouse(bool activateByMouse) { SetWord<0>(activateByMouse); }
    eMouseButton GetButtonCode() const { return GetWord<1, eMouseButton>(); }
    void SetButtonCode(eMouseButton buttonCode) { SetWord<1>(buttonCode); }
    /// Answer: a top-level component is brought to the front.
    bool GetAutoBringToFront() const { return GetWord<2, unsigned char>() != 0; }
    void SetAutoBringToFront(bool autoBringToFront) { SetWord<2>(autoBringToFront); }
    /// Answer: the component becomes active.
    bool GetAutoActivate() const { return GetWord<3, unsigned char>() != 0; }
    void SetAutoActivate(bool autoActivate) { SetWord<3>(autoActivate); }
    /// The component under the mouse; null if it is the receiver itself. Good during the dispatch.
    Component *GetClickedDescendant() const { return GetObject<Component>(); }
    void SetClickedDescendant(Component *clickedDescendant) { SetObject(clickedDescendant); }
};

/// The receiver ceases to be active. Its state still says active while it is told.
class Message_Deactivate : public Message
{
public:
    Message_Deactivate() : Message_Deactivate(false) {}
    explicit Message_Deactivate(bool deactivateByMouse) : Message(e_msg_deactivate)
    {
        SetDeactivateByMouse(deactivateByMouse);
    }

    bool GetDeactivateByMouse() const { return GetWord<0, unsigned char>() != 0; }
    void SetDeactivateByMouse(bool deactivateByMouse) { SetWord<0>(deactivateByMouse); }
};

/// The receiver gets the mouse for itself, or loses it again.
class Message_MouseCapture : public Message
{
public:
    Message_MouseCapture() : Message_MouseCapture(true) {}
    explicit Message_MouseCapture(bool captureBegin) : Message(e_msg_mouse_capture) { SetCaptureBegin(captureBegin); }

    bool GetCaptureBegin() const { return GetWord<0, unsigned char>() != 0; }
    void SetCaptureBegin(bool captureBegin) { SetWord<0>(captureBegin); }
};

/// The mouse has come over the receiver or its descendants, or left them.
class Message_MouseEnterExit : public Message
{
public:
    Message_MouseEnterExit() : Message_MouseEnterExit(true, true, vec2::ZERO) {}
    Message_MouseEnterExit(bool mouseEnter, bool mouseOverDirect, vec2 const &newPosition)
        : Message(e_msg_mouse_enter_exit)
    {
        SetMouseEnter(mouseEnter);
        SetMouseOverDirect(mouseOverDirect);
        position = newPosition;
    }

    using Message::position;

    bool GetMouseEnter() const { return GetWord<0, unsigned char>() != 0; }
    void SetMouseEnter(bool mouseEnter) { SetWord<0>(mouseEnter); }
    /// The mouse is over the receiver, and over no descendant of it.
    bool GetMouseOverDirect() const { return GetWord<1, unsigned char>() != 0; }
    void SetMouseOverDirect(bool mouseOverDirect) { SetWord<1>(mouseOverDirect); }
};

/// Asks for the cursor.
class Message_MouseQueryCursor : public Message
{
public:
    Message_MouseQueryCursor() : Message_MouseQueryCursor(e_area_void, vec2::ZERO, nullptr) {}
    Message_MouseQueryCursor(eCommandArea commandArea, vec2 const &newPosition, gui::Cursor const *cursor)
        : Message(e_msg_mouse_query_cursor)
    {
        SetCommandArea(commandArea);
        SetCursor(cursor);
        position = newPosition;
    }

    using Message::position;

    eCommandArea GetCommandArea() const { return GetWord<0, eCommandArea>(); }
    void SetCommandArea(eCommandArea commandArea) { SetWord<0>(commandArea); }
    /// Answer: the cursor to show; null for the standard cursor of the area.
    gui::Cursor const *GetCursor() const { return GetObject<gui::Cursor const>(); }
    void SetCursor(gui::Cursor const *cursor) { SetObject(cursor); }
};

/// The mouse has moved over the receiver, or rests over it.
class Message_MouseMove : public Message
{
public:
    Message_MouseMove() : Message_MouseMove(false, 0, vec2::ZERO) {}
    Message_MouseMove(bool hover, double hoverTimeSeconds, vec2 const &newPosition) : Message(e_msg_mouse_move)
    {
        SetHover(hover);
        SetHoverTimeSeconds(hoverTimeSeconds);
        position = newPosition;
    }

    using Message::position;

    /// True while the mouse rests.
    bool GetHover() const { return GetWord<0, unsigned char>() != 0; }
    void SetHover(bool hover) { SetWord<0>(hover); }
    /// How long the mouse has rested.
    double GetHoverTimeSeconds() const { return GetDouble(); }
    void SetHoverTimeSeconds(double hoverTimeSeconds) { SetDouble(hoverTimeSeconds); }
};

/// The wheel was turned. A message that is not consumed goes on to the parent.
class Message_MouseWheel : public Message
{
public:
    Message_MouseWheel() : Message_MouseWheel(0, vec2::ZERO) {}
    Message_MouseWheel(int wheelDelta, vec2 const &newPosition) : Message(e_msg_mouse_wheel)
    {
        SetWheelDelta(wheelDelta);
        position = newPosition;
    }

    using Message::position;

    /// Movement of the wheel, as Mouse::GetDeltaWheel() gives it.
    int GetWheelDelta() const { return GetWord<0, int>(); }
    void SetWheelDelta(int wheelDelta) { SetWord<0>(wheelDelta); }
};

/// A button went down or up over the receiver.
class Message_MouseButton : public Message
{
public:
    Message_MouseButton() : Message_MouseButton(e_mouse_button_left, true, false, 0, vec2::ZERO) {}
    Message_MouseButton(eMouseButton buttonCode, bool buttonDown, bool doubleClick, unsigned int repeatCount,
                        vec2 const &newPosition)
        : Message(e_msg_mouse_button)
    {
        SetButtonCode(buttonCode);
        SetButtonDown(buttonDown);
        SetDoubleClick(doubleClick);
        SetRepeatCount(repeatCount);
        position = newPosition;
    }

    using Message::position;

    eMouseButton GetButtonCode() const { return GetWord<0, eMouseButton>(); }
    void SetButtonCode(eMouseButton buttonCode) { SetWord<0>(buttonCode); }
    bool GetButtonDown() const { return GetWord<1, unsigned char>() != 0; }
    void SetButtonDown(bool buttonDown) { SetWord<1>(buttonDown); }
    /// Second press of a double click, which sends no other press.
    bool GetDoubleClick() const { return GetWord<2, unsigned char>() != 0; }
    void SetDoubleClick(bool doubleClick) { SetWord<2>(doubleClick); }
    /// 0 for a press or release; from 1 on while the button stays pressed.
    unsigned int GetRepeatCount() const { return GetWord<3, unsigned int>(); }
    void SetRepeatCount(unsigned int repeatCount) { SetWord<3>(repeatCount); }
};

/// Asks whether the receiver wants the keyboard focus.
class Message_KeyboardQueryFocus : public Message
{
public:
    Message_KeyboardQueryFocus() : Message_KeyboardQueryFocus(true, e_mouse_button_left, true, false) {}
    Message_KeyboardQueryFocus(bool focusByMouse, eMouseButton buttonCode, bool wantFocus, bool needCharacterData)
        : Message(e_msg_keyboard_query_focus)
    {
        SetFocusByMouse(focusByMouse);
        SetButtonCode(buttonCode);
        SetWantFocus(wantFocus);
        SetNeedCharacterData(needCharacterData);
    }

    bool GetFocusByMouse() const { return GetWord<0, unsigned char>() != 0; }
    void SetFocusByMouse(bool focusByMouse) { SetWord<0>(focusByMouse); }
    /// Button that was clicked; e_mouse_button_extra3 for none.
    eMouseButton GetButtonCode() const { return GetWord<1, eMouseButton>(); }
    void SetButtonCode(eMouseButton buttonCode) { SetWord<1>(buttonCode); }
    /// Answer: the receiver takes the focus.
    bool GetWantFocus() const { return GetWord<2, unsigned char>() != 0; }
    void SetWantFocus(bool wantFocus) { SetWord<2>(wantFocus); }
    /// Answer: key messages are to carry characters.
    bool GetNeedCharacterData() const { return GetWord<3, unsigned char>() != 0; }
    void SetNeedCharacterData(bool needCharacterData) { SetWord<3>(needCharacterData); }
};

/// The receiver has got the keyboard focus, or lost it.
class Message_KeyboardFocus : public Message
{
public:
    Message_KeyboardFocus() : Message_KeyboardFocus(true) {}
    explicit Message_KeyboardFocus(bool gotFocus) : Message(e_msg_keyboard_focus) { SetGotFocus(gotFocus); }

    bool GetGotFocus() const { return GetWord<0, unsigned char>() != 0; }
    void SetGotFocus(bool gotFocus) { SetWord<0>(gotFocus); }
};

/// A key went down or up. A message that is not consumed goes on to the parent.
class Message_KeyboardKey : public Message
{
public:
    Message_KeyboardKey() : Message_KeyboardKey(e_key_escape, true, 0, '\0') {}
    Message_KeyboardKey(eKey keyCode, bool keyDown, unsigned int repeatCount, char charData)
        : Message(e_msg_keyboard_key)
    {
        SetKeyCode(keyCode);
        SetKeyDown(keyDown);
        SetRepeatCount(repeatCount);
        SetCharData(charData);
    }

    eKey GetKeyCode() const { return GetWord<0, eKey>(); }
    void SetKeyCode(eKey keyCode) { SetWord<0>(keyCode); }
    bool GetKeyDown() const { return GetWord<1, unsigned char>() != 0; }
    void SetKeyDown(bool keyDown) { SetWord<1>(keyDown); }
    /// 0 for a press or release; from 1 on while the key stays pressed.
    unsigned int GetRepeatCount() const { return GetWord<2, unsigned int>(); }
    void SetRepeatCount(unsigned int repeatCount) { SetWord<2>(repeatCount); }
    /// Character of the key in Latin-1; 0 if it has none, or if nobody needs characters.
    char GetCharData() const { return GetWord<3, char>(); }
    void SetCharData(char charData) { SetWord<3>(static_cast<unsigned char>(charData)); }
};

/// Base of the messages that show and hide.
class Message_ShowBase : public Message
{
public:
    bool GetShow() const { return GetWord<0, unsigned char>() != 0; }
    void SetShow(bool show) { SetWord<0>(show); }

protected:
    Message_ShowBase(unsigned int id, bool show) : Message(id) { SetShow(show); }
};

/// Shows or hides the receiver.
class Message_Show : public Message_ShowBase
{
public:
    explicit Message_Show(bool show = true) : Message_ShowBase(e_msg_show, show) {}
};

/// Shows or hides the children of the receiver.
class Message_ShowChildren : public Message_ShowBase
{
public:
    explicit Message_ShowChildren(bool show = true) : Message_ShowBase(e_msg_show_children, show) {}
};

/// Shows or hides all descendants of the receiver.
class Message_ShowDescendants : public Message_ShowBase
{
public:
    explicit Message_ShowDescendants(bool show = true) : Message_ShowBase(e_msg_show_descendants, show) {}
};

/// Enables or disables the receiver.
class Message_Enable : public Message
{
public:
    Message_Enable() : Message_Enable(true) {}
    explicit Message_Enable(bool enable) : Message(e_msg_enable) { SetEnable(enable); }

    bool GetEnable() const { return GetWord<0, unsigned char>() != 0; }
    void SetEnable(bool enable) { SetWord<0>(enable); }
};

/// Sets the flags of the receiver.
class Message_Flags : public Message
{
public:
    Message_Flags() : Message_Flags(0) {}
    explicit Message_Flags(unsigned int flags) : Message(e_msg_flags) { SetFlags(flags); }

    /// New value of all flags.
    unsigned int GetFlags() const { return GetWord<0, unsigned int>(); }
    void SetFlags(unsigned int flags) { SetWord<0>(flags); }
};

/// Sets or clears some flags of the receiver.
class Message_FlagsOnOff : public Message
{
public:
    Message_FlagsOnOff() : Message_FlagsOnOff(0, true) {}
    Message_FlagsOnOff(unsigned int flags, bool on) : Message(e_msg_flags_on_off)
    {
        SetFlags(flags);
        SetOn(on);
    }

    /// Flags that change.
    unsigned int GetFlags() const { return GetWord<0, unsigned int>(); }
    void SetFlags(unsigned int flags) { SetWord<0>(flags); }
    bool GetOn() const { return GetWord<1, unsigned char>() != 0; }
    void SetOn(bool on) { SetWord<1>(on); }
};

/// Switches the receiver on or off.
class Message_OnOff : public Message
{
public:
    Message_OnOff() : Message_OnOff(false) {}
    explicit Message_OnOff(bool on) : Message(e_msg_on_off) { SetOn(on); }

    bool GetOn() const { return GetWord<0, unsigned char>() != 0; }
    void SetOn(bool on) { SetWord<0>(on); }
};

/// Selects or deselects the receiver.
class Message_Select : public Message
{
public:
    Message_Select() : Message_Select(false, 0) {}
    Message_Select(bool select, unsigned int groupID) : Message(e_msg_select)
    {
        SetSelect(select);
        SetGroupID(groupID);
    }

    bool GetSelect() const { return GetWord<0, unsigned char>() != 0; }
    void SetSelect(bool select) { SetWord<0>(select); }
    /// Only receivers of this group react.
    unsigned int GetGroupID() const { return GetWord<1, unsigned int>(); }
    void SetGroupID(unsigned int groupID) { SetWord<1>(groupID); }
};

/// Scrolls the receiver.
class Message_Scroll : public Message
{
public:
    Message_Scroll() : Message_Scroll(true, e_scroll_line, 0) {}
    Message_Scroll(bool forward, eScrollDistance distance, int offset) : Message(e_msg_scroll)
    {
        SetForward(forward);
        SetDistance(distance);
        SetOffset(offset);
    }

    bool GetForward() const { return GetWord<0, unsigned char>() != 0; }
    void SetForward(bool forward) { SetWord<0>(forward); }
    eScrollDistance GetDistance() const { return GetWord<1, eScrollDistance>(); }
    void SetDistance(eScrollDistance distance) { SetWord<1>(distance); }
    /// How often; the receiver may give it another meaning.
    int GetOffset() const { return GetWord<2, int>(); }
    void SetOffset(int offset) { SetWord<2>(offset); }
};

/// A command is about to be executed. Components pass it on to their parents until one answers.
class Message_PreCommandExecute : public Message
{
public:
    Message_PreCommandExecute() : Message_PreCommandExecute(0) {}
    explicit Message_PreCommandExecute(unsigned int commandID) : Message(e_msg_pre_command_execute)
    {
        SetCommandID(commandID);
    }

    unsigned int GetCommandID() const { return GetWord<0, unsigned int>(); }
    void SetCommandID(unsigned int commandID) { SetWord<0>(commandID); }
};

/// Asks the receiver to send its command.
class Message_SendCommand : public Message
{
public:
    Message_SendCommand() : Message(e_msg_send_command) {}
};

} // namespace quillmarsh::gui

#endif
