// Manager of the GUI: turns input into messages, draws, and owns what is known by name.
#ifndef QUILLMARSH_GUI_GUI_MANAGER_H
#define QUILLMARSH_GUI_GUI_MANAGER_H

#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/gui/gui_messages.h>
#include <quillmarsh/mathtools/vector2.h>
#include <quillmarsh/platform/inputcodes.h>
#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh
{

class Application;
class HumanInterfaceDevice;
class Kernel;
class Mouse;
class VideoRenderer;

namespace gui
{

class BaseShader;
class Component;
class Cursor;
class Font;
class FontTexture;
class Message;
class MessageHandler;
class Renderer;
class TileTexture;
class VideoResourceUser;
namespace manager_parts
{
struct Parts;
} // namespace manager_parts

/// Centre of the GUI. The host derives a class from it, or makes an object of it, exactly one, before the first
/// component, shader or cursor. The kernel calls DispatchInputEvents() and Draw() in each frame.
///
/// Every component may be deleted at any time, also by a handler while messages are sent: the manager forgets it. The
/// application stands among the components: forms with an `Application &` act on a component that passes its messages
/// on to the application, and that fills the window behind all others.
///
/// Frame thread only.
class QUILLMARSH_API Manager : NoCopy
{
public:
    /// Asserts " singleton already created." behind the class name when there is one.
    Manager();
    /// Deletes all components, shaders and cursors, and unregisters fonts and tile textures.
    virtual ~Manager();

    /// @name The one manager
    /// Instance() and InstancePtr() assert " singleton is not created." behind the class name without one.
    /// @{
    static Manager &Instance();
    static Manager *InstancePtr();
    static bool IsCreated() { return s_pInstanceManager != nullptr; }
    /// @}

    /// @name Frame
    /// @{

    /// Synchronises, notifies of the time, and turns the input of this frame into messages.
    void DispatchInputEvents();
    /// Synchronises, and draws all visible components and the GUI cursor, within the renderer's Begin() and End() if
    /// it does not draw yet. Draws nothing while no video renderer is connected.
    void Draw();
    /// Brings everything up to date that was changed: resources in the renderer, queues, handles, geometry. Throws
    /// GUIException, "Missing font for: " (tile-texture, cursor, shader) and the object name, when a user lacks one.
    void SyncObjectStates();
    /// Returns the seconds of this frame, as the kernel gave them.
    double GetTimeDelta() const;
    /// @}

    /// @name Top-level components
    /// From back to front.
    /// @{
    unsigned int GetNumTopLevelComponents() const;
    /// Returns a component by index; null past the end.
    Component *GetTopLevelComponent(unsigned int index) const;
    void DeleteAllComponents();
    /// Brings a top-level component to the front of its layer; others are ignored.
    void BringToFront(Component &component);
    void SendToBack(Component &component);
    /// Swaps two top-level components of one layer if `front` stands behind `back`.
    void SetZOrder(Component &front, Component &back);
    /// @}

    /// @name Geometry
    /// @{

    /// Tests again what is under the mouse, also if it does not move.
    void ForceHitTestAtNextFrame();
    /// Updates the top-level component of `component` at the next synchronisation.
    void ReportDirtyGeometry(Component &component);
    /// Updates now what was reported.
    void UpdateDirtyGeometry();
    /// Updates all top-level components now.
    void UpdateAllGeometry();
    /// Tells whether a component is at least partly inside the window; true while no video renderer is connected.
    bool IntersectsWindow(Component &component) const;
    /// Returns the size of the window in pixels, at least 1.
    unsigned int GetWindowWidth() const;
    unsigned int GetWindowHeight() const;
    vec2 GetWindowSize() const;
    /// @}

    /// @name Mouse
    /// The states are those of the mouse in this frame: false and 0 while there is none. The forms without a button
    /// mean any.
    /// @{

    /// Returns the mouse; null if there is none.
    Mouse *GetMouse() const;
    /// Returns the position in the window in pixels.
    vec2 GetMousePosition() const;
    /// Returns the distance from the position of the last dispatch.
    vec2 GetMousePositionDelta() const;
    int GetMouseWheelDelta() const;
    /// Returns the seconds since the mouse was moved or a button was pressed.
    double GetMouseHoverTime() const;
    /// Sets that time.
    void ResetMouseHoverTime(double seconds);
    bool IsButtonDown(eMouseButton button) const;
    bool IsButtonDown() const;
    bool IsButtonUp(eMouseButton button) const;
    bool IsButtonUp() const;
    bool IsButtonPressed(eMouseButton button) const;
    bool IsButtonPressed() const;
    /// Returns the component under the mouse. Never null: it is one that handles nothing if there is none.
    Component *GetMouseOverTarget() const;
    bool IsMouseOverTargetApplication() const;
    /// Returns the component that the mouse would be over at a position in the window, as of the last synchronisation:
    /// what a modal target allows, from the front. Null if there is none.
    Component *FindComponentAt(vec2 const &position);
    /// True while presses are ignored, up to the next release; see SetBehaviorOnWindowActivate().
    bool IsIgnoringClicks() const;
    /// Sets the delay before repeated messages of a held button, and their interval, in seconds, at least 0; 0.25 and
    /// 0.025 at first.
    void SetMouseRepeat(double delay, double interval);
    void GetMouseRepeat(double &delay, double &interval) const;
    /// Sets the longest time between the presses of a double click, in seconds, at least 0; 0.25 at first.
    void SetMouseDoubleClick(double seconds);
    double GetMouseDoubleClick() const;
    /// @}

    /// @name Capture of the mouse
    /// The target gets the movements wherever the mouse is. The capture ends by itself with any press or release, and
    /// when the mouse leaves the window.
    /// @{

    /// Returns the target; null if there is none.
    Component *GetMouseCaptureTarget() const;
    bool IsMouseCaptured() const;
    bool IsMouseCapturedByApplication() const;
    /// Returns false while another component has the capture, while a component is moved or resized, and for a
    /// component outside of the modal branch.
    bool RequestMouseCapture(Component &component);
    bool RequestMouseCapture(Application &application);
    /// Harmless for a component without the capture.
    void ReleaseMouseCapture(Component &component);
    void ReleaseMouseCapture(Application &application);
    /// @}

    /// @name Move and resize by the mouse
    /// @{

    /// Returns the top-level component that is moved or resized; null if there is none.
    Component *GetCommandTarget() const;
    eCommandArea GetCommandArea() const;
    bool IsCommandModeActive() const;
    /// Ends it; harmless if none is moved or resized.
    void BreakCommandMode();
    /// @}

    /// @name Keyboard
    /// The states are those of the keyboard in this frame: false while there is none. The forms without a key mean any.
    /// @{

    /// Returns the keyboard; null if there is none.
    Keyboard *GetKeyboard() const;
    bool IsKeyDown(eKey key) const;
    bool IsKeyDown() const;
    bool IsKeyUp(eKey key) const;
    bool IsKeyUp() const;
    bool IsKeyPressed(eKey key) const;
    bool IsKeyPressed() const;
    bool IsKeyModifierPressed(eKeyModifier modifier) const;
    bool IsKeyModifierPressed() const;
    /// Sets the delay before repeated messages of a held key, and their interval, in seconds, at least 0; 0.25 and
    /// 0.025 at first.
    void SetKeyboardRepeat(double delay, double interval);
    void GetKeyboardRepeat(double &delay, double &interval) const;
    /// @}

    /// @name Keyboard focus
    /// @{

    /// Returns the component that gets the keys. Never null: it is one that handles nothing if there is none.
    Component *GetKeyboardFocusTarget() const;
    bool IsKeyboardFocusTargetApplication() const;
    /// Asks a component and its ancestors whether they want the focus; the first that does gets it. Returns false for a
    /// component outside of the modal branch, and while a component is moved or resized, for all but its descendants.
    bool RequestKeyboardFocus(Component &component);
    bool RequestKeyboardFocus(Application &application);
    /// Passes the focus of a component that has it on to the application.
    void ReleaseKeyboardFocus(Component &component);
    /// @}

    /// @name Activation
    /// @{

    /// Shows a top-level component and makes it the only active one. Ignored for others, and while the components of a
    /// click are told.
    void ActivateTopLevel(Component &component, bool bringToFront);
    void ActivateApplication();
    /// Returns the hindmost top-level component that is visible and active; null if there is none.
    Component *GetActiveTopLevel() const;
    bool IsApplicationActive() const;
    /// Tells whether the first click is ignored after the window was activated or deactivated, and after it was
    /// created: true and false at first.
    void SetBehaviorOnWindowActivate(bool swallowOnActivate, bool swallowOnCreate);
    void GetBehaviorOnWindowActivate(bool &swallowOnActivate, bool &swallowOnCreate) const;
    /// @}

    /// @name Modality
    /// Only the branch of the modal target gets the mouse and the focus. Modal targets stack; none of the calls waits.
    /// @{
    void RunModal(Component &component);
    void RunModal(Application &application);
    /// Ends the modality of the present target, and returns to the former one; ignored for others.
    void EndModal(Component &component);
    void EndModal(Application &application);
    /// Returns the target; null if there is none.
    Component *GetModalTarget() const;
    bool IsModalTargetApplication() const;
    bool IsRunningModal() const;
    /// @}

    /// @name Cycle queue
    /// The order in which a key activates top-level components and the application.
    /// @{

    /// Sets the key, a modifier that has to be pressed with it, and one that reverses the direction. At first they are
    /// grave accent, none, shift; s_noKeyModifier stands for none.
    void SetCycleQueueKeys(eKey key, eKeyModifier modifier, eKeyModifier reverseModifier);
    void GetCycleQueueKeys(eKey &key, eKeyModifier &modifier, eKeyModifier &reverseModifier) const;
    /// Modifier that stands for none.
    static constexpr eKeyModifier s_noKeyModifier = static_cast<eKeyModifier>(3);
    /// Enables the key, and tells whether components enter the queue when they are created, and when they become
    /// top-level: all true at first.
    void SetCycleQueueProperties(bool enabled, bool insertOnCreate, bool insertOnTopLevel);
    void GetCycleQueueProperties(bool &enabled, bool &insertOnCreate, bool &insertOnTopLevel) const;
    void CycleQueueClear();
    /// Appends; harmless if it is in the queue.
    void CycleQueueInsert(Component &component);
    void CycleQueueInsert(Application &application);
    void CycleQueueRemove(Component &component);
    void CycleQueueRemove(Application &application);
    /// Swaps two members if `second` stands ahead of `first`.
    void CycleQueueOrder(Component &first, Component &second);
    void CycleQueueOrder(Component &first, Application &second);
    void CycleQueueOrder(Application &first, Component &second);
    /// Moves a member to the start, or to the end.
    void CycleQueueOrderToStart(Component &component);
    void CycleQueueOrderToStart(Application &application);
    void CycleQueueOrderToEnd(Component &component);
    void CycleQueueOrderToEnd(Application &application);
    /// Activates the next visible member, or the previous one.
    void CycleQueueActivate(bool forward);
    /// @}

    /// @name Messages, services and time
    /// @{

    /// Sends a message to every component, visible or not. Returns true if any consumed it, which keeps it from none.
    /// The application does not get it.
    bool BroadcastMessage(Message &message);
    /// Makes a handler, which is borrowed, the provider of a service, in place of the former one, and broadcasts the
    /// change. Returns false for the number 0.
    bool RegisterServiceProvider(unsigned int id, MessageHandler &handler);
    /// Returns false, and changes nothing, if the handler does not provide the service.
    bool UnregisterServiceProvider(unsigned int id, MessageHandler &handler);
    /// Returns false if nobody provides the service.
    bool UnregisterServiceProvider(unsigned int id);
    /// Forgets all providers, and tells nobody.
    void UnregisterAllServiceProviders();
    /// Returns the provider; null if there is none.
    MessageHandler *GetServiceProvider(unsigned int id) const;
    /// Sends a message to the provider of a service. Returns whether it was consumed; false if there is none.
    bool SendMessageToServiceProvider(unsigned int id, Message &message);
    /// Switches the messages to the application on or off; they are on at first.
    void EnableApplicationMessageDispatch(bool enable);
    /// Switches the calls of OnTimeDelta() on or off; they are off at first.
    void TimeNotifyRegister(Component &component, bool on);
    void TimeNotifyRegister(BaseShader &shader, bool on);
    void TimeNotifyRegister(Cursor &cursor, bool on);
    /// @}

    /// @name Tile textures
    /// Names are looked up through aliases, in one step. A user looks its names up again at the next synchronisation
    /// after a change. A registered object that is replaced or removed lives until then.
    /// @{

    /// Registers a texture, which the manager owns from then on, in place of a former one of that name. Throws
    /// GUIException, and leaves the object to the caller, for an empty name, null, and an object that is registered.
    void RegisterTileTexture(string const &name, TileTexture *texture);
    void RegisterTileTexture(string const &name, AutoPtr<TileTexture> &texture);
    /// Harmless for an unknown name.
    void UnregisterTileTexture(string const &name);
    void UnregisterAllTileTextures();
    /// Gives all names in ascending order, in place of what `names` held.
    void GetRegisteredTileTextureNames(std::vector<string> &names) const;
    /// Tells whether an object is registered, and gives its name if `name` is not null.
    bool IsRegisteredTileTexture(TileTexture &texture, string *name) const;
    /// Returns the texture of a name or alias; null for unknown and empty names.
    TileTexture *GetTileTexture(string const &name) const;
    void RequestTileTextureRecache(VideoResourceUser &user);
    /// Adds or replaces an alias; an empty `name` is ignored.
    void AddTileTextureAlias(string const &alias, string const &name);
    void ClearTileTextureAlias(string const &alias);
    void ClearAllTileTextureAliases();
    /// Gives all aliases in ascending order, in place of what `aliases` held.
    void GetTileTextureAliases(std::vector<string> &aliases) const;
    /// Gives what an alias stands for, and true; for any other name that name, and false.
    bool ResolveTileTextureAlias(string const &alias, string &name) const;
    void DumpRegisteredTileTextures(ostream &out, unsigned int tabs) const;
    /// @}

    /// @name Fonts
    /// As tile textures.
    /// @{
    void RegisterFont(string const &name, Font *font);
    void RegisterFont(string const &name, AutoPtr<Font> &font);
    void RegisterFont(string const &name, AutoPtr<FontTexture> &font);
    void UnregisterFont(string const &name);
    void UnregisterAllFonts();
    void GetRegisteredFontNames(std::vector<string> &names) const;
    bool IsRegisteredFont(Font &font, string *name) const;
    Font *GetFont(string const &name) const;
    void RequestFontRecache(VideoResourceUser &user);
    void AddFontAlias(string const &alias, string const &name);
    void ClearFontAlias(string const &alias);
    void ClearAllFontAliases();
    void GetFontAliases(std::vector<string> &aliases) const;
    bool ResolveFontAlias(string const &alias, string &name) const;
    void DumpRegisteredFonts(ostream &out, unsigned int tabs) const;
    /// @}

    /// @name Shaders
    /// In the order of their names. Aliases work as those of tile textures. A shader registers itself; deletion takes
    /// it from the components that use it.
    /// @{
    unsigned int GetNumShaders() const;
    /// Returns a shader by index; null past the end.
    BaseShader *GetShader(unsigned int index) const;
    /// Returns the shader of a name or alias; null for unknown and empty names.
    BaseShader *GetShader(string const &name) const;
    /// Deletes the shader of this name, which is no alias; harmless for an unknown one.
    void DeleteShader(string const &name);
    void DeleteAllShaders();
    void RequestShaderRecache(Component &component);
    void AddShaderAlias(string const &alias, string const &name);
    void ClearShaderAlias(string const &alias);
    void ClearAllShaderAliases();
    void GetShaderAliases(std::vector<string> &aliases) const;
    bool ResolveShaderAlias(string const &alias, string &name) const;
    void DumpRegisteredShaders(ostream &out, unsigned int tabs) const;
    /// @}

    /// @name Cursors
    /// As shaders.
    /// @{
    unsigned int GetNumCursors() const;
    Cursor *GetCursor(unsigned int index) const;
    Cursor *GetCursor(string const &name) const;
    void DeleteCursor(string const &name);
    void DeleteAllCursors();
    void RequestCursorRecache(Component &component);
    void AddCursorAlias(string const &alias, string const &name);
    void ClearCursorAlias(string const &alias);
    void ClearAllCursorAliases();
    void GetCursorAliases(std::vector<string> &aliases) const;
    bool ResolveCursorAlias(string const &alias, string &name) const;
    void DumpRegisteredCursors(ostream &out, unsigned int tabs) const;
    /// Returns the cursor that is shown at the mouse. Valid until the next dispatch, or until a cursor is deleted.
    Cursor const *GetActiveCursor() const;
    /// Draws the active cursor; off at first. It is also drawn if the mouse cannot show the system's.
    void ShowGUICursor(bool show);
    bool IsShownGUICursor() const;
    /// Shows the system's cursor while it is over the window; on at first.
    void ShowSystemCursor(bool show);
    bool IsShownSystemCursor() const;
    /// Updates all cursors to the global size and colour now.
    void DispatchGlobalCursorParams();
    /// @}

    /// Creates the parts in the renderer of new textures and fonts, or of all of a kind, if video resources exist.
    void PrepareVideoRendererResources(bool tileTextures, bool fonts);

    /// @name Diagnostics
    /// They print one component a line, behind `tabs` tabs.
    /// @{

    /// Prints all top-level components with their branches, or only them; see Component::DumpHierarchy().
    void DumpComponentHierarchy(ostream &out, unsigned int tabs, bool limitToTopLevel, bool showDepth,
                                bool showDetails) const;
    void DumpCycleQueue(ostream &out, unsigned int tabs) const;
    /// @}

private:
    friend class BaseShader;
    friend class Component;
    friend class Cursor;
    friend class MessageHandler;
    friend class VideoResourceUser;
    friend class quillmarsh::Kernel;
    friend struct manager_parts::Parts;

    class NullTarget;
    class ComponentToApplicationAdapter;

    /// @name Notices of components, shaders and cursors
    /// Called by their own operations. A created object is still in its base constructor, and a deleted one in its base
    /// destructor: none of its virtual operations is called.
    /// @{
    void NotifyObjectCreateDelete(Component &component, bool created);
    void NotifyObjectCreateDelete(BaseShader &shader, bool created);
    void NotifyObjectCreateDelete(Cursor &cursor, bool created);
    /// A destroyed handler that provides services does so no longer; it is told nothing, and the change is broadcast.
    void NotifyServiceProviderDeleted(MessageHandler &handler);
    /// A destroyed user leaves the lists of users. Called for all users; does nothing without a manager.
    static void NotifyUserDeleted(VideoResourceUser &user);
    void NotifyComponentHierarchyChanged(Component &component);
    void NotifyComponentLayerChanged(Component &component);
    void NotifyComponentOverlayChanged(Component &component);
    void NotifyComponentVisibilityChanged(Component &component);
    void NotifyNameChanged(BaseShader &shader);
    void NotifyNameChanged(Cursor &cursor);
    void NotifyGlobalCursorParamsChanged();
    /// @}

    /// @name Doors of the kernel
    /// @{

    /// Connects the kernel's application, or disconnects it.
    void ConnectApplication(bool connect);
    void NotifyApplicationWindowActive(bool active);
    void NotifyApplicationWindowCreated();
    void BeginConnectHumanInterfaceDevices();
    /// Takes keyboard and mouse of the system from a device, unless they were found already.
    void ConnectHumanInterfaceDevice(HumanInterfaceDevice &device);
    /// Throws GUIException when keyboard or mouse is missing, unless that is tolerated.
    void EndConnectHumanInterfaceDevices();
    void DisconnectHumanInterfaceDevices();
    void SetTolerateMissingInputDevice(bool tolerate);
    /// Asserts "Video-renderer already connected to GUI-manager." when one is connected.
    void ConnectVideoRenderer(VideoRenderer &renderer);
    void DisconnectVideoRenderer();
    /// Both assert "Video-renderer is not connected to GUI-manager." without one. With `onlyIfUnmanaged` they leave
    /// resources alone that survive a lost device.
    void CreateVideoResources(bool onlyIfUnmanaged);
    void ReleaseVideoResources(bool onlyIfUnmanaged);
    void OnWindowResize(unsigned int width, unsigned int height);
    /// @}

    static Manager *s_pInstanceManager;

    AutoPtr<manager_parts::Parts> parts_;
};

} // namespace gui
} // namespace quillmarsh

#endif
