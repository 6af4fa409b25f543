// The readings of devices as texts for people.
#ifndef QUILLMARSH_SOURCE_HOST_COMMANDS_HIDREADINGS_H
#define QUILLMARSH_SOURCE_HOST_COMMANDS_HIDREADINGS_H

#include <quillmarsh/framework/hidcontroller.h>

namespace quillmarsh::host
{

/// Describes the last readings of a controller in one line: pressed keys and buttons, positions, angles, gestures.
string DescribeReadings(HIDController &controller);

} // namespace quillmarsh::host

#endif
