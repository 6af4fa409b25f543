// What OpenGL can do on this machine.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_PROFILE_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_PROFILE_H

#include "device.h"

#include <quillmarsh/framework/videoprofile.h>

namespace video_opengl
{

/// Collects the driver, the display's modes and the frame buffers that the driver has. Asks a device that is open, or
/// without one a device of its own in a hidden window. Returns false when something could not be found out; reasons go
/// to the log.
bool CollectProfile(std::shared_ptr<Device> const &device, ostream &log, VideoProfile &profile);

} // namespace video_opengl

#endif
