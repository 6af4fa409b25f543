// The console commands of the image room.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_IMAGECOMMANDS_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_IMAGECOMMANDS_H

#include "../commandset.h"

#include "imagestate.h"

namespace viewer
{

/// Registers the commands, which share the state.
void AddImageCommands(CommandSet &commands, std::shared_ptr<ImageState> const &state);

} // namespace viewer

#endif
