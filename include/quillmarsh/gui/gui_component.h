// Components: the nodes of the GUI tree.
#ifndef QUILLMARSH_GUI_GUI_COMPONENT_H
#define QUILLMARSH_GUI_GUI_COMPONENT_H

#include <quillmarsh/gui/gui_messagehandler.h>
#include <quillmarsh/gui/gui_messages.h>
#include <quillmarsh/gui/gui_videoresource.h>
#include <quillmarsh/mathtools/vector2.h>

#include <vector>

namespace quillmarsh::gui
{

class BaseShader;
class ChildWalk;
class Manager;
class Renderer;

/// What a top-level component does with its position along one axis when the window has a new size. W is the size of the
/// window along this axis.
enum eAutoPosition : unsigned int
{
    e_autopos_none = 0,
    /// Stands at the offset.
    e_autopos_near,
    /// Stands at the offset from the far edge, with its own far edge.
    e_autopos_far,
    /// Stands in the middle.
    e_autopos_center,
    /// Stays, unless it would stand at W or beyond: then its far edge stands at W, and its position is at least 0.
    e_autopos_keep_inside
};

/// Node of the GUI tree: everything that is drawn, hit by the mouse and told by messages.
///
/// A component owns its children, and deletes them with itself. One without a parent is a top-level component; the
/// manager owns it. Components are made by plain `new`, and only while the manager exists. A component does not draw
/// itself: its BaseShader does, which it knows by name.
///
/// All coordinates are in pixels, with x to the right and y down. A position is relative to the parent. The setters of
/// position and size neither limit their values nor update anything that depends on them: call ReportDirtyGeometry(),
/// which updates at the next synchronisation, or UpdateGeometry(), which updates now. The manager learns of every
/// change of state at once, and acts on it at its next synchronisation: until then a new component is not drawn, not
/// hit, and gets no broadcasts.
///
/// Every handler may delete, attach, detach and hide any component, also the one that it belongs to. An operation of
/// this class that calls handlers goes on only with what is still there. A tree may be of any depth.
///
/// Frame thread only.
class QUILLMARSH_API Component : public VideoResourceUser, public MessageHandler
{
public:
    /// Makes a visible, enabled top-level component of size (1, 1) at (0, 0).
    Component();
    /// Detaches the component from its parent, and deletes its children.
    ~Component() override;
    Component(Component const &) = delete;
    Component &operator=(Component const &) = delete;

    /// @name Hooks of the tree
    /// By default they do nothing. Destructors call those of a detachment, too, so these must not throw.
    /// @{

    /// A component became a child of this one.
    virtual void OnAttachedChild(Component &child);
    /// A component is no longer a child of this one. It may be in its destructor.
    virtual void OnDetachedChild(Component &child);
    virtual void OnAttachedToParent();
    virtual void OnDetachedFromParent();
    /// @}

    /// @name Hooks of the geometry
    /// @{

    /// Computes the component's own size, after its children did. By default it does nothing.
    virtual void RecalcSize();
    /// Places the children, before they place theirs. By default it does nothing.
    virtual void RecalcLayout();
    /// Position and size are final now, of all components of the branch. By default it does nothing.
    virtual void UpdateGeometryCache();
    /// The window has a new size in pixels. By default a top-level component follows its eAutoPosition.
    virtual void OnWindowResize(unsigned int width, unsigned int height);
    /// Tells whether a point belongs to the component, by default when it is inside its rectangle; the far edges are
    /// outside. `position` is relative to the absolute position, as in all hit tests.
    virtual bool HitTestSelf(vec2 const &position) const;
    /// Returns the area at a point, by default GetDefaultCommandArea().
    virtual eCommandArea HitTestCommandAreaSelf(vec2 const &position);
    /// @}

    /// @name Hooks of drawing, cursors and shaders
    /// @{

    /// Tells whether a shader fits the component. By default each does, also null, which stands for none.
    virtual bool CheckShader(BaseShader const *shader) const;
    /// Draws the component with its origin at (0, 0). By default its shader does, if there is one.
    virtual void DrawSelf(Renderer &renderer);
    /// Looks up the cursor. Returns false if it is missing; true if the name is empty.
    virtual bool CacheCursorHandles(Manager &manager);
    /// Every component has looked up its cursor. By default it does nothing.
    virtual void PostCacheCursorHandles();
    /// Cursors were made, deleted or given other names. By default it does nothing.
    virtual void OnCursorListChanged(Manager &manager);
    /// Looks up the shader, and stores it if CheckShader() accepts it. Otherwise stores null and returns false.
    virtual bool CacheShaderHandles(Manager &manager);
    /// Every component has looked up its shader. By default it calls ReportDirtyGeometry().
    virtual void PostCacheShaderHandles();
    /// Shaders were made, deleted or given other names. By default it does nothing.
    virtual void OnShaderListChanged(Manager &manager);
    /// @}

    /// @name Messages
    /// HandleMessage() calls the operation of the message. Each returns true if the message is consumed; the base class
    /// returns false unless told otherwise. References are answers, and positions are relative to this component. See
    /// the classes of gui_messages.h for the parameters.
    /// @{

    /// Handles a message to another handler, whose hook this component is. The base class calls the forms with a
    /// handler below for the messages of wheel, buttons and keyboard, and returns false for all others.
    virtual bool HandleMessageAsHook(Message &message);
    /// The base class passes command 1 on to the parent.
    virtual bool OnCommand(unsigned int commandID);
    /// The base class answers e_geom_query: it confirms the left button, and returns true.
    virtual bool OnGeometryUpdateByManager(bool &confirm, eGeometryUpdateEvent event, eCommandArea area,
                                           eMouseButton button, vec2 const &newPosition, vec2 const &newSize);
    /// The base class returns true; by mouse it sets both answers to whether the button is the left one.
    virtual bool OnActivate(bool byMouse, eMouseButton button, vec2 const &position, Component *clickedDescendant,
                            bool &autoBringToFront, bool &autoActivate);
    virtual bool OnDeactivate(bool byMouse);
    virtual bool OnMouseCapture(bool begin);
    virtual bool OnMouseEnterExit(bool enter, bool direct, vec2 const &position);
    /// The base class gives its cursor for the client area, and returns true.
    virtual bool OnMouseQueryCursor(Cursor const *&cursor, eCommandArea area, vec2 const &position);
    virtual bool OnMouseMove(bool hover, double hoverSeconds, vec2 const &position);
    /// @}

    /// @name Messages of wheel, buttons and keyboard
    /// In two forms: for messages to `target`, whose hook this component is, and for its own messages.
    /// @{
    virtual bool OnMouseWheel(MessageHandler *target, int delta, vec2 const &position);
    virtual bool OnMouseWheel(int delta, vec2 const &position);
    virtual bool OnMouseButton(MessageHandler *target, bool down, eMouseButton button, bool doubleClick,
                               unsigned int repeatCount, vec2 const &position);
    virtual bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                               vec2 const &position);
    virtual bool OnKeyboardQueryFocus(MessageHandler *target, bool byMouse, eMouseButton button, bool &wantFocus,
                                      bool &needCharacterData);
    virtual bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData);
    virtual bool OnKeyboardFocus(MessageHandler *target, bool gotFocus);
    virtual bool OnKeyboardFocus(bool gotFocus);
    virtual bool OnKeyboardKey(MessageHandler *target, bool down, eKey key, unsigned int repeatCount, char character);
    virtual bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character);
    /// @}

    /// @name Messages that control the component
    /// @{

    /// Gives the tool tip. The base class returns false without a text; else it sets Show, text, position and size.
    virtual bool OnQueryToolTipParams(ToolTipParams &params);
    /// The base class calls SetVisible(), and returns true.
    virtual bool OnMsgShow(bool show);
    /// The base class calls PropagateVisibleToChildren(), and returns true.
    virtual bool OnMsgShowChildren(bool show);
    /// The base class calls PropagateVisibleToDescendants(), and returns true.
    virtual bool OnMsgShowDescendants(bool show);
    /// The base class calls SetEnabled(), and returns true.
    virtual bool OnMsgEnable(bool enable);
    /// The base class calls SetFlags(), and returns true.
    virtual bool OnMsgFlags(unsigned int flags);
    /// The base class calls SetFlagsOnOff(), and returns true.
    virtual bool OnMsgFlagsOnOff(unsigned int flags, bool on);
    virtual bool OnMsgOnOff(bool on);
    virtual bool OnMsgSelect(bool select, unsigned int groupID);
    virtual bool OnMsgScroll(bool forward, eScrollDistance distance, int offset);
    /// The base class passes the message on to the parent.
    virtual bool OnMsgPreCommandExecute(unsigned int commandID);
    virtual bool OnMsgSendCommand();
    /// @}

    /// @name Hooks of time and state
    /// By default they do nothing. The state is the new one already.
    /// @{

    /// Called in each frame for a component that registered by Manager::TimeNotifyRegister().
    virtual void OnTimeDelta(double seconds);
    /// A top-level component or an attachment changed whether this branch can be seen. `visible` is the same for the
    /// whole branch, whatever the components' own IsVisible() is.
    virtual void OnChangedBranchVisible(bool visible);
    virtual void OnChangedVisible();
    virtual void OnChangedEnabled();
    virtual void OnChangedFocused();
    virtual void OnChangedActive();
    virtual void OnChangedFlags();
    /// @}

protected:
    /// Calls the operation of the message, and writes its answers back.
    bool HandleMessage(Message &message) override;

public:
    /// Returns the text by which users know the component, such as the words on a button or the title of a panel, in
    /// UTF-8. For tools and robots, which look components up by it. By default it is empty.
    virtual string GetCaption() const;

    /// @name Tree
    /// Children have the order in which they were attached; the first is drawn first.
    /// @{

    /// Makes `child` the last child, and takes it from its former parent. Ignores this component, and a child that it
    /// has; also while one of the two is in its destructor. Throws GUIException, "Attaching ancestor: A to descendant: B", and changes nothing, if `child` is an
    /// ancestor.
    void Attach(Component &child);
    void AttachTo(Component &parent) { parent.Attach(*this); }
    /// Makes a child a top-level component. Throws GUIException, "Detaching non-child: A from: B", for any other.
    void Detach(Component &child);
    /// Harmless without a parent.
    void DetachFromParent();
    /// Detaches all children, beginning with the last.
    void DetachAllChildren();
    /// Detaches and deletes all children, beginning with the first.
    void DeleteAllChildren();
    Component *GetParent() { return parent_; }
    Component const *GetParent() const { return parent_; }
    /// Returns the component itself if it has no parent.
    Component &GetTopLevelAncestor();
    Component const &GetTopLevelAncestor() const;
    unsigned int GetNumChildren() const { return static_cast<unsigned int>(children_.GetSize()); }
    /// Returns a child by index; null past the end.
    Component *GetChild(unsigned int index);
    Component const *GetChild(unsigned int index) const;
    /// Returns all children. Valid until a child comes or goes.
    std::vector<Component *> const &GetChildren() const { return children_.Get(); }
    bool IsTopLevel() const { return parent_ == nullptr; }
    bool IsLeaf() const { return children_.GetSize() == 0; }
    bool IsChildOf(Component const &other) const { return parent_ == &other; }
    bool IsParentOf(Component const &other) const { return other.parent_ == this; }
    /// A component is neither ancestor nor descendant of itself.
    bool IsAncestorOf(Component const &other) const { return other.IsDescendantOf(*this); }
    bool IsDescendantOf(Component const &other) const;
    /// Returns the number of ancestors.
    unsigned int CalcDepth() const;
    /// @}

    /// @name Stacking
    /// Of top-level components, within the order of their layers; other components are ignored.
    /// @{

    /// A lower layer stands behind a higher one; 0 at first.
    void SetLayer(unsigned int layer);
    unsigned int GetLayer() const { return layer_; }
    void BringToFront();
    void SendToBack();
    /// Swaps two components of one layer if `other` is in front of this one.
    void BringInFront(Component &other);
    /// Swaps two components of one layer if `other` is behind this one.
    void SendBehind(Component &other);
    /// @}

    /// @name Visibility
    /// @{
    bool IsVisible() const { return visible_; }
    /// Shows or hides the component; an invisible one hides its branch. Hiding ends the activity of the whole branch,
    /// also if the component was hidden already.
    void SetVisible(bool visible);
    /// True if the component and all its ancestors are visible.
    bool IsBranchVisible() const;
    void PropagateVisibleToChildren(bool visible);
    /// Sets all descendants, each before its children.
    void PropagateVisibleToDescendants(bool visible);
    /// A ghost cannot be hit by the mouse; its children can.
    bool IsGhost() const { return !solid_; }
    void SetGhost(bool ghost);
    /// An overlay is drawn after all other components of its top-level component, and hit before them.
    bool IsOverlay() const { return overlay_; }
    void SetOverlay(bool overlay);
    /// @}

    /// @name State
    /// @{
    bool IsEnabled() const { return enabled_; }
    /// Enables or disables the component. One that cannot be disabled stays enabled. A disabled component is neither
    /// active nor focused, and gets no button and wheel messages.
    void SetEnabled(bool enabled);
    bool CanDisable() const { return canDisable_; }
    void SetCanDisable(bool can) { canDisable_ = can; }
    bool CanFocus() const { return canFocus_; }
    void SetCanFocus(bool can) { canFocus_ = can; }
    bool IsFocused() const { return focused_; }
    /// Sets the state only; see RequestKeyboardFocus(). It stays false unless the component is enabled and can focus.
    void SetFocused(bool focused);
    bool IsActive() const { return active_; }
    /// Sets the state only; see ActivateTopLevel().
    void SetActive(bool active);
    void PropagateActiveToDescendants(bool active);
    /// True while the mouse is over the component or a descendant.
    bool IsMouseOver() const { return mouseOver_; }
    /// True while the mouse is over the component and over no descendant that it hits.
    bool IsMouseOverDirect() const { return mouseOverDirect_; }
    /// Sets both states; for the manager.
    void SetMouseOver(bool over, bool direct);
    /// Enabled, and with the mouse over it directly.
    bool IsHot() const { return enabled_ && mouseOverDirect_; }
    /// @}

    /// @name Flags
    /// 32 bits for derived classes and shaders; Button uses 1.
    /// @{
    unsigned int GetFlags() const { return flags_; }
    void SetFlags(unsigned int flags);
    void SetFlagsOn(unsigned int mask) { SetFlags(flags_ | mask); }
    void SetFlagsOff(unsigned int mask) { SetFlags(flags_ & ~mask); }
    void SetFlagsOnOff(unsigned int mask, bool on) { SetFlags(on ? flags_ | mask : flags_ & ~mask); }
    /// Returns the bits of the mask that are set.
    unsigned int IsFlagOn(unsigned int mask) const { return flags_ & mask; }
    bool IsFlagOff(unsigned int mask) const { return (flags_ & mask) == 0; }
    /// @}

    /// @name Mouse, keyboard, activation, modality
    /// They ask the Manager for this component.
    /// @{
    bool IsMouseCaptureTarget() const;
    bool RequestMouseCapture();
    void ReleaseMouseCapture();
    bool IsKeyboardFocusTarget() const;
    bool RequestKeyboardFocus();
    /// Passes the focus on to the parent, if this component has it. Returns false if not. Without a parent it returns
    /// false, or, if `releaseIfTopLevel`, releases the focus and returns true.
    bool RequestKeyboardFocusToAncestor(bool releaseIfTopLevel);
    void ReleaseKeyboardFocus();
    /// Shows or hides the component; one that is shown, and top-level, is also brought to the front if asked.
    void ShowTopLevel(bool show, bool bringToFront);
    void ActivateTopLevel(bool bringToFront);
    void RunModal();
    void EndModal();
    bool IsRunningModal() const;
    /// @}

    /// @name Position and size
    /// @{
    void SetPositionX(float x);
    void SetPositionY(float y);
    void SetPosition(float x, float y);
    void SetPosition(vec2 const &position);
    void SetSizeX(float x);
    void SetSizeY(float y);
    void SetSize(float x, float y);
    void SetSize(vec2 const &size);
    /// Stores a limit: at least 0, and at most the other limit. The size itself stays.
    void SetMinSize(vec2 const &size);
    /// Stores a limit: at least the other one.
    void SetMaxSize(vec2 const &size);
    vec2 const &GetPosition() const { return position_; }
    vec2 const &GetSize() const { return size_; }
    /// Returns the limit; (0, 0) at first.
    vec2 const &GetMinSize() const { return minSize_; }
    /// Returns the limit; infinite at first.
    vec2 const &GetMaxSize() const { return maxSize_; }
    /// Returns the position in the window, as of the last update.
    vec2 const &GetAbsolutePosition() const { return absolutePosition_; }
    /// Returns a size within both limits.
    vec2 CalcMinMaxClampedSize(vec2 const &size) const;
    /// Position plus size, relative to the parent.
    vec2 CalcEndPosition() const { return position_ + size_; }
    float CalcEndPositionX() const { return position_.x + size_.x; }
    float CalcEndPositionY() const { return position_.y + size_.y; }
    /// Position of the parent; (0, 0) without one.
    vec2 GetParentPosition() const;
    /// Size of the parent; of the window without one.
    vec2 GetParentSize() const;
    /// Position of the mouse, relative to this component.
    vec2 CalcRelativeMousePosition() const;
    /// Turns a position relative to this component into one relative to its parent.
    vec2 CalcParentRelativeMousePosition(vec2 const &position) const { return position + position_; }
    void SetAutoPositionOnWindowResize(eAutoPosition x, eAutoPosition y, float offsetX, float offsetY);
    /// Gives both ways, e_autopos_keep_inside at first, and both offsets.
    void GetAutoPositionOnWindowResize(eAutoPosition &x, eAutoPosition &y, float &offsetX, float &offsetY) const;
    /// Moves a top-level component that is wholly outside of the window to its middle, or to its top left corner if it
    /// is larger.
    void ForceTopLevelComponentInsideWindow();
    /// @}

    /// @name Update of the geometry
    /// @{

    /// Updates the whole top-level component at the next synchronisation.
    void ReportDirtyGeometry();
    /// Updates this branch now, or with `fromTopLevel` the whole top-level component: sizes from the leaves up, layouts
    /// from the root down, absolute positions, then UpdateGeometryCache(). Each of these steps passes over the branches
    /// of invisible components.
    void UpdateGeometry(bool fromTopLevel);
    void PropagateRecalcSize();
    /// Passes over the branch of a component whose layout flag is set; sets the flag of the others.
    void PropagateRecalcLayout();
    /// Sets the layout flag of the visible branch.
    void PropagateResetRecalcLayoutFlag(bool flag);
    /// Sets absolute positions in the visible branch.
    void UpdateAbsolutePositionCache();
    void PropagateUpdateGeometryCache();
    /// Sets the layout flag: with true, this update does not call RecalcLayout() any more. For a RecalcLayout() that
    /// has laid out this component itself.
    void ResetRecalcLayoutFlag(bool flag) { recalcLayoutDone_ = flag; }
    bool IsMoving() const { return activeGeomUpdateEvent_ == e_geom_moving; }
    bool IsResizing() const { return activeGeomUpdateEvent_ == e_geom_resizing; }
    /// Returns e_geom_moving or e_geom_resizing while the manager moves or resizes the component, else e_geom_none.
    eGeometryUpdateEvent GetActiveGeomUpdateEvent() const { return activeGeomUpdateEvent_; }
    /// Returns the area that is dragged; e_area_client while none is.
    eCommandArea GetActiveGeomUpdateEventCommandArea() const { return activeGeomUpdateEventCommandArea_; }
    /// @}

    /// @name Hit test
    /// @{

    /// Tells whether a point hits the component: it is no ghost, HitTestSelf() agrees, and so does its shader, if that
    /// is to be asked.
    bool HitTest(vec2 const &position) const;
    /// Returns the area at a point: that of HitTestCommandAreaSelf(), or what the shader makes of it, if it is asked.
    eCommandArea HitTestCommandArea(vec2 const &position);
    void SetDefaultCommandArea(eCommandArea area) { defaultCommandArea_ = area; }
    /// Returns the area; e_area_client at first.
    eCommandArea GetDefaultCommandArea() const { return defaultCommandArea_; }
    /// The shader is asked in hit tests.
    void EnableShaderHitTest(bool enable) { enabledShaderHitTest_ = enable; }
    bool IsEnabledShaderHitTest() const { return enabledShaderHitTest_; }
    /// Sets the value that components have at first; false if it was never set.
    static void SetDefaultEnableShaderHitTest(bool enable) { s_bDefaultEnableShaderHitTest = enable; }
    static bool GetDefaultEnableShaderHitTest() { return s_bDefaultEnableShaderHitTest; }
    /// @}

    /// @name Names of cursor and shader, and tool tip
    /// A new name takes effect at the next synchronisation, which throws GUIException if there is no such cursor.
    /// Empty names stand for none.
    /// @{
    void SetClientAreaCursorName(string const &name);
    string const &GetClientAreaCursorName() const { return clientAreaCursorName_; }
    void SetShaderName(string const &name);
    string const &GetShaderName() const { return shaderName_; }
    /// Sets the shader itself, which is borrowed, until the next look-up; null for none.
    void SetBaseShader(BaseShader const *shader) { baseShader_ = shader; }
    BaseShader const *GetBaseShader() const { return baseShader_; }
    void RequestCursorRecache();
    void RequestShaderRecache();
    void SetToolTipText(string const &text) { toolTipText_ = text; }
    string const &GetToolTipText() const { return toolTipText_; }
    /// @}

    /// @name Diagnostics
    /// @{

    /// Prints the branch, one component a line, children behind one tab more: depth, class, address and details as
    /// asked. With `limitDepth`, components deeper than `maxDepth` are left out; `depth` is that of this one.
    void DumpHierarchy(ostream &out, unsigned int tabs, bool showDepth, bool showDetails, unsigned int depth,
                       bool limitDepth, unsigned int maxDepth) const;
    /// Returns the object names from the top-level ancestor to this component.
    string MakeHierarchyTrace(string const &separator) const;
    /// @}

protected:
    void SetActiveGeomUpdateEvent(eGeometryUpdateEvent event, eCommandArea area);

    /// @name Messages to relatives
    /// Each returns true if any receiver consumed the message; that does not keep it from the others.
    /// @{

    /// Returns false without a parent.
    bool SendMessageToParent(Message &message);
    bool SendMessageToSiblings(Message &message);
    bool SendMessageToSelfAndSiblings(Message &message);
    /// Sends to the sibling before this component; before the first stands the last. Without a sibling, the message
    /// goes to this component if `selfIfAlone`.
    bool SendMessageToPreviousSibling(bool selfIfAlone, Message &message);
    /// Sends to the sibling after this component, likewise.
    bool SendMessageToNextSibling(bool selfIfAlone, Message &message);
    bool SendMessageToChildren(Message &message);
    bool SendMessageToFirstChild(Message &message);
    bool SendMessageToLastChild(Message &message);
    /// @}

    /// Answer for overrides of OnKeyboardQueryFocus(): wants the focus unless another button than the left one was
    /// clicked, and needs no characters.
    static void DefaultProcessQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData);

private:
    friend class ChildWalk;
    /// The manager's parts read the handles, and set the state of move and resize.
    friend class Manager;
    friend struct manager_parts::Membership;

    /// Children in their order. Those that leave at the front leave a gap, which is closed when the vector is read, and
    /// when it is larger than the rest: all children may leave one by one, from either end, in linear time.
    class QUILLMARSH_API Children
    {
    public:
        std::size_t GetSize() const { return members_.size() - gap_; }
        Component *operator[](std::size_t index) const { return members_[gap_ + index]; }
        Component *GetLast() const { return members_.back(); }
        std::vector<Component *> const &Get() const
        {
            if (gap_ != 0)
                CloseGap();
            return members_;
        }
        void Append(Component &child) { members_.push_back(&child); }
        /// Returns the index that the child had.
        std::size_t Erase(Component const &child);

    private:
        void CloseGap() const;

        mutable std::vector<Component *> members_;
        mutable std::size_t gap_ = 0;
    };

    /// Calls OnChangedBranchVisible() in the whole branch.
    void PropagateChangedBranchVisible(bool visible);

    static bool s_bDefaultEnableShaderHitTest;

    unsigned int layer_ = 0;
    Component *parent_ = nullptr;
    Children children_;
    vec2 absolutePosition_ = {0, 0};
    vec2 position_ = {0, 0};
    vec2 size_ = {1, 1};
    vec2 minSize_ = vec2::ZERO;
    vec2 maxSize_ = vec2::INFINITY;
    bool enabledShaderHitTest_ = s_bDefaultEnableShaderHitTest;
    bool solid_ = true;
    /// RecalcLayout() has run in this update.
    bool recalcLayoutDone_ = false;
    bool canDisable_ = false;
    bool canFocus_ = false;
    bool overlay_ = false;
    bool visible_ = true;
    bool enabled_ = true;
    bool focused_ = false;
    bool active_ = false;
    bool mouseOver_ = false;
    bool mouseOverDirect_ = false;
    unsigned int flags_ = 0;
    eGeometryUpdateEvent activeGeomUpdateEvent_ = e_geom_none;
    eCommandArea activeGeomUpdateEventCommandArea_ = e_area_client;
    eAutoPosition autoPositionX_ = e_autopos_keep_inside;
    eAutoPosition autoPositionY_ = e_autopos_keep_inside;
    float autoPositionOffsetX_ = 0;
    float autoPositionOffsetY_ = 0;
    eCommandArea defaultCommandArea_ = e_area_client;
    string clientAreaCursorName_;
    Cursor const *clientAreaCursor_ = nullptr;
    string shaderName_;
    BaseShader const *baseShader_ = nullptr;
    string toolTipText_;
    /// Walks over the children that run now, the innermost first; see source/gui/childwalk.h.
    ChildWalk *childWalks_ = nullptr;
};

} // namespace quillmarsh::gui

#endif
