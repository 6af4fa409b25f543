// A room of the viewer: one kind of data, or one panel, with its commands, keys and settings.
#ifndef QUILLMARSH_PLUGINS_VIEWER_ROOM_H
#define QUILLMARSH_PLUGINS_VIEWER_ROOM_H

#include "commandset.h"
#include "keys.h"
#include "view.h"
#include "workspace.h"

#include <quillmarsh/widgets/stack.h>

#include <memory>

namespace quillmarsh
{
class HumanInterfaceDevice;
}

namespace quillmarsh::gui
{
class InterleavedRenderArea;
}

namespace viewer
{

/// Base of all rooms. The desk makes one object of each, in the order of GetRooms(), and asks them in this order. Frame
/// thread only.
class Room : quillmarsh::NoCopy
{
public:
    virtual ~Room();

    /// Title for the help page, as "Images".
    virtual char const *GetTitle() const = 0;
    /// Number of dimensions of the data that the room shows: 1, 2 or 3; 0 for a room without a view.
    virtual unsigned int GetNumDimensions() const { return 0; }
    /// Registers commands.
    virtual void AddCommands(CommandSet &) {}
    /// Keys that work while the room's view shows; those of a room without a view always work.
    virtual std::span<KeyBinding const> GetKeys() const { return {}; }

    /// True for the room whose widgets stand at the left edge of the window, beside all views; the others have theirs in
    /// the column at the right.
    virtual bool StandsLeft() const { return false; }

    /// @name GUI
    /// The components belong to their parents, which delete them when the program ends: after this room.
    /// @{
    /// Makes the view. Called once, ahead of the first frame; null for a room without one.
    virtual quillmarsh::gui::Component *MakeView(quillmarsh::gui::Component &) { return nullptr; }
    /// Makes the widgets beside the view, in a column that shows together with it. Called once. Labels of groups are
    /// of shader ShaderName_Section, and sizes fit a column of s_inspectorWidth units.
    virtual void MakeInspector(quillmarsh::widgets::Stack &) {}
    static constexpr float s_inspectorWidth = 240;
    /// @}

    /// @name Drawing with the device's own functions
    /// The application passes its hooks on. The bool of the two last ones is Application's deviceWasLost.
    /// @{
    /// Draws into an area if it is one of the room's; returns false for one of another room. Comes between
    /// BeginInterleaved() and EndInterleaved() of the renderer.
    virtual bool RenderArea(quillmarsh::gui::InterleavedRenderArea const &) { return false; }
    virtual void CreateVideoResources(bool) {}
    /// Follows each CreateVideoResources(), ahead of the end of the device.
    virtual void ReleaseVideoResources(bool) {}
    /// @}

    /// @name Input devices
    /// The application passes its hooks on.
    /// @{
    /// A device that is good until DisconnectDevices().
    virtual void ConnectDevice(quillmarsh::HumanInterfaceDevice &) {}
    /// The devices will be deleted, and nothing may refer to them any more. Those that are still there come back by
    /// ConnectDevice().
    virtual void DisconnectDevices() {}
    /// @}

    /// The current document, of the room's number of dimensions, is another one, or has another content; null if there
    /// is none. `isOther` is false if only its content has changed.
    virtual void Show(DocumentPtr const &, bool) {}
    /// Called once for each frame, also while its view does not show; brings widgets up to date with settings.
    virtual void Update(double) {}
    /// One line for the status line: place and values under the mouse, zoom, size. Called in each frame that is drawn.
    virtual string GetStatus() const { return string(); }
    /// Writes console lines that set what shall survive a restart, each with a line feed.
    virtual void WriteState(quillmarsh::ostream &) const {}
};

/// @name The rooms
/// Each is made by a function of its own folder.
/// @{
std::unique_ptr<Room> MakeFilesRoom(Workspace &workspace);
std::unique_ptr<Room> MakeImageRoom(Workspace &workspace);
std::unique_ptr<Room> MakeVolumeRoom(Workspace &workspace);
std::unique_ptr<Room> MakeSignalRoom(Workspace &workspace);
std::unique_ptr<Room> MakeDevicesRoom(Workspace &workspace);
std::unique_ptr<Room> MakeWorkRoom(Workspace &workspace);
/// @}

} // namespace viewer

#endif
