// Commands of the room of volumes.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_VOLUMECOMMANDS_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_VOLUMECOMMANDS_H

#include "commandset.h"
#include "scene.h"

#include <quillmarsh/mathtools/vector2.h>

namespace viewer::volumes
{

class VolumeRoom;

/// Registers the commands. Borrows the room.
void AddVolumeCommands(CommandSet &commands, VolumeRoom &room);
/// Writes lines that set what outlives a volume.
void WriteVolumeState(quillmarsh::ostream &out, VolumeSettings const &settings, quillmarsh::vec2 const &fractions);

} // namespace viewer::volumes

#endif
