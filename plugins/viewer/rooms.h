// The rooms of the viewer, in their order.
#ifndef QUILLMARSH_PLUGINS_VIEWER_ROOMS_H
#define QUILLMARSH_PLUGINS_VIEWER_ROOMS_H

#include "room.h"

namespace viewer
{

/// Makes all rooms, in the order of tabs and help page.
std::vector<std::unique_ptr<Room>> MakeRooms(Workspace &workspace);

} // namespace viewer

#endif
