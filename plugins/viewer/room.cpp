#include "room.h"

namespace viewer
{

Room::~Room() = default;

} // namespace viewer
