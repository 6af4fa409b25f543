#include "rooms.h"

namespace viewer
{
namespace
{

using MakeRoom = std::unique_ptr<Room> (*)(Workspace &workspace);

/// A room stands here once its folder is there.
constexpr std::initializer_list<MakeRoom> s_rooms = {&MakeFilesRoom,  &MakeImageRoom,   &MakeVolumeRoom,
                                                     &MakeSignalRoom, &MakeDevicesRoom, &MakeWorkRoom};

} // namespace

std::vector<std::unique_ptr<Room>> MakeRooms(Workspace &workspace)
{
    std::vector<std::unique_ptr<Room>> rooms;
    for (MakeRoom const make : s_rooms)
        rooms.push_back(make(workspace));
    return rooms;
}

} // namespace viewer
